// Fetches the picture that stands for a web site: its first page, then what that
// names, until one is a picture. Decides only what is asked for; knows no cache.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/http.h"
#include "platform/text_codec.h"

namespace varnowick {

struct SiteIconRequest {
  std::wstring page;   // of the site: http or https
  std::wstring proxy;  // as HttpRequest has it
  int edge = 0;        // wanted, in pixels
};

// Nobody has asked for this: path and query of a shortcut may be secrets, or may
// do something at the server, and stay here. Only the site itself is asked, and
// never this machine or the network around it.
//
// The first picture that passes isUsableSiteIcon and that `decodes` says true to;
// false when there is none. The page and each picture may take 20 seconds, all
// together 60.
bool fetchSiteIcon(Http& http, TextCodec& codec, const SiteIconRequest& request,
                   const std::function<std::uint32_t()>& millisecondsNow,
                   const std::function<bool(std::string_view)>& decodes);

}  // namespace varnowick
