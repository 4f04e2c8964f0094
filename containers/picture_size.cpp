#include "containers/picture_size.h"

#include <algorithm>

namespace varnowick {

Size<Twips> newPictureSize(Size<Pixels> picture, Density density, Size<Twips> room) {
  if (picture.width.value <= 0 || picture.height.value <= 0) return kLeastPictureSize;
  const Twips frame = kPictureFrame * 2;
  const Size<Twips> natural{density.toTwips(picture.width), density.toTwips(picture.height)};
  const float across = std::max(room.width - frame, Twips{1}).value / natural.width.value;
  const float along = std::max(room.height - frame, Twips{1}).value / natural.height.value;
  const float shrink = std::min({1.0F, across, along});
  return {std::max(natural.width * shrink + frame, kLeastPictureSize.width),
          std::max(natural.height * shrink + frame, kLeastPictureSize.height)};
}

}  // namespace varnowick
