// The user's preferences and the main window's geometry, as one plain struct.
// Keys, order and what each affects stand in the table of settings_table.h; the
// values here are the defaults.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/units.h"

namespace varnowick {

struct Settings {
  bool hidden = false;
  int windowState = 0;  // 0 normal, 1 minimised, 2 maximised
  TwipsRect window{{0}, {0}, {4700}, {11520}};
  bool align = true;
  bool confirmDelete = true;
  bool autoExpand = true;
  int autoExpandDelay = 1;
  bool autoShrink = false;
  bool globalHotkey = true;
  std::wstring globalHotkeyChar = L"S";
  int globalHotkeyMod = 8;
  bool globalHotkeyDetached = false;
  bool floatingToolbar = true;
  bool extractURLs = true;
  bool foldOnClick = true;
  bool translucent = false;
  bool animate = true;
  bool visibleBorderCollapsed = true;
  bool undockImmediately = false;
  std::wstring buttons = L"Vista";
  int fontSize = 10;
  std::wstring fontName = L"Verdana";
  int largeIconSize = 32;
  bool locked = false;
  Colour background = rgb(34, 42, 54);
  bool gradient = true;
  Colour pictureBorder = rgb(70, 90, 110);
  Colour containerFor = rgb(45, 58, 73);
  Colour containerLabel = rgb(62, 88, 114);
  Colour dockingColor = rgb(79, 163, 224);
  Colour containerTextBack = rgb(255, 244, 200);
  Colour containerTextFor = rgb(60, 50, 20);
  Colour foreground = rgb(235, 240, 246);
  std::wstring wallpaper;
  bool stretch = false;
  bool showTime = false;
  bool checkForUpdatesOnStartup = true;
  bool dragToDetach = true;
  bool showTags = true;
  bool showTrayIcon = true;
  bool doubleClick = false;
  bool confirmStartAllShortcuts = true;
  bool rssOpenDirectlyOnSite = true;
  bool rssLoadOnStartup = false;
  bool rssHighlight = false;
  int rssChkFullValue = 0;
  int rssChkHeadlineValue = 1;
  int rssViewerOnTop = 0;
  TwipsRect rssViewer{{3000}, {1500}, {9000}, {7500}};
  std::wstring rssUseProxy = L"0";
  // Newest first, at most kMaxRecentSearches.
  std::vector<std::wstring> recentSearches;
};

inline constexpr std::size_t kMaxRecentSearches = 10;

using SettingsChange = std::function<void(Settings&)>;

}  // namespace varnowick
