#include "ui/win/detached/detached_windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ole2.h>

#include "platform/clock.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/fakes/fake_screen.h"
#include "tests/fakes/fake_shell.h"
#include "tests/fakes/fake_sound.h"
#include "tests/fakes/fake_system.h"
#include "tests/fakes/memory_files.h"
#include "ui/win/images/image_store.h"

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NoClock : public Clock {
 public:
  std::uint64_t milliseconds() override { return 0; }
  LocalTime now() override { return {}; }
};

class NoBar : public LaunchHost {
 public:
  bool isMainWindow() const override { return true; }
  bool launchSuppressed() const override { return false; }
  void PreLaunch() override {}
  OwnerWindow ownerWindow() const override { return {}; }
};

class DetachedWindowsTest : public testing::Test {
 protected:
  void SetUp() override {
    OleInitialize(nullptr);
    document_.settings.animate = false;
    cursor_.at = {{600}, {790}};
    windows_.setPalette(makePalette(document_.settings));
  }
  void TearDown() override {
    windows_.closeAll();
    OleUninitialize();
  }
  ContainerSlot add(const wchar_t* name) {
    clsContainer c;
    c.name = name;
    c.savedRect = c.rect = {{150}, {600}, {3000}, {2400}};
    return document_.workspace.containers.add(c);
  }
  clsContainer& record(ContainerSlot slot) { return document_.workspace.containers[slot]; }
  std::vector<std::wstring> names() const {
    std::vector<std::wstring> all;
    for (const DetachedWindows::Row& row : windows_.rows()) all.push_back(row.lblName);
    return all;
  }
  bool visible(ContainerSlot slot) {
    const frmContainer* window = windows_.find(slot);
    return window != nullptr && IsWindowVisible(window->handle());
  }
  void tick(ContainerSlot slot, TimerId id) {
    const frmContainer* window = windows_.find(slot);
    SendMessageW(window->handle(), WM_TIMER, window->timers().systemIdOf(id), 0);
  }

  MemoryFiles files_;
  FakeCodec codec_;
  FakeMsgBox msgBox_;
  FakeShell shell_;
  FakeSystem system_;
  FakeSound sound_;
  NoClock clock_;
  FakeCursor cursor_;
  FakeMonitors monitors_;
  Platform platform_{files_, codec_, msgBox_, shell_, system_, sound_, clock_, cursor_, monitors_};
  Document document_;
  ImageStore images_{L"C:\\nowhere"};
  GdiFonts fonts_;
  GdiTextMeasure measure_{{}};
  ModalDepth modal_;
  NoBar bar_;
  int saves_ = 0;
  std::vector<ContainerSlot> barChanges_, removed_;
  std::function<void()> whileSaving_;
  DetachedWindows windows_{
      {platform_, document_, document_.settings, images_, fonts_, measure_, modal_},
      bar_,
      {.busyElsewhere = [this] { return modal_.active(); },
       .barChanged =
           [this](const std::vector<ContainerSlot>& slots) {
             barChanges_.insert(barChanges_.end(), slots.begin(), slots.end());
           },
       .workspaceChanged =
           [this] {
             ++saves_;
             if (whileSaving_) whileSaving_();
           },
       .changeSettings = [this](const SettingsChange& change) { change(document_.settings); },
       .removeContainer =
           [this](ContainerSlot slot) {
             removed_.push_back(slot);
             document_.workspace.removeContainer(slot);
           },
       .shortcutStarted = [](ShortcutSlot) {},
       .runCommand = [](Command) { return false; },
       .boxOnScreen = [this](ContainerSlot slot) { return record(slot).savedRect; },
       .barOnScreen =
           [] {
             return TwipsRect{{-200}, {0}, {4700}, {12000}};
           },
       .paneAt = [](POINT) { return static_cast<WorkspacePane*>(nullptr); },
       .sweepSoon = [] {}}};
};

