// The picture that a web site has sent, as an icon. Bytes are hostile. Called on
// worker threads; COM must be initialised.
#pragma once

#include <string_view>

#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

// Edge pixels high and wide; what is not square gets clear margins. Of an icon
// file the image that fits best. Empty when nothing can be made of it.
Bitmap decodeIconPicture(std::string_view bytes, int edge);

}  // namespace varnowick
