#include "ui/win/images/image_loader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/win32/callback.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_http.h"
#include "shortcuts/site_icon.h"
#include "shortcuts/site_icon_fetch.h"
#include "ui/win/images/icon_bitmap.h"
#include "ui/win/images/icon_picture.h"
#include "ui/win/images/picture_decoder.h"

namespace varnowick {

namespace {

// Larger than any window shows, small enough to keep some.
constexpr int kMaxPictureEdge = 2048;
// The sizes that the program's own pictures come in.
constexpr std::array kAssetEdges = {16, 20, 24, 32, 48, 64};

constexpr std::uint64_t kTicksADay = 864'000'000'000;

std::uint64_t ticksOf(const FILETIME& time) {
  return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

std::uint64_t today() {
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return ticksOf(now) / kTicksADay;
}

// 0 when it is not there.
std::uint64_t timeOf(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(pathForSystem(path).c_str(), GetFileExInfoStandard, &data)) return 0;
  return std::max<std::uint64_t>(1, ticksOf(data.ftLastWriteTime));
}

// This thread in the apartment of COM that needs no messages.
class SharedApartment {
 public:
  SharedApartment() : result_(CoInitializeEx(nullptr, COINIT_MULTITHREADED)) {}
  SharedApartment(const SharedApartment&) = delete;
  SharedApartment& operator=(const SharedApartment&) = delete;
  ~SharedApartment() {
    if (SUCCEEDED(result_)) CoUninitialize();
  }

