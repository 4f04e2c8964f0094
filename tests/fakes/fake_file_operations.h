// Records what is started; the test says how it ended.
#pragma once

#include <utility>
#include <vector>

#include "platform/file_operations.h"

namespace varnowick {

class FakeFileOperations : public FileOperations {
 public:
  std::vector<FileOperation> started;
  std::vector<FileOperationResult> results;
  bool running = false;

  void start(FileOperation operation) override { started.push_back(std::move(operation)); }
  std::vector<FileOperationResult> take() override { return std::exchange(results, {}); }
  bool busy() override { return running; }
};

}  // namespace varnowick
