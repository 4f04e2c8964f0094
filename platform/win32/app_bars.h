// Bars of the desktop that hide themselves: the work area does not tell of them.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

#include "platform/screen.h"

namespace varnowick {

class AutoHideBars {
 public:
  struct Edges {
    bool left = false, top = false, right = false, bottom = false;
  };
  // Asks the shell, which may take its time: after changes only.
  void look(Monitors& monitors);
  bool any() const;
  // By the monitor's place in the list of all.
  Edges on(std::size_t monitor) const {
    return monitor < found_.size() ? found_[monitor] : Edges{};
  }

 private:
  std::vector<Edges> found_;
};

}  // namespace varnowick
