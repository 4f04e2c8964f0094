#include "shortcuts/nearest_place.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace varnowick {
namespace {

// Sums of fractions do not meet to the last bit.
constexpr float kTouch = 0.5F;

TwipsRect rectAt(Point<Twips> at, Size<Twips> size) {
  return {at.x, at.y, size.width, size.height};
}

bool isFree(const TwipsRect& rect, const std::vector<TwipsRect>& taken) {
  return std::none_of(taken.begin(), taken.end(),
                      [&](const TwipsRect& other) { return overlap(rect, other); });
}

// The places of one dimension at which something can lie: between two limits, and on
// the grid unless the step is 0.
struct Line {
  float first = 0;
  float last = 0;
  float step = 0;

  bool holds(float at) const { return at >= first && at <= last; }
  // The first at or after, the last at or before.
  float onward(float at) const { return step > 0 ? std::ceil(at / step) * step : at; }
  float backward(float at) const { return step > 0 ? std::floor(at / step) * step : at; }
};

// The nearest of what can be free is the wanted place, or one that touches something.
template <class Start, class End>
std::vector<float> candidates(const Line& line, float wanted, float length,
                              const std::vector<TwipsRect>& taken, Start start, End end) {
  std::vector<float> found{wanted};
  for (const TwipsRect& other : taken) {
    found.push_back(line.onward(end(other)));
    found.push_back(line.backward(start(other) - length));
  }
  std::erase_if(found, [&](float at) { return !line.holds(at); });
  std::sort(found.begin(), found.end(), [wanted](float a, float b) {
    const float da = std::abs(a - wanted);
    const float db = std::abs(b - wanted);
    return da != db ? da < db : a < b;
  });
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

std::optional<Point<Twips>> nearestWithin(const Line& across, const Line& down, Size<Twips> size,
                                          Point<Twips> wanted,
                                          const std::vector<TwipsRect>& taken) {
  std::optional<Point<Twips>> best;
  float bestWay = std::numeric_limits<float>::max();
  const auto left = [](const TwipsRect& r) { return r.left.value; };
  const auto right = [](const TwipsRect& r) { return r.right().value; };
  const auto top = [](const TwipsRect& r) { return r.top.value; };
  const auto bottom = [](const TwipsRect& r) { return r.bottom().value; };
  for (const float x : candidates(across, wanted.x.value, size.width.value, taken, left, right)) {
    if (std::abs(x - wanted.x.value) >= bestWay) break;
    std::vector<TwipsRect> inColumn;
    const TwipsRect column{{x}, {down.first}, size.width, {down.last + size.height.value}};
    for (const TwipsRect& other : taken)
      if (overlap(column, other)) inColumn.push_back(other);
    for (const float y :
         candidates(down, wanted.y.value, size.height.value, inColumn, top, bottom)) {
      if (!isFree(rectAt({{x}, {y}}, size), inColumn)) continue;
      const float way = std::hypot(x - wanted.x.value, y - wanted.y.value);
      if (way < bestWay) {
        bestWay = way;
        best = Point<Twips>{{x}, {y}};
      }
      break;
    }
  }
  return best;
}

// Pushes shortcuts on along the order of reading.
class Pusher {
 public:
  Pusher(const Workspace& workspace, const PanelMeasures& measures, Panel panel,
         const std::vector<ShortcutSlot>& leaving, bool columns)
      : workspace_(workspace), measures_(measures), panel_(panel), columns_(columns) {
    fixed_ = takenOn(workspace, measures, panel, false);
    workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
      if (s.parent != panel) return;
      const Item item{slot, rectAt(s.position, measures.shortcutSize(s)), s.position};
      if (std::find(leaving.begin(), leaving.end(), slot) == leaving.end())
        items_.push_back(item);
      else
        left_.push_back(item);
    });
    // By lines first, of which each begins where something does not lie beside what
    // began the last one.
    std::sort(items_.begin(), items_.end(), [this](const Item& a, const Item& b) {
      return lineOf(a.rect) != lineOf(b.rect) ? lineOf(a.rect) < lineOf(b.rect)
                                              : alongOf(a.rect) < alongOf(b.rect);
    });
    for (std::size_t line = 0; line < items_.size();) {
      const float end = lineOf(items_[line].rect) + 0.5F * thicknessOf(items_[line].rect);
      std::size_t next = line;
      while (next < items_.size() && lineOf(items_[next].rect) < end) ++next;
      std::sort(items_.begin() + static_cast<std::ptrdiff_t>(line),
                items_.begin() + static_cast<std::ptrdiff_t>(next),
                [this](const Item& a, const Item& b) { return alongOf(a.rect) < alongOf(b.rect); });
      line = next;
    }
  }

