// A window handle with an object behind it: class registration, routing of
// messages to one virtual function, and the one place where an exception thrown
// by a handler ends. Knows nothing of what the windows show.
#pragma once

#include <windows.h>

#include <string>

namespace varnowick {

class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  HWND handle() const { return handle_; }

 protected:
  struct Create {
    const wchar_t* className = nullptr;
    std::wstring title;
    DWORD style = WS_POPUP;
    DWORD exStyle = 0;
    RECT rect{};
    HWND owner = nullptr;
    UINT classStyle = CS_DBLCLKS;
  };
  // False when the system refuses the window.
  bool create(const Create& options);
  void destroy();
  // The message's result; the base answers with DefWindowProc.
  virtual LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);
  HWND handle_ = nullptr;
};

// Counts the handlers of an object that are under way: while there is one, the object
// must not be freed. Handlers nest wherever something waits and lets messages through.
class HandlerScope {
 public:
  explicit HandlerScope(int& depth) : depth_(depth) { ++depth_; }
  HandlerScope(const HandlerScope&) = delete;
  HandlerScope& operator=(const HandlerScope&) = delete;
  ~HandlerScope() { --depth_; }

 private:
  int& depth_;
};

}  // namespace varnowick
