#include "ui/win/pane/in_place_edit.h"

#include <algorithm>

#include "ui/scene/jump_row.h"

namespace varnowick {
namespace {

constexpr int kLeastWidth = 90;  // pixels at 96 dots per inch, like those below
constexpr int kPadding = 3;
constexpr Twips kGap{60};

// Where the name of a file ends before its extension. What begins with its only dot
// is all name.
std::size_t stemLength(const std::wstring& name) {
  const std::size_t dot = name.rfind(L'.');
  return dot == std::wstring::npos || dot == 0 ? name.size() : dot;
}

}  // namespace

TwipsRect InPlaceEdit::captionPart(const Scene& scene, NodeId id) {
  const Node* node = scene.find(id);
  if (node == nullptr) return {};
  const Size<Twips> size = node->rect.size();
  if (id.kind == ControlKind::ContainerLabel) {
    const Node* fold = scene.find({ControlKind::lblFoldUnfold, id.slot});
    const Twips room = fold == nullptr ? Twips{} : fold->rect.width;
    return {kGap, {}, size.width - room - kGap, size.height};
  }
  const Node* icon = scene.find({ControlKind::picShortcut, id.slot});
  if (id.kind != ControlKind::lblShortcut || icon == nullptr)
    return {{}, {}, size.width, size.height};
  if (node->look.small) {
    const Twips left = icon->rect.right() + kGap;
    return {left, {}, size.width - left, size.height};
  }
  const Twips top = icon->rect.bottom();
  return {{}, top, size.width, size.height - top};
}

bool InPlaceEdit::begin(Request request) {
  accept();
  if (request.part.empty()) request.part = captionPart(scene(), request.node);
  request_ = std::move(request);
  TextStyle style;
  style.points = request_.points;
  style.bold = request_.bold;
  if (!show(request_.node, request_.text, style, request_.accessibleName)) {
    request_ = {};
    return false;
  }
  SendMessageW(control(), EM_LIMITTEXT, static_cast<WPARAM>(std::max(1, request_.limit)), 0);
  const std::size_t end = request_.selectStem ? stemLength(request_.text) : request_.text.size();
  SendMessageW(control(), EM_SETSEL, 0, static_cast<LPARAM>(end));
  return true;
}

HWND InPlaceEdit::makeControl() {
  return CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, 0, 0,
                         0, 0, handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
}

PixelRect InPlaceEdit::frameRect(const PixelRect& nodeRect) const {
  const TwipsRect& p = request_.part;
  const PixelRect part = toPixels({density().toTwips(nodeRect.left) + p.left,
                                   density().toTwips(nodeRect.top) + p.top, p.width, p.height},
                                  density());
  RECT room{};
  GetClientRect(owner(), &room);
  PixelRect frame = part;
  frame.height = {lineHeight().value + 2 * scaled(kPadding)};
  frame.width = {std::min<int>(std::max(part.width.value, scaled(kLeastWidth)), room.right)};
  // A short caption gets a longer line about its middle, as far as the window goes.
  frame.left = {std::clamp<int>(part.left.value + (part.width - frame.width).value / 2, 0,
                                room.right - frame.width.value)};
  // One line of a title is centred; a caption under an icon begins at its top.
  if (part.height.value < 2 * frame.height.value)
    frame.top = {part.top.value + (part.height - frame.height).value / 2};
  return frame;
}

PixelRect InPlaceEdit::controlRect(Size<Pixels> frame) const {
  const int padding = scaled(kPadding);
  return PixelRect{{}, {}, frame.width, frame.height}.inset(Pixels{padding});
}

Colour InPlaceEdit::ground(const Palette& palette) const { return jumpFieldGround(palette); }

bool InPlaceEdit::keyDown(int key) {
  if (key == VK_ESCAPE) {
    cancel();
    return true;
  }
  if (key != VK_RETURN && key != VK_TAB) return false;
  accept();
  return true;
}

void InPlaceEdit::ended(bool accepted, std::wstring text) {
  // What is called may begin the next editing.
  const Request request = std::move(request_);
  request_ = {};
  if (accepted && text != request.text && request.accepted) request.accepted(std::move(text));
  if (request.done) request.done();
}

}  // namespace varnowick
