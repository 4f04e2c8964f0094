// Fetcher on workers, one for each request that is under way. What is more than a few
// waits for its turn.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/fetcher.h"
#include "platform/win32/background.h"

namespace varnowick {

class Win32Fetcher final : public Fetcher {
 public:
  Win32Fetcher(Doorbell& doorbell, std::function<void()> finished);
  // Gives up what is under way.
  ~Win32Fetcher() override;

  int start(FetchRequest request) override;
  void cancel(int id) override;
  std::vector<FetchReply> take() override;

 private:
  struct Waiting {
    int id = 0;
    FetchRequest request;
  };
  void startWaiting();
  void collect();

  const std::function<void()> finished_;
  int lastId_ = 0;
  std::deque<Waiting> waiting_;
  struct Running {
    Worker worker;
    bool cancelled = false;
  };
  std::map<int, Running> running_;
  std::vector<FetchReply> replies_;
  Mailbox<FetchReply> arrived_;
};

class Win32Fetchers final : public Fetchers {
 public:
  explicit Win32Fetchers(Doorbell& doorbell) : doorbell_(doorbell) {}
  std::unique_ptr<Fetcher> make(std::function<void()> finished) override {
    return std::make_unique<Win32Fetcher>(doorbell_, std::move(finished));
  }

 private:
  Doorbell& doorbell_;
};

}  // namespace varnowick
