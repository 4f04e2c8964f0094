#include "ui/scene/list_model.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::uint64_t kTypingMilliseconds = 1000;
constexpr double kMostRoom = 3'300'000;
// How much of a higher row is passed over at once.
constexpr double kPartOfRoom = 0.8;
// What is missing by rounding alone does not count.
constexpr double kHair = 16;

wchar_t lowered(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool beginsWith(std::wstring_view text, std::wstring_view start) {
  return text.size() >= start.size() && sameIgnoringCase(text.substr(0, start.size()), start);
}

}  // namespace

double ListModel::startOf(int row) const {
  return starts_.empty() ? rowHeight_ * row : starts_[static_cast<std::size_t>(row)];
}

double ListModel::furthest() const {
  const double beyond = total() - room_;
  if (beyond <= kHair) return 0;
  return std::max(0.0, beyond);
}

void ListModel::scrollTo(double position) { position_ = std::clamp(position, 0.0, furthest()); }

// The row in which a position lies, rows ending where the next begins.
int ListModel::rowAtStart(double position) const {
  if (starts_.empty()) return static_cast<int>(std::floor(position / rowHeight_));
  return static_cast<int>(std::upper_bound(starts_.begin(), starts_.end(), position) -
                          starts_.begin()) -
         1;
}

void ListModel::replace(int count, const std::function<NewPlace(int)>& placeOf) {
  const std::vector<char> old =
      std::exchange(selected_, std::vector<char>(static_cast<std::size_t>(std::max(0, count))));
  const int before = static_cast<int>(old.size());
  const int topBefore = before == 0 ? 0 : std::clamp(rowAtStart(position_), 0, before - 1);
  const double into = before == 0 ? 0 : position_ - startOf(topBefore);
  int current = -1, anchor = -1, top = 0;
  bool topStays = false;
  selectedCount_ = 0;
  for (int row = 0; row < before; ++row) {
    const NewPlace place = placeOf(row);
    if (row == current_) current = std::min(place.row, count - 1);
    if (row == anchor_) anchor = std::min(place.row, count - 1);
    if (row == topBefore) {
      top = place.row;
      topStays = place.stays;
    }
    if (place.stays && old[static_cast<std::size_t>(row)] != 0) setSelected(place.row, true);
  }
  current_ = current;
  anchor_ = anchor;
  starts_.clear();
  // A list that shows its beginning goes on showing it.
  const bool fromBeginning = position_ <= 0;
  scrollTo(fromBeginning ? 0 : startOf(std::min(top, count)) + (topStays ? into : 0));
}

bool ListModel::isSelected(int row) const {
  return has(row) && selected_[static_cast<std::size_t>(row)] != 0;
}

void ListModel::setSelected(int row, bool selected) {
  if (!has(row) || isSelected(row) == selected) return;
  selected_[static_cast<std::size_t>(row)] = selected ? 1 : 0;
  selectedCount_ += selected ? 1 : -1;
}

void ListModel::selectNone() {
  std::fill(selected_.begin(), selected_.end(), 0);
  selectedCount_ = 0;
}

void ListModel::selectAll() {
  std::fill(selected_.begin(), selected_.end(), 1);
  selectedCount_ = count();
  if (current_ < 0 && count() > 0) current_ = anchor_ = 0;
}

void ListModel::selectRange(int from, int to) {
  selectNone();
  for (int row = std::min(from, to); row <= std::max(from, to); ++row) setSelected(row, true);
}

void ListModel::selectOnly(int row) {
  if (!has(row)) return;
  selectRange(row, row);
  current_ = anchor_ = row;
  show(row);
}

void ListModel::press(int row, Modifiers held) {
  keptForDrag_ = false;
  if (!has(row)) {
    if (!held.ctrl && !held.shift) selectNone();
    return;
  }
  if (held.shift) {
    selectRange(anchor_ < 0 ? row : anchor_, row);
    if (anchor_ < 0) anchor_ = row;
  } else if (held.ctrl) {
    setSelected(row, !isSelected(row));
    anchor_ = row;
  } else {
    keptForDrag_ = isSelected(row);
    if (!keptForDrag_) selectRange(row, row);
    anchor_ = row;
  }
  current_ = row;
}

void ListModel::release(int row, Modifiers held, bool dragged) {
  if (std::exchange(keptForDrag_, false) && !held.ctrl && !held.shift && !dragged && has(row))
    selectRange(row, row);
}

bool ListModel::move(ListMove move, Modifiers held) {
  if (count() == 0) return false;
  const int last = count() - 1;
  int to = 0;
  switch (move) {
    case ListMove::Home:
      break;
    case ListMove::End:
      to = last;
      break;
    case ListMove::Up:
      to = std::max(0, current_ - 1);
      break;
    case ListMove::Down:
      to = std::min(last, current_ + 1);
      break;
    case ListMove::PageUp:
      if (current_ >= 0) {
        const double from = startOf(current_ + 1) - room_ - kHair;
        to = from < 0 ? 0 : std::min(rowAtStart(from) + 1, std::max(0, current_ - 1));
      }
      break;
    case ListMove::PageDown:
      if (current_ >= 0)
        to = std::clamp(rowAtStart(startOf(current_) + room_ + kHair) - 1,
                        std::min(last, current_ + 1), last);
      break;
  }
  const bool moved = to != current_ || !(held.ctrl || isSelected(to));
  if (held.shift) {
    if (anchor_ < 0) anchor_ = std::max(0, current_);
    selectRange(anchor_, to);
  } else if (!held.ctrl) {
    selectRange(to, to);
    anchor_ = to;
  }
  current_ = to;
  show(to);
  return moved;
}

