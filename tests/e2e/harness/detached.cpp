#include "tests/e2e/harness/detached.h"

#include "tests/e2e/harness/data_files.h"
#include "tests/e2e/harness/dialogs.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/screen.h"
#include "tests/e2e/harness/waiting.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {

std::string detachedLines(const DetachedRow& row) {
  std::string lines;
  const auto add = [&](const char* key, const std::string& value) {
    lines += std::string(key) + "\r\n" + value + "\r\n";
  };
  const auto flag = [&](const char* key, bool on) { add(key, on ? "1" : "0"); };
  add("[Detached]", "1");
  flag("[DetachedTab]", row.useTab);
  flag("[DetachedAutoShow]", row.autoShow);
  flag("[DetachedAutoHide]", row.autoHide);
  flag("[DetachedCollapseOnClick]", row.hideOnClick);
  flag("[DetachedFadeOut]", row.fadeOut);
  for (const char* key : {"[DetachedTabX]", "[DetachedTabY]", "[DetachedTabH]", "[DetachedTabW]"})
    add(key, number(0));
  add("[DetachedTabDocked]", number(row.edge));
  add("[DetachedX]", number(row.x));
  add("[DetachedY]", number(row.y));
  add("[DetachedH]", number(row.height));
  add("[DetachedW]", number(row.width));
  return lines;
}

HWND DetachedWindow::window() const {
  return findWindow(program_.process(), L"VarnowickContainer", name_);
}

HWND DetachedWindow::tab() const { return findWindow(program_.process(), L"VarnowickTab", name_); }

RECT DetachedWindow::rect() const { return rectOf(window()); }
RECT DetachedWindow::tabRect() const { return rectOf(tab()); }

AccessibleWindow DetachedWindow::accessible() const { return AccessibleWindow(window()); }

POINT DetachedWindow::onTitle() const {
  const RECT r = rect();
  return {r.left + toPixels(600), r.top + toPixels(175)};
}

void DetachedWindow::waitUntilShown() const {
  require(L"the detached window " + name_, [&] { return shown(); });
}

void DetachedWindow::choose(const std::wstring& mnemonics) const {
  const POINT at = onTitle();
  require(L"the title to be reachable with the mouse",
          [&] { return WindowFromPoint(at) == window(); });
  events_.expect(kEventMenuOpened, L"menu opened", [&] { mouse::rightClick(at); });
  require(L"the menu's window", [&] { return FindWindowW(L"#32768", nullptr) != nullptr; });
  for (const wchar_t mnemonic : mnemonics) keyboard::type(std::wstring(1, mnemonic));
}

}  // namespace varnowick::e2e
