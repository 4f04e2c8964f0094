#include "ui/scene/painter.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "ui/scene/note_view.h"
#include "ui/scene/signs.h"

namespace varnowick {

namespace {

constexpr unsigned kSquareTop = 1U | 2U;
constexpr unsigned kSquareBottom = 4U | 8U;
constexpr float kChromePoints = 9;
constexpr float kSmallChromePoints = 8;
// Longer texts never fit; handing them on would only cost time.
constexpr std::size_t kLongestText = 4000;

// The name alone first: of a path that does not fit its end would be lost.
std::wstring nameAndPath(const std::wstring& path) {
  return path.substr(path.find_last_of(L"\\/") + 1) + L"\n" + path;
}

bool isOnTitle(ControlKind kind) {
  return kind == ControlKind::ContainerLabel || kind == ControlKind::lblFoldUnfold ||
         kind == ControlKind::cmdConShrink || kind == ControlKind::cmdConDetach ||
         kind == ControlKind::cmdConMenu;
}

Sign signOf(const Node& node, bool alone) {
  switch (node.id.kind) {
    case ControlKind::PicShrinkExpandAllToolbar:
      return Sign::Shrink;
    case ControlKind::PicFoldUnfoldAllToolbar:
      return Sign::FoldAll;
    case ControlKind::PicRSSToolbar:
      return Sign::Feed;
    case ControlKind::PicLockToolbar:
      return Sign::OpenLock;
    case ControlKind::PicUnlockToolbar:
      return Sign::Lock;
    case ControlKind::PicDockToolbar:
      return Sign::Dock;
    case ControlKind::cmdAdd:
      return Sign::Add;
    case ControlKind::cmdSettings:
      return Sign::Settings;
    case ControlKind::cmdConShrink:
      if (!alone) return Sign::Tile;
      return node.look.edge == ScreenEdge::None ? Sign::Hide : Sign::Dock;
    case ControlKind::cmdConDetach:
      return alone ? Sign::Attach : Sign::Detach;
    default:
      return Sign::Menu;
  }
}

class ScenePainter {
 public:
  ScenePainter(const Scene& scene, const InputState& input, Density density, Canvas& canvas)
      : scene_(scene),
        canvas_(canvas),
        density_(density),
        hovered_(input.hovered()),
        pressed_(input.pressed()),
        focused_(input.focused()),
        ringed_(input.ringed()),
        alone_(scene.find({ControlKind::picBack, 0}) == nullptr) {}

  // `origin` is where the parent's content begins, in twips of the window.
  void paint(const Node& node, Point<Twips> origin, const Palette& palette, const PixelRect& clip);

 private:
  void paintNode(const Node& node, const PixelRect& rect, const Palette& palette);
  void paintFrame(const PixelRect& rect, const Palette& p);
  void paintBar(const Node& node, const PixelRect& rect, const Palette& p);
  void paintMainPanel(const Node& node, const PixelRect& rect, const Palette& p);
  void paintToolButton(const Node& node, const PixelRect& rect, const Palette& p);
  void paintBarButton(const Node& node, const PixelRect& rect, const Palette& p);
  void paintHighlight(const Node& node, const PixelRect& rect, bool highlighted, const Palette& p);
  void paintShortcut(const Node& node, const PixelRect& whole, const Palette& p);
  Pixels roomFor(const Node& node, Pixels least);
  void paintPicture(const Node& node, const PixelRect& rect, const Palette& p);
  void paintImage(const Node& node, const PixelRect& rect, const Palette& p);
  void paintContainer(const Node& node, const PixelRect& rect, const Palette& p);
  void paintTitle(const Node& node, const PixelRect& rect, const Palette& p);
  void paintTitleButton(const Node& node, const PixelRect& rect, const Palette& p);
  void paintFoldBox(const Node& node, const PixelRect& rect, const Palette& p);
  void paintTile(const Node& node, const PixelRect& rect, const Palette& p);
  void paintBody(const Node& node, const PixelRect& rect, const Palette& p);
  void paintNote(const Node& node, const PixelRect& rect, const Palette& p);
  void paintList(const Node& node, const PixelRect& rect, const Palette& p);
  void paintFolder(const Node& node, const PixelRect& rect, const Palette& p);
  void paintFolderRow(const Node& node, const PixelRect& rect, const Palette& p);
  void paintUndoLine(const Node& node, const PixelRect& rect, const Palette& p);
  void paintThumb(const Node& node, const PixelRect& rect, const Palette& p);

