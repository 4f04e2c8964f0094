// What the program asks about the system it runs on and where it stands.
#pragma once

#include "platform/shell.h"

namespace varnowick {

class Win32System : public System {
 public:
  int majorVersion() override;
  std::wstring programFolder() override;
  // Empty when the system does not know one.
  std::wstring applicationDataFolder() override;
  std::wstring systemFolder() override;
};

// With the values of the variables in it; as it is when the system refuses.
std::wstring expandEnvironment(const std::wstring& text);

}  // namespace varnowick
