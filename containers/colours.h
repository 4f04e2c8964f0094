// The colours of containers: lighter and darker ones, what counts as a container's
// own, and giving them to several at once. Knows no dialog and no palette.
#pragma once

#include <optional>
#include <vector>

#include "core/settings.h"
#include "core/workspace.h"

namespace varnowick {

struct ContainerColours {
  Colour back;
  Colour fore;  // of name and captions
  bool operator==(const ContainerColours&) const = default;
};

// Nearer to white or to black by so many hundredths of the way (0 to 100).
Colour lighter(Colour colour, int percent);
Colour darker(Colour colour, int percent);

// The container's own colours. A record with one colour for both has none of its own,
// since it could not be read: it is shown as the settings say, whatever they become.
std::optional<ContainerColours> ownColours(const clsContainer& container);
// What a container without colours of its own is shown in.
ContainerColours usualColours(const Settings& settings);

// Gives all of them the colours; nothing: takes their own away. Of two equal ones the
// text gets black or white instead. Answers those that have changed; slots not in use
// are left out.
std::vector<ContainerSlot> applyColours(Workspace& workspace,
                                        const std::vector<ContainerSlot>& slots,
                                        const std::optional<ContainerColours>& colours);

}  // namespace varnowick
