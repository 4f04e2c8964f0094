// One line edited where it is shown: the name of a container, the caption of a
// shortcut, the file name of a row. Enter or a loss of focus takes what was typed,
// Esc drops it. What the new text means is the owner's to say.
#pragma once

#include <functional>
#include <string>

#include "ui/win/pane/edit_overlay.h"

namespace varnowick {

class InPlaceEdit final : public EditOverlay {
 public:
  struct Request {
    NodeId node;
    std::wstring text;
    // The part of the node that the line covers, relative to the node in twips; an
    // empty one: where captionPart says.
    TwipsRect part{};
    int limit = 255;          // characters that can be typed; the text may hold more
    bool selectStem = false;  // the name without its extension instead of all
    float points = 9;         // height of the font
    bool bold = false;
    std::wstring accessibleName{};  // "Name of the container", for screen readers
    // The new text as typed, only when it differs from the old one; it may be empty.
    std::function<void(std::wstring)> accepted;
    // After that, and after editing that changed nothing; may be empty.
    std::function<void()> done{};
  };

  // Scene and fonts are borrowed and must outlive it.
  InPlaceEdit(const Scene& scene, GdiFonts& fonts) : EditOverlay(scene, fonts) {}

  // Begins, after taking what is being edited already. False when the node is out
  // of sight. The owner calls arrange() after each layout or scrolling, accept()
  // before it collapses and at the end of the session, and stays open while
  // active().
  bool begin(Request request);

  // The part of a node where its caption stands: beside the icon of a small
  // shortcut, under that of a large one, before the fold box of a title.
  static TwipsRect captionPart(const Scene& scene, NodeId node);

 protected:
  HWND makeControl() override;
  PixelRect frameRect(const PixelRect& nodeRect) const override;
  PixelRect controlRect(Size<Pixels> frame) const override;
  Colour ground(const Palette& palette) const override;
  Colour ink(const Palette& palette) const override { return palette.text; }
  bool keyDown(int key) override;
  bool refuses(wchar_t character) const override {
    return character == VK_RETURN || character == VK_TAB;
  }
  void ended(bool accepted, std::wstring text) override;

 private:
  Request request_;
};

}  // namespace varnowick
