#include "containers/removal.h"

#include <algorithm>
#include <string>

#include "shortcuts/selection.h"

namespace varnowick {

bool confirmRemoval(const Settings& settings, MsgBox& msgBox, const Workspace& workspace,
                    const std::vector<ContainerSlot>& slots) {
  if (!settings.confirmDelete) return true;
  std::vector<std::wstring> names;
  bool folders = false;
  for (const ContainerSlot slot : slots) {
    const clsContainer* container = workspace.containers.find(slot);
    if (container == nullptr) continue;
    names.push_back(container->name);
    folders = folders || containerType(*container) == ContainerType::Folder;
  }
  const auto liesIn = [&](Panel panel) {
    return std::find(slots.begin(), slots.end(), panel.container) != slots.end();
  };
  std::size_t shortcuts = 0, pictures = 0;
  workspace.shortcuts.forEach(
      [&](ShortcutSlot, const clsShortcut& s) { shortcuts += liesIn(s.parent) ? 1U : 0U; });
  workspace.pictures.forEach(
      [&](PictureSlot, const clsPicture& p) { pictures += liesIn(p.parent) ? 1U : 0U; });
  std::wstring text = L"Remove Selected Containers?\r\n\r\n" + std::to_wstring(slots.size()) +
                      L" Container(s) Selected\r\n\r\n" + namesForQuestion(names);
  if (shortcuts + pictures > 0)
    text += L"\r\nWith what lies in them: " + countOf(shortcuts, L"shortcut") + L", " +
            countOf(pictures, L"picture") + L".";
  if (folders) text += L"\r\nThe files in their folders stay.";
  return msgBox.show(text, kMsgYesNo | kMsgQuestion, L"Remove Containers") == kMsgAnswerYes;
}

}  // namespace varnowick
