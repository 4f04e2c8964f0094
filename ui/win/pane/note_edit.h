// A note edited where it is shown, in many lines. What is typed is handed over when
// the typing rests, when the focus leaves and at the end, never key by key. The text
// with its history and what is selected of it are kept here; the control shows a part
// of them, since no control takes megabytes at once. Saving is the owner's business.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "containers/note_slice.h"
#include "containers/note_text.h"
#include "core/slots.h"
#include "ui/win/pane/edit_overlay.h"
#include "ui/win/toolkit/popup_menu.h"

namespace varnowick {

class NoteEdit final : public EditOverlay {
 public:
  struct Hooks {
    // The note's whole text, with CR LF between its lines; only when it has changed.
    std::function<void(ContainerSlot, const std::wstring&)> committed;
    // After the last of them. The offset is that of the first line in sight.
    std::function<void(ContainerSlot, std::size_t topOffset)> ended{};
    // A function key was pressed; what was typed has been handed over. True when it
    // meant something.
    std::function<bool(int key)> functionKey{};
    // Shows a menu at a point of the screen and waits. The command chosen, or 0.
    std::function<void(const std::vector<MenuItem>&, POINT)> menu{};
  };
  // Scene and fonts are borrowed and must outlive it.
  NoteEdit(const Scene& scene, GdiFonts& fonts, Hooks hooks)
      : EditOverlay(scene, fonts), hooks_(std::move(hooks)) {}
  ~NoteEdit() override;

  // Begins with the caret at the offset, after ending what is being edited already.
  // A text that was left as it is now can still be undone. False when the note is out
  // of sight. The owner calls arrange() after each layout or scrolling, accept() before
  // it collapses and at the end of the session, and stays open while active().
  bool begin(ContainerSlot slot, const std::wstring& text, std::size_t offset);
  ContainerSlot slot() const { return active() ? slot_ : ContainerSlot{}; }
  // Hands over what was typed, if anything, and goes on.
  void commit();
  // The scene has changed. What was done to a note that has gone is not to be undone in
  // the one that gets its slot.
  void forgetGone();

  // As far the frame reaches beyond the node, in pixels at 96 dots per inch.
  static constexpr int kHalo = 2;

 protected:
  HWND makeControl() override;
  PixelRect frameRect(const PixelRect& nodeRect) const override;
  PixelRect controlRect(Size<Pixels> frame) const override;
  Colour ground(const Palette& palette) const override { return palette.noteBack; }
  Colour ink(const Palette& palette) const override { return palette.noteText; }
  bool keyDown(int key) override;
  bool refuses(wchar_t character) const override;
  void selectAll() override;
  void fontSet() override;
  void textChanged() override;
  void vanished() override { accept(); }
  void ending() override { topAtEnd_ = topOffset(); }
  void ended(bool accepted, std::wstring text) override;
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT onControl(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  enum class Step { Undo, Redo };

  // The text (note_edit.cpp)
  void changed();
  void handOver();
  bool replaceSelected(std::wstring_view by);
  bool step(Step step);
  bool copy();
  void paste();
  void deleteWord(int key);
  bool prepareFor(UINT message, WPARAM wParam);
  bool clipboardKey(int key);
  void showMenu(LPARAM point);

  // What of it is in sight (note_edit_view.cpp)
  void load(std::size_t around, std::size_t top);
  void showSelection();
  void showCaret();
  NoteSlice selectedInControl() const;
  void followSelection(bool extends);
  void followCaret();
  void followDrag();
  void followView();
  bool moves(int key);
  std::size_t topOffset() const;
  void scrollToTop(std::size_t offset);
  void wheel(int delta);
  int linesInSight() const;
  void scrollBy(int lines);
  PixelRect noteInFrame() const;
  PixelRect thumb() const;
  bool dragThumb(UINT message, POINT at);
  void scrollToShare(double share);

  Hooks hooks_;
  ContainerSlot slot_;
  NoteText note_;
  NoteSlice slice_;          // of the text, in the control
  NoteSelection selection_;  // of the whole text
  NoteSlice shown_;          // what of it the control has selected
  bool changed_ = false;     // the text differs from what was handed over last
  bool loading_ = false;     // what the control tells is our own doing
  std::size_t topAtEnd_ = 0;
  int wheelRest_ = 0;
  std::optional<int> thumbHeld_;  // so far below its top
};

}  // namespace varnowick
