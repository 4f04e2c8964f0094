// The window as screen readers and tests see it: an IAccessible whose children
// are a flat list of items. It knows COM and one provider; not what the items are.
#pragma once

#include <windows.h>

#include <string>

#include "core/units.h"

namespace varnowick {

// One item. Roles and states are those of IAccessible (ROLE_SYSTEM_..., STATE_SYSTEM_...).
struct AccessibleInfo {
  std::wstring name;
  std::wstring value;
  std::wstring defaultAction;  // empty for none
  std::wstring shortcut;       // the key that does the same, empty for none
  long role = 0;
  long states = 0;
  PixelRect screenRect;
};

// Child 0 is the window itself, 1..childCount() are its items. Calls come on the
// window's thread, also from inside a menu's or a message box's loop.
class AccessibleProvider {
 public:
  virtual ~AccessibleProvider() = default;
  virtual int childCount() = 0;
  // False when there is no such child (any more).
  virtual bool info(int child, AccessibleInfo& out) = 0;
  // Must only post what is to be done: the caller waits for the answer.
  virtual bool doDefaultAction(int child) = 0;
  // The item at a point of the screen; 0 for the window's own ground.
  virtual int childAt(Point<Pixels> screen) = 0;
  // The item that has the focus; 0 for the window, -1 when the focus is elsewhere.
  virtual int focusedChild() = 0;
};

class AccessibleObject;

// Belongs to one window; clients that outlive it are told that the object is gone.
class AccessibleServer {
 public:
  explicit AccessibleServer(AccessibleProvider& provider) : provider_(provider) {}
  AccessibleServer(const AccessibleServer&) = delete;
  AccessibleServer& operator=(const AccessibleServer&) = delete;
  ~AccessibleServer() { disconnect(); }

  // For WM_GETOBJECT. 0 when it is not for us: then DefWindowProc answers.
  LRESULT getObject(HWND window, WPARAM wParam, LPARAM lParam);
  // At WM_DESTROY.
  void disconnect();

 private:
  AccessibleProvider& provider_;
  AccessibleObject* object_ = nullptr;  // counted
};

// Tells whoever listens that something has happened to a child of the window
// (0: to the window itself). EVENT_OBJECT_... or a PrivateEvent.
void announce(HWND window, DWORD event, long child = 0);

}  // namespace varnowick
