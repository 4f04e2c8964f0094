#include "ui/win/images/image_loader.h"

#include <exception>
#include <utility>

#include "ui/win/images/icon_bitmap.h"
#include "ui/win/images/image_work.h"
#include "ui/win/images/picture_decoder.h"

namespace varnowick {

namespace {

// A worker that takes longer is waiting for something that does not answer.
constexpr DWORD kEndMilliseconds = 200;
// Larger than any window shows, small enough to keep some.
constexpr int kMaxPictureEdge = 2048;
// The sizes that the program's own pictures come in.
constexpr std::array kAssetEdges = {16, 20, 24, 32, 48, 64};

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
    : work_(std::make_shared<ImageWork>(std::move(imagesFolder))) {
  static_assert(kLanes == ImageWork::kLanes);
}

ImageLoader::~ImageLoader() {
  std::array<const Worker*, kLanes> all{};
  for (std::size_t i = 0; i < kLanes; ++i) {
    workers_[i].stop();
    all[i] = &workers_[i];
  }
  Worker::waitForAll(all, kEndMilliseconds);
}

void ImageLoader::useCache(const std::wstring& dataFolder) { work_->useCache(dataFolder); }

void ImageLoader::setWeb(bool allowed) { work_->setWeb(allowed); }

void ImageLoader::start(Doorbell& doorbell, std::function<void()> news) {
  results_.emplace(doorbell, std::move(news));
  work_->sendTo(results_->sender());
  for (std::size_t i = 0; i < kLanes; ++i) {
    workers_[i] = Worker::start([work = work_, i](const Stop& stop) {
      work->run(static_cast<ImageWork::LaneId>(i), stop);
    });
  }
}

void ImageLoader::request(ImageRequest request) { work_->request(std::move(request)); }

void ImageLoader::takeSite(ImageRequest request, std::string bytes) {
  work_->takeSite(std::move(request), std::move(bytes));
}

void ImageLoader::forgetCached() { work_->forgetCached(); }

std::vector<ImageResult> ImageLoader::take() {
  return results_ ? results_->take() : std::vector<ImageResult>();
}

Bitmap ImageLoader::load(const std::wstring& imagesFolder, const ImageRef& image, int edge) {
  // A worker must not fall over one picture.
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

}  // namespace varnowick
