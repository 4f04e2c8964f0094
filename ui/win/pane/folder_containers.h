// The folder containers of the program: what each shows of its folder, wherever it is
// shown, and what the mouse, the keyboard, menus and drops do with the files in it.
// Only folders that can be seen are watched. It changes files and never records.
#pragma once

#include <objidl.h>
#include <windows.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "containers/folder_sight.h"
#include "core/document.h"
#include "core/key.h"
#include "platform/platform.h"
#include "platform/win32/background.h"
#include "platform/win32/win32_folder_source.h"
#include "shortcuts/launch.h"
#include "ui/scene/folder_view.h"
#include "ui/scene/object_scene.h"
#include "ui/win/pane/folder_transfers.h"
#include "ui/win/pane/in_place_edit.h"
#include "ui/win/toolkit/drop_target.h"
#include "ui/win/toolkit/modal.h"
#include "ui/win/toolkit/scene_accessible.h"
#include "ui/win/toolkit/scene_view.h"
#include "ui/win/toolkit/window.h"

namespace varnowick {

// A window that may show folder containers. All is borrowed, from attach to detach.
struct FolderPane {
  ObjectScene* objects = nullptr;
  SceneView* view = nullptr;
  LaunchHost* host = nullptr;
  InPlaceEdit* edit = nullptr;
  SceneAccessible* items = nullptr;
  DropTarget* drops = nullptr;
  HWND window = nullptr;
};

class FolderContainers final : public Window {
 public:
  // All are borrowed and must outlive it.
  FolderContainers(const Platform& platform, Document& document, ModalDepth& modal,
                   Doorbell& doorbell);
  ~FolderContainers() override;

  void attach(const FolderPane& pane);
  // Before the window is destroyed.
  void detach(HWND window);
  // The container's parts have been laid out, or it has gone.
  void laidOut(ContainerSlot slot);

  // The folder that the container shows; empty when it shows none.
  std::wstring folderOf(ContainerSlot slot) const;
  // Files are being copied, moved or deleted, and will be for more than a moment.
  bool busy();
  // The window in which the shell asks the user something about them; null for none.
  // While it is open it counts as a dialog of the program.
  HWND question() { return transfers_ ? transfers_->question() : nullptr; }
  // Files are being dragged out of a folder container.
  bool dragging() const { return dragging_; }
  // Puts files into the bin, after asking where the settings want that. False when
  // nothing has been begun; the user has been told why.
  bool recycle(const std::vector<std::wstring>& paths);
  // The same where the user has been asked already.
  void recycleUnasked(const std::vector<std::wstring>& paths);
  // False when the container shows no folder, or no files are offered.
  bool paste(ContainerSlot slot);

  // The mouse on a node. Each is false when that is none of ours.
  bool pressed(NodeId node, Modifiers held);
  // Both go by the keys that were held at the press.
  bool released(NodeId node, bool click);
  bool clicked(NodeId node, bool doubleClick);
  bool contextMenu(NodeId node, POINT screen);
  // Of the wheel's own units, 120 for a notch.
  bool wheel(NodeId node, int delta);
  bool canDrag(NodeId node) const;
  // For a list the row that keys act on, if it is in sight; other nodes as they are.
  NodeId currentRow(NodeId node) const;
  void drag(NodeId node);

  // Keys while the node has the focus.
  bool keyDown(NodeId focused, Key key);
  bool typed(NodeId focused, wchar_t letter);
  // What the default action of a row does.
  bool open(NodeId node);

  // Files that are listed already, for whoever searches them (folder_containers_jump.cpp).
  using Listed = std::function<void(ContainerSlot slot, const std::wstring& name)>;
  void forEachListed(const Listed& visit) const;
  ImageRef iconOf(ContainerSlot slot, const std::wstring& name) const;
  // Both do nothing for a file that has gone.
  void openFile(ContainerSlot slot, const std::wstring& name, LaunchHost& bar);
  void showFile(ContainerSlot slot, const std::wstring& name);

  // A drop of files on a container, or on a node in it: what it would do, and doing it.
  // The latter says what to answer the source; it may let messages through.
  std::optional<DWORD> dropEffect(ContainerSlot slot, NodeId node, IDataObject& data, DWORD keys,
                                  DWORD allowed);
  DWORD drop(ContainerSlot slot, NodeId node, IDataObject& data, DWORD effect);
  // The row of a folder that would take the drop in itself; none when the folder that
  // is shown would.
  NodeId dropRow(NodeId node) const;
  // The drag has left the window, or is over.
  void dragLeft();

 protected:
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  // Watching and showing (folder_containers.cpp)
  struct Shown {
    FolderView view;
    std::wstring text;  // of the record, that the path was made from
    FolderSight sight{};
  };
  bool start();
  Sight sightOf(ContainerSlot slot) const;
  // Watches what is seen and nothing else.
  void watch(ContainerSlot slot, Shown& shown);
  const FolderPane* paneOf(ContainerSlot slot) const;
  Shown* shown(ContainerSlot slot);
  // The view and the row behind a node; the row is -1 beside all rows.
  FolderView* viewOf(NodeId node);
  const FolderView* viewOf(NodeId node) const;
  void stop(ContainerSlot slot);
  void show(ContainerSlot slot);
  void changed(ContainerSlot slot, bool rowsCameOrWent);
  void takeNews();
  void takeEnded();
  void say(std::wstring message);
  void tellWaiting();
  bool refusedByLock();

  // The mouse and the keyboard (folder_containers_input.cpp)
  void focus(ContainerSlot slot);
  void run(ContainerSlot slot, int command);

  // Files (folder_containers_files.cpp)
  void openRow(ContainerSlot slot, int row);
  void openPath(const std::wstring& path, LaunchHost& host, HWND window);
  void openSelected(ContainerSlot slot);
  void openFolder(ContainerSlot slot);
  void copySelected(ContainerSlot slot, bool cut);
  std::wstring dropFolder(ContainerSlot slot, NodeId node) const;
  void renameCurrent(ContainerSlot slot);

  Platform platform_;
  Document& document_;
  ModalDepth& modal_;
  Doorbell& doorbell_;
  std::vector<FolderPane> panes_;
  std::map<int, Shown> shown_;  // by the container's slot
  std::unique_ptr<Win32FolderSource> source_;
  std::unique_ptr<FolderTransfers> transfers_;
  std::deque<std::wstring> messages_;  // to be shown when no dialog is open
  // What is being dragged over a window: read once, and judged anew only when
  // something about it has changed.
  struct Incoming {
    std::vector<std::wstring> paths;
    std::wstring folder;
    DWORD keys = 0;
    DWORD allowed = 0;
    DWORD effect = 0;
  };
  std::optional<Incoming> incoming_;
  Modifiers pressKeys_;
  std::wstring pressedPath_;  // of the row; another may have come under the mouse since
  int wheelRest_ = 0;
  DWORD pasting_ = 0;  // the clipboard whose files are being moved; 0 for none
  bool dragging_ = false;
  bool telling_ = false;
};

}  // namespace varnowick
