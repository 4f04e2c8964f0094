// Short wave files, played asynchronously; a missing file is silent.
#pragma once

#include <string>

namespace varnowick {

class Sound {
 public:
  virtual ~Sound() = default;
  virtual void play(const std::wstring& bareFileName) = 0;
};

}  // namespace varnowick
