#include "shortcuts/icon_cache.h"

#include <algorithm>
#include <set>

#include "core/line_format.h"
#include "core/picture_header.h"

namespace varnowick {
namespace {

// The index: magic, count, entries of (edge, number, time, length, UTF-8 source),
// and a checksum of all that. Numbers are little-endian.
constexpr std::string_view kMagic("VWICONS1", 8);
constexpr std::size_t kMaxSourceBytes = 16384;
constexpr std::uint32_t kMaxNumber = 0x7FFFFFFF;
constexpr int kMaxEdge = 1024;
// Icons of the system are up to 256 pixels; those of web sites must not be more
// than a decoder does in a moment.
constexpr std::uint32_t kMaxPictureEdge = 1024;
constexpr std::wstring_view kExtension = L".icn";

std::uint32_t checksum(std::string_view bytes) {
  std::uint32_t sum = 2166136261U;
  for (const char c : bytes) sum = (sum ^ static_cast<unsigned char>(c)) * 16777619U;
  return sum;
}

void append(std::string& out, std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
}

class IndexReader {
 public:
  explicit IndexReader(std::string_view bytes) : rest_(bytes) {}
  bool ok() const { return ok_; }
  bool atEnd() const { return rest_.empty(); }
  std::string_view take(std::size_t count) {
    if (!ok_ || count > rest_.size()) {
      ok_ = false;
      return {};
    }
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  std::uint64_t number(std::size_t bytes) {
    std::uint64_t value = 0;
    const std::string_view taken = take(bytes);
    for (std::size_t i = taken.size(); i > 0; --i)
      value = value << 8 | static_cast<unsigned char>(taken[i - 1]);
    return value;
  }

 private:
  std::string_view rest_;
  bool ok_ = true;
};

std::optional<IconEntry> readEntry(IndexReader& reader, TextCodec& codec) {
  IconEntry entry;
  const std::uint64_t edge = reader.number(2);
  entry.number = static_cast<std::uint32_t>(reader.number(4));
  entry.key.modifiedTime = reader.number(8);
  const std::string_view source = reader.take(static_cast<std::size_t>(reader.number(2)));
  if (!reader.ok() || edge == 0 || edge > kMaxEdge || entry.number > kMaxNumber)
    return std::nullopt;
  if (source.empty() || source.size() > kMaxSourceBytes || !isValidUtf8(source))
    return std::nullopt;
  entry.key.size = static_cast<int>(edge);
  entry.key.source = codec.fromUtf8(source);
  return entry;
}

}  // namespace

std::string encodeIconIndex(const std::vector<IconEntry>& entries, TextCodec& codec) {
  std::string bytes(kMagic);
  append(bytes, entries.size(), 4);
  for (const IconEntry& entry : entries) {
    const std::string source = codec.toUtf8(entry.key.source);
    append(bytes, static_cast<std::uint64_t>(entry.key.size), 2);
    append(bytes, entry.number, 4);
    append(bytes, entry.key.modifiedTime, 8);
    append(bytes, source.size(), 2);
    bytes += source;
  }
  append(bytes, checksum(bytes), 4);
  return bytes;
}

std::optional<std::vector<IconEntry>> decodeIconIndex(std::string_view bytes, TextCodec& codec) {
  if (bytes.size() < kMagic.size() + 8 || !bytes.starts_with(kMagic)) return std::nullopt;
  const std::string_view body = bytes.substr(0, bytes.size() - 4);
  if (IndexReader(bytes.substr(body.size())).number(4) != checksum(body)) return std::nullopt;
  IndexReader reader(body.substr(kMagic.size()));
  const std::uint64_t count = reader.number(4);
  if (count > kMaxCachedIcons) return std::nullopt;
  std::vector<IconEntry> entries;
  std::set<std::uint32_t> numbers;
  std::set<std::pair<std::wstring, int>> places;
  for (std::uint64_t i = 0; i < count; ++i) {
    auto entry = readEntry(reader, codec);
    if (!entry || !places.insert({entry->key.source, entry->key.size}).second) return std::nullopt;
    if (entry->number != 0 && !numbers.insert(entry->number).second) return std::nullopt;
    entries.push_back(std::move(*entry));
  }
  if (!reader.atEnd()) return std::nullopt;
  return entries;
}

IconCache::IconCache(Files& files, TextCodec& codec, const std::wstring& dataFolder)
    : files_(files), codec_(codec), folder_(dataFolder + L"\\IconCache") {}

std::wstring IconCache::fileOf(std::uint32_t number) const {
  return folder_ + L"\\" + std::to_wstring(number) + std::wstring(kExtension);
}
std::wstring IconCache::indexFile() const { return folder_ + L"\\index.dat"; }

void IconCache::load() {
  icons_.clear();
  nextNumber_ = 1;
  changed_ = false;
  const FileBytes file = files_.read(indexFile());
  const auto entries = file.status ? decodeIconIndex(file.bytes, codec_) : std::nullopt;
  if (!entries) return;
  for (const IconEntry& entry : *entries) {
    icons_[{entry.key.source, entry.key.size}] = {entry.key.modifiedTime, entry.number, ++uses_};
    nextNumber_ = std::max(nextNumber_, entry.number + 1);
  }
}

std::optional<IconCache::Found> IconCache::find(const IconKey& key) {
  const auto at = icons_.find({key.source, key.size});
  if (at == icons_.end() || at->second.modifiedTime != key.modifiedTime) return std::nullopt;
  auto kept = findLast(key.source, key.size);
  if (!kept) return std::nullopt;
  return Found{std::move(kept->file)};
}

std::optional<IconCache::Kept> IconCache::findLast(const std::wstring& source, int size) {
  const auto at = icons_.find({source, size});
  if (at == icons_.end()) return std::nullopt;
  if (at->second.number != 0 && !files_.exists(fileOf(at->second.number))) {
    icons_.erase(at);
    changed_ = true;
    return std::nullopt;
  }
  at->second.lastUse = ++uses_;
  return Kept{at->second.number == 0 ? std::wstring{} : fileOf(at->second.number),
              at->second.modifiedTime};
}

// A source that does not come back from the index as it went in (names of files
// need not be text) would make the next index a damaged one.
bool IconCache::canKeep(const IconKey& key) const {
  if (key.source.empty() || key.size <= 0 || key.size > kMaxEdge) return false;
  const std::string bytes = codec_.toUtf8(key.source);
  return bytes.size() <= kMaxSourceBytes && isValidUtf8(bytes) &&
         codec_.fromUtf8(bytes) == key.source;
}

bool IconCache::store(const IconKey& key, std::string_view pictureFile) {
  const PictureHeader header = readPictureHeader(pictureFile);
  if (pictureFile.size() > kMaxIconBytes || !isDecodable(header) ||
      header.width > kMaxPictureEdge || header.height > kMaxPictureEdge)
    return false;
  if (!canKeep(key) || nextNumber_ > kMaxNumber) return false;
  // A number is used once, so that an index that is out of date leads to no file
  // rather than to the wrong one.
  const std::uint32_t number = nextNumber_++;
  if (!files_.createFolder(folder_) || !files_.write(fileOf(number), pictureFile)) return false;
  put(key, number);
  return true;
}

void IconCache::storeNone(const IconKey& key) {
  if (canKeep(key)) put(key, 0);
}

void IconCache::put(const IconKey& key, std::uint32_t number) {
  const auto remove = [&](std::map<Place, Icon>::iterator at) {
    if (at->second.number != 0) files_.remove(fileOf(at->second.number));
    icons_.erase(at);
  };
  if (const auto old = icons_.find({key.source, key.size}); old != icons_.end()) remove(old);
  if (icons_.size() >= kMaxCachedIcons) {
    remove(std::min_element(icons_.begin(), icons_.end(), [](const auto& a, const auto& b) {
      return a.second.lastUse < b.second.lastUse;
    }));
  }
  icons_[{key.source, key.size}] = {key.modifiedTime, number, ++uses_};
  changed_ = true;
}

// The index goes first: without it the files mean nothing. Numbers are not used
// again, for an index that could not be removed still names the old ones.
void IconCache::clear() {
  icons_.clear();
  changed_ = true;
  files_.remove(indexFile());
  removeStrays();
}

void IconCache::removeStrays() {
  std::set<std::wstring> known;
  for (const auto& [place, icon] : icons_)
    if (icon.number != 0) known.insert(fileOf(icon.number));
  for (const FileInfo& file : files_.list(folder_, kExtension))
    if (!file.isFolder && known.count(folder_ + L"\\" + file.name) == 0)
      files_.remove(folder_ + L"\\" + file.name);
}

void IconCache::save() {
  if (!changed_) return;
  std::vector<std::pair<std::uint64_t, IconEntry>> byUse;
  for (const auto& [place, icon] : icons_)
    byUse.push_back({icon.lastUse, {{place.first, place.second, icon.modifiedTime}, icon.number}});
  std::sort(byUse.begin(), byUse.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<IconEntry> entries;
  for (auto& [use, entry] : byUse) entries.push_back(std::move(entry));
  if (!files_.createFolder(folder_) || !files_.write(indexFile(), encodeIconIndex(entries, codec_)))
    return;
  changed_ = false;
  removeStrays();
}

}  // namespace varnowick
