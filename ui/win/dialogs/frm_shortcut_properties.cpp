#include "ui/win/dialogs/frm_shortcut_properties.h"

#include "shortcuts/dropped.h"
#include "ui/win/dialogs/browse.h"

namespace varnowick {
namespace {

using Id = frmShortcutProperties::Id;
constexpr std::wstring_view kErrorStart = L"Error: ";

std::vector<DialogRow> rows() {
  using enum DialogControl;
  return {
      {FirstRadioButton, Id::kWebAddress, L"&Web address", 7, 7, 70, 10},
      {RadioButton, Id::kFileOrFolder, L"F&ile or folder", 81, 7, 70, 10},
      {RadioButton, Id::kCommand, L"&System command", 155, 7, 90, 10},
      {Label, -1, L"&Path or web address", 7, 24, 178, 8},
      {Edit, Id::kPath, L"", 7, 34, 178, 14},
      {Button, Id::kBrowseFile, L"&File...", 189, 34, 50, 14},
      {Button, Id::kBrowseFolder, L"F&older...", 243, 34, 50, 14},
      {Label, -1, L"C&aption", 7, 54, 286, 8},
      {Edit, Id::kCaption, L"", 7, 64, 286, 14},
      {Label, -1, L"Additional program parameters or system command", 7, 84, 286, 8},
      {Edit, Id::kParameters, L"", 7, 94, 286, 14},
      {Label, -1, L"Ico&n file (empty: use the target's own icon)", 7, 114, 286, 8},
      {Edit, Id::kIcon, L"", 7, 124, 232, 14},
      {Button, Id::kBrowseIcon, L"B&rowse...", 243, 124, 50, 14},
      {Label, -1, L"&Tags, separated by commas", 7, 144, 286, 8},
      {Edit, Id::kTags, L"", 7, 154, 286, 14},
      {CheckBox, Id::kStartWithTag, L"Start with ta&g", 7, 175, 84, 10},
      {CheckBox, Id::kConfirm, L"As&k before starting", 99, 175, 90, 10},
      {CheckBox, Id::kBold, L"&Bold caption", 197, 175, 96, 10},
      {FirstRadioButton, Id::kLarge, L"&Large icon", 7, 194, 54, 10},
      {RadioButton, Id::kSmall, L"S&mall icon", 63, 194, 54, 10},
      {Label, -1, L"Colour", 121, 195, 28, 8},
      {Swatch, Id::kSwatch, L"", 151, 192, 34, 14},
      {Button, Id::kChooseColour, L"&Choose...", 189, 192, 50, 14},
      {Button, Id::kNoColour, L"No colo&ur", 243, 192, 50, 14},
      {ErrorLabel, Id::kFault, L"", 7, 217, 178, 17},
      {DefaultButton, IDOK, L"OK", 189, 219, 50, 14},
      {Button, IDCANCEL, L"Cancel", 243, 219, 50, 14},
  };
}

std::wstring errorText(const std::wstring& error) {
  if (error.empty() || error.starts_with(kErrorStart)) return error;
  return std::wstring(kErrorStart) + error;
}

}  // namespace

frmShortcutProperties::frmShortcutProperties(clsShortcut& shortcut, const std::wstring& error)
    : Dialog(L"Shortcut properties", 300, 240, rows(), errorText(error)), shortcut_(shortcut) {}

bool frmShortcutProperties::edit(HWND owner) { return showModal(owner) == IDOK; }

void frmShortcutProperties::initialise() {
  const ShortcutForm form = formOf(shortcut_);
  setText(kPath, form.path);
  setText(kCaption, form.caption);
  setText(kParameters, form.parameters);
  setText(kIcon, form.icon);
  setText(kTags, form.tags);
  setChecked(kStartWithTag, form.startWithTag);
  setChecked(kConfirm, form.confirm);
  setChecked(kBold, form.bold);
  setChecked(form.small ? kSmall : kLarge, true);
  setKind(form.kind);
  setColour(form.colour);
}

int frmShortcutProperties::firstFocus() const {
  return kind() == ShortcutKindCode::Command ? kParameters : kPath;
}

void frmShortcutProperties::setKind(ShortcutKindCode kind) {
  setChecked(kWebAddress, kind == ShortcutKindCode::WebAddress);
  setChecked(kFileOrFolder, kind == ShortcutKindCode::FileOrFolder);
  setChecked(kCommand, kind == ShortcutKindCode::Command);
  // The command stands in the field of the parameters.
  for (const int id : {kPath, kBrowseFile, kBrowseFolder})
    enable(id, kind != ShortcutKindCode::Command);
}

ShortcutKindCode frmShortcutProperties::kind() const {
  if (checked(kWebAddress)) return ShortcutKindCode::WebAddress;
  return checked(kCommand) ? ShortcutKindCode::Command : ShortcutKindCode::FileOrFolder;
}

void frmShortcutProperties::setColour(int colour) {
  colour_ = colour;
  swatch_.reset(colour == -1 ? nullptr : CreateSolidBrush(static_cast<COLORREF>(colour)));
  setText(kSwatch, colour == -1 ? L"none" : colourText(static_cast<COLORREF>(colour)));
  InvalidateRect(item(kSwatch), nullptr, TRUE);
  if (colour == -1 && GetFocus() == item(kNoColour)) focus(kChooseColour);
  enable(kNoColour, colour != -1);
}

HBRUSH frmShortcutProperties::background(int id, HDC dc) {
  if (id != kSwatch || !swatch_) return nullptr;
  const auto colour = static_cast<COLORREF>(colour_);
  const int light = 299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour);
  SetTextColor(dc, light < 128'000 ? RGB(255, 255, 255) : RGB(0, 0, 0));
  SetBkColor(dc, colour);
  return swatch_.get();
}

void frmShortcutProperties::changed(int id) {
  if (id == kWebAddress || id == kFileOrFolder || id == kCommand) setKind(kind());
  // It may be mended now; the next OK will tell.
  setText(kFault, L"");
}

void frmShortcutProperties::browsePath(bool folder) {
  const std::wstring now = text(kPath);
  const auto chosen =
      folder ? browseForFolder(handle(), L"The folder that the shortcut opens", now)
             : browseForFile(handle(), {.title = L"The file that the shortcut starts"}, now);
  if (!chosen) return;
  setText(kPath, *chosen);
  setKind(ShortcutKindCode::FileOrFolder);
  if (text(kCaption).empty()) setText(kCaption, captionOfPath(*chosen, folder));
  focus(kPath);
}

ShortcutForm frmShortcutProperties::entered() const {
  ShortcutForm form;
  form.kind = kind();
  form.storedAddress = formOf(shortcut_).storedAddress;
  form.path = text(kPath);
  form.caption = text(kCaption);
  form.parameters = text(kParameters);
  form.icon = text(kIcon);
  form.tags = text(kTags);
  form.startWithTag = checked(kStartWithTag);
  form.confirm = checked(kConfirm);
  form.bold = checked(kBold);
  form.small = checked(kSmall);
  form.colour = colour_;
  return form;
}

void frmShortcutProperties::confirm() {
  ShortcutForm form = entered();
  if (const auto fault = validate(form))
    return complain(kFault, fault->message, fault->field == FormField::Path ? kPath : kParameters);
  applyForm(form, shortcut_);
  end(IDOK);
}

void frmShortcutProperties::command(int id) {
  switch (id) {
    case IDOK:
      return confirm();
    case kBrowseFile:
      return browsePath(false);
    case kBrowseFolder:
      return browsePath(true);
    case kBrowseIcon:
      if (const auto chosen = browseForFile(
              handle(), {.title = L"The icon of the shortcut", .filter = kIconFilter}, text(kIcon)))
        setText(kIcon, *chosen);
      return;
    case kChooseColour:
      if (const auto chosen =
              chooseColour(handle(), colour_ == -1 ? RGB(0, 0, 0) : static_cast<COLORREF>(colour_)))
        setColour(static_cast<int>(*chosen));
      return;
    case kNoColour:
      return setColour(-1);
    default:
      return end(id);
  }
}

}  // namespace varnowick
