#include "containers/removal.h"

#include <string>

namespace varnowick {

bool confirmRemoval(const Settings& settings, MsgBox& msgBox, std::size_t count) {
  if (!settings.confirmDelete) return true;
  const std::wstring text =
      L"Remove Selected Containers?\r\n\r\n" + std::to_wstring(count) + L" Container(s) Selected";
  return msgBox.show(text, kMsgYesNo | kMsgQuestion, L"Remove Containers") == kMsgAnswerYes;
}

}  // namespace varnowick
