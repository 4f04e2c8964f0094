#include "platform/win32/win32_msg_box.h"

#include <windows.h>

#include "platform/win32/common_controls.h"

namespace varnowick {

MsgAnswer Win32MsgBox::show(const std::wstring& text, unsigned style, const std::wstring& caption) {
  HWND owner = owner_ ? reinterpret_cast<HWND>(owner_().value) : nullptr;
  if (owner != nullptr && !IsWindow(owner)) owner = nullptr;
  // A hidden or disabled owner would leave the box behind other windows, or
  // enable a window on closing that something else keeps disabled.
  if (owner != nullptr && (!IsWindowVisible(owner) || !IsWindowEnabled(owner))) {
    owner = GetLastActivePopup(owner);
    if (!IsWindowVisible(owner) || !IsWindowEnabled(owner)) owner = nullptr;
  }
  CommonControls::get();
  // Esc and closing answer a Yes/No box on some systems, with neither of its buttons.
  switch (MessageBoxW(owner, text.c_str(), caption.c_str(), style | MB_SETFOREGROUND)) {
    case IDYES:
      return kMsgAnswerYes;
    case IDNO:
      return kMsgAnswerNo;
    default:
      return MsgAnswer::None;
  }
}

}  // namespace varnowick
