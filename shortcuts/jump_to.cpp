#include "shortcuts/jump_to.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace varnowick {
namespace {

// Longer ones are compared by their beginning; a caption from outside may be of
// any length.
constexpr std::size_t kMaxCompared = 256;
constexpr std::size_t kMaxQuery = 64;

// The plain letters of U+00C0 to U+017F, so that "cafe" finds an accented one.
// A blank stands for a sign that is no letter.
constexpr std::wstring_view kLatin =
    L"aaaaaaaceeeeiiiidnooooo ouuuuytsaaaaaaaceeeeiiiidnooooo ouuuuyty"
    L"aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiiiiijjkkklllllllll"
    L"lnnnnnnnnnoooooooorrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";
static_assert(kLatin.size() == 0x180 - 0xC0);

constexpr bool isUpper(wchar_t c) { return c >= L'A' && c <= L'Z'; }
constexpr bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// Independent of the system's language: the same box finds the same everywhere.
constexpr wchar_t folded(wchar_t c) {
  if (isUpper(c)) return static_cast<wchar_t>(c - L'A' + L'a');
  if (c >= 0xC0 && c < 0x180) return kLatin[static_cast<std::size_t>(c - 0xC0)];
  // Greek and Cyrillic capitals.
  if ((c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F)) return static_cast<wchar_t>(c + 32);
  if (c >= 0x400 && c <= 0x40F) return static_cast<wchar_t>(c + 80);
  return c;
}

// Of a folded character.
constexpr bool isWordCharacter(wchar_t c) {
  if (c < 0x80) return (c >= L'a' && c <= L'z') || isDigit(c);
  return c >= 0xC0 && !(c >= 0x2000 && c <= 0x206F) && c != 0x3000;
}

std::wstring fold(std::wstring_view text, std::size_t limit) {
  std::wstring result(text.substr(0, limit));
  std::transform(result.begin(), result.end(), result.begin(), folded);
  return result;
}

std::uint64_t characterBits(std::wstring_view text) {
  std::uint64_t bits = 0;
  for (const wchar_t c : text)
    if (c != L' ') bits |= std::uint64_t{1} << (static_cast<std::uint32_t>(c) % 64U);
  return bits;
}

std::vector<bool> wordStarts(std::wstring_view caption, std::wstring_view foldedCaption) {
  std::vector<bool> starts(foldedCaption.size());
  for (std::size_t i = 0; i < starts.size(); ++i) {
    if (!isWordCharacter(foldedCaption[i])) continue;
    if (i == 0 || !isWordCharacter(foldedCaption[i - 1])) {
      starts[i] = true;
      continue;
    }
    const bool hump = isUpper(caption[i]) && !isUpper(caption[i - 1]);
    starts[i] = hump || isDigit(caption[i]) != isDigit(caption[i - 1]);
  }
  return starts;
}

using Positions = std::vector<std::size_t>;

// Each character follows the one before directly or begins a word. What has once
// been tried in vain is not tried again, so hostile captions cost no more than
// their length times that of the query.
class WordStartSearch {
 public:
  WordStartSearch(std::wstring_view query, std::wstring_view text, const std::vector<bool>& starts)
      : query_(query), text_(text), starts_(starts), failed_(query.size() * text.size()) {}

  bool find() { return placeAtWord(0, 0); }
  const Positions& positions() const { return found_; }

 private:
  bool place(std::size_t q, std::size_t at) {
    if (query_[q] != text_[at] || failed_[q * text_.size() + at]) return false;
    found_.push_back(at);
    if (q + 1 == query_.size()) return true;
    if (at + 1 < text_.size() && (place(q + 1, at + 1) || placeAtWord(q + 1, at + 1))) return true;
    found_.pop_back();
    failed_[q * text_.size() + at] = true;
    return false;
  }
  bool placeAtWord(std::size_t q, std::size_t from) {
    for (std::size_t at = from; at < text_.size(); ++at)
      if (starts_[at] && place(q, at)) return true;
    return false;
  }

