// What the image loader and its workers both hold: the queues, the cache, and what is
// done for a request. Outlives the loader where a worker is stuck.
#pragma once

#include <array>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "platform/win32/background.h"
#include "platform/win32/critical_section.h"
#include "ui/win/images/icon_disk_cache.h"
#include "ui/win/images/image_loader.h"

namespace varnowick {

class ImageWork {
 public:
  enum LaneId { kLocal, kSlow, kWeb, kLanes };
  using Results = Mailbox<ImageResult>::Sender;

  explicit ImageWork(std::wstring imagesFolder);
  // Both before the first run().
  void useCache(const std::wstring& dataFolder);
  void sendTo(Results results) { results_ = std::move(results); }

  void setWeb(bool allowed, std::wstring proxy);
  void request(ImageRequest request);
  void forgetCached();
  // Until it is asked to stop. One thread a lane.
  void run(LaneId id, const Stop& stop);

 private:
  // What comes first in a lane.
  enum Urgency { kAssets, kLookups, kLoads, kUrgencies };
  struct Job {
    ImageRequest request{};
    bool forget = false;
    Bitmap shown{};          // what the cache had
    std::uint64_t time = 0;  // of the source, as the cache had it
  };
  struct Lane {
    KernelHandle wake;
    std::array<std::deque<Job>, kUrgencies> queues;
  };

  void push(LaneId id, Urgency urgency, Job job);
  void waitForWork(LaneId id, const Stop& stop) const;
  bool next(LaneId id, const Stop& stop, Job& job, Urgency& urgency);
  void handle(LaneId id, const Stop& stop, Urgency urgency, Job& job);
  void lookUp(Job& job);
  void lookUpAddress(Job& job);
  void loadIcon(Job& job);
  void fetchSite(Job& job, const Stop& stop);
  void deliver(const ImageRequest& request, Bitmap bitmap, bool last);

  const std::wstring imagesFolder_;
  std::unique_ptr<IconDiskCache> cache_;  // locks itself
  std::optional<Results> results_;
  CriticalSection lock_;  // around everything below
  std::array<Lane, kLanes> lanes_;
  std::wstring proxy_;
  bool webAllowed_ = false;
};

}  // namespace varnowick
