// The one message-box routine. Style bits and answers are the platform's.
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
inline constexpr int kMsgAnswerYes = 6;
inline constexpr int kMsgAnswerNo = 7;

inline constexpr const wchar_t* kProgramTitle = L"Varnowick";

class MsgBox {
 public:
  virtual ~MsgBox() = default;
  // Shows the box and waits for the answer, which is returned.
  virtual int show(const std::wstring& text, unsigned style, const std::wstring& caption) = 0;
};

}  // namespace varnowick
