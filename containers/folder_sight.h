// Whether a folder is worth watching: a watched folder is held, and keeps its drive
// and the folders around it from being removed and renamed. Knows no window; who
// shows the folder says what is seen of it.
#pragma once

#include <cstdint>

namespace varnowick {

// How much of a folder's list can be seen.
enum class Sight {
  None,    // folded, shrunk, or in no window
  Hidden,  // laid out, but scrolled away, or its window is put away
  Seen
};

class FolderSight {
 public:
  // Milliseconds for which a list that was seen is followed out of sight, as bars come
  // and go under the mouse.
  static constexpr std::uint64_t kLinger = 10'000;

  // True while the folder is to be watched. Between the times nothing else changes it.
  bool watch(Sight sight, std::uint64_t now) {
    if (sight == Sight::Seen) seenAt_ = now;
    seen_ = sight == Sight::Seen || (seen_ && sight == Sight::Hidden && now - seenAt_ < kLinger);
    return seen_;
  }

 private:
  bool seen_ = false;
  std::uint64_t seenAt_ = 0;
};

}  // namespace varnowick
