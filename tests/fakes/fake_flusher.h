// A flusher without a thread: it flushes when it is told to, one file at a time, or
// wholly as soon as it is waited for.
#pragma once

#include <utility>

#include "platform/flusher.h"

namespace varnowick {

class FakeFlusher : public Flusher {
 public:
  explicit FakeFlusher(Files& files) : files_(files) {}

  void begin(std::vector<std::wstring> paths) override {
    paths_ = std::move(paths);
    at_ = 0;
    status_ = {};
    begun_ = true;
  }
  void step() {
    if (begun_ && status_ && at_ < paths_.size()) status_ = files_.flush(paths_[at_++]);
  }
  std::optional<FileStatus> result() override {
    if (!begun_ || (status_ && at_ < paths_.size())) return std::nullopt;
    return status_;
  }
  void wait(unsigned) override {
    while (begun_ && !result()) step();
  }

 private:
  Files& files_;
  std::vector<std::wstring> paths_;
  std::size_t at_ = 0;
  FileStatus status_;
  bool begun_ = false;
};

}  // namespace varnowick
