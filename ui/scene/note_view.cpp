#include "ui/scene/note_view.h"

#include <algorithm>
#include <initializer_list>

namespace varnowick {
namespace {

constexpr int kMargin = 4;  // pixels at 96 dots per inch, like those below
constexpr int kThumbWidth = 3;
constexpr int kLeastThumb = 16;
constexpr float kReadsWell = 4.5F;

Pixels px(int usual, Density density) {
  return {std::max(1, roundHalfToEven(static_cast<double>(usual) * density.dpi / 96.0))};
}

TextStyle noteStyle() {
  TextStyle style;
  style.points = kNotePoints;
  style.ellipsis = false;
  return style;
}

// The accent, as much nearer to the text's colour as it takes to be read on the note.
Colour colourOfLinks(const Palette& palette) {
  for (const float share : {0.0F, 0.25F, 0.5F, 0.75F}) {
    const Colour colour = mix(palette.accent, palette.noteText, share);
    if (contrast(colour, palette.noteBack) >= kReadsWell) return colour;
  }
  return palette.noteText;
}

PixelRect sizeOf(const Node& note, Density density) {
  const PixelRect rect = toPixels(note.rect, density);
  return {{0}, {0}, rect.width, rect.height};
}

int linesInSight(const NoteLayout& layout, const PixelRect& box) {
  return std::max(1, box.height.value / layout.lineHeight().value);
}

// The first line in sight may be this one at most.
int lastFirstLine(const Node& note, Density density) {
  if (!note.note) return 0;
  const int inSight = linesInSight(*note.note, noteTextRect(sizeOf(note, density), density));
  return std::max(0, static_cast<int>(note.note->lines()) - inSight);
}

int firstLine(const Node& note, Density density) {
  if (!note.note) return 0;
  const double line = note.note->lineHeight().value;
  return std::clamp(roundHalfToEven(density.toPixels(note.scroll.y).value / line), 0,
                    lastFirstLine(note, density));
}

void setFirstLine(Node& note, int line, Density density) {
  note.scroll.y = density.toTwips(note.note->lineHeight() * line);
}

}  // namespace

void NoteLayouts::update(Node& note, const std::wstring& text, bool shown, TextMeasure* measure,
                         Density density) {
  const bool changed = note.text != text;
  if (changed) note.text = text;
  if (!shown) {
    note.note.reset();
    return;
  }
  if (!widths_ || widths_->density() != density)
    widths_ = std::make_shared<LetterWidths>(measure, noteStyle(), density);
  const Pixels width = noteTextRect(sizeOf(note, density), density).width;
  if (changed || !note.note || !note.note->fits(width, *widths_))
    note.note = std::make_shared<const NoteLayout>(note.text, width, widths_);
  setFirstLine(note, firstLine(note, density), density);
}

PixelRect noteTextRect(const PixelRect& note, Density density) {
  return note.inset(px(kMargin, density));
}

PixelRect noteThumb(const Node& note, const PixelRect& rect, Density density) {
  if (lastFirstLine(note, density) == 0) return {};
  const auto all = static_cast<double>(note.note->lines());
  return noteThumb(rect, firstLine(note, density) / all,
                   linesInSight(*note.note, noteTextRect(rect, density)) / all, density);
}

PixelRect noteThumb(const PixelRect& rect, double first, double shown, Density density) {
  const int height = rect.height.value;
  if (shown >= 1 || height < kLeastThumb) return {};
  const int length = std::clamp(static_cast<int>(height * shown),
                                std::min(height, px(kLeastThumb, density).value), height);
  const double way = std::clamp(first / (1 - shown), 0.0, 1.0);
  const Pixels width = px(kThumbWidth, density);
  return {rect.right() - width,
          {rect.top.value + roundHalfToEven((height - length) * way)},
          width,
          {length}};
}

double noteThumbShare(const PixelRect& rect, const PixelRect& thumb, Pixels top) {
  const int way = std::max(1, (rect.height - thumb.height).value);
  return std::clamp(static_cast<double>((top - rect.top).value) / way, 0.0, 1.0);
}

Colour noteThumbColour(const Palette& palette) {
  return palette.highContrast ? palette.noteText : mix(palette.noteBack, palette.noteText, 0.35F);
}

void paintNoteText(Canvas& canvas, const Node& note, const PixelRect& rect, const Palette& palette,
                   Density density) {
  TextStyle style = noteStyle();
  style.colour = palette.noteText;
  const PixelRect box = noteTextRect(rect, density);
  if (box.empty()) return;
  if (note.text.empty()) {
    style.colour =
        palette.highContrast ? palette.noteText : mix(palette.noteText, palette.noteBack, 0.5F);
    return canvas.text(box, kEmptyNoteHint, style);
  }
  if (!note.note) return;  // hidden a moment ago, or not laid out yet
  const NoteLayout& layout = *note.note;
  const Colour linkColour = colourOfLinks(palette);
  const Pixels line = layout.lineHeight();
  const int first = firstLine(note, density);
  canvas.pushClip(rect);
  for (int i = 0; i < linesInSight(layout, box); ++i) {
    const Pixels top = box.top + line * i;
    for (const NoteRun& run : layout.runs(note.text, static_cast<std::size_t>(first + i))) {
      style.underline = run.link >= 0;
      style.colour = run.link >= 0 ? linkColour : palette.noteText;
      // Letters may reach a little over their width.
      canvas.text({box.left + run.left, top, run.width + px(2, density), line},
                  std::wstring_view(note.text).substr(run.start, run.length), style);
    }
  }
  canvas.popClip();
  const PixelRect thumb = noteThumb(note, rect, density);
  if (thumb.empty()) return;
  const Colour ink = noteThumbColour(palette);
  canvas.box(thumb, px(1, density), ink, ink, ink, 0);
}

NoteHit noteHit(const Scene& scene, NodeId id, Point<Twips> windowPoint, Density density) {
  const Node* note = scene.find(id);
  if (note == nullptr || !note->note) return {};
  const Point<Twips> at = scene.toNode(id, windowPoint);
  const PixelRect box = noteTextRect(sizeOf(*note, density), density);
  const NoteLayout& layout = *note->note;
  const Pixels y = density.toPixels(at.y) - box.top;
  const Pixels end = layout.lineHeight() * linesInSight(layout, box);
  const Pixels scrolled = layout.lineHeight() * firstLine(*note, density);
  const Pixels inSight{std::clamp(y.value, 0, end.value - 1)};
  NoteHit hit = layout.hit(note->text, {density.toPixels(at.x) - box.left, inSight + scrolled});
  if (inSight != y) hit.link = -1;
  return hit;
}

std::wstring noteLinkAt(const Scene& scene, NodeId id, Point<Twips> windowPoint, Density density) {
  const NoteHit hit = noteHit(scene, id, windowPoint, density);
  if (hit.link < 0) return {};
  const Node& note = *scene.find(id);
  const NoteLink& link = note.note->links()[static_cast<std::size_t>(hit.link)];
  return addressOfNoteLink(std::wstring_view(note.text).substr(link.start, link.length));
}

bool scrollNote(Scene& scene, NodeId id, int lines, Density density) {
  Node* note = scene.find(id);
  if (note == nullptr || !note->note) return false;
  const int line = firstLine(*note, density);
  const int next = std::clamp(line + lines, 0, lastFirstLine(*note, density));
  if (next == line) return false;
  setFirstLine(*note, next, density);
  return true;
}

bool overNoteThumb(const Node& note, const PixelRect& rect, Point<Pixels> at, Density density) {
  const PixelRect thumb = noteThumb(note, rect, density);
  return !thumb.empty() && at.x >= thumb.left - px(kMargin, density) && at.x < rect.right() &&
         at.y >= thumb.top && at.y < thumb.bottom();
}

bool dragNoteThumb(Scene& scene, NodeId id, const PixelRect& rect, Pixels top, Density density) {
  const Node* note = scene.find(id);
  if (note == nullptr) return false;
  const double share = noteThumbShare(rect, noteThumb(*note, rect, density), top);
  const int line = roundHalfToEven(share * lastFirstLine(*note, density));
  return scrollNote(scene, id, line - firstLine(*note, density), density);
}

std::size_t noteTopOffset(const Scene& scene, NodeId id, Density density) {
  const Node* note = scene.find(id);
  if (note == nullptr || !note->note) return 0;
  return note->note->lineStart(static_cast<std::size_t>(firstLine(*note, density)));
}

void scrollNoteTo(Scene& scene, NodeId id, std::size_t offset, Density density) {
  const Node* note = scene.find(id);
  if (note == nullptr || !note->note) return;
  scrollNote(scene, id, static_cast<int>(note->note->lineOf(offset)) - firstLine(*note, density),
             density);
}

}  // namespace varnowick
