#include "sidebar/hotkey.h"

namespace varnowick {
namespace {

constexpr int kAllModifiers = kHotkeyAlt | kHotkeyCtrl | kHotkeyShift | kHotkeyWin;

int keyOf(const std::wstring& text) {
  const std::size_t at = text.find_first_not_of(L" \t");
  if (at == std::wstring::npos) return 0;
  const wchar_t c = text[at];
  if (c >= L'a' && c <= L'z') return c - L'a' + 'A';
  if ((c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9')) return c;
  return 0;
}

}  // namespace

std::optional<Hotkey> hotkeyOf(const Settings& settings) {
  if (!settings.globalHotkey) return std::nullopt;
  const Hotkey hotkey{settings.globalHotkeyMod & kAllModifiers, keyOf(settings.globalHotkeyChar)};
  // Without one of these the key itself would be lost to every program.
  const bool harmless = (hotkey.modifiers & (kHotkeyAlt | kHotkeyCtrl | kHotkeyWin)) != 0;
  if (hotkey.key == 0 || !harmless) return std::nullopt;
  return hotkey;
}

std::wstring hotkeyText(Hotkey hotkey) {
  struct Name {
    int modifier;
    const wchar_t* text;
  };
  constexpr Name kNames[] = {{kHotkeyWin, L"Win+"},
                             {kHotkeyCtrl, L"Ctrl+"},
                             {kHotkeyAlt, L"Alt+"},
                             {kHotkeyShift, L"Shift+"}};
  std::wstring text;
  for (const Name& name : kNames)
    if ((hotkey.modifiers & name.modifier) != 0) text += name.text;
  return text + static_cast<wchar_t>(hotkey.key);
}

std::vector<Hotkey> hotkeyCandidates(Hotkey taken) {
  // Ctrl+Shift and Alt alone belong to menus and commands of other programs, so
  // they come last or not at all.
  constexpr int kModifiers[] = {kHotkeyWin,
                                kHotkeyWin | kHotkeyShift,
                                kHotkeyWin | kHotkeyCtrl,
                                kHotkeyWin | kHotkeyAlt,
                                kHotkeyCtrl | kHotkeyAlt,
                                kHotkeyCtrl | kHotkeyAlt | kHotkeyShift,
                                kHotkeyCtrl | kHotkeyShift};
  std::vector<Hotkey> candidates;
  const auto add = [&](int modifiers, int key) {
    if (const Hotkey candidate{modifiers, key}; candidate != taken) candidates.push_back(candidate);
  };
  for (const int modifiers : kModifiers) add(modifiers, taken.key);
  for (const char key : {'B', 'W', 'Q', 'Y', 'J'})
    if (key != taken.key) add(taken.modifiers, key);
  return candidates;
}

std::vector<Hotkey> hotkeyStandIns(Hotkey taken) {
  if (taken != Hotkey{kHotkeyWin, 'S'}) return {};
  // Not those with which newer systems cut out pictures and listen (Win+Shift+S,
  // Win+Ctrl+S), and not Ctrl+Alt+S, which types a letter on some keyboards.
  return {{kHotkeyWin | kHotkeyAlt, 'S'},
          {kHotkeyWin | kHotkeyCtrl | kHotkeyAlt, 'S'},
          {kHotkeyCtrl | kHotkeyAlt | kHotkeyShift, 'S'}};
}

std::wstring hotkeyTakenText(Hotkey taken, const std::vector<Hotkey>& free) {
  std::wstring text = L"The hotkey " + hotkeyText(taken) +
                      L" is used by another program, so it does not open the bar.";
  if (free.empty()) return text + L" Another one can be selected in the settings.";
  text += free.size() == 1 ? L" This one is free: " : L" These are free: ";
  for (std::size_t i = 0; i < free.size(); ++i)
    text += (i == 0 ? L"" : L", ") + hotkeyText(free[i]);
  return text + L". It can be changed in the settings.";
}

}  // namespace varnowick
