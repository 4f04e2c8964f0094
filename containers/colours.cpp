#include "containers/colours.h"

#include <algorithm>

namespace varnowick {
namespace {

constexpr int kMask = 0xFFFFFF;

Colour towards(Colour colour, int channel, int percent) {
  percent = std::clamp(percent, 0, 100);
  const auto moved = [&](int from) {
    return from + roundHalfToEven((channel - from) * static_cast<double>(percent) / 100.0);
  };
  return rgb(moved(colour.red()), moved(colour.green()), moved(colour.blue()));
}

bool isDark(Colour c) { return 299 * c.red() + 587 * c.green() + 114 * c.blue() < 128'000; }

}  // namespace

Colour lighter(Colour colour, int percent) { return towards(colour, 255, percent); }
Colour darker(Colour colour, int percent) { return towards(colour, 0, percent); }

std::optional<ContainerColours> ownColours(const clsContainer& container) {
  if (container.backColor == container.foreColor) return std::nullopt;
  return ContainerColours{{container.backColor.bgr & kMask}, {container.foreColor.bgr & kMask}};
}

ContainerColours usualColours(const Settings& settings) {
  return {settings.containerFor, settings.foreground};
}

std::vector<ContainerSlot> applyColours(Workspace& workspace,
                                        const std::vector<ContainerSlot>& slots,
                                        const std::optional<ContainerColours>& colours) {
  ContainerColours wanted = colours.value_or(ContainerColours{});
  if (colours && wanted.back == wanted.fore)
    wanted.fore = isDark(wanted.back) ? rgb(255, 255, 255) : rgb(0, 0, 0);
  std::vector<ContainerSlot> changed;
  for (const ContainerSlot slot : slots) {
    clsContainer* container = workspace.containers.find(slot);
    if (container == nullptr ||
        ownColours(*container) == (colours ? std::optional(wanted) : std::nullopt))
      continue;
    container->backColor = wanted.back;
    container->foreColor = wanted.fore;
    changed.push_back(slot);
  }
  return changed;
}

}  // namespace varnowick
