// The menu of a detached container's window as one table: identifier, caption, and
// the flag of the record that a check mark shows; and what its items change. Starting,
// colours and names are left to the window.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "core/settings.h"
#include "core/workspace.h"
#include "platform/msg_box.h"
#include "shortcuts/selection.h"

namespace varnowick {

enum class DetachedItem : int {
  None,
  mnuStartSelected,
  mnuStartAllWTag,
  mnuShowAndHide,
  mnuTab,
  mnuToggleAutoShowHide,
  mnuAutoShow,
  mnuAutoHide,
  mnuEnableFadeOut,
  mnuCollapseOnClick,
  mnuRefreshNewsFeed,
  mnu30,
  mnu10,
  mnu5,
  mnuCancel,
  mnuAttach,
  mnuCloseAndDelete,
  // Beyond the above: hiding, and the tab's edge.
  mnuDockMe,
  mnuTabEdge,
  mnuTabLeft,
  mnuTabRight,
  mnuTabTop,
  mnuTabBottom,
  Count
};

struct DetachedMenuRow {
  int depth = 0;  // a deeper row belongs to the nearest shallower one above it
  DetachedItem item = DetachedItem::None;  // None: a separator
  const wchar_t* name = nullptr;           // the identifier as text
  const wchar_t* caption = nullptr;
  bool clsContainer::*checked = nullptr;
  bool built = true;  // false: not shown
};
// In the order of the menu, whether built or not.
std::span<const DetachedMenuRow> detachedMenuRows();

struct DetachedMenuState {
  bool shortcutSelected = false;
  bool locked = false;
  bool shown = true;  // the window itself; false: the menu is its tab's
};
struct ShownDetachedRow {
  int depth = 0;
  DetachedItem item = DetachedItem::None;
  std::wstring caption{};  // empty: a separator
  bool checked = false;
  bool enabled = true;
};
// What the menu shows now. The head mnuStartAllWTag comes without its tags.
std::vector<ShownDetachedRow> shownDetachedMenu(const clsContainer& container,
                                                const DetachedMenuState& state);

// What an item asks for beyond changing the record.
enum class DetachedChange { None, Record, Settings };
// Carries out an item that only changes the record: the toggles and the tab's edge.
// Settings: [Animate] is to be turned on as well.
DetachedChange changeDetached(DetachedItem item, clsContainer& container, const Settings& settings,
                              MsgBox& msgBox);

// "Close && Delete". True when the container is to be deleted: only after a Yes. With
// [ConfirmDelete] off nothing is asked and nothing deleted, unlike on the workspace;
// deliberate. The workspace is saved in every case.
bool confirmCloseAndDelete(const Settings& settings, MsgBox& msgBox);

// "&Detach" for what is selected: its containers, and what is to be said about the
// rest; null for nothing.
struct Detachable {
  std::vector<ContainerSlot> containers;
  const wchar_t* refusal = nullptr;
};
inline constexpr const wchar_t* kPictureStays =
    L"The option to detach picture containers is currently not available";
Detachable detachable(const Workspace& workspace, const Selection& selection);

inline constexpr const wchar_t* kNoDetachedContainers = L"[No Detached Containers]";

// The record as it becomes when its container leaves the bar, also after loading, and
// when it comes back. The note stays in sight where it was.
void markDetached(clsContainer& container);
void markAttached(clsContainer& container);

}  // namespace varnowick
