// What a person enters about one shortcut: taken from a record, checked, and put
// back. Knows the rules of the fields, and nothing of the dialog that shows them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/workspace.h"

namespace varnowick {

struct ShortcutForm {
  ShortcutKindCode kind = ShortcutKindCode::FileOrFolder;  // never Other
  std::wstring path;                                       // a file, a folder or a web address
  std::wstring storedAddress;  // a web address that is stored already is not refused
  std::wstring caption;
  std::wstring parameters;  // of a command: the command
  std::wstring icon;        // empty: the target's own
  std::wstring tags;
  bool startWithTag = false;
  bool bold = false;
  bool small = false;
  bool confirm = false;
  int colour = -1;  // 0x00BBGGRR; -1: none of its own
};

enum class FormField { Path, Parameters };

struct FormFault {
  FormField field;
  const wchar_t* message;  // a sentence for the user
};

ShortcutForm formOf(const clsShortcut& shortcut);

// Tidies what was entered: a web address gets its scheme, a path loses the
// quotation marks around it, tags are listed once each. Gives what is wrong, with
// the field to mend; nothing when all is well.
std::optional<FormFault> validate(ShortcutForm& form);

// Writes a valid form into the record. What the form leaves as it was keeps its
// stored value, also where that is one the form cannot show.
void applyForm(const ShortcutForm& form, clsShortcut& shortcut);

// A new record of a valid form, without parent and position. An empty caption
// becomes the name of the site, file or folder, or the command.
clsShortcut newShortcut(ShortcutForm form, bool isFolder = false);

// The text without line breaks and other control characters; none of them can be
// stored in a field of one line.
std::wstring oneLine(std::wstring_view text);

}  // namespace varnowick
