#include "ui/scene/icon_ref.h"

#include "core/web_address.h"
#include "shortcuts/addresses.h"
#include "shortcuts/paths.h"

namespace varnowick {

ImageRef iconRefFor(const clsShortcut& shortcut, System& system) {
  if (shortcut.Icon.empty() &&
      shortcut.ShortcutType == static_cast<int>(ShortcutKindCode::WebAddress)) {
    // It may have been entered without its scheme.
    if (auto address = wholeAddress(shortcut.Path); address && parseWebAddress(*address))
      return {ImageRef::Source::IconOf, std::move(*address)};
  }
  return {ImageRef::Source::IconOf, EffectivePath(shortcut, true, system)};
}

}  // namespace varnowick
