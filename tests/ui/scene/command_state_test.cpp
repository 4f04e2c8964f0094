// Every row of every menu, in every state that makes a difference: whether it is
// enabled against what running it does.
#include "ui/scene/command_state.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "containers/container_rules.h"
#include "containers/detached_menu.h"
#include "ui/scene/workspace_editor.h"
#include "ui/scene/workspace_scene.h"

namespace varnowick {
namespace {

enum class Chosen { Nothing, Shortcut, Container, Picture };

struct World {
  Document document;
  WorkspaceScene view{document.settings, document.workspace};
  WorkspaceEditor editor{document, view};
  ContainerRules rules{document.workspace, document.settings};
  ContainerSlot menu, box;

  World(bool furnished, Chosen chosen, bool moved, bool locked, bool ofContainer) {
    Workspace& w = document.workspace;
    ShortcutSlot shortcut;
    PictureSlot picture;
    if (furnished) {
      clsContainer c;
      c.name = L"Box";
      c.visible = true;
      c.rect = c.savedRect = {{133}, {3333}, {3000}, {2000}};
      box = w.containers.add(c);
      for (const wchar_t* name : {L"b", L"a"}) {
        clsShortcut s;
        s.FullCaption = name;
        s.position = {{133}, {477}};
        s.parent = {box};
        w.shortcuts.add(s);
        s.position = {{1477}, {133}};
        s.parent = picBack;
        shortcut = w.shortcuts.add(s);
      }
      picture = w.pictures.add({L"C:\\p.png", picBack, {{133}, {1333}, {900}, {600}}});
    }
    view.build({});
    if (furnished && moved) {
      editor.sortByName(picBack);
      // And out of order again.
      w.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
        if (s.parent.isMain())
          w.shortcuts[slot].position =
              s.FullCaption == L"a" ? Point<Twips>{{2911}, {613}} : Point<Twips>{{1477}, {533}};
      });
      editor.shortcutChanged(shortcut);
    }
    if (furnished && chosen == Chosen::Shortcut) editor.selectOnly(shortcut);
    if (furnished && chosen == Chosen::Container) editor.selectOnly(box);
    if (furnished && chosen == Chosen::Picture) editor.pressed(pictureNode(picture), false);
    if (ofContainer) menu = box;
    document.settings.locked = locked;
  }
  std::vector<ContainerSlot> targets() const {
    if (!menu.none()) return {menu};
    return editor.selectedContainers();
  }
  CommandState state() const {
    const auto current = editor.selection().current();
    const auto* meant = current ? std::get_if<ShortcutSlot>(&*current) : nullptr;
    CommandState s =
        commandStateOf(document, editor.selection(),
                       {picBack, meant == nullptr ? ShortcutSlot{} : *meant, menu, targets()});
    s.canUndo = document.history.undoName() != nullptr;
    return s;
  }
  std::string written() const {
    std::ostringstream out;
    for (const ObjectId& id : editor.selection().objects())
      std::visit([&](auto slot) { out << id.index() << ':' << slot.index << ' '; }, id);
    document.workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
      out << slot.index << '@' << s.position.x.value << ',' << s.position.y.value << ' ';
    });
    document.workspace.pictures.forEach([&](PictureSlot slot, const clsPicture& p) {
      out << slot.index << '#' << p.rect.left.value << ',' << p.rect.top.value << ' ';
    });
    document.workspace.containers.forEach([&](ContainerSlot slot, const clsContainer& c) {
      out << slot.index << '%' << c.rect.left.value << ',' << c.rect.height.value << c.folded
          << c.shrunk << c.Detached << ' ';
    });
    return out.str();
  }
};

using Runner = void (*)(World&);
const std::map<Command, Runner> kRunners{
    {Command::mnuSelectAll, [](World& w) { w.editor.selectAll(); }},
    {Command::mnuUnselectAll, [](World& w) { w.editor.selectNone(); }},
    {Command::mnuUndo, [](World& w) { w.document.history.undo(w.document.workspace); }},
    {Command::mnuDeleteSelected,
     [](World& w) {
       w.editor.removeContainers(w.editor.selectedContainers());
       w.editor.carryOut(w.editor.planDelete());
     }},
    {Command::mnuConRemove, [](World& w) { w.editor.removeContainers(w.targets()); }},
    {Command::mnuAlignSelected, [](World& w) { w.editor.align(); }},
    {Command::mnuSortByName, [](World& w) { w.editor.sortByName({w.menu}); }},
    {Command::mnuFoldAll, [](World& w) { w.rules.mnuFoldAll({}); }},
    {Command::mnuShrinkAll, [](World& w) { w.rules.mnuShrinkAll({}); }},
    {Command::mnuDetachContainer,
     [](World& w) {
       const Detachable found = detachable(w.document.workspace, w.editor.selection());
       for (const ContainerSlot slot : w.targets())
         markDetached(w.document.workspace.containers[slot]);
       // A refusal is something too: it is told.
       if (found.refusal != nullptr) w.editor.selectNone();
     }},
};

