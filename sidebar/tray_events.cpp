#include "sidebar/tray_events.h"

namespace varnowick {
namespace {

enum Event : unsigned {
  kContextMenu = 0x007B,
  kLeftDown = 0x0201,
  kLeftUp = 0x0202,
  kLeftDouble = 0x0203,
  kRightDown = 0x0204,
  kRightUp = 0x0205,
  kSelect = 0x0400,
  kKeySelect = 0x0401,
  kBalloonHide = 0x0403,
  kBalloonTimeout = 0x0404,
  kBalloonClick = 0x0405
};

// Shells send the message for Enter twice in a row.
constexpr unsigned kTwice = 200;  // ms

}  // namespace

TrayAction TrayEvents::decide(unsigned event, unsigned time) {
  switch (event) {
    case kLeftDown:
      doubleClick_ = false;
      return TrayAction::None;
    case kLeftDouble:
      doubleClick_ = true;
      return TrayAction::None;
    case kLeftUp:
      return version3_ || doubleClick_ ? TrayAction::None : TrayAction::Click;
    case kSelect:
      return version3_ && !doubleClick_ ? TrayAction::Click : TrayAction::None;
    case kKeySelect: {
      const bool again = keySelected_ && time - keySelectTime_ < kTwice;
      keySelected_ = true;
      keySelectTime_ = time;
      return again ? TrayAction::None : TrayAction::Click;
    }
    case kRightDown:
      rightUp_ = false;
      return TrayAction::None;
    case kRightUp:
      rightUp_ = true;
      return version3_ ? TrayAction::None : TrayAction::MenuAtCursor;
    case kContextMenu: {
      const bool mouse = rightUp_;
      rightUp_ = false;
      if (!version3_) return TrayAction::None;
      return mouse ? TrayAction::MenuAtCursor : TrayAction::MenuAtIcon;
    }
    case kBalloonClick:
      return TrayAction::BalloonClick;
    case kBalloonHide:
    case kBalloonTimeout:
      return TrayAction::BalloonGone;
    default:
      return TrayAction::None;
  }
}

}  // namespace varnowick
