// What other programs drop or put on the clipboard, turned into plain data, and
// the OLE drop target of a window. Everything it hands on is hostile until the
// rules have looked at it; nothing is opened or waited for.
#pragma once

#include <objidl.h>
#include <windows.h>
// These rely on it.
#include <shellapi.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shortcuts/dropped.h"

namespace varnowick {

// Whether the object offers anything that readDropped takes.
bool offersDroppable(IDataObject& data);
// Of paths nothing is known but their names.
Dropped readDropped(IDataObject& data);
// The files that the object offers, at most that many; full paths as it has them.
std::vector<std::wstring> droppedPaths(IDataObject& data, std::size_t most);
// With nothing in it when the clipboard holds nothing of use.
Dropped readClipboard();
// Whether it may hold something, without reading it.
bool clipboardOffersDroppable();

class DropTarget {
 public:
  struct Hooks {
    // Both answer whether a drop at that point of the screen is welcome.
    std::function<bool(POINT screen)> over;
    std::function<bool(POINT screen, const Dropped& data)> drop;
    std::function<void()> leave;
    // Both may be empty. What a drop of the object would do at that point where it
    // does not become a shortcut, of the effects that the source allows; and the
    // drop that does it. The effect that is told to the source comes back.
    std::function<std::optional<DWORD>(POINT screen, IDataObject& data, DWORD keys, DWORD allowed)>
        effect{};
    std::function<DWORD(POINT screen, IDataObject& data, DWORD effect)> take{};
    // It only wants to know what is dragged over it.
    bool takesNothing = false;
  };
  explicit DropTarget(Hooks hooks) : hooks_(std::move(hooks)) {}
  ~DropTarget() { revoke(); }
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;

  // OLE must be initialised on this thread. False when the system refuses.
  bool attach(HWND window);
  // Before the window is destroyed.
  void revoke();
  // WM_DROPFILES, which comes where attach() could not let other programs use OLE.
  void filesDropped(HDROP files);
  // Around a drag of this program's own, which is always by OLE.
  void expectOwnDrag(bool expected);
  // Something is being dragged over the window. Ends by itself when no button has
  // been held for a while; to be asked now and then.
  bool dragActive() const;

 private:
  class Object;
  friend class Object;
  // Milliseconds that a source may take to drop after the button has come up.
  static constexpr DWORD kAfterRelease = 2000;
  void begun();
  void ended() const;
  bool listen();

  Hooks hooks_;
  HWND window_ = nullptr;
  Object* object_ = nullptr;  // counted
  bool byMessage_ = false;    // files come by WM_DROPFILES, as OLE cannot reach up to here
  mutable bool active_ = false;
  mutable DWORD lastHeld_ = 0;  // when a button was seen down, or the drag was heard of
};

}  // namespace varnowick
