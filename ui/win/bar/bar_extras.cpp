#include "ui/win/bar/bar_extras.h"

#include <utility>

#include "containers/folder_path.h"
#include "platform/msg_box.h"
#include "platform/screen.h"
#include "ui/scene/icon_ref.h"
#include "ui/scene/tooltip_text.h"

namespace varnowick {
namespace {

constexpr std::size_t kMostJumpEntries = 50'000;

}  // namespace

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
      jump_(bar.images, bar.fonts,
            {.entries = [this] { return jumpEntries(); },
             .icon = [this](const JumpTarget& target) { return jumpIcon(target); },
             .place = [this](const JumpTarget& target) { return jumpPlace(target); },
             .start = [this](const JumpTarget& target) { hooks_.start(target); },
             .showMatch = [this](const JumpTarget& target) { hooks_.show(target); },
             .properties = [this](ShortcutSlot slot) { hooks_.properties(slot); },
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
  const std::wstring key = hotkeyName();
  tray_.setTooltip(key.empty() ? kProgramTitle : std::wstring(kProgramTitle) + L" (" + key + L")");
  arrange();
}

std::wstring BarExtras::hotkeyName() const {
  const auto hotkey = hotkey_.registered();
  return hotkey ? hotkeyText(*hotkey) : std::wstring();
}

void BarExtras::setPalette(const Palette& palette) {
  jump_.setPalette(palette);
  toolbar_.setPalette(palette);
}

void BarExtras::arrange() {
  jump_.place(bar_.view.toClient({ControlKind::picBack, 0}));
  if (IsWindowVisible(window_) && barIsOut())
    toolbar_.update(toolbarState());
  else
    toolbar_.hide();
}

bool BarExtras::barIsOut() const { return bar_.docking.rules().collapseSide() == ScreenEdge::None; }

bool BarExtras::toolbarFloats() {
  // The title looks the same on the way to the edge as before.
  if (barIsOut()) toolbarFloats_ = frmToolbar::placeOf(toolbarState()).has_value();
  return toolbarFloats_;
}

frmToolbar::State BarExtras::toolbarState() const {
  frmToolbar::State state;
  state.density = bar_.platform.monitors.density();
  state.on = bar_.document.settings.floatingToolbar && !IsIconic(window_) && !IsZoomed(window_);
  state.bar = toPixels(bar_.docking.rect(), state.density);
  state.edge = bar_.docking.rules().expandedEdge();
  if (!state.on) return state;
  const DockInputs in = bar_.docking.surroundings();
  const TwipsRect own = bar_.docking.rules().monitor(in).bounds;
  for (const Monitor& monitor : bar_.platform.monitors.all())
    if (monitor.bounds == toPixels(own, state.density) || state.work.empty())
      state.work = monitor.work;
  state.look = {.locked = bar_.document.settings.locked,
                .buttonImages = bar_.scene.layout().buttonImages,
                .edge = bar_.docking.rules().edgeToCollapseTo(in)};
  return state;
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
    entries.push_back(
        {{.shortcut = slot}, s.FullCaption, starts == starts_.end() ? 0 : starts->second});
  });
  bar_.document.workspace.containers.forEach([&](ContainerSlot slot, const clsContainer& c) {
    if (c.visible || c.Detached) entries.push_back({{.container = slot}, c.name});
  });
  bar_.folders.forEachListed([&](ContainerSlot slot, const std::wstring& name) {
    if (entries.size() < kMostJumpEntries)
      entries.push_back({{.container = slot, .file = name}, shownName(name)});
  });
  return entries;
}

ImageRef BarExtras::jumpIcon(const JumpTarget& target) const {
  const Workspace& workspace = bar_.document.workspace;
  if (target.kind() == JumpKind::File) return bar_.folders.iconOf(target.container, target.file);
  if (const clsShortcut* s = workspace.shortcuts.find(target.shortcut))
    return iconRefFor(*s, bar_.platform.system);
  const clsContainer* c = workspace.containers.find(target.container);
  return c == nullptr ? ImageRef{} : tileImage(*c);
}

std::wstring BarExtras::jumpPlace(const JumpTarget& target) const {
  if (target.kind() == JumpKind::Container) return L"Container";
  const Workspace& workspace = bar_.document.workspace;
  const clsShortcut* s = workspace.shortcuts.find(target.shortcut);
  const clsContainer* c =
      workspace.containers.find(s == nullptr ? target.container : s->parent.container);
  return c == nullptr ? std::wstring() : c->name;
}

BalloonTooltip::Content BarExtras::tooltipOf(NodeId node) const {
  POINT origin{};
  ClientToScreen(window_, &origin);
  return {tooltipText(node, bar_.scene.scene(), bar_.document.settings, bar_.document.workspace,
                      &bar_.measure, bar_.view.density()),
          bar_.view.toClient(node).translated(Pixels{origin.x}, Pixels{origin.y})};
}

}  // namespace varnowick
