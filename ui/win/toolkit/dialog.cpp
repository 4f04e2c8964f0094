#include "ui/win/toolkit/dialog.h"

#include "platform/win32/callback.h"
#include "platform/win32/common_controls.h"
#include "ui/win/toolkit/system_look.h"

namespace varnowick {
namespace {

// Builds the in-memory form of DLGTEMPLATEEX that DialogBoxIndirectParam takes:
// little-endian words, every item aligned to four bytes.
class TemplateWriter {
 public:
  void word(unsigned v) { words_.push_back(static_cast<WORD>(v)); }
  void dword(DWORD v) {
    word(v & 0xFFFFU);
    word(v >> 16);
  }
  void text(const std::wstring& s) {
    for (const wchar_t c : s) word(static_cast<unsigned>(c));
    word(0);
  }
  void align() {
    if (words_.size() % 2 != 0) word(0);
  }
  const DLGTEMPLATE* get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

 private:
  std::vector<WORD> words_;
};

struct ControlForm {
  WORD classAtom;
  DWORD style;
  DWORD exStyle;
};

ControlForm formOf(DialogControl control) {
  constexpr WORD kButton = 0x80, kEdit = 0x81, kStatic = 0x82, kCombo = 0x85;
  // A group ends where the next control begins one, so all but the radio buttons
  // that follow the first begin one.
  constexpr DWORD kGroup = WS_GROUP;
  constexpr DWORD kStop = WS_GROUP | WS_TABSTOP;
  switch (control) {
    case DialogControl::Label:
      return {kStatic, SS_LEFT | kGroup, 0};
    case DialogControl::Text:
    case DialogControl::ErrorLabel:
      return {kStatic, SS_LEFT | SS_NOPREFIX | kGroup, 0};
    case DialogControl::Swatch:
      return {kStatic, SS_CENTER | SS_CENTERIMAGE | SS_NOPREFIX | SS_SUNKEN | kGroup, 0};
    case DialogControl::Drawing:
      return {kStatic, SS_OWNERDRAW | kGroup, 0};
    case DialogControl::Icon:
      return {kStatic, SS_ICON | SS_REALSIZEIMAGE | kGroup, 0};
    case DialogControl::Edit:
      return {kEdit, ES_AUTOHSCROLL | kStop, WS_EX_CLIENTEDGE};
    case DialogControl::ReadOnlyEdit:
      return {kEdit, ES_AUTOHSCROLL | ES_READONLY | kStop, WS_EX_CLIENTEDGE};
    case DialogControl::CheckBox:
      return {kButton, BS_AUTOCHECKBOX | kStop, 0};
    case DialogControl::FirstRadioButton:
      return {kButton, BS_AUTORADIOBUTTON | kStop, 0};
    case DialogControl::RadioButton:
      return {kButton, BS_AUTORADIOBUTTON, 0};
    case DialogControl::Button:
      return {kButton, BS_PUSHBUTTON | kStop, 0};
    case DialogControl::DefaultButton:
      return {kButton, BS_DEFPUSHBUTTON | kStop, 0};
    case DialogControl::ComboBox:
      return {kCombo, CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL | kStop, 0};
  }
  return {kStatic, 0, 0};
}

}  // namespace

std::wstring windowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring colourText(COLORREF colour) {
  wchar_t text[16];
  wsprintfW(text, L"#%02X%02X%02X", static_cast<int>(GetRValue(colour)),
            static_cast<int>(GetGValue(colour)), static_cast<int>(GetBValue(colour)));
  return text;
}

Dialog::Dialog(std::wstring title, short width, short height, std::vector<DialogRow> rows,
               std::wstring error)
    : title_(std::move(title)),
      width_(width),
      height_(height),
      rows_(std::move(rows)),
      error_(std::move(error)) {
  if (error_.empty()) return;
  constexpr short kMargin = 7, kTwoLines = 17, kRoom = 22;
  height_ = static_cast<short>(height_ + kRoom);
  for (DialogRow& row : rows_) row.y = static_cast<short>(row.y + kRoom);
  rows_.insert(rows_.begin(), {DialogControl::ErrorLabel, kErrorAbove, L"", kMargin, kMargin,
                               static_cast<short>(width_ - 2 * kMargin), kTwoLines});
}

INT_PTR Dialog::showModal(HWND owner) {
  ready_ = false;
  TemplateWriter t;
  t.word(1);  // version and signature of the extended form
  t.word(0xFFFF);
  t.dword(0);
  t.dword(0);
  t.dword(DS_MODALFRAME | DS_SHELLFONT | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
  t.word(static_cast<unsigned>(rows_.size()));
  t.word(0);
  t.word(0);
  t.word(static_cast<WORD>(width_));
  t.word(static_cast<WORD>(height_));
  t.word(0);
  t.word(0);
  t.text(title_);
  t.word(8);
  t.word(FW_NORMAL);
  t.word(static_cast<unsigned>(DEFAULT_CHARSET) << 8);
  t.text(L"MS Shell Dlg");
  for (const DialogRow& row : rows_) {
    const ControlForm form = formOf(row.control);
    t.align();
    t.dword(0);
    t.dword(form.exStyle);
    t.dword(form.style | WS_CHILD | WS_VISIBLE);
    t.word(static_cast<WORD>(row.x));
    t.word(static_cast<WORD>(row.y));
    t.word(static_cast<WORD>(row.width));
    t.word(static_cast<WORD>(row.height));
    t.dword(static_cast<DWORD>(row.id));
    t.word(0xFFFF);
    t.word(form.classAtom);
    t.text(row.text);
    t.word(0);
  }
  CommonControls::get();
  return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.get(), owner, &Dialog::procedure,
                                 reinterpret_cast<LPARAM>(this));
}

INT_PTR CALLBACK Dialog::procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(handle, DWLP_USER, lParam);
    reinterpret_cast<Dialog*>(lParam)->handle_ = handle;
  }
  auto* dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrW(handle, DWLP_USER));
  if (dialog == nullptr) return FALSE;
  return guardedCallback(INT_PTR{FALSE},
                         [&] { return dialog->handleMessage(message, wParam, lParam); });
}

