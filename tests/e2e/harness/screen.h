// What is on the screen: pixels and distances. Colours are compared only where
// they are the program's own; text is never compared as a picture.
#pragma once

#include <windows.h>

#include <set>

namespace varnowick::e2e {

// Pixels per logical inch of this process.
int screenDpi();
// Twips to pixels, half to even, as the program places its windows.
int toPixels(double twips);
double toTwips(int pixels);

RECT rectOf(HWND window);
// Of a layered window, 255 where it has none of its own.
int opacityOf(HWND window);
// The different colours in that part of the screen, of every third pixel.
std::set<COLORREF> coloursIn(const RECT& rect);

}  // namespace varnowick::e2e
