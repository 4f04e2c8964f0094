#include "ui/win/pane/note_edit.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "ui/scene/note_view.h"
#include "ui/win/toolkit/clipboard_text.h"
#include "ui/win/toolkit/held_keys.h"

namespace varnowick {
namespace {

constexpr UINT_PTR kTimerNote = 1;
constexpr UINT kRestMilliseconds = 2000;
constexpr int kTextMargin = 4;  // pixels at 96 dots per inch, as round a note that is shown

bool controlDown() { return heldModifiers().ctrlAlone(); }
bool shiftDown() { return heldModifiers().shift; }

}  // namespace

NoteEdit::~NoteEdit() { destroy(); }

// The plain control: it scrolls by whole lines and takes in nothing but text, and there
// is no way to drag something into it or out.
HWND NoteEdit::makeControl() {
  const DWORD style =
      WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
  const HWND made = CreateWindowExW(0, L"EDIT", L"", style, 0, 0, 0, 0, handle(), nullptr,
                                    GetModuleHandleW(nullptr), nullptr);
  SendMessageW(made, EM_LIMITTEXT, 0, 0);
  return made;
}

// Lines and tabs as wide as in a note that is shown. Some systems give the control margins
// of their own with each font.
void NoteEdit::fontSet() {
  SendMessageW(control(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  const WindowDc dc(nullptr);
  const HGDIOBJ former =
      SelectObject(dc.get(), reinterpret_cast<HGDIOBJ>(SendMessageW(control(), WM_GETFONT, 0, 0)));
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc.get(), &metrics);
  SelectObject(dc.get(), former);
  // Quarters of a usual letter.
  int stop = MulDiv(density().toPixels(kNoteTab).value, 4,
                    std::max(1, static_cast<int>(metrics.tmAveCharWidth)));
  SendMessageW(control(), EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&stop));
}

PixelRect NoteEdit::frameRect(const PixelRect& nodeRect) const {
  return nodeRect.inset(Pixels{-scaled(kHalo)});
}

// As many whole lines as the note shows.
PixelRect NoteEdit::controlRect(Size<Pixels> frame) const {
  const int side = scaled(kHalo) + scaled(kTextMargin);
  const int line = lineHeight().value;
  const int lines = std::max(1, (frame.height.value - 2 * side) / line);
  return {{side}, {side}, {std::max(1, frame.width.value - 2 * side)}, {lines * line}};
}

bool NoteEdit::begin(ContainerSlot slot, const std::wstring& text, std::size_t offset) {
  accept();
  const NodeId note{ControlKind::ContainerNote, slot.index};
  const Node* box = scene().find({ControlKind::Container, slot.index});
  TextStyle style;
  style.points = kNotePoints;
  const bool outer = std::exchange(loading_, true);
  const bool shown =
      show(note, L"", style, L"Note of " + (box == nullptr ? std::wstring() : box->text));
  loading_ = outer;
  if (!shown) return false;
  std::wstring whole = editableText(text);
  if (slot != slot_ || whole != note_.text()) note_.open(std::move(whole));
  note_.endRun();
  slot_ = slot;
  changed_ = false;
  wheelRest_ = 0;
  // Offsets of another way to break lines are near enough to begin at.
  offset = std::min(offset, note_.text().size());
  selection_ = {offset, offset};
  load(offset, std::min(noteTopOffset(scene(), note, density()), note_.text().size()));
  return true;
}

void NoteEdit::forgetGone() {
  if (active() || slot_.none()) return;
  if (scene().find({ControlKind::ContainerNote, slot_.index}) != nullptr) return;
  note_.open({});
  slot_ = {};
}

// The control has changed its text: so does the note.
void NoteEdit::textChanged() {
  if (loading_) return;
  const std::wstring now = text();
  const NoteSlice selected = selectedInControl();
  const NoteChange change =
      changeBetween(std::wstring_view(note_.text()).substr(slice_.start, slice_.size()), now,
                    selected.end - slice_.start);
  if (change.none()) return;
  if (!note_.replace(slice_.start + change.start, slice_.start + change.end, change.by)) {
    MessageBeep(MB_ICONWARNING);
    return load(selection_.caret, topOffset());
  }
  slice_.end = slice_.start + now.size();
  shown_ = selected;
  selection_ = {selected.start, selected.end};
  changed();
}

void NoteEdit::changed() {
  changed_ = true;
  SetTimer(handle(), kTimerNote, kRestMilliseconds, nullptr);
}

// What is selected becomes that text, wherever it begins and ends.
bool NoteEdit::replaceSelected(std::wstring_view by) {
  const std::size_t top = topOffset();
  const std::size_t start = selection_.start();
  if (selection_.empty() && by.empty()) return true;
  note_.endRun();
  if (!note_.replace(start, selection_.end(), by)) {
    MessageBeep(MB_ICONWARNING);
    return false;
  }
  note_.endRun();
  selection_ = {start + by.size(), start + by.size()};
  changed();
  load(selection_.caret, top);
  showCaret();
  return true;
}

bool NoteEdit::step(Step step) {
  const std::size_t top = topOffset();
  const auto caret = step == Step::Undo ? note_.undo() : note_.redo();
  if (!caret) return false;
  selection_ = {*caret, *caret};
  changed();
  load(*caret, top);
  showCaret();
  return true;
}

bool NoteEdit::copy() {
  if (selection_.empty()) return false;
  return putTextOnClipboard(handle(),
                            std::wstring_view(note_.text())
                                .substr(selection_.start(), selection_.end() - selection_.start()));
}

void NoteEdit::paste() {
  const std::wstring pasted = editableText(textOnClipboard(handle(), kMostNoteText));
  if (!pasted.empty())
    replaceSelected(pasted);
  else if (textIsOnClipboard())
    MessageBeep(MB_ICONWARNING);  // more of it than a note takes
}

void NoteEdit::handOver() {
  if (!changed_) return;
  changed_ = false;
  if (hooks_.committed) hooks_.committed(slot_, note_.text());
}

void NoteEdit::commit() {
  if (!active()) return;
  const HandlerScope scope(handlers());
  KillTimer(handle(), kTimerNote);
  note_.endRun();
  handOver();
}

void NoteEdit::ended(bool, std::wstring) {
  KillTimer(handle(), kTimerNote);
  const std::size_t top = topAtEnd_;
  const ContainerSlot slot = slot_;
  handOver();
  if (hooks_.ended) hooks_.ended(slot, top);
}

// What Ctrl with a letter would type.
bool NoteEdit::refuses(wchar_t character) const {
  return character < L' ' && character != L'\r' && character != L'\t' && character != L'\b';
}

bool NoteEdit::clipboardKey(int key) {
  const bool control = controlDown() && !shiftDown();
  const bool shift = shiftDown() && !controlDown();
  if (control && (key == 'C' || key == VK_INSERT)) {
    copy();
  } else if ((control && key == 'X') || (shift && key == VK_DELETE)) {
    if (copy()) replaceSelected(L"");
  } else if ((control && key == 'V') || (shift && key == VK_INSERT)) {
    paste();
  } else {
    return false;
  }
  return true;
}

bool NoteEdit::keyDown(int key) {
  if (clipboardKey(key) || moves(key)) return true;
  switch (key) {
    case VK_ESCAPE:
      accept();
      return true;
    case VK_TAB:
      // A tab is part of the text; back out of it goes the other way.
      if (!shiftDown()) return false;
      accept();
      return true;
    case 'Z':
    case 'Y':
      if (!controlDown()) return false;
      step(key == 'Z' && !shiftDown() ? Step::Undo : Step::Redo);
      return true;
    case VK_DELETE:
      if (!selection_.empty())
        replaceSelected(L"");
      else if (controlDown())
        deleteWord(VK_RIGHT);
      else
        return false;
      return true;
    case VK_BACK:
      if (!controlDown()) return false;
      if (selection_.empty())
        deleteWord(VK_LEFT);
      else
        replaceSelected(L"");
      return true;
    default:
      break;
  }
  if (key >= VK_F1 && key <= VK_F12 && key != VK_F10) {
    commit();
    return hooks_.functionKey && hooks_.functionKey(key);
  }
  return false;
}

// As far as the control would go by that arrow with Ctrl, which is being held.
void NoteEdit::deleteWord(int key) {
  const std::size_t from = selection_.caret;
  EditOverlay::onControl(WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  followSelection(false);
  selection_ = {from, selection_.caret};
  replaceSelected(L"");
}

// What takes the place of what is selected: the control knows only its part of that.
// True when nothing is left for the control to do.
bool NoteEdit::prepareFor(UINT message, WPARAM wParam) {
  const auto letter = static_cast<wchar_t>(wParam);
  const bool types = message == WM_CHAR && letter != 0x7F && !refuses(letter);
  if (!types && message != EM_REPLACESEL && message != WM_IME_STARTCOMPOSITION) return false;
  if (selection_.within(slice_)) return false;
  const bool selected = !selection_.empty();
  if (selected)
    replaceSelected(L"");
  else
    load(selection_.caret, selection_.caret);
  return selected && message == WM_CHAR && wParam == VK_BACK;
}

// At the point of the screen, or at the caret when it comes from the keyboard.
void NoteEdit::showMenu(LPARAM point) {
  if (!hooks_.menu) return;
  POINT at{GET_X_LPARAM(point), GET_Y_LPARAM(point)};
  if (at.x == -1 && at.y == -1) {
    GetCaretPos(&at);
    RECT client{};
    GetClientRect(control(), &client);
    at.x = std::clamp(at.x, client.left, client.right);
    at.y = std::clamp(at.y + lineHeight().value, client.top, client.bottom);
    ClientToScreen(control(), &at);
  }
  SetFocus(control());
  const bool some = !selection_.empty();
  const bool all = some && selection_.start() == 0 && selection_.end() == note_.text().size();
  // The session may have ended meanwhile, for one.
  const auto item = [this](const wchar_t* caption, const wchar_t* key, bool enabled,
                           const std::function<void()>& act) {
    return MenuItem{.caption = caption, .key = key, .enabled = enabled, .act = [this, act] {
                      if (active()) act();
                    }};
  };
  const auto cut = [this] {
    if (copy()) replaceSelected(L"");
  };
  hooks_.menu(
      {item(L"&Undo", L"Ctrl+Z", note_.canUndo(), [this] { step(Step::Undo); }),
       item(L"&Redo", L"Ctrl+Y", note_.canRedo(), [this] { step(Step::Redo); }),
       {},
       item(L"Cu&t", L"Ctrl+X", some, cut),
       item(L"&Copy", L"Ctrl+C", some, [this] { copy(); }),
       item(L"&Paste", L"Ctrl+V", textIsOnClipboard(), [this] { paste(); }),
       item(L"&Delete", L"Del", some, [this] { replaceSelected(L""); }),
       {},
       item(L"Select &all", L"Ctrl+A", !note_.text().empty() && !all, [this] { selectAll(); })},
      at);
}

LRESULT NoteEdit::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND: {
      const LRESULT result = EditOverlay::handleMessage(message, wParam, lParam);
      const PixelRect r = thumb();
      const RECT area{r.left.value, r.top.value, r.right().value, r.bottom().value};
      const BrushHandle brush(
          CreateSolidBrush(static_cast<COLORREF>(noteThumbColour(palette()).bgr)));
      FillRect(reinterpret_cast<HDC>(wParam), &area, brush.get());
      return result;
    }
    case WM_COMMAND:
      if (HIWORD(wParam) == EN_VSCROLL || HIWORD(wParam) == EN_CHANGE)
        InvalidateRect(handle(), nullptr, TRUE);
      break;
    case WM_TIMER:
      if (wParam == kTimerNote) commit();
      return 0;
    case WM_MOUSEWHEEL:
      wheel(GET_WHEEL_DELTA_WPARAM(wParam));
      return 0;
    case WM_LBUTTONDOWN:
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
      if (dragThumb(message, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)})) return 0;
      break;
    default:
      break;
  }
  return EditOverlay::handleMessage(message, wParam, lParam);
}

