// Slot tables: an object is addressed everywhere by its slot number, which is
// also the index of its on-screen parts. Removing an object frees its slot; the
// lowest free slot is used again first.
#pragma once

#include <compare>
#include <cstddef>
#include <utility>
#include <variant>
#include <vector>

namespace varnowick {

// The number of a slot of one kind; -1 means none. Slots of different kinds do
// not convert into each other.
template <class Kind>
struct Slot {
  int index = -1;
  constexpr auto operator<=>(const Slot&) const = default;
  constexpr bool none() const { return index < 0; }
};

using ShortcutSlot = Slot<struct ShortcutKind>;
using ContainerSlot = Slot<struct ContainerKind>;
using PictureSlot = Slot<struct PictureKind>;
using ObjectId = std::variant<ShortcutSlot, PictureSlot, ContainerSlot>;

template <class Object, class SlotType>
class SlotTable {
 public:
  // Puts the object into the lowest free slot.
  SlotType add(Object object) {
    const SlotType slot = add();
    entries_[index(slot)].object = std::move(object);
    return slot;
  }
  // The same with an object as it is when new, made where it will lie.
  SlotType add() {
    while (firstFree_ < entries_.size() && entries_[firstFree_].InUse) ++firstFree_;
    const std::size_t at = firstFree_++;
    if (at == entries_.size()) entries_.emplace_back();
    entries_[at].InUse = true;
    entries_[at].use = ++uses_;
    ++count_;
    return {static_cast<int>(at)};
  }

  // Brings back an object that was removed: as the same use, and into the slot it
  // had unless that is taken.
  SlotType restore(SlotType slot, unsigned use, Object object) {
    if (slot.none() || contains(slot)) {
      slot = add(std::move(object));
    } else {
      if (index(slot) >= entries_.size()) entries_.resize(index(slot) + 1);
      entries_[index(slot)].InUse = true;
      entries_[index(slot)].object = std::move(object);
      ++count_;
    }
    entries_[index(slot)].use = use;
    return slot;
  }

  // Frees the slot; a slot that is not in use is left alone.
  void remove(SlotType slot) {
    if (!contains(slot)) return;
    entries_[index(slot)] = {};
    --count_;
    if (index(slot) < firstFree_) firstFree_ = index(slot);
  }

  bool contains(SlotType slot) const {
    return slot.index >= 0 && index(slot) < entries_.size() && entries_[index(slot)].InUse;
  }
  // Null when the slot is not in use.
  Object* find(SlotType slot) { return contains(slot) ? &entries_[index(slot)].object : nullptr; }
  const Object* find(SlotType slot) const {
    return contains(slot) ? &entries_[index(slot)].object : nullptr;
  }
  // The slot must be in use.
  Object& operator[](SlotType slot) { return entries_[index(slot)].object; }
  const Object& operator[](SlotType slot) const { return entries_[index(slot)].object; }

  // Another number each time a slot is taken, 0 while it is free: tells whether the
  // object is still the one that was there before.
  unsigned use(SlotType slot) const { return contains(slot) ? entries_[index(slot)].use : 0; }

  // The slot of a use; none when that object is gone. `likely` is looked at first.
  SlotType slotOfUse(unsigned use, SlotType likely) const {
    if (use == 0) return {};
    if (this->use(likely) == use) return likely;
    for (std::size_t i = 0; i < entries_.size(); ++i)
      if (entries_[i].InUse && entries_[i].use == use) return {static_cast<int>(i)};
    return {};
  }

  std::size_t count() const { return count_; }
  // One past the highest slot ever used: the bound of loops over slot numbers.
  int bound() const { return static_cast<int>(entries_.size()); }
  void clear() {
    const unsigned uses = uses_;
    *this = {};
    uses_ = uses;
  }
  void reserve(std::size_t n) { entries_.reserve(n); }

  // Calls visit(slot, object) for every slot in use, lowest first. The visitor
  // may remove objects; it must not add any.
  template <class Visit>
  void forEach(Visit&& visit) {
    for (std::size_t i = 0; i < entries_.size(); ++i)
      if (entries_[i].InUse) visit(SlotType{static_cast<int>(i)}, entries_[i].object);
  }
  template <class Visit>
  void forEach(Visit&& visit) const {
    for (std::size_t i = 0; i < entries_.size(); ++i)
      if (entries_[i].InUse) visit(SlotType{static_cast<int>(i)}, entries_[i].object);
  }

 private:
  struct Entry {
    bool InUse = false;
    unsigned use = 0;
    Object object{};
  };
  static std::size_t index(SlotType slot) { return static_cast<std::size_t>(slot.index); }

  std::vector<Entry> entries_;
  std::size_t firstFree_ = 0;
  std::size_t count_ = 0;
  unsigned uses_ = 0;
};

}  // namespace varnowick
