// What a screen reader gets: a tree, the selection, and events when these change.
#include <map>

#include "tests/e2e/program_test.h"

namespace varnowick::e2e {
namespace {

using Names = std::vector<std::wstring>;

// Counts the system's own events of one process, which Events does not listen to.
class Heard {
 public:
  explicit Heard(DWORD process)
      : hook_(SetWinEventHook(EVENT_OBJECT_SELECTION, EVENT_OBJECT_STATECHANGE, nullptr, &heard,
                              process, 0, WINEVENT_OUTOFCONTEXT)) {
    counts_.clear();
  }
  Heard(const Heard&) = delete;
  Heard& operator=(const Heard&) = delete;
  ~Heard() { UnhookWinEvent(hook_); }
  int count(DWORD event) const { return counts_[event]; }

 private:
  static void CALLBACK heard(HWINEVENTHOOK, DWORD event, HWND, LONG, LONG child, DWORD, DWORD) {
    if (child < 0) ++counts_[event];
  }
  static inline std::map<DWORD, int> counts_;
  HWINEVENTHOOK hook_;
};

VARIANT self(LONG id = CHILDID_SELF) {
  VARIANT v{};
  v.vt = VT_I4;
  v.lVal = id;
  return v;
}

std::wstring parentOf(const AccessibleItem& item) {
  ComString name;
  item.parent->get_accName(self(), name.put());
  return name.text();
}

class AccessibilityTest : public ProgramTest {
 protected:
  void expectSelection(const Bar& bar, const Names& names) {
    Names now;
    EXPECT_TRUE(waitFor([&] { return (now = bar.accessible().selection(L"Work")) == names; }))
        << testing::PrintToString(now);
  }
};

TEST_F(AccessibilityTest, ReadersGetATreeAndHearOfTheSelection) {
  write(SettingsFile().add({.caption = L"Loose", .y = 3300}),
        {{.name = L"Work",
          .shortcuts = {{.caption = L"Mail", .x = 120, .y = 360},
                        {.caption = L"News", .x = 1200, .y = 360}}}});
  Bar bar = startBar();
  const Heard heard(program().process());
  bar.focus();
  const AccessibleWindow window = bar.accessible();
  const AccessibleItem mail = window.waitFor(L"Mail", ROLE_SYSTEM_LINK);
  EXPECT_EQ(parentOf(mail), L"Work");
  EXPECT_EQ(parentOf(window.waitFor(L"Loose", ROLE_SYSTEM_LINK)), L"Workspace");
  VARIANT hit{};
  const POINT middle = centreOf(mail.rect);
  EXPECT_EQ(mail.parent->accHitTest(middle.x, middle.y, &hit), S_OK);
  EXPECT_EQ(hit.lVal, mail.id);
  // The neighbours; and what is not there.
  EXPECT_EQ(mail.parent->accNavigate(NAVDIR_NEXT, self(mail.id), &hit), S_OK);
  EXPECT_EQ(hit.lVal, mail.id + 1);
  for (const LONG none : {0x7FFFFFFFL, LONG_MIN}) {
    ComString name;
    EXPECT_TRUE(FAILED(mail.parent->get_accName(self(none), name.put()))) << none;
    EXPECT_TRUE(FAILED(mail.parent->accDoDefaultAction(self(none)))) << none;
    EXPECT_TRUE(FAILED(mail.parent->accSelect(SELFLAG_TAKESELECTION, self(none)))) << none;
  }

  window.select(mail, SELFLAG_TAKESELECTION);
  expectSelection(bar, {L"Mail"});
  window.select(window.waitFor(L"News", ROLE_SYSTEM_LINK), SELFLAG_ADDSELECTION);
  expectSelection(bar, {L"Mail", L"News"});
  window.select(mail, SELFLAG_REMOVESELECTION);
  expectSelection(bar, {L"News"});
  bar.click(L"Fold Work");
  for (const DWORD event : {EVENT_OBJECT_SELECTION, EVENT_OBJECT_SELECTIONADD,
                            EVENT_OBJECT_SELECTIONREMOVE, EVENT_OBJECT_STATECHANGE})
    require(L"an event to be told", [&] { return heard.count(event) > 0; });
}

}  // namespace
}  // namespace varnowick::e2e
