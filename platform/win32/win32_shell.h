// Starting things through the shell.
#pragma once

#include "platform/shell.h"

namespace varnowick {

class Win32Shell : public Shell {
 public:
  // COM must be initialised on the calling thread: handlers may be COM servers.
  int execute(OwnerWindow owner, const std::wstring& verb, const std::wstring& file,
              const std::wstring& parameters, const std::wstring& directory) override;
  bool run(const std::wstring& commandLine) override;
};

}  // namespace varnowick
