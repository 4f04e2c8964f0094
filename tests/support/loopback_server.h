// A small web server on this machine for one test: answers by table, exactly the
// bytes it was given. Windows only; the implementation is
// tests/platform/win32/loopback_server.cpp.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace varnowick {

// A whole answer: status line, length, more header lines (each with its "\r\n"), body.
std::string httpAnswer(int status, const std::string& body, const std::string& headers = {});

class LoopbackServer {
 public:
  // What stands in the request line, to raw answers; an empty answer keeps the
  // client waiting until the server ends. What is not in the table gets a 404.
  explicit LoopbackServer(std::map<std::string, std::string> answers);
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;
  ~LoopbackServer();

  std::wstring url(const std::wstring& path) const;  // by number, with http://
  unsigned port() const { return port_; }
  // What was asked for so far, in order.
  std::vector<std::string> asked() const;
  // The requests without their bodies.
  std::vector<std::string> heads() const;

 private:
  struct Inside;  // sockets and the thread
  void serve();
  static unsigned long __stdcall threadMain(void* self);

  const std::map<std::string, std::string> answers_;
  unsigned port_ = 0;
  Inside* inside_;
};

}  // namespace varnowick
