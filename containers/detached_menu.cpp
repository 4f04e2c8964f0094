#include "containers/detached_menu.h"

#include <array>
#include <string_view>

namespace varnowick {
namespace {

#define VARNOWICK_ITEM(id) DetachedItem::id, L## #id

using C = clsContainer;
constexpr bool kNotBuilt = false;

constexpr std::array kRows{
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuStartSelected), L"Sta&rt selected"},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuStartAllWTag), L"&Tag start"},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuShowAndHide), L"Show and Hide"},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuTab), L"Use &Tab", &C::DetachedUseTab},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuToggleAutoShowHide), L"&Toggle both"},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuAutoShow), L"Auto &show", &C::DetachedAutoShow},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuAutoHide), L"Auto &hide", &C::DetachedAutoHide},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuEnableFadeOut), L"Enable &fade-out", &C::DetachedFadeOut},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuCollapseOnClick), L"&Hide on click",
                    &C::DetachedCollapseOnClick},
    DetachedMenuRow{},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuRefreshNewsFeed), L"&Refresh News Feed", nullptr,
                    kNotBuilt},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnu30), L"&30 Minutes", nullptr, kNotBuilt},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnu10), L"&10 Minutes", nullptr, kNotBuilt},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnu5), L"&5 Minutes", nullptr, kNotBuilt},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuCancel), L"&Cancel Auto-Refresh", nullptr, kNotBuilt},
    DetachedMenuRow{},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuDockMe), L"Hide no&w"},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuTabEdge), L"Tab ed&ge"},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuTabLeft), L"&Left"},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuTabRight), L"&Right"},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuTabTop), L"&Top"},
    DetachedMenuRow{1, VARNOWICK_ITEM(mnuTabBottom), L"&Bottom"},
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuAttach), L"&Attach to Workspace"},
    DetachedMenuRow{},
    // Last, and apart: what it does cannot be taken for anything else.
    DetachedMenuRow{0, VARNOWICK_ITEM(mnuCloseAndDelete), L"Close && &Delete"},
};
#undef VARNOWICK_ITEM

// Every item has one row; no two of one menu have the same caption.
consteval bool rowsAreUnique() {
  std::size_t items = 0;
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    if (kRows[i].item == DetachedItem::None) continue;
    ++items;
    for (std::size_t k = 0; k < i; ++k) {
      if (kRows[i].item == kRows[k].item) return false;
      if (kRows[k].caption != nullptr && kRows[i].depth == kRows[k].depth &&
          std::wstring_view(kRows[i].caption) == kRows[k].caption)
        return false;
    }
  }
  return items + 1 == static_cast<std::size_t>(DetachedItem::Count);
}
static_assert(rowsAreUnique());

constexpr int edgeOf(DetachedItem item) {
  return item >= DetachedItem::mnuTabLeft && item <= DetachedItem::mnuTabBottom
             ? 1 + static_cast<int>(item) - static_cast<int>(DetachedItem::mnuTabLeft)
             : 0;
}
static_assert(edgeOf(DetachedItem::mnuTabBottom) == static_cast<int>(ScreenEdge::Bottom));

bool isShown(const DetachedMenuRow& row, const clsContainer& container,
             const DetachedMenuState& state) {
  if (!row.built) return false;
  switch (row.item) {
    case DetachedItem::mnuDockMe:
      return state.shown;
    case DetachedItem::mnuTabEdge:
    case DetachedItem::mnuTabLeft:
    case DetachedItem::mnuTabRight:
    case DetachedItem::mnuTabTop:
    case DetachedItem::mnuTabBottom:
      return container.DetachedUseTab;
    default:
      return true;
  }
}

DetachedChange toggleFadeOut(clsContainer& container, const Settings& settings, MsgBox& msgBox) {
  DetachedChange change = DetachedChange::Record;
  if (!container.DetachedFadeOut && !settings.animate) {
    if (msgBox.show(L"Do you want to enable special effects?", kMsgYesNo | kMsgQuestion,
                    kProgramTitle) != kMsgAnswerYes)
      return DetachedChange::None;
    change = DetachedChange::Settings;
  }
  container.DetachedFadeOut = !container.DetachedFadeOut;
  return change;
}

}  // namespace

std::span<const DetachedMenuRow> detachedMenuRows() { return kRows; }

std::vector<ShownDetachedRow> shownDetachedMenu(const clsContainer& container,
                                                const DetachedMenuState& state) {
  std::vector<ShownDetachedRow> shown;
  // A separator waits until something follows it.
  bool separatorWaits = false;
  for (const DetachedMenuRow& row : kRows) {
    if (row.item == DetachedItem::None) {
      separatorWaits = !shown.empty();
      continue;
    }
    if (!isShown(row, container, state)) continue;
    if (separatorWaits) shown.push_back({});
    separatorWaits = false;
    const int edge = edgeOf(row.item);
    shown.push_back(
        {.depth = row.depth,
         .item = row.item,
         .caption = row.caption,
         .checked = row.checked != nullptr ? container.*row.checked
                                           : edge != 0 && edge == container.DetachedTabDockedWhere,
         .enabled = (row.item != DetachedItem::mnuStartSelected || state.shortcutSelected) &&
                    (row.item != DetachedItem::mnuCloseAndDelete || !state.locked)});
  }
  return shown;
}

DetachedChange changeDetached(DetachedItem item, clsContainer& container, const Settings& settings,
                              MsgBox& msgBox) {
  if (item == DetachedItem::mnuEnableFadeOut) return toggleFadeOut(container, settings, msgBox);
  if (item == DetachedItem::mnuToggleAutoShowHide) {
    container.DetachedAutoHide = !container.DetachedAutoHide;
    container.DetachedAutoShow = container.DetachedAutoHide;
    return DetachedChange::Record;
  }
  if (const int edge = edgeOf(item); edge != 0) {
    container.DetachedTabDockedWhere = edge;
    // A place along another edge says nothing about this one.
    container.detachedLabelRect = {};
    return DetachedChange::Record;
  }
  for (const DetachedMenuRow& row : kRows)
    if (row.item == item && row.checked != nullptr) {
      container.*row.checked = !(container.*row.checked);
      return DetachedChange::Record;
    }
  return DetachedChange::None;
}

bool confirmCloseAndDelete(const Settings& settings, MsgBox& msgBox) {
  return settings.confirmDelete &&
         msgBox.show(L"Close detached container and delete it from the workspace?",
                     kMsgYesNo | kMsgExclamation | kMsgSystemModal,
                     L"Close & Delete") == kMsgAnswerYes;
}

Detachable detachable(const Workspace& workspace, const Selection& selection) {
  Detachable result;
  for (const ObjectId& id : selection.objects()) {
    if (const auto* picture = std::get_if<PictureSlot>(&id);
        picture != nullptr && workspace.pictures.contains(*picture))
      result.refusal = kPictureStays;
    if (const auto* slot = std::get_if<ContainerSlot>(&id)) {
      const clsContainer* container = workspace.containers.find(*slot);
      if (container != nullptr && container->visible && !container->Detached)
        result.containers.push_back(*slot);
    }
  }
  return result;
}

void markDetached(clsContainer& container) {
  container.Detached = true;
  container.Detached_Note_Visible = container.Detached_Note_Visible || container.noteVisible;
  // The files have one flag for both places: the other one must not bring it back.
  container.noteVisible = false;
}

void markAttached(clsContainer& container) {
  container.Detached = false;
  container.noteVisible = container.Detached_Note_Visible;
  container.Detached_Note_Visible = false;
}

}  // namespace varnowick
