// The icons kept on disk, so that drawing them waits for no program, network or
// web site. An icon belongs to its source (a path or an address), its edge in
// pixels and the time of the source. It is a cache: whatever is wrong with it,
// the answer is that the icon is not there. Decodes no picture.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/text_codec.h"

namespace varnowick {

inline constexpr std::size_t kMaxCachedIcons = 2000;
inline constexpr std::size_t kMaxIconBytes = 1 << 20;

struct IconKey {
  std::wstring source;
  int size = 0;                    // pixels an edge
  std::uint64_t modifiedTime = 0;  // as FileInfo has it; of an address the day, or 0
};

// One line of the index. The name of the icon's file follows from the number
// alone, so that no index can lead out of the folder.
struct IconEntry {
  IconKey key;
  std::uint32_t number = 0;  // 0: known to have no icon
};

// The bytes of the index, least recently used first.
std::string encodeIconIndex(const std::vector<IconEntry>& entries, TextCodec& codec);
// Nothing unless every byte is as it was written. Numbers other than 0 and pairs
// of source and size occur once.
std::optional<std::vector<IconEntry>> decodeIconIndex(std::string_view bytes, TextCodec& codec);

class IconCache {
 public:
  // The folder "\IconCache" of the data folder; it need not exist.
  IconCache(Files& files, TextCodec& codec, const std::wstring& dataFolder);

  // Reads the index. A damaged one counts as empty.
  void load();

  struct Found {
    std::wstring file;  // full path; empty: known to have no icon
  };
  // Nothing when the icon is not there or the source has changed since.
  std::optional<Found> find(const IconKey& key);

  struct Kept {
    std::wstring file;               // full path; empty: known to have no icon
    std::uint64_t modifiedTime = 0;  // of the source, when it was kept
  };
  // What there is, even when the source may have changed since: to be shown until
  // that is known.
  std::optional<Kept> findLast(const std::wstring& source, int size);

  // Keeps the bytes of a picture file in place of what was kept for the source
  // and size. False when they are no picture of a healthy size or cannot be
  // written; then nothing is kept. The icon used least recently makes room.
  bool store(const IconKey& key, std::string_view pictureFile);
  // Keeps that there is none, so that it is not looked for again.
  void storeNone(const IconKey& key);
  // Empties the folder.
  void clear();

  // Writes the index if it has changed, and removes files that it does not name.
  void save();

  std::size_t count() const { return icons_.size(); }

 private:
  using Place = std::pair<std::wstring, int>;
  struct Icon {
    std::uint64_t modifiedTime = 0;
    std::uint32_t number = 0;
    std::uint64_t lastUse = 0;
  };

  std::wstring fileOf(std::uint32_t number) const;
  std::wstring indexFile() const;
  bool canKeep(const IconKey& key) const;
  void put(const IconKey& key, std::uint32_t number);
  void removeStrays();

  Files& files_;
  TextCodec& codec_;
  std::wstring folder_;
  std::map<Place, Icon> icons_;
  std::uint32_t nextNumber_ = 1;
  std::uint64_t uses_ = 0;
  bool changed_ = false;
};

}  // namespace varnowick
