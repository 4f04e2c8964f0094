#include "platform/win32/win32_sound.h"

#include <windows.h>
// These rely on it.
#include <mmsystem.h>

namespace varnowick {

void Win32Sound::play(const std::wstring& bareFileName) {
  sndPlaySoundW(bareFileName.c_str(), SND_ASYNC | SND_NODEFAULT);
}

}  // namespace varnowick
