// Where a borderless window is taken to be resized. Which of its sides move is the
// window's own to say.
#pragma once

#include <windows.h>

namespace varnowick {

struct SizableSides {
  bool left = true;
  bool top = true;
  bool right = true;
  bool bottom = true;
};

// What WM_NCHITTEST answers for a point of the screen.
inline LRESULT hitOnSides(HWND window, POINT screen, const SizableSides& sides, int dpi) {
  constexpr int kGrip = 5;  // pixels at 96 dots per inch
  RECT r{};
  GetWindowRect(window, &r);
  const int grip = MulDiv(kGrip, dpi, 96);
  const bool right = sides.right && screen.x >= r.right - grip;
  const bool left = sides.left && screen.x < r.left + grip;
  const bool bottom = sides.bottom && screen.y >= r.bottom - grip;
  const bool top = sides.top && screen.y < r.top + grip;
  if (top && left) return HTTOPLEFT;
  if (top && right) return HTTOPRIGHT;
  if (bottom && left) return HTBOTTOMLEFT;
  if (bottom && right) return HTBOTTOMRIGHT;
  if (right) return HTRIGHT;
  if (left) return HTLEFT;
  if (bottom) return HTBOTTOM;
  return top ? HTTOP : HTCLIENT;
}

}  // namespace varnowick
