#include "ui/win/bar/global_hotkey.h"

namespace varnowick {
namespace {

constexpr int kId = 1;
constexpr int kTrialId = 2;
constexpr std::size_t kMostNamed = 3;
// While the keys are held down the system repeats the hotkey; the bar must not
// flicker. This finds out when they have been let go.
constexpr UINT_PTR kHeldTimer = 1;
constexpr UINT kHeldInterval = 50;  // ms

}  // namespace

GlobalHotkey::~GlobalHotkey() { destroy(); }

void GlobalHotkey::apply(const Settings& settings) {
  const std::optional<Hotkey> wanted = hotkeyOf(settings);
  if (wanted == registered_) {
    if (!wanted) told_.reset();
    return;
  }
  release();
  if (!wanted) {
    told_.reset();
    return;
  }
  if (handle() == nullptr) {
    Create options;
    options.className = L"VarnowickHotkey";
    options.exStyle = WS_EX_TOOLWINDOW;
    if (!create(options)) return;
  }
  if (tryRegister(kId, *wanted)) {
    registered_ = wanted;
    told_.reset();
    return;
  }
  for (const Hotkey standIn : hotkeyStandIns(*wanted)) {
    if (!tryRegister(kId, standIn)) continue;
    registered_ = standIn;
    return;
  }
  if (told_ == wanted) return;
  told_ = wanted;
  const std::wstring text = hotkeyTakenText(*wanted, freeOnes(*wanted));
  if (callbacks_.taken) callbacks_.taken(text);
}

bool GlobalHotkey::tryRegister(int id, Hotkey hotkey) const {
  return RegisterHotKey(handle(), id, static_cast<UINT>(hotkey.modifiers),
                        static_cast<UINT>(hotkey.key)) != FALSE;
}

void GlobalHotkey::release() {
  if (registered_) UnregisterHotKey(handle(), kId);
  registered_.reset();
}

std::vector<Hotkey> GlobalHotkey::freeOnes(Hotkey taken) const {
  std::vector<Hotkey> free;
  for (const Hotkey candidate : hotkeyCandidates(taken)) {
    if (!tryRegister(kTrialId, candidate)) continue;
    UnregisterHotKey(handle(), kTrialId);
    free.push_back(candidate);
    if (free.size() == kMostNamed) break;
  }
  return free;
}

LRESULT GlobalHotkey::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_HOTKEY: {
      if (held_ || !registered_) return 0;
      held_ = GetAsyncKeyState(registered_->key) < 0;
      if (held_) SetTimer(handle(), kHeldTimer, kHeldInterval, nullptr);
      if (callbacks_.pressed) callbacks_.pressed();
      return 0;
    }
    case WM_TIMER:
      held_ = registered_ && GetAsyncKeyState(registered_->key) < 0;
      if (!held_) KillTimer(handle(), kHeldTimer);
      return 0;
    case WM_DESTROY:
      release();
      return 0;
    default:
      return Window::handleMessage(message, wParam, lParam);
  }
}

}  // namespace varnowick
