// The workers behind Flusher, one for each round of flushing.
#pragma once

#include <functional>
#include <utility>

#include "platform/flusher.h"
#include "platform/win32/background.h"

namespace varnowick {

class Win32Flusher final : public Flusher {
 public:
  explicit Win32Flusher(Doorbell& doorbell);
  // A flush that hangs is left behind; it ends with the process.
  ~Win32Flusher() override;

  // From now on this is called when there is a result.
  void notify(std::function<void()> news) { news_ = std::move(news); }

  void begin(std::vector<std::wstring> paths) override;
  std::optional<FileStatus> result() override;
  void wait(unsigned milliseconds) override;

 private:
  struct Flushed {
    unsigned round = 0;
    FileStatus status;
  };
  std::function<void()> news_;
  unsigned round_ = 0;
  std::optional<FileStatus> result_;
  Mailbox<Flushed> flushed_;
  Worker worker_;
};

}  // namespace varnowick
