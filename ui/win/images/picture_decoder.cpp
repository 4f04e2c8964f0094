#include "ui/win/images/picture_decoder.h"

#include <windows.h>
// These rely on it.
#include <gdiplus.h>
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <cstring>

#include "core/picture_header.h"
#include "core/png.h"
#include "platform/win32/handles.h"
#include "platform/win32/win32_files.h"
#include "ui/win/images/icon_bitmap.h"
#include "ui/win/toolkit/back_buffer.h"

namespace varnowick {

namespace {

using namespace Gdiplus::DllExports;

constexpr std::uint64_t kMaxFileBytes = 64ULL << 20;
// Cameras put much before the size of a picture.
constexpr std::size_t kHeaderBytes = 1U << 20;

// GDI+ came after Windows 2000, so that it is looked for at run time.
class GdiPlus {
 public:
  GdiPlus() : library_(L"gdiplus.dll") {
    decltype(&Gdiplus::GdiplusStartup) startup = nullptr;
    if (!library_.bind("GdiplusStartup", startup) || !library_.bind("GdiplusShutdown", shutdown_) ||
        !library_.bind("GdipCreateBitmapFromStream", createBitmapFromStream) ||
        !library_.bind("GdipBitmapLockBits", lockBits) ||
        !library_.bind("GdipBitmapUnlockBits", unlockBits) ||
        !library_.bind("GdipDisposeImage", disposeImage) ||
        !library_.bind("GdipGetImageWidth", imageWidth) ||
        !library_.bind("GdipGetImageHeight", imageHeight)) {
      return;
    }
    Gdiplus::GdiplusStartupInput input;
    ready_ = startup(&token_, &input, nullptr) == Gdiplus::Ok;
  }
  GdiPlus(const GdiPlus&) = delete;
  GdiPlus& operator=(const GdiPlus&) = delete;
  ~GdiPlus() {
    if (ready_) shutdown_(token_);
  }
  bool ready() const { return ready_; }

  decltype(&GdipCreateBitmapFromStream) createBitmapFromStream = nullptr;
  decltype(&GdipBitmapLockBits) lockBits = nullptr;
  decltype(&GdipBitmapUnlockBits) unlockBits = nullptr;
  decltype(&GdipDisposeImage) disposeImage = nullptr;
  decltype(&GdipGetImageWidth) imageWidth = nullptr;
  decltype(&GdipGetImageHeight) imageHeight = nullptr;

 private:
  SystemLibrary library_;
  decltype(&Gdiplus::GdiplusShutdown) shutdown_ = nullptr;
  ULONG_PTR token_ = 0;
  bool ready_ = false;
};

// An image of GDI+, whatever happens while its points are copied.
class GdiPlusImage {
 public:
  GdiPlusImage(const GdiPlus& gdiPlus, IStream* stream) : gdiPlus_(gdiPlus) {
    if (gdiPlus_.createBitmapFromStream(stream, &image_) != Gdiplus::Ok) image_ = nullptr;
  }
  GdiPlusImage(const GdiPlusImage&) = delete;
  GdiPlusImage& operator=(const GdiPlusImage&) = delete;
  ~GdiPlusImage() {
    if (locked_) gdiPlus_.unlockBits(image_, &data_);
    if (image_ != nullptr) gdiPlus_.disposeImage(image_);
  }
  explicit operator bool() const { return image_ != nullptr; }
  Size<Pixels> size() const {
    UINT width = 0;
    UINT height = 0;
    gdiPlus_.imageWidth(image_, &width);
    gdiPlus_.imageHeight(image_, &height);
    return {{static_cast<int>(width)}, {static_cast<int>(height)}};
  }
  // The rows from the top, as long as this object lives; nullptr when it cannot.
  const Gdiplus::BitmapData* lock() {
    const Size<Pixels> all = size();
    const Gdiplus::GpRect whole(0, 0, all.width.value, all.height.value);
    locked_ = gdiPlus_.lockBits(image_, &whole, Gdiplus::ImageLockModeRead, PixelFormat32bppPARGB,
                                &data_) == Gdiplus::Ok;
    return locked_ ? &data_ : nullptr;
  }

