#include "ui/scene/note_layout.h"

#include <algorithm>

namespace varnowick {
namespace {

constexpr int kLeastWidth = 24;             // pixels; narrower boxes are laid out as if so wide
constexpr std::size_t kLongestLine = 1000;  // letters without width must not fill one for ever
constexpr std::size_t kMostText = 50'000'000;

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == 0x3000; }

// The second of the two units that one letter beyond the first plane takes: no line
// may begin with it.
bool isSecondUnit(wchar_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

bool rightToLeft(wchar_t c) {
  return (c >= 0x0590 && c <= 0x08FF) || (c >= 0xFB1D && c <= 0xFDFF) ||
         (c >= 0xFE70 && c <= 0xFEFC);
}

// Scripts without blanks between words; their closing marks stay with what they close.
bool standsAlone(wchar_t c) {
  return (c >= 0x2E80 && c < 0xD800) || (c >= 0xF900 && c <= 0xFAFF) ||
         (c >= 0xFF00 && c <= 0xFFEF);
}
bool stayWithFormer(wchar_t c) {
  return std::wstring_view(
             L"\x3001\x3002\xFF0C\xFF0E\xFF1A\xFF1B\xFF01\xFF1F\x300D\x300F\x3011\x3015\xFF09")
             .find(c) != std::wstring_view::npos;
}

// Whether a line may end between the two; not after a hyphen, since text controls do not
// either, and a note must not change its lines when it is edited.
bool mayBreak(wchar_t before, wchar_t after) {
  if (isBlank(after)) return false;  // blanks hang over the end of their line
  if (isBlank(before)) return true;
  return (standsAlone(before) || standsAlone(after)) && !stayWithFormer(after);
}

// Past the line break at the position.
std::size_t pastBreak(std::wstring_view text, std::size_t at) {
  const bool both = text[at] == L'\r' && at + 1 < text.size() && text[at + 1] == L'\n';
  return at + (both ? 2 : 1);
}

}  // namespace

LetterWidths::LetterWidths(TextMeasure* measure, TextStyle style, Density density)
    : measure_(measure), style_(std::move(style)), density_(density), widths_(kTable, kUnknown) {
  const double em = static_cast<double>(style_.points) * density_.dpi / 72.0;
  lineHeight_ = roundHalfToEven(em * 1.25);
  if (measure_ != nullptr)
    lineHeight_ = measure_->measure(L"Hg", style_, Pixels{10'000}).height.value;
  lineHeight_ = std::max(1, lineHeight_);
  tabWidth_ = std::max(1, density_.toPixels(kNoteTab).value);
  square_ = measured(L"\x65E5", roundHalfToEven(em));
}

int LetterWidths::measured(std::wstring_view letter, int otherwise) {
  return measure_ == nullptr ? otherwise
                             : measure_->measure(letter, style_, Pixels{10'000}).width.value;
}

int LetterWidths::of(wchar_t c) {
  const auto at = static_cast<std::size_t>(c);
  if (at < kTable && widths_[at] == kUnknown)
    widths_[at] = static_cast<std::uint16_t>(
        std::clamp(measured(std::wstring_view(&c, 1), square_ / 2), 0, 0xFFFE));
  return known(c);
}

int LetterWidths::known(wchar_t c) const {
  const auto at = static_cast<std::size_t>(c);
  if (at < kTable) return widths_[at] == kUnknown ? square_ / 2 : widths_[at];
  return isSecondUnit(c) ? 0 : square_;
}

NoteLayout::NoteLayout(std::wstring_view text, Pixels width, std::shared_ptr<LetterWidths> widths)
    : widths_(std::move(widths)), width_(width) {
  text = text.substr(0, kMostText);
  textLength_ = text.size();
  std::size_t start = 0;
  while (true) {
    const std::size_t end = std::min(text.find_first_of(L"\r\n", start), text.size());
    std::size_t lineStart = start;
    do {
      lineStarts_.push_back(static_cast<std::uint32_t>(lineStart));
      lineStart = breakLine(text, lineStart, end);
    } while (lineStart < end);
    if (end == text.size()) break;
    start = pastBreak(text, end);
  }
  links_ = findNoteLinks(text);
}

int NoteLayout::widthAt(wchar_t c, int x) const {
  if (c == L'\t') return widths_->tabWidth() - x % widths_->tabWidth();
  return widths_->known(c);
}

// The start of the next line of a paragraph that ends at `end`.
std::size_t NoteLayout::breakLine(std::wstring_view text, std::size_t start, std::size_t end) {
  const int room = std::max(width_.value, kLeastWidth);
  int x = 0;
  std::size_t lastBreak = start;
  for (std::size_t at = start; at < end; ++at) {
    const wchar_t c = text[at];
    if (at > start && mayBreak(text[at - 1], c)) lastBreak = at;
    const int wide = c == L'\t' ? widthAt(c, x) : widths_->of(c);
    const bool full = (x + wide > room && !isBlank(c)) || at - start >= kLongestLine;
    if (full && at > start) {
      if (lastBreak > start) return lastBreak;
      if (!isSecondUnit(c)) return at;
    }
    x += wide;
  }
  return end;
}

std::size_t NoteLayout::lineStart(std::size_t line) const {
  return lineStarts_[std::min(line, lines() - 1)];
}

std::size_t NoteLayout::lineOf(std::size_t offset) const {
  const auto after = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), offset);
  return static_cast<std::size_t>(after - lineStarts_.begin()) - 1;
}

std::wstring_view NoteLayout::line(std::wstring_view text, std::size_t line) const {
  if (line >= lineStarts_.size() || text.size() < textLength_) return {};
  const std::size_t start = lineStarts_[line];
  std::size_t end = line + 1 < lineStarts_.size() ? lineStarts_[line + 1] : textLength_;
  // A line ends with at most one break: an empty line has a start of its own.
  if (end > start && text[end - 1] == L'\n') --end;
  if (end > start && text[end - 1] == L'\r') --end;
  return text.substr(start, end - start);
}

std::vector<NoteRun> NoteLayout::runs(std::wstring_view text, std::size_t number) const {
  const std::wstring_view letters = line(text, number);
  std::vector<NoteRun> runs;
  if (letters.empty()) return runs;
  const std::size_t start = lineStarts_[number];
  if (std::any_of(letters.begin(), letters.end(), rightToLeft)) {
    runs.push_back({start, letters.size(), {0}, width_, -1});
    return runs;
  }
  auto link =
      std::lower_bound(links_.begin(), links_.end(), start,
                       [](const NoteLink& l, std::size_t at) { return l.start + l.length <= at; });
  int x = 0;
  bool open = false;  // the last run goes on
  int former = -1;
  for (std::size_t i = 0; i < letters.size(); ++i) {
    const std::size_t at = start + i;
    while (link != links_.end() && link->start + link->length <= at) ++link;
    const bool inLink = link != links_.end() && link->start <= at;
    const int now = inLink ? static_cast<int>(link - links_.begin()) : -1;
    const int wide = widthAt(letters[i], x);
    if (letters[i] == L'\t') {
      open = false;
    } else {
      if (!open || now != former) runs.push_back({at, 0, {x}, {0}, now});
      ++runs.back().length;
      runs.back().width += Pixels{wide};
      open = true;
      former = now;
    }
    x += wide;
  }
  return runs;
}

NoteHit NoteLayout::hit(std::wstring_view text, Point<Pixels> at) const {
  const int row = std::max(0, at.y.value) / lineHeight().value;
  const bool within = at.y.value >= 0 && at.y < height();
  const std::size_t number = std::min(static_cast<std::size_t>(row), lines() - 1);
  const std::wstring_view letters = line(text, number);
  NoteHit hit{lineStarts_[number], -1};
  int x = 0;
  std::size_t i = 0;
  for (; i < letters.size(); ++i) {
    const int wide = widthAt(letters[i], x);
    if (at.x.value < x + (wide + 1) / 2 && !isSecondUnit(letters[i])) break;
    x += wide;
  }
  hit.offset += i;
  if (!within) return hit;
  for (const NoteRun& run : runs(text, number))
    if (run.link >= 0 && at.x >= run.left && at.x < run.left + run.width) hit.link = run.link;
  return hit;
}

}  // namespace varnowick
