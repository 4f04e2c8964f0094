#include "shortcuts/dropped.h"

#include <algorithm>
#include <array>

#include "shortcuts/addresses.h"
#include "shortcuts/link_files.h"
#include "shortcuts/outside_links.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::size_t kMaxPath = 4096;

std::wstring nameOfPath(std::wstring_view path) {
  while (path.size() > 1 && path.back() == L'\\' && !path.ends_with(L":\\")) path.remove_suffix(1);
  if (path.ends_with(L":\\")) return std::wstring(path);
  return std::wstring(path.substr(path.rfind(L'\\') + 1));
}

bool hasExtension(std::wstring_view path, std::wstring_view extension) {
  return path.size() > extension.size() &&
         sameIgnoringCase(path.substr(path.size() - extension.size()), extension);
}

bool isHealthyPath(std::wstring_view path) {
  return !path.empty() && path.size() <= kMaxPath &&
         std::none_of(path.begin(), path.end(), [](wchar_t c) { return c < L' ' || c == L'"'; });
}

// Characters that are not seen, or turn the text around.
bool isUnseen(wchar_t c) {
  return (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}
bool isBlank(wchar_t c) {
  return c <= L' ' || (c >= 0x7F && c <= 0xA0) || c == 0x2028 || c == 0x2029;
}

class DropReader {
 public:
  DropReader(bool extractURLs, const DropSurroundings& surroundings)
      : extractURLs_(extractURLs), surroundings_(surroundings) {}

  void paths(const std::vector<DroppedPath>& dropped) {
    for (const DroppedPath& path : dropped) {
      if (records_.shortcuts.size() == kMaxDroppedPaths) return refuse(kMainPanelFullMessage);
      if (isHealthyPath(path.path)) records_.shortcuts.push_back(fromPath(path));
    }
  }

  void address(const std::wstring& address, const std::wstring& title) {
    if (const auto whole = wholeAddress(address)) return fromOutside(*whole, title);
    refuseAddress(address);
  }

  void text(const std::wstring& text) {
    std::vector<ListedItem> items = listedItems(text);
    if (items.size() > kMaxAddresses) {
      items.resize(kMaxAddresses);
      refuse(L"The list is too long. Only the first " + std::to_wstring(kMaxAddresses) +
             L" were taken.");
    }
    for (const ListedItem& item : items) {
      if (!item.isPath) {
        fromOutside(item.text, {});
        continue;
      }
      clsShortcut shortcut;
      shortcut.Path = item.text;
      shortcut.FullCaption = captionOfPath(item.text, false);
      shortcut.Confirm = true;
      records_.shortcuts.push_back(std::move(shortcut));
    }
    if (records_.shortcuts.empty() && extractURLs_)
      for (const std::wstring& found : extractUrls(text)) fromOutside(found, {});
    if (!records_.shortcuts.empty()) return;
    if (looksLikeAddress(text)) return refuseAddress(text);
    refuse(kNothingToLinkTo);
    // Half of a note would pass for the whole.
    if (text.size() <= kMostDroppedText) records_.note = noteOf(text);
  }

  DropRecords take() { return std::move(records_); }

 private:
  // Its lines joined by CR LF. Empty when nothing in it can be seen.
  static std::wstring noteOf(const std::wstring& text) {
    std::wstring note;
    note.reserve(text.size());
    bool seen = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == L'\n' && (i == 0 || text[i - 1] != L'\r')) note += L'\r';
      note += text[i];
      if (text[i] == L'\r' && (i + 1 == text.size() || text[i + 1] != L'\n')) note += L'\n';
      seen = seen || !(isBlank(text[i]) || isUnseen(text[i]));
    }
    return seen ? note : std::wstring();
  }

  void refuse(std::wstring message) {
    if (records_.refusal.empty()) records_.refusal = std::move(message);
  }
  void refuseAddress(const std::wstring& address) {
    refuse(L"Only web and mail addresses can become shortcuts:\r\n\r\n" +
           outsideLinkForDisplay(address));
  }

  void fromOutside(const std::wstring& address, const std::wstring& title) {
    clsShortcut shortcut = webShortcut(address);
    if (std::wstring caption = tidyCaption(title); !caption.empty())
      shortcut.FullCaption = std::move(caption);
    shortcut.Confirm = true;
    records_.shortcuts.push_back(std::move(shortcut));
  }

  static clsShortcut webShortcut(const std::wstring& address) {
    clsShortcut shortcut;
    shortcut.ShortcutType = static_cast<int>(ShortcutKindCode::WebAddress);
    shortcut.Path = address;
    shortcut.FullCaption = tidyCaption(hostOf(address));
    return shortcut;
  }

  clsShortcut fromPath(const DroppedPath& dropped) {
    clsShortcut shortcut;
    shortcut.Path = dropped.path;
    shortcut.FullCaption = captionOfPath(dropped.path, dropped.isFolder);
    if (dropped.isFolder || dropped.size > kMaxLinkFile) return shortcut;
    // A link that cannot be read, or that only the shell can follow, stays a
    // shortcut to the link file itself.
    if (hasExtension(dropped.path, L".lnk")) followShellLink(shortcut);
    if (hasExtension(dropped.path, L".url")) followWebLink(shortcut);
    return shortcut;
  }

  std::wstring expanded(const std::wstring& text) const {
    const bool variable = text.find(L'%') != std::wstring::npos;
    if (!variable || !surroundings_.expandEnvironment) return text;
    return ExpandAsWritten(text, surroundings_.expandEnvironment, [this](const std::wstring& path) {
      return surroundings_.files.exists(path);
    });
  }

  void followShellLink(clsShortcut& shortcut) {
    const FileBytes file = surroundings_.files.read(shortcut.Path);
    const auto link = file.status ? parseShellLink(file.bytes, surroundings_.codec) : std::nullopt;
    if (!link || link->advertised) return;
    std::wstring target = expanded(link->target);
    if (target.empty() || !isHealthyPath(target)) return;
    shortcut.Path = std::move(target);
    shortcut.Parameters = link->arguments;
    // An icon on a server would already sign the user in there. It is a file, so that only the
    // first of several can be chosen. The target's own icon needs no mention.
    const std::wstring icon = expanded(link->iconLocation);
    if (link->iconIndex == 0 && isHealthyPath(icon) && !isServerPath(icon) &&
        !sameIgnoringCase(icon, shortcut.Path))
      shortcut.Icon = icon;
    if (shortcut.FullCaption.empty()) shortcut.FullCaption = tidyCaption(link->description);
  }

  void followWebLink(clsShortcut& shortcut) {
    const FileBytes file = surroundings_.files.read(shortcut.Path);
    const auto link = file.status ? parseWebLink(file.bytes, surroundings_.codec) : std::nullopt;
    const auto address = link ? wholeAddress(link->address) : std::nullopt;
    if (!address) return;
    std::wstring caption = std::move(shortcut.FullCaption);
    shortcut = webShortcut(*address);
    if (!caption.empty()) shortcut.FullCaption = std::move(caption);
    const auto icon = wholePath(link->iconFile);
    if (link->iconIndex == 0 && icon && !isServerPath(*icon)) shortcut.Icon = link->iconFile;
  }

  bool extractURLs_;
  const DropSurroundings& surroundings_;
  DropRecords records_;
};

}  // namespace

