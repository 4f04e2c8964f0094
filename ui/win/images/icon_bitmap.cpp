#include "ui/win/images/icon_bitmap.h"

#include <windows.h>
// These rely on it.
#include <shellapi.h>

#include <algorithm>

#include "platform/win32/common_controls.h"
#include "platform/win32/handles.h"
#include "ui/win/toolkit/back_buffer.h"

namespace varnowick {

namespace {

// Names that came after Windows 2000.
constexpr int kExtraLargeImages = 2;  // 48 pixels
constexpr int kExtraLargeEdge = 48;

bool hasExtension(const std::wstring& path, const wchar_t* extension) {
  return path.size() > 4 && lstrcmpiW(path.c_str() + path.size() - 4, extension) == 0;
}

// "*.txt": any file of that kind, wherever it is.
bool isFileKind(const std::wstring& path) { return path.size() > 2 && path.front() == L'*'; }

IconHandle iconInFile(const std::wstring& path, int edge) {
  // Documented for Windows 2000, but in its header and library only later.
  UINT(WINAPI * extract)(LPCWSTR, int, int, int, HICON*, UINT*, UINT, UINT) = nullptr;
  const SystemLibrary user32(L"user32.dll");
  IconHandle icon;
  UINT id = 0;
  if (path.size() < MAX_PATH && user32.bind("PrivateExtractIconsW", extract) &&
      extract(path.c_str(), 0, edge, edge, icon.put(), &id, 1, 0) == 1 && icon) {
    return icon;
  }
  icon.reset();
  IconHandle other;
  if (edge > GetSystemMetrics(SM_CXSMICON)) {
    ExtractIconExW(path.c_str(), 0, icon.put(), other.put(), 1);
    return icon ? std::move(icon) : std::move(other);
  }
  ExtractIconExW(path.c_str(), 0, other.put(), icon.put(), 1);
  return icon ? std::move(icon) : std::move(other);
}

IconHandle iconOfLargeList(int index) {
  static constexpr IID kImageListId = {
      0x46EB5926, 0x582E, 0x4017, {0x9F, 0xDF, 0xE8, 0x99, 0x8D, 0xAA, 0x09, 0x50}};
  HRESULT(WINAPI * getImageList)(int, REFIID, void**) = nullptr;
  const SystemLibrary shell32(L"shell32.dll");
  if (!shell32.bind("SHGetImageList", getImageList)) {
    // Windows XP exports it by number only.
    getImageList = shell32.bind<decltype(getImageList)>(MAKEINTRESOURCEA(727));
  }
  ComPtr<IUnknown> list;
  const auto getIcon = CommonControls::get().imageListGetIcon;
  if (getImageList == nullptr || getIcon == nullptr ||
      FAILED(getImageList(kExtraLargeImages, kImageListId, list.putVoid()))) {
    return IconHandle();
  }
  // The interface of an image list is the image list.
  return IconHandle(getIcon(reinterpret_cast<HIMAGELIST>(list.get()), index, ILD_TRANSPARENT));
}

IconHandle iconOfShell(const std::wstring& path, DWORD attributes, UINT extraFlags, int edge) {
  SHFILEINFOW info{};
  if (edge > GetSystemMetrics(SM_CXICON) && edge >= kExtraLargeEdge - 8 &&
      SHGetFileInfoW(path.c_str(), attributes, &info, sizeof info,
                     SHGFI_SYSICONINDEX | extraFlags) != 0) {
    if (IconHandle icon = iconOfLargeList(info.iIcon); icon) return icon;
  }
  const UINT size =
      static_cast<UINT>(edge > GetSystemMetrics(SM_CXSMICON) ? SHGFI_LARGEICON : SHGFI_SMALLICON);
  if (SHGetFileInfoW(path.c_str(), attributes, &info, sizeof info,
                     SHGFI_ICON | size | extraFlags) == 0) {
    return IconHandle();
  }
  return IconHandle(info.hIcon);
}

IconHandle iconFor(const std::wstring& path, int edge) {
  if (isAddress(path)) {
    return iconOfShell(L"page.html", FILE_ATTRIBUTE_NORMAL, SHGFI_USEFILEATTRIBUTES, edge);
  }
  if (isFileKind(path)) {
    return iconOfShell(L"x" + path.substr(1), FILE_ATTRIBUTE_NORMAL, SHGFI_USEFILEATTRIBUTES, edge);
  }
  if (holdsIcons(path)) {
    if (IconHandle icon = iconInFile(path, edge); icon) return icon;
  }
  if (IconHandle icon = iconOfShell(path, 0, 0, edge); icon) return icon;
  // It is not there: at least the icon of its kind.
  const std::size_t slash = path.find_last_of(L"\\/");
  const std::size_t dot = path.find_last_of(L'.');
  if (dot == std::wstring::npos || (slash != std::wstring::npos && dot < slash)) {
    return IconHandle();
  }
  return iconOfShell(L"x" + path.substr(dot), FILE_ATTRIBUTE_NORMAL, SHGFI_USEFILEATTRIBUTES, edge);
}

int edgeOf(HICON icon) {
  ICONINFO info{};
  if (!GetIconInfo(icon, &info)) return 0;
  const BitmapHandle colour(info.hbmColor);
  const BitmapHandle mask(info.hbmMask);
  BITMAP bitmap{};
  if (GetObjectW(colour ? colour.get() : mask.get(), sizeof bitmap, &bitmap) == 0) return 0;
  return static_cast<int>(bitmap.bmWidth);
}

}  // namespace

Bitmap bitmapOfDrawing(Pixels width, Pixels height, const std::function<void(HDC)>& draw) {
  BackBuffer black;
  BackBuffer white;
  if (width.value < 1 || height.value < 1) return {};
  if (!black.resize({width, height}) || !white.resize({width, height})) return {};
  for (const BackBuffer* buffer : {&black, &white}) {
    PatBlt(buffer->dc(), 0, 0, width.value, height.value, buffer == &black ? BLACKNESS : WHITENESS);
    draw(buffer->dc());
  }
  GdiFlush();
  Bitmap result{width.value, height.value, {}};
  result.pixels.resize(static_cast<std::size_t>(width.value) *
                       static_cast<std::size_t>(height.value));
  for (std::size_t i = 0; i < result.pixels.size(); ++i) {
    const std::uint32_t onBlack = black.pixels()[i] & 0xFFFFFFU;
    const std::uint32_t onWhite = white.pixels()[i] & 0xFFFFFFU;
    // What shows of the ground is what is transparent. Parts that invert the
    // ground come out lighter on black; they are taken as solid.
    const int shows = static_cast<int>(onWhite >> 8 & 0xFF) - static_cast<int>(onBlack >> 8 & 0xFF);
    const auto alpha = static_cast<std::uint32_t>(255 - std::max(0, shows));
    const auto channel = [&](int shift) {
      return std::min(onBlack >> shift & 0xFF, alpha) << shift;
    };
    result.pixels[i] = alpha << 24 | channel(16) | channel(8) | channel(0);
  }
  return result;
}

Bitmap bitmapOfIcon(HICON icon, int edge) {
  return bitmapOfDrawing({edge}, {edge}, [&](HDC dc) {
    DrawIconEx(dc, 0, 0, icon, edge, edge, 0, nullptr, DI_NORMAL);
  });
}

Bitmap loadIconOf(const std::wstring& path, int edge) {
  if (path.empty() || edge < 1 || edge > 512) return {};
  const IconHandle icon = iconFor(path, edge);
  if (!icon) return {};
  // Drawn at its own size and scaled here, which is smoother than DrawIconEx.
  const int own = edgeOf(icon.get());
  if (own < 1 || own > 512) return {};
  return scaled(bitmapOfIcon(icon.get(), own), edge, edge);
}

bool isAddress(const std::wstring& path) {
  const std::size_t colon = path.find(L':');
  return colon != std::wstring::npos && colon > 1 && path.find_first_of(L"\\/") > colon;
}

bool holdsIcons(const std::wstring& path) {
  return hasExtension(path, L".exe") || hasExtension(path, L".dll") ||
         hasExtension(path, L".ico") || hasExtension(path, L".icl") || hasExtension(path, L".cpl");
}

bool mayBeSlow(const std::wstring& path) {
  if (isAddress(path) || isFileKind(path)) return false;
  if (path.size() < 3 || path[1] != L':') return true;
  const UINT type = GetDriveTypeW((path.substr(0, 2) + L"\\").c_str());
  return type != DRIVE_FIXED && type != DRIVE_RAMDISK;
}

}  // namespace varnowick
