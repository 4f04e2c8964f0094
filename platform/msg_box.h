// The one message-box routine. Style bits are the platform's; an answer is Yes or
// No only when that button was pressed.
#pragma once

#include <string>

namespace varnowick {

inline constexpr unsigned kMsgOkOnly = 0;
inline constexpr unsigned kMsgYesNo = 4;
inline constexpr unsigned kMsgCritical = 16;
inline constexpr unsigned kMsgQuestion = 32;
inline constexpr unsigned kMsgExclamation = 48;
inline constexpr unsigned kMsgInformation = 64;
inline constexpr unsigned kMsgSystemModal = 4096;
// Not the platform's: of a Yes/No question that Esc must not answer with No.
inline constexpr unsigned kMsgMustAnswer = 0x80000000;

// None: any other button, Esc where it is not No, or a box that was closed or torn down.
enum class MsgAnswer { None, Yes, No };
inline constexpr MsgAnswer kMsgAnswerYes = MsgAnswer::Yes;
inline constexpr MsgAnswer kMsgAnswerNo = MsgAnswer::No;

inline constexpr const wchar_t* kProgramTitle = L"Varnowick";

class MsgBox {
 public:
  virtual ~MsgBox() = default;
  // Shows the box and waits for the answer, which is returned.
  virtual MsgAnswer show(const std::wstring& text, unsigned style, const std::wstring& caption) = 0;

  // A Yes/No question; only Yes is Yes.
  bool saysYes(const std::wstring& question, unsigned icon, const std::wstring& caption) {
    return show(question, kMsgYesNo | icon, caption) == kMsgAnswerYes;
  }
};

}  // namespace varnowick
