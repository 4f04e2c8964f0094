#include "containers/tab_place.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sidebar/docking.h"
#include "sidebar/screen_extents.h"

namespace varnowick {
namespace {

constexpr Twips kFarthestPlace{1'000'000};
constexpr Twips kTabGap{120};
constexpr Twips kBesideBar{300};
constexpr Twips kCascadeStep{360};
// So much of a title must be in sight, along it, for the mouse to get hold of it.
constexpr Twips kTitleReach{900};

Twips sane(Twips value) {
  if (!std::isfinite(value.value)) return {};
  return std::clamp(value, -kFarthestPlace, kFarthestPlace);
}

TwipsRect sane(const TwipsRect& r) {
  return {sane(r.left), sane(r.top), std::max(Twips{}, sane(r.width)),
          std::max(Twips{}, sane(r.height))};
}

bool overlap(const TwipsRect& a, const TwipsRect& b) { return !a.intersect(b).empty(); }

// A tab moves along its edge: one coordinate counts, from a border to the other.
struct Along {
  ScreenEdge edge;
  TwipsRect work;
  Size<Twips> size = tabSize(edge);

  bool vertical() const { return isVerticalTab(edge); }
  Twips length() const { return vertical() ? size.height : size.width; }
  Twips from() const { return vertical() ? work.top : work.left; }
  Twips to() const { return vertical() ? work.bottom() : work.right(); }
  Twips start(const TwipsRect& r) const { return vertical() ? r.top : r.left; }
  Twips end(const TwipsRect& r) const { return vertical() ? r.bottom() : r.right(); }
  TwipsRect at(Twips position) const {
    const Twips along = clampInto(from(), to(), position, length());
    switch (edge) {
      case ScreenEdge::Left:
        return {work.left, along, size.width, size.height};
      case ScreenEdge::Top:
        return {along, work.top, size.width, size.height};
      case ScreenEdge::Bottom:
        return {along, work.bottom() - size.height, size.width, size.height};
      default:
        return {work.right() - size.width, along, size.width, size.height};
    }
  }
};

bool isFree(const TwipsRect& place, std::span<const TwipsRect> others) {
  return std::none_of(others.begin(), others.end(),
                      [&](const TwipsRect& o) { return overlap(place, o); });
}

TwipsRect firstFree(const Along& along, Twips wanted, std::span<const TwipsRect> otherTabs) {
  const TwipsRect place = along.at(wanted);
  // With the gap that there shall be beside each.
  std::vector<TwipsRect> others;
  for (TwipsRect other : otherTabs) {
    (along.vertical() ? other.top : other.left) -= kTabGap;
    (along.vertical() ? other.height : other.width) += kTabGap * 2;
    others.push_back(other);
  }
  if (isFree(place, others)) return place;
  // The places that touch another tab are the only ones worth trying.
  std::vector<Twips> after, before;
  for (const TwipsRect& other : others) {
    if (along.end(other) > along.start(place)) after.push_back(along.end(other));
    before.push_back(along.start(other) - along.length());
  }
  std::sort(after.begin(), after.end());
  std::sort(before.rbegin(), before.rend());
  for (const Twips position : after)
    if (position + along.length() <= along.to() && isFree(along.at(position), others))
      return along.at(position);
  for (const Twips position : before)
    if (position >= along.from() && isFree(along.at(position), others)) return along.at(position);
  return place;
}

Twips middle(Twips from, Twips length) { return from + length * 0.5F; }

}  // namespace

std::vector<TwipsRect> workAreas(Monitors& monitors) {
  const Density density = monitors.density();
  std::vector<TwipsRect> works;
  for (const Monitor& m : monitors.all()) works.push_back(toTwips(m.work, density));
  if (works.empty()) works.push_back(toTwips(monitors.virtualScreen(), density));
  return works;
}

ScreenEdge nearestEdge(const TwipsRect& rect, const TwipsRect& work) {
  const Twips x = middle(rect.left, rect.width);
  const Twips y = middle(rect.top, rect.height);
  const std::array distances{x - work.left, work.right() - x, y - work.top, work.bottom() - y};
  const auto nearest = std::min_element(distances.begin(), distances.end());
  return static_cast<ScreenEdge>(1 + (nearest - distances.begin()));
}

TabPlace placeTab(const TabWish& wish, std::span<const TwipsRect> works,
                  std::span<const TwipsRect> otherTabs) {
  const TwipsRect window = sane(wish.window);
  const bool placed = wish.detachedLabelRect != TwipsRect{};
  const TwipsRect label = sane(wish.detachedLabelRect);
  const TwipsRect work = monitorHolding(works, placed ? label : window);
  const auto saved = static_cast<ScreenEdge>(wish.DetachedTabDockedWhere);
  const ScreenEdge edge = isEdge(saved) ? saved : nearestEdge(window, work);
  const Along along{edge, work};
  const Twips wanted = placed
                           ? along.start(label)
                           : middle(along.start(window), along.end(window) - along.start(window)) -
                                 along.length() * 0.5F;
  return {edge, firstFree(along, wanted, otherTabs)};
}

TabPlace dragTab(Point<Twips> pointer, std::span<const TwipsRect> works) {
  const TwipsRect at{pointer.x, pointer.y, {}, {}};
  const TwipsRect work = monitorHolding(works, at);
  const Along along{nearestEdge(at, work), work};
  return {along.edge, along.at(along.start(at) - along.length() * 0.5F)};
}

TwipsRect clampToWork(const TwipsRect& window, std::span<const TwipsRect> works) {
  TwipsRect r = sane(window);
  const TwipsRect work = monitorHolding(works, r);
  r.width = std::min(std::max(r.width, kLeastDetached.width), work.width);
  r.height = std::min(std::max(r.height, kLeastDetached.height), work.height);
  const Twips reach = std::min(kTitleReach, work.width);
  r.left = std::clamp(r.left, work.left - r.width + reach, work.right() - reach);
  r.top = clampInto(work.top, work.bottom(), r.top, kTitleStripHeight);
  return r;
}

TwipsRect fitToWork(const TwipsRect& window, std::span<const TwipsRect> works) {
  TwipsRect r = clampToWork(window, works);
  const TwipsRect work = monitorHolding(works, r);
  r.left = clampInto(work.left, work.right(), r.left, r.width);
  r.top = clampInto(work.top, work.bottom(), r.top, r.height);
  return r;
}

bool needsDefaultRect(const TwipsRect& window) {
  return !std::isfinite(window.left.value) || !std::isfinite(window.top.value) ||
         !(window.width > Twips{}) || !(window.height > Twips{}) ||
         !std::isfinite(window.width.value) || !std::isfinite(window.height.value);
}

TwipsRect defaultDetachedRect(const TwipsRect& box, const TwipsRect& bar,
                              std::span<const TwipsRect> works,
                              std::span<const TwipsRect> otherWindows) {
  const TwipsRect b = sane(bar);
  const TwipsRect work = monitorHolding(works, b);
  TwipsRect r = sane(box);
  r.width = std::min(std::max(r.width, kLeastDetached.width), work.width);
  r.height = std::min(std::max(r.height, kLeastDetached.height), work.height);
  // What is left beside the bar, at its right, left, bottom and top.
  const std::array room{work.right() - b.right() - r.width, b.left - work.left - r.width,
                        work.bottom() - b.bottom() - r.height, b.top - work.top - r.height};
  const auto most = std::max_element(room.begin(), room.end());
  switch (*most < Twips{} ? 0 : most - room.begin()) {
    case 0:
      r.left = b.right() + kBesideBar;
      break;
    case 1:
      r.left = b.left - kBesideBar - r.width;
      break;
    case 2:
      r.top = b.bottom() + kBesideBar;
      break;
    default:
      r.top = b.top - kBesideBar - r.height;
      break;
  }
  r.left = clampInto(work.left, work.right(), r.left, r.width);
  r.top = clampInto(work.top, work.bottom(), r.top, r.height);
  const auto isTaken = [&] {
    return std::any_of(otherWindows.begin(), otherWindows.end(), [&](const TwipsRect& o) {
      return std::abs((o.left - r.left).value) < kCascadeStep.value &&
             std::abs((o.top - r.top).value) < kCascadeStep.value;
    });
  };
  // More steps than windows are never needed; at the bottom it goes on at the top.
  for (std::size_t i = 0; i < otherWindows.size() && isTaken(); ++i) {
    r.left = clampInto(work.left, work.right(), r.left + kCascadeStep, r.width);
    const Twips top = r.top + kCascadeStep;
    r.top = top + r.height > work.bottom() ? work.top : top;
  }
  return r;
}

}  // namespace varnowick
