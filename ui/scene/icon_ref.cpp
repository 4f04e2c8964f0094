#include "ui/scene/icon_ref.h"

#include "shortcuts/addresses.h"
#include "shortcuts/paths.h"
#include "shortcuts/site_icon.h"

namespace varnowick {

ImageRef iconRefFor(const clsShortcut& shortcut, System& system) {
  // A site is asked for its icon in the background. One that asks before it starts
  // is not to be touched before it has asked.
  if (shortcut.Icon.empty() && !shortcut.Confirm &&
      shortcut.ShortcutType == static_cast<int>(ShortcutKindCode::WebAddress)) {
    // It may have been entered without its scheme.
    const auto address = wholeAddress(shortcut.Path);
    if (auto root = address ? siteIconRoot(*address) : std::nullopt; root)
      return {ImageRef::Source::IconOf, std::move(*root)};
  }
  // What asks before it starts may have come from a text: then the server that it names
  // is not to be asked for an icon either, and the icon of the kind stands for it.
  if (shortcut.Icon.empty() && shortcut.Confirm && !shortcut.Command &&
      isServerPath(shortcut.Path)) {
    const std::size_t dot = shortcut.Path.rfind(L'.');
    const bool hasKind = dot != std::wstring::npos && dot > shortcut.Path.rfind(L'\\');
    return {ImageRef::Source::IconOf, L"*" + (hasKind ? shortcut.Path.substr(dot) : L".-")};
  }
  return {ImageRef::Source::IconOf, EffectivePath(shortcut, true, system)};
}

}  // namespace varnowick
