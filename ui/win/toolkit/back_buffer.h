// The picture of one window in memory: 32-bit pixels that both GDI and our own
// code draw on, kept between paints. It knows nothing of what is drawn.
#pragma once

#include <windows.h>

#include <cstdint>

#include "core/units.h"
#include "platform/win32/handles.h"

namespace varnowick {

class BackBuffer {
 public:
  BackBuffer() = default;
  BackBuffer(const BackBuffer&) = delete;
  BackBuffer& operator=(const BackBuffer&) = delete;
  ~BackBuffer();

  // Makes room for that many pixels. True when the buffer was made anew, so that
  // everything has to be drawn; false when it was left as it is or could not be
  // had. Sizes are held to 1..16384; a buffer that shrinks a little is kept.
  bool resize(Size<Pixels> size);
  Size<Pixels> size() const { return size_; }
  bool ready() const { return pixels_ != nullptr; }

  HDC dc() const { return dc_.get(); }
  // Rows from the top, each `stride` pixels long, 0xAARRGGBB with alpha unused.
  // Call GdiFlush after GDI has drawn and before touching them.
  std::uint32_t* pixels() const { return pixels_; }
  int stride() const { return capacity_.width.value; }

  // Copies a part to the same place of a window.
  void blit(HDC target, const PixelRect& part) const;

 private:
  bool allocate(Size<Pixels> capacity);

  MemoryDc dc_;
  BitmapHandle bitmap_;
  HGDIOBJ former_ = nullptr;
  std::uint32_t* pixels_ = nullptr;
  Size<Pixels> size_, capacity_;
};

}  // namespace varnowick
