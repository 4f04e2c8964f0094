#include "shortcuts/site_icon_fetch.h"

#include <algorithm>
#include <utility>

#include "shortcuts/site_icon.h"

namespace varnowick {
namespace {

constexpr std::uint32_t kOneExchange = 20'000;
constexpr std::uint32_t kAllExchanges = 60'000;
constexpr std::size_t kMaxPictureBytes = 256 * 1024;

}  // namespace

SiteIconSearch::SiteIconSearch(SiteIconRequest request, std::uint32_t millisecondsNow)
    : request_(std::move(request)), begin_(millisecondsNow) {
  if (auto root = siteIconRoot(request_.page)) addresses_.push_back(std::move(*root));
}

std::optional<FetchRequest> SiteIconSearch::next(std::uint32_t millisecondsNow) {
  const std::uint32_t passed = millisecondsNow - begin_;
  if (addresses_.empty() || passed >= kAllExchanges) return std::nullopt;
  FetchRequest request;
  request.url = std::move(addresses_.front());
  addresses_.pop_front();
  request.proxy = request_.proxy;
  request.milliseconds = std::min(kOneExchange, kAllExchanges - passed);
  request.maxBytes = pageCame_ ? kMaxPictureBytes : kMaxPageHead;
  request.keepBeginning = !pageCame_;
  request.publicHostsOnly = true;
  return request;
}

bool SiteIconSearch::came(const FetchReply& reply, TextCodec& codec) {
  if (std::exchange(pageCame_, true)) return reply.ok() && isUsableSiteIcon(reply.bytes);
  // A host that is not there has no pictures either. A page that is missing may still
  // belong to a site that has one.
  if (reply.status == 0) return false;
  const std::string_view head = reply.ok() ? std::string_view(reply.bytes) : std::string_view();
  // The addresses follow from where the page really is.
  for (std::wstring& address : siteIconAddresses(head, reply.finalUrl, request_.edge, codec))
    if (siteIconRoot(address)) addresses_.push_back(std::move(address));
  return false;
}

}  // namespace varnowick
