// The colours of one container, or of several at once. Shows what they come to, and
// answers what was chosen; the records are the caller's to change.
#pragma once

#include <functional>
#include <optional>

#include "containers/colours.h"
#include "platform/msg_box.h"
#include "platform/win32/handles.h"
#include "ui/scene/palette.h"
#include "ui/win/toolkit/back_buffer.h"
#include "ui/win/toolkit/dialog.h"
#include "ui/win/toolkit/gdi_text.h"

namespace varnowick {

class frmConColors : public Dialog {
 public:
  struct Subject {
    std::wstring name;
    std::optional<ContainerColours> colours;  // its own, if it has any
    ContainerColours usual;
    bool severalSelected = false;  // with others, to which the colours may go as well
  };
  struct Choice {
    std::optional<ContainerColours> colours;  // nothing: none of its own any more
    bool toAllSelected = false;
  };
  // How a colour is chosen; the system's dialog unless told otherwise.
  using Chooser = std::function<std::optional<COLORREF>(HWND owner, COLORREF start)>;

  // The palette is that of the main panel. All references must outlive the dialog.
  frmConColors(Subject subject, const Palette& palette, GdiFonts& fonts, Density density,
               MsgBox& msgBox, Chooser chooser = {});

  // Nothing when the user thought better of it.
  std::optional<Choice> choose(HWND owner);

  // The controls, for whoever drives the dialog from outside.
  enum Id : int {
    kBack = 100,
    kChooseBack,
    kLighterBack,
    kDarkerBack,
    kFore,
    kChooseFore,
    kLighterFore,
    kDarkerFore,
    kPreview,
    kReset
  };

 protected:
  void initialise() override;
  int firstFocus() const override { return kChooseBack; }
  void command(int id) override;
  HBRUSH background(int id, HDC dc) override;
  void draw(int id, const DRAWITEMSTRUCT& item) override;

 private:
  ContainerColours shown() const { return colours_.value_or(subject_.usual); }
  void set(std::optional<ContainerColours> colours);
  void chooseFor(bool back);
  void shade(bool back, bool lighten);
  void confirm();

  Subject subject_;
  const Palette& palette_;
  GdiFonts& fonts_;
  Density density_;
  MsgBox& msgBox_;
  Chooser chooser_;
  std::optional<ContainerColours> colours_;
  bool toAll_ = false;
  BrushHandle backBrush_, foreBrush_;
};

}  // namespace varnowick
