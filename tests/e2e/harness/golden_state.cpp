// The reference workspace's container files, byte for byte.
#include "tests/e2e/harness/golden_state.h"

namespace varnowick::e2e {
namespace {

constexpr const char* kOpenContainer = R"(106
[Container]
-1
[Name]
Tools
[Backcolor]
 4798005
[Forecolor]
 16777215
[Icon]

[CopyPath]

[AutoRefresh]
 0
[NOTE ON]
0
[START Note]
first line

  third, indented
[END Note]
[Reminder]
1
[ReminderTime]
14:30
[ReminderDate]
2031-02-03
[Readable]
On the third of February
TEMP
[Folded]
0
[Flipped]
0
[Shrink]
0
[X]
 120
[Y]
 1800
[W]
 2400.5
[H]
 1500
[Picture]
[Locked]
0
[PicX]
 30
[PicY]
 45
[PicW]
 600
[PicH]
 450
[PicPath]
none.gif
TEMP
[Link]
[Size]
 10
[LinkX]
 900
[LinkY]
 75
[LinkLabel]
Inside
[LinkType]
 1
[LinkPath]
http://example.invalid/
[LinkParam]

[Color]
-1
[Bold]
0
[Confirm]
0
[Command]
False
[Icon]

[GROUP]

[EXCLUSIVE]
0
[TAGSTART]
0
)";

constexpr const char* kFoldedContainer = R"(106
[Container]
-1
[Name]
Folded
[Backcolor]
 255
[Forecolor]
 0
[Icon]

[CopyPath]
C:\Folder shown
[AutoRefresh]
 0
[NOTE ON]
0
[START Note]
[END Note]
[Reminder]
0
[ReminderTime]

[ReminderDate]

[Readable]

TEMP
[Folded]
1
[Flipped]
0
[HideToolbar]
1
[Shrink]
0
[X]
 120
[Y]
 3600
[W]
 2400
[H]
 1800
[ShowTag]
work
)";

constexpr const char* kShrunkContainer = R"(106
[Container]
-1
[Name]
Shrunk
[Backcolor]
 255
[Forecolor]
 0
[Icon]
C:\Icons\none.ico
[CopyPath]

[AutoRefresh]
 0
[NOTE ON]
0
[START Note]
[END Note]
[Reminder]
0
[ReminderTime]

[ReminderDate]

[Readable]

TEMP
[Folded]
0
[Flipped]
1
[Shrink]
1
[X]
 120
[Y]
 4200
[W]
 2000
[H]
 1700
)";

constexpr const char* kFeedContainer = R"(106
[RSS]
http://feeds.example.invalid/news.xml
News
-1
[Name]
News
[Backcolor]
 4798005
[Forecolor]
 16777215
[Icon]

[CopyPath]

[AutoRefresh]
 30
[NOTE ON]
0
[START Note]
[END Note]
[Reminder]
0
[ReminderTime]

[ReminderDate]

[Readable]

TEMP
[Folded]
0
[Flipped]
0
[Shrink]
0
[X]
 120
[Y]
 5400
[W]
 2400
[H]
 1500
)";

}  // namespace

// Lines end in CR LF in the files; the texts below have LF.
std::string withCrLf(const std::string& text) {
  std::string bytes;
  for (const char c : text) {
    if (c == '\n') bytes += '\r';
    bytes += c;
  }
  return bytes;
}

DataFiles goldenState() {
  return {{L"Varnowick.ini", goldenSettings()},
          {L"Containers\\0.con", withCrLf(kOpenContainer)},
          {L"Containers\\1.con", withCrLf(kFoldedContainer)},
          {L"Containers\\2.con", withCrLf(kShrunkContainer)},
          {L"Containers\\3.con", withCrLf(kFeedContainer)}};
}

}  // namespace varnowick::e2e
