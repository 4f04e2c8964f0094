#include "platform/win32/win32_fetcher.h"

#include <utility>

#include "platform/win32/http_exchange.h"

namespace varnowick {
namespace {

constexpr std::size_t kMostThreads = 8;
// The engine lets go at once; should it not, it is left behind.
constexpr DWORD kEndMilliseconds = 200;

}  // namespace

Win32Fetcher::Win32Fetcher(Doorbell& doorbell, std::function<void()> finished)
    : finished_(std::move(finished)), arrived_(doorbell, [this] { collect(); }) {}

Win32Fetcher::~Win32Fetcher() {
  std::vector<const Worker*> all;
  for (const auto& [id, running] : running_) all.push_back(&running.worker);
  for (const Worker* worker : all) worker->stop();
  Worker::waitForAll(all, kEndMilliseconds);
}

int Win32Fetcher::start(FetchRequest request) {
  waiting_.push_back({++lastId_, std::move(request)});
  startWaiting();
  return lastId_;
}

void Win32Fetcher::startWaiting() {
  while (!waiting_.empty() && running_.size() < kMostThreads) {
    const Waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    Worker worker = Worker::start(
        [id = next.id, request = next.request, done = arrived_.sender()](const Stop& stop) {
          FetchReply reply = exchangeOverHttp(request, stop.event());
          reply.id = id;
          done.send(std::move(reply));
        });
    if (!worker) {
      FetchReply reply;
      reply.id = next.id;
      reply.failure = FetchFailure::Lost;
      reply.reason = L"There is not enough memory.";
      arrived_.sender().send(std::move(reply));
    }
    running_.emplace(next.id, Running{std::move(worker)});
  }
}

void Win32Fetcher::cancel(int id) {
  std::erase_if(waiting_, [id](const Waiting& waiting) { return waiting.id == id; });
  std::erase_if(replies_, [id](const FetchReply& reply) { return reply.id == id; });
  const auto running = running_.find(id);
  if (running == running_.end()) return;
  running->second.cancelled = true;
  running->second.worker.stop();
}

void Win32Fetcher::collect() {
  const std::size_t before = replies_.size();
  for (FetchReply& reply : arrived_.take()) {
    const auto running = running_.extract(reply.id);
    if (running && !running.mapped().cancelled) replies_.push_back(std::move(reply));
  }
  startWaiting();
  if (replies_.size() == before) return;
  // It may do away with this.
  const std::function<void()> finished = finished_;
  finished();
}

std::vector<FetchReply> Win32Fetcher::take() { return std::exchange(replies_, {}); }

}  // namespace varnowick
