#include "tests/support/golden_files.h"

#include <sstream>

namespace varnowick {
namespace {

constexpr GoldenSetting kSettings[] = {
    {"[Hidden]", "1", "1"},
    {"[WindowState]", " 0", " 0"},
    {"[X]", "-2960", "-2960"},
    {"[Y]", " 1500", " 1500"},
    {"[W]", " 3000", " 3000"},
    {"[H]", " 9000", " 9000"},
    {"[Align]", "1", "0"},
    {"[ConfirmDelete]", "1", "0"},
    {"[AutoExpand]", "0", "0"},
    {"[AutoExpandDelay]", " 1", " 3"},
    {"[AutoShrink]", "0", "1"},
    {"[GlobalHotkey]", "0", "0"},
    {"[GlobalHotkeyChar]", "S", "K"},
    {"[GlobalHotkeyMod]", " 8", " 6"},
    {"[GlobalHotkeyDetached]", "0", "1"},
    {"[FloatingToolbar]", "0", "0"},
    {"[ExtractURLs]", "1", "0"},
    {"[FoldOnClick]", "1", "0"},
    {"[Translucent]", "0", "1"},
    {"[Animate]", "0", "0"},
    {"[VisibleBorderCollapsed]", "1", "0"},
    {"[Undock Immediately]", "0", "1"},
    {"[Taskbar]", "0", "0"},
    {"[Buttons]", "Vista", "Nuvola"},
    {"[Font Size]", " 10", " 12"},
    {"[Font Name]", "Verdana", "Courier New"},
    {"[Large Icon Size]", " 32", " 48"},
    {"[LOCKED]", "0", "1"},
    {"[Background]", " 3549730", " 12648447"},
    {"[Gradient]", "1", "0"},
    {"[PictureBorder]", " 7232070", " 255"},
    {"[ContainerFor]", " 4798005", " 65280"},
    {"[ContainerLabel]", " 7493694", " 16711680"},
    {"[DockingColor]", " 14721871", " 8421504"},
    {"[ContainerTextBack]", " 13169919", " 16777215"},
    {"[ContainerTextFor]", " 1323580", " 0"},
    {"[Foreground]", " 16183531", " 1"},
    {"[Wallpaper]", "", "C:\\Pictures\\none there.bmp"},
    {"[Stretch]", "0", "1"},
    {"[ShowTime]", "0", "1"},
    {"[CheckForUpdatesOnStartup]", "0", "0"},
    {"[DragToDetach]", "1", "0"},
    {"[ShowTags]", "1", "0"},
    {"[ShowTrayIcon]", "0", "0"},
    {"[Dbl-Click]", "0", "1"},
    {"[ConfirmStartAllShortcuts]", "1", "0"},
    {"[RSSOpenDirectlyOnSite]", "1", "0"},
    {"[RSSLoadOnStartup]", "0", "1"},
    {"[RSSHighlight]", "0", "1"},
    {"[RSSchkFullValue]", " 0", " 1"},
    {"[RSSchkHeadlineValue]", " 1", " 0"},
    {"[RSSViewerOnTop]", " 0", " 1"},
    {"[RSSViewerX]", " 3000", "-15"},
    {"[RSSViewerY]", " 1500", " 30"},
    {"[RSSViewerW]", " 9000", " 6000"},
    {"[RSSViewerH]", " 7500", " 4500"},
    {"[RSSUseProxy]", "0", "proxy.example:8080"},
    {"[RSS Search0]", nullptr, "newest search"},
    {"[RSS Search1]", nullptr, "older search"},
};

constexpr const char* kPanel = R"([Picture]
[Locked]=0
[PicX]= 150
[PicY]= 6000
[PicW]= 1200.5
[PicH]= 900
[PicPath]=C:\Pictures\none.png
TEMP
TEMP
TEMP
TEMP
[Link]
[Size]= 8
[LinkX]= 225
[LinkY]= 450
[LinkLabel]=Notes & plans
[LinkType]= 2
[LinkPath]=@:\Tools\none.exe
[LinkParam]=-a "b c"
[Color]= 255
[Bold]=1
[Confirm]=1
[Command]=0
[Icon]=C:\Icons\none.ico
[GROUP]=work,home
[EXCLUSIVE]=0
[TAGSTART]=1
[Link]
[Size]= 10
[LinkX]= 1500
[LinkY]= 450
[LinkLabel]=[END Note]
[LinkType]= 3
[LinkPath]=
[LinkParam]=dir c:
[Color]=-1
[Bold]=0
[Confirm]=0
[Command]=1
[Icon]=
[GROUP]=
[EXCLUSIVE]=0
[TAGSTART]=0
)";

constexpr const char* kEverything = R"(106
[Container]
-1
[Name]=Everything
[Backcolor]= 4798005
[Forecolor]= 16777215
[Icon]=C:\Icons\none.ico
[CopyPath]=
[AutoRefresh]= 30
[NOTE ON]=1
[START Note]
first line