 private:
  HRESULT result_;
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
    : imagesFolder_(std::move(imagesFolder)), cancel_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
  for (std::size_t i = 0; i < lanes_.size(); ++i) {
    lanes_[i].loader = this;
    lanes_[i].id = static_cast<LaneId>(i);
    lanes_[i].wake.reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  }
}

void ImageLoader::release() {
  if (InterlockedDecrement(&references_) == 0) delete this;
}

void ImageLoader::useCache(const std::wstring& dataFolder) {
  const Lock lock(lock_);
  if (!started_) cache_ = std::make_unique<IconDiskCache>(dataFolder);
}

void ImageLoader::setWeb(bool allowed, std::wstring proxy) {
  const Lock lock(lock_);
  webAllowed_ = allowed;
  proxy_ = std::move(proxy);
}

// Under the lock.
bool ImageLoader::startThread(Lane& lane) {
  if (lane.thread) return true;
  InterlockedIncrement(&references_);  // for the thread
  lane.thread.reset(CreateThread(nullptr, 0, threadMain, &lane, 0, nullptr));
  if (lane.thread) return true;
  InterlockedDecrement(&references_);  // the caller has another
  return false;
}

bool ImageLoader::start(HWND owner, UINT message) {
  const Lock lock(lock_);
  owner_ = owner;
  message_ = message;
  started_ = true;
  bool all = startThread(lanes_[kLocal]);
  for (const LaneId id : {kSlow, kWeb}) {
    const auto& queues = lanes_[id].queues;
    if (std::any_of(queues.begin(), queues.end(), [](const auto& q) { return !q.empty(); }))
      all = startThread(lanes_[id]) && all;
  }
  return all;
}

void ImageLoader::push(LaneId id, Urgency urgency, Job job) {
  const Lock lock(lock_);
  Lane& lane = lanes_[id];
  lane.queues[urgency].push_back(std::move(job));
  if (started_ && !ending_) startThread(lane);
  SetEvent(lane.wake.get());
}

void ImageLoader::request(ImageRequest request) {
  using Source = ImageRef::Source;
  const Source source = request.image.source;
  if (source == Source::Asset) return push(kLocal, kAssets, {std::move(request), false, {}, 0});
  if (source == Source::IconOf) return push(kLocal, kLookups, {std::move(request), false, {}, 0});
  const LaneId lane = mayBeSlow(request.image.name) ? kSlow : kLocal;
  push(lane, kLoads, {std::move(request), false, {}, 0});
}

void ImageLoader::forgetCached() {
  if (cache_) push(kLocal, kLookups, {{}, true, {}, 0});
}

std::vector<ImageResult> ImageLoader::take() {
  const Lock lock(lock_);
  announced_ = false;
  return std::exchange(results_, {});
}

void ImageLoader::endAndRelease(DWORD milliseconds) {
  std::vector<HANDLE> threads;
  {
    const Lock lock(lock_);
    ending_ = true;
    owner_ = nullptr;
    SetEvent(cancel_.get());
    for (const Lane& lane : lanes_) {
      SetEvent(lane.wake.get());
      if (lane.thread) threads.push_back(lane.thread.get());
    }
  }
  if (!threads.empty()) {
    WaitForMultipleObjects(static_cast<DWORD>(threads.size()), threads.data(), TRUE, milliseconds);
  }
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

// A thread that is an apartment of COM must let messages through while it waits:
// it has a hidden window, and whoever sends to all windows would hang on it.
void ImageLoader::waitForWork(const Lane& lane) {
  const HANDLE wake = lane.wake.get();
  if (lane.id == kWeb) {
    WaitForSingleObject(wake, INFINITE);
    return;
  }
  while (MsgWaitForMultipleObjects(1, &wake, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
}

bool ImageLoader::next(Lane& lane, Job& job, Urgency& urgency) {
  bool saved = false;
  for (;;) {
    {
      const Lock lock(lock_);
      for (int i = 0; !ending_ && i < kUrgencies; ++i) {
        auto& queue = lane.queues[static_cast<std::size_t>(i)];
        if (queue.empty()) continue;
        urgency = static_cast<Urgency>(i);
        job = std::move(queue.front());
        queue.pop_front();
        return true;
      }
      if (ending_ && (saved || !cache_)) return false;
    }
    // There is time now, or it is the last chance.
    if (cache_ && !std::exchange(saved, true))
      cache_->save();
    else
      waitForWork(lane);
  }
}

void ImageLoader::work(Lane& lane) {
  // Missing media must fail, not ask for a disk.
  SetErrorMode(SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  // The shell's icons want an apartment. The web's thread shows pictures alone and
  // waits for servers, without looking at messages.
  std::optional<ComApartment> apartment;
  std::optional<SharedApartment> shared;
  if (lane.id == kWeb)
    shared.emplace();
  else
    apartment.emplace();
  Job job;
  Urgency urgency = kLoads;
  while (next(lane, job, urgency)) {
    // The worker must not fall over one picture.
    try {
      handle(lane.id, urgency, job);
    } catch (const std::exception&) {
      deliver(job.request, {}, true);
    }
  }
}

void ImageLoader::handle(LaneId lane, Urgency urgency, Job& job) {
  const ImageRef& image = job.request.image;
  if (job.forget) {
    cache_->clear();
  } else if (image.source != ImageRef::Source::IconOf) {
    deliver(job.request, load(imagesFolder_, image, job.request.edge), true);
  } else if (urgency == kLookups) {
    lookUp(job);
  } else if (lane == kWeb) {
    fetchSite(job);
  } else {
    loadIcon(job);
  }
}

void ImageLoader::lookUp(Job& job) {
  const std::wstring& source = job.request.image.name;
  if (isAddress(source)) return lookUpAddress(job);
  if (cache_) {
    if (auto kept = cache_->last(source, job.request.edge); kept && !kept->bitmap.empty()) {
      deliver(job.request, kept->bitmap, false);
      job.shown = std::move(kept->bitmap);
      job.time = kept->time;
    }
  }
  push(mayBeSlow(source) ? kSlow : kLocal, kLoads, std::move(job));
}

void ImageLoader::lookUpAddress(Job& job) {
  const std::wstring& address = job.request.image.name;
  bool due = true;
  if (cache_) {
    if (auto kept = cache_->last(address, job.request.edge); kept) {
      due = siteIconIsDue(kept->time, !kept->bitmap.empty(), today());
      job.shown = std::move(kept->bitmap);
      job.time = kept->time;
    }
  }
  bool allowed = false;
  {
    const Lock lock(lock_);
    allowed = webAllowed_;
  }
  const bool fetch = due && allowed && siteIconRoot(address);
  // Until the site's own is there, an address looks like any page.
  deliver(job.request,
          job.shown.empty() ? load(imagesFolder_, job.request.image, job.request.edge) : job.shown,
          !fetch);
  if (fetch) push(kWeb, kLoads, std::move(job));
}

void ImageLoader::loadIcon(Job& job) {
  const std::wstring& source = job.request.image.name;
  const std::uint64_t time = timeOf(source);
  // What is gone for the moment keeps the icon it had.
  const bool same = time == 0 || (time == job.time && holdsIcons(source));
  if (!job.shown.empty() && same) return deliver(job.request, {}, true);
  Bitmap bitmap = load(imagesFolder_, job.request.image, job.request.edge);
  const bool changed = !bitmap.empty() && bitmap.pixels != job.shown.pixels;
  if (cache_ && time != 0 && !bitmap.empty() && (changed || time != job.time))
    cache_->keep(source, job.request.edge, time, bitmap);
  deliver(job.request, changed ? std::move(bitmap) : Bitmap{}, true);
}

void ImageLoader::fetchSite(Job& job) {
  SiteIconRequest request{job.request.image.name, {}, job.request.edge};
  {
    const Lock lock(lock_);
    request.proxy = proxy_;
  }
  Win32Http http(cancel_.get());
  Win32TextCodec codec;
  Bitmap bitmap;
  fetchSiteIcon(
      http, codec, request, [] { return static_cast<std::uint32_t>(GetTickCount()); },
      [&](std::string_view bytes) {
        bitmap = decodeIconPicture(bytes, request.edge);
        return !bitmap.empty();
      });
  // What was broken off says nothing of the site.
  if (WaitForSingleObject(cancel_.get(), 0) == WAIT_OBJECT_0) return;
  if (cache_) {
    // A site that cannot be reached keeps the icon it had, and is asked tomorrow.
    const bool keepOld = bitmap.empty() && !job.shown.empty();
    cache_->keep(request.page, request.edge, keepOld ? today() + 1 - kSiteIconDays : today(),
                 keepOld ? job.shown : bitmap);
  }
  deliver(job.request, std::move(bitmap), true);
}

void ImageLoader::deliver(const ImageRequest& request, Bitmap bitmap, bool last) {
  const Lock lock(lock_);
  results_.push_back({request, std::move(bitmap), last});
  if (owner_ != nullptr && !announced_) announced_ = PostMessageW(owner_, message_, 0, 0) != 0;
}

DWORD WINAPI ImageLoader::threadMain(void* context) {
  auto* lane = static_cast<Lane*>(context);
  ImageLoader* loader = lane->loader;
  guardedCallback(false, [&] {
    loader->work(*lane);
    return true;
  });
  loader->release();
  return 0;
}

}  // namespace varnowick
