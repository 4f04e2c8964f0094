#include "ui/win/accessible.h"

#include <gtest/gtest.h>
#include <windows.h>
// This relies on it.
#include <oleacc.h>

#include <functional>
#include <vector>

#include "platform/win32/handles.h"

namespace varnowick {
namespace {

constexpr IID kAccessibleIid = {
    0x618736E0, 0x3C3D, 0x11CF, {0x81, 0x0C, 0x00, 0xAA, 0x00, 0x38, 0x9B, 0x71}};

VARIANT childId(long child) {
  VARIANT value{};
  value.vt = VT_I4;
  value.lVal = child;
  return value;
}

class TwoButtons : public AccessibleProvider {
 public:
  int childCount() override { return 2; }
  bool info(int child, AccessibleInfo& out) override {
    if (child > 2) return false;
    out.name = child == 0 ? L"Bar" : child == 1 ? L"First" : L"Second \u00e9";
    out.role = child == 0 ? ROLE_SYSTEM_CLIENT : ROLE_SYSTEM_PUSHBUTTON;
    out.states = child == 2 ? STATE_SYSTEM_SELECTED : 0;
    if (child == 1) out.defaultAction = L"Press";
    out.screenRect = {{10 * child}, {20 * child}, 5_px, 6_px};
    return true;
  }
  bool doDefaultAction(int child) override {
    pressed.push_back(child);
    return true;
  }
  int childAt(Point<Pixels> screen) override { return screen.x.value < 50 ? 1 : 0; }
  int focusedChild() override { return 2; }
  std::vector<int> pressed;
};

// Reads a window from a thread of its own, as a reader in another process would:
// every call is carried over to the window's thread.
class Reader {
 public:
  Reader(HWND window, std::function<void(IAccessible*)> read)
      : window_(window), read_(std::move(read)) {}
  void run() {
    const KernelHandle thread(CreateThread(nullptr, 0, threadMain, this, 0, nullptr));
    const HANDLE handle = thread.get();
    while (MsgWaitForMultipleObjects(1, &handle, FALSE, 20000, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
      MSG message{};
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    EXPECT_TRUE(reached_);
  }

 private:
  static DWORD WINAPI threadMain(void* self) {
    auto* reader = static_cast<Reader*>(self);
    const ComApartment com;
    const SystemLibrary oleacc(L"oleacc.dll");
    decltype(&AccessibleObjectFromWindow) fromWindow = nullptr;
    ComPtr<IAccessible> object;
    if (oleacc.bind("AccessibleObjectFromWindow", fromWindow) &&
        SUCCEEDED(fromWindow(reader->window_, static_cast<DWORD>(OBJID_CLIENT), kAccessibleIid,
                             object.putVoid()))) {
      reader->reached_ = true;
      reader->read_(object.get());
    }
    return 0;
  }

  HWND window_;
  std::function<void(IAccessible*)> read_;
  bool reached_ = false;
};

AccessibleServer* g_server = nullptr;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_GETOBJECT && g_server != nullptr) {
    if (const LRESULT result = g_server->getObject(window, wParam, lParam); result != 0) {
      return result;
    }
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

class AccessibleTest : public testing::Test {
 protected:
  AccessibleTest() : server_(provider_) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = procedure;
    windowClass.lpszClassName = L"AccessibleTest";
    RegisterClassW(&windowClass);
    window_ = CreateWindowExW(0, L"AccessibleTest", L"", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr,
                              nullptr, nullptr);
    g_server = &server_;
  }
  ~AccessibleTest() override {
    g_server = nullptr;
    DestroyWindow(window_);
  }

  ComApartment com_;
  TwoButtons provider_;
  AccessibleServer server_;
  HWND window_;
};

TEST_F(AccessibleTest, TellsItsChildren) {
  Reader(window_, [](IAccessible* object) {
    LONG count = 0;
    EXPECT_EQ(object->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 2);
    const wchar_t* names[] = {L"Bar", L"First", L"Second \u00e9"};
    for (long child = 0; child <= count; ++child) {
      ComString name;
      EXPECT_EQ(object->get_accName(childId(child), name.put()), S_OK);
      EXPECT_EQ(name.text(), names[child]);
      LONG left = 0, top = 0, width = 0, height = 0;
      EXPECT_EQ(object->accLocation(&left, &top, &width, &height, childId(child)), S_OK);
      EXPECT_EQ(left, 10 * child);
      EXPECT_EQ(top, 20 * child);
      EXPECT_EQ(width, 5);
      EXPECT_EQ(height, 6);
      VARIANT role{};
      EXPECT_EQ(object->get_accRole(childId(child), &role), S_OK);
      EXPECT_EQ(role.lVal, child == 0 ? ROLE_SYSTEM_CLIENT : ROLE_SYSTEM_PUSHBUTTON);
    }
    VARIANT value{};
    EXPECT_EQ(object->get_accFocus(&value), S_OK);
    EXPECT_EQ(value.lVal, 2);
    EXPECT_EQ(object->get_accSelection(&value), S_OK);
    EXPECT_EQ(value.lVal, 2);
    EXPECT_EQ(object->accHitTest(20, 20, &value), S_OK);
    EXPECT_EQ(value.lVal, 1);
    EXPECT_EQ(object->accHitTest(20, 5000, &value), S_FALSE) << "outside the window";
    EXPECT_EQ(object->accNavigate(NAVDIR_NEXT, childId(1), &value), S_OK);
    EXPECT_EQ(value.lVal, 2);
    EXPECT_EQ(object->accNavigate(NAVDIR_NEXT, childId(2), &value), S_FALSE);
  }).run();
}

TEST_F(AccessibleTest, RefusesChildrenThatAreNotThere) {
  Reader(window_, [](IAccessible* object) {
    for (const long child : {3L, -1L, 0x7FFFFFFFL}) {
      ComString name;
      EXPECT_TRUE(FAILED(object->get_accName(childId(child), name.put()))) << child;
      EXPECT_TRUE(FAILED(object->accDoDefaultAction(childId(child)))) << child;
    }
    EXPECT_TRUE(FAILED(object->accDoDefaultAction(childId(2)))) << "it has no action";
  }).run();
  EXPECT_TRUE(provider_.pressed.empty());
}

TEST_F(AccessibleTest, PressesAndOutlivesItsWindow) {
  Reader(window_, [this](IAccessible* object) {
    EXPECT_EQ(object->accDoDefaultAction(childId(1)), S_OK);
    PostMessageW(window_, WM_NULL, 0, 0);
  }).run();
  EXPECT_EQ(provider_.pressed, std::vector<int>{1});

  // Whoever still holds the object after the window is told so.
  const SystemLibrary oleacc(L"oleacc.dll");
  decltype(&AccessibleObjectFromWindow) fromWindow = nullptr;
  ASSERT_TRUE(oleacc.bind("AccessibleObjectFromWindow", fromWindow));
  ComPtr<IAccessible> held;
  ASSERT_EQ(fromWindow(window_, static_cast<DWORD>(OBJID_CLIENT), kAccessibleIid, held.putVoid()),
            S_OK);
  server_.disconnect();
  LONG count = 0;
  EXPECT_TRUE(FAILED(held->get_accChildCount(&count)));
}

TEST_F(AccessibleTest, LeavesOtherObjectsToTheSystem) {
  EXPECT_EQ(server_.getObject(window_, 0, OBJID_WINDOW), 0);
  EXPECT_EQ(server_.getObject(window_, 0, OBJID_CARET), 0);
}

}  // namespace
}  // namespace varnowick
