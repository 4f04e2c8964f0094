// The part of NoteEdit for what of a note is in the control, and in sight of it.

#include <algorithm>
#include <utility>

#include "ui/scene/note_view.h"
#include "ui/win/pane/note_edit.h"
#include "ui/win/toolkit/held_keys.h"
#include "ui/win/toolkit/wheel_lines.h"

namespace varnowick {
namespace {}  // namespace

// Puts the part of the text around the offset into the control, the line of `top` first
// if it is in that part.
void NoteEdit::load(std::size_t around, std::size_t top) {
  slice_ = sliceAround(note_.text(), around);
  const bool outer = std::exchange(loading_, true);
  SendMessageW(control(), WM_SETREDRAW, FALSE, 0);
  SetWindowTextW(control(), note_.text().substr(slice_.start, slice_.size()).c_str());
  showSelection();
  scrollToTop(slice_.contains(top) ? top : around);
  SendMessageW(control(), WM_SETREDRAW, TRUE, 0);
  InvalidateRect(control(), nullptr, TRUE);
  InvalidateRect(handle(), nullptr, TRUE);
  loading_ = outer;
}

// As much of what is selected as lies in the control.
void NoteEdit::showSelection() {
  const auto inside = [this](std::size_t offset) {
    return std::clamp(offset, slice_.start, slice_.end);
  };
  shown_ = {inside(selection_.start()), inside(selection_.end())};
  const bool outer = std::exchange(loading_, true);
  SendMessageW(control(), EM_SETSEL, inside(selection_.anchor) - slice_.start,
               static_cast<LPARAM>(inside(selection_.caret) - slice_.start));
  loading_ = outer;
}

// Brings the caret into sight, which is somewhere in the text.
void NoteEdit::showCaret() {
  if (!slice_.contains(selection_.caret)) load(selection_.caret, selection_.caret);
  SendMessageW(control(), EM_SCROLLCARET, 0, 0);
  InvalidateRect(handle(), nullptr, TRUE);
}

// What the control has selected, in offsets of the whole text.
NoteSlice NoteEdit::selectedInControl() const {
  DWORD from = 0;
  DWORD to = 0;
  SendMessageW(control(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
               reinterpret_cast<LPARAM>(&to));
  return {slice_.start + from, slice_.start + to};
}

void NoteEdit::followSelection(bool extends) {
  const NoteSlice now = selectedInControl();
  selection_ = selectionAfter(selection_, slice_, shown_, now, extends);
  shown_ = now;
}

// More of a long note when the caret comes to the end of what the control holds.
void NoteEdit::followCaret() {
  const std::size_t caret = selection_.caret;
  if (GetCapture() == control() || !slice_.contains(caret)) return;
  if (wantsAnotherSlice(slice_, note_.text().size(), caret - slice_.start, slice_.size()))
    load(caret, topOffset());
}

// The same while the mouse selects. The control is let go and taken again, as if with
// Shift: so it goes on from what has come.
void NoteEdit::followDrag() {
  followSelection(true);
  const std::size_t caret = selection_.caret;
  if (!wantsAnotherSlice(slice_, note_.text().size(), caret - slice_.start, slice_.size())) return;
  POINT at{};
  RECT client{};
  GetCursorPos(&at);
  ScreenToClient(control(), &at);
  GetClientRect(control(), &client);
  const LPARAM point = MAKELPARAM(std::clamp(at.x, client.left, client.right - 1),
                                  std::clamp(at.y, client.top, client.bottom - 1));
  loading_ = true;
  SendMessageW(control(), WM_LBUTTONUP, 0, point);
  load(caret, topOffset());
  SendMessageW(control(), WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, point);
  loading_ = false;
  followSelection(true);
}

// The same when the wheel has brought its end into sight. The caret stays where it is.
void NoteEdit::followView() {
  const std::size_t top = topOffset();
  const LRESULT below = SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0) + linesInSight();
  const LRESULT end = SendMessageW(control(), EM_LINEINDEX, static_cast<WPARAM>(below), 0);
  const std::size_t bottom = end < 0 ? slice_.end : slice_.start + static_cast<std::size_t>(end);
  const auto atEdge = [this](std::size_t offset) {
    return wantsAnotherSlice(slice_, note_.text().size(), offset - slice_.start, slice_.size());
  };
  if (atEdge(top) || atEdge(bottom)) load(top + (bottom - top) / 2, top);
  InvalidateRect(handle(), nullptr, TRUE);
}

void NoteEdit::selectAll() {
  selection_ = {0, note_.text().size()};
  showSelection();
}

// Keys that move the caret to where the control cannot, and before the others the part
// of the text from which it goes.
bool NoteEdit::moves(int key) {
  const Modifiers held = heldModifiers();
  const bool home = key == VK_HOME;
  if ((home || key == VK_END) && held.ctrlAlone()) {
    const std::size_t to = home ? 0 : note_.text().size();
    selection_ = {held.shift ? selection_.anchor : to, to};
  } else if ((key == VK_LEFT || key == VK_RIGHT) && !held.shift && !held.ctrl &&
             !selection_.within(slice_) && !selection_.empty()) {
    const std::size_t to = key == VK_LEFT ? selection_.start() : selection_.end();
    selection_ = {to, to};
  } else {
    if (key >= VK_PRIOR && key <= VK_DOWN && !slice_.contains(selection_.caret))
      load(selection_.caret, selection_.caret);
    return false;
  }
  note_.endRun();
  if (slice_.contains(selection_.caret)) showSelection();
  showCaret();
  return true;
}

// Of the first line in sight.
std::size_t NoteEdit::topOffset() const {
  const LRESULT line = SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0);
  const LRESULT start = SendMessageW(control(), EM_LINEINDEX, static_cast<WPARAM>(line), 0);
  return slice_.start + static_cast<std::size_t>(std::max<LRESULT>(0, start));
}