void ListModel::toggleCurrent() {
  setSelected(current_, !isSelected(current_));
  if (current_ >= 0) anchor_ = current_;
}

bool ListModel::typed(wchar_t letter, std::uint64_t milliseconds,
                      const std::function<std::wstring_view(int)>& textOf) {
  if (typed_.empty() || milliseconds - typedAt_ > kTypingMilliseconds) typed_.clear();
  typedAt_ = milliseconds;
  typed_ += letter;
  const bool repeated = std::all_of(typed_.begin(), typed_.end(), [&](wchar_t c) {
    return lowered(c) == lowered(typed_.front());
  });
  // Names like "aardvark" are found by their whole beginning all the same.
  for (const bool whole : {true, false}) {
    if (!whole && (!repeated || typed_.size() == 1)) break;
    const std::wstring_view start = std::wstring_view(typed_).substr(0, whole ? typed_.size() : 1);
    // More letters may still mean the row that the first ones have found.
    const int from = whole && typed_.size() > 1 ? std::max(0, current_) : current_ + 1;
    for (int i = 0; i < count(); ++i) {
      const int row = (from + i) % count();
      if (!beginsWith(textOf(row), start)) continue;
      selectOnly(row);
      return true;
    }
  }
  return false;
}

void ListModel::setRoom(Twips height, Twips rowHeight) {
  rowHeight_ = rowHeight > 0_tw ? static_cast<double>(rowHeight.value) : 330;
  room_ = std::clamp(static_cast<double>(height.value), 1.0, kMostRoom);
  scrollTo(position_);
}

void ListModel::setHeights(const std::vector<Twips>& heights) {
  if (heights.size() != selected_.size()) return;
  const int row = count() == 0 ? 0 : std::clamp(rowAtStart(position_), 0, count() - 1);
  const double share =
      count() == 0 ? 0 : (position_ - startOf(row)) / (startOf(row + 1) - startOf(row));
  starts_.assign(1, 0);
  for (const Twips height : heights)
    starts_.push_back(starts_.back() + std::max(1.0, static_cast<double>(height.value)));
  if (count() == 0) return scrollTo(0);
  scrollTo(startOf(row) + share * (startOf(row + 1) - startOf(row)));
}

Twips ListModel::heightOf(int row) const {
  return has(row) ? Twips{static_cast<float>(startOf(row + 1) - startOf(row))} : Twips{};
}

Twips ListModel::offsetOf(int row) const {
  return Twips{static_cast<float>(startOf(std::clamp(row, 0, count())) - position_)};
}

int ListModel::top() const {
  if (count() == 0) return 0;
  const int row = std::clamp(rowAtStart(position_), 0, count() - 1);
  return row + 1 < count() && startOf(row + 1) - position_ <= kHair ? row + 1 : row;
}

int ListModel::bottom() const {
  if (count() == 0) return 0;
  const int last = std::clamp(rowAtStart(position_ + room_), 0, count() - 1);
  const bool seen = startOf(last) + kHair < position_ + room_;
  return std::max(last + (seen ? 1 : 0), std::min(count(), top() + 1));
}

bool ListModel::scrollBy(int rows) {
  const double before = position_;
  for (int left = std::min(std::abs(rows), count()); left > 0; --left) {
    const int row = top();
    const double here = startOf(row);
    if (rows > 0) {
      const double next = startOf(std::min(row + 1, count()));
      scrollTo(next - position_ > room_ ? position_ + room_ * kPartOfRoom : next);
    } else {
      const double next = position_ > here + kHair ? here : startOf(std::max(0, row - 1));
      scrollTo(position_ - next > room_ ? position_ - room_ * kPartOfRoom : next);
    }
  }
  return position_ != before;
}

void ListModel::show(int row) {
  if (!has(row)) return;
  const double start = startOf(row), end = startOf(row + 1);
  if (end > position_ + room_) scrollTo(end - room_);
  if (start < position_) scrollTo(start);
}

int ListModel::rowAt(Twips y) const {
  const double down = static_cast<double>(y.value);
  if (down < 0 || !(down < room_) || position_ + down >= total()) return -1;
  return std::min(rowAtStart(position_ + down), count() - 1);
}

bool ListModel::scrolls() const { return furthest() > 0; }

ListModel::Thumb ListModel::thumb() const {
  if (!scrolls()) return {};
  const double length = std::max(0.05, room_ / total());
  return {static_cast<float>(position_ / furthest() * (1 - length)), static_cast<float>(length)};
}

}  // namespace varnowick
