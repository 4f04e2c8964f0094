// A workspace, and what a window knows of its panels.
#pragma once

#include <gtest/gtest.h>

#include "shortcuts/arrange.h"

namespace varnowick {

class PanelWorld : public testing::Test {
 protected:
  Workspace workspace;
  Settings settings;
  Selection selection;
  Size<Twips> room{{4700}, {11000}};  // of the main panel
  Size<Twips> cell{{1320}, {1080}}, smallCell{{2400}, {360}};
  PanelMeasures measures{
      {120},
      [this](Panel panel) { return panel.isMain() ? room : in(panel).savedRect.size(); },
      [this](Panel panel) { return panel.isMain() ? Point<Twips>{} : in(panel).rect.topLeft(); },
      [this](const clsShortcut& s) { return isSmall(s) ? smallCell : cell; }};

  const clsContainer& in(Panel panel) const { return workspace.containers[panel.container]; }
  ContainerSlot addContainer(TwipsRect rect, bool folded = false) {
    clsContainer container;
    container.rect = container.savedRect = rect;
    container.folded = folded;
    return workspace.containers.add(container);
  }
  ShortcutSlot add(Panel parent, Point<Twips> at, const wchar_t* caption = L"",
                   bool small = false) {
    clsShortcut shortcut;
    shortcut.parent = parent;
    shortcut.position = at;
    shortcut.FullCaption = caption;
    if (small) shortcut.FontSize = kSmallFontSize;
    return workspace.shortcuts.add(shortcut);
  }
  TwipsRect rectOf(const clsShortcut& s) const {
    const Size<Twips> size = measures.shortcutSize(s);
    return {s.position.x, s.position.y, size.width, size.height};
  }
};

}  // namespace varnowick
