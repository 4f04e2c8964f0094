// The workers behind ImageStore: requests in, results out. Owns itself by
// counting, so that a thread stuck on a dead drive can be left behind. The threads
// touch nothing but this object.
//
// Three lanes of one thread each: what is local, drives that may not answer, and
// the web, so that nobody waits for what is slower. The last two start when there
// is something for them. An icon is first looked up in the cache on disk, without
// touching what it is of, and then, in its lane, checked or fetched.
#pragma once

#include <windows.h>

#include <array>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "platform/win32/critical_section.h"
#include "platform/win32/handles.h"
#include "ui/scene/canvas.h"
#include "ui/win/images/icon_disk_cache.h"
#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

struct ImageRequest {
  ImageRef image;
  int edge = 0;             // wanted size of icons and assets, pixels
  unsigned generation = 0;  // handed back, to tell late results
};

struct ImageResult {
  ImageRequest request;
  Bitmap bitmap;     // empty when there is none, or none that is newer
  bool last = true;  // false: it is being checked, and something newer may follow
};

class ImageLoader {
 public:
  explicit ImageLoader(std::wstring imagesFolder);
  ImageLoader(const ImageLoader&) = delete;
  ImageLoader& operator=(const ImageLoader&) = delete;

  // Keeps icons below the data folder. Only before start().
  void useCache(const std::wstring& dataFolder);
  // Whether the icons of web addresses are fetched, and through which proxy (as
  // HttpRequest has it). At any time, for what is asked for from then on.
  void setWeb(bool allowed, std::wstring proxy);

  // False when there could be no thread. Calling it again is harmless.
  bool start(HWND owner, UINT message);
  void request(ImageRequest request);
  // What is asked for from then on is found in no cache.
  void forgetCached();
  std::vector<ImageResult> take();
  // Drops what is queued, tells the threads to end, waits for them at most that
  // long, and lets go of this object, which must not be used any more.
  void endAndRelease(DWORD milliseconds);

  // Loads in the calling thread, past the cache.
  static Bitmap load(const std::wstring& imagesFolder, const ImageRef& image, int edge);

 private:
  enum LaneId { kLocal, kSlow, kWeb, kLanes };
  // What comes first in a lane.
  enum Urgency { kAssets, kLookups, kLoads, kUrgencies };
  struct Job {
    ImageRequest request;
    bool forget = false;
    Bitmap shown;            // what the cache had
    std::uint64_t time = 0;  // of the source, as the cache had it
  };
  struct Lane {
    ImageLoader* loader = nullptr;
    LaneId id = kLocal;
    KernelHandle wake;
    KernelHandle thread;
    std::array<std::deque<Job>, kUrgencies> queues;
  };

  ~ImageLoader() = default;
  void release();
  bool startThread(Lane& lane);
  void push(LaneId lane, Urgency urgency, Job job);
  static void waitForWork(const Lane& lane);
  bool next(Lane& lane, Job& job, Urgency& urgency);
  void work(Lane& lane);
  void handle(LaneId lane, Urgency urgency, Job& job);
  void lookUp(Job& job);
  void lookUpAddress(Job& job);
  void loadIcon(Job& job);
  void fetchSite(Job& job);
  void deliver(const ImageRequest& request, Bitmap bitmap, bool last);
  static DWORD WINAPI threadMain(void* lane);

  const std::wstring imagesFolder_;
  std::unique_ptr<IconDiskCache> cache_;  // locks itself
  KernelHandle cancel_;                   // set when ending
  LONG references_ = 1;
  CriticalSection lock_;  // around everything below
  std::array<Lane, kLanes> lanes_;
  std::vector<ImageResult> results_;
  std::wstring proxy_;
  bool webAllowed_ = false;
  HWND owner_ = nullptr;
  UINT message_ = 0;
  bool started_ = false;
  bool announced_ = false;  // a message is on its way, and nothing taken since
  bool ending_ = false;
};

}  // namespace varnowick
