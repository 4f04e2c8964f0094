#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/fetcher.h"

namespace varnowick {

// Keeps what was asked for and answers when it is told to.
class FakeFetcher : public Fetcher {
 public:
  struct Asked {
    int id = 0;
    FetchRequest request;
  };
  explicit FakeFetcher(std::function<void()> finished = {}) : finished_(std::move(finished)) {}

  std::vector<Asked> requests;  // all of them, in order
  std::vector<int> cancelled;

  // The oldest request for that address that has no answer yet; false when there is
  // none.
  bool answer(const std::wstring& url, FetchReply reply) {
    for (const Asked& asked : requests) {
      if (asked.request.url != url || std::erase(open_, asked.id) == 0) continue;
      reply.id = asked.id;
      if (reply.finalUrl.empty() && reply.status != 0) reply.finalUrl = url;
      replies_.push_back(std::move(reply));
      if (finished_) finished_();
      return true;
    }
    return false;
  }

  int start(FetchRequest request) override {
    requests.push_back({++lastId_, std::move(request)});
    open_.push_back(lastId_);
    return lastId_;
  }
  void cancel(int id) override {
    std::erase(open_, id);
    std::erase_if(replies_, [id](const FetchReply& reply) { return reply.id == id; });
    cancelled.push_back(id);
  }
  std::vector<FetchReply> take() override { return std::exchange(replies_, {}); }

 private:
  std::function<void()> finished_;
  std::vector<int> open_;
  std::vector<FetchReply> replies_;
  int lastId_ = 0;
};

class FakeFetchers : public Fetchers {
 public:
  std::vector<FakeFetcher*> made;
  std::unique_ptr<Fetcher> make(std::function<void()> finished) override {
    auto fetcher = std::make_unique<FakeFetcher>(std::move(finished));
    made.push_back(fetcher.get());
    return fetcher;
  }
};

}  // namespace varnowick
