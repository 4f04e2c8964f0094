#include "ui/win/images/icon_disk_cache.h"

#include "core/png.h"
#include "platform/win32/handles.h"

namespace varnowick {

FileStatus IconDiskCache::UnflushedFiles::write(const std::wstring& path, std::string_view bytes) {
  const FileHandle file(CreateFileW(pathForSystem(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  if (!file ||
      !WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
    return fileStatusOf(GetLastError());
  }
  return fileStatusOf(written == bytes.size() ? ERROR_SUCCESS : ERROR_DISK_FULL);
}

void IconDiskCache::loadOnce() {
  if (!std::exchange(loaded_, true)) cache_.load();
}

std::optional<IconDiskCache::Kept> IconDiskCache::last(const std::wstring& source, int edge) {
  const Lock lock(lock_);
  loadOnce();
  const auto kept = cache_.findLast(source, edge);
  if (!kept) return std::nullopt;
  if (kept->file.empty()) return Kept{{}, kept->modifiedTime};
  const FileBytes file = files_.read(kept->file);
  if (!file.status || file.bytes.size() > kMaxIconBytes) return std::nullopt;
  auto picture = decodePng(file.bytes);
  if (!picture || picture->width != edge || picture->height != edge) return std::nullopt;
  return Kept{{edge, edge, std::move(picture->pixels)}, kept->modifiedTime};
}

void IconDiskCache::keep(const std::wstring& source, int edge, std::uint64_t time,
                         const Bitmap& bitmap) {
  const std::string bytes = encodePng({bitmap.width, bitmap.height, bitmap.pixels});
  const Lock lock(lock_);
  loadOnce();
  if (bytes.empty())
    cache_.storeNone({source, edge, time});
  else
    cache_.store({source, edge, time}, bytes);
}

void IconDiskCache::clear() {
  const Lock lock(lock_);
  loadOnce();
  cache_.clear();
}

void IconDiskCache::save() {
  const Lock lock(lock_);
  if (loaded_) cache_.save();
}

}  // namespace varnowick
