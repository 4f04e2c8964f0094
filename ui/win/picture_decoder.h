// Picture files as bitmaps: PNG by our own decoder, the rest through GDI+ where
// the system has it, else through the older OLE pictures. Called on the worker thread; COM must be
// initialised.
#pragma once

#include <string>
#include <string_view>

#include "ui/win/pixel_draw.h"

namespace varnowick {

// Empty when the bytes are no picture, claim an absurd size, or are damaged so
// that nothing can be shown. No edge is longer than maxEdge; larger ones shrink.
Bitmap decodePicture(std::string_view bytes, int maxEdge);
// The same from a file of at most 64 MB.
Bitmap loadPictureFile(const std::wstring& path, int maxEdge);

}  // namespace varnowick
