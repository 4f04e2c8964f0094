// What the windows of the program share: the outside world, the document, and what
// is costly to have twice. Owned by the main window; everything is borrowed.
#pragma once

#include "core/document.h"
#include "platform/platform.h"
#include "ui/win/images/image_store.h"
#include "ui/win/toolkit/gdi_text.h"
#include "ui/win/toolkit/modal.h"

namespace varnowick {

class FolderContainers;

struct Desk {
  Platform platform;
  Document& document;
  const Settings& settings;  // of the document; only the main window changes them
  ImageStore& images;
  GdiFonts& fonts;
  GdiTextMeasure& measure;
  ModalDepth& modal;
  FolderContainers* folders = nullptr;  // null where no folders are shown
};

}  // namespace varnowick
