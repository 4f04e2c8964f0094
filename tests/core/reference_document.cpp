#include "tests/core/reference_document.h"

namespace varnowick {
namespace {

Settings referenceSettings() {
  Settings s;
  s.hidden = true;
  s.windowState = 2;
  s.window = {{-60}, {75}, {5130}, {10005}};
  s.align = s.confirmDelete = s.autoExpand = s.globalHotkey = s.floatingToolbar = false;
  s.autoExpandDelay = 3;
  s.autoShrink = s.globalHotkeyDetached = s.translucent = s.undockImmediately = true;
  s.globalHotkeyChar = L"Q";
  s.globalHotkeyMod = 6;
  s.extractURLs = s.foldOnClick = s.animate = s.visibleBorderCollapsed = false;
  s.buttons = L"Glass";
  s.fontSize = 12;
  s.fontName = L"Tahoma";
  s.largeIconSize = 48;
  s.locked = s.stretch = s.showTime = s.doubleClick = true;
  s.background = {1};
  s.gradient = false;
  s.pictureBorder = {2};
  s.containerFor = {3};
  s.containerLabel = {4};
  s.dockingColor = {5};
  s.containerTextBack = {12648447};
  s.containerTextFor = {-2147483640};
  s.foreground = {8};
  s.wallpaper = L"C:\\Pictures\\sea.jpg";
  s.checkForUpdatesOnStartup = s.dragToDetach = s.showTags = s.showTrayIcon = false;
  s.confirmStartAllShortcuts = s.rssOpenDirectlyOnSite = false;
  s.rssLoadOnStartup = s.rssHighlight = true;
  s.rssChkFullValue = 1;
  s.rssChkHeadlineValue = 0;
  s.rssViewerOnTop = 1;
  s.rssViewer = {{10}, {-20}, {30}, {40}};
  s.rssUseProxy = L"proxy:8080";
  s.recentSearches = {L"newest", L"", L"oldest"};
  return s;
}

clsShortcut shortcut(Panel parent, const wchar_t* caption, Twips x) {
  clsShortcut s;
  s.Path = std::wstring(L"C:\\Programs\\") + caption + L".exe";
  s.FullCaption = caption;
  s.ShortcutType = -7;
  s.Parameters = L"/a \"b c\"";
  s.FontBold = s.Confirm = s.Command = s.TagStart = true;
  s.Color = 255;
  s.FontSize = 8.25F;
  s.Icon = L"@:\\icons\\x.ico";
  s.Tags = L"work,home";
  s.parent = parent;
  s.position = {x, {-0.1F}};
  return s;
}

clsContainer detachedContainer() {
  clsContainer c;
  c.name = L"Everything";
  c.ShrinkPath = L"C:\\tile.ico";
  c.CloseToEdgeY = c.Detached = c.Detached_Note_Visible = c.HideToolbar = c.noteVisible = true;
  c.DetachedUseTab = c.DetachedAutoShow = c.DetachedAutoHide = true;
  c.DetachedCollapseOnClick = c.DetachedFadeOut = true;
  c.detachedLabelRect = {{-15}, {30}, {450}, {1200}};
  c.detachedRect = {{100}, {-200}, {3000}, {4000}};
  c.DetachedTabDockedWhere = 3;
  c.AutoRefresh = 30;
  c.ShowingTag = L"work";
  c.reminder = {true, L"10:15:00", L"2/3/2008", L"Sunday, 3 February"};
  c.backColor = {111};
  c.foreColor = {222};
  c.note = L"first\r\n\r\n[Link]\r\n  kept as it stands \r\n[END Note]\r\n";
  c.savedRect = c.rect = {{1.5F}, {2.25F}, {3000.5F}, {2000.75F}};
  return c;
}

}  // namespace

Document referenceDocument() {
  Document d{referenceSettings(), {}};
  Workspace& w = d.workspace;
  const ContainerSlot everything = w.containers.add(detachedContainer());

  clsContainer feed;
  feed.name = L"News";
  feed.RSS = true;
  feed.CopyPath = L"http://example.org/feed";
  feed.folded = true;
  feed.savedRect = {{10}, {20}, {4000}, {3000}};
  feed.rect = {{10}, {20}, {4000}, kTitleStripHeight};
  const ContainerSlot news = w.containers.add(feed);

  clsContainer folder;
  folder.name = L"Papers";
  folder.CopyPath = L"C:\\Papers";
  folder.shrunk = true;
  folder.savedRect = {{50}, {60}, {2500}, {1500}};
  folder.rect = {{50}, {60}, kShrunkSize.width, kShrunkSize.height};
  w.containers.add(folder);

  w.pictures.add({L"C:\\main.bmp", picBack, {{1}, {2}, {3}, {4.5F}}});
  w.pictures.add({L"C:\\inside.bmp", Panel{everything}, {{5}, {6}, {7}, {8}}});
  w.shortcuts.add(shortcut(picBack, L"Editor", {120}));
  w.shortcuts.add(shortcut(Panel{everything}, L"[Link]", {240}));
  w.shortcuts.add(shortcut(Panel{news}, L"[END Note]", {360}));
  clsShortcut plain;
  plain.parent = picBack;
  w.shortcuts.add(plain);
  return d;
}

}  // namespace varnowick
