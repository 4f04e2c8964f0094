#include "ui/win/toolkit/drop_reading.h"

#include <utility>

#include "platform/win32/win32_files.h"
#include "platform/win32/win32_system.h"
#include "platform/win32/win32_text_codec.h"

namespace varnowick {
namespace {

constexpr SIZE_T kStackBytes = 512 * 1024;

void lookAt(DroppedPath& path) {
  WIN32_FILE_ATTRIBUTE_DATA about{};
  if (!GetFileAttributesExW(path.path.c_str(), GetFileExInfoStandard, &about)) return;
  path.isFolder = (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  path.size = (static_cast<std::uint64_t>(about.nFileSizeHigh) << 32) | about.nFileSizeLow;
}

}  // namespace

DropReading::DropReading(Dropped dropped, bool extractURLs, HWND window, UINT message)
    : dropped_(std::move(dropped)),
      extractURLs_(extractURLs),
      window_(window),
      message_(message),
      done_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

std::shared_ptr<DropReading> DropReading::begin(Dropped dropped, bool extractURLs, HWND window,
                                                UINT message) {
  const std::shared_ptr<DropReading> reading(
      new DropReading(std::move(dropped), extractURLs, window, message));
  auto held = std::make_unique<std::shared_ptr<DropReading>>(reading);
  const KernelHandle thread(CreateThread(nullptr, kStackBytes, threadMain, held.get(), 0, nullptr));
  if (thread)
    held.release();
  else
    threadMain(held.release());
  return reading;
}

DWORD WINAPI DropReading::threadMain(void* held) {
  const std::unique_ptr<std::shared_ptr<DropReading>> self(
      static_cast<std::shared_ptr<DropReading>*>(held));
  DropReading& reading = **self;
  try {
    reading.read();
  } catch (...) {
    // Not enough memory: nothing has been dropped.
  }
  SetEvent(reading.done_.get());
  PostMessageW(reading.window_, reading.message_, 0, 0);
  return 0;
}

void DropReading::read() {
  // The thread may outlive those of the program.
  Win32Files files;
  Win32TextCodec codec;
  for (DroppedPath& path : dropped_.paths) lookAt(path);
  records_ = recordsFromDrop(dropped_, extractURLs_, {files, codec, &expandEnvironment});
}

}  // namespace varnowick
