// How large a picture is shown when it is new. Knows numbers only; what a file claims
// to be is read elsewhere.
#pragma once

#include "core/units.h"

namespace varnowick {

// On each side of a picture its frame takes this much.
inline constexpr Twips kPictureFrame{60};
inline constexpr Size<Twips> kLeastPictureSize{{240}, {240}};

// The extent of a picture with its frame: as many pixels as the picture has, shrunk to
// fit into the room, keeping its shape. Never less than kLeastPictureSize, which is
// what a picture of no size gets.
Size<Twips> newPictureSize(Size<Pixels> picture, Density density, Size<Twips> room);

}  // namespace varnowick