LRESULT NoteEdit::onControl(UINT message, WPARAM wParam, LPARAM lParam) {
  if (loading_ || !active()) return EditOverlay::onControl(message, wParam, lParam);
  switch (message) {
    case WM_MOUSEWHEEL:
      wheel(GET_WHEEL_DELTA_WPARAM(wParam));
      return 0;
    // The control may send these to itself, with what it has just selected.
    case WM_COPY:
    case WM_CUT:
    case WM_CLEAR:
      followSelection(false);
      if (message != WM_CLEAR && !copy()) return 0;
      if (message != WM_COPY) replaceSelected(L"");
      return 0;
    case WM_PASTE:
      paste();
      return 0;
    case WM_UNDO:
    case EM_UNDO:
      return step(Step::Undo);
    case EM_CANUNDO:
      return note_.canUndo();
    case WM_SYSKEYDOWN:
      if (wParam != VK_BACK) break;
      step(shiftDown() ? Step::Redo : Step::Undo);
      return 0;
    case WM_SYSCHAR:
      if (wParam == VK_BACK) return 0;
      break;
    case WM_CONTEXTMENU:
      showMenu(lParam);
      return 0;
    default:
      break;
  }
  if (prepareFor(message, wParam)) return 0;
  const LRESULT result = EditOverlay::onControl(message, wParam, lParam);
  if (!active()) return result;
  switch (message) {
    case WM_KEYDOWN:
    case WM_CHAR:
      followSelection(shiftDown());
      followCaret();
      break;
    case WM_LBUTTONDOWN:
      note_.endRun();
      followSelection((wParam & MK_SHIFT) != 0);
      break;
    case WM_LBUTTONUP:
      followSelection(true);
      followCaret();
      break;
    case WM_MOUSEMOVE:
    case WM_TIMER:  // by which the control scrolls while the mouse is beyond its edge
      if (GetCapture() == control()) followDrag();
      break;
    case WM_SETTEXT:  // by a screen reader
      textChanged();
      break;
    case EM_SETSEL:
    case WM_LBUTTONDBLCLK:
      followSelection(false);
      break;
    default:
      break;
  }
  return result;
}

}  // namespace varnowick
