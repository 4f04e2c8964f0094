#include "sidebar/full_screen.h"

namespace varnowick {

bool fullScreenOn(const ForegroundState& foreground, const PixelRect& monitor) {
  if (!foreground.exists || !foreground.visible || foreground.shell || foreground.ours)
    return false;
  if (foreground.maximised && foreground.captioned) return false;
  return !monitor.empty() && foreground.rect.intersect(monitor) == monitor;
}

}  // namespace varnowick