 private:
  const GdiPlus& gdiPlus_;
  Gdiplus::GpBitmap* image_ = nullptr;
  Gdiplus::BitmapData data_{};
  bool locked_ = false;
};

ComPtr<IStream> streamOf(std::string_view bytes) {
  ComPtr<IStream> stream;
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  if (memory == nullptr) return stream;
  if (void* target = GlobalLock(memory); target != nullptr) {
    std::memcpy(target, bytes.data(), bytes.size());
    GlobalUnlock(memory);
  }
  if (FAILED(CreateStreamOnHGlobal(memory, TRUE, stream.put()))) GlobalFree(memory);
  return stream;
}

Bitmap decodeWithGdiPlus(const GdiPlus& gdiPlus, std::string_view bytes) {
  const ComPtr<IStream> stream = streamOf(bytes);
  if (!stream) return {};
  GdiPlusImage image(gdiPlus, stream.get());
  if (!image) return {};
  const Size<Pixels> size = image.size();
  const auto width = static_cast<std::uint32_t>(size.width.value);
  const auto height = static_cast<std::uint32_t>(size.height.value);
  // What the decoder makes of it is checked as well as what the header claimed.
  if (!isDecodable({PictureFormat::Png, width, height}) || width == 0 || height == 0) return {};
  // First, for this may be more than there is memory for.
  Bitmap result{size.width.value, size.height.value, {}};
  result.pixels.resize(static_cast<std::size_t>(width) * height);
  const Gdiplus::BitmapData* data = image.lock();
  if (data == nullptr) return {};
  for (std::uint32_t y = 0; y < height; ++y) {
    const auto* row = static_cast<const char*>(data->Scan0) +
                      static_cast<std::ptrdiff_t>(data->Stride) * static_cast<std::ptrdiff_t>(y);
    std::memcpy(result.pixels.data() + static_cast<std::size_t>(y) * width, row,
                static_cast<std::size_t>(width) * 4);
  }
  return result;
}

// Without soft edges; knows BMP, GIF, JPEG and ICO on every system.
Bitmap decodeWithOle(std::string_view bytes, const PictureHeader& header, int maxEdge) {
  const ComPtr<IStream> stream = streamOf(bytes);
  static constexpr IID kPictureId = {
      0x7BF80980, 0xBF32, 0x101A, {0x8B, 0xBB, 0x00, 0xAA, 0x00, 0x30, 0x0C, 0xAB}};
  ComPtr<IPicture> picture;
  if (!stream || FAILED(OleLoadPicture(stream.get(), static_cast<LONG>(bytes.size()), FALSE,
                                       kPictureId, picture.putVoid()))) {
    return {};
  }
  OLE_XSIZE_HIMETRIC himetricWidth = 0;
  OLE_YSIZE_HIMETRIC himetricHeight = 0;
  picture->get_Width(&himetricWidth);
  picture->get_Height(&himetricHeight);
  const double shrink =
      std::min(1.0, static_cast<double>(maxEdge) / std::max(header.width, header.height));
  const int width = std::max(1, static_cast<int>(header.width * shrink));
  const int height = std::max(1, static_cast<int>(header.height * shrink));
  return bitmapOfDrawing({width}, {height}, [&](HDC dc) {
    picture->Render(dc, 0, 0, width, height, 0, himetricHeight, himetricWidth, -himetricHeight,
                    nullptr);
  });
}

Bitmap limitedTo(Bitmap bitmap, int maxEdge) {
  const int longest = std::max(bitmap.width, bitmap.height);
  if (bitmap.empty() || longest <= maxEdge) return bitmap;
  const auto shrunk = [&](int edge) {
    return std::max(1, static_cast<int>(static_cast<std::int64_t>(edge) * maxEdge / longest));
  };
  return scaled(bitmap, shrunk(bitmap.width), shrunk(bitmap.height));
}

}  // namespace

Bitmap decodePicture(std::string_view bytes, int maxEdge) {
  const PictureHeader header = readPictureHeader(bytes);
  if (!isDecodable(header)) return {};
  if (header.format == PictureFormat::Png) {
    // The same on every system, and without loading a library at each start.
    if (auto png = decodePng(bytes); png)
      return limitedTo({png->width, png->height, std::move(png->pixels)}, maxEdge);
  }
  const GdiPlus gdiPlus;
  return gdiPlus.ready() ? limitedTo(decodeWithGdiPlus(gdiPlus, bytes), maxEdge)
                         : decodeWithOle(bytes, header, maxEdge);
}

std::optional<Size<Pixels>> pictureSizeOf(const std::wstring& path) {
  const FileHandle file(CreateFileW(pathForSystem(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                    nullptr));
  if (!file) return std::nullopt;
  std::string start(kHeaderBytes, '\0');
  DWORD length = 0;
  if (!ReadFile(file.get(), start.data(), static_cast<DWORD>(start.size()), &length, nullptr))
    return std::nullopt;
  start.resize(length);
  const PictureHeader header = readPictureHeader(start);
  if (!isDecodable(header)) return std::nullopt;
  return Size<Pixels>{{static_cast<int>(header.width)}, {static_cast<int>(header.height)}};
}

Bitmap loadPictureFile(const std::wstring& path, int maxEdge) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(pathForSystem(path).c_str(), GetFileExInfoStandard, &data) ||
      (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow) > kMaxFileBytes) {
    return {};
  }
  const FileBytes file = Win32Files().read(path);
  return file.status ? decodePicture(file.bytes, maxEdge) : Bitmap{};
}

}  // namespace varnowick
