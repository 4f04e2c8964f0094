// What the system says about colours and contrast, in the scene's terms.
#pragma once

#include "ui/scene/palette.h"

namespace varnowick {

bool systemIsHighContrast();
SystemColours systemColours();

}  // namespace varnowick
