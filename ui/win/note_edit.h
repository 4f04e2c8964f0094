// A note edited where it is shown, in many lines. What is typed is handed over when
// the typing rests, when the focus leaves and at the end, never key by key. The text
// control holds only a part of a very long note. Saving is the owner's business.
#pragma once

#include <functional>
#include <string>

#include "containers/note_slice.h"
#include "core/slots.h"
#include "ui/win/edit_overlay.h"

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
  };
  // Scene and fonts are borrowed and must outlive it.
  NoteEdit(const Scene& scene, GdiFonts& fonts, Hooks hooks)
      : EditOverlay(scene, fonts), hooks_(std::move(hooks)) {}
  ~NoteEdit() override;

  // Begins with the caret at the offset, after ending what is being edited already.
  // False when the note is out of sight. The owner calls arrange() after each layout
  // or scrolling, accept() before it collapses and at the end of the session, and
  // stays open while active().
  bool begin(ContainerSlot slot, const std::wstring& text, std::size_t offset);
  ContainerSlot slot() const { return active() ? slot_ : ContainerSlot{}; }
  // Hands over what was typed, if anything, and goes on.
  void commit();

  // As far the frame reaches beyond the node, in pixels at 96 dots per inch.
  static constexpr int kHalo = 2;

 protected:
  HWND makeControl() override;
  PixelRect frameRect(const PixelRect& nodeRect) const override;
  PixelRect controlRect(Size<Pixels> frame) const override;
  Colour ground(const Palette& palette) const override { return palette.noteBack; }
  Colour ink(const Palette& palette) const override { return palette.noteText; }
  void applyColours() override;
  bool keyDown(int key) override;
  void textChanged() override;
  void vanished() override { accept(); }
  void ending() override { topAtEnd_ = topOffset(); }
  void ended(bool accepted, std::wstring text) override;
  LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT onControl(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  void takeIn(const std::wstring& edited);
  void handOver();
  void load(std::size_t caret, std::size_t top);
  std::size_t offsetOf(std::wstring_view part, DWORD position) const;
  std::size_t topOffset() const;
  int topOf(std::size_t position) const;
  std::size_t toPosition(std::wstring_view part, std::size_t offset) const;
  void scrollToTop(std::size_t position);
  void followCaret();
  void followView();
  void goTo(std::size_t offset);
  void paste();
  bool pasteLongText(const std::wstring& pasted);
  void wheel(int delta);
  void paintThumb(HDC dc) const;

  Hooks hooks_;
  ContainerSlot slot_;
  std::wstring text_;  // all of it, as handed over last or with what was typed since
  NoteSlice slice_;
  bool typed_ = false;    // what is in the control differs from text_
  bool changed_ = false;  // text_ differs from what was handed over last
  bool loading_ = false;
  bool rich_ = false;
  std::size_t topAtEnd_ = 0;
  int wheelRest_ = 0;
};

}  // namespace varnowick
