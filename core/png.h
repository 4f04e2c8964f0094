// PNG pictures without the system's help: not every system has a decoder with
// soft edges, and the program's own pictures are of this kind. Bytes are hostile.
// Knows no window, no file and no device.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnowick {

struct PngPicture {
  int width = 0;
  int height = 0;
  // Rows from the top, 0xAARRGGBB, colours premultiplied.
  std::vector<std::uint32_t> pixels;
};

// All colour types and depths. Nothing for damaged or incomplete files, for
// interlaced ones, and for more than 16 million pixels.
std::optional<PngPicture> decodePng(std::string_view bytes);

// Empty unless there are as many pixels as the size says.
std::string encodePng(const PngPicture& picture);

}  // namespace varnowick