  void text(const PixelRect& rect, const std::wstring& text, const TextStyle& style) {
    if (rect.empty() || text.empty()) return;
    canvas_.text(rect, std::wstring_view(text).substr(0, kLongestText), style);
  }
  // A line of text as wide as the bar begins where the captions do. It needs its whole
  // height.
  PixelRect lineOf(const PixelRect& rect) const {
    return {rect.left + px(8), rect.top, rect.width - px(16), rect.height};
  }
  TextStyle chrome(Colour colour, float points, bool bold = false) const {
    TextStyle style;
    style.points = points;
    style.bold = bold;
    style.colour = colour;
    style.vertical = VAlign::Centre;
    return style;
  }
  void focus(const Node& node, const PixelRect& rect, int inset) {
    if (node.id == ringed_) canvas_.focusFrame(rect.inset(px(inset)));
  }
  bool isHovered(const Node& node) const { return node.id == hovered_; }
  // Pressed and still under the mouse: letting go would be a click.
  bool isPressed(const Node& node) const { return node.id == pressed_ && isHovered(node); }

  // Pixels of the usual density on this one, at least one.
  Pixels px(int usual) const {
    return {std::max(1, roundHalfToEven(static_cast<double>(usual) * density_.dpi / 96.0))};
  }
  PixelRect middle(const PixelRect& rect, Pixels side) const {
    return {{rect.left.value + (rect.width.value - side.value) / 2},
            {rect.top.value + (rect.height.value - side.value) / 2},
            side,
            side};
  }

