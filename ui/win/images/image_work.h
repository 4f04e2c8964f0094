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
  enum LaneId { kLocal, kSlow, kLanes };
  using Results = Mailbox<ImageResult>::Sender;

  explicit ImageWork(std::wstring imagesFolder);
  // Both before the first run().
  void useCache(const std::wstring& dataFolder);
  void sendTo(Results results) { results_ = std::move(results); }

  void setWeb(bool allowed);
  void request(ImageRequest request);
  void takeSite(ImageRequest request, std::string bytes);
  void forgetCached();
  // Until it is asked to stop. One thread a lane.
  void run(LaneId id, const Stop& stop);

 private:
  // What comes first in a lane.
  enum Urgency { kAssets, kLookups, kLoads, kUrgencies };
  struct Job {
    ImageRequest request{};
    enum class Kind { Show, Forget, Site } kind = Kind::Show;
    Bitmap shown{};          // what the cache had
    std::uint64_t time = 0;  // of the source, as the cache had it
    std::string bytes{};     // that have come from the site
  };
  struct Lane {
    KernelHandle wake;
    std::array<std::deque<Job>, kUrgencies> queues;
  };

  void push(LaneId id, Urgency urgency, Job job);
  void waitForWork(LaneId id, const Stop& stop) const;
  bool next(LaneId id, const Stop& stop, Job& job, Urgency& urgency);
  void handle(Urgency urgency, Job& job);
  void lookUp(Job& job);
  void lookUpAddress(Job& job);
  void loadIcon(Job& job);
  void settleSite(const Job& job);
  void deliver(const ImageRequest& request, Bitmap bitmap, bool last, bool fetch = false);

  const std::wstring imagesFolder_;
  std::unique_ptr<IconDiskCache> cache_;  // locks itself
  std::optional<Results> results_;
  CriticalSection lock_;  // around everything below
  std::array<Lane, kLanes> lanes_;
  bool webAllowed_ = false;
};

}  // namespace varnowick
