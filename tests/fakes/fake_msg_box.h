// Records every message and gives the answers in turn (Yes when there are none).
#pragma once

#include <string>
#include <vector>

#include "platform/msg_box.h"

namespace varnowick {

class FakeMsgBox : public MsgBox {
 public:
  struct Shown {
    std::wstring text;
    unsigned style;
    std::wstring caption;
    bool operator==(const Shown&) const = default;
  };
  std::vector<Shown> shown;
  std::vector<MsgAnswer> answers;

  MsgAnswer show(const std::wstring& text, unsigned style, const std::wstring& caption) override {
    shown.push_back({text, style, caption});
    if (answers.empty()) return kMsgAnswerYes;
    const MsgAnswer answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }
};

}  // namespace varnowick
