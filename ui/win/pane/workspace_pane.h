// One scene of workspace objects on one window: the mouse, the keyboard, selecting,
// dragging, dropping, menus and the commands for what is selected, shared by the
// bar and the detached containers. What is particular to a window it asks its
// owner; where the window stands, and saving, are none of its business.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shortcuts/launch.h"
#include "ui/commands/commands.h"
#include "ui/scene/current_thing.h"
#include "ui/scene/gestures.h"
#include "ui/scene/object_scene.h"
#include "ui/scene/workspace_editor.h"
#include "ui/win/pane/desk.h"
#include "ui/win/pane/in_place_edit.h"
#include "ui/win/pane/note_edit.h"
#include "ui/win/toolkit/drag_trail.h"
#include "ui/win/toolkit/drop_reading.h"
#include "ui/win/toolkit/drop_target.h"
#include "ui/win/toolkit/messages.h"
#include "ui/win/toolkit/popup_menu.h"
#include "ui/win/toolkit/scene_accessible.h"
#include "ui/win/toolkit/scene_view.h"

namespace varnowick {

class WorkspacePane;

// The window around a pane. Points are in client pixels unless said otherwise.
class PaneOwner : public LaunchHost {
 public:
  // The window that is collapsed before several shortcuts start.
  virtual LaunchHost& mainWindow() = 0;
  // True, and the dialog comes forward, while a dialog of the program is open.
  virtual bool busyElsewhere() = 0;
  // The workspace has been changed from this window: it is to be saved, and other
  // windows may have to show it.
  virtual void workspaceChanged() = 0;
  // The second press of a double click on a container: clickGuard() is to be
  // released when TimerDblClickLabelDelay ticks.
  virtual void startClickGuardTimer() = 0;

  // True when a press there was meant for something that has just gone: it does nothing.
  virtual bool pressMeantOther(POINT) { return false; }
  virtual void pressed(NodeId, POINT) {}
  // The left button has come up again; `click`: nothing was dragged.
  virtual void released(NodeId /*pressed*/, bool /*click*/) {}
  // A click on anything but a shortcut, or its default action.
  virtual void clicked(NodeId node, POINT at) = 0;
  // The second click of a double click. False when it is a click like any other.
  virtual bool doubleClicked(NodeId) { return false; }
  virtual void mouseMoved() {}
  // After each move; none when the mouse has left.
  virtual void hovered(NodeId, POINT) {}
  // The cursor over a node where it is not the arrow; null for the arrow.
  virtual HCURSOR cursorOver(NodeId, POINT) { return nullptr; }
  virtual void moveWindow(const GestureEvent& event) = 0;
  // Containers have been let go outside the window: the owner may take them. They are
  // not moved.
  virtual void draggedOut(const std::vector<ContainerSlot>&, POINT /*screen*/) {}
  // Before containers are removed from the workspace, and when something is done to
  // them that they must stay open for.
  virtual void removing(const std::vector<ContainerSlot>&) {}
  virtual void keepOpen() {}
  virtual void drawModeEnded() {}
  // What lies in other windows may have been moved from here.
  virtual void contentsMoved() {}
  // The pane of another window of the program at a point of the screen; null for none.
  virtual WorkspacePane* paneAt(POINT /*screen*/) { return nullptr; }
  // What a drag over a window of this program rests on; null for others.
  virtual DragStop* dragStop(HWND) { return nullptr; }
  // Something is being dragged over the window, from this program or another.
  virtual void draggedOver(POINT) {}
  virtual void dragLeft() {}
  virtual void shortcutStarted(ShortcutSlot) {}

  // Of the menu and the commands that the pane does not know.
  virtual void describeState(CommandState&) const {}
  virtual bool runOwn(Command) { return false; }
  // True when the owner has shown a menu of its own for the node.
  virtual bool ownMenu(NodeId, POINT /*screen*/) { return false; }
  // A menu is about to be shown: the owner may change its rows.
  virtual void completeMenu(MenuId, std::vector<MenuItem>&) {}
  // A key that the pane has no use for. True when it was taken.
  virtual bool keyDown(Key) { return false; }
};

class WorkspacePane final : public DragStop {
 public:
  // All are borrowed and must outlive the pane. The title names the window for
  // screen readers.
  WorkspacePane(const Desk& desk, ObjectScene& scene, PaneOwner& owner, std::wstring title);

