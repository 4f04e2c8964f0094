#include "platform/win32/win32_folder_source.h"

#include <algorithm>
#include <exception>

#include "platform/win32/critical_section.h"
#include "platform/win32/handles.h"
#include "platform/win32/win32_error.h"
#include "platform/win32/win32_files.h"

namespace varnowick {
namespace {

// A folder that is not there, or that may have been replaced, is looked at this often.
constexpr DWORD kPollMilliseconds = 2000;
// Bursts of changes are one listing: not more often than this, and not before the
// burst has had a moment.
constexpr DWORD kBetweenListings = 200;
constexpr DWORD kBurstMilliseconds = 30;
constexpr DWORD kEndMilliseconds = 200;
constexpr SIZE_T kStackBytes = 256 * 1024;

struct ChangeHandleTraits {
  using Type = HANDLE;
  static HANDLE none() { return INVALID_HANDLE_VALUE; }
  static void close(HANDLE h) { FindCloseChangeNotification(h); }
};
using ChangeHandle = UniqueHandle<ChangeHandleTraits>;

bool isFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::wstring insideOf(const std::wstring& folder, const wchar_t* what) {
  return pathForSystem(folder + (folder.ends_with(L'\\') ? L"" : L"\\") + what);
}

FolderListing failed(const std::wstring& path, DWORD code) {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
      // Of an empty drive's root this means that there are no entries.
      if (isFolder(GetFileAttributesW(pathForSystem(path).c_str()))) return {FolderState::Ready};
      return {FolderState::Missing};
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_DIRECTORY: {
      const DWORD attributes = GetFileAttributesW(pathForSystem(path).c_str());
      if (attributes != INVALID_FILE_ATTRIBUTES && !isFolder(attributes))
        return {FolderState::NotAFolder};
      return {FolderState::Missing};
    }
    case ERROR_ACCESS_DENIED:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_LOGON_FAILURE:
      return {FolderState::Denied, {}, systemErrorText(code)};
    default:
      return {FolderState::Missing, {}, systemErrorText(code)};
  }
}

// Tells a folder from another one that has taken its path, and, where no
// notification comes, that something in it has changed.
struct Identity {
  DWORD volume = 0, high = 0, low = 0;
  FILETIME written{};
  bool there = false;
  bool operator==(const Identity& o) const {
    return there == o.there && volume == o.volume && high == o.high && low == o.low &&
           CompareFileTime(&written, &o.written) == 0;
  }
};

Identity identityOf(const std::wstring& path) {
  Identity identity;
  const FileHandle folder(CreateFileW(insideOf(path, L"").c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  BY_HANDLE_FILE_INFORMATION about{};
  if (!folder || !GetFileInformationByHandle(folder.get(), &about)) return identity;
  identity = {about.dwVolumeSerialNumber, about.nFileIndexHigh, about.nFileIndexLow,
              about.ftLastWriteTime, true};
  return identity;
}

}  // namespace

FolderListing listFolder(const std::wstring& path) {
  WIN32_FIND_DATAW data{};
  const FindHandle search(FindFirstFileW(insideOf(path, L"*").c_str(), &data));
  if (!search) return failed(path, GetLastError());
  FolderListing listing{FolderState::Ready};
  do {
    const std::wstring_view name = data.cFileName;
    const bool hidden = (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
    if (hidden || name.empty() || name == L"." || name == L"..") continue;
    if (listing.entries.size() == kMostFolderEntries) return listing;
    listing.entries.push_back({std::wstring(name), isFolder(data.dwFileAttributes)});
  } while (FindNextFileW(search.get(), &data));
  const DWORD code = GetLastError();
  return code == ERROR_NO_MORE_FILES ? listing : failed(path, code);
}

// One folder and its thread. Both hold it, so that either may go first.
class FolderWatcher {
 public:
  FolderWatcher(std::wstring path, HWND owner, UINT message, Win32FolderSource::Arrange arrange)
      : path_(std::move(path)),
        arrange_(arrange),
        wake_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
        message_(message),
        owner_(owner) {}

  // The thread keeps the watcher that it is given.
  static bool start(const std::shared_ptr<FolderWatcher>& watcher) {
    auto held = std::make_unique<std::shared_ptr<FolderWatcher>>(watcher);
    watcher->thread_.reset(CreateThread(nullptr, kStackBytes, threadMain, held.get(), 0, nullptr));
    if (!watcher->thread_) return false;
    held.release();
    return true;
  }

  const std::wstring& path() const { return path_; }
  void stop() {
    const Lock lock(lock_);
    stopping_ = true;
    SetEvent(wake_.get());
  }
  // Takes back stop(). False when the thread has ended, or is about to.
  bool revive() {
    const Lock lock(lock_);
    if (ended_) return false;
    stopping_ = false;
    ResetEvent(wake_.get());
    fresh_ = haveListing_;
    return true;
  }
  // What it has is waiting for take().
  void announceAgain() {
    const Lock lock(lock_);
    if (fresh_) announce();
  }
  bool ended() {
    const Lock lock(lock_);
    return ended_;
  }
  // No message comes after this.
  void disown() {
    const Lock lock(lock_);
    owner_ = nullptr;
  }
  void waitForEnd(DWORD milliseconds) { WaitForSingleObject(thread_.get(), milliseconds); }
  bool take(FolderListing& listing) {
    const Lock lock(lock_);
    announced_ = false;
    if (!std::exchange(fresh_, false)) return false;
    listing = listing_;
    return true;
  }
  void putFailure(std::wstring reason) { deliver({FolderState::Denied, {}, std::move(reason)}); }

 private:
  static DWORD WINAPI threadMain(void* context) {
    const std::unique_ptr<std::shared_ptr<FolderWatcher>> self(
        static_cast<std::shared_ptr<FolderWatcher>*>(context));
    (*self)->work();
    return 0;
  }

  void work() {
    // Missing media must fail, not ask for a disk.
    SetErrorMode(SetErrorMode(0) | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    for (;;) {
      try {
        while (!stopping()) watchOnce();
      } catch (const std::exception&) {
        // Not enough memory: once more, after a while.
        WaitForSingleObject(wake_.get(), kPollMilliseconds);
      }
      const Lock lock(lock_);
      if (!stopping_) continue;
      ended_ = true;
      return;
    }
  }

  // Lists and follows the folder as long as it is the same one.
  void watchOnce() {
    // Before the listing, so that what happens meanwhile counts as a change.
    ChangeHandle change(
        FindFirstChangeNotificationW(pathForSystem(path_).c_str(), FALSE,
                                     FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME));
    Identity before = identityOf(path_);
    if (!list() || !change) {
      // Where notifications do not come there is still the look at the folder.
      WaitForSingleObject(wake_.get(), kPollMilliseconds);
      return;
    }
    for (;;) {
      const HANDLE handles[] = {wake_.get(), change.get()};
      const DWORD what = WaitForMultipleObjects(2, handles, FALSE, kPollMilliseconds);
      if (stopping()) return;
      if (what == WAIT_OBJECT_0 + 1) {
        if (WaitForSingleObject(wake_.get(), kBurstMilliseconds) == WAIT_OBJECT_0) return;
        if (!FindNextChangeNotification(change.get())) return;
      } else if (what == WAIT_TIMEOUT) {
        // A folder that is being removed stays as long as anybody holds it, and is
        // empty. Letting go of it shows whether it is.
        if (empty_) return;
        if (identityOf(path_) == before) continue;
      } else {
        return;
      }
      // Another folder under the same path needs a notification of its own.
      const Identity now = identityOf(path_);
      const bool same = now.there && now.volume == before.volume && now.high == before.high &&
                        now.low == before.low;
      before = now;
      const DWORD start = GetTickCount();
      if (!same || !list()) return;
      // A large folder in which much happens must not keep a processor busy.
      const DWORD pause = std::max(kBetweenListings, (GetTickCount() - start) * 5);
      if (WaitForSingleObject(wake_.get(), pause) == WAIT_OBJECT_0) return;
    }
  }

  // False when there is nothing to follow.
  bool list() {
    FolderListing listing = listFolder(path_);
    const bool ready = listing.state == FolderState::Ready;
    empty_ = listing.entries.empty();
    if (arrange_ != nullptr) arrange_(listing.entries);
    deliver(std::move(listing));
    return ready;
  }

  bool stopping() {
    const Lock lock(lock_);
    return stopping_;
  }

  void deliver(FolderListing listing) {
    const Lock lock(lock_);
    if (haveListing_ && listing == listing_) return;
    listing_ = std::move(listing);
    haveListing_ = fresh_ = true;
    announce();
  }

  // Under the lock.
  void announce() {
    if (owner_ == nullptr || stopping_ || announced_) return;
    announced_ = PostMessageW(owner_, message_, 0, 0) != 0;
  }

  const std::wstring path_;
  const Win32FolderSource::Arrange arrange_;
  const KernelHandle wake_;  // set while stopping
  const UINT message_;
  KernelHandle thread_;
  bool empty_ = true;     // as listed last; the thread's own
  CriticalSection lock_;  // around everything below
  HWND owner_;
  FolderListing listing_;
  bool haveListing_ = false;
  bool fresh_ = false;      // not taken yet
  bool announced_ = false;  // a message is on its way
  bool stopping_ = false;
  bool ended_ = false;
};

Win32FolderSource::Win32FolderSource(HWND owner, UINT message, Arrange arrange)
    : owner_(owner), message_(message), arrange_(arrange) {}

Win32FolderSource::~Win32FolderSource() {
  for (const auto& [id, watcher] : watched_) ending_.push_back(watcher);
  for (const Watcher& watcher : ending_) {
    watcher->disown();
    watcher->stop();
  }
  const DWORD start = GetTickCount();
  for (const Watcher& watcher : ending_) {
    const DWORD passed = GetTickCount() - start;
    if (passed >= kEndMilliseconds) break;
    watcher->waitForEnd(kEndMilliseconds - passed);
  }
}

void Win32FolderSource::watch(int id, const std::wstring& path) {
  if (const auto at = watched_.find(id); at != watched_.end() && at->second->path() == path) return;
  unwatch(id);
  waiting_.push_back({id, path});
  startWaiting();
}

void Win32FolderSource::unwatch(int id) {
  std::erase_if(waiting_, [id](const Waiting& waiting) { return waiting.id == id; });
  if (const auto at = watched_.find(id); at != watched_.end()) {
    at->second->stop();
    ending_.push_back(at->second);
    watched_.erase(at);
  }
  startWaiting();
}

void Win32FolderSource::dropEnded() {
  std::erase_if(ending_, [](const Watcher& watcher) { return watcher->ended(); });
}

void Win32FolderSource::startWaiting() {
  dropEnded();
  for (auto next = waiting_.begin(); next != waiting_.end();) {
    // A thread that is stuck there, or has just been told to end, goes on instead of
    // making room for another one that gets stuck as well.
    const auto same = std::find_if(ending_.begin(), ending_.end(), [&](const Watcher& watcher) {
      return watcher->path() == next->path && watcher->revive();
    });
    Watcher watcher;
    if (same != ending_.end()) {
      watcher = *same;
      ending_.erase(same);
      watcher->announceAgain();
    } else if (threads() < kMostThreads) {
      watcher = std::make_shared<FolderWatcher>(next->path, owner_, message_, arrange_);
      if (!FolderWatcher::start(watcher)) watcher->putFailure(systemErrorText(GetLastError()));
    } else {
      ++next;
      continue;
    }
    watched_[next->id] = std::move(watcher);
    next = waiting_.erase(next);
  }
}

std::vector<FolderNews> Win32FolderSource::take() {
  std::vector<FolderNews> news;
  for (const auto& [id, watcher] : watched_) {
    FolderListing listing;
    if (watcher->take(listing)) news.push_back({id, std::move(listing)});
  }
  startWaiting();
  return news;
}

}  // namespace varnowick
