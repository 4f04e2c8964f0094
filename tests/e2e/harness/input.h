// The user's hands: mouse and keyboard through SendInput, in screen pixels.
// Knows nothing of the program; keys go to whatever window is in front.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

namespace varnowick::e2e {

// Makes this process see the screen in real pixels, as the program does, on
// systems that would otherwise scale for it. Call it before anything else.
void seeRealPixels();

POINT centreOf(const RECT& rect);

namespace mouse {

POINT position();
// Moves there and makes sure of it.
void moveTo(POINT at);
void click(POINT at);
void doubleClick(POINT at);
void rightClick(POINT at);
// Presses at the first point, passes through some between, and releases.
void drag(POINT from, POINT to);
void press();
void release();
// Positive: away from the user.
void wheel(POINT at, int notches);
// A corner of the screen's work area away from that rectangle, and from the
// place where some systems put their tray windows.
void moveAwayFrom(const RECT& rect);

}  // namespace mouse

namespace keyboard {

// Presses the keys in order and releases them in reverse order, as in
// chord({VK_MENU, VK_F4}).
void chord(std::initializer_list<WORD> keys);
void press(WORD key);
// For a key that is held while the mouse is used.
void down(WORD key);
void up(WORD key);
// Types letters, digits and blanks.
void type(const std::wstring& text);

}  // namespace keyboard
}  // namespace varnowick::e2e
