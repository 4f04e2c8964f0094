#include "platform/win32/win32_flusher.h"

#include "platform/win32/win32_files.h"

namespace varnowick {
namespace {

constexpr DWORD kEndPatience = 1000;  // ms
// Scanners and backup programs hold a file for a moment.
constexpr int kTries = 20;
constexpr DWORD kPause = 50;  // ms

// Nothing when it was asked to stop before the end.
std::optional<FileStatus> flushAll(const std::vector<std::wstring>& paths, const Stop& stop) {
  Win32Files files;
  int tries = kTries;
  for (auto path = paths.begin(); path != paths.end();) {
    if (stop.asked()) return std::nullopt;
    FileStatus status = files.flush(*path);
    if (status)
      ++path;
    else if (status.kind != FileStatus::Kind::Denied || --tries == 0)
      return status;
    else if (stop.waited(kPause))
      return std::nullopt;
  }
  return FileStatus{};
}

}  // namespace

Win32Flusher::Win32Flusher(Doorbell& doorbell)
    : flushed_(doorbell, [this] {
        if (news_) news_();
      }) {}

Win32Flusher::~Win32Flusher() {
  worker_.stop();
  worker_.wait(kEndPatience);
}

void Win32Flusher::begin(std::vector<std::wstring> paths) {
  result_.reset();
  // Without a worker, or without the memory for it to end, there is never a result,
  // and so the journal stays.
  worker_ = Worker::start(
      [paths = std::move(paths), round = ++round_, done = flushed_.sender()](const Stop& stop) {
        if (auto status = flushAll(paths, stop)) done.send({round, std::move(*status)});
      });
}

std::optional<FileStatus> Win32Flusher::result() {
  for (Flushed& flushed : flushed_.take())
    if (flushed.round == round_) result_ = std::move(flushed.status);
  return result_;
}

void Win32Flusher::wait(unsigned milliseconds) { worker_.wait(milliseconds); }

}  // namespace varnowick