void NoteEdit::scrollToTop(std::size_t offset) {
  const LRESULT line = SendMessageW(control(), EM_LINEFROMCHAR, offset - slice_.start, 0);
  const LRESULT first = SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0);
  scrollBy(static_cast<int>(line - first));
}

int NoteEdit::linesInSight() const {
  RECT client{};
  GetClientRect(control(), &client);
  return std::max(1, static_cast<int>(client.bottom) / lineHeight().value);
}

// The last line of the text comes no higher than to the bottom.
void NoteEdit::scrollBy(int lines) {
  if (slice_.end == note_.text().size()) {
    const LRESULT all = SendMessageW(control(), EM_GETLINECOUNT, 0, 0);
    const LRESULT first = SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0);
    lines = std::min(lines, std::max(0, static_cast<int>(all - first) - linesInSight()));
  }
  SendMessageW(control(), EM_LINESCROLL, 0, lines);
}

void NoteEdit::wheel(int delta) {
  const int lines = wheelLines(delta, std::max(1, linesInSight() - 1), wheelRest_);
  if (lines == 0) return;
  scrollBy(lines);
  followView();
}

// The frame reaches a little beyond the note.
PixelRect NoteEdit::noteInFrame() const {
  RECT client{};
  GetClientRect(handle(), &client);
  return PixelRect{{0}, {0}, {client.right}, {client.bottom}}.inset(Pixels{scaled(kHalo)});
}

// The control's lines are a share of the whole text.
PixelRect NoteEdit::thumb() const {
  const auto lines = static_cast<double>(SendMessageW(control(), EM_GETLINECOUNT, 0, 0));
  const auto first = static_cast<double>(SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0));
  const auto all = static_cast<double>(std::max<std::size_t>(1, note_.text().size()));
  const bool whole = slice_.size() == note_.text().size();
  const double share = whole ? 1.0 : static_cast<double>(slice_.size()) / all;
  const double start = whole ? 0.0 : static_cast<double>(slice_.start) / all;
  const double shown = share * linesInSight() / std::max(1.0, lines);
  return noteThumb(noteInFrame(), start + share * first / std::max(1.0, lines),
                   whole ? shown : std::min(0.99, shown), density());
}

// True when the message is about the thumb, which is held as long as the button is.
bool NoteEdit::dragThumb(UINT message, POINT at) {
  const PixelRect r = thumb();
  if (message == WM_LBUTTONDOWN) {
    const bool on = !r.empty() && at.x >= r.left.value - scaled(kHalo) && at.y >= r.top.value &&
                    at.y < r.bottom().value;
    if (!on) return false;
    thumbHeld_ = static_cast<int>(at.y) - r.top.value;
    SetCapture(handle());
    return true;
  }
  if (!thumbHeld_) return false;
  if (message == WM_MOUSEMOVE) {
    scrollToShare(noteThumbShare(noteInFrame(), r, {static_cast<int>(at.y) - *thumbHeld_}));
    return true;
  }
  thumbHeld_.reset();
  if (message == WM_LBUTTONUP) {
    ReleaseCapture();
    SetFocus(control());
  }
  return true;
}

// 0: the first line is in sight, 1: the last one is.
void NoteEdit::scrollToShare(double share) {
  const std::size_t size = note_.text().size();
  if (slice_.size() < size) {
    const auto to = static_cast<std::size_t>(share * static_cast<double>(size));
    return load(to, to);
  }
  const auto lines = static_cast<int>(SendMessageW(control(), EM_GETLINECOUNT, 0, 0));
  const auto first = static_cast<int>(SendMessageW(control(), EM_GETFIRSTVISIBLELINE, 0, 0));
  scrollBy(roundHalfToEven(share * std::max(0, lines - linesInSight())) - first);
  InvalidateRect(handle(), nullptr, TRUE);
}

}  // namespace varnowick
