#include "tests/e2e/harness/dialogs.h"

#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace {

constexpr const wchar_t* kDialogClass = L"#32770";
constexpr UINT kAnswerLimit = 5000;  // ms for a window that does not answer

DWORD_PTR ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerLimit, &result);
  return result;
}

BOOL CALLBACK collect(HWND window, LPARAM into) {
  reinterpret_cast<std::vector<HWND>*>(into)->push_back(window);
  return TRUE;
}

DWORD processOf(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process;
}

}  // namespace

std::wstring textOf(HWND window) {
  // GetWindowText would not ask a control of another process.
  const DWORD_PTR length = ask(window, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(length + 1, L'\0');
  const DWORD_PTR got = ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(got < text.size() ? got : length);
  return text;
}

std::wstring classOf(HWND window) {
  wchar_t name[256] = {};
  const int length = GetClassNameW(window, name, 255);
  return std::wstring(name, static_cast<std::size_t>(length));
}

std::vector<HWND> windowsOf(DWORD process) {
  std::vector<HWND> all;
  EnumWindows(&collect, reinterpret_cast<LPARAM>(&all));
  if (process != 0) std::erase_if(all, [&](HWND w) { return processOf(w) != process; });
  return all;
}

HWND findWindow(DWORD process, const std::wstring& className, const std::wstring& title) {
  for (const HWND window : windowsOf(process)) {
    if (!IsWindowVisible(window) || classOf(window) != className) continue;
    if (title.empty() || textOf(window) == title) return window;
  }
  return nullptr;
}

std::vector<HWND> DialogWindow::children(const wchar_t* className) const {
  std::vector<HWND> all;
  EnumChildWindows(handle_, &collect, reinterpret_cast<LPARAM>(&all));
  std::erase_if(all, [&](HWND w) { return lstrcmpiW(classOf(w).c_str(), className) != 0; });
  return all;
}

std::wstring DialogWindow::text() const {
  std::wstring joined;
  for (const HWND label : children(L"Static")) {
    const std::wstring text = textOf(label);
    if (text.empty() || !IsWindowVisible(label)) continue;
    joined += (joined.empty() ? L"" : L"\n") + text;
  }
  return joined;
}

std::vector<int> DialogWindow::buttons() const {
  std::vector<int> ids;
  for (const HWND button : children(L"Button")) {
    const LONG_PTR kind = GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK;
    const bool pushes = kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON;
    if (pushes && IsWindowVisible(button)) ids.push_back(GetDlgCtrlID(button));
  }
  return ids;
}

bool DialogWindow::hasIcon() const {
  for (const HWND label : children(L"Static")) {
    if ((GetWindowLongPtrW(label, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) return true;
  }
  return false;
}

void DialogWindow::press(int button) const {
  const HWND control = GetDlgItem(handle_, button);
  RECT rect{};
  if (control == nullptr || !GetWindowRect(control, &rect)) {
    throw HarnessError(L"the dialog has no button " + std::to_wstring(button));
  }
  const POINT at = centreOf(rect);
  require(L"the button to be reachable with the mouse: " + title(),
          [&] { return WindowFromPoint(at) == control; });
  mouse::click(at);
  require(L"the dialog to close: " + title(), [&] { return !open(); });
}

DialogWindow waitForDialog(DWORD process, const std::wstring& title) {
  HWND found = nullptr;
  require(L"a dialog titled " + title, [&] {
    found = findWindow(process, kDialogClass, title);
    return found != nullptr;
  });
  return DialogWindow(found);
}

DialogWindow anyDialog(DWORD process) { return DialogWindow(findWindow(process, kDialogClass)); }

}  // namespace varnowick::e2e
