// What a screen reader sees of a window: its accessible children with name,
// role, place and default action, asked across processes. Tests find and press
// things through this door.
#pragma once

#include <oleacc.h>
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/win32/handles.h"

namespace varnowick::e2e {

struct AccessibleItem {
  LONG id = 0;  // CHILDID_SELF + n
  std::wstring name;
  LONG role = 0;
  LONG state = 0;
  RECT rect{};  // screen pixels
  bool shown() const { return (state & (STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN)) == 0; }
};

class AccessibleWindow {
 public:
  // COM has to be initialised on this thread.
  explicit AccessibleWindow(HWND window);

  std::wstring name() const;
  std::vector<AccessibleItem> items() const;
  // The first item of that name (and role, unless 0).
  std::optional<AccessibleItem> find(const std::wstring& name, LONG role = 0) const;
  // The same, waiting until there is one.
  AccessibleItem waitFor(const std::wstring& name, LONG role = 0) const;
  std::wstring defaultAction(const AccessibleItem& item) const;
  void doDefaultAction(const AccessibleItem& item) const;
  // All names with their roles, for failure messages.
  std::wstring describe() const;

 private:
  AccessibleItem item(LONG id) const;
  ComPtr<IAccessible> object_;
};

}  // namespace varnowick::e2e
