// What has been changed in the workspace, step by step, so that it can be taken back
// and done again. One history serves all windows. A step is found by comparing the
// workspace before and after; whoever changes it only says when. How containers are
// folded, shrunk, detached and filtered is no step, nor is the text of a note.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "core/workspace.h"

namespace varnowick {

class UndoHistory {
 public:
  static constexpr std::size_t kMostSteps = 100;

  // From now on until end() whatever changes becomes one step. Within another step
  // it belongs to that one. UndoStep pairs the two.
  void begin(const Workspace& workspace);
  // The name completes "Undo ...". Without a change there is no step.
  void end(const Workspace& workspace, const std::wstring& name);

  // Of the step that undo and redo would be about; null for none, as while a step is
  // being made.
  const std::wstring* undoName() const;
  const std::wstring* redoName() const;

  struct Taken {
    // What has changed, come back or gone: containers first.
    std::vector<ObjectId> objects;
    std::vector<ContainerSlot> removed;
    // Something was left as it is, because more has come into it since.
    bool kept = false;
  };
  // An object that comes back gets its slot again unless that is taken, and lies on
  // the main panel if its container is gone.
  Taken undo(Workspace& workspace) { return take(workspace, done_, undone_); }
  Taken redo(Workspace& workspace) { return take(workspace, undone_, done_); }

  // Another number whenever a step was made, taken back or done again.
  unsigned version() const { return version_; }
  // What the last step has removed, without what lay in removed containers; nothing
  // after an undo or a redo.
  struct Removed {
    std::vector<std::wstring> names;  // of containers and shortcuts
    std::size_t containers = 0, shortcuts = 0, pictures = 0;
    std::size_t count() const { return containers + shortcuts + pictures; }
  };
  Removed removedLast() const;

 private:
  // Before or after is missing when the object is not there then.
  template <class Record, class SlotType>
  struct Change {
    SlotType slot;
    unsigned use = 0;
    std::optional<Record> before, after;
    unsigned parentBefore = 0, parentAfter = 0;  // the use of the container it lies on
  };
  struct Step {
    std::wstring name;
    std::vector<Change<clsContainer, ContainerSlot>> containers;
    std::vector<Change<clsShortcut, ShortcutSlot>> shortcuts;
    std::vector<Change<clsPicture, PictureSlot>> pictures;
    bool empty() const { return containers.empty() && shortcuts.empty() && pictures.empty(); }
  };
  static Step difference(const Workspace& before, const Workspace& after, std::wstring name);
  static void apply(Step& step, Workspace& workspace, Taken& taken);
  Taken take(Workspace& workspace, std::deque<Step>& from, std::deque<Step>& to);

  std::deque<Step> done_, undone_;  // the last one first to be taken
  std::optional<Workspace> before_;
  int depth_ = 0;
  unsigned version_ = 0;
  bool lastWasMade_ = false;
};

}  // namespace varnowick