TEST_F(DetachedWindowsTest, TabsHideShowAndStandBesideEachOther) {
  const ContainerSlot a = add(L"Alpha");
  const ContainerSlot b = add(L"Beta");
  for (const ContainerSlot slot : {a, b}) {
    record(slot).DetachedUseTab = record(slot).DetachedAutoHide = true;
    record(slot).DetachedTabDockedWhere = 2;
    record(slot).detachedRect = {{9000}, {3000}, {3000}, {2000}};
  }
  windows_.detach({a, b});
  for (const ContainerSlot slot : {a, b}) {
    SetForegroundWindow(GetDesktopWindow());
    tick(slot, TimerId::DetachedTimerHide);
    EXPECT_FALSE(visible(slot));
    EXPECT_TRUE(windows_.find(slot)->tab().shown());
  }
  const TwipsRect first = windows_.find(a)->tab().rect();
  const TwipsRect second = windows_.find(b)->tab().rect();
  EXPECT_EQ(first.left, second.left);
  EXPECT_TRUE(first.intersect(second).empty());
  // The screen becomes smaller: the tab goes with its edge.
  monitors_.bounds = {{{0}, {0}, {1024}, {768}}};
  SendMessageW(windows_.find(a)->handle(), WM_DISPLAYCHANGE, 0, 0);
  EXPECT_EQ(windows_.find(a)->tab().rect().right(), 1024_tw * 15.0F);
  EXPECT_TRUE(windows_.anyHidden());
  windows_.showAll();
  EXPECT_TRUE(visible(a) && visible(b));
  EXPECT_FALSE(windows_.anyHidden() || windows_.find(a)->tab().shown());
}

TEST_F(DetachedWindowsTest, FadesBackToTheBarAndCanLeaveItAgainMeanwhile) {
  document_.settings.animate = true;
  const ContainerSlot a = add(L"Alpha");
  record(a).DetachedFadeOut = true;
  windows_.detach({a});
  const HWND former = windows_.find(a)->handle();
  windows_.attach(a);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_FALSE(IsWindowEnabled(former));
  if (IsWindowVisible(former)) {  // the system animates
    tick(a, TimerId::TimerFadeOut);
    EXPECT_TRUE(IsWindowVisible(former));
  }
  windows_.detach({a});
  EXPECT_FALSE(IsWindowVisible(former));
  EXPECT_TRUE(visible(a));
  EXPECT_NE(windows_.find(a)->handle(), former);
  windows_.sweep();
  EXPECT_FALSE(IsWindow(former));
}

// Whatever waits while it saves lets messages through, the one that frees windows
// among them.
TEST_F(DetachedWindowsTest, IsNotFreedByWhatItsOwnHandlerSetsOff) {
  const ContainerSlot a = add(L"Alpha");
  windows_.detach({a});
  const HWND handle = windows_.find(a)->handle();
  whileSaving_ = [this] { windows_.sweep(); };
  // Its button "attach": the handler goes on after the window has been given up.
  SendMessageW(handle, kMsgAction, static_cast<WPARAM>(ControlKind::cmdConDetach), a.index);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_TRUE(IsWindow(handle));
  EXPECT_FALSE(IsWindowVisible(handle));
  windows_.sweep();
  EXPECT_FALSE(IsWindow(handle));
}

TEST_F(DetachedWindowsTest, OthersMayGoWhileWhatWasTypedIsSaved) {
  const ContainerSlot a = add(L"Alpha");
  const ContainerSlot b = add(L"Beta");
  const ContainerSlot c = add(L"Gamma");
  record(b).noteVisible = true;
  const auto typeIntoBeta = [&](wchar_t letter) {
    windows_.detach({a, b, c});
    windows_.find(b)->pane().editNote(b, 0);
    const HWND frame =
        FindWindowExW(windows_.find(b)->handle(), nullptr, L"VarnowickEditOverlay", nullptr);
    const HWND control = FindWindowExW(frame, nullptr, L"EDIT", nullptr);
    ASSERT_NE(control, nullptr);
    SendMessageW(control, WM_CHAR, letter, 1);
    whileSaving_ = [&] {
      windows_.removed(a);
      windows_.removed(c);
    };
  };
  typeIntoBeta(L'x');
  windows_.endEditing();
  EXPECT_THAT(names(), ElementsAre(L"Beta"));
  EXPECT_EQ(record(b).note, L"x");

  whileSaving_ = {};
  windows_.attach(b);
  for (const ContainerSlot slot : {a, b, c}) record(slot).Detached = false;
  typeIntoBeta(L'y');
  windows_.removed(b);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_EQ(record(b).note, L"yx");
}

}  // namespace
}  // namespace varnowick
