// What the messages of a notification-area icon mean: which of them is a click
// and which asks for the menu. Shells of different age send different ones, and
// some send one twice. Knows message numbers, no window.
#pragma once

namespace varnowick {

enum class TrayAction {
  None,
  Click,         // by mouse, Enter or blank
  MenuAtCursor,  // by the right button
  MenuAtIcon,    // by the keyboard: the cursor may be anywhere
  BalloonClick,
  BalloonGone
};

class TrayEvents {
 public:
  // Whether the shell has accepted version 3 of the messages (Windows 2000 and
  // later); older ones send plain mouse messages.
  void setVersion3(bool accepted) { version3_ = accepted; }
  // `event` is the message's lParam, `time` its time in milliseconds. One user's
  // action gives one result, however many messages it takes.
  TrayAction decide(unsigned event, unsigned time);

 private:
  bool version3_ = true;
  bool doubleClick_ = false;  // the click that ends a double click is not a second one
  bool rightUp_ = false;      // the menu message that follows came from the mouse
  bool keySelected_ = false;
  unsigned keySelectTime_ = 0;
};

}  // namespace varnowick
