// A platform of fakes, a window that shows shortcuts, and a foreground window.
#pragma once

#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/platform.h"
#include "shortcuts/launch.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_msg_box.h"
#include "tests/fakes/fake_screen.h"
#include "tests/fakes/fake_shell.h"
#include "tests/fakes/fake_sound.h"
#include "tests/fakes/fake_system.h"
#include "tests/fakes/memory_files.h"

namespace varnowick {

class StillClock : public Clock {
 public:
  std::uint64_t milliseconds() override { return 0; }
  LocalTime now() override { return {}; }
};

class FakeHost : public LaunchHost {
 public:
  bool main = true;
  bool suppressed = false;
  int preLaunches = 0;
  std::wstring seenAs;  // empty: paths as they are

  bool isMainWindow() const override { return main; }
  bool launchSuppressed() const override { return suppressed; }
  void PreLaunch() override { ++preLaunches; }
  OwnerWindow ownerWindow() const override { return {main ? 7U : 8U}; }
  std::wstring pathForSystem(const std::wstring& path) const override {
    return seenAs.empty() ? path : seenAs;
  }
};

class FakeForeground : public ForegroundWindow {
 public:
  std::uintptr_t window = 5;
  std::vector<std::uintptr_t> brought;
  std::uintptr_t current() override { return window; }
  void set(std::uintptr_t w) override { brought.push_back(w); }
};

struct LaunchWorld {
  MemoryFiles files;
  FakeCodec codec;
  FakeMsgBox msgBox;
  FakeShell shell;
  FakeSystem system;
  FakeSound sound;
  StillClock clock;
  FakeCursor cursor;
  FakeMonitors monitors;
  Platform platform{files, codec, msgBox, shell, system, sound, clock, cursor, monitors};
  FakeHost host;
  FakeForeground foreground;
};

}  // namespace varnowick
