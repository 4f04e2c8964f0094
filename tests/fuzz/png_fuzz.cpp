// Whatever the bytes are, a picture has as many pixels as it says, and comes back
// from its own encoding.
#include <cstdlib>

#include "core/png.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace varnowick;
  const auto picture = decodePng({reinterpret_cast<const char*>(data), size});
  if (!picture) return 0;
  if (picture->pixels.size() !=
      static_cast<std::size_t>(picture->width) * static_cast<std::size_t>(picture->height)) {
    std::abort();
  }
  const auto again = decodePng(encodePng(*picture));
  if (!again || again->width != picture->width || again->pixels != picture->pixels) std::abort();
  return 0;
}
