// Looks for the picture that stands for a web site, step by step: its first page, then
// what that names, until one is a picture. Decides only what is asked for next; whoever
// owns it fetches, decodes and keeps.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "platform/fetcher.h"
#include "platform/text_codec.h"

namespace varnowick {

struct SiteIconRequest {
  std::wstring page;   // of the site: http or https
  std::wstring proxy;  // as FetchRequest has it
  int edge = 0;        // wanted, in pixels
};

// Nobody has asked for this: path and query of a shortcut may be secrets, or may
// do something at the server, and stay here. Only the site itself is asked, and
// never this machine or the network around it. The page and each picture may take
// 20 seconds, all together 60.
class SiteIconSearch {
 public:
  SiteIconSearch(SiteIconRequest request, std::uint32_t millisecondsNow);
  // What to fetch now; nothing when there is no picture, or no time left.
  std::optional<FetchRequest> next(std::uint32_t millisecondsNow);
  // What has come of it. True when its bytes may be the picture; what cannot be decoded
  // is not, and next() goes on.
  bool came(const FetchReply& reply, TextCodec& codec);

 private:
  SiteIconRequest request_;
  std::uint32_t begin_;
  bool pageCame_ = false;
  std::deque<std::wstring> addresses_;  // still to be asked for
};

}  // namespace varnowick