  void attach(HWND window);
  // Before the window is destroyed.
  void detach();
  // Answers the messages of painting, mouse, keyboard, drops and accessibility.
  std::optional<LRESULT> handleMessage(UINT message, WPARAM wParam, LPARAM lParam);

  ObjectScene& objects() { return scene_; }
  SceneView& view() { return view_; }
  const SceneView& view() const { return view_; }
  WorkspaceEditor& editor() { return editor_; }
  const WorkspaceEditor& editor() const { return editor_; }
  SceneAccessible& accessibleItems() { return accessibleItems_; }
  ClickGuard& clickGuard() { return clickGuard_; }
  bool launchSuppressed() const { return gestures_.startsNothing(); }
  // A drag or an edit is under way that must not lose its window.
  bool busy() const {
    return gestures_.dragging() || dropTarget_.dragActive() || nameEdit_.active() ||
           noteEdit_.active();
  }
  // One of its edit boxes is being handled: the pane must not be freed.
  bool handling() const { return nameEdit_.handling() || noteEdit_.handling(); }
  // Takes what is being edited, before the window goes away or is laid out anew.
  void endEditing() {
    nameEdit_.accept();
    noteEdit_.accept();
  }
  void setPalette(const Palette& palette);
  // The layout or the scrolling has changed under the edit boxes.
  void arrangeEditing() {
    nameEdit_.arrange();
    noteEdit_.arrange();
  }

  // Runs the command here or by the owner, when it is built and enabled.
  void run(Command command);
  CommandState commandState() const;
  void showMenu(MenuId menu, const MenuPlace& place, ContainerSlot container = {});
  void launch(ShortcutSlot slot);
  void startMany(const std::function<void(StartMany&)>& start);
  // Scrolls to it, selects and focuses it.
  void showShortcut(ShortcutSlot slot);
  // What F2 does to the current thing: the dialog of a shortcut or a picture, the name
  // of a container.
  void properties(ObjectId id);
  // Records came back, were changed or went; the first of them comes into sight.
  void objectsChanged(const std::vector<ObjectId>& objects);
  // Adds a container and lets the user name it at once. None while locked.
  ContainerSlot addContainer(clsContainer container, const TwipsRect& rect);
  void rename(ContainerSlot slot);
  // Edits the container's note, which is shown and whole in sight if it can be; the
  // caret goes to the offset. Silent while locked.
  void editNote(ContainerSlot slot, std::size_t offset);
  // What commands for containers are about: the container of the menu with those
  // selected together with it, else those selected.
  std::vector<ContainerSlot> targetContainers() const;
  // The container whose menu was opened last; none for other menus and for keys.
  ContainerSlot menuContainer() const { return menuContainer_; }
  // Other windows show what was changed here, or the other way round.
  void containersChanged(const std::vector<ContainerSlot>& slots);
  // True, and the user is told, while editing is locked; of the error instead, if one
  // has led to the properties.
  bool refuseWhileLocked(const std::wstring& error = {});
  // Adds what was dropped or entered; at no point: where there is room on the panel.
  // A refusal that is known already is told with the others.
  void takeDropped(Dropped dropped, const Point<Twips>* at);
  void takeDropped(Dropped dropped, const Point<Twips>* at, Panel panel);
  void addShortcuts(std::vector<clsShortcut> shortcuts, const Point<Twips>* at, Panel panel,
                    std::wstring refusal);
  // Drops come in only when no dialog is open; the owner calls it now and then.
  // DragStop, for drags from this program and from others.
  void draggedOver(POINT screen) override;
  void dragLeft() override;
  // The workspace was changed by someone else.
  void refresh();
  // Everything on screen may have moved: repaints and tells it.
  void sceneChanged();

 private:
  // The mouse and the keyboard (workspace_pane.cpp)
  void onMouseMove(POINT client);
  void onLeftDown(POINT client, bool second);
  void onLeftUp(POINT client);
  void onContextMenu(POINT screen);
  bool onKeyDown(int key);
  void onWheel(int delta);
  HCURSOR cursorAt(POINT client);
  void moveFocus(Point<int> direction, bool backwards);
  void clicked(NodeId node, POINT at);
  void activate(NodeId node);
  Point<Pixels> toScreen(POINT client) const;
  Point<Twips> toScene(Point<Pixels> screen) const;

