// How the text of a note stands in its box: lines broken at the width, and the
// links in them. Made once for a text and a width, outside of painting; painting and
// the mouse then ask only for the lines in sight. Knows neither nodes nor windows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "containers/note_links.h"
#include "core/units.h"
#include "ui/scene/canvas.h"

namespace varnowick {

// From a tab stop to the next.
inline constexpr Twips kNoteTab{720};

// How wide each letter of a style is, asked for once. Lines are as wide as their
// letters together: the platform does not kern.
class LetterWidths {
 public:
  // Without a measure the widths are estimated.
  LetterWidths(TextMeasure* measure, TextStyle style, Density density);
  const TextStyle& style() const { return style_; }
  Density density() const { return density_; }
  Pixels lineHeight() const { return {lineHeight_}; }
  // Of a tab stop to the next.
  int tabWidth() const { return tabWidth_; }
  // Pixels; measured when the letter is first met.
  int of(wchar_t c);
  // Of a letter met before, else of a usual one.
  int known(wchar_t c) const;

 private:
  static constexpr std::size_t kTable = 0x2E80;  // from here on letters are square
  static constexpr std::uint16_t kUnknown = 0xFFFF;
  int measured(std::wstring_view letter, int otherwise);

  TextMeasure* measure_;
  TextStyle style_;
  Density density_;
  int lineHeight_;
  int tabWidth_;
  int square_;
  std::vector<std::uint16_t> widths_;
};

// A piece of a line that is drawn alike.
struct NoteRun {
  std::size_t start = 0;  // in the units of the text
  std::size_t length = 0;
  Pixels left;
  Pixels width;
  int link = -1;  // index into links(), -1: none
};

struct NoteHit {
  std::size_t offset = 0;  // where the caret would go
  int link = -1;           // the link under the point, -1: none
};

class NoteLayout {
 public:
  // Lays the text out; it must not be changed while the layout is in use, and is
  // handed in again wherever it is asked about. Takes time in proportion to the text.
  NoteLayout(std::wstring_view text, Pixels width, std::shared_ptr<LetterWidths> widths);

  // True when it is the layout of a text for that width and those letters; the text
  // itself is the caller's to compare.
  bool fits(Pixels width, const LetterWidths& widths) const {
    return width == width_ && &widths == widths_.get();
  }
  const TextStyle& style() const { return widths_->style(); }
  Pixels width() const { return width_; }
  Pixels lineHeight() const { return widths_->lineHeight(); }
  Pixels height() const { return lineHeight() * static_cast<int>(lineStarts_.size()); }
  std::size_t lines() const { return lineStarts_.size(); }
  const std::vector<NoteLink>& links() const { return links_; }

  // Where a line begins, and the line in which an offset stands.
  std::size_t lineStart(std::size_t line) const;
  std::size_t lineOf(std::size_t offset) const;
  // The text of a line without its line break.
  std::wstring_view line(std::wstring_view text, std::size_t line) const;
  // What to draw of a line, from left to right. A line that runs from right to left
  // is one run without links: the platform turns its pieces round.
  std::vector<NoteRun> runs(std::wstring_view text, std::size_t line) const;
  // What lies at a point, relative to the top of the first line. Points outside mean
  // the nearest line.
  NoteHit hit(std::wstring_view text, Point<Pixels> at) const;

 private:
  std::size_t breakLine(std::wstring_view text, std::size_t start, std::size_t end);
  int widthAt(wchar_t c, int x) const;

  std::shared_ptr<LetterWidths> widths_;
  Pixels width_;
  std::size_t textLength_;
  std::vector<std::uint32_t> lineStarts_;  // never empty
  std::vector<NoteLink> links_;
};

}  // namespace varnowick
