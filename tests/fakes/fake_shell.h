// Records what is started and answers with prepared results.
#pragma once

#include <string>
#include <vector>

#include "platform/shell.h"

namespace varnowick {

class FakeShell : public Shell {
 public:
  struct Started {
    std::uintptr_t owner = 0;
    std::wstring verb, file, parameters, directory;
    bool operator==(const Started&) const = default;
  };
  std::vector<Started> started;
  std::vector<std::wstring> commandLines;
  std::vector<int> results;  // in turn; 33 when there are none

  int execute(OwnerWindow owner, const std::wstring& verb, const std::wstring& file,
              const std::wstring& parameters, const std::wstring& directory) override {
    started.push_back({owner.value, verb, file, parameters, directory});
    if (results.empty()) return 33;
    const int result = results.front();
    results.erase(results.begin());
    return result;
  }
  bool run(const std::wstring& commandLine) override {
    commandLines.push_back(commandLine);
    return true;
  }
};

}  // namespace varnowick
