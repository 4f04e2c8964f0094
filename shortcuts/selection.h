// Which objects of the workspace are selected, and how presses, Ctrl and the
// rubber band change that. Knows slots and panels; the window says what lies
// under the mouse and inside the band.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/settings.h"
#include "core/workspace.h"

namespace varnowick {

// False for a slot that is not in use, a shortcut hidden by the tag filter, and a
// container that is detached or being deleted.
bool isSelectable(const Workspace& workspace, ObjectId id);

class Selection {
 public:
  bool contains(ObjectId id) const { return objects_.count(id) != 0; }
  bool empty() const { return objects_.empty(); }
  std::size_t size() const { return objects_.size(); }
  // Shortcuts, pictures, containers, each by slot.
  const std::set<ObjectId>& objects() const { return objects_; }
  std::vector<ShortcutSlot> shortcuts() const;
  // What was selected last, if it still is; else the only one; else none.
  std::optional<ObjectId> current() const;

  // A press on an object. Without Ctrl it is selected alone, unless it is
  // selected already: then all stay so, because a drag may follow. With Ctrl it
  // is selected or unselected, the others stay.
  void press(ObjectId id, bool ctrl);
  // The release on the same object. Without Ctrl and drag it remains alone.
  void release(ObjectId id, bool ctrl, bool dragged);
  // A press on a panel, which may begin a rubber band. Without Ctrl nothing
  // remains selected.
  void pressPanel(bool ctrl);
  // The objects that the band touches now. With Ctrl held at the press they are
  // added to what was selected; those it has left again are as before.
  void band(const std::vector<ObjectId>& touched);

  void select(ObjectId id);
  void unselect(ObjectId id);
  void selectNone();
  // What lies on the panel itself: all that can be selected there.
  void selectAll(const Workspace& workspace, Panel panel);
  // Drops what can be selected no longer: after deleting and filtering. A slot
  // that was used again in between must have been unselected at its deletion.
  void prune(const Workspace& workspace);

 private:
  std::set<ObjectId> objects_;
  std::set<ObjectId> beforeBand_;
  std::optional<ObjectId> last_;
  bool keptForDrag_ = false;  // by the press; the release decides
};

// What is said when settings.locked refuses a change of the workspace.
inline constexpr const wchar_t* kLockedMessage =
    L"Editing is locked. Unlock it (Ctrl+L) to change the workspace.";

// "Delete selected": what goes, and what is asked before.
inline constexpr const wchar_t* kRemoveSelectedQuestion = L"Remove Selected Shortcuts?";
inline constexpr const wchar_t* kDeleteSelectedQuestion =
    L"Delete Selected Files from disk and/or remove other selected shortcuts?";

struct DeletePlan {
  std::vector<ShortcutSlot> shortcuts;
  std::vector<PictureSlot> pictures;
  // To be deleted on disk once the user agreed: what stands for a file of a
  // folder container, and lies in that container's folder.
  std::vector<std::wstring> files;
  // Empty when nothing is to be asked. What goes is named below the first line.
  std::wstring question;
  bool empty() const { return shortcuts.empty() && pictures.empty(); }
};

// Empty while editing is locked. Containers are not deleted by this command; what
// lies in those that are to be removed goes with them.
DeletePlan planDelete(const Workspace& workspace, const Selection& selection,
                      const Settings& settings,
                      const std::vector<ContainerSlot>& removedBefore = {});

// The names one below the other, the first few of many; each line ends in CR LF.
std::wstring namesForQuestion(const std::vector<std::wstring>& names);
// "1 shortcut", "3 shortcuts".
std::wstring countOf(std::size_t count, const wchar_t* thing);

}  // namespace varnowick
