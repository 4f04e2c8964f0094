// What a screen reader sees of a window: its accessible items with name, role,
// place and default action, asked across processes, all those below others
// included. Tests find and press
// things through this door.
#pragma once

#include <oleacc.h>
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/handles.h"

namespace varnowick::e2e {

struct AccessibleItem {
  // The object that has it for a child, and its place there from 1.
  ComPtr<IAccessible> parent;
  LONG id = 0;
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
  // The names of the selected children of a group, or of the window.
  std::vector<std::wstring> selection(const std::wstring& group) const;
  void select(const AccessibleItem& item, LONG flags) const;
  // All names with their roles, for failure messages.
  std::wstring describe() const;

 private:
  using Object = ComPtr<IAccessible>;
  static AccessibleItem item(const Object& parent, LONG id);
  // Visits every item, parents first, until one answers true.
  using Visit = std::function<bool(const Object& parent, LONG id)>;
  static bool walk(const Object& parent, const Visit& visit);
  Object object_;
};

}  // namespace varnowick::e2e