  const Scene& scene_;
  Canvas& canvas_;
  Density density_;
  NodeId hovered_, pressed_, focused_, ringed_;
  bool alone_;  // a container in a window of its own
  // The shortcuts on the panel that is being painted.
  struct Neighbours {
    NodeId panel;
    std::vector<TwipsRect> shortcuts;
  };
  Neighbours neighbours_;
};

void ScenePainter::paint(const Node& node, Point<Twips> origin, const Palette& palette,
                         const PixelRect& clip) {
  if (!node.visible) return;
  const TwipsRect place = node.rect.translated(origin.x, origin.y);
  const PixelRect rect = toPixels(place, density_);
  const PixelRect seen = clip.intersect(rect);
  if (!seen.empty()) paintNode(node, rect, palette);
  if (node.children.empty() || (node.clipsChildren && seen.empty())) return;

  const Point<Twips> content{place.left - node.scroll.x, place.top - node.scroll.y};
  if (node.clipsChildren) canvas_.pushClip(rect);
  // Everything in a container is painted with that container's colours.
  std::optional<Palette> own;
  if (node.id.kind == ControlKind::Container) own = inContainer(palette, node.look);
  Neighbours outer = std::exchange(neighbours_, Neighbours{});
  for (const NodeId child : node.children)
    if (const Node* below = scene_.find(child))
      paint(*below, content, own ? *own : palette, node.clipsChildren ? seen : clip);
  neighbours_ = std::move(outer);
  if (node.clipsChildren) canvas_.popClip();
}

void ScenePainter::paintNode(const Node& node, const PixelRect& rect, const Palette& p) {
  switch (node.id.kind) {
    case ControlKind::Frame:
      return paintFrame(rect, p);
    case ControlKind::TitleBar:
    case ControlKind::BottomBar:
      return paintBar(node, rect, p);
    case ControlKind::lblCaption:
      return text(rect, node.text, chrome(p.barText, kChromePoints, true));
    case ControlKind::PicShrinkExpandAllToolbar:
    case ControlKind::PicFoldUnfoldAllToolbar:
    case ControlKind::PicRSSToolbar:
    case ControlKind::PicLockToolbar:
    case ControlKind::PicUnlockToolbar:
    case ControlKind::PicDockToolbar:
      return paintToolButton(node, rect, p);
    case ControlKind::cmdAdd:
    case ControlKind::cmdSettings:
    case ControlKind::cmdMenu:
      return paintBarButton(node, rect, p);
    case ControlKind::picBack:
      return paintMainPanel(node, rect, p);
    case ControlKind::lblShortcut:
      return paintShortcut(node, rect, p);
    case ControlKind::PicContainer:
      return paintPicture(node, rect, p);
    case ControlKind::picShortcut:
      return canvas_.image(rect, node.image);
    case ControlKind::PicImage:
      return paintImage(node, rect, p);
    case ControlKind::Container:
      return paintContainer(node, rect, inContainer(p, node.look));
    case ControlKind::ContainerFrame:
      return paintBody(node, rect, p);
    case ControlKind::ContainerLabel:
      return paintTitle(node, rect, p);
    case ControlKind::lblFoldUnfold:
      return paintFoldBox(node, rect, p);
    case ControlKind::cmdConShrink:
    case ControlKind::cmdConDetach:
    case ControlKind::cmdConMenu:
      return paintTitleButton(node, rect, p);
    case ControlKind::ContainerIcon:
      return paintTile(node, rect, p);
    case ControlKind::ContainerNote:
      return paintNote(node, rect, p);
    case ControlKind::LstRSS:
      return paintList(node, rect, p);
    case ControlKind::lblRSSLastUpdate:
      return text(rect, node.text, chrome(p.mutedText, kSmallChromePoints));
    case ControlKind::ProgressText: {
      canvas_.fill(rect, p.barTop);
      return text(lineOf(rect), node.text, chrome(p.barText, kSmallChromePoints));
    }
    case ControlKind::UndoLine:
      return paintUndoLine(node, rect, p);
    case ControlKind::ScrollThumb:
      return paintThumb(node, rect, p);
    case ControlKind::DockStrip:
      if (p.showDockStrip) canvas_.fill(rect, p.dockStrip);
      return;
    case ControlKind::DropMark:
      // A line between two shortcuts; else a frame around what takes the drop.
      if (std::min(rect.width, rect.height) < px(8))
        return canvas_.box(rect, px(2), p.accent, p.accent, p.accent, 0);
      [[fallthrough]];
    case ControlKind::RubberBand:
      return canvas_.frame(rect, px(3), p.accent);
    case ControlKind::LstFolder:
      return paintFolder(node, rect, p);
    case ControlKind::FolderRow:
      return paintFolderRow(node, rect, p);
    case ControlKind::DragLayer:
    case ControlKind::None:
      return;
  }
}

void ScenePainter::paintFrame(const PixelRect& rect, const Palette& p) {
  canvas_.fill(rect, p.backTop);
  canvas_.frame(rect, {0}, p.barEdge);
}

void ScenePainter::paintBar(const Node& node, const PixelRect& rect, const Palette& p) {
  canvas_.gradient(rect, p.barTop, p.barBottom, true);
  const bool top = node.id.kind == ControlKind::TitleBar;
  canvas_.fill({rect.left, top ? rect.bottom() - px(1) : rect.top, rect.width, px(1)}, p.barEdge);
}

void ScenePainter::paintMainPanel(const Node& node, const PixelRect& rect, const Palette& p) {
  canvas_.gradient(rect, p.backTop, p.backBottom, true);
  if (node.image.source == ImageRef::Source::None || p.highContrast) return;
  if (node.look.stretched)
    canvas_.image(rect, node.image);
  else
    canvas_.unscaledImage(rect, node.image);
}

void ScenePainter::paintToolButton(const Node& node, const PixelRect& rect, const Palette& p) {
  const PixelRect box = rect.inset(px(1));
  if (isHovered(node))
    canvas_.box(box, px(4), p.barHover, p.barHover, p.highContrast ? p.accent : p.barHover, 0);
  if (node.image.source == ImageRef::Source::None)
    drawSign(canvas_, signOf(node, alone_), rect, density_,
             !node.enabled     ? p.mutedText
             : isHovered(node) ? p.text
                               : p.barText,
             node.look.edge);
  else
    canvas_.image(middle(rect, px(16)), node.image);
  if (isPressed(node)) canvas_.invert(box.inset(px(2)));
  focus(node, box, 1);
}

void ScenePainter::paintBarButton(const Node& node, const PixelRect& rect, const Palette& p) {
  const PixelRect box = rect.inset(px(3));
  if (isPressed(node))
    canvas_.box(box, px(4), p.barPressed, p.barPressed, p.accent, 0);
  else if (isHovered(node))
    canvas_.box(box, px(4), p.barHover, p.barHover, p.highContrast ? p.accent : p.barHover, 0);
  // Sign and caption are centred as one; the usual width of a letter is near
  // enough for that.
  const Pixels sign = px(12);
  const Pixels words = px(7 * static_cast<int>(std::min<std::size_t>(node.text.size(), 40)));
  const Pixels left{rect.left.value + std::max(0, (rect.width - sign - px(6) - words).value / 2)};
  const Colour colour = isHovered(node) ? p.text : p.barText;
  drawSign(canvas_, signOf(node, alone_), {left, rect.top, sign, rect.height}, density_, colour);
  const Pixels textLeft = left + sign + px(6);
  text({textLeft, rect.top, rect.right() - textLeft - px(2), rect.height}, node.text,
       chrome(colour, kChromePoints));
  focus(node, box, 1);
}

// The ground of what is selected, pressed or under the mouse.
void ScenePainter::paintHighlight(const Node& node, const PixelRect& rect, bool highlighted,
                                  const Palette& p) {
  const Pixels radius = px(5);
  if (highlighted && p.highContrast) {
    canvas_.box(rect, radius, p.accent, p.accent, p.accent, 0);
  } else if (highlighted) {
    const float share = isPressed(node) ? 0.34F : 0.24F;
    canvas_.box(rect, radius, mix(p.backTop, p.accent, share), mix(p.backBottom, p.accent, share),
                p.accent, 0);
  } else if (isHovered(node)) {
    const Colour lit = mix(p.backTop, p.text, 0.10F);
    canvas_.box(rect, radius, p.highContrast ? p.backTop : lit, p.highContrast ? p.backTop : lit,
                p.highContrast ? p.accent : mix(p.backTop, p.text, 0.22F), 0);
  }
}

// Where the row below begins the caption ends: places come from files and from times
// when the font was smaller.
Pixels ScenePainter::roomFor(const Node& node, Pixels least) {
  if (neighbours_.panel != node.parent) {
    neighbours_ = {node.parent, {}};
    for (const NodeId id : scene_.find(node.parent)->children)
      if (const Node* other = id.kind == ControlKind::lblShortcut ? scene_.find(id) : nullptr;
          other != nullptr && other->visible)
        neighbours_.shortcuts.push_back(other->rect);
  }
  const TwipsRect& r = node.rect;
  const Twips from = r.top + density_.toTwips(least);
  Twips bottom = r.bottom();
  for (const TwipsRect& other : neighbours_.shortcuts)
    if (other.top >= from && other.top < bottom && other.left < r.right() && r.left < other.right())
      bottom = other.top;
  return density_.toPixels(bottom - r.top);
}

void ScenePainter::paintShortcut(const Node& node, const PixelRect& whole, const Palette& p) {
  const Node* icon = scene_.find({ControlKind::picShortcut, node.id.slot});
  const PixelRect iconRect = icon == nullptr ? PixelRect{} : toPixels(icon->rect, density_);
  const Pixels line = density_.toPixels(node.look.line);
  PixelRect rect = whole;
  if (!node.look.small)
    rect.height = std::min(rect.height, roomFor(node, iconRect.bottom() + px(3) + line));
  const bool highlighted = isPressed(node) || node.selected;
  paintHighlight(node, rect, highlighted, p);
  TextStyle style;
  style.face = p.captionFace;
  style.points = node.look.points;
  style.bold = node.look.bold;
  style.colour = p.text;
  if (node.look.fore && !p.highContrast) style.colour = readable(*node.look.fore, p.backTop);
  if (highlighted && p.highContrast) style.colour = p.selectedText;

  if (node.look.small) {
    const Pixels left = rect.left + iconRect.right() + px(6);
    style.vertical = VAlign::Centre;
    text({left, rect.top, rect.right() - left - px(4), rect.height}, node.text, style);
  } else {
    const Pixels top = rect.top + iconRect.bottom() + px(3);
    const PixelRect caption{rect.left + px(3), top, rect.width - px(6), rect.bottom() - top};
    style.horizontal = HAlign::Centre;
    style.wrap = caption.height >= line * 2;
    text(caption, node.text, style);
  }
  focus(node, rect, 2);
}

void ScenePainter::paintPicture(const Node& node, const PixelRect& rect, const Palette& p) {
  const Colour edge = node.selected || isHovered(node) ? p.accent : p.pictureBorder;
  canvas_.box(rect, px(4), p.bodyTop, p.bodyBottom, edge, 0);
  focus(node, rect, 1);
}

// In place of a picture that cannot be shown a sign, and below it where it was to come
// from, so that the user can tell which it is.
void ScenePainter::paintImage(const Node& node, const PixelRect& rect, const Palette& p) {
  const ImageState state = canvas_.imageState(rect, node.image);
  if (state == ImageState::Ready) return canvas_.image(rect, node.image);
  const Pixels side = px(32);
  const bool roomy = rect.height > side * 2;
  const Pixels top = rect.top + (roomy ? px(8) : Pixels{(rect.height - side).value / 2});
  canvas_.image({rect.left + Pixels{(rect.width - side).value / 2}, top, side, side},
                {ImageRef::Source::Asset, L"picture"});
  if (state != ImageState::Failed || !roomy) return;
  TextStyle style = chrome(p.mutedText, kSmallChromePoints);
  style.vertical = VAlign::Top;
  style.horizontal = HAlign::Centre;
  style.wrap = true;
  const Pixels below = top + side + px(6);
  text({rect.left + px(4), below, rect.width - px(8), rect.bottom() - below - px(4)},
       nameAndPath(node.image.name), style);
}

void ScenePainter::paintContainer(const Node& node, const PixelRect& rect, const Palette& p) {
  canvas_.box(rect, px(5), p.bodyTop, p.bodyBottom, node.selected ? p.accent : p.border, 0);
}

void ScenePainter::paintTitle(const Node& node, const PixelRect& rect, const Palette& p) {
  const Node* box = scene_.find({ControlKind::Container, node.id.slot});
  const bool alone = box != nullptr && !(box->rect.height > node.rect.height);
  const bool lit = isHovered(node) && !p.highContrast;
  const Colour top = lit ? mix(p.titleTop, p.titleText, 0.07F) : p.titleTop;
  const Colour bottom = lit ? mix(p.titleBottom, p.titleText, 0.07F) : p.titleBottom;
  const bool selected = box != nullptr && box->selected;
  canvas_.box(rect, px(5), top, bottom, selected ? p.accent : p.border, alone ? 0U : kSquareBottom);
  if (!alone) {
    const Colour edge = p.highContrast ? p.border : mix(p.titleBottom, p.barEdge, 0.6F);
    canvas_.fill({rect.left + px(1), rect.bottom() - px(1), rect.width - px(2), px(1)}, edge);
  }
  const Node* fold = scene_.find({ControlKind::lblFoldUnfold, node.id.slot});
  const Pixels room = fold == nullptr ? px(4) : density_.toPixels(fold->rect.width);
  text({rect.left + px(8), rect.top, rect.width - px(8) - room, rect.height}, node.text,
       chrome(p.titleText, kChromePoints, true));
  focus(node, rect, 2);
}

// The buttons come into sight with the mouse on the title; else the name has the room.
void ScenePainter::paintTitleButton(const Node& node, const PixelRect& rect, const Palette& p) {
  const bool onTitle = hovered_.slot == node.id.slot && isOnTitle(hovered_.kind);
  if (!onTitle) return;
  const float share = isPressed(node) ? 0.3F : isHovered(node) ? 0.15F : 0.0F;
  const Colour ground = mix(mix(p.titleTop, p.titleBottom, 0.5F), p.titleText, share);
  canvas_.box(rect.inset(px(2)), px(3), ground, ground, ground, 0);
  drawSign(canvas_, signOf(node, alone_), rect, density_, p.titleText, node.look.edge);
}

void ScenePainter::paintFoldBox(const Node& node, const PixelRect& rect, const Palette& p) {
  const PixelRect box = middle(rect, px(13));
  const Colour ink = mix(p.titleText, p.titleTop, isHovered(node) || p.highContrast ? 0.0F : 0.25F);
  const Colour ground = mix(p.titleTop, p.titleText, isPressed(node) ? 0.25F : 0.0F);
  canvas_.box(box, px(3), ground, ground, mix(ink, p.titleTop, p.highContrast ? 0.0F : 0.35F), 0);
  drawSign(canvas_, node.folded ? Sign::Plus : Sign::Minus, box, density_, ink);
}

void ScenePainter::paintTile(const Node& node, const PixelRect& rect, const Palette& p) {
  const Node* box = scene_.find({ControlKind::Container, node.id.slot});
  const bool selected = box != nullptr && box->selected;
  const float lift = p.highContrast ? 0.0F : isHovered(node) ? 0.22F : 0.0F;
  const Colour top = p.highContrast ? p.bodyTop : mix(p.titleBottom, p.titleText, lift * 0.5F);
  canvas_.box(rect, px(5), top, p.bodyTop, selected || lift > 0 ? p.accent : p.border, 0);
  canvas_.image(middle(rect, px(28)), node.image);
  focus(node, rect, 2);
}

void ScenePainter::paintBody(const Node& node, const PixelRect& rect, const Palette& p) {
  const Node* note = scene_.find({ControlKind::ContainerNote, node.id.slot});
  // A note fills the whole body with its colour, a margin round its text.
  if (note != nullptr && note->visible)
    canvas_.box(rect, px(5), p.noteBack, p.noteBack, p.border, kSquareTop);
  // A mark in the corner tells where a click shrinks the container.
  if (!isHovered(node)) return;
  const bool onNote = note != nullptr && note->visible;
  const Colour ink = onNote ? mix(p.noteBack, p.noteText, 0.4F) : mix(p.bodyTop, p.bodyText, 0.45F);
  const Pixels side = px(6);
  for (Pixels i{0}; i < side; i += Pixels{1})
    canvas_.fill({rect.left + px(3), rect.top + px(3) + i, side - i, {1}}, ink);
}

void ScenePainter::paintNote(const Node& node, const PixelRect& rect, const Palette& p) {
  paintNoteText(canvas_, node, rect, p, density_);
  // Round the text, in the margin of the body.
  if (node.id == ringed_) canvas_.focusFrame(rect.inset(-px(3)));
}

void ScenePainter::paintList(const Node& node, const PixelRect& rect, const Palette& p) {
  if (node.children.empty()) {
    TextStyle style = chrome(isHovered(node) ? p.accent : p.mutedText, kSmallChromePoints);
    style.horizontal = HAlign::Centre;
    style.wrap = true;
    text(rect.inset(px(8)), node.text, style);
  }
  focus(node, rect, 2);
}

// Its rows cover it; without entries it says why.
void ScenePainter::paintFolder(const Node& node, const PixelRect& rect, const Palette& p) {
  TextStyle style = chrome(p.mutedText, kSmallChromePoints);
  style.horizontal = HAlign::Centre;
  style.wrap = true;
  text(rect.inset(px(8)), node.text, style);
  if (!node.text.empty()) focus(node, rect, 2);
}

void ScenePainter::paintFolderRow(const Node& node, const PixelRect& rect, const Palette& p) {
  // Keys do nothing to rows of a list that has not got the focus; they stand back.
  const bool active = node.parent == focused_;
  const bool highlighted = (node.selected && active) || isPressed(node);
  paintHighlight(node, rect, highlighted, p);
  if (node.selected && !active && !highlighted) canvas_.frame(rect, px(5), p.border);
  const Pixels icon = px(16);
  const PixelRect iconRect{
      rect.left + px(5), {rect.top.value + (rect.height.value - icon.value) / 2}, icon, icon};
  canvas_.image(iconRect, node.image);
  const Pixels left = iconRect.right() + px(6);
  text({left, rect.top, rect.right() - left - px(4), rect.height}, node.text,
       chrome(highlighted && p.highContrast ? p.selectedText : p.text, kChromePoints));
  if (node.current && node.parent == ringed_) canvas_.focusFrame(rect.inset(px(1)));
}

void ScenePainter::paintUndoLine(const Node& node, const PixelRect& rect, const Palette& p) {
  const bool lit = isHovered(node) && !p.highContrast;
  const Colour ground = lit ? p.barHover : mix(p.barTop, p.barBottom, 0.5F);
  const PixelRect box = rect.inset(px(1));
  canvas_.box(box, px(4), ground, ground, p.accent, 0);
  text(lineOf(rect), node.text, chrome(lit ? p.text : p.barText, kSmallChromePoints));
  focus(node, box, 1);
}

void ScenePainter::paintThumb(const Node& node, const PixelRect& rect, const Palette& p) {
  const bool lit = isHovered(node) || isPressed(node);
  const Colour ink = p.highContrast ? p.text : mix(p.backBottom, p.text, lit ? 0.45F : 0.25F);
  canvas_.box(rect, px(2), ink, ink, ink, 0);
}

}  // namespace

void paintScene(const Scene& scene, const InputState& input, const Palette& palette,
                Density density, const PixelRect& dirty, Canvas& canvas) {
  if (dirty.empty()) return;
  canvas.pushClip(dirty);
  ScenePainter(scene, input, density, canvas).paint(*scene.find(scene.root()), {}, palette, dirty);
  canvas.popClip();
}

}  // namespace varnowick
