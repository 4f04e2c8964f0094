#include "containers/folder_path.h"

#include <algorithm>

#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::size_t kMostPath = 32'000;

bool isLetter(wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); }
bool hasDrive(std::wstring_view path) {
  return path.size() >= 2 && isLetter(path[0]) && path[1] == L':';
}
bool isShare(std::wstring_view path) {
  return path.size() > 2 && path[0] == L'\\' && path[1] == L'\\';
}

std::wstring_view trimmed(std::wstring_view text) {
  const auto isOuter = [](wchar_t c) { return c <= L' ' || c == L'"'; };
  while (!text.empty() && isOuter(text.front())) text.remove_prefix(1);
  while (!text.empty() && isOuter(text.back())) text.remove_suffix(1);
  return text;
}

std::wstring_view withoutSlashes(std::wstring_view path) {
  while (!path.empty() && path.back() == L'\\') path.remove_suffix(1);
  return path;
}

// Where the part after volumeOf begins.
std::size_t volumeLength(std::wstring_view path) {
  if (hasDrive(path)) return 2;
  if (!isShare(path)) return 0;
  const std::size_t server = path.find(L'\\', 2);
  if (server == std::wstring_view::npos || server == 2) return 0;
  const std::size_t share = path.find(L'\\', server + 1);
  if (share == server + 1 || server + 1 == path.size()) return 0;
  return std::min(share, path.size());
}

bool isPlainPart(std::wstring_view part) {
  return !part.empty() && part != L"." && part != L".." &&
         std::none_of(part.begin(), part.end(), [](wchar_t c) {
           return c < L' ' || std::wstring_view(L"\"*/:<>?|").find(c) != std::wstring_view::npos;
         });
}

}  // namespace

std::wstring folderPath(const std::wstring& text, const std::wstring& programFolder,
                        const std::function<std::wstring(const std::wstring&)>& expandEnvironment) {
  std::wstring path(trimmed(text));
  if (path.size() > kMostPath) return {};
  if (expandEnvironment && path.find(L'%') != std::wstring::npos)
    path = trimmed(expandEnvironment(path));
  path = ResolveRelativePath(path, programFolder);
  std::replace(path.begin(), path.end(), L'/', L'\\');
  path = withoutSlashes(path);
  if (path.size() == 2 && hasDrive(path)) path += L'\\';
  return path.size() <= kMostPath && isPlainFullPath(path) ? path : std::wstring();
}

bool isPlainFullPath(std::wstring_view path) {
  const std::size_t volume = volumeLength(path);
  if (volume == 0) return false;
  if (isShare(path)) {
    const std::size_t share = path.find(L'\\', 2);
    if (!isPlainPart(path.substr(2, share - 2)) ||
        !isPlainPart(path.substr(share + 1, volume - share - 1)))
      return false;
  } else if (path.size() < 3) {
    return false;
  }
  std::wstring_view rest = path.substr(volume);
  if (!rest.empty() && rest.front() != L'\\') return false;
  if (rest == L"\\") rest = {};
  while (!rest.empty()) {
    rest.remove_prefix(1);
    const std::size_t end = std::min(rest.find(L'\\'), rest.size());
    if (!isPlainPart(rest.substr(0, end))) return false;
    rest.remove_prefix(end);
  }
  return true;
}

std::wstring pathIn(const std::wstring& folder, const std::wstring& name) {
  return !folder.empty() && folder.back() == L'\\' ? folder + name : folder + L'\\' + name;
}

std::wstring parentOf(std::wstring_view path) {
  path = withoutSlashes(path);
  const std::size_t volume = volumeLength(path);
  const std::size_t slash = path.rfind(L'\\');
  if (slash == std::wstring_view::npos || slash < volume || path.size() == volume) return {};
  // Only the backslash makes a drive a folder.
  return std::wstring(path.substr(0, hasDrive(path) && slash == 2 ? 3 : slash));
}

std::wstring nameOf(std::wstring_view path) {
  path = withoutSlashes(path);
  return std::wstring(path.substr(path.rfind(L'\\') + 1));
}

std::wstring_view volumeOf(std::wstring_view path) { return path.substr(0, volumeLength(path)); }

bool samePath(std::wstring_view a, std::wstring_view b) {
  return sameIgnoringCase(withoutSlashes(a), withoutSlashes(b));
}

bool isInOrBelow(std::wstring_view path, std::wstring_view folder) {
  path = withoutSlashes(path);
  folder = withoutSlashes(folder);
  if (path.size() < folder.size() || folder.empty()) return false;
  return sameIgnoringCase(path.substr(0, folder.size()), folder) &&
         (path.size() == folder.size() || path[folder.size()] == L'\\');
}

std::wstring shownName(std::wstring_view name) {
  std::wstring shown(name);
  for (wchar_t& c : shown) {
    const bool turns = (c >= 0x200E && c <= 0x200F) || (c >= 0x2028 && c <= 0x202E) ||
                       (c >= 0x2066 && c <= 0x2069) || c == 0x061C;
    if (c < L' ' || c == 0x7F || turns) c = static_cast<wchar_t>(0xFFFD);
  }
  return shown;
}

}  // namespace varnowick