  std::optional<RoomMade> into(const Gap& gap, const std::vector<Size<Twips>>& sizes) {
    auto at = std::find_if(items_.begin(), items_.end(),
                           [&](const Item& item) { return item.slot == gap.neighbour; });
    if (at == items_.end()) return std::nullopt;
    auto next = static_cast<std::size_t>(at - items_.begin()) + (gap.after ? 1 : 0);
    if (const auto hole = holeBefore(*at, gap, sizes)) return RoomMade{{*hole}, {}};
    RoomMade made;
    std::optional<TwipsRect> before;
    if (gap.after) before = at->rect;
    for (const Size<Twips>& size : sizes) {
      const auto place = insert(before, size, next);
      if (!place) return std::nullopt;
      made.places.push_back(*place);
      before = rectAt(*place, size);
      items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(next), Item{{}, *before, *place});
      ++next;
    }
    if (!allApart()) return std::nullopt;
    for (const Item& item : items_)
      if (!item.slot.none() && item.rect.topLeft() != item.was)
        made.pushed.push_back({item.slot, item.rect.topLeft()});
    return made;
  }

  // What lies between where one shortcut was and the gap moves up by one place.
  std::optional<RoomMade> shifting(const Gap& gap) {
    if (left_.size() != 1) return std::nullopt;
    const Item& moved = left_.front();
    std::size_t from = 0;
    while (from < items_.size() && comesBefore(items_[from].rect, moved.rect)) ++from;
    const auto at = std::find_if(items_.begin(), items_.end(),
                                 [&](const Item& item) { return item.slot == gap.neighbour; });
    if (at == items_.end()) return std::nullopt;
    const auto to = static_cast<std::size_t>(at - items_.begin()) + (gap.after ? 1 : 0);
    // Its place in the order stays the same: it only comes nearer.
    if (from == to) return std::nullopt;
    Point<Twips> hole = moved.rect.topLeft();
    if (from < to)
      for (std::size_t i = from; i < to; ++i) hole = exchange(items_[i], hole);
    else
      for (std::size_t i = from; i > to; --i) hole = exchange(items_[i - 1], hole);
    items_.push_back({{}, rectAt(hole, moved.rect.size()), hole});
    if (!allApart()) return std::nullopt;
    RoomMade made;
    made.places.push_back(hole);
    for (const Item& item : items_)
      if (!item.slot.none() && item.rect.topLeft() != item.was)
        made.pushed.push_back({item.slot, item.rect.topLeft()});
    return made;
  }

 private:
  struct Item {
    ShortcutSlot slot;  // none: has just come
    TwipsRect rect;
    Point<Twips> was;
  };

  float lineOf(const TwipsRect& r) const { return columns_ ? r.left.value : r.top.value; }
  float alongOf(const TwipsRect& r) const { return columns_ ? r.top.value : r.left.value; }
  float thicknessOf(const TwipsRect& r) const { return columns_ ? r.width.value : r.height.value; }
  bool comesBefore(const TwipsRect& a, const TwipsRect& b) const {
    if (std::abs(lineOf(a) - lineOf(b)) >= 0.5F * thicknessOf(b)) return lineOf(a) < lineOf(b);
    return alongOf(a) < alongOf(b);
  }
  static Point<Twips> exchange(Item& item, Point<Twips> to) {
    const Point<Twips> was = item.rect.topLeft();
    item.rect.left = to.x;
    item.rect.top = to.y;
    return was;
  }

  bool inside(const TwipsRect& rect) const {
    const Point<Twips> at = placeWithin(measures_, panel_, rect.size(), rect.topLeft(), false);
    return std::abs((at.x - rect.left).value) < kTouch &&
           std::abs((at.y - rect.top).value) < kTouch;
  }
  bool freeOfAll(const TwipsRect& rect) const {
    return isFree(rect, fixed_) &&
           std::none_of(items_.begin(), items_.end(),
                        [&](const Item& item) { return overlap(item.rect, rect); });
  }
  TwipsRect following(const TwipsRect& before, Size<Twips> size) const {
    if (columns_) return rectAt({before.left, onGrid(before.bottom())}, size);
    return rectAt({onGrid(before.right()), before.top}, size);
  }
  Twips onGrid(Twips at) const {
    return {std::ceil(at.value / measures_.grid.value) * measures_.grid.value};
  }

  // Nothing has to move when there is a hole just before the neighbour already.
  std::optional<Point<Twips>> holeBefore(const Item& neighbour, const Gap& gap,
                                         const std::vector<Size<Twips>>& sizes) const {
    if (gap.after || sizes.size() != 1) return std::nullopt;
    Point<Twips> at = neighbour.rect.topLeft();
    (columns_ ? at.y : at.x) -= columns_ ? sizes.front().height : sizes.front().width;
    Twips& along = columns_ ? at.y : at.x;
    along = {std::floor(along.value / measures_.grid.value) * measures_.grid.value};
    const TwipsRect hole = rectAt(at, sizes.front());
    return inside(hole) && freeOfAll(hole) ? std::optional(at) : std::nullopt;
  }

  // The place of what comes in before items_[next]: beside what is before it when there
  // is a hole, else that of items_[next], which is pushed on.
  std::optional<Point<Twips>> insert(const std::optional<TwipsRect>& before, Size<Twips> size,
                                     std::size_t next) {
    if (before) {
      const TwipsRect hole = following(*before, size);
      if (inside(hole) && freeOfAll(hole)) return hole.topLeft();
    }
    if (next == items_.size()) {
      if (!before) return std::nullopt;
      const Point<Twips> at =
          freePlaceFrom(workspace_, measures_, panel_, size, following(*before, size).topLeft());
      const TwipsRect end = rectAt(at, size);
      if (!inside(end) || !freeOfAll(end) || comesBefore(end, *before)) return std::nullopt;
      return at;
    }
    Item& pushed = items_[next];
    const TwipsRect place = rectAt(pushed.rect.topLeft(), size);
    const Size<Twips> pushedSize = pushed.rect.size();
    // Out of the way while its new place is looked for.
    pushed.rect = place;
    const auto to = insert(place, pushedSize, next + 1);
    if (!to) return std::nullopt;
    pushed.rect = rectAt(*to, pushedSize);
    return place.topLeft();
  }

  bool allApart() const {
    for (std::size_t i = 0; i < items_.size(); ++i) {
      const bool moved = items_[i].slot.none() || items_[i].rect.topLeft() != items_[i].was;
      if (!moved) continue;
      if (!inside(items_[i].rect) || !isFree(items_[i].rect, fixed_)) return false;
      for (std::size_t k = 0; k < items_.size(); ++k)
        if (k != i && overlap(items_[i].rect, items_[k].rect)) return false;
    }
    return true;
  }

  const Workspace& workspace_;
  const PanelMeasures& measures_;
  Panel panel_;
  bool columns_;
  std::vector<TwipsRect> fixed_;
  std::vector<Item> items_, left_;
};

