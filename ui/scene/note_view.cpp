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

// How far the note can be scrolled.
Pixels scrollRoom(const Node& note, Density density) {
  if (!note.note) return {0};
  const PixelRect text = noteTextRect(sizeOf(note, density), density);
  return {std::max(0, (note.note->height() - text.height).value)};
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
  note.scroll.y = std::clamp(note.scroll.y, Twips{}, density.toTwips(scrollRoom(note, density)));
}

PixelRect noteTextRect(const PixelRect& note, Density density) {
  const Pixels margin = px(kMargin, density);
  return {note.left + margin, note.top, note.width - margin * 2, note.height};
}

PixelRect noteThumb(const Node& note, const PixelRect& rect, Density density) {
  const int room = scrollRoom(note, density).value;
  if (room == 0 || rect.height.value < kLeastThumb) return {};
  const double all = note.note->height().value;
  const int height = rect.height.value;
  const int length = std::max(std::min(height, px(kLeastThumb, density).value),
                              static_cast<int>(height * (height / all)));
  const double share =
      std::clamp(static_cast<double>(density.toPixels(note.scroll.y).value) / room, 0.0, 1.0);
  const Pixels width = px(kThumbWidth, density);
  return {rect.right() - width,
          {rect.top.value + static_cast<int>((height - length) * share)},
          width,
          {length}};
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
  const int line = layout.lineHeight().value;
  const int scrolled = density.toPixels(note.scroll.y).value;
  canvas.pushClip(rect);
  for (int i = scrolled / line; i * line < scrolled + box.height.value; ++i) {
    if (static_cast<std::size_t>(i) >= layout.lines()) break;
    const Pixels top{box.top.value + i * line - scrolled};
    for (const NoteRun& run : layout.runs(note.text, static_cast<std::size_t>(i))) {
      style.underline = run.link >= 0;
      style.colour = run.link >= 0 ? linkColour : palette.noteText;
      // Letters may reach a little over their width.
      canvas.text({box.left + run.left, top, run.width + px(2, density), {line}},
                  std::wstring_view(note.text).substr(run.start, run.length), style);
    }
  }
  canvas.popClip();
  const PixelRect thumb = noteThumb(note, rect, density);
  if (thumb.empty()) return;
  const Colour ink =
      palette.highContrast ? palette.noteText : mix(palette.noteBack, palette.noteText, 0.35F);
  canvas.box(thumb, px(1, density), ink, ink, ink, 0);
}

NoteHit noteHit(const Scene& scene, NodeId id, Point<Twips> windowPoint, Density density) {
  const Node* note = scene.find(id);
  if (note == nullptr || !note->note) return {};
  const Point<Twips> at = scene.toNode(id, windowPoint);
  const PixelRect box = noteTextRect(sizeOf(*note, density), density);
  const Pixels scrolled = density.toPixels(note->scroll.y);
  return note->note->hit(
      note->text, {density.toPixels(at.x) - box.left, density.toPixels(at.y) - box.top + scrolled});
}

std::wstring noteLinkAt(const Scene& scene, NodeId id, Point<Twips> windowPoint, Density density) {
  const NoteHit hit = noteHit(scene, id, windowPoint, density);
  if (hit.link < 0) return {};
  const Node& note = *scene.find(id);
  const NoteLink& link = note.note->links()[static_cast<std::size_t>(hit.link)];
  return addressOfNoteLink(std::wstring_view(note.text).substr(link.start, link.length));
}

bool scrollNote(Scene& scene, NodeId id, Twips by, Density density) {
  Node* note = scene.find(id);
  if (note == nullptr || !note->note) return false;
  const Twips most = density.toTwips(scrollRoom(*note, density));
  const Twips next = std::clamp(note->scroll.y + by, Twips{}, most);
  if (next == note->scroll.y) return false;
  note->scroll.y = next;
  return true;
}

std::size_t noteTopOffset(const Scene& scene, NodeId id, Density density) {
  const Node* note = scene.find(id);
  if (note == nullptr || !note->note) return 0;
  const int line = density.toPixels(note->scroll.y).value / note->note->lineHeight().value;
  return note->note->lineStart(static_cast<std::size_t>(line));
}

void scrollNoteTo(Scene& scene, NodeId id, std::size_t offset, Density density) {
  const Node* note = scene.find(id);
  if (note == nullptr || !note->note) return;
  const Pixels top = note->note->lineHeight() * static_cast<int>(note->note->lineOf(offset));
  scrollNote(scene, id, density.toTwips(top) - note->scroll.y, density);
}

}  // namespace varnowick
