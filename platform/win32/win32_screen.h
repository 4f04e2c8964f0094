// The cursor and the monitors as the system reports them.
#pragma once

#include "platform/screen.h"

namespace varnowick {

class Win32Cursor : public Cursor {
 public:
  Point<Pixels> position() override;
  // The button that the user has made the primary one.
  bool leftButtonDown() override;

 private:
  Point<Pixels> last_;
};

class Win32Monitors : public Monitors {
 public:
  std::vector<Monitor> all() override;
  PixelRect virtualScreen() override;
  // That of the system when the program started: a program that is not aware of
  // each monitor's own never sees another.
  Density density() override;

 private:
  int dpi_ = 0;
};

}  // namespace varnowick
