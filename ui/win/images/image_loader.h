// The workers behind ImageStore: requests in, results out.
//
// Two lanes of one worker each: what is local, and drives that may not answer, so
// that nobody waits for what is slower. An icon is first looked up in the cache on
// disk, without touching what it is of, and then checked in its lane; the icons of
// sites are fetched by others and brought here.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/background.h"
#include "ui/scene/canvas.h"
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
  bool last = true;  // false: something newer may follow
  // The site is to be asked for its icon; takeSite() is to follow.
  bool fetch = false;
};

class ImageWork;

class ImageLoader {
 public:
  explicit ImageLoader(std::wstring imagesFolder);
  ImageLoader(const ImageLoader&) = delete;
  ImageLoader& operator=(const ImageLoader&) = delete;
  // Drops what is queued and waits a moment for the workers; one that is stuck on a
  // dead drive is left behind.
  ~ImageLoader();

  // Keeps icons below the data folder. Only before start().
  void useCache(const std::wstring& dataFolder);
  // Whether the icons of web addresses are fetched. At any time, for what is asked for
  // from then on.
  void setWeb(bool allowed);

  // Once. `news` is called when there is something to take().
  void start(Doorbell& doorbell, std::function<void()> news);
  void request(ImageRequest request);
  // What may be the icon of the request's site; no bytes say that there is none. What
  // is no picture is answered by asking for more.
  void takeSite(ImageRequest request, std::string bytes);
  // What is asked for from then on is found in no cache.
  void forgetCached();
  std::vector<ImageResult> take();

  // Loads in the calling thread, past the cache.
  static Bitmap load(const std::wstring& imagesFolder, const ImageRef& image, int edge);

 private:
  static constexpr std::size_t kLanes = 2;
  const std::shared_ptr<ImageWork> work_;
  std::optional<Mailbox<ImageResult>> results_;
  std::array<Worker, kLanes> workers_;
};

}  // namespace varnowick
