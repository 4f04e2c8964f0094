#include "ui/win/detached/frm_container_label.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ole2.h>
#include <oleacc.h>

namespace varnowick {
namespace {

using testing::ElementsAre;

const std::vector<TwipsRect> kWorks{{{0}, {0}, {12000}, {9000}}};

class ContainerLabelTest : public testing::Test {
 protected:
  void SetUp() override {
    OleInitialize(nullptr);
    tab_ = std::make_unique<frmContainerLabel>(
        fonts_,
        frmContainerLabel::Callbacks{
            .clicked = [this] { log_.push_back("clicked"); },
            .touched = [this] { log_.push_back("touched"); },
            .left = [this] { log_.push_back("left"); },
            .menu = [this](POINT) { log_.push_back("menu"); },
            .dragged =
                [](Point<Pixels> at) {
                  return dragTab({Density{}.toTwips(at.x), Density{}.toTwips(at.y)}, kWorks);
                },
            .dropped = [this](const TabPlace& place) { dropped_.push_back(place.rect); }});
    tab_->setLook({.name = L"Tools", .palette = makePalette({}), .density = {}});
    ASSERT_TRUE(tab_->attach());
  }
  void TearDown() override {
    tab_.reset();
    OleUninitialize();
  }
  RECT place() const {
    RECT r{};
    GetWindowRect(tab_->handle(), &r);
    return r;
  }
  // Buttons go by the message, moves by the cursor.
  void button(UINT message, POINT screen) {
    ScreenToClient(tab_->handle(), &screen);
    SendMessageW(tab_->handle(), message, 0, MAKELPARAM(screen.x, screen.y));
  }
  void moveTo(POINT screen) {
    SetCursorPos(screen.x, screen.y);
    drain();
    POINT client = screen;
    ScreenToClient(tab_->handle(), &client);
    SendMessageW(tab_->handle(), WM_MOUSEMOVE, 0, MAKELPARAM(client.x, client.y));
  }
  static void drain() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }

  GdiFonts fonts_;
  std::vector<std::string> log_;
  std::vector<TwipsRect> dropped_;
  std::unique_ptr<frmContainerLabel> tab_;
};

TEST_F(ContainerLabelTest, AClickIsPressAndReleaseOnIt) {
  tab_->showAt(dragTab({{0}, {3000}}, kWorks));
  const POINT on{5, 200};
  button(WM_LBUTTONDOWN, on);
  EXPECT_EQ(GetCapture(), tab_->handle());
  button(WM_LBUTTONUP, on);
  EXPECT_THAT(log_, ElementsAre("clicked"));
  button(WM_LBUTTONDOWN, on);
  button(WM_LBUTTONUP, {500, 200});
  button(WM_LBUTTONUP, on);
  EXPECT_THAT(log_, ElementsAre("clicked")) << "let go elsewhere, or never pressed";
  SendMessageW(tab_->handle(), WM_CONTEXTMENU, 0, 0);
  EXPECT_THAT(log_, ElementsAre("clicked", "menu"));
  EXPECT_TRUE(dropped_.empty());
}

TEST_F(ContainerLabelTest, IsDraggedToWhereTheMouseGoes) {
  const TabPlace left = dragTab({{0}, {3000}}, kWorks);
  tab_->showAt(left);
  // Taken hold of 20 pixels above its middle.
  button(WM_LBUTTONDOWN, {5, 180});
  moveTo({6, 280});
  EXPECT_TRUE(tab_->dragging());
  EXPECT_EQ(tab_->rect(), left.rect.translated({}, 1500_tw));
  moveTo({400, 590});
  EXPECT_EQ(tab_->LabelLocation(), ScreenEdge::Bottom);
  EXPECT_EQ(place().bottom, 600);
  button(WM_LBUTTONUP, {400, 590});
  EXPECT_THAT(dropped_, ElementsAre(TwipsRect{{5200}, {8820}, {1600}, {180}}));

  button(WM_LBUTTONDOWN, {400, 595});
  moveTo({799, 300});
  EXPECT_EQ(tab_->LabelLocation(), ScreenEdge::Right);
  ReleaseCapture();
  EXPECT_FALSE(tab_->dragging());
  EXPECT_EQ(tab_->rect(), dropped_.front()) << "a drag that is broken off ends where it began";
  EXPECT_EQ(dropped_.size(), 1U);
  EXPECT_EQ(std::count(log_.begin(), log_.end(), "clicked"), 0);
}

TEST_F(ContainerLabelTest, TellsReadersOfAButton) {
  tab_->showAt(dragTab({{0}, {3000}}, kWorks));
  IAccessible* accessible = nullptr;
  ASSERT_EQ(AccessibleObjectFromWindow(tab_->handle(), static_cast<DWORD>(OBJID_CLIENT),
                                       IID_IAccessible, reinterpret_cast<void**>(&accessible)),
            S_OK);
  VARIANT self{};
  self.vt = VT_I4;
  VARIANT role{};
  EXPECT_EQ(accessible->get_accRole(self, &role), S_OK);
  EXPECT_EQ(role.lVal, ROLE_SYSTEM_PUSHBUTTON);
  BSTR name = nullptr;
  EXPECT_EQ(accessible->get_accName(self, &name), S_OK);
  EXPECT_STREQ(name, L"Tools");
  SysFreeString(name);
  EXPECT_EQ(accessible->accDoDefaultAction(self), S_OK);
  EXPECT_EQ(log_.size(), 0U) << "it must not run inside the call";
  drain();
  EXPECT_EQ(log_.back(), "clicked");
  tab_.reset();
  EXPECT_NE(accessible->accDoDefaultAction(self), S_OK);
  accessible->Release();
}

}  // namespace
}  // namespace varnowick
