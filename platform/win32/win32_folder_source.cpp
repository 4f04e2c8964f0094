#include "platform/win32/win32_folder_source.h"

#include <dbt.h>

#include <algorithm>
#include <array>

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
constexpr DWORD kWatchEndMilliseconds = 200;
constexpr SIZE_T kStackBytes = 256 * 1024;

// A drive that is to be removed is left alone until the system says what has become of
// that, but not for ever.
constexpr DWORD kAwayMilliseconds = 30'000;
// The system waits for the answer, and so does the window.
constexpr DWORD kLettingGoMilliseconds = 1000;

struct DeviceNoticeTraits {
  using Type = HDEVNOTIFY;
  static HDEVNOTIFY none() { return nullptr; }
  static void close(HDEVNOTIFY h) { UnregisterDeviceNotification(h); }
};
using DeviceNotice = UniqueHandle<DeviceNoticeTraits>;

std::wstring insideOf(const std::wstring& folder, const wchar_t* what) {
  return pathForSystem(folder + (folder.ends_with(L'\\') ? L"" : L"\\") + what);
}

FolderListing failed(const std::wstring& path, DWORD code) {
  switch (code) {
    case ERROR_FILE_NOT_FOUND:
      // Of an empty drive's root this means that there are no entries.
      if (hasFolderAttribute(GetFileAttributesW(pathForSystem(path).c_str())))
        return {FolderState::Ready};
      return {FolderState::Missing};
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_DIRECTORY: {
      const DWORD attributes = GetFileAttributesW(pathForSystem(path).c_str());
      if (attributes != INVALID_FILE_ATTRIBUTES && !hasFolderAttribute(attributes))
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

FileHandle openFolder(const std::wstring& path, DWORD access, DWORD flags) {
  // Nobody else is kept from anything, as far as that is in our hands.
  return FileHandle(CreateFileW(path.c_str(), access,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr));
}

// A folder that is held open to hear of changes in it. Of one thread.
class OpenFolder {
 public:
  explicit OpenFolder(const std::wstring& path)
      : folder_(openFolder(pathForSystem(path), FILE_LIST_DIRECTORY, FILE_FLAG_OVERLAPPED)),
        changed_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    asked_.hEvent = changed_.get();
  }
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;
  ~OpenFolder() {
    DWORD size = 0;
    // The system writes into this object until it has given up.
    if (pending_ && CancelIo(folder_.get()))
      GetOverlappedResult(folder_.get(), &asked_, &size, TRUE);
  }
  HANDLE handle() const { return folder_.get(); }
  HANDLE changed() const { return changed_.get(); }
  // The event is set at the next change from here on. False where none comes.
  bool listen() {
    ResetEvent(changed_.get());
    pending_ =
        folder_ && ReadDirectoryChangesW(folder_.get(), changes_.data(), sizeof changes_, FALSE,
                                         FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME,
                                         nullptr, &asked_, nullptr) != FALSE;
    return pending_;
  }

 private:
  FileHandle folder_;
  KernelHandle changed_;
  OVERLAPPED asked_{};
  std::array<DWORD, 1024> changes_{};  // not read: the folder is listed anew
  bool pending_ = false;
};

// Tells a folder from another one that has taken its path, and, where no
// notification comes, that something in it has changed.
struct Identity {
  DWORD volume = 0, high = 0, low = 0;
  FILETIME written{};
  bool there = false;
  bool takesFiles = true;
  bool operator==(const Identity& o) const {
    return there == o.there && takesFiles == o.takesFiles && volume == o.volume && high == o.high &&
           low == o.low && CompareFileTime(&written, &o.written) == 0;
  }
};

Identity identityOf(const std::wstring& path) {
  Identity identity;
  const std::wstring name = insideOf(path, L"");
  const FileHandle folder = openFolder(name, 0, 0);
  BY_HANDLE_FILE_INFORMATION about{};
  if (!folder || !GetFileInformationByHandle(folder.get(), &about)) return identity;
  identity = {about.dwVolumeSerialNumber, about.nFileIndexHigh, about.nFileIndexLow,
              about.ftLastWriteTime, true};
  if (!openFolder(name, FILE_ADD_FILE, 0)) {
    const DWORD code = GetLastError();
    identity.takesFiles = code != ERROR_ACCESS_DENIED && code != ERROR_WRITE_PROTECT &&
                          code != ERROR_NETWORK_ACCESS_DENIED;
  }
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
    listing.entries.push_back({std::wstring(name), hasFolderAttribute(data.dwFileAttributes)});
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
        away_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
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
    if (left_ == INVALID_HANDLE_VALUE) ResetEvent(wake_.get());
    fresh_ = haveListing_;
    return true;
  }
  // The folder's handle; invalid while there is none.
  HANDLE held() {
    const Lock lock(lock_);
    return held_;
  }
  // Another thread: the drive of the handle is to be removed. False when it is none of
  // this watcher's; else waitUntilAway() is to follow.
  bool leave(HANDLE handle) {
    const Lock lock(lock_);
    if (held_ != handle || handle == INVALID_HANDLE_VALUE) return false;
    left_ = handle;
    SetEvent(wake_.get());
    return true;
  }
  void waitUntilAway() { WaitForSingleObject(away_.get(), kLettingGoMilliseconds); }
  // The drive has gone, or stays.
  void comeBack(HANDLE handle) {
    const Lock lock(lock_);
    if (left_ != handle || handle == INVALID_HANDLE_VALUE) return;
    left_ = INVALID_HANDLE_VALUE;
    SetEvent(wake_.get());
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
        while (!stopping()) watchUntilAway();
      } catch (...) {
        // Not enough memory: once more, after a while.
        hold(INVALID_HANDLE_VALUE);
        WaitForSingleObject(wake_.get(), kPollMilliseconds);
      }
      const Lock lock(lock_);
      if (!stopping_) continue;
      ended_ = true;
      return;
    }
  }

  void watchUntilAway() {
    DeviceNotice notice;  // stays until it is known what has become of the drive
    watchOnce(notice);
    hold(INVALID_HANDLE_VALUE);
    {
      const Lock lock(lock_);
      if (left_ == INVALID_HANDLE_VALUE) return;
      if (!stopping_) ResetEvent(wake_.get());
      SetEvent(away_.get());
    }
    WaitForSingleObject(wake_.get(), kAwayMilliseconds);
    const Lock lock(lock_);
    left_ = INVALID_HANDLE_VALUE;
    if (!stopping_) ResetEvent(wake_.get());
    ResetEvent(away_.get());
  }

  void hold(HANDLE handle) {
    const Lock lock(lock_);
    held_ = handle;
  }

  // Asks to be told before the drive is removed; drives that cannot be do not tell.
  void askAbout(HANDLE folder, DeviceNotice& notice) {
    DEV_BROADCAST_HANDLE about{};
    about.dbch_size = sizeof about;
    about.dbch_devicetype = DBT_DEVTYP_HANDLE;
    about.dbch_handle = folder;
    HWND owner = nullptr;
    {
      const Lock lock(lock_);
      owner = owner_;
    }
    if (owner != nullptr)
      notice.reset(RegisterDeviceNotificationW(owner, &about, DEVICE_NOTIFY_WINDOW_HANDLE));
  }

  // Lists and follows the folder as long as it is the same one.
  void watchOnce(DeviceNotice& notice) {
    OpenFolder folder(path_);
    if (folder.handle() != INVALID_HANDLE_VALUE) {
      hold(folder.handle());
      askAbout(folder.handle(), notice);
    }
    // Before the listing, so that what happens meanwhile counts as a change.
    const bool told = folder.listen();
    Identity before = identityOf(path_);
    if (!list(before.takesFiles) || !told) {
      // Where notifications do not come there is still the look at the folder.
      WaitForSingleObject(wake_.get(), kPollMilliseconds);
      return;
    }
    for (;;) {
      const HANDLE handles[] = {wake_.get(), folder.changed()};
      const DWORD what = WaitForMultipleObjects(2, handles, FALSE, kPollMilliseconds);
      if (what == WAIT_OBJECT_0 + 1) {
        if (WaitForSingleObject(wake_.get(), kBurstMilliseconds) == WAIT_OBJECT_0) return;
        if (!folder.listen()) return;
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
      if (!same || !list(now.takesFiles)) return;
      // A large folder in which much happens must not keep a processor busy.
      const DWORD pause = std::max(kBetweenListings, (GetTickCount() - start) * 5);
      if (WaitForSingleObject(wake_.get(), pause) == WAIT_OBJECT_0) return;
    }
  }

  // False when there is nothing to follow.
  bool list(bool takesFiles) {
    FolderListing listing = listFolder(path_);
    listing.takesFiles = takesFiles;
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
  const KernelHandle wake_;  // set while stopping, and to leave and to come back
  const KernelHandle away_;  // set while nothing of the drive is held
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
  HANDLE held_ = INVALID_HANDLE_VALUE;
  HANDLE left_ = INVALID_HANDLE_VALUE;  // that was held when the drive was to go
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
    if (passed >= kWatchEndMilliseconds) break;
    watcher->waitForEnd(kWatchEndMilliseconds - passed);
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

HANDLE Win32FolderSource::heldFor(int id) const {
  const auto at = watched_.find(id);
  return at == watched_.end() ? INVALID_HANDLE_VALUE : at->second->held();
}

bool Win32FolderSource::deviceChanged(WPARAM event, LPARAM about) {
  const auto* header = reinterpret_cast<const DEV_BROADCAST_HDR*>(about);
  if (header == nullptr || header->dbch_devicetype != DBT_DEVTYP_HANDLE) return false;
  const HANDLE handle = reinterpret_cast<const DEV_BROADCAST_HANDLE*>(about)->dbch_handle;
  std::vector<Watcher> all = ending_;
  for (const auto& [id, watcher] : watched_) all.push_back(watcher);
  if (event == DBT_DEVICEQUERYREMOVE) {
    for (const Watcher& watcher : all)
      if (watcher->leave(handle)) watcher->waitUntilAway();
    return true;
  }
  if (event != DBT_DEVICEQUERYREMOVEFAILED && event != DBT_DEVICEREMOVECOMPLETE) return false;
  for (const Watcher& watcher : all) watcher->comeBack(handle);
  return true;
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
