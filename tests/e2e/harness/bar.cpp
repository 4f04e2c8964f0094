#include "tests/e2e/harness/bar.h"

#include "platform/win32/handles.h"
#include "tests/e2e/harness/input.h"
#include "tests/e2e/harness/screen.h"
#include "tests/e2e/harness/waiting.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick::e2e {
namespace {

HWND loadedWindow(const RunningProgram& program) {
  program.waitUntilLoaded();
  return program.mainWindow();
}

// The part of the window that is on the screen and not cut off.
RECT visiblePart(HWND window) {
  RECT rect = rectOf(window);
  const RegionHandle region(CreateRectRgn(0, 0, 0, 0));
  RECT box{};
  if (GetWindowRgn(window, region.get()) != ERROR && GetRgnBox(region.get(), &box) > NULLREGION) {
    OffsetRect(&box, rect.left, rect.top);
    IntersectRect(&rect, &rect, &box);
  }
  const int left = GetSystemMetrics(SM_XVIRTUALSCREEN);
  const int top = GetSystemMetrics(SM_YVIRTUALSCREEN);
  const RECT screen{left, top, left + GetSystemMetrics(SM_CXVIRTUALSCREEN),
                    top + GetSystemMetrics(SM_CYVIRTUALSCREEN)};
  RECT part{};
  IntersectRect(&part, &rect, &screen);
  return part;
}

}  // namespace

Bar::Bar(const RunningProgram& program, Events& events)
    : window_(loadedWindow(program)), events_(events) {}

RECT Bar::rect() const { return rectOf(window_); }

RECT Bar::seen() const { return visiblePart(window_); }

RECT Bar::box(const std::wstring& name) const {
  return accessible().waitFor(name, ROLE_SYSTEM_GROUPING).rect;
}

POINT Bar::onTitle(const std::wstring& name) const {
  const RECT r = box(name);
  return {r.left + toPixels(300), r.top + toPixels(175)};
}

bool Bar::isOut() const {
  const RECT seen = visiblePart(window_);
  const int strip = toPixels(40) + 1;
  return seen.right - seen.left > strip && seen.bottom - seen.top > strip;
}

void Bar::expand() {
  events_.expect(kEventExpanded, L"expanded", [&] {
    const RECT part = seen();
    const bool upright = part.bottom - part.top > part.right - part.left;
    const POINT strip = centreOf(part);
    // Where a window ends under the cursor, Wine may put that back, or tell nobody of
    // it. A pixel to and fro along the strip is a rest to the bar.
    constexpr DWORD kAWhile = 3'000;  // ms
    LONG aside = 0;
    waitFor(
        [&] {
          if (isOut()) return true;
          aside = 1 - aside;
          mouse::moveTo(upright ? POINT{strip.x, strip.y + aside}
                                : POINT{strip.x + aside, strip.y});
          return false;
        },
        kAWhile);
  });
}

void Bar::leave() {
  const std::size_t before = events_.count(kEventCollapsed);
  // It may be on its way already, after a drag that has ended beside it.
  const bool out = isOut();
  mouse::moveAwayFrom(rect());
  if (out) require(L"the event collapsed", [&] { return events_.count(kEventCollapsed) > before; });
}

POINT Bar::emptyPlace() const {
  const RECT seen = visiblePart(window_);
  const POINT at{(seen.left + seen.right) / 2, seen.top + (seen.bottom - seen.top) * 3 / 4};
  return at;
}

void Bar::focus() {
  if (!isOut()) expand();
  const POINT at = emptyPlace();
  require(L"the bar to be reachable with the mouse",
          [&] { return WindowFromPoint(at) == window_; });
  mouse::click(at);
  waitUntilInFront();
}

void Bar::waitUntilInFront() const {
  require(L"the bar to come to the front", [&] { return GetForegroundWindow() == window_; });
}

void Bar::openMenu() {
  focus();
  events_.expect(kEventMenuOpened, L"menu opened", [&] { mouse::rightClick(emptyPlace()); });
  require(L"the menu's window", [&] { return FindWindowW(L"#32768", nullptr) != nullptr; });
}

void Bar::choose(const std::wstring& mnemonics) {
  for (const wchar_t mnemonic : mnemonics) keyboard::type(std::wstring(1, mnemonic));
}

void Bar::click(const std::wstring& name) {
  const AccessibleItem item = accessible().waitFor(name);
  const POINT at = centreOf(item.rect);
  require(L"a place of the bar to be reachable with the mouse: " + name,
          [&] { return WindowFromPoint(at) == window_; });
  mouse::click(at);
}

}  // namespace varnowick::e2e
