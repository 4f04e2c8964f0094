// Requests over http and https. One call is one exchange, redirects included,
// under one deadline and one size limit. Asked for on worker threads, which may
// wait; knows neither pages nor feeds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace varnowick {

struct HttpRequest {
  std::wstring url;
  // As a user enters it: "host:port" with or without a scheme; "" and "0": none.
  std::wstring proxy;
  std::uint32_t milliseconds = 150'000;  // from the call to the last byte
  std::size_t maxBytes = 16U << 20;
  // What is longer is cut off there instead of being refused.
  bool keepBeginning = false;
  // Neither this machine nor the network around it is asked, wherever the server
  // refers to: for what nobody has asked for.
  bool publicHostsOnly = false;
};

struct HttpReply {
  int status = 0;         // 0: there was no answer, and error says why
  std::string bytes;      // of the body; empty unless it is whole, or cut as asked
  std::wstring finalUrl;  // after redirects
  std::wstring error;     // one line for the user; empty when all went well
  bool ok() const { return error.empty() && status >= 200 && status < 300; }
};

class Http {
 public:
  virtual ~Http() = default;
  // Returns at the latest when the time is up. Never throws for what the other
  // side does. May be called from several threads at once.
  virtual HttpReply get(const HttpRequest& request) = 0;
};

}  // namespace varnowick
