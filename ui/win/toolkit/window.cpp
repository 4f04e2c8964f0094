#include "ui/win/toolkit/window.h"

#include "platform/win32/callback.h"
#include "ui/win/toolkit/resource.h"

namespace varnowick {

Window::~Window() { destroy(); }

bool Window::create(const Create& options) {
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  WNDCLASSEXW existing{};
  existing.cbSize = sizeof existing;
  if (!GetClassInfoExW(instance, options.className, &existing)) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = options.classStyle;
    windowClass.lpfnWndProc = &Window::procedure;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_VARNOWICK));
    windowClass.lpszClassName = options.className;
    if (RegisterClassExW(&windowClass) == 0) return false;
  }
  const RECT& r = options.rect;
  CreateWindowExW(options.exStyle, options.className, options.title.c_str(), options.style, r.left,
                  r.top, r.right - r.left, r.bottom - r.top, options.owner, nullptr, instance,
                  this);
  return handle_ != nullptr;
}

void Window::destroy() {
  if (handle_ != nullptr) DestroyWindow(handle_);
}

LRESULT Window::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  return DefWindowProcW(handle_, message, wParam, lParam);
}

LRESULT CALLBACK Window::procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* window = reinterpret_cast<Window*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    window = static_cast<Window*>(create->lpCreateParams);
    window->handle_ = handle;
    SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
  }
  if (window == nullptr) return DefWindowProcW(handle, message, wParam, lParam);
  const LRESULT result =
      guardedCallback(LRESULT{0}, [&] { return window->handleMessage(message, wParam, lParam); });
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
    window->handle_ = nullptr;
  }
  return result;
}

}  // namespace varnowick
