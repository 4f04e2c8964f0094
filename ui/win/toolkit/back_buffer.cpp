#include "ui/win/toolkit/back_buffer.h"

#include <algorithm>

namespace varnowick {

namespace {

constexpr int kMaxEdge = 16384;

Pixels limited(Pixels edge) { return {std::clamp(edge.value, 1, kMaxEdge)}; }

}  // namespace

BackBuffer::~BackBuffer() {
  // A bitmap that is still selected is not freed.
  if (former_ != nullptr) SelectObject(dc_.get(), former_);
}

bool BackBuffer::resize(Size<Pixels> size) {
  const Size<Pixels> wanted{limited(size.width), limited(size.height)};
  if (pixels_ != nullptr && wanted == size_) return false;
  const bool fits =
      pixels_ != nullptr && wanted.width <= capacity_.width && wanted.height <= capacity_.height;
  // Memory is given back when the window has become much smaller.
  const auto area = [](Size<Pixels> s) {
    return static_cast<std::int64_t>(s.width.value) * s.height.value;
  };
  if (fits && area(wanted) * 4 > area(capacity_)) {
    size_ = wanted;
    return true;
  }
  if (!allocate(wanted)) return false;
  size_ = wanted;
  return true;
}

bool BackBuffer::allocate(Size<Pixels> capacity) {
  if (!dc_) dc_.reset(CreateCompatibleDC(nullptr));
  if (!dc_) return false;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = capacity.width.value;
  info.bmiHeader.biHeight = -capacity.height.value;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  BitmapHandle bitmap(CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap || bits == nullptr) return false;
  const HGDIOBJ former = SelectObject(dc_.get(), bitmap.get());
  if (former_ == nullptr) former_ = former;
  bitmap_ = std::move(bitmap);
  pixels_ = static_cast<std::uint32_t*>(bits);
  capacity_ = capacity;
  return true;
}

void BackBuffer::blit(HDC target, const PixelRect& part) const {
  if (!ready()) return;
  const PixelRect seen = part.intersect({{}, {}, size_.width, size_.height});
  if (seen.empty()) return;
  BitBlt(target, seen.left.value, seen.top.value, seen.width.value, seen.height.value, dc_.get(),
         seen.left.value, seen.top.value, SRCCOPY);
}

}  // namespace varnowick
