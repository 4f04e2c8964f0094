#include "sidebar/full_screen.h"

namespace varnowick {

FullScreen fullScreenOn(const ForegroundState& foreground, const MonitorArea& monitor) {
  if (!foreground.exists || !foreground.visible || foreground.shell || foreground.ours)
    return FullScreen::No;
  // Games may keep a title bar that lies beyond the screen.
  const PixelRect& covered = foreground.captioned ? foreground.client : foreground.rect;
  const PixelRect& bounds = monitor.bounds;
  if (bounds.empty() || covered.intersect(bounds) != bounds) return FullScreen::No;
  if (foreground.maximised && (foreground.captioned || foreground.sizable)) return FullScreen::No;
  if (foreground.topmost || monitor.work != bounds) return FullScreen::Yes;
  return foreground.maximised || foreground.sizable ? FullScreen::AskSystem : FullScreen::Yes;
}

}  // namespace varnowick
