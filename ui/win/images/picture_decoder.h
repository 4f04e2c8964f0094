// Picture files as bitmaps: PNG by our own decoder, the rest through GDI+ where
// the system has it, else through the older OLE pictures. Called on the worker thread; COM must be
// initialised.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

// Empty when the bytes are no picture, claim an absurd size, or are damaged so
// that nothing can be shown. No edge is longer than maxEdge; larger ones shrink.
Bitmap decodePicture(std::string_view bytes, int maxEdge);
// The size that a picture file claims to have, out of its first bytes; nothing when it
// is none that can be shown.
std::optional<Size<Pixels>> pictureSizeOf(const std::wstring& path);
// The same as decodePicture from a file of at most 64 MB.
Bitmap loadPictureFile(const std::wstring& path, int maxEdge);

}  // namespace varnowick
