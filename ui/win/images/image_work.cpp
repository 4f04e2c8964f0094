#include "ui/win/images/image_work.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "platform/win32/win32_files.h"
#include "shortcuts/site_icon.h"
#include "ui/win/images/icon_bitmap.h"
#include "ui/win/images/icon_picture.h"

namespace varnowick {

namespace {

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

}  // namespace

ImageWork::ImageWork(std::wstring imagesFolder) : imagesFolder_(std::move(imagesFolder)) {
  for (Lane& lane : lanes_) lane.wake.reset(CreateEventW(nullptr, FALSE, FALSE, nullptr));
}

void ImageWork::useCache(const std::wstring& dataFolder) {
  cache_ = std::make_unique<IconDiskCache>(dataFolder);
}

void ImageWork::setWeb(bool allowed) {
  const Lock lock(lock_);
  webAllowed_ = allowed;
}

void ImageWork::push(LaneId id, Urgency urgency, Job job) {
  const Lock lock(lock_);
  lanes_[id].queues[urgency].push_back(std::move(job));
  SetEvent(lanes_[id].wake.get());
}

void ImageWork::request(ImageRequest request) {
  using Source = ImageRef::Source;
  const Source source = request.image.source;
  if (source == Source::Asset) return push(kLocal, kAssets, {std::move(request)});
  if (source == Source::IconOf) return push(kLocal, kLookups, {std::move(request)});
  const LaneId lane = mayBeSlow(request.image.name) ? kSlow : kLocal;
  push(lane, kLoads, {std::move(request)});
}

void ImageWork::takeSite(ImageRequest request, std::string bytes) {
  Job job{std::move(request), Job::Kind::Site};
  job.bytes = std::move(bytes);
  push(kLocal, kLoads, std::move(job));
}

void ImageWork::forgetCached() {
  if (cache_) push(kLocal, kLookups, {{}, Job::Kind::Forget});
}

// A thread that is an apartment of COM must let messages through while it waits:
// it has a hidden window, and whoever sends to all windows would hang on it.
void ImageWork::waitForWork(LaneId id, const Stop& stop) const {
  const HANDLE events[] = {stop.event(), lanes_[id].wake.get()};
  while (MsgWaitForMultipleObjects(2, events, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 + 2) {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
}

bool ImageWork::next(LaneId id, const Stop& stop, Job& job, Urgency& urgency) {
  bool saved = false;
  for (;;) {
    const bool ending = stop.asked();
    if (!ending) {
      const Lock lock(lock_);
      for (int i = 0; i < kUrgencies; ++i) {
        auto& queue = lanes_[id].queues[static_cast<std::size_t>(i)];
        if (queue.empty()) continue;
        urgency = static_cast<Urgency>(i);
        job = std::move(queue.front());
        queue.pop_front();
        return true;
      }
    }
    // There is time now, or it is the last chance.
    if (cache_ && !std::exchange(saved, true))
      cache_->save();
    else if (ending)
      return false;
    else
      waitForWork(id, stop);
  }
}

void ImageWork::run(LaneId id, const Stop& stop) {
  // The shell's icons want one.
  std::optional<ComApartment> apartment;
  Job job;
  Urgency urgency = kLoads;
  while (next(id, stop, job, urgency)) {
    if (!apartment) apartment.emplace();
    // The worker must not fall over one picture.
    try {
      handle(urgency, job);
    } catch (const std::exception&) {
      deliver(job.request, {}, true);
    }
  }
}

void ImageWork::handle(Urgency urgency, Job& job) {
  const ImageRef& image = job.request.image;
  if (job.kind == Job::Kind::Forget) {
    cache_->clear();
  } else if (job.kind == Job::Kind::Site) {
    settleSite(job);
  } else if (image.source != ImageRef::Source::IconOf) {
    deliver(job.request, ImageLoader::load(imagesFolder_, image, job.request.edge), true);
  } else if (urgency == kLookups) {
    lookUp(job);
  } else {
    loadIcon(job);
  }
}

void ImageWork::lookUp(Job& job) {
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

void ImageWork::lookUpAddress(Job& job) {
  const std::wstring& address = job.request.image.name;
  bool due = true;
  if (cache_) {
    if (auto kept = cache_->last(address, job.request.edge); kept) {
      due = siteIconIsDue(kept->time, !kept->bitmap.empty(), today());
      job.shown = std::move(kept->bitmap);
    }
  }
  bool allowed = false;
  {
    const Lock lock(lock_);
    allowed = webAllowed_;
  }
  const bool fetch = due && allowed && siteIconRoot(address);
  // Until the site's own is there, an address looks like any page.
  if (job.shown.empty())
    job.shown = ImageLoader::load(imagesFolder_, job.request.image, job.request.edge);
  deliver(job.request, std::move(job.shown), !fetch, fetch);
}

void ImageWork::loadIcon(Job& job) {
  const std::wstring& source = job.request.image.name;
  const std::uint64_t time = timeOf(source);
  // What is gone for the moment keeps the icon it had.
  const bool same = time == 0 || (time == job.time && holdsIcons(source));
  if (!job.shown.empty() && same) return deliver(job.request, {}, true);
  Bitmap bitmap = ImageLoader::load(imagesFolder_, job.request.image, job.request.edge);
  const bool changed = !bitmap.empty() && bitmap.pixels != job.shown.pixels;
  if (cache_ && time != 0 && !bitmap.empty() && (changed || time != job.time))
    cache_->keep(source, job.request.edge, time, bitmap);
  deliver(job.request, changed ? std::move(bitmap) : Bitmap{}, true);
}

void ImageWork::settleSite(const Job& job) {
  const auto& [image, edge, generation] = job.request;
  Bitmap bitmap;
  if (!job.bytes.empty()) {
    bitmap = decodeIconPicture(job.bytes, edge);
    if (bitmap.empty()) return deliver(job.request, {}, false, true);
  }
  if (cache_) {
    // A site that cannot be reached keeps the icon it had, and is asked tomorrow.
    auto kept = bitmap.empty() ? cache_->last(image.name, edge) : std::nullopt;
    const bool keepOld = kept && !kept->bitmap.empty();
    cache_->keep(image.name, edge, keepOld ? today() + 1 - kSiteIconDays : today(),
                 keepOld ? kept->bitmap : bitmap);
  }
  deliver(job.request, std::move(bitmap), true);
}

void ImageWork::deliver(const ImageRequest& request, Bitmap bitmap, bool last, bool fetch) {
  results_->send({request, std::move(bitmap), last, fetch});
}

}  // namespace varnowick
