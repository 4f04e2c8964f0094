#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/http.h"

namespace varnowick {

// Answers from a table and keeps what was asked; hosts that it does not know give
// no answer at all.
class FakeHttp : public Http {
 public:
  std::map<std::wstring, HttpReply> replies;
  std::vector<HttpRequest> requests;

  HttpReply get(const HttpRequest& request) override {
    requests.push_back(request);
    const auto at = replies.find(request.url);
    if (at != replies.end()) return at->second;
    return {0, {}, {}, L"no answer"};
  }
};

}  // namespace varnowick
