#include "containers/note_links.h"

#include <algorithm>
#include <array>

#include "shortcuts/addresses.h"
#include "shortcuts/outside_links.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::array<std::wstring_view, 6> kDomains{L"com", L"org", L"net",
                                                    L"edu", L"gov", L"info"};
constexpr std::size_t kLongestHost = 253;

bool isHostPart(wchar_t c) {
  return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') ||
         c == L'-' || c == L'.';
}

bool isHost(std::wstring_view host) {
  const std::size_t dot = host.rfind(L'.');
  if (dot == std::wstring_view::npos) return false;
  const std::wstring_view domain = host.substr(dot + 1);
  if (std::none_of(kDomains.begin(), kDomains.end(),
                   [&](std::wstring_view d) { return sameIgnoringCase(d, domain); }))
    return false;
  // No label is empty, nor begins or ends with a hyphen.
  wchar_t before = L'.';
  for (const wchar_t c : host) {
    if (before == L'.' ? c == L'.' || c == L'-' : before == L'-' && c == L'.') return false;
    before = c;
  }
  return true;
}

// What stands before a bare host must not make it part of something else: a path, a
// mail address, a word in another script.
bool separates(wchar_t c) {
  return c <= L' ' || std::wstring_view(L"(<[{\"',;").find(c) != std::wstring_view::npos;
}

// The bare address whose path begins with the slash at `slash`; empty for none.
NoteLink bareLink(std::wstring_view text, std::size_t slash) {
  std::size_t start = slash;
  while (start > 0 && slash - start <= kLongestHost && isHostPart(text[start - 1])) --start;
  const std::wstring_view host = text.substr(start, slash - start);
  if (host.size() > kLongestHost || !isHost(host)) return {};
  if (start > 0 && !separates(text[start - 1])) return {};
  return {start, std::max(addressEnd(text, start), slash + 1) - start};
}

}  // namespace

std::vector<NoteLink> findNoteLinks(std::wstring_view text) {
  text = text.substr(0, kMaxSearchedText);
  std::vector<NoteLink> links;
  const std::vector<FoundAddress> whole = findUrls(text, kMaxNoteLinks);
  auto next = whole.begin();
  std::size_t looked = 0;  // nothing before it is looked at again, so that no text takes long
  const auto takeWhole = [&](std::size_t before) {
    for (; next != whole.end() && next->start < before; ++next) {
      if (next->start < looked) continue;
      links.push_back({next->start, next->length});
      looked = next->start + next->length;
    }
  };
  for (std::size_t at = text.find(L'/');
       at != std::wstring_view::npos && links.size() < kMaxNoteLinks;
       at = text.find(L'/', std::max(at + 1, looked))) {
    takeWhole(at);
    if (at < looked) continue;
    const NoteLink bare = bareLink(text, at);
    if (bare.length == 0 || bare.start < looked) continue;
    looked = bare.start + bare.length;
    if (isSafeOutsideLink(addressOfNoteLink(text.substr(bare.start, bare.length))))
      links.push_back(bare);
  }
  takeWhole(text.size());
  if (links.size() > kMaxNoteLinks) links.resize(kMaxNoteLinks);
  return links;
}

std::wstring addressOfNoteLink(std::wstring_view shown) {
  if (auto whole = wholeAddress(shown)) return *whole;
  if (looksLikeAddress(shown)) return std::wstring(shown);
  return L"http://" + std::wstring(shown);
}

}  // namespace varnowick
