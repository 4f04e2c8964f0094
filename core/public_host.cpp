#include "core/public_host.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace varnowick {
namespace {

using Groups = std::array<std::uint16_t, 8>;

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

int digitOf(wchar_t c) {
  if (isDigit(c)) return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return 99;
}

// Decimal, "0x..." or, with a leading zero, octal, as resolvers read parts of
// addresses.
std::optional<std::uint64_t> numberOf(std::wstring_view text) {
  int base = 10;
  if (text.starts_with(L"0x")) {
    base = 16;
    text.remove_prefix(2);
  } else if (text.size() > 1 && text.front() == L'0') {
    base = 8;
  }
  constexpr std::uint64_t kTooLarge = std::uint64_t{1} << 40;  // for any part
  std::uint64_t value = 0;
  for (const wchar_t c : text) {
    if (digitOf(c) >= base) return std::nullopt;
    value = value * static_cast<unsigned>(base) + static_cast<unsigned>(digitOf(c));
    value = std::min(value, kTooLarge);
  }
  return value;
}

// Resolvers take one to four numbers; the last fills what is left.
std::optional<std::uint32_t> parseIPv4(std::wstring_view text) {
  std::uint64_t address = 0;
  for (int part = 0; part < 4; ++part) {
    const std::size_t dot = text.find(L'.');
    const auto number = text.empty() ? std::nullopt : numberOf(text.substr(0, dot));
    if (!number) return std::nullopt;
    if (dot == std::wstring_view::npos) {
      const int bits = 8 * (4 - part);
      if (*number >> bits != 0) return std::nullopt;
      return static_cast<std::uint32_t>(address << bits | *number);
    }
    if (*number > 255) return std::nullopt;
    address = address << 8 | *number;
    text.remove_prefix(dot + 1);
  }
  return std::nullopt;
}

bool isPublicIPv4(std::uint32_t address) {
  struct Range {
    std::uint32_t network;
    int bits;
  };
  constexpr Range kOthers[] = {
      {0x00000000, 8},   // this network
      {0x0A000000, 8},   // 10/8
      {0x64400000, 10},  // 100.64/10, behind a provider's translation
      {0x7F000000, 8},   // this machine
      {0xA9FE0000, 16},  // 169.254/16, without a server to give addresses
      {0xAC100000, 12},  // 172.16/12
      {0xC0000000, 24},  // 192.0.0/24, protocols
      {0xC0A80000, 16},  // 192.168/16
      {0xC6120000, 15},  // 198.18/15, measurements
      {0xE0000000, 3},   // groups, reserved, everybody
  };
  return std::none_of(std::begin(kOthers), std::end(kOthers), [&](const Range& range) {
    return (address ^ range.network) >> (32 - range.bits) == 0;
  });
}

// Of groups between colons; false for what is no such run. The last may be an
// address of the older kind.
bool parseGroups(std::wstring_view text, Groups& groups, std::size_t& count) {
  count = 0;
  while (!text.empty()) {
    const std::size_t colon = text.find(L':');
    const std::wstring_view part = text.substr(0, colon);
    if (part.find(L'.') != std::wstring_view::npos) {
      const auto old = parseIPv4(part);
      if (!old || colon != std::wstring_view::npos || count > 6) return false;
      groups[count++] = static_cast<std::uint16_t>(*old >> 16);
      groups[count++] = static_cast<std::uint16_t>(*old);
      return true;
    }
    if (part.empty() || part.size() > 4 || count == 8) return false;
    unsigned value = 0;
    for (const wchar_t c : part) {
      if (digitOf(c) > 15) return false;
      value = value << 4 | static_cast<unsigned>(digitOf(c));
    }
    groups[count++] = static_cast<std::uint16_t>(value);
    if (colon == std::wstring_view::npos) return true;
    text.remove_prefix(colon + 1);
    if (text.empty()) return false;
  }
  return true;
}

std::optional<Groups> parseIPv6(std::wstring_view text) {
  const std::size_t gap = text.find(L"::");
  Groups head{}, tail{};
  std::size_t before = 0, after = 0;
  if (gap == std::wstring_view::npos)
    return parseGroups(text, head, before) && before == 8 ? std::optional(head) : std::nullopt;
  if (!parseGroups(text.substr(0, gap), head, before) ||
      !parseGroups(text.substr(gap + 2), tail, after) || before + after > 7)
    return std::nullopt;
  std::copy_n(tail.begin(), after, head.end() - static_cast<std::ptrdiff_t>(after));
  return head;
}

bool isPublicIPv6(const Groups& g) {
  const auto old = [&](std::size_t at) {
    return isPublicIPv4(static_cast<std::uint32_t>(g[at]) << 16 | g[at + 1]);
  };
  // Addresses that stand for one of the older kind.
  if (g[0] == 0x2002) return old(1);
  if (g[0] == 0x0064 && g[1] == 0xFF9B) return old(6);
  if (std::all_of(g.begin(), g.begin() + 5, [](std::uint16_t v) { return v == 0; })) return old(6);
  // Of the rest only 2000::/3 is given out, and 2001::/32 tunnels to anywhere.
  return (g[0] & 0xE000) == 0x2000 && !(g[0] == 0x2001 && g[1] == 0);
}

bool endsIn(std::wstring_view name, std::wstring_view end) {
  return name == end || (name.size() > end.size() && name.ends_with(end) &&
                         name[name.size() - end.size() - 1] == L'.');
}

bool isPublicName(std::wstring_view name) {
  // Other letters may come out as digits and dots where they are resolved; those
  // of real names are not among signs, full-width forms and what needs two units.
  const bool odd = std::any_of(name.begin(), name.end(), [](wchar_t c) {
    return c == L'%' || c == L'_' || (c >= 0x2000 && c <= 0x2BFF) || (c >= 0x3000 && c <= 0x3004) ||
           (c >= 0xD800 && c <= 0xF8FF) || c >= 0xFE00;
  });
  if (odd || name.find(L'.') == std::wstring_view::npos) return false;
  constexpr std::wstring_view kOwn[] = {L"localhost", L"localdomain", L"local",    L"lan",
                                        L"internal",  L"home.arpa",   L"intranet", L"private",
                                        L"home",      L"corp",        L"test"};
  return std::none_of(std::begin(kOwn), std::end(kOwn),
                      [&](std::wstring_view end) { return endsIn(name, end); });
}

}  // namespace

bool isPublicHost(std::wstring_view host) {
  std::wstring text(host);
  for (wchar_t& c : text)
    if (c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
  if (text.size() > 1 && text.front() == L'[' && text.back() == L']') {
    const auto groups = parseIPv6(std::wstring_view(text).substr(1, text.size() - 2));
    return groups && isPublicIPv6(*groups);
  }
  if (!text.empty() && text.back() == L'.') text.pop_back();
  // Whatever ends in a number is an address, or nothing.
  const std::wstring_view last = std::wstring_view(text).substr(text.rfind(L'.') + 1);
  if (std::all_of(last.begin(), last.end(), isDigit) || numberOf(last)) {
    const auto address = parseIPv4(text);
    return address && isPublicIPv4(*address);
  }
  return isPublicName(text);
}

}  // namespace varnowick