  std::wstring_view query_;
  std::wstring_view text_;
  const std::vector<bool>& starts_;
  std::vector<bool> failed_;
  Positions found_;
};

bool inOrder(std::wstring_view query, std::wstring_view text, Positions* positions) {
  std::size_t at = 0;
  for (const wchar_t c : query) {
    at = text.find(c, at);
    if (at == std::wstring_view::npos) return false;
    if (positions != nullptr) positions->push_back(at);
    ++at;
  }
  return true;
}

struct Query {
  std::wstring text;     // folded, trimmed
  std::wstring letters;  // without blanks
  std::uint64_t bits = 0;
};

Query prepare(std::wstring_view typed) {
  Query q;
  q.text = fold(typed, kMaxQuery);
  q.text.erase(0, q.text.find_first_not_of(L' '));
  q.text.erase(q.text.find_last_not_of(L' ') + 1);
  std::copy_if(q.text.begin(), q.text.end(), std::back_inserter(q.letters),
               [](wchar_t c) { return c != L' '; });
  q.bits = characterBits(q.letters);
  return q;
}

Positions run(std::size_t from, std::size_t length) {
  Positions positions(length);
  for (std::size_t i = 0; i < length; ++i) positions[i] = from + i;
  return positions;
}

std::optional<JumpRank> rankOf(const Query& q, std::wstring_view text,
                               const std::vector<bool>& starts, Positions* positions) {
  // The weakest demand first: most captions fail it, and fail it fast.
  if (!inOrder(q.letters, text, nullptr)) return std::nullopt;
  const std::size_t at = text.find(q.text);
  if (at == 0) {
    if (positions != nullptr) *positions = run(0, q.text.size());
    return JumpRank::Prefix;
  }
  WordStartSearch words(q.letters, text, starts);
  if (words.find()) {
    if (positions != nullptr) *positions = words.positions();
    return JumpRank::WordStarts;
  }
  if (at != std::wstring_view::npos) {
    if (positions != nullptr) *positions = run(at, q.text.size());
    return JumpRank::Contiguous;
  }
  if (positions != nullptr) inOrder(q.letters, text, positions);
  return JumpRank::InOrder;
}

}  // namespace

void JumpTo::setEntries(std::vector<JumpEntry> entries) {
  entries_.clear();
  entries_.reserve(entries.size());
  for (JumpEntry& e : entries) {
    Prepared p;
    p.folded = fold(e.caption, kMaxCompared);
    p.wordStart = wordStarts(e.caption, p.folded);
    p.characters = characterBits(p.folded);
    p.entry = std::move(e);
    entries_.push_back(std::move(p));
  }
  std::stable_sort(entries_.begin(), entries_.end(),
                   [](const Prepared& a, const Prepared& b) { return a.folded < b.folded; });
}

std::vector<JumpMatch> JumpTo::find(std::wstring_view query) const {
  const Query q = prepare(query);
  std::vector<JumpMatch> matches;
  if (q.letters.empty()) return matches;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    const Prepared& p = entries_[i];
    if ((q.bits & ~p.characters) != 0) continue;
    if (const auto rank = rankOf(q, p.folded, p.wordStart, nullptr))
      matches.push_back({p.entry.target.kind(), *rank, i});
  }
  std::sort(matches.begin(), matches.end(), [&](const JumpMatch& a, const JumpMatch& b) {
    if (a.kind != b.kind) return a.kind < b.kind;
    if (a.rank != b.rank) return a.rank < b.rank;
    const int startsA = entries_[a.entry].entry.starts;
    const int startsB = entries_[b.entry].entry.starts;
    return startsA != startsB ? startsA > startsB : a.entry < b.entry;
  });
  return matches;
}

std::vector<std::size_t> JumpTo::highlighted(const JumpMatch& match,
                                             std::wstring_view query) const {
  Positions positions;
  const Query q = prepare(query);
  if (match.entry >= entries_.size() || q.letters.empty()) return positions;
  const Prepared& p = entries_[match.entry];
  rankOf(q, p.folded, p.wordStart, &positions);
  return positions;
}

}  // namespace varnowick
