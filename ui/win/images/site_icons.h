// Fetches the icons of web sites, a few sites at a time. Knows neither the cache nor
// how pictures are decoded.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/fetcher.h"
#include "platform/win32/win32_text_codec.h"
#include "shortcuts/site_icon_fetch.h"
#include "ui/win/images/image_loader.h"

namespace varnowick {

class SiteIcons {
 public:
  // `came` gets the bytes of what may be the icon; empty when there is none.
  using Came = std::function<void(const ImageRequest&, std::string bytes)>;
  SiteIcons(Fetchers& fetchers, Came came);
  SiteIcons(const SiteIcons&) = delete;
  SiteIcons& operator=(const SiteIcons&) = delete;

  // The icon of the request's address; again with the same request when what came was
  // none, for the next that may be it. The proxy is as FetchRequest has it.
  void fetch(const ImageRequest& request, const std::wstring& proxy);
  // What came is the icon, or nobody wants one any more: another site may have its turn.
  // Harmless for what is not being looked for.
  void done(const ImageRequest& request);

 private:
  struct Search {
    ImageRequest request;
    SiteIconSearch steps;
    int fetching = 0;  // 0: what came is being decoded
  };
  struct Waiting {
    ImageRequest request;
    std::wstring proxy;
  };
  void arrived();
  void goOn(unsigned generation);
  void startWaiting();

  const Came came_;
  Win32TextCodec codec_;
  std::map<unsigned, Search> searches_;  // by the request's generation
  std::deque<Waiting> waiting_;
  const std::unique_ptr<Fetcher> fetcher_;
};

}  // namespace varnowick
