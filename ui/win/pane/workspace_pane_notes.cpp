// The notes of containers on a pane: editing, links, scrolling, and new ones.

#include <algorithm>

#include "platform/msg_box.h"
#include "shortcuts/outside_links.h"
#include "ui/scene/note_view.h"
#include "ui/win/pane/workspace_pane.h"
#include "ui/win/toolkit/wheel_lines.h"
#include "ui/win/toolkit/win_events.h"

namespace varnowick {
namespace {

constexpr Size<Twips> kNewNote{{3000}, {2400}};

NodeId noteNode(ContainerSlot slot) { return containerPart(ControlKind::ContainerNote, slot); }

}  // namespace

NoteEdit::Hooks WorkspacePane::noteHooks() {
  NoteEdit::Hooks hooks;
  hooks.committed = [this](ContainerSlot slot, const std::wstring& text) { noteTyped(slot, text); };
  hooks.ended = [this](ContainerSlot slot, std::size_t top) {
    scrollNoteTo(scene_.scene(), noteNode(slot), top, view_.density());
    view_.invalidate();
  };
  // As a message of its own: what it sets off may free the window, and with it the
  // control that is being asked.
  hooks.functionKey = [this](int key) {
    return PostMessageW(window_, WM_KEYDOWN, static_cast<WPARAM>(key), 0) != FALSE;
  };
  hooks.menu = [this](const std::vector<MenuItem>& items, POINT at) {
    runMenu(window_, desk_.modal, items, at);
  };
  return hooks;
}

void WorkspacePane::noteTyped(ContainerSlot slot, const std::wstring& text) {
  clsContainer* container = desk_.document.workspace.containers.find(slot);
  if (container == nullptr) return;
  container->note = text;
  scene_.updateContainer(slot);
  sceneChanged();
  owner_.workspaceChanged();
}

void WorkspacePane::editNote(ContainerSlot slot, std::size_t offset) {
  const clsContainer* container = desk_.document.workspace.containers.find(slot);
  if (container == nullptr || desk_.settings.locked) return;
  owner_.keepOpen();
  nameEdit_.accept();
  scene_.scrollToShow(noteNode(slot));
  view_.focus(noteNode(slot));
  view_.invalidate();
  noteEdit_.begin(slot, container->note, offset);
}

bool WorkspacePane::overNoteLink(NodeId node, POINT at) const {
  return node.kind == ControlKind::ContainerNote &&
         noteHit(scene_.scene(), node, view_.toScene(at), view_.density()).link >= 0;
}

// A link is opened, a click beside it begins to edit there.
bool WorkspacePane::clickedNote(NodeId node, POINT at) {
  if (node.kind != ControlKind::ContainerNote) return false;
  if (overThumbOf(node, at)) return true;
  const std::wstring link = noteLinkAt(scene_.scene(), node, view_.toScene(at), view_.density());
  if (!link.empty()) {
    openOutsideLink(desk_.platform, owner_.ownerWindow(), link);
    announce(window_, kEventLaunched);
    return true;
  }
  editNote(containerOf(node),
           noteHit(scene_.scene(), node, view_.toScene(at), view_.density()).offset);
  return true;
}

bool WorkspacePane::overThumbOf(NodeId node, POINT at) const {
  const Node* note = scene_.scene().find(node);
  return node.kind == ControlKind::ContainerNote && note != nullptr &&
         overNoteThumb(*note, view_.toClient(node),
                       {{static_cast<int>(at.x)}, {static_cast<int>(at.y)}}, view_.density());
}

void WorkspacePane::scrollNoteBy(const GestureEvent& event) {
  const Node* note = scene_.scene().find(event.node);
  if (note == nullptr || event.phase == GesturePhase::Cancel) return;
  const PixelRect rect = view_.toClient(event.node);
  if (event.phase == GesturePhase::Begin)
    noteThumbFrom_ = noteThumb(*note, rect, view_.density()).top;
  dragNoteThumb(scene_.scene(), event.node, rect, noteThumbFrom_ + event.now.y - event.start.y,
                view_.density());
  view_.invalidate(event.node);
}

// False when the note is in sight from end to end, or scrolled to its end already.
bool WorkspacePane::wheelOverNote(POINT screen, int delta) {
  const Point<Twips> at = toScene({{screen.x}, {screen.y}});
  const NodeId id = scene_.scene().hitTest(at);
  const Node* note = scene_.scene().find(id);
  if (id.kind != ControlKind::ContainerNote || note == nullptr || !note->note) return false;
  const PixelRect box = noteTextRect(view_.toClient(id), view_.density());
  const int page = std::max(1, box.height.value / note->note->lineHeight().value - 1);
  const int lines = wheelLines(delta, page, noteWheelRest_);
  if (lines == 0) return note->note->lines() > static_cast<std::size_t>(page) + 1;
  if (!scrollNote(scene_.scene(), id, lines, view_.density())) return false;
  view_.invalidate(id);
  return true;
}

ContainerSlot WorkspacePane::addNote(std::wstring name, std::wstring text) {
  clsContainer container;
  container.name = std::move(name);
  container.note = std::move(text);
  container.noteVisible = true;
  const ContainerSlot slot =
      editor_.addContainer(std::move(container), editor_.freePlace(kNewNote));
  scene_.scrollToShow(containerNode(slot));
  sceneChanged();
  owner_.workspaceChanged();
  return slot;
}

// A text that cannot become a shortcut.
void WorkspacePane::offerNote(const std::wstring& text) {
  const std::wstring question = std::wstring(kNothingToLinkTo) + L"\r\n\r\nPaste it as a note?";
  if (desk_.platform.msgBox.show(question, kMsgYesNo | kMsgQuestion, kProgramTitle) !=
      kMsgAnswerYes)
    return;
  constexpr std::size_t kMostOfName = 40;
  const std::size_t start = text.find_first_not_of(L" \t\r\n");
  const std::wstring line = text.substr(start, text.find_first_of(L"\r\n", start) - start);
  const std::wstring name = tidyCaption(line.substr(0, kMostOfName));
  addNote(name.empty() ? L"Note" : name, text);
}

// False on a window that has no room for another container.
bool WorkspacePane::newNote() {
  if (scene_.scene().find({ControlKind::picBack, 0}) == nullptr) return false;
  if (refuseWhileLocked()) return true;
  const ContainerSlot slot = addNote(L"Note", {});
  editNote(slot, 0);
  return true;
}

}  // namespace varnowick
