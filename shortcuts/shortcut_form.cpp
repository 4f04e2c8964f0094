#include "shortcuts/shortcut_form.h"

#include <algorithm>

#include "shortcuts/addresses.h"
#include "shortcuts/dropped.h"
#include "shortcuts/outside_links.h"
#include "shortcuts/tags.h"

namespace varnowick {
namespace {

constexpr float kLargeFontSize = 10;

std::wstring trimmedLine(std::wstring_view text) {
  const std::wstring line = oneLine(text);
  const std::size_t first = line.find_first_not_of(L" \x00A0");
  if (first == std::wstring::npos) return {};
  return line.substr(first, line.find_last_not_of(L" \x00A0") - first + 1);
}

// As copied from a folder window, where a path stands between quotation marks.
std::wstring tidyPath(std::wstring_view text) {
  std::wstring path = trimmedLine(text);
  if (path.size() < 2 || path.front() != L'"' || path.back() != L'"') return path;
  return trimmedLine(std::wstring_view(path).substr(1, path.size() - 2));
}

// "localhost:8080/x" begins with a host, not with a scheme.
bool beginsWithHostAndPort(std::wstring_view text) {
  const std::size_t colon = text.find(L':');
  if (colon == std::wstring_view::npos) return false;
  const std::wstring_view port =
      text.substr(colon + 1, text.find_first_of(L"/?#", colon) - colon - 1);
  return !port.empty() &&
         std::all_of(port.begin(), port.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

// What a browser does to blanks when they are entered.
std::wstring withoutBlanks(const std::wstring& address) {
  std::wstring result;
  for (const wchar_t c : address) c == L' ' ? result += L"%20" : result += c;
  return result;
}

std::optional<FormFault> validateAddress(std::wstring& address, const std::wstring& stored) {
  if (!address.empty() && address == stored) return std::nullopt;
  address = trimmedLine(address);
  if (address.empty()) return FormFault{FormField::Path, L"Enter a web address."};
  if (wholePath(address) || address.starts_with(L"\\\\"))
    return FormFault{FormField::Path, L"This is the path of a file, not a web address."};
  if (looksLikeAddress(address) && !beginsWithHostAndPort(address)) {
    if (address.ends_with(L"://"))
      return FormFault{FormField::Path, L"The web address ends after its first part."};
    address = withoutBlanks(address);
    if (isSafeOutsideLink(address)) return std::nullopt;
    return FormFault{FormField::Path,
                     L"Only web and mail addresses (http, https, ftp, mailto) can be entered."};
  }
  if (address.find_first_of(L" \"<>\\") != std::wstring::npos)
    return FormFault{FormField::Path, L"This is not a web address."};
  address = L"http://" + address;
  if (!isSafeOutsideLink(address)) return FormFault{FormField::Path, L"This is not a web address."};
  return std::nullopt;
}

std::optional<FormFault> validatePath(std::wstring& path) {
  path = tidyPath(path);
  if (path.empty()) return FormFault{FormField::Path, L"Enter the path of a file or folder."};
  if (path.find(L'"') != std::wstring::npos)
    return FormFault{FormField::Path,
                     L"A path has no quotation marks. Parameters have a field of their own."};
  return std::nullopt;
}

// Nothing is written for a value that was only shown, because the form may show
// it other than it is stored.
template <class Tidy>
void put(std::wstring& stored, const std::wstring& entered, Tidy&& tidy) {
  if (tidy(stored) != entered) stored = entered;
}

}  // namespace

std::wstring oneLine(std::wstring_view text) {
  std::wstring line;
  line.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c == L'\n' && i > 0 && text[i - 1] == L'\r') continue;
    const bool control = c < L' ' || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
    line += control ? L' ' : c;
  }
  return line;
}

ShortcutForm formOf(const clsShortcut& shortcut) {
  ShortcutForm form;
  if (shortcut.Command)
    form.kind = ShortcutKindCode::Command;
  else if (shortcut.ShortcutType == static_cast<int>(ShortcutKindCode::WebAddress))
    form.kind = ShortcutKindCode::WebAddress;
  form.path = oneLine(shortcut.Path);
  if (form.kind == ShortcutKindCode::WebAddress) form.storedAddress = form.path;
  form.caption = oneLine(shortcut.FullCaption);
  form.parameters = oneLine(shortcut.Parameters);
  form.icon = oneLine(shortcut.Icon);
  form.tags = oneLine(shortcut.Tags);
  form.startWithTag = shortcut.TagStart;
  form.bold = shortcut.FontBold;
  form.small = isSmall(shortcut);
  form.confirm = shortcut.Confirm;
  form.colour = shortcut.Color;
  return form;
}

std::optional<FormFault> validate(ShortcutForm& form) {
  form.caption = oneLine(form.caption);
  form.parameters = oneLine(form.parameters);
  form.icon = tidyPath(form.icon);
  form.tags = tidyTags(form.tags);
  switch (form.kind) {
    case ShortcutKindCode::WebAddress:
      return validateAddress(form.path, form.storedAddress);
    case ShortcutKindCode::Command:
      // A path that was entered before stays, for the way back.
      form.path = trimmedLine(form.path);
      if (trimmedLine(form.parameters).empty())
        return FormFault{FormField::Parameters, L"Enter the system command."};
      return std::nullopt;
    default:
      return validatePath(form.path);
  }
}

void applyForm(const ShortcutForm& form, clsShortcut& shortcut) {
  if (formOf(shortcut).kind != form.kind) {
    shortcut.ShortcutType = static_cast<int>(form.kind);
    shortcut.Command = form.kind == ShortcutKindCode::Command;
  }
  put(shortcut.Path, form.path, trimmedLine);
  put(shortcut.FullCaption, form.caption, oneLine);
  put(shortcut.Parameters, form.parameters, oneLine);
  put(shortcut.Icon, form.icon, trimmedLine);
  put(shortcut.Tags, form.tags, tidyTags);
  shortcut.TagStart = form.startWithTag;
  shortcut.FontBold = form.bold;
  if (form.small != isSmall(shortcut))
    shortcut.FontSize = form.small ? kSmallFontSize : kLargeFontSize;
  shortcut.Confirm = form.confirm;
  shortcut.Color = form.colour;
}

clsShortcut newShortcut(ShortcutForm form, bool isFolder) {
  if (trimmedLine(form.caption).empty()) {
    const bool web = form.kind == ShortcutKindCode::WebAddress;
    if (form.kind == ShortcutKindCode::Command)
      form.caption = tidyCaption(form.parameters);
    else
      form.caption = web ? tidyCaption(hostOf(form.path)) : captionOfPath(form.path, isFolder);
    if (form.caption.empty()) form.caption = tidyCaption(form.path);
  }
  clsShortcut shortcut;
  applyForm(form, shortcut);
  return shortcut;
}

}  // namespace varnowick
