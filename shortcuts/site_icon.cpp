#include "shortcuts/site_icon.h"

#include <algorithm>

#include "core/line_format.h"
#include "core/picture_header.h"
#include "core/public_host.h"
#include "core/web_address.h"
#include "shortcuts/html_tags.h"

namespace varnowick {
namespace {

constexpr std::uint32_t kMaxIconEdge = 1024;
constexpr std::size_t kMaxReference = 2048;
constexpr int kUnknownEdge = 0;
// Beyond this a page does not describe itself, it fills memory.
constexpr std::size_t kMaxCandidates = 64;

struct Candidate {
  std::wstring address;
  int edge = kUnknownEdge;
  bool touchIcon = false;  // meant for the home screens of telephones
};

// True when the blank-separated list holds the word, whatever its case.
bool holdsWord(std::string_view list, std::string_view word) {
  const std::string lower = lowerAscii(list);
  std::string_view rest = lower;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find_first_of(" \t\r\n\f"), rest.size());
    if (rest.substr(0, end) == word) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
}

// "32x32" or the largest of several; kUnknownEdge for what says nothing.
int largestEdge(std::string_view sizes) {
  int largest = kUnknownEdge;
  int number = 0;
  for (const char c : sizes.substr(0, 200)) {
    const bool digit = c >= '0' && c <= '9';
    number = digit ? std::min(number * 10 + (c - '0'), 10000) : 0;
    largest = std::max(largest, number);
  }
  return largest;
}

// The one entity that addresses hold in earnest.
std::wstring decoded(std::string_view value, TextCodec& codec) {
  std::wstring text = isValidUtf8(value) ? codec.fromUtf8(value) : codec.fromAnsi(value);
  constexpr std::wstring_view kEntity = L"&amp;";
  for (std::size_t at = 0; (at = text.find(kEntity, at)) != std::wstring::npos; ++at)
    text.replace(at, kEntity.size(), L"&");
  return std::wstring(trimBlanks(std::wstring_view(text)));
}

std::optional<Candidate> candidateOf(const HtmlTag& tag, std::wstring_view base, TextCodec& codec) {
  const std::string_view rel = tag.value("rel");
  const std::string_view href = tag.value("href");
  if (rel.size() > 200 || href.empty() || href.size() > kMaxReference) return std::nullopt;
  Candidate candidate;
  candidate.touchIcon =
      holdsWord(rel, "apple-touch-icon") || holdsWord(rel, "apple-touch-icon-precomposed");
  if (!candidate.touchIcon && !holdsWord(rel, "icon")) return std::nullopt;
  // Drawings are no pictures of points; no decoder here reads them.
  if (lowerAscii(tag.value("type").substr(0, 40)).starts_with("image/svg")) return std::nullopt;
  auto address = resolveWebReference(base, decoded(href, codec));
  if (!address) return std::nullopt;
  candidate.address = std::move(*address);
  candidate.edge = largestEdge(tag.value("sizes"));
  return candidate;
}

// Lower is better.
int rank(const Candidate& candidate, int wantedEdge) {
  const int kind = candidate.touchIcon ? 100000 : 0;
  if (candidate.edge == kUnknownEdge) return kind + 30000;
  if (candidate.edge >= wantedEdge) return kind + candidate.edge - wantedEdge;
  return kind + 40000 + wantedEdge - candidate.edge;
}

}  // namespace

std::optional<std::wstring> siteIconRoot(std::wstring_view address) {
  const auto web = parseWebAddress(address);
  if (!web || !isPublicHost(web->host)) return std::nullopt;
  return web->site() + L"/";
}

bool siteIconIsDue(std::uint64_t fetchedDay, bool hasIcon, std::uint64_t today) {
  // A clock that was set back must not keep an icon for years.
  if (fetchedDay > today) return true;
  return today - fetchedDay >= (hasIcon ? kSiteIconDays : 1);
}

std::vector<std::wstring> siteIconAddresses(std::string_view page, std::wstring_view pageAddress,
                                            int wantedEdge, TextCodec& codec) {
  std::vector<Candidate> candidates;
  std::wstring base(pageAddress);
  HtmlTagReader reader(page.substr(0, kMaxPageHead));
  for (HtmlTag tag; candidates.size() < kMaxCandidates && reader.next(tag);) {
    if (tag.name == "body" || tag.name == "/head") break;
    if (tag.name == "base" && base == pageAddress && tag.value("href").size() <= kMaxReference) {
      if (auto named = resolveWebReference(pageAddress, decoded(tag.value("href"), codec)))
        base = std::move(*named);
    }
    if (tag.name != "link") continue;
    if (auto candidate = candidateOf(tag, base, codec)) candidates.push_back(std::move(*candidate));
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [&](const Candidate& a, const Candidate& b) {
                     return rank(a, wantedEdge) < rank(b, wantedEdge);
                   });
  std::vector<std::wstring> addresses;
  const auto addOnce = [&](const std::wstring& address) {
    if (std::find(addresses.begin(), addresses.end(), address) == addresses.end())
      addresses.push_back(address);
  };
  for (const Candidate& candidate : candidates)
    if (addresses.size() + 1 < kMaxSiteIcons) addOnce(candidate.address);
  if (const auto usual = resolveWebReference(pageAddress, L"/favicon.ico")) addOnce(*usual);
  return addresses;
}

bool isUsableSiteIcon(std::string_view bytes) {
  if (bytes.size() > kMaxSiteIconBytes) return false;
  const PictureHeader header = readPictureHeader(bytes);
  return isDecodable(header) && header.width <= kMaxIconEdge && header.height <= kMaxIconEdge;
}

}  // namespace varnowick
