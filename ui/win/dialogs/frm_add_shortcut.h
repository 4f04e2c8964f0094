// Asks for a new shortcut: a web address or a system command in a small dialog, a
// file or folder in the system's own. Makes a record and adds it to nothing.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "core/workspace.h"
#include "ui/win/toolkit/dialog.h"

namespace varnowick {

enum class NewShortcutKind { WebUrl, File, Directory, SystemCommand };

// The record without parent and position; nothing when the user thinks better of
// it. A web address on the clipboard is proposed. A chosen link file is the path
// itself: what it leads to is the caller's to read.
std::optional<clsShortcut> askForShortcut(HWND owner, NewShortcutKind kind);

// The dialog of the kinds WebUrl and SystemCommand.
class frmAddShortcut : public Dialog {
 public:
  // proposed stands in the first field and is selected.
  frmAddShortcut(NewShortcutKind kind, std::wstring proposed);
  std::optional<clsShortcut> ask(HWND owner);

  enum Id : int { kTarget = 100, kCaption, kConfirm, kFault };

 protected:
  void initialise() override;
  void command(int id) override;
  void changed(int id) override;

 private:
  bool isWeb_;
  std::wstring proposed_;
  clsShortcut result_;
};

}  // namespace varnowick
