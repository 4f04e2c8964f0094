#include "ui/win/toolkit/accessible.h"

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

constexpr IID kEnumIid = {0x00020404, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

VARIANT childId(long child) {
  VARIANT value{};
  value.vt = VT_I4;
  value.lVal = child;
  return value;
}

// The window, a button in it, and a group with two more, which are selected.
class Items : public AccessibleProvider {
 public:
  static constexpr long kButton = 100, kGroup = 200, kInner = 300, kLast = 400;
  std::vector<long> children(long parent) override {
    if (parent == kAccessibleWindow) return {kButton, kGroup};
    return parent == kGroup ? std::vector<long>{kInner, kLast} : std::vector<long>{};
  }
  bool info(long item, AccessibleInfo& out) override {
    switch (item) {
      case kAccessibleWindow:
        out.name = L"Bar";
        break;
      case kButton:
        out.name = L"First";
        out.defaultAction = L"Press";
        break;
      case kGroup:
        out.name = L"Group \u00e9";
        break;
      case kInner:
      case kLast:
        out.name = item == kInner ? L"Inner" : L"Last";
        out.parent = kGroup;
        out.states = STATE_SYSTEM_SELECTED;
        break;
      default:
        return false;
    }
    out.role = item == kAccessibleWindow ? ROLE_SYSTEM_CLIENT : ROLE_SYSTEM_PUSHBUTTON;
    out.screenRect = {{static_cast<int>(item)}, {1}, 5_px, 6_px};
    return true;
  }
  bool doDefaultAction(long item) override {
    pressed.push_back(item);
    return true;
  }
  bool select(long item, long) override {
    pressed.push_back(-item);
    return true;
  }
  long itemAt(Point<Pixels> screen) override { return screen.x.value < 50 ? kInner : kButton; }
  long focusedItem() override { return kInner; }
  std::vector<long> pressed;
};

std::wstring nameOf(IAccessible* object, long child = CHILDID_SELF) {
  ComString name;
  object->get_accName(childId(child), name.put());
  return name.text();
}

ComPtr<IAccessible> accessible(IDispatch* object) {
  ComPtr<IAccessible> found;
  if (object != nullptr) object->QueryInterface(kAccessibleIid, found.putVoid());
  return found;
}

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
  Items provider_;
  AccessibleServer server_;
  HWND window_;
};

TEST_F(AccessibleTest, TellsATree) {
  Reader(window_, [](IAccessible* object) {
    LONG count = 0;
    EXPECT_EQ(object->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(nameOf(object), L"Bar");
    EXPECT_EQ(nameOf(object, 1), L"First");
    EXPECT_EQ(nameOf(object, -Items::kLast), L"Last") << "as events name it";
    LONG left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(object->accLocation(&left, &top, &width, &height, childId(1)), S_OK);
    EXPECT_EQ(left, 100);
    EXPECT_EQ(height, 6);
    ComPtr<IDispatch> child;
    EXPECT_EQ(object->get_accChild(childId(1), child.put()), S_FALSE);
    ASSERT_EQ(object->get_accChild(childId(2), child.put()), S_OK);
    const ComPtr<IAccessible> group = accessible(child.get());
    EXPECT_EQ(nameOf(group.get()), L"Group \u00e9");
    EXPECT_EQ(nameOf(group.get(), 1), L"Inner");
    ComPtr<IDispatch> parent;
    ASSERT_EQ(group->get_accParent(parent.put()), S_OK);
    EXPECT_EQ(nameOf(accessible(parent.get()).get()), L"Bar");

    // What lies deeper is told by the child that holds it, and by that itself.
    VARIANT value{};
    EXPECT_EQ(object->accHitTest(20, 20, &value), S_OK);
    ASSERT_EQ(value.vt, VT_DISPATCH);
    EXPECT_EQ(nameOf(accessible(value.pdispVal).get()), L"Group \u00e9");
    VariantClear(&value);
    EXPECT_EQ(group->accHitTest(20, 20, &value), S_OK);
    EXPECT_EQ(value.lVal, 1);
    EXPECT_EQ(group->get_accFocus(&value), S_OK);
    EXPECT_EQ(value.lVal, 1);
    EXPECT_EQ(group->accNavigate(NAVDIR_NEXT, childId(1), &value), S_OK);
    EXPECT_EQ(value.lVal, 2);
    EXPECT_EQ(object->accNavigate(NAVDIR_NEXT, childId(2), &value), S_FALSE);
    EXPECT_EQ(object->accHitTest(20, 5000, &value), S_FALSE) << "outside the window";
    EXPECT_EQ(object->get_accSelection(&value), S_FALSE);
    ASSERT_EQ(group->get_accSelection(&value), S_OK);
    ASSERT_EQ(value.vt, VT_UNKNOWN);
    ComPtr<IEnumVARIANT> several;
    ASSERT_EQ(value.punkVal->QueryInterface(kEnumIid, several.putVoid()), S_OK);
    VariantClear(&value);
    VARIANT both[3]{};
    ULONG fetched = 0;
    EXPECT_EQ(several->Next(3, both, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 2U);
    EXPECT_EQ(both[1].lVal, 2);
  }).run();
}

TEST_F(AccessibleTest, RefusesWhatIsNotThere) {
  Reader(window_, [](IAccessible* object) {
    for (const long child : {3L, -1L, 0x7FFFFFFFL, LONG_MIN}) {
      ComString name;
      EXPECT_TRUE(FAILED(object->get_accName(childId(child), name.put()))) << child;
      EXPECT_TRUE(FAILED(object->accDoDefaultAction(childId(child)))) << child;
    }
    EXPECT_TRUE(FAILED(object->accDoDefaultAction(childId(2)))) << "it has no action";
    EXPECT_TRUE(FAILED(object->accSelect(SELFLAG_EXTENDSELECTION, childId(1))));
    EXPECT_EQ(object->accSelect(SELFLAG_TAKESELECTION, childId(-Items::kLast)), S_OK);
  }).run();
  EXPECT_EQ(provider_.pressed, std::vector<long>{-Items::kLast});
}

TEST_F(AccessibleTest, PressesAndOutlivesItsWindow) {
  Reader(window_, [this](IAccessible* object) {
    EXPECT_EQ(object->accDoDefaultAction(childId(1)), S_OK);
    PostMessageW(window_, WM_NULL, 0, 0);
  }).run();
  EXPECT_EQ(provider_.pressed, std::vector<long>{Items::kButton});

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
