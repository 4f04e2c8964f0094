#include "platform/win32/app_bars.h"

#include <shellapi.h>

#include <algorithm>

namespace varnowick {
namespace {

bool barAt(UINT edge, const PixelRect& monitor) {
  APPBARDATA data{};
  data.cbSize = sizeof data;
  data.uEdge = edge;
  data.rc = {monitor.left.value, monitor.top.value, monitor.right().value, monitor.bottom().value};
  // Windows 8 and later have one for each monitor; older ones answer 0 to this.
  constexpr DWORD kGetAutoHideBarEx = 0x0000000B;
  if (SHAppBarMessage(kGetAutoHideBarEx, &data) != 0) return true;
  const auto bar = reinterpret_cast<HWND>(SHAppBarMessage(ABM_GETAUTOHIDEBAR, &data));
  if (bar == nullptr) return false;
  RECT at{}, both{};
  return GetWindowRect(bar, &at) && IntersectRect(&both, &at, &data.rc);
}

}  // namespace

void AutoHideBars::look(Monitors& monitors) {
  found_.clear();
  for (const Monitor& m : monitors.all())
    found_.push_back({barAt(ABE_LEFT, m.bounds), barAt(ABE_TOP, m.bounds),
                      barAt(ABE_RIGHT, m.bounds), barAt(ABE_BOTTOM, m.bounds)});
}

bool AutoHideBars::any() const {
  return std::any_of(found_.begin(), found_.end(), [](const Edges& edges) {
    return edges.left || edges.top || edges.right || edges.bottom;
  });
}

}  // namespace varnowick
