#pragma once

#include <string>
#include <vector>

#include "platform/sound.h"

namespace varnowick {

class FakeSound : public Sound {
 public:
  std::vector<std::wstring> played;
  void play(const std::wstring& bareFileName) override { played.push_back(bareFileName); }
};

}  // namespace varnowick
