#include "ui/scene/accessibility.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/ui/scene/furnished_bar.h"
#include "ui/scene/detached_scene.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using K = ControlKind;
using Items = std::vector<AccessibleItem>;

// One line an item, what lies in another one indented: role, name, value, what
// pressing does, states.
std::string told(const Items& items) {
  const char* const roles[] = {"window", "button", "link", "graphic", "group",
                               "label",  "text",   "list", "entry"};
  const char* const states[] = {"focused",   "focusable",   "selected",  "pressed",   "expanded",
                                "collapsed", "unavailable", "offscreen", "selectable"};
  std::string all;
  for (const AccessibleItem& item : items) {
    std::string line = std::string(roles[static_cast<int>(item.role)]) + " \"" +
                       std::string(item.name.begin(), item.name.end()) + "\"";
    std::wstring value = item.value;
    std::erase(value, L'\r');
    std::replace(value.begin(), value.end(), L'\n', L'/');
    if (!value.empty()) line += " = " + std::string(value.begin(), value.end());
    if (!item.defaultAction.empty())
      line += " -> " + std::string(item.defaultAction.begin(), item.defaultAction.end());
    for (unsigned bit = 0; bit < std::size(states); ++bit)
      if ((item.states & (1U << bit)) != 0) line += std::string(", ") + states[bit];
    for (int above = item.parent; above >= 0; above = items[static_cast<std::size_t>(above)].parent)
      line.insert(0, "  ");
    all += line + "\n";
  }
  return all;
}

struct AccessibilityTest : testing::Test, FurnishedBar {
  Items items() const { return accessibleItems(scene, input); }
};

TEST_F(AccessibilityTest, TellsTheWholeBar) {
  layout.collapsedTo = ScreenEdge::Left;
  layout.undoLine = L"Removed";
  layout.progress = L"Saving";
  view.setFrame(layout);
  input.focus(folderListNode(papers));
  input.mousePressed(middle({K::cmdAdd, 0}));
  scene.find(shortcutNode(mail))->selected = true;
  EXPECT_EQ(told(items()), R"(label "Varnowick"
button "Shrink/Expand All" -> Press, focusable
button "Fold/Unfold All" -> Press, focusable
button "Refresh All Feeds" -> Press, focusable, unavailable
button "Lock" -> Press, focusable
button "Dock Now" -> Press, focusable
group "Workspace"
  link "Mail" -> Open, focusable, selected, selectable
  link "Quarterly report" -> Open, focusable, selectable
  link "Build server" -> Open, focusable, selectable
  graphic "sea.png" -> Open, focusable, selectable
  group "Work" -> Fold, expanded, selectable
    link "Notes" -> Open, focusable, selectable
    label "Work" -> Fold, focusable, expanded
    button "Fold Work" -> Fold
    button "Menu of Work" -> Press
    button "Detach Work" -> Press
    button "Shrink Work" -> Press
  group "Folded" -> Unfold, collapsed, selectable
    label "Folded" -> Unfold, focusable, collapsed
    button "Unfold Folded" -> Unfold
  group "News" -> Expand, collapsed, selectable
    button "News" -> Expand, focusable
  group "List" -> Fold, expanded, selectable
    text "Note of List" = Milk//www.example.org/Bread/Salt, focusable
    label "List" -> Fold, focusable, expanded
    button "Fold List" -> Fold
    button "Menu of List" -> Press
    button "Detach List" -> Press
  group "Feed" -> Fold, expanded, selectable
    list "Headlines of Feed" = Click to download headlines [F5] -> Press, focusable
    label "Last Update 4 minutes ago"
    label "Feed" -> Fold, focusable, expanded
    button "Fold Feed" -> Fold
    button "Menu of Feed" -> Press
    button "Detach Feed" -> Press
  group "Papers" -> Fold, expanded, selectable
    list "Folder of Papers", focused, focusable
      entry "a.txt" -> Open, focused, selected, selectable
      entry "b.exe" -> Open, selectable
      entry "c.txt" -> Open, selectable
    label "Papers" -> Fold, focusable, expanded
    button "Fold Papers" -> Fold
    button "Menu of Papers" -> Press
    button "Detach Papers" -> Press
    button "Shrink Papers" -> Press
  group "Low" -> Fold, expanded, offscreen, selectable
    label "Low" -> Fold, focusable, expanded, offscreen
    button "Fold Low" -> Fold, offscreen
    button "Menu of Low" -> Press, offscreen
    button "Detach Low" -> Press, offscreen
label "Saving"
button "Removed" -> Undo, focusable
button "Add" -> Press, focusable, pressed
button "Settings" -> Press, focusable
button "Menu" -> Press, focusable
button "Docking strip" -> Expand
)");
}

