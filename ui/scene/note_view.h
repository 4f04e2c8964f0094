// A note on the scene: its layout kept beside the node, drawn, scrolled, and asked
// what lies under the mouse. Knows no window and opens no link.
#pragma once

#include <memory>
#include <string>

#include "ui/scene/note_layout.h"
#include "ui/scene/palette.h"
#include "ui/scene/scene.h"

namespace varnowick {

inline constexpr float kNotePoints = 9;  // height of the font
inline constexpr const wchar_t* kEmptyNoteHint = L"Click to write";

// Gives nodes their text and its layout, made again only when text, width, density
// or font have changed. One for a scene, so that letters are measured once.
class NoteLayouts {
 public:
  // A note that is not shown is not laid out. The measure may be nullptr.
  void update(Node& note, const std::wstring& text, bool shown, TextMeasure* measure,
              Density density);
  // The system's font has changed; the notes must be updated again.
  void forgetFont() { widths_.reset(); }

 private:
  std::shared_ptr<LetterWidths> widths_;
};

// The text's rectangle within that of the note. Only whole lines are shown in it.
PixelRect noteTextRect(const PixelRect& note, Density density);
// The thumb at the right that shows how far the note is scrolled; empty when all of
// it is in sight. The rectangle is the note's, and so is the result's origin.
PixelRect noteThumb(const Node& note, const PixelRect& rect, Density density);
// The same for any text, of which the share `shown` from `first` on is in sight.
PixelRect noteThumb(const PixelRect& rect, double first, double shown, Density density);
// Where in the text the thumb stands when its top is drawn to `top`, as such a share.
double noteThumbShare(const PixelRect& rect, const PixelRect& thumb, Pixels top);
Colour noteThumbColour(const Palette& palette);
void paintNoteText(Canvas& canvas, const Node& note, const PixelRect& rect, const Palette& palette,
                   Density density);

// What of a note lies under a point of the window; nothing (offset 0, no link) for a
// node that is no note with a layout.
NoteHit noteHit(const Scene& scene, NodeId note, Point<Twips> windowPoint, Density density);
// The address behind the link under the point, to be opened by the rules for outside
// links; empty when there is none.
std::wstring noteLinkAt(const Scene& scene, NodeId note, Point<Twips> windowPoint, Density density);
// Scrolls the note downwards by so many lines, within its text. False when that changes
// nothing, so that what lies around the note may scroll instead.
bool scrollNote(Scene& scene, NodeId note, int lines, Density density);
// True near the thumb, a little beside it too: it is thin. The point and the note's
// rectangle are of the window.
bool overNoteThumb(const Node& note, const PixelRect& rect, Point<Pixels> at, Density density);
// Scrolls so that the thumb's top comes to stand there. False when that changes nothing.
bool dragNoteThumb(Scene& scene, NodeId note, const PixelRect& rect, Pixels top, Density density);
// The offset of the first line in sight, and back: brings that line to the top.
std::size_t noteTopOffset(const Scene& scene, NodeId note, Density density);
void scrollNoteTo(Scene& scene, NodeId note, std::size_t offset, Density density);

}  // namespace varnowick