  // Editing (workspace_pane_editing.cpp)
  void onGesture(const GestureEvent& event);
  void moveObjects(const GestureEvent& event);
  void dropObjects(const GestureEvent& event);
  void openWith(ShortcutSlot dragged, ShortcutSlot target);
  void finishMove(const Moved& moved);
  bool dropIsWelcome(POINT screen);
  bool acceptDrop(POINT screen, const Dropped& dropped);
  void takePendingDrops();
  void deleteSelected();
  void remove(const std::vector<ContainerSlot>& containers, const DeletePlan& plan);
  void paste();
  void setTagFilter(ContainerSlot slot, const std::wstring& tag);
  void moveContainers(const GestureEvent& event);
  bool isOutside(Point<Pixels> screen) const;
  void resizeObject(const GestureEvent& event);
  void drawContainer(const GestureEvent& event);
  void endDrawing(const TwipsRect& rect, bool add);

  // Notes (workspace_pane_notes.cpp)
  NoteEdit::Hooks noteHooks();
  bool clickedNote(NodeId node, POINT at);
  bool overNoteLink(NodeId node, POINT at) const;
  bool wheelOverNote(POINT screen, int delta);
  bool overThumbOf(NodeId node, POINT at) const;
  void scrollNoteBy(const GestureEvent& event);
  void noteTyped(ContainerSlot slot, const std::wstring& text);
  bool newNote();
  void offerNote(const std::wstring& text);
  ContainerSlot addNote(std::wstring name, std::wstring text);

  // Pictures (workspace_pane_pictures.cpp)
  Panel panelForPicture() const;
  void addPicture();
  // The only object that is selected; none when that is no picture.
  PictureSlot currentPicture() const;
  void openPicture(PictureSlot slot);
  bool pictureMenu(NodeId node, POINT screen);
  void editPicture(PictureSlot slot, const std::wstring& error);
  void showInOriginalSize(PictureSlot slot);
  void pictureChanged(PictureSlot slot);

  // Commands (workspace_pane_commands.cpp)
  bool runHere(Command command);
  bool runForContainers(Command command);
  void removeContainers();
  void chooseIcon();
  void chooseColours();
  void startSelected();
  void editShortcut(ShortcutSlot slot, const std::wstring& error);
  void addTagMenus(std::vector<MenuItem>& items);
  CurrentThing current() const {
    return currentThing(editor_.selection(), view_.input().focused());
  }
  // The current thing, if it is a shortcut.
  ShortcutSlot currentShortcut() const;

  // Folder containers (workspace_pane_folders.cpp)
  void attachFolders();
  void detachFolders();
  bool pressedFolder(NodeId node);
  bool releasedFolder(NodeId node, bool click);
  bool clickedFolder(NodeId node);
  bool canDragFiles(NodeId node) const;
  void dragFiles(NodeId node);
  bool draggingFiles() const;
  bool openFile(NodeId node);
  bool folderMenu(NodeId node, POINT screen);
  NodeId currentOf(NodeId node) const;
  bool wheelOverFolder(POINT screen, int delta);
  bool keyInFolder(Key key);
  bool typedInFolder(wchar_t letter);
  bool newFolderContainer();
  std::optional<DWORD> folderDropEffect(POINT screen, IDataObject& data, DWORD keys, DWORD allowed);
  DWORD dropOnFolder(POINT screen, IDataObject& data, DWORD effect);

  Desk desk_;
  ObjectScene& scene_;
  PaneOwner& owner_;
  HWND window_ = nullptr;
  SceneView view_;
  WorkspaceEditor editor_;
  Gestures gestures_;
  DropTarget dropTarget_;
  SceneAccessible accessibleItems_;
  AccessibleServer accessible_;
  ClickGuard clickGuard_;
  InPlaceEdit nameEdit_;
  NoteEdit noteEdit_;
  ClickPair clicks_;
  DragTrail dragTrail_;
  int noteWheelRest_ = 0;
  int panelWheelRest_ = 0;
  Pixels noteThumbFrom_;  // where its top was when it was taken
  bool trackingLeave_ = false;
  ContainerSlot menuContainer_;  // that the open menu, or its command, is about
  struct PendingDrop {
    std::shared_ptr<DropReading> reading;
    std::optional<Point<Twips>> at{};  // of the window; else anywhere on the panel
    Panel panel{};
  };
  std::vector<PendingDrop> pendingDrops_;
  static constexpr UINT_PTR kDropTimer = 200;  // beyond those of the windows
};

}  // namespace varnowick
