// The properties of one shortcut. Takes the record and an error text, and writes
// the record back only when the user confirms.
#pragma once

#include <string>

#include "core/workspace.h"
#include "ui/win/dialog.h"

namespace varnowick {

class frmShortcutProperties : public Dialog {
 public:
  // A non-empty error is shown as "Error: " and the text.
  frmShortcutProperties(clsShortcut& shortcut, std::wstring error);
  // True when the user confirmed and the record holds what was entered.
  bool edit(HWND owner);

 protected:
  void initialise() override;
  void command(int id) override;

 private:
  clsShortcut& shortcut_;
  std::wstring error_;
};

}  // namespace varnowick
