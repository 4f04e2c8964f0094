// A cursor and monitors that tests place at will.
#pragma once

#include <algorithm>
#include <vector>

#include "platform/screen.h"

namespace varnowick {

class FakeCursor : public Cursor {
 public:
  Point<Pixels> at;
  bool down = false;
  Point<Pixels> position() override { return at; }
  bool leftButtonDown() override { return down; }
};

class FakeMonitors : public Monitors {
 public:
  std::vector<PixelRect> bounds{{{0}, {0}, {1280}, {800}}};
  std::vector<PixelRect> works{};  // of the first ones; the others have no bars
  int dpi = 96;

  std::vector<Monitor> all() override {
    std::vector<Monitor> monitors;
    for (const PixelRect& b : bounds) monitors.push_back({b, b, monitors.empty()});
    for (std::size_t i = 0; i < works.size(); ++i) monitors[i].work = works[i];
    return monitors;
  }
  PixelRect virtualScreen() override {
    PixelRect whole = bounds.front();
    for (const PixelRect& b : bounds) {
      const Pixels right = std::max(whole.right(), b.right());
      const Pixels bottom = std::max(whole.bottom(), b.bottom());
      whole.left = std::min(whole.left, b.left);
      whole.top = std::min(whole.top, b.top);
      whole.width = right - whole.left;
      whole.height = bottom - whole.top;
    }
    return whole;
  }
  Density density() override { return {dpi}; }
};

}  // namespace varnowick
