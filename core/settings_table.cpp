#include "core/settings_table.h"

#include <array>

namespace varnowick {
namespace {

template <auto... Path>
constexpr SettingRow kept(std::string_view key, unsigned affects = kAffectsNothing) {
  return {field<Path...>(key), SetInitially::Never, affects, {}};
}
template <auto... Path>
constexpr SettingRow kept(std::string_view key, ValueKind kind) {
  return {field<Path...>(key, kind), SetInitially::Never, kAffectsNothing, {}};
}
template <auto... Path>
constexpr SettingRow builtIn(std::string_view key, unsigned affects) {
  return {field<Path...>(key), SetInitially::OnLoad, affects, {}};
}
template <auto... Path>
constexpr SettingRow reset(std::string_view key, unsigned affects = kAffectsNothing,
                           std::string_view whenBlank = {}) {
  return {field<Path...>(key), SetInitially::ByDefaults, affects, whenBlank};
}
constexpr SettingRow writeOnly(std::string_view key, std::string_view value) {
  return {constantField<Settings>(key, value), SetInitially::Never, kAffectsNothing, {}};
}

using S = Settings;

constexpr std::array kSettings{
    kept<&S::hidden>("[Hidden]"),
    kept<&S::windowState>("[WindowState]"),
    kept<&S::window, &TwipsRect::left>("[X]", ValueKind::WholePosition),
    kept<&S::window, &TwipsRect::top>("[Y]", ValueKind::WholePosition),
    kept<&S::window, &TwipsRect::width>("[W]", ValueKind::WholeExtent),
    kept<&S::window, &TwipsRect::height>("[H]", ValueKind::WholeExtent),
    kept<&S::align>("[Align]"),
    reset<&S::confirmDelete>("[ConfirmDelete]"),
    reset<&S::autoExpand>("[AutoExpand]"),
    reset<&S::autoExpandDelay>("[AutoExpandDelay]"),
    reset<&S::autoShrink>("[AutoShrink]"),
    reset<&S::globalHotkey>("[GlobalHotkey]", kAffectsHotkey),
    reset<&S::globalHotkeyChar>("[GlobalHotkeyChar]", kAffectsHotkey, "S"),
    reset<&S::globalHotkeyMod>("[GlobalHotkeyMod]", kAffectsHotkey),
    reset<&S::globalHotkeyDetached>("[GlobalHotkeyDetached]"),
    reset<&S::floatingToolbar>("[FloatingToolbar]", kAffectsToolbar),
    reset<&S::extractURLs>("[ExtractURLs]"),
    reset<&S::foldOnClick>("[FoldOnClick]"),
    reset<&S::translucent>("[Translucent]", kAffectsOpacity),
    reset<&S::animate>("[Animate]"),
    reset<&S::visibleBorderCollapsed>("[VisibleBorderCollapsed]", kAffectsPalette),
    kept<&S::undockImmediately>("[Undock Immediately]"),
    writeOnly("[Taskbar]", "0"),
    builtIn<&S::buttons>("[Buttons]", kAffectsLayout),
    builtIn<&S::fontSize>("[Font Size]", kAffectsLayout),
    builtIn<&S::fontName>("[Font Name]", kAffectsPalette | kAffectsLayout),
    builtIn<&S::largeIconSize>("[Large Icon Size]", kAffectsLayout),
    kept<&S::locked>("[LOCKED]", kAffectsFrame),
    kept<&S::background>("[Background]", kAffectsPalette),
    reset<&S::gradient>("[Gradient]", kAffectsPalette),
    kept<&S::pictureBorder>("[PictureBorder]", kAffectsPalette),
    kept<&S::containerFor>("[ContainerFor]", kAffectsPalette),
    kept<&S::containerLabel>("[ContainerLabel]", kAffectsPalette),
    kept<&S::dockingColor>("[DockingColor]", kAffectsPalette),
    kept<&S::containerTextBack>("[ContainerTextBack]", kAffectsPalette),
    kept<&S::containerTextFor>("[ContainerTextFor]", kAffectsPalette),
    kept<&S::foreground>("[Foreground]", kAffectsPalette),
    kept<&S::wallpaper>("[Wallpaper]"),
    kept<&S::stretch>("[Stretch]"),
    reset<&S::showTime>("[ShowTime]"),
    reset<&S::checkForUpdatesOnStartup>("[CheckForUpdatesOnStartup]"),
    reset<&S::dragToDetach>("[DragToDetach]"),
    reset<&S::showTags>("[ShowTags]"),
    reset<&S::showTrayIcon>("[ShowTrayIcon]", kAffectsTray),
    reset<&S::doubleClick>("[Dbl-Click]"),
    reset<&S::confirmStartAllShortcuts>("[ConfirmStartAllShortcuts]"),
    reset<&S::rssOpenDirectlyOnSite>("[RSSOpenDirectlyOnSite]"),
    reset<&S::rssLoadOnStartup>("[RSSLoadOnStartup]"),
    kept<&S::rssHighlight>("[RSSHighlight]"),
    kept<&S::rssChkFullValue>("[RSSchkFullValue]"),
    kept<&S::rssChkHeadlineValue>("[RSSchkHeadlineValue]"),
    kept<&S::rssViewerOnTop>("[RSSViewerOnTop]"),
    kept<&S::rssViewer, &TwipsRect::left>("[RSSViewerX]", ValueKind::WholePosition),
    kept<&S::rssViewer, &TwipsRect::top>("[RSSViewerY]", ValueKind::WholePosition),
    kept<&S::rssViewer, &TwipsRect::width>("[RSSViewerW]", ValueKind::WholeExtent),
    kept<&S::rssViewer, &TwipsRect::height>("[RSSViewerH]", ValueKind::WholeExtent),
    reset<&S::rssUseProxy>("[RSSUseProxy]", kAffectsWeb),
};

void setAll(Settings& settings, SetInitially when) {
  const Settings defaults;
  for (const SettingRow& row : kSettings)
    if (row.when == when) row.field.copy(settings, defaults);
}

}  // namespace

std::span<const SettingRow> settingsTable() { return kSettings; }

void setBuiltInSettings(Settings& settings) { setAll(settings, SetInitially::OnLoad); }
void InitDefaultSettings(Settings& settings) { setAll(settings, SetInitially::ByDefaults); }

unsigned affected(const Settings& before, const Settings& after) {
  unsigned all = kAffectsNothing;
  for (const SettingRow& row : kSettings)
    if (!row.writeOnly() && !row.field.same(before, after)) all |= row.affects;
  return all;
}

std::string_view recentSearchKey(std::size_t position) {
  static constexpr std::array<std::string_view, kMaxRecentSearches> kKeys{
      "[RSS Search0]", "[RSS Search1]", "[RSS Search2]", "[RSS Search3]", "[RSS Search4]",
      "[RSS Search5]", "[RSS Search6]", "[RSS Search7]", "[RSS Search8]", "[RSS Search9]"};
  return kKeys[position];
}

}  // namespace varnowick
