#include "ui/win/image_loader.h"

#include <array>
#include <utility>

#include "platform/win32/win32_files.h"
#include "ui/win/icon_bitmap.h"
#include "ui/win/picture_decoder.h"

namespace varnowick {

namespace {

// Larger than any window shows, small enough to keep some.
constexpr int kMaxPictureEdge = 2048;
// The sizes that the program's own pictures come in.
constexpr std::array kAssetEdges = {16, 20, 24, 32, 48, 64};

class Lock {
 public:
  explicit Lock(CRITICAL_SECTION& section) : section_(section) { EnterCriticalSection(&section); }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  ~Lock() { LeaveCriticalSection(&section_); }

 private:
  CRITICAL_SECTION& section_;
};

Bitmap loadAsset(const std::wstring& folder, const std::wstring& name, int edge) {
  // Names of assets are ours; one with a path in it is not.
  if (name.empty() || name.find_first_of(L"\\/:*?") != std::wstring::npos) return {};
  const auto tryEdge = [&](int size) {
    return loadPictureFile(folder + L"\\" + name + L"-" + std::to_wstring(size) + L".png",
                           kMaxPictureEdge);
  };
  for (const int size : kAssetEdges) {
    if (size < edge) continue;
    if (Bitmap bitmap = tryEdge(size); !bitmap.empty()) return bitmap;
  }
  for (auto size = kAssetEdges.rbegin(); size != kAssetEdges.rend(); ++size) {
    if (*size >= edge) continue;
    if (Bitmap bitmap = tryEdge(*size); !bitmap.empty()) return bitmap;
  }
  return {};
}

}  // namespace

ImageLoader::ImageLoader(std::wstring imagesFolder)
    : imagesFolder_(std::move(imagesFolder)), wake_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
  InitializeCriticalSection(&lock_);
}

ImageLoader::~ImageLoader() { DeleteCriticalSection(&lock_); }

void ImageLoader::release() {
  if (InterlockedDecrement(&references_) == 0) delete this;
}

bool ImageLoader::start(HWND owner, UINT message) {
  {
    const Lock lock(lock_);
    owner_ = owner;
    message_ = message;
  }
  if (thread_) return true;
  InterlockedIncrement(&references_);  // for the thread
  thread_.reset(CreateThread(nullptr, 0, threadMain, this, 0, nullptr));
  if (thread_) return true;
  release();
  return false;
}

void ImageLoader::request(ImageRequest request) {
  {
    const Lock lock(lock_);
    auto& queue = request.image.source == ImageRef::Source::Asset ? own_
                  : mayBeSlow(request.image.name)                 ? slow_
                                                                  : quick_;
    queue.push_back(std::move(request));
  }
  SetEvent(wake_.get());
}

std::vector<ImageResult> ImageLoader::take() {
  const Lock lock(lock_);
  announced_ = false;
  return std::exchange(results_, {});
}

void ImageLoader::endAndRelease(DWORD milliseconds) {
  {
    const Lock lock(lock_);
    ending_ = true;
    owner_ = nullptr;
  }
  SetEvent(wake_.get());
  if (thread_) WaitForSingleObject(thread_.get(), milliseconds);
  release();
}

Bitmap ImageLoader::load(const std::wstring& imagesFolder, const ImageRef& image, int edge) {
  // The worker must not fall over one picture.
  try {
    switch (image.source) {
      case ImageRef::Source::Asset:
        return loadAsset(imagesFolder, image.name, edge);
      case ImageRef::Source::IconOf:
        return loadIconOf(image.name, edge);
      case ImageRef::Source::PictureFile:
        return loadPictureFile(image.name, kMaxPictureEdge);
      case ImageRef::Source::None:
        break;
    }
  } catch (const std::exception&) {
  }
  return {};
}

bool ImageLoader::next(ImageRequest& request) {
  for (;;) {
    {
      const Lock lock(lock_);
      if (ending_) return false;
      for (auto* queue : {&own_, &quick_, &slow_}) {
        if (queue->empty()) continue;
        request = std::move(queue->front());
        queue->pop_front();
        return true;
      }
    }
    WaitForSingleObject(wake_.get(), INFINITE);
  }
}

void ImageLoader::work() {
  // Missing media must fail, not ask for a disk.
  SetErrorMode(SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  const ComApartment com;
  ImageRequest request;
  while (next(request)) {
    Bitmap bitmap = load(imagesFolder_, request.image, request.edge);
    const Lock lock(lock_);
    results_.push_back({std::move(request), std::move(bitmap)});
    if (owner_ != nullptr && !announced_) {
      announced_ = PostMessageW(owner_, message_, 0, 0) != 0;
    }
  }
}

DWORD WINAPI ImageLoader::threadMain(void* self) {
  auto* loader = static_cast<ImageLoader*>(self);
  loader->work();
  loader->release();
  return 0;
}

}  // namespace varnowick
