// The reference workspace's settings file, byte for byte.
#include "tests/e2e/harness/golden_state.h"

namespace varnowick::e2e {
namespace {

constexpr const char* kSettings = R"(106
[Hidden]
1
[WindowState]
 0
[X]
-2960
[Y]
 1500
[W]
 3000
[H]
 9000
[Align]
0
[ConfirmDelete]
0
[AutoExpand]
0
[AutoExpandDelay]
 3
[AutoShrink]
1
[GlobalHotkey]
0
[GlobalHotkeyChar]
K
[GlobalHotkeyMod]
 6
[GlobalHotkeyDetached]
1
[FloatingToolbar]
0
[ExtractURLs]
0
[FoldOnClick]
0
[Translucent]
1
[Animate]
0
[VisibleBorderCollapsed]
0
[Undock Immediately]
1
[Taskbar]
0
[Buttons]
Nuvola
[Font Size]
 12
[Font Name]
Courier New
[Large Icon Size]
 48
[LOCKED]
1
[Background]
 12648447
[Gradient]
0
[PictureBorder]
 255
[ContainerFor]
 65280
[ContainerLabel]
 16711680
[DockingColor]
 8421504
[ContainerTextBack]
 16777215
[ContainerTextFor]
 0
[Foreground]
 1
[Wallpaper]
C:\Pictures\none there.bmp
[Stretch]
1
[ShowTime]
1
[CheckForUpdatesOnStartup]
0
[DragToDetach]
0
[ShowTags]
0
[ShowTrayIcon]
0
[Dbl-Click]
1
[ConfirmStartAllShortcuts]
0
[RSSOpenDirectlyOnSite]
0
[RSSLoadOnStartup]
0
[RSSHighlight]
1
[RSSchkFullValue]
 1
[RSSchkHeadlineValue]
 0
[RSSViewerOnTop]
 1
[RSSViewerX]
-15
[RSSViewerY]
 30
[RSSViewerW]
 6000
[RSSViewerH]
 4500
[RSSUseProxy]
proxy.example:8080
[RSS Search0]
newest search
[RSS Search1]
older search
[Picture]
[Locked]
0
[PicX]
 150
[PicY]
 6000
[PicW]
 1200.5
[PicH]
 900
[PicPath]
C:\Pictures\none.png
TEMP
TEMP
TEMP
TEMP
[Link]
[Size]
 8
[LinkX]
 225
[LinkY]
 450
[LinkLabel]
Notes & plans
[LinkType]
 2
[LinkPath]
@:\Tools\none.exe
[LinkParam]
-a "b c"
[Color]
 255
[Bold]
1
[Confirm]
1
[Command]
0
[Icon]
C:\Icons\none.ico
[GROUP]
work,home
[EXCLUSIVE]
0
[TAGSTART]
1
[Link]
[Size]
 10
[LinkX]
 1500
[LinkY]
 450
[LinkLabel]
List
[LinkType]
 3
[LinkPath]

[LinkParam]
dir c:
[Color]
-1
[Bold]
0
[Confirm]
0
[Command]
1
[Icon]

[GROUP]

[EXCLUSIVE]
0
[TAGSTART]
0
)";

}  // namespace

std::string goldenSettings() { return withCrLf(kSettings); }

}  // namespace varnowick::e2e
