// The cursor and the monitors.
#pragma once

#include <vector>

#include "core/units.h"

namespace varnowick {

class Cursor {
 public:
  virtual ~Cursor() = default;
  virtual Point<Pixels> position() = 0;
  virtual bool leftButtonDown() = 0;
};

struct Monitor {
  PixelRect bounds;
  PixelRect work;  // without the taskbar
  bool primary = false;
};

class Monitors {
 public:
  virtual ~Monitors() = default;
  // Never empty. The primary monitor comes first.
  virtual std::vector<Monitor> all() = 0;
  // The bounding rectangle of all monitors.
  virtual PixelRect virtualScreen() = 0;
  virtual Density density() = 0;
};

}  // namespace varnowick
