#include "platform/win32/win32_flusher.h"

#include <exception>
#include <utility>

#include "platform/win32/critical_section.h"
#include "platform/win32/win32_files.h"

namespace varnowick {
namespace {

constexpr DWORD kEndPatience = 1000;  // ms
// Scanners and backup programs hold a file for a moment.
constexpr int kTries = 20;
constexpr DWORD kPause = 50;  // ms

KernelHandle makeEvent(bool manual) {
  return KernelHandle(CreateEventW(nullptr, manual, FALSE, nullptr));
}

}  // namespace

// What the thread and the object both hold.
struct Win32Flusher::Shared {
  const KernelHandle work = makeEvent(false);
  const KernelHandle done = makeEvent(true);
  CriticalSection lock;  // around everything below
  std::vector<std::wstring> paths;
  unsigned round = 0;
  bool ending = false;
  std::optional<FileStatus> result;
  HWND window = nullptr;
  UINT message = 0;

  bool ended() {
    const Lock locked(lock);
    return ending;
  }
  // Gives what it flushes, or nothing when something newer waits or the program ends.
  bool next(unsigned of, std::size_t at, std::wstring& path) {
    const Lock locked(lock);
    if (ending || of != round || at >= paths.size()) return false;
    path = paths[at];
    return true;
  }
  void finish(unsigned of, FileStatus status) {
    const Lock locked(lock);
    if (of != round || ending) return;
    result = std::move(status);
    SetEvent(done.get());
    if (window != nullptr) PostMessageW(window, message, 0, 0);
  }
  void flushAll() {
    unsigned of = 0;
    {
      const Lock locked(lock);
      of = round;
    }
    Win32Files files;
    FileStatus status;
    std::wstring path;
    int tries = kTries;
    for (std::size_t at = 0; status && next(of, at, path);) {
      status = files.flush(path);
      if (status) {
        ++at;
      } else if (status.kind == FileStatus::Kind::Denied && --tries > 0) {
        status = {};
        Sleep(kPause);
      }
    }
    finish(of, std::move(status));
  }
};

Win32Flusher::Win32Flusher() : shared_(std::make_shared<Shared>()) {
  auto context = std::make_unique<std::shared_ptr<Shared>>(shared_);
  thread_.reset(CreateThread(nullptr, 0, threadMain, context.get(), 0, nullptr));
  if (thread_) context.release();
}

Win32Flusher::~Win32Flusher() {
  {
    const Lock locked(shared_->lock);
    shared_->ending = true;
    shared_->window = nullptr;
  }
  SetEvent(shared_->work.get());
  WaitForSingleObject(thread_.get(), kEndPatience);
}

void Win32Flusher::notify(HWND window, UINT message) {
  const Lock locked(shared_->lock);
  shared_->window = window;
  shared_->message = message;
}

void Win32Flusher::begin(std::vector<std::wstring> paths) {
  {
    const Lock locked(shared_->lock);
    shared_->paths = std::move(paths);
    shared_->result.reset();
    ++shared_->round;
    ResetEvent(shared_->done.get());
  }
  // Without the thread there is never a result, and so the journal stays.
  SetEvent(shared_->work.get());
}

std::optional<FileStatus> Win32Flusher::result() {
  const Lock locked(shared_->lock);
  return shared_->result;
}

void Win32Flusher::wait(unsigned milliseconds) {
  if (thread_) WaitForSingleObject(shared_->done.get(), milliseconds);
}

DWORD WINAPI Win32Flusher::threadMain(void* context) {
  const std::unique_ptr<std::shared_ptr<Shared>> holder(
      static_cast<std::shared_ptr<Shared>*>(context));
  Shared& shared = **holder;
  for (;;) {
    WaitForSingleObject(shared.work.get(), INFINITE);
    if (shared.ended()) return 0;
    try {
      shared.flushAll();
    } catch (const std::exception&) {
      // Out of memory: no result, the journal stays.
    }
  }
}

}  // namespace varnowick
