#include "ui/win/dialogs/frm_add_shortcut.h"

#include "shortcuts/addresses.h"
#include "shortcuts/shortcut_form.h"
#include "ui/win/dialogs/browse.h"
#include "ui/win/toolkit/drop_target.h"

namespace varnowick {
namespace {

using Id = frmAddShortcut::Id;
constexpr std::size_t kMostProposed = 2'000;  // a longer text is hardly meant

std::vector<DialogRow> rows(bool web) {
  using enum DialogControl;
  if (web)
    return {
        {Label, -1, L"&Web address", 7, 7, 246, 8},
        {Edit, Id::kTarget, L"", 7, 17, 246, 14},
        {Label, -1, L"&Caption (empty: the name of the site)", 7, 37, 246, 8},
        {Edit, Id::kCaption, L"", 7, 47, 246, 14},
        {ErrorLabel, Id::kFault, L"", 7, 68, 138, 17},
        {DefaultButton, IDOK, L"OK", 149, 70, 50, 14},
        {Button, IDCANCEL, L"Cancel", 203, 70, 50, 14},
    };
  return {
      {Label, -1, L"&System command", 7, 7, 246, 8},
      {Edit, Id::kTarget, L"", 7, 17, 246, 14},
      {Label, -1, L"&Caption (empty: the command itself)", 7, 37, 246, 8},
      {Edit, Id::kCaption, L"", 7, 47, 246, 14},
      {CheckBox, Id::kConfirm, L"&Ask before starting", 7, 68, 246, 10},
      {ErrorLabel, Id::kFault, L"", 7, 86, 138, 17},
      {DefaultButton, IDOK, L"OK", 149, 88, 50, 14},
      {Button, IDCANCEL, L"Cancel", 203, 88, 50, 14},
  };
}

std::wstring addressOnClipboard() {
  const Dropped data = readClipboard();
  const std::wstring& text = data.address.empty() ? data.text : data.address;
  if (text.size() > kMostProposed) return {};
  return wholeAddress(text).value_or(std::wstring());
}

std::optional<clsShortcut> fromPath(const std::optional<std::wstring>& path, bool isFolder) {
  if (!path) return std::nullopt;
  ShortcutForm form;
  form.path = *path;
  return newShortcut(std::move(form), isFolder);
}

}  // namespace

std::optional<clsShortcut> askForShortcut(HWND owner, NewShortcutKind kind) {
  switch (kind) {
    case NewShortcutKind::WebUrl:
      return frmAddShortcut(kind, addressOnClipboard()).ask(owner);
    case NewShortcutKind::File:
      return fromPath(browseForFile(owner, {.title = L"File shortcut"}), false);
    case NewShortcutKind::Directory:
      return fromPath(browseForFolder(owner, L"The folder that the shortcut opens"), true);
    case NewShortcutKind::SystemCommand:
      return frmAddShortcut(kind, {}).ask(owner);
  }
  return std::nullopt;
}

frmAddShortcut::frmAddShortcut(NewShortcutKind kind, std::wstring proposed)
    : Dialog(kind == NewShortcutKind::WebUrl ? L"Web URL" : L"System command", 260,
             kind == NewShortcutKind::WebUrl ? 91 : 109, rows(kind == NewShortcutKind::WebUrl)),
      isWeb_(kind == NewShortcutKind::WebUrl),
      proposed_(std::move(proposed)) {}

std::optional<clsShortcut> frmAddShortcut::ask(HWND owner) {
  if (showModal(owner) != IDOK) return std::nullopt;
  return result_;
}

void frmAddShortcut::initialise() { setText(kTarget, proposed_); }

void frmAddShortcut::changed(int) { setText(kFault, L""); }

void frmAddShortcut::command(int id) {
  if (id != IDOK) return end(id);
  ShortcutForm form;
  form.kind = isWeb_ ? ShortcutKindCode::WebAddress : ShortcutKindCode::Command;
  (isWeb_ ? form.path : form.parameters) = text(kTarget);
  form.caption = text(kCaption);
  form.confirm = !isWeb_ && checked(kConfirm);
  if (const auto fault = validate(form)) return complain(kFault, fault->message, kTarget);
  result_ = newShortcut(std::move(form));
  end(IDOK);
}

}  // namespace varnowick
