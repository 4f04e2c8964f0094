// Icons as bitmaps: of a handle, of a file, of what the shell shows for a path.
// Called on the worker thread, because any path may be on a drive that is slow
// to answer or gone. COM must be initialised.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "core/units.h"
#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

// What the function draws, with its transparency, whatever way it has of drawing:
// it is called twice, on black and on white, and the difference tells. Empty when
// there is no memory.
Bitmap bitmapOfDrawing(Pixels width, Pixels height, const std::function<void(HDC)>& draw);
Bitmap bitmapOfIcon(HICON icon, int edge);

// The icon of a file, folder or address, edge pixels high and wide. Empty when
// there is none.
Bitmap loadIconOf(const std::wstring& path, int edge);

// True for what has a scheme instead of a drive ("http://...").
bool isAddress(const std::wstring& path);
// True for files whose icon lies in the file itself, by the name alone. That of
// every other one follows from its kind, and changes with the system's settings.
bool holdsIcons(const std::wstring& path);
// True when the path may take long to answer: a network path, or a drive that is
// not fixed. Asks the system about the drive, not the drive itself.
bool mayBeSlow(const std::wstring& path);

}  // namespace varnowick
