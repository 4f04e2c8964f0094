// Requests over http and https beside the window's thread, several side by side. One
// request is one exchange, redirects included, under one deadline and one size limit.
// Knows neither pages nor feeds. Whatever the other side sends is hostile.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace varnowick {

enum class FetchFailure {
  None,
  NoName,   // the name of the server or the proxy is not known
  Refused,  // nobody there takes the connection
  TimedOut,
  Lost,  // the connection, or what it is made of
  Certificate,
  NotUnderstood,  // the answer is none, or packed in a way that is not
  TooLarge,
  BadRedirect,   // in a circle, to nowhere, or where nothing is fetched from
  NotSupported,  // nothing has been sent: by the request, or by the system
};

// Names as they were sent; whoever looks for one ignores case.
using FetchHeaders = std::vector<std::pair<std::string, std::string>>;

struct FetchRequest {
  std::wstring url{};
  std::string method = "GET";
  FetchHeaders headers{};
  std::string body{};
  // As a user enters it: "host:port" with or without a scheme; "" and "0": none.
  std::wstring proxy{};
  std::uint32_t milliseconds = 150'000;  // from the first connection to the last byte
  std::size_t maxBytes = 16U << 20;      // packed and unpacked
  // What is longer is cut off there instead of being refused.
  bool keepBeginning = false;
  // Neither this machine nor the network around it is asked, wherever the server
  // refers to: for what nobody has asked for.
  bool publicHostsOnly = false;
};

struct FetchReply {
  int id = 0;
  int status = 0;  // 0: there was no answer
  FetchHeaders headers{};
  std::string bytes{};      // of the body, unpacked; empty unless it is whole, or cut as asked
  std::wstring finalUrl{};  // after redirects; empty when there was no answer
  FetchFailure failure = FetchFailure::None;
  std::wstring reason{};  // of the failure, one line for the user
  bool ok() const { return failure == FetchFailure::None && status >= 200 && status < 300; }
};

// Of one user: nobody else takes what has come for it.
class Fetcher {
 public:
  virtual ~Fetcher() = default;
  // Never waits. The number is never 0, and never given twice.
  virtual int start(FetchRequest request) = 0;
  // It never answers from here on. Harmless when it has.
  virtual void cancel(int id) = 0;
  // What has ended since the last call.
  virtual std::vector<FetchReply> take() = 0;
};

class Fetchers {
 public:
  virtual ~Fetchers() = default;
  // `finished` is called when there is something to take(), in the caller's thread.
  virtual std::unique_ptr<Fetcher> make(std::function<void()> finished) = 0;
};

}  // namespace varnowick
