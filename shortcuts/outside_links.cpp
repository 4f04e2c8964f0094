#include "shortcuts/outside_links.h"

#include <algorithm>
#include <array>

#include "platform/msg_box.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::array<std::wstring_view, 4> kSchemes{L"http", L"https", L"ftp", L"mailto"};
constexpr std::size_t kMaxLink = 2048;
constexpr std::size_t kMaxDisplayed = 300;

bool needsHost(std::wstring_view scheme) { return !sameIgnoringCase(scheme, L"mailto"); }

// Quotes and blanks end arguments of the programs that links are handed to,
// backslashes make network paths, and a zero ends the text for the system.
bool isPlain(wchar_t c) {
  return c > L' ' && c != L'"' && c != L'\\' && c != L'<' && c != L'>' && c != L'`' && c != 0x7F &&
         !(c >= 0x80 && c < 0xA0);
}

// Characters that are not seen, or that turn the text around.
bool misleads(wchar_t c) {
  return c < L' ' || (c >= 0x7F && c < 0xA0) || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}

}  // namespace

bool isSafeOutsideLink(std::wstring_view link) {
  if (link.size() > kMaxLink || !std::all_of(link.begin(), link.end(), isPlain)) return false;
  const std::size_t colon = link.find(L':');
  if (colon == std::wstring_view::npos) return false;
  const std::wstring_view scheme = link.substr(0, colon);
  if (std::none_of(kSchemes.begin(), kSchemes.end(),
                   [&](std::wstring_view s) { return sameIgnoringCase(s, scheme); }))
    return false;
  const std::wstring_view rest = link.substr(colon + 1);
  if (!needsHost(scheme)) return !rest.empty() && rest.front() != L'/' && rest.front() != L'-';
  return rest.size() > 2 && rest.substr(0, 2) == L"//" && rest[2] != L'/';
}

bool runsItsOwnText(std::wstring_view address) {
  constexpr std::wstring_view kScripts[] = {L"javascript", L"jscript", L"livescript",  L"vbscript",
                                            L"vbs",        L"data",    L"mhtml",       L"mk",
                                            L"its",        L"ms-its",  L"ms-itss",     L"res",
                                            L"hcp",        L"ms-msdt", L"ms-officecmd"};
  std::wstring scheme;
  for (const wchar_t c : address) {
    // Blanks and control characters are passed over by who opens it.
    if (c <= L' ' || c == L'\x7F' || c == L'\x00A0') continue;
    if (c != L':') {
      if (scheme.size() > 20) return false;
      scheme += c;
      continue;
    }
    if (std::any_of(std::begin(kScripts), std::end(kScripts),
                    [&](std::wstring_view s) { return sameIgnoringCase(s, scheme); }))
      return true;
    // The system takes "url:" in front of an address away.
    if (!sameIgnoringCase(scheme, L"url")) return false;
    scheme.clear();
  }
  return false;
}

std::wstring outsideLinkForDisplay(std::wstring_view link) {
  std::wstring shown(link.substr(0, kMaxDisplayed));
  std::replace_if(shown.begin(), shown.end(), misleads, L'\uFFFD');
  if (link.size() > kMaxDisplayed) shown += L"...";
  return shown;
}

bool openOutsideLink(Platform& platform, OwnerWindow owner, const std::wstring& link) {
  if (!isSafeOutsideLink(link)) {
    platform.msgBox.show(L"This link does not lead to a web page and has not been opened:\r\n\r\n" +
                             outsideLinkForDisplay(link),
                         kMsgOkOnly | kMsgExclamation, kProgramTitle);
    return false;
  }
  platform.shell.execute(owner, L"", link, L"", L"");
  return true;
}

}  // namespace varnowick
