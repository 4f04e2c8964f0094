#include "core/web_address.h"

#include <algorithm>

namespace varnowick {
namespace {

constexpr unsigned kHttpPort = 80;
constexpr unsigned kHttpsPort = 443;

wchar_t lowered(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

// Takes the start away, whatever its case; false when the text has another.
bool skip(std::wstring_view& text, std::wstring_view start) {
  if (text.size() < start.size() ||
      !std::equal(start.begin(), start.end(), text.begin(),
                  [](wchar_t a, wchar_t b) { return a == lowered(b); })) {
    return false;
  }
  text.remove_prefix(start.size());
  return true;
}

bool isPlain(wchar_t c) {
  return c > L' ' && c != L'"' && c != L'\\' && c != L'<' && c != L'>' && c != L'`' && c != 0x7F &&
         !(c >= 0x80 && c < 0xA0);
}

// Splits "host:port"; a host in brackets may hold colons. False for what is no
// name or no number.
bool splitHost(std::wstring_view text, WebAddress& address) {
  const std::size_t bracket = text.find(L']');
  const std::size_t colon = text.find(L':', bracket == std::wstring_view::npos ? 0 : bracket);
  address.host = text.substr(0, colon);
  if (address.host.empty() || address.host.find(L'@') != std::wstring::npos) return false;
  if (colon == std::wstring_view::npos || colon + 1 == text.size()) return true;
  unsigned port = 0;
  for (const wchar_t c : text.substr(colon + 1)) {
    if (c < L'0' || c > L'9') return false;
    port = port * 10 + static_cast<unsigned>(c - L'0');
    if (port > 65535) return false;
  }
  address.port = port;
  return port != 0;
}

// Takes "." and ".." out of an absolute path; what leads above the root stays at it.
std::wstring withoutDots(std::wstring_view path) {
  std::wstring result;
  while (!path.empty()) {
    const std::size_t slash = path.find(L'/', 1);
    const std::wstring_view part = path.substr(0, slash);
    path.remove_prefix(part.size());
    if (part == L"/.") {
      if (path.empty()) result += L'/';
    } else if (part == L"/..") {
      result.resize(std::min(result.size(), result.rfind(L'/')));
      if (path.empty()) result += L'/';
    } else {
      result += part;
    }
  }
  return result.empty() ? L"/" : result;
}

}  // namespace

std::wstring WebAddress::site() const {
  std::wstring text = (secure ? L"https://" : L"http://") + host;
  if (port != (secure ? kHttpsPort : kHttpPort)) text += L":" + std::to_wstring(port);
  return text;
}

std::optional<WebAddress> parseWebAddress(std::wstring_view address) {
  if (address.size() > kMaxWebAddress || !std::all_of(address.begin(), address.end(), isPlain))
    return std::nullopt;
  WebAddress result;
  if (skip(address, L"https://"))
    result.secure = true;
  else if (!skip(address, L"http://"))
    return std::nullopt;
  result.port = result.secure ? kHttpsPort : kHttpPort;
  const std::wstring_view host = address.substr(0, address.find_first_of(L"/?#"));
  if (!splitHost(host, result)) return std::nullopt;
  address.remove_prefix(host.size());
  address = address.substr(0, address.find(L'#'));
  const std::size_t query = std::min(address.find(L'?'), address.size());
  result.path = query == 0 ? L"/" : address.substr(0, query);
  result.query = address.substr(query);
  return result;
}

std::optional<std::wstring> resolveWebReference(std::wstring_view pageAddress,
                                                std::wstring_view reference) {
  const auto page = parseWebAddress(pageAddress);
  reference = reference.substr(0, reference.find(L'#'));
  if (!page || reference.empty() || reference.size() > kMaxWebAddress) return std::nullopt;
  std::wstring address;
  const std::size_t end = reference.find_first_of(L":/?");
  if (end != std::wstring_view::npos && reference[end] == L':') {
    address = reference;
  } else if (reference.starts_with(L"//")) {
    address = (page->secure ? L"https:" : L"http:") + std::wstring(reference);
  } else {
    const std::size_t query = std::min(reference.find(L'?'), reference.size());
    std::wstring path(reference.substr(0, query));
    if (path.empty())
      path = page->path;
    else if (path.front() != L'/')
      path = page->path.substr(0, page->path.rfind(L'/') + 1) + path;
    address = page->site() + withoutDots(path) + std::wstring(reference.substr(query));
  }
  const auto target = parseWebAddress(address);
  if (!target || (page->secure && !target->secure)) return std::nullopt;
  return address;
}

std::string escapedForRequest(std::string_view utf8) {
  constexpr char kHex[] = "0123456789ABCDEF";
  std::string result;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte > ' ' && byte < 0x7F) {
      result += c;
    } else {
      result += {'%', kHex[byte >> 4], kHex[byte & 15]};
    }
  }
  return result;
}

std::wstring proxyServer(std::wstring_view setting) {
  while (!setting.empty() && setting.front() == L' ') setting.remove_prefix(1);
  while (!setting.empty() && setting.back() == L' ') setting.remove_suffix(1);
  if (!skip(setting, L"http://")) skip(setting, L"https://");
  setting = setting.substr(0, setting.find(L'/'));
  WebAddress proxy;
  if (setting == L"0" || !std::all_of(setting.begin(), setting.end(), isPlain) ||
      !splitHost(setting, proxy)) {
    return {};
  }
  return std::wstring(
      setting.substr(0, setting.back() == L':' ? setting.size() - 1 : setting.size()));
}

}  // namespace varnowick
