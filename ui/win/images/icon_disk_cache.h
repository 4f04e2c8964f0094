// Icons as bitmaps between this run and the next, for the threads that load
// images. Reads its index when first asked. Whatever fails, the icon is simply
// not there; nothing is reported. May be called from several threads at once.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/win32/critical_section.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_text_codec.h"
#include "shortcuts/icon_cache.h"
#include "ui/win/toolkit/pixel_draw.h"

namespace varnowick {

class IconDiskCache {
 public:
  explicit IconDiskCache(const std::wstring& dataFolder) : cache_(files_, codec_, dataFolder) {}

  struct Kept {
    Bitmap bitmap;           // empty: known to have no icon
    std::uint64_t time = 0;  // of the source, as it was kept
  };
  // Files that are no picture of that size count as missing.
  std::optional<Kept> last(const std::wstring& source, int edge);
  // An empty bitmap says that there is none.
  void keep(const std::wstring& source, int edge, std::uint64_t time, const Bitmap& bitmap);
  void clear();
  void save();

 private:
  // Losing an icon is nothing; waiting for the disk at each would be.
  class UnflushedFiles : public Win32Files {
   public:
    FileStatus write(const std::wstring& path, std::string_view bytes) override;
  };
  void loadOnce();

  CriticalSection lock_;  // around everything below
  UnflushedFiles files_;
  Win32TextCodec codec_;
  IconCache cache_;
  bool loaded_ = false;
};

}  // namespace varnowick