  third, indented
[Link]
[END Note] 
[END Note]
[Reminder]=1
[ReminderTime]=14:30
[ReminderDate]=2031-02-03
[Readable]=On the third of February
TEMP
[Folded]=0
[Flipped]=1
[Detached]=1
[DetachedTab]=0
[DetachedAutoShow]=1
[DetachedAutoHide]=0
[DetachedCollapseOnClick]=1
[DetachedFadeOut]=1
[DetachedTabX]=-15
[DetachedTabY]= 30
[DetachedTabH]= 1200
[DetachedTabW]= 450
[DetachedTabDocked]= 3
[DetachedX]= 9000
[DetachedY]= 1500
[DetachedH]= 2400
[DetachedW]= 3000
[HideToolbar]=1
[Shrink]=0
[X]= 120
[Y]= 1800
[W]= 2400.5
[H]= 1500
[ShowTag]=work
[Picture]
[Locked]=0
[PicX]= 30
[PicY]= 45
[PicW]= 600
[PicH]= 450
[PicPath]=none.gif
TEMP
[Link]
[Size]= 8.25
[LinkX]= 900
[LinkY]=-0.1
[LinkLabel]=[Link]
[LinkType]= 1
[LinkPath]=http://example.invalid/
[LinkParam]=
[Color]=-1
[Bold]=0
[Confirm]=0
[Command]=False
[Icon]=
[GROUP]=
[EXCLUSIVE]=0
[TAGSTART]=0
)";

constexpr const char* kFeed = R"(106
[RSS]
http://feeds.example.invalid/news.xml
News
-1
[Name]=News
[Backcolor]= 4798005
[Forecolor]= 16777215
[Icon]=
[CopyPath]=
[AutoRefresh]= 30
[NOTE ON]=0
[START Note]
[END Note]
[Reminder]=0
[ReminderTime]=
[ReminderDate]=
[Readable]=
TEMP
[Folded]=1
[Flipped]=0
[Shrink]=0
[X]= 120
[Y]= 5400
[W]= 2400
[H]= 1500
)";

constexpr const char* kFolder = R"(106
[Container]
-1
[Name]=Shrunk
[Backcolor]= 255
[Forecolor]= 0
[Icon]=
[CopyPath]=C:\Folder shown
[AutoRefresh]= 0
[NOTE ON]=0
[START Note]
[END Note]
[Reminder]=0
[ReminderTime]=
[ReminderDate]=
[Readable]=
TEMP
[Folded]=0
[Flipped]=0
[Shrink]=1
[X]= 120
[Y]= 4200
[W]= 2000
[H]= 1700
)";

// Above a key and its value share a line; in the files each has one of its own.
std::string fileOf(const char* text) {
  std::istringstream in(text);
  std::string file;
  for (std::string line; std::getline(in, line);) {
    if (const std::size_t at = line.find("]="); line[0] == '[' && at != std::string::npos)
      line.replace(at + 1, 1, "\r\n");
    file += line + "\r\n";
  }
  return file;
}

}  // namespace

std::span<const GoldenSetting> goldenSettings() { return kSettings; }

std::string goldenSettingsFile() {
  std::string file = "106\r\n";
  for (const GoldenSetting& row : kSettings)
    file += std::string(row.key) + "\r\n" + row.golden + "\r\n";
  return file + fileOf(kPanel);
}

std::vector<std::string> goldenContainerFiles() {
  return {fileOf(kEverything), fileOf(kFeed), fileOf(kFolder)};
}

}  // namespace varnowick
