#include "core/settings_table.h"

#include <array>

namespace varnowick {
namespace {

template <auto... Path>
constexpr SettingRow kept(std::string_view key) {
  return {field<Path...>(key), SetInitially::Never, {}, {}};
}
template <auto... Path>
constexpr SettingRow kept(std::string_view key, ValueKind kind) {
  return {field<Path...>(key, kind), SetInitially::Never, {}, {}};
}
template <auto... Path>
constexpr SettingRow builtIn(std::string_view key, std::string_view initial) {
  return {field<Path...>(key), SetInitially::OnLoad, initial, {}};
}
template <auto... Path>
constexpr SettingRow reset(std::string_view key, std::string_view initial,
                           std::string_view whenBlank = {}) {
  return {field<Path...>(key), SetInitially::ByDefaults, initial, whenBlank};
}
constexpr SettingRow writeOnly(std::string_view key, std::string_view value) {
  return {constantField<Settings>(key, value), SetInitially::Never, {}, {}};
}

using S = Settings;
constexpr ValueKind kPosition = ValueKind::WholePosition;
constexpr ValueKind kExtent = ValueKind::WholeExtent;

constexpr std::array kSettings{
    kept<&S::hidden>("[Hidden]"),
    kept<&S::windowState>("[WindowState]"),
    kept<&S::window, &TwipsRect::left>("[X]", kPosition),
    kept<&S::window, &TwipsRect::top>("[Y]", kPosition),
    kept<&S::window, &TwipsRect::width>("[W]", kExtent),
    kept<&S::window, &TwipsRect::height>("[H]", kExtent),
    kept<&S::align>("[Align]"),
    reset<&S::confirmDelete>("[ConfirmDelete]", "1"),
    reset<&S::autoExpand>("[AutoExpand]", "1"),
    reset<&S::autoExpandDelay>("[AutoExpandDelay]", "1"),
    reset<&S::autoShrink>("[AutoShrink]", "0"),
    reset<&S::globalHotkey>("[GlobalHotkey]", "1"),
    reset<&S::globalHotkeyChar>("[GlobalHotkeyChar]", "S", "S"),
    reset<&S::globalHotkeyMod>("[GlobalHotkeyMod]", "8"),
    reset<&S::globalHotkeyDetached>("[GlobalHotkeyDetached]", "0"),
    reset<&S::floatingToolbar>("[FloatingToolbar]", "1"),
    reset<&S::extractURLs>("[ExtractURLs]", "1"),
    reset<&S::foldOnClick>("[FoldOnClick]", "1"),
    reset<&S::translucent>("[Translucent]", "0"),
    reset<&S::animate>("[Animate]", "1"),
    reset<&S::visibleBorderCollapsed>("[VisibleBorderCollapsed]", "1"),
    kept<&S::undockImmediately>("[Undock Immediately]"),
    writeOnly("[Taskbar]", "0"),
    builtIn<&S::buttons>("[Buttons]", "Vista"),
    builtIn<&S::fontSize>("[Font Size]", "10"),
    builtIn<&S::fontName>("[Font Name]", "Verdana"),
    builtIn<&S::largeIconSize>("[Large Icon Size]", "32"),
    kept<&S::locked>("[LOCKED]"),
    kept<&S::background>("[Background]"),
    reset<&S::gradient>("[Gradient]", "1"),
    kept<&S::pictureBorder>("[PictureBorder]"),
    kept<&S::containerFor>("[ContainerFor]"),
    kept<&S::containerLabel>("[ContainerLabel]"),
    kept<&S::dockingColor>("[DockingColor]"),
    kept<&S::containerTextBack>("[ContainerTextBack]"),
    kept<&S::containerTextFor>("[ContainerTextFor]"),
    kept<&S::foreground>("[Foreground]"),
    kept<&S::wallpaper>("[Wallpaper]"),
    kept<&S::stretch>("[Stretch]"),
    reset<&S::showTime>("[ShowTime]", "0"),
    reset<&S::checkForUpdatesOnStartup>("[CheckForUpdatesOnStartup]", "1"),
    reset<&S::dragToDetach>("[DragToDetach]", "1"),
    reset<&S::showTags>("[ShowTags]", "1"),
    reset<&S::showTrayIcon>("[ShowTrayIcon]", "1"),
    reset<&S::doubleClick>("[Dbl-Click]", "0"),
    reset<&S::confirmStartAllShortcuts>("[ConfirmStartAllShortcuts]", "1"),
    reset<&S::rssOpenDirectlyOnSite>("[RSSOpenDirectlyOnSite]", "1"),
    reset<&S::rssLoadOnStartup>("[RSSLoadOnStartup]", "0"),
    kept<&S::rssHighlight>("[RSSHighlight]"),
    kept<&S::rssChkFullValue>("[RSSchkFullValue]"),
    kept<&S::rssChkHeadlineValue>("[RSSchkHeadlineValue]"),
    kept<&S::rssViewerOnTop>("[RSSViewerOnTop]"),
    kept<&S::rssViewer, &TwipsRect::left>("[RSSViewerX]", kPosition),
    kept<&S::rssViewer, &TwipsRect::top>("[RSSViewerY]", kPosition),
    kept<&S::rssViewer, &TwipsRect::width>("[RSSViewerW]", kExtent),
    kept<&S::rssViewer, &TwipsRect::height>("[RSSViewerH]", kExtent),
    reset<&S::rssUseProxy>("[RSSUseProxy]", "0"),
};

void setAll(Settings& settings, SetInitially when) {
  for (const SettingRow& row : kSettings) {
    if (row.when != when) continue;
    void* const member = row.field.member(settings);
    // Text initials are ASCII, so that no codec is needed.
    if (row.field.kind == ValueKind::Text)
      *static_cast<std::wstring*>(member) = widen(row.initial);
    else if (row.field.kind == ValueKind::Flag)
      *static_cast<bool*>(member) = row.initial == "1";
    else
      *static_cast<int*>(member) = parseInteger(row.initial).value_or(0);
  }
}

}  // namespace

std::span<const SettingRow> settingsTable() { return kSettings; }

void setBuiltInSettings(Settings& settings) { setAll(settings, SetInitially::OnLoad); }
void InitDefaultSettings(Settings& settings) { setAll(settings, SetInitially::ByDefaults); }

std::string_view recentSearchKey(std::size_t position) {
  static constexpr std::array<std::string_view, kMaxRecentSearches> kKeys{
      "[RSS Search0]", "[RSS Search1]", "[RSS Search2]", "[RSS Search3]", "[RSS Search4]",
      "[RSS Search5]", "[RSS Search6]", "[RSS Search7]", "[RSS Search8]", "[RSS Search9]"};
  return kKeys[position];
}

}  // namespace varnowick
