#include "platform/win32/background.h"

#include "platform/win32/callback.h"

namespace varnowick {
namespace {

constexpr const wchar_t* kDoorbellClass = L"VarnowickDoorbell";
// Its windows get no other message of the program's own.
constexpr UINT kRing = WM_APP + 15;

struct Work {
  std::function<void(const Stop&)> run;
  Stop stop;
};

DWORD WINAPI runWork(void* context) {
  const std::unique_ptr<Work> work(static_cast<Work*>(context));
  SetErrorMode(SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  guardedCallback(false, [&] {
    work->run(work->stop);
    return true;
  });
  return 0;
}

}  // namespace

Doorbell::Doorbell() {
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = &Doorbell::procedure;
  windowClass.hInstance = instance;
  windowClass.lpszClassName = kDoorbellClass;
  RegisterClassExW(&windowClass);  // fails when it is there already
  window_ = CreateWindowExW(0, kDoorbellClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, instance,
                            nullptr);
  if (window_ != nullptr)
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Doorbell::~Doorbell() {
  if (window_ != nullptr) DestroyWindow(window_);
}

unsigned Doorbell::add(std::function<void()> news) {
  news_[++lastId_] = std::move(news);
  return lastId_;
}

void Doorbell::remove(unsigned id) { news_.erase(id); }

bool Doorbell::ring(unsigned id) {
  const Lock lock(lock_);
  if (rung_.contains(id)) return true;
  if (window_ == nullptr || !PostMessageW(window_, kRing, id, 0)) return false;
  rung_.insert(id);
  return true;
}

void Doorbell::answer(unsigned id) {
  {
    // Before the news are looked at: what comes from here on rings again.
    const Lock lock(lock_);
    rung_.erase(id);
  }
  const auto at = news_.find(id);
  if (at == news_.end()) return;
  // It may remove itself.
  const std::function<void()> news = at->second;
  news();
}

LRESULT CALLBACK Doorbell::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<Doorbell*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message != kRing || self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  return guardedCallback(LRESULT{0}, [&] {
    self->answer(static_cast<unsigned>(wParam));
    return LRESULT{0};
  });
}

Worker& Worker::operator=(Worker&& other) noexcept {
  if (this == &other) return *this;
  stop();
  stop_ = std::move(other.stop_);
  thread_ = std::move(other.thread_);
  return *this;
}

Worker Worker::start(std::function<void(const Stop&)> work) {
  Worker worker;
  worker.stop_.event_ =
      std::make_shared<const KernelHandle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  if (!*worker.stop_.event_) return worker;
  auto context = std::make_unique<Work>(Work{std::move(work), worker.stop_});
  worker.thread_.reset(CreateThread(nullptr, 0, &runWork, context.get(), 0, nullptr));
  if (worker.thread_) context.release();
  return worker;
}

void Worker::stop() const {
  if (thread_) SetEvent(stop_.event());
}

bool Worker::wait(DWORD milliseconds) const {
  return !thread_ || WaitForSingleObject(thread_.get(), milliseconds) == WAIT_OBJECT_0;
}

bool Worker::waitForAll(std::span<const Worker* const> workers, DWORD milliseconds) {
  const DWORD start = GetTickCount();
  bool all = true;
  for (const Worker* worker : workers) {
    const DWORD passed = GetTickCount() - start;
    all = worker->wait(passed < milliseconds ? milliseconds - passed : 0) && all;
  }
  return all;
}

}  // namespace varnowick
