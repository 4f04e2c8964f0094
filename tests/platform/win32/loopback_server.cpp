// clang-format off: it goes before everything that may bring in its predecessor,
// as the standard headers of this thread model do.
#include <winsock2.h>
// clang-format on

#include "platform/win32/critical_section.h"
#include "platform/win32/handles.h"
#include "tests/support/loopback_server.h"

namespace varnowick {

struct LoopbackServer::Inside {
  SOCKET listener = INVALID_SOCKET;
  std::vector<SOCKET> silent;
  KernelHandle thread;
  CriticalSection lock;  // around the rest
  std::vector<std::string> asked;
  std::vector<std::string> heads;
  bool ending = false;
};

namespace {

sockaddr_in loopback(unsigned port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<u_short>(port));
  return address;
}

// Once the whole head has come.
std::string readHead(SOCKET client) {
  std::string head;
  char buffer[2048];
  while (head.find("\r\n\r\n") == std::string::npos) {
    const int got = recv(client, buffer, sizeof buffer, 0);
    if (got <= 0) return {};
    head.append(buffer, static_cast<std::size_t>(got));
  }
  return head;
}

std::string targetOf(const std::string& head) {
  const std::size_t begin = head.find(' ') + 1;
  return head.substr(begin, head.find(' ', begin) - begin);
}

void sendAll(SOCKET client, const std::string& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const int sent = send(client, bytes.data() + done, static_cast<int>(bytes.size() - done), 0);
    if (sent <= 0) return;
    done += static_cast<std::size_t>(sent);
  }
}

}  // namespace

std::string httpAnswer(int status, const std::string& body, const std::string& headers) {
  return "HTTP/1.1 " + std::to_string(status) +
         " x\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
         headers + "\r\n" + body;
}

LoopbackServer::LoopbackServer(std::map<std::string, std::string> answers)
    : answers_(std::move(answers)), inside_(new Inside) {
  WSADATA data{};
  WSAStartup(MAKEWORD(2, 2), &data);
  inside_->listener = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  sockaddr_in address = loopback(0);
  int size = sizeof address;
  bind(inside_->listener, reinterpret_cast<sockaddr*>(&address), size);
  getsockname(inside_->listener, reinterpret_cast<sockaddr*>(&address), &size);
  port_ = ntohs(address.sin_port);
  listen(inside_->listener, SOMAXCONN);
  inside_->thread.reset(CreateThread(nullptr, 0, threadMain, this, 0, nullptr));
}

LoopbackServer::~LoopbackServer() {
  {
    const Lock lock(inside_->lock);
    inside_->ending = true;
  }
  // Wakes the thread, which then sees that it is over.
  const SOCKET caller = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  const sockaddr_in address = loopback(port_);
  connect(caller, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  WaitForSingleObject(inside_->thread.get(), INFINITE);
  closesocket(caller);
  for (const SOCKET client : inside_->silent) closesocket(client);
  closesocket(inside_->listener);
  WSACleanup();
  delete inside_;
}

std::wstring LoopbackServer::url(const std::wstring& path) const {
  return L"http://127.0.0.1:" + std::to_wstring(port_) + path;
}

std::vector<std::string> LoopbackServer::asked() const {
  const Lock lock(inside_->lock);
  return inside_->asked;
}

std::vector<std::string> LoopbackServer::heads() const {
  const Lock lock(inside_->lock);
  return inside_->heads;
}

void LoopbackServer::serve() {
  for (;;) {
    const SOCKET client = accept(inside_->listener, nullptr, nullptr);
    {
      const Lock lock(inside_->lock);
      if (inside_->ending || client == INVALID_SOCKET) {
        if (client != INVALID_SOCKET) closesocket(client);
        return;
      }
    }
    const std::string head = readHead(client);
    const std::string target = targetOf(head);
    {
      const Lock lock(inside_->lock);
      inside_->heads.push_back(head);
      inside_->asked.push_back(target);
    }
    const auto at = answers_.find(target);
    if (at != answers_.end() && at->second.empty()) {
      inside_->silent.push_back(client);
      continue;
    }
    sendAll(client, at == answers_.end() ? httpAnswer(404, "not here") : at->second);
    shutdown(client, SD_SEND);
    closesocket(client);
  }
}

unsigned long __stdcall LoopbackServer::threadMain(void* self) {
  static_cast<LoopbackServer*>(self)->serve();
  return 0;
}

}  // namespace varnowick
