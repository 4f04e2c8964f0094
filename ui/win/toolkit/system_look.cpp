#include "ui/win/toolkit/system_look.h"

#include <windows.h>

namespace varnowick {
namespace {

Colour systemColour(int index) { return {static_cast<int>(GetSysColor(index))}; }

}  // namespace

bool systemIsHighContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

SystemColours systemColours() {
  return {systemColour(COLOR_WINDOW),    systemColour(COLOR_WINDOWTEXT),
          systemColour(COLOR_HIGHLIGHT), systemColour(COLOR_HIGHLIGHTTEXT),
          systemColour(COLOR_BTNFACE),   systemColour(COLOR_BTNTEXT),
          systemColour(COLOR_GRAYTEXT)};
}

bool systemAnimates() {
#ifndef SPI_GETCLIENTAREAANIMATION
  constexpr UINT SPI_GETCLIENTAREAANIMATION = 0x1042;
#endif
  BOOL on = TRUE;
  // Systems before Vista do not know the setting and animate.
  return !SystemParametersInfoW(SPI_GETCLIENTAREAANIMATION, 0, &on, 0) || on;
}

}  // namespace varnowick
