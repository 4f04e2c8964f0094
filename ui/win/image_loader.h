// The worker behind ImageStore: a queue of requests, one thread, a list of
// results. Owns itself by counting, so that a thread stuck on a dead drive can be
// left behind. The thread touches nothing but this object.
#pragma once

#include <windows.h>

#include <deque>
#include <string>
#include <vector>

#include "platform/win32/handles.h"
#include "ui/scene/canvas.h"
#include "ui/win/pixel_draw.h"

namespace varnowick {

struct ImageRequest {
  ImageRef image;
  int edge = 0;             // wanted size of icons and assets, pixels
  unsigned generation = 0;  // handed back, to tell late results
};

struct ImageResult {
  ImageRequest request;
  Bitmap bitmap;  // empty when there is none
};

class ImageLoader {
 public:
  explicit ImageLoader(std::wstring imagesFolder);
  ImageLoader(const ImageLoader&) = delete;
  ImageLoader& operator=(const ImageLoader&) = delete;

  // False when there could be no thread. Calling it again is harmless.
  bool start(HWND owner, UINT message);
  void request(ImageRequest request);
  std::vector<ImageResult> take();
  // Drops what is queued, tells the thread to end, waits for it at most that
  // long, and lets go of this object, which must not be used any more.
  void endAndRelease(DWORD milliseconds);

  // Loads in the calling thread.
  static Bitmap load(const std::wstring& imagesFolder, const ImageRef& image, int edge);

 private:
  ~ImageLoader();
  void release();
  void work();
  bool next(ImageRequest& request);
  static DWORD WINAPI threadMain(void* self);

  const std::wstring imagesFolder_;
  LONG references_ = 1;
  CRITICAL_SECTION lock_;
  KernelHandle wake_;
  KernelHandle thread_;
  // Under the lock: the urgent ones first, those on slow drives last.
  std::deque<ImageRequest> own_, quick_, slow_;
  std::vector<ImageResult> results_;
  HWND owner_ = nullptr;
  UINT message_ = 0;
  bool announced_ = false;  // a message is on its way, and nothing taken since
  bool ending_ = false;
};

}  // namespace varnowick