// What has no name of its own is told by what it is.
TEST_F(AccessibilityTest, TellsAWindowOfItsOwnAndWhatHasNoName) {
  clsContainer& c = workspace.containers[work];
  c.name = L" \t";
  c.Detached = true;
  workspace.shortcuts[inside].FullCaption.clear();
  workspace.shortcuts[inside].Path = L"C:\\tool.exe";
  DetachedScene window(settings, workspace, work);
  window.build({{2880}, {1500}}, {{2880}, {1500}}, {});
  EXPECT_EQ(told(accessibleItems(window.scene(), InputState(window.scene()))),
            R"(group "Container" -> Fold, expanded, selectable
  link "C:\tool.exe" -> Open, focusable, selectable
  label "Container" -> Fold, focusable, expanded
  button "Fold Container" -> Fold
  button "Menu of Container" -> Press
  button "Attach Container" -> Press
  button "Hide Container" -> Press
)");
  view.build(layout);
  const Items bar = items();
  EXPECT_TRUE(std::none_of(bar.begin(), bar.end(), [&](const AccessibleItem& item) {
    return item.id == containerNode(work);
  }));
}

TEST_F(AccessibilityTest, ItemsAreFoundAtTheirPlace) {
  const Items all = items();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if ((all[i].states & kStateOffscreen) != 0 || all[i].role == AccessibleRole::Grouping) continue;
    if (!scene.find(all[i].id)->hitTarget || all[i].id.kind == K::LstFolder) continue;
    const Point<Twips> corner{all[i].rect.left + 5_tw, all[i].rect.top + 5_tw};
    EXPECT_EQ(accessibleAt(scene, all, corner), static_cast<int>(i)) << told({all[i]});
  }
  EXPECT_EQ(accessibleAt(scene, all, {{-5}, {0}}), -1);
  // Of what is not told the nearest around it is.
  const int icon = accessibleAt(scene, all, middle({K::PicImage, picture.index}));
  EXPECT_EQ(all[static_cast<std::size_t>(icon)].id, pictureNode(picture));
}

TEST_F(AccessibilityTest, ChangesAreToldOneByOneUntilTheyAreTooMany) {
  using What = AccessibleChange::What;
  const auto change = [](NodeId id, What what) { return AccessibleChange{id, what}; };
  const NodeId a = shortcutNode(mail), b = shortcutNode(report), list = folderListNode(papers);
  files.selectNone();
  layoutFolderRows(scene, papers, files);
  Items before = items();
  const auto now = [&] {
    const Items after = items();
    const AccessibleChanges changes = accessibleChanges(before, after);
    before = after;
    return changes;
  };
  EXPECT_THAT(now().items, IsEmpty());
  scene.find(a)->selected = true;
  EXPECT_THAT(now().items, ElementsAre(change(a, What::OnlySelected)));
  scene.find(b)->selected = true;
  EXPECT_THAT(now().items, ElementsAre(change(b, What::Selected)));
  scene.find(a)->selected = false;
  EXPECT_THAT(now().items, ElementsAre(change(a, What::Unselected)));
  scene.find(a)->text = L"Post";
  scene.find(a)->enabled = false;
  scene.find(list)->text = L"Loading...";
  input.focus(b);  // has an event of its own
  EXPECT_THAT(now().items, ElementsAre(change(a, What::Name), change(a, What::State),
                                       change(list, What::Value)));
  EXPECT_FALSE(now().order);
  scene.sink(a, [](NodeId, NodeId) { return true; });
  scene.raise(a);
  EXPECT_TRUE(now().order);
  scene.find(a)->visible = false;
  const AccessibleChanges gone = now();
  EXPECT_TRUE(gone.order);
  EXPECT_THAT(gone.items, IsEmpty());

  std::vector<ShortcutSlot> many;
  for (int i = 0; i < 21; ++i) many.push_back(add(picBack, L"One", 120, 120));
  view.build(layout);
  now();
  for (const int count : {20, 21}) {
    for (int i = 0; i < count; ++i)
      scene.find(shortcutNode(many[static_cast<std::size_t>(i)]))->selected = true;
    const AccessibleChanges changes = now();
    EXPECT_EQ(changes.items.size(), count == 20 ? 20U : 0U);
    EXPECT_EQ(changes.manySelected, count == 21);
    for (const ShortcutSlot slot : many) scene.find(shortcutNode(slot))->selected = false;
    now();
  }
}

}  // namespace
}  // namespace varnowick
