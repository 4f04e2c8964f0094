#include "ui/win/bar/frm_toolbar.h"

#include <gtest/gtest.h>

#include "ui/win/images/image_store.h"

namespace varnowick {
namespace {

class ToolbarTest : public testing::Test {
 protected:
  void SetUp() override {
    bar_ = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 600,
                           nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(bar_, nullptr);
    SetForegroundWindow(bar_);
    toolbar_ = std::make_unique<frmToolbar>(
        images_, fonts_,
        frmToolbar::Callbacks{.clicked = [this](Command c) { commands_.push_back(c); },
                              .menu = {}});
    toolbar_->attach(bar_);
    state_ = {.on = true,
              .bar = {{0}, {0}, {300}, {600}},
              .edge = ScreenEdge::Left,
              .work = {{0}, {0}, {1000}, {700}},
              .look = {},
              .density = {}};
  }
  void TearDown() override {
    toolbar_.reset();
    DestroyWindow(bar_);
  }
  LPARAM middleOf(ControlKind kind) const {
    const PixelRect r = toolbar_->view().toClient({kind, 0});
    return MAKELPARAM(r.left.value + r.width.value / 2, r.top.value + r.height.value / 2);
  }
  void click(ControlKind kind) {
    SendMessageW(toolbar_->handle(), WM_LBUTTONDOWN, MK_LBUTTON, middleOf(kind));
    SendMessageW(toolbar_->handle(), WM_LBUTTONUP, 0, middleOf(kind));
  }

  HWND bar_ = nullptr;
  ImageStore images_{L"C:\\nowhere"};
  GdiFonts fonts_;
  std::vector<Command> commands_;
  std::unique_ptr<frmToolbar> toolbar_;
  frmToolbar::State state_;
};

TEST_F(ToolbarTest, ClicksBecomeCommands) {
  toolbar_->update(state_);
  click(ControlKind::PicDockToolbar);
  click(ControlKind::PicLockToolbar);
  state_.look.locked = true;
  toolbar_->update(state_);
  click(ControlKind::PicUnlockToolbar);
  EXPECT_EQ(commands_,
            (std::vector<Command>{Command::mnuDockNow, Command::mnuLock, Command::mnuLock}));
  EXPECT_TRUE(toolbar_->scene().shown({ControlKind::PicUnlockToolbar, 0}));
  EXPECT_FALSE(toolbar_->scene().shown({ControlKind::PicLockToolbar, 0}));

  SendMessageW(toolbar_->handle(), WM_LBUTTONDOWN, MK_LBUTTON,
               middleOf(ControlKind::PicDockToolbar));
  SendMessageW(toolbar_->handle(), WM_LBUTTONUP, 0, middleOf(ControlKind::PicRSSToolbar));
  EXPECT_EQ(commands_.size(), 3U) << "let go on another button";
  EXPECT_EQ(SendMessageW(toolbar_->handle(), WM_MOUSEACTIVATE, 0, 0), MA_NOACTIVATE);
}

TEST_F(ToolbarTest, GoesWithItsOwner) {
  toolbar_->update(state_);
  DestroyWindow(bar_);
  EXPECT_EQ(toolbar_->handle(), nullptr);
  toolbar_->update(state_);
  toolbar_->hide();
  EXPECT_FALSE(toolbar_->shown());
}

}  // namespace
}  // namespace varnowick
