#include "shortcuts/addresses.h"

#include <algorithm>
#include <array>
#include <set>

#include "core/line_format.h"
#include "shortcuts/outside_links.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::array<std::wstring_view, 5> kStarts{L"http://", L"https://", L"ftp://", L"mailto:",
                                                   L"www."};
constexpr std::size_t kMaxTextPath = 1024;

bool isAsciiLetter(wchar_t c) { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }
bool isWordPart(wchar_t c) { return isAsciiLetter(c) || (c >= L'0' && c <= L'9') || c == L'_'; }
bool startsWith(std::wstring_view text, std::wstring_view start) {
  return text.size() >= start.size() && sameIgnoringCase(text.substr(0, start.size()), start);
}

// Line breaks and tabs stand around texts that were copied, too.
std::wstring_view trimmed(std::wstring_view text) {
  constexpr std::wstring_view kBlanks = L" \t\r\n\x00A0";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::wstring_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool endsAddress(wchar_t c) {
  constexpr std::wstring_view kNever = L"\"<>`{}|\\^\x00A0\x00AB\x00BB\x3000\x3001\x3002";
  return c <= L' ' || (c >= 0x7F && c < 0xA0) || (c >= 0x2000 && c <= 0x206F) ||
         kNever.find(c) != std::wstring_view::npos;
}

// Without what belongs to the sentence: its marks, and a bracket that was opened
// before the address.
std::wstring_view withoutSentenceMarks(std::wstring_view address) {
  std::ptrdiff_t open = std::count(address.begin(), address.end(), L'(') -
                        std::count(address.begin(), address.end(), L')');
  while (!address.empty()) {
    const wchar_t last = address.back();
    const bool mark = std::wstring_view(L".,;:!?'*_]").find(last) != std::wstring_view::npos;
    if (!mark && !(last == L')' && open < 0)) break;
    if (last == L')') ++open;
    address.remove_suffix(1);
  }
  return address;
}

// The address with its scheme, when it is a safe one with something behind it.
std::optional<std::wstring> completed(std::wstring_view address) {
  if (startsWith(address, L"www.")) {
    if (address.find(L'.', 4) == std::wstring_view::npos || !isWordPart(address[4]))
      return std::nullopt;
    return completed(L"http://" + std::wstring(address));
  }
  if (!isSafeOutsideLink(address)) return std::nullopt;
  if (startsWith(address, L"mailto:") && address.find(L'@') == std::wstring_view::npos)
    return std::nullopt;
  return std::wstring(address);
}

}  // namespace

std::size_t addressEnd(std::wstring_view text, std::size_t from) {
  std::size_t end = from;
  while (end < text.size() && !endsAddress(text[end])) ++end;
  return from + withoutSentenceMarks(text.substr(from, end - from)).size();
}

namespace {

// Calls take(start, length, address) for each until it answers false.
template <class Take>
void forEachUrl(std::wstring_view text, Take&& take) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    // The second letters of kStarts: nearly all of a long text ends here.
    constexpr std::wstring_view kSecond = L"tTaAwW";
    if (at + 1 == text.size() || kSecond.find(text[at + 1]) == kSecond.npos) continue;
    if (at > 0 && isWordPart(text[at - 1])) continue;
    const bool begins = std::any_of(kStarts.begin(), kStarts.end(), [&](std::wstring_view start) {
      return startsWith(text.substr(at), start);
    });
    if (!begins) continue;
    std::size_t end = at;
    while (end < text.size() && !endsAddress(text[end])) ++end;
    const std::wstring_view shown = withoutSentenceMarks(text.substr(at, end - at));
    const auto address = completed(shown);
    if (address && !take(at, shown.size(), *address)) return;
    // Everything up to here has been looked at, so that no text takes long.
    at = end;
  }
}

}  // namespace

std::vector<std::wstring> extractUrls(std::wstring_view text, std::size_t limit) {
  std::vector<std::wstring> found;
  std::set<std::wstring> seen;
  if (limit == 0) return found;
  forEachUrl(text.substr(0, kMaxSearchedText),
             [&](std::size_t, std::size_t, const std::wstring& address) {
               if (seen.insert(address).second) found.push_back(address);
               return found.size() < limit;
             });
  return found;
}

std::vector<FoundAddress> findUrls(std::wstring_view text, std::size_t limit) {
  std::vector<FoundAddress> found;
  if (limit == 0) return found;
  forEachUrl(text.substr(0, kMaxSearchedText),
             [&](std::size_t start, std::size_t length, const std::wstring& address) {
               found.push_back({start, length, address});
               return found.size() < limit;
             });
  return found;
}

