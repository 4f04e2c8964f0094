#pragma once

#include "platform/shell.h"

namespace varnowick {

class FakeSystem : public System {
 public:
  int version = 5;
  std::wstring program = L"C:\\Program Files\\Varnowick";
  std::wstring applicationData = L"C:\\Data";
  std::wstring system = L"C:\\Windows\\System32";

  int majorVersion() override { return version; }
  std::wstring programFolder() override { return program; }
  std::wstring applicationDataFolder() override { return applicationData; }
  std::wstring systemFolder() override { return system; }
};

}  // namespace varnowick
