#include "ui/win/bar_extras.h"

#include <utility>

#include "platform/msg_box.h"
#include "platform/screen.h"
#include "ui/scene/tooltip_text.h"

namespace varnowick {

BarExtras::BarExtras(const Bar& bar, Hooks hooks)
    : bar_(bar),
      hooks_(std::move(hooks)),
      tray_({.clicked = [this] { hooks_.open(); },
             .menu = [this](POINT at) { hooks_.menu(MenuId::Main, at); },
             .balloonClicked = {}}),
      hotkey_({.pressed = [this] { hooks_.toggle(); },
               .taken =
                   [this](const std::wstring& text) { tray_.balloon(kProgramTitle, text, true); }}),
      tooltip_([this](NodeId node) { return tooltipOf(node); }),
      jump_(
          bar.images, bar.fonts,
          {.entries = [this] { return jumpEntries(); },
           .icon =
               [this](ShortcutSlot slot) {
                 const Node* node = bar_.scene.scene().find({ControlKind::picShortcut, slot.index});
                 return node == nullptr ? ImageRef{} : node->image;
               },
           .place =
               [this](ShortcutSlot slot) {
                 const clsShortcut* s = bar_.document.workspace.shortcuts.find(slot);
                 const clsContainer* c =
                     s == nullptr ? nullptr
                                  : bar_.document.workspace.containers.find(s->parent.container);
                 return c == nullptr ? std::wstring() : c->name;
               },
           .start = [this](ShortcutSlot slot) { hooks_.start(slot); },
           .showMatch = [this](ShortcutSlot slot) { hooks_.showShortcut(slot); },
           .closed = [this] { SetFocus(window_); },
           .key = [this](const KeyDecision& decision) { hooks_.key(decision); }}),
      toolbar_(bar.images, bar.fonts,
               {.clicked = [this](Command command) { hooks_.run(command); },
                .menu = [this](POINT at) { hooks_.menu(MenuId::Main, at); }}) {}

void BarExtras::attach(HWND window) {
  window_ = window;
  tooltip_.attach(window);
  jump_.attach(window, bar_.platform.monitors.density());
  toolbar_.attach(window);
}

void BarExtras::applySettings() {
  tray_.show(bar_.document.settings.showTrayIcon);
  hotkey_.apply(bar_.document.settings);
  arrange();
}

void BarExtras::setPalette(const Palette& palette) {
  jump_.setPalette(palette);
  toolbar_.setPalette(palette);
}

void BarExtras::arrange() {
  jump_.place(bar_.view.toClient({ControlKind::picBack, 0}));
  const Docking& docking = bar_.docking.rules();
  frmToolbar::State state;
  state.density = bar_.platform.monitors.density();
  state.on = bar_.document.settings.floatingToolbar && IsWindowVisible(window_) &&
             docking.collapseSide() == ScreenEdge::None && !IsIconic(window_) && !IsZoomed(window_);
  state.bar = toPixels(bar_.docking.rect(), state.density);
  state.edge = docking.expandedEdge();
  const DockInputs in = bar_.docking.inputs();
  for (const Monitor& monitor : bar_.platform.monitors.all())
    if (toTwips(monitor.bounds, state.density) == in.screen.monitor || state.work.empty())
      state.work = monitor.work;
  state.locked = bar_.document.settings.locked;
  toolbar_.update(state);
}

void BarExtras::imagesDelivered() {
  jump_.invalidate();
  toolbar_.invalidate();
}

void BarExtras::hidePopups() {
  tooltip_.hide();
  jump_.close();
  toolbar_.hide();
}

std::vector<JumpEntry> BarExtras::jumpEntries() const {
  std::vector<JumpEntry> entries;
  entries.reserve(bar_.document.workspace.shortcuts.count());
  bar_.document.workspace.shortcuts.forEach([&](ShortcutSlot slot, const clsShortcut& s) {
    const auto starts = starts_.find(slot);
    entries.push_back({slot, s.FullCaption, starts == starts_.end() ? 0 : starts->second});
  });
  return entries;
}

BalloonTooltip::Content BarExtras::tooltipOf(NodeId node) const {
  POINT origin{};
  ClientToScreen(window_, &origin);
  return {tooltipText(node, bar_.scene.scene(), bar_.document.settings, bar_.document.workspace,
                      &bar_.measure, bar_.view.density()),
          bar_.view.toClient(node).translated(Pixels{origin.x}, Pixels{origin.y})};
}

}  // namespace varnowick
