#include "ui/win/dialog.h"

#include <cstring>
#include <exception>

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
  switch (control) {
    case DialogControl::Label:
    case DialogControl::ErrorLabel:
      return {kStatic, SS_LEFT | SS_NOPREFIX, 0};
    case DialogControl::Edit:
      return {kEdit, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE};
    case DialogControl::CheckBox:
      return {kButton, BS_AUTOCHECKBOX | WS_TABSTOP, 0};
    case DialogControl::Button:
      return {kButton, BS_PUSHBUTTON | WS_TABSTOP, 0};
    case DialogControl::DefaultButton:
      return {kButton, BS_DEFPUSHBUTTON | WS_TABSTOP, 0};
    case DialogControl::ComboBox:
      return {kCombo, CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL | WS_TABSTOP, 0};
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

INT_PTR Dialog::showModal(HWND owner) {
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
  try {
    return dialog->handleMessage(message, wParam, lParam);
  } catch (const std::exception&) {
    return FALSE;
  }
}

INT_PTR Dialog::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      initialise();
      return TRUE;
    case WM_CTLCOLORSTATIC: {
      const int id = GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
      for (const DialogRow& row : rows_) {
        if (row.id != id || row.control != DialogControl::ErrorLabel) continue;
        const auto dc = reinterpret_cast<HDC>(wParam);
        SetTextColor(dc, RGB(192, 32, 32));
        SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
        return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_BTNFACE));
      }
      return FALSE;
    }
    case WM_COMMAND: {
      const int id = LOWORD(wParam);
      const int notification = HIWORD(wParam);
      if (notification == BN_CLICKED && (lParam == 0 || id == IDCANCEL || id == IDOK)) {
        command(id);
        return TRUE;
      }
      for (const DialogRow& row : rows_) {
        if (row.id != id) continue;
        const bool button =
            row.control == DialogControl::Button || row.control == DialogControl::DefaultButton;
        if (button && notification == BN_CLICKED)
          command(id);
        else
          changed(id);
        return TRUE;
      }
      return FALSE;
    }
    default:
      return FALSE;
  }
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