std::optional<std::wstring> wholeAddress(std::wstring_view text) {
  text = trimmed(text);
  const bool begins = std::any_of(kStarts.begin(), kStarts.end(),
                                  [&](std::wstring_view start) { return startsWith(text, start); });
  return begins ? completed(text) : std::nullopt;
}

bool looksLikeAddress(std::wstring_view text) {
  text = trimmed(text);
  const std::size_t colon = text.find(L':');
  // A single letter is a drive.
  if (colon == std::wstring_view::npos || colon < 2 || !isAsciiLetter(text.front())) return false;
  if (colon + 1 == text.size() || text[colon + 1] <= L' ') return false;
  return std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon),
                     [](wchar_t c) {
                       return (isWordPart(c) && c != L'_') || c == L'+' || c == L'-' || c == L'.';
                     });
}

bool isServerPath(std::wstring_view path) { return path.starts_with(L"\\\\"); }

std::optional<std::wstring> wholePath(std::wstring_view text) {
  text = trimmed(text);
  if (text.size() > 2 && text.front() == L'"' && text.back() == L'"')
    text = trimmed(text.substr(1, text.size() - 2));
  if (text.size() < 3 || text.size() > kMaxTextPath) return std::nullopt;
  if (isServerPath(text)) {
    // A server and a share; what begins with a dot or a question mark is no server.
    const std::size_t share = text.find(L'\\', 2);
    if (text[2] == L'.' || share == 2 || share == std::wstring_view::npos ||
        share + 1 == text.size() || text[share + 1] == L'\\')
      return std::nullopt;
  } else if (!(isAsciiLetter(text[0]) || text[0] == L'@') || text[1] != L':' || text[2] != L'\\') {
    return std::nullopt;
  }
  const std::wstring_view rest = text.substr(2);
  const bool forbidden = std::any_of(rest.begin(), rest.end(), [](wchar_t c) {
    return c < L' ' || c == 0x7F ||
           std::wstring_view(L"<>\"|?*:/").find(c) != std::wstring_view::npos;
  });
  return forbidden ? std::nullopt : std::optional(std::wstring(text));
}

namespace {

std::optional<ListedItem> listedItem(std::wstring_view text) {
  if (auto path = wholePath(text)) return ListedItem{std::move(*path), true};
  if (auto address = wholeAddress(text)) return ListedItem{std::move(*address), false};
  return std::nullopt;
}

// The part up to the next blank, or the next quote when it begins with one.
std::wstring_view nextToken(std::wstring_view& line) {
  line = trimmed(line);
  const bool quoted = line.starts_with(L'"');
  const std::size_t stop = quoted ? line.find(L'"', 1) : line.find_first_of(L" \t");
  const std::size_t length =
      stop == std::wstring_view::npos ? line.size() : stop + (quoted ? 1U : 0U);
  const std::wstring_view token = line.substr(0, length);
  line = trimmed(line.substr(length));
  return token;
}

// False when there is anything else on the line.
bool addLine(std::wstring_view line, std::vector<ListedItem>& items) {
  if (auto whole = listedItem(line)) {
    items.push_back(std::move(*whole));
    return true;
  }
  while (!line.empty()) {
    auto item = listedItem(nextToken(line));
    if (!item) return false;
    items.push_back(std::move(*item));
  }
  return true;
}

}  // namespace

std::vector<ListedItem> listedItems(std::wstring_view text) {
  text = trimmed(text.substr(0, kMaxSearchedText));
  std::vector<ListedItem> items;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(L"\r\n"), text.size());
    if (!addLine(trimmed(text.substr(0, end)), items)) return {};
    if (items.size() > kMaxAddresses) items.resize(kMaxAddresses + 1);
    text = trimmed(text.substr(end));
  }
  return items;
}

std::wstring hostOf(std::wstring_view address) {
  if (startsWith(address, L"mailto:")) {
    address.remove_prefix(7);
    return std::wstring(address.substr(0, address.find(L'?')));
  }
  if (const std::size_t slashes = address.find(L"://"); slashes != std::wstring_view::npos)
    address.remove_prefix(slashes + 3);
  address = address.substr(0, address.find_first_of(L"/?#"));
  // What stands before an @ is a name to sign in with, and must not pass for a host.
  if (const std::size_t name = address.rfind(L'@'); name != std::wstring_view::npos)
    address.remove_prefix(name + 1);
  if (const std::size_t colon = address.find(L':');
      colon != std::wstring_view::npos && !address.starts_with(L"["))
    address = address.substr(0, colon);
  if (startsWith(address, L"www.")) address.remove_prefix(4);
  return std::wstring(address);
}

}  // namespace varnowick
