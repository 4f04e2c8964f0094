// The properties of one picture: its file and its size. Takes the record, and writes it
// back only when the user confirms.
#pragma once

#include <optional>
#include <string>

#include "core/workspace.h"
#include "ui/win/toolkit/dialog.h"

namespace varnowick {

class frmPictureProperties : public Dialog {
 public:
  // A non-empty error is shown at the top.
  frmPictureProperties(clsPicture& picture, Density density, const std::wstring& error);
  // True when the user confirmed and the record holds what was entered.
  bool edit(HWND owner);

  // The controls, for whoever drives the dialog from outside.
  enum Id : int { kPath = 100, kBrowse, kWidth, kHeight, kOriginal, kKeepProportions, kFault };

 protected:
  void initialise() override;
  int firstFocus() const override { return kPath; }
  void command(int id) override;
  void changed(int id) override;

 private:
  void setSize(Size<Pixels> size);
  // What the field holds, as far as a picture can be that long.
  std::optional<int> entered(int id) const;
  // Of the file in the field; nothing when that is none, or on another machine, where
  // nobody waits for it here.
  std::optional<Size<Pixels>> natural() const;
  void browse();
  void confirm();

  clsPicture& picture_;
  Density density_;
  double shape_ = 1;  // height for a width of 1
  bool filling_ = false;
};

}  // namespace varnowick
