#include "shortcuts/site_icon_fetch.h"

#include <algorithm>

#include "shortcuts/site_icon.h"

namespace varnowick {
namespace {

constexpr std::uint32_t kOneExchange = 20'000;
constexpr std::uint32_t kAllExchanges = 60'000;
constexpr std::size_t kMaxPictureBytes = 256 * 1024;

}  // namespace

bool fetchSiteIcon(Http& http, TextCodec& codec, const SiteIconRequest& request,
                   const std::function<std::uint32_t()>& millisecondsNow,
                   const std::function<bool(std::string_view)>& decodes) {
  const auto root = siteIconRoot(request.page);
  if (!root) return false;
  const std::uint32_t begin = millisecondsNow();
  const auto left = [&] {
    const std::uint32_t passed = millisecondsNow() - begin;
    return passed < kAllExchanges ? kAllExchanges - passed : 0;
  };
  const HttpReply page =
      http.get({*root, request.proxy, std::min(kOneExchange, left()), kMaxPageHead, true, true});
  // A host that is not there has no pictures either. A page that is missing may
  // still belong to a site that has one.
  if (page.status == 0) return false;
  // The addresses follow from where the page really is.
  const std::wstring& base = page.finalUrl.empty() ? *root : page.finalUrl;
  const std::string_view head = page.ok() ? std::string_view(page.bytes) : std::string_view();
  for (const std::wstring& address : siteIconAddresses(head, base, request.edge, codec)) {
    const std::uint32_t time = std::min(kOneExchange, left());
    if (time == 0) return false;
    if (!siteIconRoot(address)) continue;
    const HttpReply picture =
        http.get({address, request.proxy, time, kMaxPictureBytes, false, true});
    if (picture.ok() && isUsableSiteIcon(picture.bytes) && decodes(picture.bytes)) return true;
  }
  return false;
}

}  // namespace varnowick
