// The pictures behind ImageRef. A worker thread loads them from disk and shell;
// whoever paints gets what is there, or a placeholder, and never waits. It knows
// no scene; results are announced by the doorbell.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/units.h"
#include "ui/scene/canvas.h"
#include "ui/win/toolkit/image_source.h"
#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

class Doorbell;
class Fetchers;
class ImageLoader;
class SiteIcons;

class ImageStore final : public ImageSource {
 public:
  // The folder holds the program's own pictures, "<name>-<edge in pixels>.png".
  explicit ImageStore(std::wstring imagesFolder);
  ImageStore(const ImageStore&) = delete;
  ImageStore& operator=(const ImageStore&) = delete;
  // Waits a moment for the worker; one that is stuck on a dead drive is left
  // behind and touches nothing of ours.
  ~ImageStore() override;

  // Keeps icons in "\IconCache" of the data folder, so that the next run shows them
  // at once. Only before start().
  void useCache(const std::wstring& dataFolder);
  // Whether the icons of web addresses are fetched from their sites; not until
  // this is called. The proxy is as FetchRequest has it. At any time.
  void setWeb(bool allowed, const std::wstring& proxy);

  // Starts the workers, once the window is on screen. `news` is called whenever results
  // are waiting for deliver(). Until then requests pile up.
  void start(Doorbell& doorbell, Fetchers& fetchers, std::function<void()> news);
  // Takes the results in. True when something is drawn differently from now on.
  bool deliver();

  // What is not there is asked of the worker.
  const Bitmap* find(const ImageRef& image, Size<Pixels> size) override;
  const Bitmap* findUnscaled(const ImageRef& image) override;
  ImageState state(const ImageRef& image, Size<Pixels> size) override;
  // True when the worker has nothing left to do that was asked for.
  bool idle() const { return waiting_ == 0; }
  // The picture file has changed on disk, or is no longer needed.
  void forget(const ImageRef& image);
  // Everything is loaded anew when next asked for, past what is kept on disk.
  void refresh();

 private:
  enum class State { Waiting, Ready, Failed };
  // Icons and assets are loaded for a size; a picture once, and scaled.
  using Key = std::pair<std::pair<int, std::wstring>, int>;
  struct Entry {
    State state = State::Waiting;
    Bitmap original;
    Bitmap fitted;
    std::uint64_t lastUse = 0;
    unsigned generation = 0;
  };
  static Key keyOf(const ImageRef& image, Size<Pixels> size);
  Entry* entryOf(const ImageRef& image, Size<Pixels> size);
  const Bitmap* fitted(Entry& entry, Size<Pixels> size);
  const Bitmap* placeholder(const ImageRef& image, Size<Pixels> size);
  void evict();

  std::wstring imagesFolder_;
  std::map<Key, Entry> entries_;
  std::uint64_t uses_ = 0;
  unsigned generation_ = 0;
  int waiting_ = 0;
  std::wstring proxy_;
  const std::unique_ptr<ImageLoader> loader_;
  std::unique_ptr<SiteIcons> sites_;
};

// Which of the program's own pictures stands for an image that is not there.
// Judges by the name alone, without touching a disk; empty for none.
std::wstring placeholderAsset(const ImageRef& image);

}  // namespace varnowick
