#include "ui/win/images/site_icons.h"

#include <windows.h>

#include <algorithm>
#include <utility>

namespace varnowick {
namespace {

constexpr std::size_t kMostSearches = 6;

}  // namespace

SiteIcons::SiteIcons(Fetchers& fetchers, Came came)
    : came_(std::move(came)), fetcher_(fetchers.make([this] { arrived(); })) {}

void SiteIcons::fetch(const ImageRequest& request, const std::wstring& proxy) {
  if (searches_.contains(request.generation)) return goOn(request.generation);
  waiting_.push_back({request, proxy});
  startWaiting();
}

void SiteIcons::done(const ImageRequest& request) {
  if (searches_.erase(request.generation) != 0) startWaiting();
}

void SiteIcons::startWaiting() {
  while (!waiting_.empty() && searches_.size() < kMostSearches) {
    Waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    const unsigned generation = next.request.generation;
    SiteIconSearch steps({next.request.image.name, std::move(next.proxy), next.request.edge},
                         GetTickCount());
    searches_.emplace(generation, Search{std::move(next.request), std::move(steps)});
    goOn(generation);
  }
}

void SiteIcons::goOn(unsigned generation) {
  const auto at = searches_.find(generation);
  if (auto next = at->second.steps.next(GetTickCount())) {
    at->second.fetching = fetcher_->start(std::move(*next));
    return;
  }
  const ImageRequest request = std::move(at->second.request);
  searches_.erase(at);
  came_(request, {});
  startWaiting();
}

void SiteIcons::arrived() {
  for (FetchReply& reply : fetcher_->take()) {
    const auto at = std::find_if(searches_.begin(), searches_.end(), [&](const auto& search) {
      return search.second.fetching == reply.id;
    });
    if (at == searches_.end()) continue;
    at->second.fetching = 0;
    if (at->second.steps.came(reply, codec_))
      came_(at->second.request, std::move(reply.bytes));
    else
      goOn(at->first);
  }
}

}  // namespace varnowick
