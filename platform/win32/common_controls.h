// The system's library of controls, loaded when the first tooltip, dialog, message
// box or field of text is about to be made: loading it with the program would
// delay every start. With a manifest for its version 6, Windows XP shows none of
// these before it is loaded, so that whoever makes one calls get() first.
#pragma once

#include <windows.h>
// These rely on it.
#include <commctrl.h>

#include "platform/win32/handles.h"

namespace varnowick {

struct CommonControls {
  // nullptr on a system that lacks it.
  decltype(&::ImageList_GetIcon) imageListGetIcon = nullptr;

  static const CommonControls& get() {
    // Never freed: windows of its classes may outlive whoever made them.
    static const CommonControls* const library = new CommonControls;
    return *library;
  }

 private:
  // By its bare name, which alone leads through the manifest to version 6. It is
  // looked for where an imported library would be.
  CommonControls() : module_(LoadLibraryW(L"comctl32.dll")) {
    if (!module_) return;
    const auto bind = [this](const char* name) {
      return reinterpret_cast<void*>(GetProcAddress(module_.get(), name));
    };
    imageListGetIcon = reinterpret_cast<decltype(imageListGetIcon)>(bind("ImageList_GetIcon"));
    if (const auto initialise =
            reinterpret_cast<decltype(&::InitCommonControlsEx)>(bind("InitCommonControlsEx"))) {
      INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES};
      initialise(&controls);
    }
  }
  ModuleHandle module_;
};

}  // namespace varnowick
