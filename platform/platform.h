// The outside world as the rules see it: one struct of small interfaces, passed
// by reference. Tests hand in fakes; the program hands in platform/win32.
#pragma once

namespace varnowick {

class Files;
class TextCodec;
class MsgBox;
class Shell;
class System;
class Sound;
class Clock;
class Cursor;
class Monitors;

struct Platform {
  Files& files;
  TextCodec& codec;
  MsgBox& msgBox;
  Shell& shell;
  System& system;
  Sound& sound;
  Clock& clock;
  Cursor& cursor;
  Monitors& monitors;
};

}  // namespace varnowick
