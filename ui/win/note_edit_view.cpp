// The part of NoteEdit for what of a note is in the control, and in sight of it.

#include <richedit.h>

#include <algorithm>

#include "ui/win/note_edit.h"

namespace varnowick {
namespace {

constexpr int kThumbWidth = 3;
constexpr int kWheelLines = 3;

}  // namespace

// Puts the part of the text around the caret into the control, the line of `top` first
// if it is in that part.
void NoteEdit::load(std::size_t caretOffset, std::size_t top) {
  slice_ = sliceAround(text_, caretOffset);
  const std::wstring part = text_.substr(slice_.start, slice_.size());
  loading_ = true;
  SendMessageW(control(), WM_SETREDRAW, FALSE, 0);
  SetWindowTextW(control(), part.c_str());
  applyColours();
  const auto at =
      static_cast<LPARAM>(toPosition(part, caretOffset - std::min(caretOffset, slice_.start)));
  SendMessageW(control(), EM_SETSEL, static_cast<WPARAM>(at), at);
  if (slice_.contains(top)) scrollToTop(toPosition(part, top - slice_.start));
  SendMessageW(control(), EM_EMPTYUNDOBUFFER, 0, 0);
  SendMessageW(control(), WM_SETREDRAW, TRUE, 0);
  InvalidateRect(control(), nullptr, TRUE);
  InvalidateRect(handle(), nullptr, TRUE);
  loading_ = false;
  typed_ = false;
}

std::size_t NoteEdit::toPosition(std::wstring_view part, std::size_t offset) const {
  return rich_ ? withoutBreakUnits(part, offset) : offset;
}

// Where a letter is drawn, from the control's top; positions are in its own counting.
int NoteEdit::topOf(std::size_t position) const {
  if (rich_) {
    POINTL at{};
    SendMessageW(control(), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&at),
                 static_cast<LPARAM>(position));
    return at.y;
  }
  const LRESULT line = SendMessageW(control(), EM_LINEFROMCHAR, position, 0);
  const LRESULT first = SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0);
  return static_cast<int>(line - first) * lineHeight().value;
}

// Some controls take a line to be shorter than theirs are, so that it takes several
// steps.
void NoteEdit::scrollToTop(std::size_t position) {
  constexpr int kMostSteps = 20;
  for (int step = 0; step < kMostSteps; ++step) {
    const int top = topOf(position);
    const int lines = top / lineHeight().value;
    if (lines == 0) return;
    SendMessageW(control(), EM_LINESCROLL, 0, lines);
    if (topOf(position) == top) return;  // it is the end of the text
  }
}

// From a position as the control counts, and the part of the text that it holds.
std::size_t NoteEdit::offsetOf(std::wstring_view part, DWORD position) const {
  return slice_.start +
         (rich_ ? withBreakUnits(part, position) : std::min<std::size_t>(position, part.size()));
}

// Of the first line that can be read.
std::size_t NoteEdit::topOffset() const {
  const LRESULT line = SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0);
  const auto startOf = [&](LRESULT number) {
    return SendMessageW(control(), EM_LINEINDEX, static_cast<WPARAM>(number), 0);
  };
  LRESULT position = std::max<LRESULT>(0, startOf(line));
  const bool cutOff = topOf(static_cast<std::size_t>(position)) < -lineHeight().value / 2;
  if (const LRESULT next = startOf(line + 1); cutOff && next > position) position = next;
  return offsetOf(text(), static_cast<DWORD>(position));
}

void NoteEdit::goTo(std::size_t offset) {
  takeIn(text());
  offset = std::min(offset, text_.size());
  load(offset, offset);
  SendMessageW(control(), EM_SCROLLCARET, 0, 0);
}

// More of a long note when the caret comes to the end of what the control holds.
void NoteEdit::followCaret() {
  const auto length = static_cast<std::size_t>(GetWindowTextLengthW(control()));
  const bool whole = slice_.size() == text_.size();
  if (!active() || (whole && length < 2 * kMostEdited)) return;
  DWORD from = 0;
  DWORD to = 0;
  SendMessageW(control(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
               reinterpret_cast<LPARAM>(&to));
  const std::wstring part = text();
  const std::size_t caret = offsetOf(part, to);
  const std::size_t all = slice_.start + part.size() + (text_.size() - slice_.end);
  // While something is selected the other end of it must stay.
  if (from != to || !wantsAnotherSlice({slice_.start, slice_.start + part.size()}, all,
                                       caret - slice_.start, part.size()))
    return;
  const std::size_t top = topOffset();
  takeIn(part);
  load(caret, top);
}

// The same when the wheel has brought its end into sight; the caret comes along.
void NoteEdit::followView() {
  if (slice_.size() == text_.size()) return;
  const std::wstring part = text();
  const std::size_t top = topOffset();
  const std::size_t all = slice_.start + part.size() + (text_.size() - slice_.end);
  if (!wantsAnotherSlice({slice_.start, slice_.start + part.size()}, all, top - slice_.start,
                         part.size()))
    return;
  takeIn(part);
  load(top, top);
}

void NoteEdit::wheel(int delta) {
  wheelRest_ += delta * kWheelLines;
  const int lines = wheelRest_ / WHEEL_DELTA;
  wheelRest_ -= lines * WHEEL_DELTA;
  if (lines == 0) return;
  SendMessageW(control(), EM_LINESCROLL, 0, -lines);
  followView();
  InvalidateRect(handle(), nullptr, TRUE);
}

void NoteEdit::paintThumb(HDC dc) const {
  RECT client{};
  GetClientRect(handle(), &client);
  const int lines = static_cast<int>(SendMessageW(control(), EM_GETLINECOUNT, 0, 0));
  const int first = static_cast<int>(SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0));
  const int height = client.bottom - 2 * scaled(kHalo);
  const int visible = height / std::max(1, lineHeight().value);
  const bool part = active() && slice_.size() < text_.size();
  if ((lines <= visible && !part) || lines == 0) return;
  // Of the whole text, of which the control's lines are a share.
  const double all = std::max<double>(1, static_cast<double>(text_.size()));
  const double share = part ? static_cast<double>(slice_.size()) / all : 1.0;
  const double start = part ? static_cast<double>(slice_.start) / all : 0.0;
  const double from = start + share * first / lines;
  const double length = share * std::min(visible, lines) / lines;
  const int pixels =
      std::clamp(static_cast<int>(height * length), std::min(height, scaled(16)), height);
  const int room = height - pixels;
  const int top =
      scaled(kHalo) +
      std::clamp(static_cast<int>(room * from / std::max(0.001, 1.0 - length)), 0, room);
  const RECT thumb{client.right - scaled(kHalo + kThumbWidth), top, client.right - scaled(kHalo),
                   top + pixels};
  const Colour colour = palette().highContrast ? palette().noteText
                                               : mix(palette().noteBack, palette().noteText, 0.35F);
  const BrushHandle brush(CreateSolidBrush(static_cast<COLORREF>(colour.bgr)));
  FillRect(dc, &thumb, brush.get());
}

}  // namespace varnowick
