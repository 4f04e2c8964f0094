// Small picture files made in memory, of one colour with an alpha value each.
#pragma once

#include <cstdint>
#include <string>

namespace varnowick {

// 0xAARRGGBB, not premultiplied. The claimed size may differ from what follows.
std::string pngBytes(std::uint32_t width, std::uint32_t height, std::uint32_t argb);
std::string pngClaiming(std::uint32_t width, std::uint32_t height);
// 24 bits, without alpha.
std::string bmpBytes(std::uint32_t width, std::uint32_t height, std::uint32_t rgb);
// Of 5 x 3 pixels in 0x102030, and a second frame in red.
std::string gifBytes();
// Of 8 x 8 pixels, near to 0xC02040.
std::string jpegBytes();
// One image of 32 bits.
std::string icoBytes(std::uint32_t edge, std::uint32_t argb);

}  // namespace varnowick
