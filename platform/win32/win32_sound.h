// Wave files through the system's simple sound call.
#pragma once

#include "platform/sound.h"

namespace varnowick {

class Win32Sound : public Sound {
 public:
  // The system looks the name up in the current folder and its own sound folders.
  void play(const std::wstring& bareFileName) override;
};

}  // namespace varnowick
