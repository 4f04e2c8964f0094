#include "ui/win/note_edit.h"

#include <richedit.h>

#include <algorithm>
#include <utility>

#include "ui/scene/note_view.h"
#include "ui/win/dialog.h"

namespace varnowick {
namespace {

constexpr UINT_PTR kTimerNote = 1;
constexpr UINT kRestMilliseconds = 2000;
constexpr int kHalo = 2;  // pixels at 96 dots per inch, like those below
constexpr int kTextMargin = 4;
constexpr int kThumbWidth = 3;
constexpr int kWheelLines = 3;
constexpr std::size_t kLongPaste = 15'000;
constexpr LPARAM kNoLimit = 0x7FFFFFFE;

// Of RichEdit 3.0, which the older headers do not know: a font for each script may be
// chosen, but neither another size nor another font for plain letters.
constexpr UINT kSetLanguageOptions = WM_USER + 120;
constexpr LPARAM kAutoFont = 0x0002;

// The control of the system folder; never freed, since windows of its class may stand
// until the very end.
bool richEditLoaded() {
  static const bool loaded = [] {
    const auto* library = new SystemLibrary(L"riched20.dll");
    return static_cast<bool>(*library);
  }();
  return loaded;
}

bool controlDown() { return GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0; }
bool shiftDown() { return GetKeyState(VK_SHIFT) < 0; }

// Keys that format, which a plain text has no use for.
bool formats(int key) {
  if (!controlDown()) return false;
  const bool either = key == 'B' || key == 'E' || key == 'I' || key == 'J' || key == 'L' ||
                      key == 'R' || key == 'U' || key == '1' || key == '2' || key == '5' ||
                      key == 0xBB /* VK_OEM_PLUS */;
  return either || (key == 'A' && shiftDown());
}

std::wstring clipboardText(HWND owner) {
  std::wstring text;
  if (!OpenClipboard(owner)) return text;
  const HANDLE data = GetClipboardData(CF_UNICODETEXT);
  if (data != nullptr) {
    const std::size_t most = GlobalSize(data) / sizeof(wchar_t);
    if (const auto* letters = static_cast<const wchar_t*>(GlobalLock(data)); letters != nullptr) {
      text.assign(letters, std::find(letters, letters + most, L'\0'));
      GlobalUnlock(data);
    }
  }
  CloseClipboard();
  return text;
}

}  // namespace

NoteEdit::~NoteEdit() { destroy(); }

HWND NoteEdit::makeControl() {
  const DWORD style =
      WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;
  const auto make = [&](const wchar_t* name) {
    return CreateWindowExW(0, name, L"", style, 0, 0, 0, 0, handle(), nullptr,
                           GetModuleHandleW(nullptr), nullptr);
  };
  // It undoes step by step, shows every script and takes long lines in its stride; the
  // plain control is for systems that have lost it.
  HWND made = richEditLoaded() ? make(RICHEDIT_CLASSW) : nullptr;
  rich_ = made != nullptr;
  if (!rich_) {
    made = make(L"EDIT");
    SendMessageW(made, EM_LIMITTEXT, 0, 0);
    SendMessageW(made, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    return made;
  }
  SendMessageW(made, EM_SETTEXTMODE, TM_PLAINTEXT | TM_MULTILEVELUNDO, 0);
  SendMessageW(made, EM_EXLIMITTEXT, 0, kNoLimit);
  SendMessageW(made, kSetLanguageOptions, 0, kAutoFont);
  SendMessageW(made, EM_SETEVENTMASK, 0, ENM_CHANGE | ENM_SCROLL);
  SendMessageW(made, EM_SETTARGETDEVICE, 0, 0);  // lines end at the control's width
  return made;
}

void NoteEdit::applyColours() {
  if (!rich_ || control() == nullptr) return;
  SendMessageW(control(), EM_SETBKGNDCOLOR, 0, ground(palette()).bgr);
  CHARFORMATW format{};
  format.cbSize = sizeof format;
  format.dwMask = CFM_COLOR;
  format.crTextColor = static_cast<COLORREF>(ink(palette()).bgr);
  const bool outer = std::exchange(loading_, true);
  SendMessageW(control(), EM_SETCHARFORMAT, 0, reinterpret_cast<LPARAM>(&format));  // for new text
  SendMessageW(control(), EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&format));
  loading_ = outer;
}

PixelRect NoteEdit::frameRect(const PixelRect& nodeRect) const {
  return nodeRect.inset(Pixels{-scaled(kHalo)});
}

PixelRect NoteEdit::controlRect(Size<Pixels> frame) const {
  const int side = scaled(kHalo + kTextMargin);
  const int top = scaled(kHalo);
  // This control keeps a pixel free before its text.
  const int inset = rich_ ? 1 : 0;
  return {{side - inset},
          {top},
          {std::max(1, frame.width.value - 2 * side + inset)},
          {std::max(1, frame.height.value - 2 * top)}};
}

bool NoteEdit::begin(ContainerSlot slot, const std::wstring& text, std::size_t offset) {
  accept();
  const NodeId note{ControlKind::ContainerNote, slot.index};
  const Node* box = scene().find({ControlKind::Container, slot.index});
  TextStyle style;
  style.points = kNotePoints;
  if (!show(note, L"", style, L"Note of " + (box == nullptr ? std::wstring() : box->text)))
    return false;
  slot_ = slot;
  text_ = editableText(text);
  typed_ = changed_ = false;
  wheelRest_ = 0;
  // Offsets of another way to break lines are near enough to begin at.
  load(std::min(offset, text_.size()),
       std::min(noteTopOffset(scene(), note, density()), text_.size()));
  return true;
}

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

void NoteEdit::textChanged() {
  if (loading_) return;
  typed_ = true;
  SetTimer(handle(), kTimerNote, kRestMilliseconds, nullptr);
}

// What the control holds becomes part of the whole.
void NoteEdit::takeIn(const std::wstring& edited) {
  if (!typed_) return;
  typed_ = false;
  const std::wstring part = editableText(edited);
  if (text_.compare(slice_.start, slice_.size(), part) == 0) return;
  text_ = withSlice(text_, slice_, part);
  slice_.end = slice_.start + part.size();
  changed_ = true;
}

void NoteEdit::handOver() {
  if (!changed_) return;
  changed_ = false;
  if (hooks_.committed) hooks_.committed(slot_, text_);
}

void NoteEdit::commit() {
  if (!active()) return;
  KillTimer(handle(), kTimerNote);
  takeIn(text());
  handOver();
}

void NoteEdit::ended(bool, std::wstring edited) {
  KillTimer(handle(), kTimerNote);
  takeIn(edited);
  const std::size_t top = topAtEnd_;
  const ContainerSlot slot = slot_;
  handOver();
  text_ = {};
  if (hooks_.ended) hooks_.ended(slot, top);
}

bool NoteEdit::keyDown(int key) {
  switch (key) {
    case VK_ESCAPE:
      accept();
      return true;
    case VK_TAB:
      // A tab is part of the text; back out of it goes the other way.
      if (!shiftDown()) return false;
      accept();
      return true;
    case VK_HOME:
    case VK_END:
      if (!controlDown() || shiftDown() || slice_.size() == text_.size()) return false;
      goTo(key == VK_HOME ? 0 : std::wstring::npos);
      return true;
    case 'V':
    case VK_INSERT:
      if (key == 'V' ? !controlDown() : !shiftDown() || controlDown()) return false;
      paste();
      return true;
    default:
      break;
  }
  if (key >= VK_F1 && key <= VK_F12 && key != VK_F10) {
    commit();
    return hooks_.functionKey && hooks_.functionKey(key);
  }
  return formats(key);
}

void NoteEdit::goTo(std::size_t offset) {
  takeIn(text());
  offset = std::min(offset, text_.size());
  load(offset, offset);
  SendMessageW(control(), EM_SCROLLCARET, 0, 0);
}

// Only ever the plain text, whatever else the control would take.
void NoteEdit::paste() {
  const std::wstring pasted = editableText(clipboardText(handle()));
  if (pasted.empty() || pasteLongText(pasted)) return;
  SendMessageW(control(), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(pasted.c_str()));
  followCaret();
}

// A long text would keep the control busy for minutes. It goes into the whole, of which
// the control then shows the part where the pasted text ends.
bool NoteEdit::pasteLongText(const std::wstring& pasted) {
  if (pasted.size() < kLongPaste && sliceAround(pasted, 0).size() == pasted.size()) return false;
  DWORD from = 0;
  DWORD to = 0;
  SendMessageW(control(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
               reinterpret_cast<LPARAM>(&to));
  const std::wstring part = text();
  typed_ = true;
  takeIn(part);
  const NoteSlice selected{offsetOf(part, from), offsetOf(part, to)};
  text_ = withSlice(text_, selected, pasted);
  changed_ = true;
  load(selected.start + pasted.size(), selected.start + pasted.size());
  SendMessageW(control(), EM_SCROLLCARET, 0, 0);
  SetTimer(handle(), kTimerNote, kRestMilliseconds, nullptr);
  return true;
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

LRESULT NoteEdit::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ERASEBKGND: {
      const LRESULT result = EditOverlay::handleMessage(message, wParam, lParam);
      paintThumb(reinterpret_cast<HDC>(wParam));
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
    default:
      break;
  }
  return EditOverlay::handleMessage(message, wParam, lParam);
}

LRESULT NoteEdit::onControl(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEWHEEL:
      wheel(GET_WHEEL_DELTA_WPARAM(wParam));
      return 0;
    case WM_PASTE:
      paste();
      return 0;
    case WM_KEYDOWN:
    case WM_CHAR: {
      const LRESULT result = EditOverlay::onControl(message, wParam, lParam);
      if (slice_.size() < text_.size() || message == WM_CHAR) followCaret();
      return result;
    }
    default:
      break;
  }
  return EditOverlay::onControl(message, wParam, lParam);
}

}  // namespace varnowick