float wayOf(const Workspace& workspace, const RoomMade& made) {
  float way = 0;
  for (const PlacedShortcut& p : made.pushed) {
    const Point<Twips>& was = workspace.shortcuts[p.slot].position;
    way += std::hypot((p.position.x - was.x).value, (p.position.y - was.y).value);
  }
  return way;
}

}  // namespace

bool overlap(const TwipsRect& a, const TwipsRect& b) {
  return a.left.value + kTouch < b.right().value && b.left.value + kTouch < a.right().value &&
         a.top.value + kTouch < b.bottom().value && b.top.value + kTouch < a.bottom().value;
}

std::optional<Point<Twips>> freePlaceWithin(const PanelMeasures& measures, Panel panel,
                                            Size<Twips> size, Point<Twips> wanted, bool align,
                                            const std::vector<TwipsRect>& taken) {
  const PlaceLimits limits = placeLimits(measures, panel, size, align);
  const float step = align ? measures.grid.value : 0;
  return nearestWithin({limits.first.x.value, limits.last.x.value, step},
                       {limits.first.y.value, limits.last.y.value, step}, size,
                       placeWithin(measures, panel, size, wanted, align), taken);
}

Point<Twips> nearestPlace(const PanelMeasures& measures, Panel panel, Size<Twips> size,
                          Point<Twips> wanted, bool align, const std::vector<TwipsRect>& taken) {
  if (const auto at = freePlaceWithin(measures, panel, size, wanted, align, taken)) return *at;
  const PlaceLimits limits = placeLimits(measures, panel, size, align);
  const Point<Twips> start = placeWithin(measures, panel, size, wanted, align);
  const float step = align ? measures.grid.value : 0;
  // Below everything there is always room.
  return nearestWithin({limits.first.x.value, limits.last.x.value, step},
                       {limits.first.y.value, std::numeric_limits<float>::max(), step}, size, start,
                       taken)
      .value_or(start);
}

std::optional<RoomMade> makeRoom(const Workspace& workspace, const PanelMeasures& measures,
                                 Panel panel, const std::vector<Size<Twips>>& sizes,
                                 const std::vector<ShortcutSlot>& leaving, const Gap& gap) {
  const clsShortcut* neighbour = workspace.shortcuts.find(gap.neighbour);
  if (neighbour == nullptr || neighbour->parent != panel) return std::nullopt;
  const auto pusher = [&] {
    return Pusher(workspace, measures, panel, leaving, isSmall(*neighbour));
  };
  auto pushed = pusher().into(gap, sizes);
  auto shifted = sizes.size() == 1 ? pusher().shifting(gap) : std::nullopt;
  if (!shifted) return pushed;
  if (!pushed || wayOf(workspace, *shifted) <= wayOf(workspace, *pushed)) return shifted;
  return pushed;
}

}  // namespace varnowick
