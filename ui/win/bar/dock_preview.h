// Marks, while the bar is dragged, where it will stand if it is let go: a
// translucent sheet behind the bar that the mouse goes through.
#pragma once

#include <windows.h>

#include <optional>

#include "core/units.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

class DockPreview final : public Window {
 public:
  ~DockPreview() override { destroy(); }
  // On the screen; none takes it away.
  void show(HWND bar, const std::optional<PixelRect>& place, Colour colour);

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  PixelRect shown_;
  Colour colour_;
};

}  // namespace varnowick
