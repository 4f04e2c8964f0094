// The window as screen readers and tests see it: a tree of items behind
// IAccessible. It knows COM and one provider; not what the items are.
//
// An item has a number that stays its own as long as it exists. For readers an
// item with children is an object; one without is a simple element of its parent,
// counted from 1. Events name an item by its number, negative, which the window's
// object takes wherever it takes a child.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "core/units.h"

namespace varnowick {

inline constexpr long kAccessibleWindow = 0;  // the number of the window itself

// One item. Roles and states are those of IAccessible (ROLE_SYSTEM_..., STATE_SYSTEM_...).
struct AccessibleInfo {
  std::wstring name;
  std::wstring value;
  std::wstring defaultAction;  // empty for none
  std::wstring shortcut;       // the key that does the same, empty for none
  long role = 0;
  long states = 0;
  long parent = kAccessibleWindow;
  PixelRect screenRect;
};

// Calls come on the window's thread, also from inside a menu's or a message box's
// loop.
class AccessibleProvider {
 public:
  virtual ~AccessibleProvider() = default;
  // Of an item or the window; empty for what is not there.
  virtual std::vector<long> children(long parent) = 0;
  // False when there is no such item (any more).
  virtual bool info(long item, AccessibleInfo& out) = 0;
  // Must only post what is to be done: the caller waits for the answer.
  virtual bool doDefaultAction(long item) = 0;
  // SELFLAG_... as IAccessible has them; posts as well. False when it cannot be.
  virtual bool select(long, long /*flags*/) { return false; }
  // The item at a point of the screen; the window for its own ground.
  virtual long itemAt(Point<Pixels> screen) = 0;
  // The item that has the focus, or the window; -1 when the focus is elsewhere.
  virtual long focusedItem() = 0;
};

class AccessibleObject;

// Belongs to one window; clients that outlive it are told that the objects are gone.
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

// Tells whoever listens that something has happened to an item of the window, or
// to the window itself. EVENT_OBJECT_... or a PrivateEvent.
void announce(HWND window, DWORD event, long item = kAccessibleWindow);
// Whether anybody listens to events of that kind. True where that is not known.
bool somebodyHears(DWORD event);

}  // namespace varnowick
