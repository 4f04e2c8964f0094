#include "sidebar/screen_extents.h"

#include <algorithm>
#include <limits>

namespace varnowick {
namespace {

Twips wholeTwips(Pixels pixels, Density density) {
  const double exact = static_cast<double>(pixels.value) * 1440.0 / density.dpi;
  return {static_cast<float>(roundHalfToEven(exact))};
}

TwipsRect wholeTwips(const PixelRect& r, Density density) {
  const Twips left = wholeTwips(r.left, density);
  const Twips top = wholeTwips(r.top, density);
  return {left, top, wholeTwips(r.right(), density) - left, wholeTwips(r.bottom(), density) - top};
}

// How far apart two stretches lie; 0 when they meet.
double gap(Twips aFrom, Twips aTo, Twips bFrom, Twips bTo) {
  return std::max({0.0F, bFrom.value - aTo.value, aFrom.value - bTo.value});
}

template <class Item, class RectOf>
const Item& holding(std::span<const Item> items, const TwipsRect& window, RectOf rectOf) {
  const Item* best = &items.front();
  double bestArea = 0;
  double bestDistance = std::numeric_limits<double>::infinity();
  for (const Item& item : items) {
    const TwipsRect& m = rectOf(item);
    const TwipsRect shown = m.intersect(window);
    const double area = static_cast<double>(shown.width.value) * shown.height.value;
    const double dx = gap(m.left, m.right(), window.left, window.right());
    const double dy = gap(m.top, m.bottom(), window.top, window.bottom());
    const double distance = dx * dx + dy * dy;
    if (area > bestArea || (bestArea <= 0 && distance < bestDistance)) {
      best = &item;
      bestArea = area;
      bestDistance = distance;
    }
  }
  return *best;
}

}  // namespace

TwipsRect monitorHolding(std::span<const TwipsRect> monitors, const TwipsRect& window) {
  return holding(monitors, window, [](const TwipsRect& m) -> const TwipsRect& { return m; });
}

const ScreenMonitor& monitorHolding(std::span<const ScreenMonitor> monitors,
                                    const TwipsRect& window) {
  return holding(monitors, window,
                 [](const ScreenMonitor& m) -> const TwipsRect& { return m.bounds; });
}

bool isShown(std::span<const ScreenMonitor> monitors, const TwipsRect& rect) {
  return std::any_of(monitors.begin(), monitors.end(), [&](const ScreenMonitor& m) {
    const TwipsRect shown = m.bounds.intersect(rect);
    return shown.width >= 15_tw && shown.height >= 15_tw;
  });
}

ScreenExtents screenExtents(Monitors& monitors) {
  const Density density = monitors.density();
  const PixelRect whole = monitors.virtualScreen();
  ScreenExtents e{.virtualLeft = wholeTwips(whole.left, density),
                  .virtualTop = wholeTwips(whole.top, density),
                  .virtualHeight = wholeTwips(whole.height, density),
                  .monitors = {}};
  for (const Monitor& m : monitors.all())
    e.monitors.push_back({wholeTwips(m.bounds, density), wholeTwips(m.work, density)});
  if (e.monitors.empty())
    e.monitors.push_back({wholeTwips(whole, density), wholeTwips(whole, density)});
  return e;
}

bool MouseOnWindow(std::span<const ProgramWindow> windows, Point<Pixels> cursor, Density density) {
  const double x = cursor.x.value;
  const double y = cursor.y.value;
  return std::any_of(windows.begin(), windows.end(), [&](const ProgramWindow& w) {
    const double left = w.clientOrigin.x.value;
    const double top = w.clientOrigin.y.value;
    const double width = static_cast<double>(w.size.width.value) * density.dpi / 1440.0;
    const double height = static_cast<double>(w.size.height.value) * density.dpi / 1440.0;
    return x >= left && y >= top && x <= left + width && y <= top + height;
  });
}

}  // namespace varnowick
