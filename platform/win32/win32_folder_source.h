// Folders on disk behind FolderSource: a thread for each folder that is watched,
// because a drive or a share that does not answer must stop nobody else. Knows no
// window but the one that is told of news.
#pragma once

#include <windows.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/folder_source.h"

namespace varnowick {

class FolderWatcher;

class Win32FolderSource final : public FolderSource {
 public:
  // The message is posted to the owner when there is something to take(). The
  // listing is put in order by `arrange`, in the watching thread; it may be null.
  using Arrange = void (*)(std::vector<FolderEntry>&);
  Win32FolderSource(HWND owner, UINT message, Arrange arrange);
  // Waits a moment for the threads; one that is stuck on a dead drive is left
  // behind and touches nothing of ours.
  ~Win32FolderSource() override;
  Win32FolderSource(const Win32FolderSource&) = delete;
  Win32FolderSource& operator=(const Win32FolderSource&) = delete;

  void watch(int id, const std::wstring& path) override;
  void unwatch(int id) override;
  std::vector<FolderNews> take() override;

  // For WM_DEVICECHANGE of the owner: a drive that is to be removed is let go of before
  // this returns, and watched again when it stays. False when it is none of ours.
  bool deviceChanged(WPARAM event, LPARAM about);
  // The folder's handle while it is held. For tests.
  HANDLE heldFor(int id) const;
  // Threads that exist now, with those that have been told to end.
  std::size_t threads() const { return watched_.size() + ending_.size(); }

 private:
  // Enough for every folder container that fits on a screen.
  static constexpr std::size_t kMostThreads = 64;
  using Watcher = std::shared_ptr<FolderWatcher>;
  struct Waiting {
    int id = 0;
    std::wstring path;
  };
  void startWaiting();
  void dropEnded();

  HWND owner_;
  UINT message_;
  Arrange arrange_;
  std::map<int, Watcher> watched_;
  std::vector<Watcher> ending_;
  std::deque<Waiting> waiting_;  // until a thread is free
};

// What FindFirstFile and its error say about a folder. For tests.
FolderListing listFolder(const std::wstring& path);

}  // namespace varnowick
