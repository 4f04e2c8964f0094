// Folders on disk as lists of entries that follow what happens there. Watching
// never waits; listings are announced to whoever owns the source, and taken. It
// knows neither containers nor what is shown of a folder.
#pragma once

#include <string>
#include <vector>

namespace varnowick {

struct FolderEntry {
  std::wstring name;  // without its folder
  bool isFolder = false;
  bool operator==(const FolderEntry&) const = default;
};

enum class FolderState {
  Loading,  // nothing is known yet
  Ready,
  Missing,  // not there now; it is looked for until it comes back
  Denied,   // there, but the user may not see into it
  NotAFolder
};

struct FolderListing {
  FolderState state = FolderState::Loading;
  std::vector<FolderEntry> entries{};  // without hidden ones
  std::wstring reason{};               // the system's text when it could not be read
  bool takesFiles = true;              // the user may put files into it
  bool operator==(const FolderListing&) const = default;
};

// A folder with more entries shows this many of them.
inline constexpr std::size_t kMostFolderEntries = 100'000;

struct FolderNews {
  int id = 0;
  FolderListing listing;
};

class FolderSource {
 public:
  virtual ~FolderSource() = default;
  // Lists the folder and watches it from then on. The id is the caller's name for
  // it; what was watched under that id before is dropped. The path is full.
  virtual void watch(int id, const std::wstring& path) = 0;
  // Harmless when nothing is watched under that id.
  virtual void unwatch(int id) = 0;
  // The newest listing of every folder that has changed since the last call.
  virtual std::vector<FolderNews> take() = 0;
};

}  // namespace varnowick
