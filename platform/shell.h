// Starting things and asking the shell and the system about the program's surroundings.
#pragma once

#include <cstdint>
#include <string>

namespace varnowick {

// A window handed through to the platform as the owner of what it shows; rules
// never look inside.
struct OwnerWindow {
  std::uintptr_t value = 0;
};

class Shell {
 public:
  virtual ~Shell() = default;
  // ShellExecute with show-normal. Above 32 is success; 0 to 32 as documented
  // for ShellExecute. An empty verb means none.
  virtual int execute(OwnerWindow owner, const std::wstring& verb, const std::wstring& file,
                      const std::wstring& parameters, const std::wstring& directory) = 0;
  // Runs a command line with normal focus. False when it could not be started.
  virtual bool run(const std::wstring& commandLine) = 0;
};

class System {
 public:
  virtual ~System() = default;
  virtual int majorVersion() = 0;
  // Without a trailing backslash, except for the root of a drive ("C:\").
  virtual std::wstring programFolder() = 0;
  virtual std::wstring applicationDataFolder() = 0;
  virtual std::wstring systemFolder() = 0;
};

}  // namespace varnowick
