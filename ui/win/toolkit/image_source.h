// Where a canvas gets the pictures behind ImageRef.
#pragma once

#include "core/units.h"
#include "ui/scene/canvas.h"
#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

class ImageSource {
 public:
  virtual ~ImageSource() = default;
  // The picture at exactly that size, or the placeholder, or nullptr when there is
  // neither; what is not there yet is asked for. Good until the next call.
  virtual const Bitmap* find(const ImageRef& image, Size<Pixels> size) = 0;
  // A picture file at the size it was loaded in, or nullptr. Asks as find() does.
  virtual const Bitmap* findUnscaled(const ImageRef& image) = 0;
  // Whether find() gives the picture itself. Asks as find() does.
  virtual ImageState state(const ImageRef& image, Size<Pixels> size) = 0;
};

}  // namespace varnowick
