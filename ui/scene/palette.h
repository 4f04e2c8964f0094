// The colours everything is painted with, worked out once from the settings or,
// in high-contrast mode, from the system's colours. Knows neither nodes' places
// nor any surface.
#pragma once

#include <string>

#include "core/settings.h"
#include "core/units.h"
#include "ui/scene/scene.h"

namespace varnowick {

// A share of 0 gives `from`, of 1 gives `to`.
Colour mix(Colour from, Colour to, float share);
// How well text can be read, from 1 (not at all) to 21; 4.5 reads comfortably.
float contrast(Colour a, Colour b);
// The text colour, or black or white where it could not be read on the ground.
Colour readable(Colour text, Colour ground);

struct Palette {
  bool highContrast = false;   // the nodes' own colours do not count
  bool gradient = true;        // of containers and the main panel
  Colour backTop, backBottom;  // the main panel
  Colour barTop, barBottom;    // title bar and bottom bar
  Colour barEdge, barText, barHover, barPressed;
  Colour text, mutedText;  // on the main panel
  Colour bodyTop, bodyBottom, bodyText;
  Colour titleTop, titleBottom, titleText;
  Colour border, pictureBorder;
  Colour accent, selectedText;
  Colour noteBack, noteText;
  Colour dockStrip;
  bool showDockStrip = true;
  std::wstring captionFace;  // of shortcuts; the rest has the system's face
};

// The system's colours, by their usual names.
struct SystemColours {
  Colour window, windowText, highlight, highlightText, buttonFace, buttonText, grayText;
};

Palette makePalette(const Settings& settings);
Palette makeHighContrastPalette(const Settings& settings, const SystemColours& system);
// The palette inside a container with colours of its own.
Palette inContainer(const Palette& palette, const NodeLook& look);

}  // namespace varnowick
