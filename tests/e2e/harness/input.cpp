#include "tests/e2e/harness/input.h"

#include <vector>

#include "tests/e2e/harness/waiting.h"

namespace varnowick::e2e {
namespace {

void send(const std::vector<INPUT>& inputs) {
  const auto count = static_cast<UINT>(inputs.size());
  // Fails when the desktop is locked or a window of higher rights is in front.
  if (SendInput(count, const_cast<INPUT*>(inputs.data()), sizeof(INPUT)) != count) {
    failWithLastError(L"SendInput");
  }
}

INPUT button(DWORD flag) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flag;
  return input;
}

INPUT key(WORD virtualKey, bool up) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtualKey;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
  switch (virtualKey) {
    case VK_UP:
    case VK_DOWN:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_DELETE:
    case VK_INSERT:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_LWIN:
    case VK_APPS:
      input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
      break;
    default:
      break;
  }
  return input;
}

// SendInput measures the virtual screen in 65536 parts; aiming at the middle of
// a pixel makes rounding harmless.
LONG normalised(int value, int origin, int extent) {
  return static_cast<LONG>(((2LL * (value - origin) + 1) * 65536) / (2LL * extent));
}

}  // namespace

void seeRealPixels() {
  using Function = BOOL(WINAPI*)();
  const HMODULE user = GetModuleHandleW(L"user32.dll");
  const auto aware = reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(user, "SetProcessDPIAware")));
  if (aware != nullptr) aware();
}

POINT centreOf(const RECT& rect) {
  return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

namespace mouse {
namespace {

bool g_held = false;
// Wine moves the pointer of the X server along, which tells of it once more, later: a
// drag would go back to where it was before, or be let go there.
constexpr DWORD kEcho = 25;  // ms

}  // namespace

POINT position() {
  POINT at{};
  GetCursorPos(&at);
  return at;
}

void moveTo(POINT at) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_VIRTUALDESK;
  input.mi.dx =
      normalised(at.x, GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_CXVIRTUALSCREEN));
  input.mi.dy =
      normalised(at.y, GetSystemMetrics(SM_YVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN));
  require(L"the cursor to arrive", [&] {
    // Again while it is elsewhere: where a window moves under the cursor, Wine may
    // put it back to where it was before.
    send({input});
    const POINT now = position();
    return now.x == at.x && now.y == at.y;
  });
  if (g_held) Sleep(kEcho);
}

void press() {
  send({button(MOUSEEVENTF_LEFTDOWN)});
  g_held = true;
}

void release() {
  g_held = false;
  send({button(MOUSEEVENTF_LEFTUP)});
}

void click(POINT at) {
  moveTo(at);
  send({button(MOUSEEVENTF_LEFTDOWN), button(MOUSEEVENTF_LEFTUP)});
}

void doubleClick(POINT at) {
  click(at);
  send({button(MOUSEEVENTF_LEFTDOWN), button(MOUSEEVENTF_LEFTUP)});
}

void rightClick(POINT at) {
  moveTo(at);
  send({button(MOUSEEVENTF_RIGHTDOWN), button(MOUSEEVENTF_RIGHTUP)});
}

void drag(POINT from, POINT to) {
  constexpr int kSteps = 8;
  moveTo(from);
  press();
  for (int step = 1; step <= kSteps; ++step) {
    moveTo({from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
    letTimePass(10);
  }
  release();
}

void wheel(POINT at, int notches) {
  moveTo(at);
  INPUT input = button(MOUSEEVENTF_WHEEL);
  input.mi.mouseData = static_cast<DWORD>(notches * WHEEL_DELTA);
  send({input});
}

void moveAwayFrom(const RECT& rect) {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  constexpr int kIn = 60;  // pixels
  const POINT corners[] = {{work.right - kIn, work.bottom - kIn},
                           {work.left + kIn, work.bottom - kIn},
                           {work.right - kIn, work.top + kIn}};
  for (const POINT& corner : corners) {
    RECT around{rect.left - kIn / 2, rect.top - kIn / 2, rect.right + kIn / 2,
                rect.bottom + kIn / 2};
    if (PtInRect(&around, corner)) continue;
    moveTo(corner);
    return;
  }
  throw HarnessError(L"no corner of the screen is free of the window");
}

}  // namespace mouse

namespace keyboard {

void chord(std::initializer_list<WORD> keys) {
  std::vector<INPUT> inputs;
  for (const WORD k : keys) inputs.push_back(key(k, false));
  for (auto k = keys.end(); k != keys.begin();) inputs.push_back(key(*--k, true));
  send(inputs);
}

void press(WORD k) { chord({k}); }
void down(WORD k) { send({key(k, false)}); }
void up(WORD k) { send({key(k, true)}); }

void type(const std::wstring& text) {
  for (const wchar_t c : text) {
    const SHORT code = VkKeyScanW(c);
    if (code == -1) throw HarnessError(L"the keyboard has no key for a character of: " + text);
    const auto virtualKey = static_cast<WORD>(code & 0xFF);
    if ((code & 0x100) != 0) {
      chord({VK_SHIFT, virtualKey});
    } else {
      press(virtualKey);
    }
  }
}

}  // namespace keyboard
}  // namespace varnowick::e2e
