// The properties of one shortcut. Takes the record and an error text, and writes
// the record back only when the user confirms. What may be entered is decided by
// the rules of the form.
#pragma once

#include <string>

#include "core/workspace.h"
#include "platform/win32/handles.h"
#include "shortcuts/shortcut_form.h"
#include "ui/win/toolkit/dialog.h"

namespace varnowick {

class frmShortcutProperties : public Dialog {
 public:
  // A non-empty error is shown at the top as "Error: " and the text; one that
  // begins so already is shown as it is.
  frmShortcutProperties(clsShortcut& shortcut, const std::wstring& error);
  // True when the user confirmed and the record holds what was entered.
  bool edit(HWND owner);

  // The controls, for whoever drives the dialog from outside.
  enum Id : int {
    kWebAddress = 100,
    kFileOrFolder,
    kCommand,
    kPath,
    kBrowseFile,
    kBrowseFolder,
    kCaption,
    kParameters,
    kIcon,
    kBrowseIcon,
    kTags,
    kStartWithTag,
    kConfirm,
    kBold,
    kLarge,
    kSmall,
    kSwatch,
    kChooseColour,
    kNoColour,
    kFault
  };

 protected:
  void initialise() override;
  int firstFocus() const override;
  void command(int id) override;
  void changed(int id) override;
  HBRUSH background(int id, HDC dc) override;

 private:
  void setKind(ShortcutKindCode kind);
  ShortcutKindCode kind() const;
  void setColour(int colour);
  void browsePath(bool folder);
  ShortcutForm entered() const;
  void confirm();

  clsShortcut& shortcut_;
  int colour_ = -1;
  BrushHandle swatch_;
};

}  // namespace varnowick
