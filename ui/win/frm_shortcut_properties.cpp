#include "ui/win/frm_shortcut_properties.h"

namespace varnowick {
namespace {

enum Id : int { kPath = 100, kCaption, kParameters, kCommand, kConfirm, kBold, kTags, kError };

std::vector<DialogRow> rows() {
  using enum DialogControl;
  return {
      {ErrorLabel, kError, L"", 8, 6, 264, 18},
      {Label, -1, L"Path, web address:", 8, 26, 264, 9},
      {Edit, kPath, L"", 8, 36, 264, 13},
      {Label, -1, L"Caption:", 8, 54, 264, 9},
      {Edit, kCaption, L"", 8, 64, 264, 13},
      {Label, -1, L"Additional program parameters or system command:", 8, 82, 264, 9},
      {Edit, kParameters, L"", 8, 92, 264, 13},
      {Label, -1, L"Tags, separated by commas:", 8, 110, 264, 9},
      {Edit, kTags, L"", 8, 120, 264, 13},
      {CheckBox, kCommand, L"Run as a &system command", 8, 138, 130, 11},
      {CheckBox, kConfirm, L"&Ask before starting", 142, 138, 130, 11},
      {CheckBox, kBold, L"&Bold caption", 8, 151, 130, 11},
      {DefaultButton, IDOK, L"OK", 164, 168, 52, 15},
      {Button, IDCANCEL, L"Cancel", 220, 168, 52, 15},
  };
}

}  // namespace

frmShortcutProperties::frmShortcutProperties(clsShortcut& shortcut, std::wstring error)
    : Dialog(L"Shortcut properties", 280, 190, rows()),
      shortcut_(shortcut),
      error_(std::move(error)) {}

bool frmShortcutProperties::edit(HWND owner) { return showModal(owner) == IDOK; }

void frmShortcutProperties::initialise() {
  if (!error_.empty()) setText(kError, L"Error: " + error_);
  setText(kPath, shortcut_.Path);
  setText(kCaption, shortcut_.FullCaption);
  setText(kParameters, shortcut_.Parameters);
  setText(kTags, shortcut_.Tags);
  setChecked(kCommand, shortcut_.Command);
  setChecked(kConfirm, shortcut_.Confirm);
  setChecked(kBold, shortcut_.FontBold);
}

void frmShortcutProperties::command(int id) {
  if (id == IDOK) {
    const bool command = checked(kCommand);
    if (!command && text(kPath).empty()) {
      setText(kError, L"Error: a shortcut needs a path or a web address.");
      SetFocus(item(kPath));
      return;
    }
    if (command && text(kParameters).empty()) {
      setText(kError, L"Error: a system command needs its command text.");
      SetFocus(item(kParameters));
      return;
    }
    shortcut_.Path = text(kPath);
    shortcut_.FullCaption = text(kCaption);
    shortcut_.Parameters = text(kParameters);
    shortcut_.Tags = text(kTags);
    shortcut_.Command = command;
    shortcut_.Confirm = checked(kConfirm);
    shortcut_.FontBold = checked(kBold);
  }
  end(id);
}

}  // namespace varnowick