wchar_t mnemonicOf(const std::wstring& caption) {
  for (std::size_t i = 0; i + 1 < caption.size(); ++i)
    if (caption[i] == L'&' && caption[++i] != L'&')
      return caption[i] >= L'A' && caption[i] <= L'Z' ? static_cast<wchar_t>(caption[i] + 32)
                                                      : caption[i];
  return 0;
}

// Rows are told apart by key within each menu and submenu; separators separate.
template <class Row>
void expectTidy(const std::vector<Row>& rows) {
  std::vector<std::set<wchar_t>> open;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto depth = static_cast<std::size_t>(rows[i].depth);
    const bool last = i + 1 == rows.size() || rows[i + 1].depth < rows[i].depth;
    if (rows[i].caption.empty()) {
      const bool first = i == 0 || rows[i - 1].depth < rows[i].depth;
      EXPECT_FALSE(first || last || rows[i + 1].caption.empty()) << i;
      continue;
    }
    open.resize(depth + 1);
    if (const wchar_t key = mnemonicOf(rows[i].caption); key != 0) {
      EXPECT_TRUE(open[depth].insert(key).second) << rows[i].caption.c_str();
    }
  }
}

TEST(Menus, EnabledIsWhatDoesSomething) {
  std::set<Command> tried;
  for (int bits = 0; bits < 64; ++bits) {
    const auto chosen = static_cast<Chosen>(bits & 3);
    const bool moved = bits & 4, locked = bits & 8, furnished = bits & 16, ofContainer = bits & 32;
    const auto world = [&] { return World(furnished, chosen, moved, locked, ofContainer); };
    const CommandState state = world().state();
    for (const MenuId menu :
         {MenuId::Main, MenuId::Add, MenuId::Settings, MenuId::Shortcut, MenuId::Container}) {
      // Menus of objects open on objects.
      if (menu == MenuId::Container && !(furnished && ofContainer)) continue;
      const std::vector<ShownMenuRow> rows = shownMenu(menu, state);
      expectTidy(rows);
      for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].command == Command::None) continue;
        EXPECT_TRUE(commandRow(rows[i].command).built);
        const auto runner = kRunners.find(rows[i].command);
        if (runner == kRunners.end()) continue;
        tried.insert(rows[i].command);
        World w = world();
        if (isLockedAway(rows[i].command, state)) {
          EXPECT_FALSE(rows[i].enabled);
          continue;  // the window refuses it
        }
        const std::string before = w.written();
        runner->second(w);
        EXPECT_EQ(w.written() != before, rows[i].enabled)
            << commandRow(rows[i].command).name << ' ' << bits;
      }
    }
  }
  EXPECT_EQ(tried.size(), kRunners.size());
}

TEST(Menus, WhatTheWindowKnowsCounts) {
  struct Case {
    Command command;
    bool CommandState::*needs;
  };
  for (const Case& c : {Case{Command::mnuPaste, &CommandState::canPaste},
                        {Command::mnuAttachAll, &CommandState::anyDetached},
                        {Command::mnuShowDetached, &CommandState::detachedHidden},
                        {Command::mnuStartSelected, &CommandState::shortcutSelected},
                        {Command::mnuStartAll, &CommandState::anyShortcuts},
                        {Command::mnuOpenFileLocation, &CommandState::shortcutMeant},
                        {Command::mnuDockNow, &CommandState::barOut}})
    for (const bool there : {false, true}) {
      CommandState state;
      state.*c.needs = there;
      EXPECT_EQ(isEnabled(c.command, state), there) << commandRow(c.command).name;
    }
  EXPECT_EQ(keyText(commandRow(Command::mnuDeleteSelected).key), L"Del");
  EXPECT_EQ(keyText(commandRow(Command::mnuExitMainWin).key), L"Alt+F4");
}

}  // namespace
}  // namespace varnowick
