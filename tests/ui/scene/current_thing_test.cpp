#include "ui/scene/current_thing.h"

#include <gtest/gtest.h>

#include "ui/scene/object_scene.h"

namespace varnowick {
namespace {

// For Del (files, or what is selected), and for F2 and Enter (the one).
TEST(CurrentThing, IsOneThingForAllKeysAndHasTheFocus) {
  constexpr ShortcutSlot a{1}, b{2};
  constexpr ContainerSlot box{3};
  constexpr PictureSlot picture{4};
  const NodeId list{ControlKind::LstFolder, 7}, button{ControlKind::cmdAdd, 0}, none;
  const NodeId title = containerPart(ControlKind::ContainerLabel, box);
  const NodeId note = containerPart(ControlKind::ContainerNote, box);
  const NodeId link = shortcutNode(a), other = shortcutNode(b), frame = pictureNode(picture);
  const struct {
    const char* name;
    std::vector<ObjectId> selected;
    NodeId focused;
    std::optional<ObjectId> object;
    bool files, removable;
    NodeId focusNext;
  } rows[] = {
      {"nothing", {}, none, {}, false, false, none},
      {"a file", {}, list, {}, true, true, list},
      {"a container, by its menu, after a file", {box}, list, box, false, true, title},
      {"all, after a file", {a, b, box}, list, box, false, true, title},
      {"the one of several that has the focus", {a, b}, link, a, false, true, link},
      {"another one was clicked", {b}, other, b, false, true, other},
      {"a picture, after a shortcut", {picture}, link, picture, false, true, frame},
      {"unselected", {}, link, a, false, false, none},
      {"a button", {}, button, {}, false, false, button},
      {"a note, which is not its container", {}, note, {}, false, false, note},
  };
  const Scene scene;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Selection selection;
    for (const ObjectId& id : row.selected) selection.select(id);
    const CurrentThing thing = currentThing(selection, row.focused);
    EXPECT_EQ(thing.object, row.object);
    EXPECT_EQ(!thing.files.none(), row.files);
    EXPECT_EQ(thing.removable, row.removable);
    EXPECT_EQ(focusFor(scene, selection, row.focused), row.focusNext);
  }
}

}  // namespace
}  // namespace varnowick
