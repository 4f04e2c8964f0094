// What the first bytes of a picture file claim it to be, so that a hostile file
// is refused before a decoder makes room for it. Decodes nothing.
#pragma once

#include <cstdint>
#include <string_view>

namespace varnowick {

enum class PictureFormat { Unknown, Png, Jpeg, Gif, Bmp, Ico };

struct PictureHeader {
  PictureFormat format = PictureFormat::Unknown;
  // In pixels, both above 0 for every known format; the largest image of an icon.
  std::uint32_t width = 0;
  std::uint32_t height = 0;
};

// Unknown when the format is none of the five or the header is damaged.
PictureHeader readPictureHeader(std::string_view bytes);

// True for a known format of at most 64 million pixels and 32768 pixels an edge.
bool isDecodable(const PictureHeader& header);

}  // namespace varnowick
