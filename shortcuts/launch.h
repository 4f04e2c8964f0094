// Starting what shortcuts point to: one shortcut, all of a container, those with
// a tag, one with another; and what is said when a start fails. Sees windows
// only through LaunchHost.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/document.h"
#include "platform/platform.h"
#include "platform/shell.h"
#include "shortcuts/paths.h"

namespace varnowick {

// A window that shows shortcuts, as far as starting one needs it.
class LaunchHost {
 public:
  virtual ~LaunchHost() = default;
  virtual bool isMainWindow() const = 0;
  // Of the main window: a click that ends a drag or a selection starts nothing.
  virtual bool launchSuppressed() const = 0;
  // The program has: nothing is started any more.
  virtual bool ended() const { return false; }
  // Collapses or hides the window as its settings require.
  virtual void PreLaunch() = 0;
  virtual OwnerWindow ownerWindow() const = 0;
  // The path to hand to the system in place of a file's own: PathAsSeenFrom32Bit
  // with what is known of the system.
  virtual std::wstring pathForSystem(const std::wstring& path) const { return path; }
};

class ForegroundWindow {
 public:
  virtual ~ForegroundWindow() = default;
  virtual std::uintptr_t current() = 0;  // 0: none
  virtual void set(std::uintptr_t window) = 0;
};

enum class LaunchErrorHandling { MessageBox, Properties };

struct LaunchError {
  int code;
  const wchar_t* message;
  LaunchErrorHandling handling;
};

inline constexpr const wchar_t* kLaunchErrorTitle = L"Error with shortcut";

// Nothing for success: 0 and everything from 32 up.
std::optional<LaunchError> launchError(int result);

enum class LaunchOutcome {
  Suppressed,      // nothing happened
  Declined,        // the user said No
  Started,         // or failed in a way that counts as success
  FailedReported,  // a message box has been shown
  FailedFaulty     // the caller opens the properties with propertiesError
};

struct LaunchResult {
  LaunchOutcome outcome = LaunchOutcome::Suppressed;
  std::wstring propertiesError;  // "Error: " and the message, for FailedFaulty
};

LaunchResult LaunchShortcut(Platform& platform, LaunchHost& host, bool confirm,
                            const std::wstring& caption, const std::wstring& parameters,
                            const std::wstring& path, bool isCommand);
LaunchResult LaunchShortcut(Platform& platform, LaunchHost& host, const clsShortcut& shortcut);

// Dropping one shortcut on another of the host's window, which does not become the
// owner of what is shown. The caller restores the drag icon whatever
// the answer was.
void OpenWith(Platform& platform, const LaunchHost& host, const clsShortcut& dragged,
              const clsShortcut& target);

// Opens the properties of the shortcut with an error text, which may be empty.
using OpenProperties = std::function<void(ShortcutSlot, const std::wstring& error)>;

struct StartMany {
  Platform& platform;
  LaunchHost& host;      // the main window, whose PreLaunch is called once
  LaunchHost& eachHost;  // where the shortcuts are shown; may be the same
  ForegroundWindow& foreground;
  Workspace& workspace;
  OpenProperties openProperties;
};

std::size_t shortcutsIn(const Workspace& workspace, ContainerSlot container);
// "&Start all [n]"
std::wstring startAllCaption(const Workspace& workspace, ContainerSlot container);
// Returns false when the user said No.
bool StartAll(StartMany& start, ContainerSlot container, bool confirmStartAll);
void StartByTag(StartMany& start, const std::wstring& tag);
// The tags of a shortcut, blanks trimmed, empty ones left out.
std::vector<std::wstring> tagsOf(const clsShortcut& shortcut);

// Returns false when the properties are to be opened (a command has no file).
bool OpenFileLocation(Platform& platform, LaunchHost& mainWindow, const clsShortcut& shortcut,
                      bool useIcon);
void OpenFolder(Platform& platform, LaunchHost& mainWindow, const std::wstring& folder);
// Returns true when at least one path has changed.
bool UseRelativePath(Platform& platform, Document& document,
                     std::span<const ShortcutSlot> selected);

// Keeps the second click of a double click on a container from starting a
// shortcut that has just moved under the pointer.
class ClickGuard {
 public:
  // The caller starts TimerDblClickLabelDelay.
  void SetDblClickDelay() { blocked_ = true; }
  // The timer's one tick.
  void TimerDblClickLabelDelayTick() { blocked_ = false; }
  bool blocked() const { return blocked_; }

 private:
  bool blocked_ = false;
};

}  // namespace varnowick
