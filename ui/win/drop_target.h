// What other programs drop or put on the clipboard, turned into plain data, and
// the OLE drop target of a window. Everything it hands on is hostile until the
// rules have looked at it; nothing is opened or waited for.
#pragma once

#include <objidl.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace varnowick {

struct DroppedData {
  std::vector<std::wstring> paths;  // files and folders
  std::wstring url;                 // an address, with its title when there is one
  std::wstring urlTitle;
  std::wstring text;  // cut at kMostDroppedText characters
  bool empty() const { return paths.empty() && url.empty() && text.empty(); }
};
inline constexpr std::size_t kMostDroppedText = 5'000'000;
inline constexpr std::size_t kMostDroppedFiles = 1000;

// Whether the object offers anything that readDroppedData takes.
bool offersDroppable(IDataObject& data);
DroppedData readDroppedData(IDataObject& data);
// Empty when the clipboard holds nothing of use.
DroppedData readClipboard();

class DropTarget {
 public:
  struct Hooks {
    // Both answer whether a drop at that point of the screen is welcome.
    std::function<bool(POINT screen)> over;
    std::function<bool(POINT screen, const DroppedData& data)> drop;
    std::function<void()> leave;
  };
  explicit DropTarget(Hooks hooks) : hooks_(std::move(hooks)) {}
  ~DropTarget() { revoke(); }
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;

  // OLE must be initialised on this thread. False when the system refuses.
  bool attach(HWND window);
  // Before the window is destroyed.
  void revoke();
  bool dragActive() const { return active_; }

 private:
  class Object;
  friend class Object;
  Hooks hooks_;
  HWND window_ = nullptr;
  Object* object_ = nullptr;  // counted
  bool active_ = false;
};

}  // namespace varnowick
