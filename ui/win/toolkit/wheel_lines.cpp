#include "ui/win/toolkit/wheel_lines.h"

#include <windows.h>

#include <algorithm>

namespace varnowick {

int wheelLines(int delta, int page, int& rest) {
  constexpr UINT kMostLines = 100;
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  const int each = lines == WHEEL_PAGESCROLL ? page : static_cast<int>(std::min(lines, kMostLines));
  rest -= delta * each;
  const int turned = rest / WHEEL_DELTA;
  rest -= turned * WHEEL_DELTA;
  return turned;
}

}  // namespace varnowick
