#include "ui/win/images/image_store.h"

#include <algorithm>

#include "ui/win/images/icon_bitmap.h"
#include "ui/win/images/image_loader.h"
#include "ui/win/images/site_icons.h"

namespace varnowick {

namespace {

constexpr std::size_t kMaxBytes = 64U << 20;
constexpr int kMaxEdge = 4096;
constexpr int kMaxPlaceholderEdge = 96;

std::size_t bytesOf(const Bitmap& bitmap) { return bitmap.pixels.size() * 4; }

}  // namespace

ImageStore::ImageStore(std::wstring imagesFolder)
    : imagesFolder_(std::move(imagesFolder)),
      loader_(std::make_unique<ImageLoader>(imagesFolder_)) {}

ImageStore::~ImageStore() = default;

void ImageStore::useCache(const std::wstring& dataFolder) { loader_->useCache(dataFolder); }

void ImageStore::setWeb(bool allowed, const std::wstring& proxy) {
  proxy_ = proxy;
  loader_->setWeb(allowed);
}

void ImageStore::start(Doorbell& doorbell, Fetchers& fetchers, std::function<void()> news) {
  sites_ =
      std::make_unique<SiteIcons>(fetchers, [this](const ImageRequest& request, std::string bytes) {
        loader_->takeSite(request, std::move(bytes));
      });
  loader_->start(doorbell, std::move(news));
}

ImageStore::Key ImageStore::keyOf(const ImageRef& image, Size<Pixels> size) {
  const bool bySize = image.source != ImageRef::Source::PictureFile;
  return {{static_cast<int>(image.source), image.name},
          bySize ? std::max(size.width.value, size.height.value) : 0};
}

bool ImageStore::deliver() {
  bool changed = false;
  for (ImageResult& result : loader_->take()) {
    if (result.last) waiting_ = std::max(0, waiting_ - 1);
    if (result.fetch) sites_->fetch(result.request, proxy_);
    if (result.last && sites_) sites_->done(result.request);
    const int edge = result.request.edge;
    const auto found = entries_.find(keyOf(result.request.image, {{edge}, {edge}}));
    // It may have been forgotten, and asked for again, meanwhile.
    if (found == entries_.end() || found->second.generation != result.request.generation) continue;
    Entry& entry = found->second;
    if (result.bitmap.empty()) {
      if (!result.last || entry.state != State::Waiting) continue;
      entry.state = State::Failed;
      // In place of a picture its path is shown.
      changed = changed || result.request.image.source == ImageRef::Source::PictureFile;
      continue;
    }
    entry.state = State::Ready;
    entry.original = std::move(result.bitmap);
    entry.fitted = {};
    changed = true;
  }
  if (changed) evict();
  return changed;
}

// nullptr for what cannot be asked for.
ImageStore::Entry* ImageStore::entryOf(const ImageRef& image, Size<Pixels> size) {
  if (image.source == ImageRef::Source::None || image.name.empty() || size.width < 1_px ||
      size.height < 1_px || size.width.value > kMaxEdge || size.height.value > kMaxEdge) {
    return nullptr;
  }
  const Key key = keyOf(image, size);
  auto found = entries_.find(key);
  if (found == entries_.end()) {
    found = entries_.emplace(key, Entry{}).first;
    found->second.generation = ++generation_;
    ++waiting_;
    loader_->request({image, std::max(size.width.value, size.height.value), generation_});
  }
  found->second.lastUse = ++uses_;
  return &found->second;
}

const Bitmap* ImageStore::find(const ImageRef& image, Size<Pixels> size) {
  Entry* entry = entryOf(image, size);
  if (entry == nullptr) return nullptr;
  return entry->state == State::Ready ? fitted(*entry, size) : placeholder(image, size);
}

const Bitmap* ImageStore::findUnscaled(const ImageRef& image) {
  const Entry* entry = entryOf(image, {1_px, 1_px});
  return entry != nullptr && entry->state == State::Ready ? &entry->original : nullptr;
}

ImageState ImageStore::state(const ImageRef& image, Size<Pixels> size) {
  const Entry* entry = entryOf(image, size);
  if (entry == nullptr || entry->state == State::Failed) return ImageState::Failed;
  return entry->state == State::Ready ? ImageState::Ready : ImageState::Waiting;
}

const Bitmap* ImageStore::fitted(Entry& entry, Size<Pixels> size) {
  if (entry.original.width == size.width.value && entry.original.height == size.height.value) {
    return &entry.original;
  }
  if (entry.fitted.width != size.width.value || entry.fitted.height != size.height.value) {
    entry.fitted = scaled(entry.original, size.width.value, size.height.value);
  }
  return &entry.fitted;
}

const Bitmap* ImageStore::placeholder(const ImageRef& image, Size<Pixels> size) {
  const std::wstring asset = placeholderAsset(image);
  if (asset.empty()) return nullptr;
  // The largest of our own is 64; a sign as large as a wall picture would shout.
  if (size.width.value > kMaxPlaceholderEdge || size.height.value > kMaxPlaceholderEdge) {
    return nullptr;
  }
  return find({ImageRef::Source::Asset, asset}, size);
}

void ImageStore::forget(const ImageRef& image) {
  std::erase_if(entries_, [&](const auto& entry) {
    return entry.first.first == std::pair(static_cast<int>(image.source), image.name);
  });
}

void ImageStore::refresh() {
  loader_->forgetCached();
  entries_.clear();
}

void ImageStore::evict() {
  std::size_t total = 0;
  for (const auto& [key, entry] : entries_)
    total += bytesOf(entry.original) + bytesOf(entry.fitted);
  while (total > kMaxBytes) {
    auto oldest = entries_.end();
    for (auto i = entries_.begin(); i != entries_.end(); ++i) {
      if (i->second.state == State::Ready &&
          (oldest == entries_.end() || i->second.lastUse < oldest->second.lastUse)) {
        oldest = i;
      }
    }
    if (oldest == entries_.end()) return;
    const std::size_t freed = bytesOf(oldest->second.original) + bytesOf(oldest->second.fitted);
    // A picture that is on screen now would be asked for at once, and again.
    if (oldest->second.lastUse + entries_.size() > uses_) return;
    total -= std::min(total, freed);
    entries_.erase(oldest);
  }
}

std::wstring placeholderAsset(const ImageRef& image) {
  if (image.source == ImageRef::Source::PictureFile) return L"picture";
  if (image.source != ImageRef::Source::IconOf) return {};
  if (isAddress(image.name)) return L"globe";
  const std::size_t slash = image.name.find_last_of(L"\\/");
  const std::size_t dot = image.name.find_last_of(L'.');
  const bool folder = dot == std::wstring::npos || (slash != std::wstring::npos && dot < slash);
  return folder ? L"folder" : L"document";
}

}  // namespace varnowick
