// What the system says about colours, contrast and motion, in the scene's terms.
#pragma once

#include "ui/scene/palette.h"

namespace varnowick {

bool systemIsHighContrast();
SystemColours systemColours();
// Whether the user wants windows to move and fade rather than jump.
bool systemAnimates();

}  // namespace varnowick