std::wstring tidyCaption(std::wstring_view text) {
  std::wstring caption;
  for (const wchar_t c : text.substr(0, kMaxSearchedText)) {
    if (isUnseen(c)) continue;
    if (!isBlank(c))
      caption += c;
    else if (!caption.empty() && caption.back() != L' ')
      caption += L' ';
    if (caption.size() > kMaxCaption) break;
  }
  if (caption.size() > kMaxCaption) {
    // Between words, so that no character is cut in half.
    constexpr std::wstring_view kMore = L"...";
    std::size_t end = caption.rfind(L' ', kMaxCaption - kMore.size());
    if (end == std::wstring::npos || end < kMaxCaption / 2) end = kMaxCaption - kMore.size();
    caption = caption.substr(0, end) + std::wstring(kMore);
  }
  while (!caption.empty() && caption.back() == L' ') caption.pop_back();
  return caption;
}

std::wstring captionOfPath(const std::wstring& path, bool isFolder) {
  std::wstring name = nameOfPath(path);
  if (!isFolder) {
    constexpr std::array<std::wstring_view, 3> kDropped{L".lnk", L".url", L".exe"};
    for (const std::wstring_view extension : kDropped) {
      if (!hasExtension(name, extension)) continue;
      name.resize(name.size() - extension.size());
      break;
    }
  }
  return tidyCaption(name);
}

bool mayBecomeShortcuts(const Dropped& dropped) {
  return !dropped.paths.empty() || !dropped.address.empty() || !dropped.text.empty();
}

DropRecords recordsFromDrop(const Dropped& dropped, bool extractURLs,
                            const DropSurroundings& surroundings) {
  DropReader reader(extractURLs, surroundings);
  if (!dropped.paths.empty())
    reader.paths(dropped.paths);
  else if (!dropped.address.empty())
    reader.address(dropped.address, dropped.title);
  else if (!dropped.text.empty())
    reader.text(dropped.text);
  return reader.take();
}

const wchar_t* dropRefusal(const Workspace& workspace, const Settings& settings, Panel panel) {
  if (settings.locked) return kLockedMessage;
  const clsContainer* container = workspace.containers.find(panel.container);
  if (container != nullptr && !takesShortcuts(*container)) return kListContainerMessage;
  const std::size_t there = workspace.shortcutsOn(panel);
  if (container != nullptr)
    return there < kMaxShortcutsInContainer ? nullptr : kContainerFullMessage;
  return there < kMaxShortcutsOnMainPanel ? nullptr : kMainPanelFullMessage;
}

Added addShortcuts(Workspace& workspace, const Settings& settings,
                   std::vector<clsShortcut> shortcuts, Panel panel, Point<Twips> at,
                   const FindPlace& findPlace) {
  Added added;
  const clsContainer* container = workspace.containers.find(panel.container);
  if (container == nullptr) panel = picBack;
  added.refusal = dropRefusal(workspace, settings, panel);
  if (added.refusal != nullptr) return added;
  for (clsShortcut& shortcut : shortcuts) {
    shortcut.parent = panel;
    shortcut.position = findPlace(panel, shortcut, at);
    // Otherwise it would be gone from sight at once.
    if (container != nullptr && shortcut.Tags.empty()) shortcut.Tags = container->ShowingTag;
    const ShortcutSlot slot = workspace.addShortcut(std::move(shortcut), added.refusal);
    if (slot.none()) break;
    added.slots.push_back(slot);
  }
  return added;
}

}  // namespace varnowick
