// The few functions of the system's multimedia library that the program uses,
// found when first needed: loading the library with the program would delay every
// start, and most starts neither sound nor slide.
#pragma once

#include <windows.h>
// These rely on it.
#include <mmsystem.h>

#include "platform/win32/handles.h"

namespace varnowick {

struct Multimedia {
  // Each is nullptr on a system that lacks it.
  decltype(&::sndPlaySoundW) sndPlaySound = nullptr;
  decltype(&::timeBeginPeriod) timeBeginPeriod = nullptr;
  decltype(&::timeEndPeriod) timeEndPeriod = nullptr;

  static const Multimedia& get() {
    // Never freed: a sound may still be playing while the program ends.
    static const Multimedia* const functions = new Multimedia;
    return *functions;
  }

 private:
  Multimedia() : library_(L"winmm.dll") {
    library_.bind("sndPlaySoundW", sndPlaySound);
    library_.bind("timeBeginPeriod", timeBeginPeriod);
    library_.bind("timeEndPeriod", timeEndPeriod);
  }
  SystemLibrary library_;
};

}  // namespace varnowick
