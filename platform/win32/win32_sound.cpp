#include "platform/win32/win32_sound.h"

#include "platform/win32/multimedia.h"

namespace varnowick {

void Win32Sound::play(const std::wstring& bareFileName) {
  const auto sndPlaySound = Multimedia::get().sndPlaySound;
  if (sndPlaySound != nullptr) sndPlaySound(bareFileName.c_str(), SND_ASYNC | SND_NODEFAULT);
}

}  // namespace varnowick
