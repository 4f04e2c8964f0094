#include "shortcuts/paths.h"

#include <algorithm>
#include <utility>

namespace varnowick {
namespace {

wchar_t lowered(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool isRelative(const std::wstring& path) { return !path.empty() && path.front() == L'@'; }

}  // namespace

bool sameIgnoringCase(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return lowered(x) == lowered(y); });
}

std::wstring ResolveRelativePath(const std::wstring& path, const std::wstring& programFolder) {
  if (!isRelative(path)) return path;
  return programFolder.substr(0, 1) + path.substr(1);
}

std::wstring MakeRelativePath(const std::wstring& path) {
  return path.empty() ? path : L"@" + path.substr(1);
}

std::wstring FolderOfPath(const std::wstring& path) {
  const std::size_t slash = path.rfind(L'\\');
  return slash == std::wstring::npos ? std::wstring{} : path.substr(0, slash + 1);
}

std::wstring EffectivePath(const clsShortcut& shortcut, bool useIcon, System& system) {
  if (useIcon && !shortcut.Icon.empty())
    return ResolveRelativePath(shortcut.Icon, system.programFolder());
  if (shortcut.ShortcutType == static_cast<int>(ShortcutKindCode::WebAddress))
    return system.programFolder() + kHomePageFile;
  if (shortcut.Command) return system.systemFolder() + L"\\cmd.exe";
  return ResolveRelativePath(shortcut.Path, system.programFolder());
}

std::wstring PathAsSeenFrom32Bit(const std::wstring& path, bool isWow64,
                                 const std::wstring& windowsFolder,
                                 const std::function<bool(const std::wstring&)>& exists) {
  if (!isWow64 || windowsFolder.empty()) return path;
  const std::wstring system32 = windowsFolder + L"\\System32\\";
  if (path.size() <= system32.size() ||
      !sameIgnoringCase(std::wstring_view(path).substr(0, system32.size()), system32) ||
      exists(path))
    return path;
  std::wstring sysnative = windowsFolder + L"\\Sysnative\\" + path.substr(system32.size());
  // Systems without Sysnative keep the path, and with it the system's own error.
  return exists(sysnative) ? sysnative : path;
}

std::wstring ExpandAsWritten(const std::wstring& text,
                             const std::function<std::wstring(const std::wstring&)>& expand,
                             const std::function<bool(const std::wstring&)>& exists) {
  constexpr std::pair<std::wstring_view, std::wstring_view> kNative[] = {
      {L"%ProgramFiles%", L"%ProgramW6432%"}, {L"%CommonProgramFiles%", L"%CommonProgramW6432%"}};
  for (const auto& [own, native] : kNative) {
    const std::wstring_view start = std::wstring_view(text).substr(0, own.size());
    if (!sameIgnoringCase(start, own)) continue;
    std::wstring there = expand(std::wstring(native) + text.substr(own.size()));
    // Where there is no such variable its name stays.
    if (!there.starts_with(L'%') && exists(there)) return there;
  }
  return expand(text);
}

}  // namespace varnowick