INT_PTR Dialog::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      // Otherwise an edit takes no more than some 30 000 characters.
      for (const DialogRow& row : rows_)
        if (row.control == DialogControl::Edit) SendMessageW(item(row.id), EM_SETLIMITTEXT, 0, 0);
      if (!error_.empty()) setText(kErrorAbove, error_);
      initialise();
      if (firstFocus() != 0) focus(firstFocus());
      ready_ = true;
      return firstFocus() == 0;
    case WM_CTLCOLORSTATIC:
      return reinterpret_cast<INT_PTR>(backgroundOf(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)),
                                                    reinterpret_cast<HDC>(wParam)));
    case WM_DRAWITEM:
      draw(static_cast<int>(wParam), *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_COMMAND:
      notified(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    default:
      return FALSE;
  }
}

const DialogRow* Dialog::rowOf(int id) const {
  for (const DialogRow& row : rows_)
    if (row.id == id) return &row;
  return nullptr;
}

HBRUSH Dialog::backgroundOf(int id, HDC dc) {
  const DialogRow* row = rowOf(id);
  if (row == nullptr) return nullptr;
  if (row->control != DialogControl::ErrorLabel) return background(id, dc);
  if (systemIsHighContrast()) return nullptr;
  SetTextColor(dc, RGB(192, 32, 32));
  SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
  return GetSysColorBrush(COLOR_BTNFACE);
}

void Dialog::notified(int id, int notification) {
  // Esc, Enter and the close box send these two whether or not there is a button.
  if ((id == IDOK || id == IDCANCEL) && notification == BN_CLICKED) return command(id);
  const DialogRow* row = rowOf(id);
  if (row == nullptr || !ready_) return;
  switch (row->control) {
    case DialogControl::Button:
    case DialogControl::DefaultButton:
      if (notification == BN_CLICKED) command(id);
      return;
    case DialogControl::CheckBox:
    case DialogControl::FirstRadioButton:
    case DialogControl::RadioButton:
      if (notification == BN_CLICKED) changed(id);
      return;
    case DialogControl::Edit:
      if (notification == EN_CHANGE) changed(id);
      return;
    case DialogControl::ComboBox:
      if (notification == CBN_EDITCHANGE || notification == CBN_SELCHANGE) changed(id);
      return;
    default:
      return;
  }
}

void Dialog::focus(int id) {
  SendMessageW(handle_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(item(id)), TRUE);
}

void Dialog::complain(int label, const std::wstring& message, int field) {
  setText(label, message);
  NotifyWinEvent(EVENT_SYSTEM_ALERT, item(label), OBJID_CLIENT, CHILDID_SELF);
  focus(field);
}

std::wstring Dialog::text(int id) const { return windowText(item(id)); }
void Dialog::setText(int id, const std::wstring& text) { SetWindowTextW(item(id), text.c_str()); }
bool Dialog::checked(int id) const {
  return SendMessageW(item(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}
void Dialog::setChecked(int id, bool on) {
  SendMessageW(item(id), BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

}  // namespace varnowick
