#include "platform/win32/win32_msg_box.h"

#include <windows.h>

#include <optional>

#include "platform/win32/common_controls.h"

namespace varnowick {
namespace {

// Windows lets a Yes/No box be left by its buttons alone; Esc means No to everybody.
class EscapeMeansNo {
 public:
  EscapeMeansNo() : hook_(SetWindowsHookExW(WH_MSGFILTER, filter, nullptr, GetCurrentThreadId())) {}
  ~EscapeMeansNo() {
    if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
  }
  EscapeMeansNo(const EscapeMeansNo&) = delete;
  EscapeMeansNo& operator=(const EscapeMeansNo&) = delete;

 private:
  static LRESULT CALLBACK filter(int code, WPARAM wParam, LPARAM lParam) {
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && message->message == WM_KEYDOWN && message->wParam == VK_ESCAPE) {
      const HWND box = GetAncestor(message->hwnd, GA_ROOT);
      // Not for a dialog that is open below the box.
      if (GetDlgItem(box, IDYES) != nullptr && GetDlgItem(box, IDNO) != nullptr) {
        PostMessageW(box, WM_COMMAND, IDNO, 0);
        return TRUE;
      }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
  }

  HHOOK hook_;
};

}  // namespace

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
  constexpr unsigned kKinds = 0xF;  // MB_TYPEMASK
  std::optional<EscapeMeansNo> escape;
  if ((style & (kKinds | kMsgMustAnswer)) == kMsgYesNo) escape.emplace();
  style &= ~kMsgMustAnswer;
  // Closing answers a Yes/No box on some systems, with neither of its buttons.
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
