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
constexpr int kTextMargin = 4;  // pixels at 96 dots per inch
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
