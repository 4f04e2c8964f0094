// What is dropped or pasted becomes shortcuts: files and folders, link files,
// addresses and texts of a browser. Everything from outside ends as a record and
// nothing else; nothing is opened, started or waited for.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/settings.h"
#include "core/workspace.h"
#include "platform/files.h"
#include "platform/text_codec.h"
#include "shortcuts/addresses.h"
#include "shortcuts/selection.h"

namespace varnowick {

struct DroppedPath {
  std::wstring path;
  bool isFolder = false;
  std::uint64_t size = 0;  // bytes; what is too large for a link is not read as one
};

// The forms in which one drop or paste offers itself. Of several the first that
// holds something is taken: paths, the address, the text.
struct Dropped {
  std::vector<DroppedPath> paths = {};
  std::wstring address = {};
  std::wstring title = {};  // of the address; may be empty
  std::wstring text = {};
};

// What reading a drop needs from outside.
struct DropSurroundings {
  Files& files;
  TextCodec& codec;
  // Puts in the values of environment variables; left out, texts stay as they are.
  std::function<std::wstring(const std::wstring&)> expandEnvironment;
};

inline constexpr std::size_t kMaxCaption = 1000;
inline constexpr std::size_t kMaxDroppedPaths = kMaxShortcutsOnMainPanel;
// Characters. A longer text is searched for addresses up to here and becomes no note.
inline constexpr std::size_t kMostDroppedText = kMaxSearchedText;

struct DropRecords {
  // Without parent and position.
  std::vector<clsShortcut> shortcuts;
  // One message for the user when something was not taken; empty for none.
  std::wstring refusal;
  // The text in which there was nothing to link to: it may become a note instead.
  std::wstring note;
};
inline constexpr const wchar_t* kNothingToLinkTo =
    L"There is no web address and no file path in the text.";

// Shortcuts from an address or a text ask before they start; those from the
// user's own files do not.
DropRecords recordsFromDrop(const Dropped& dropped, bool extractURLs,
                            const DropSurroundings& surroundings);

// True when the drop holds something that may become a shortcut: the cheap
// question of a drag that moves over the window.
bool mayBecomeShortcuts(const Dropped& dropped);

// The caption of a file: its name, of links and programs without the extension.
std::wstring captionOfPath(const std::wstring& path, bool isFolder);
// One line without characters that are not seen, of at most kMaxCaption.
std::wstring tidyCaption(std::wstring_view text);

// The next free place for the shortcut on the panel, at or after the given one.
using FindPlace = std::function<Point<Twips>(Panel, const clsShortcut&, Point<Twips> from)>;

struct Added {
  std::vector<ShortcutSlot> slots;
  const wchar_t* refusal = nullptr;  // a message for the user; null for none
};

// Why the panel takes nothing at all, which can be said before anything is dropped:
// a message; null when it takes something.
const wchar_t* dropRefusal(const Workspace& workspace, const Settings& settings, Panel panel);

// Adds the records to the panel, beginning at the point at which they were
// dropped. A full panel takes what fits. While editing is locked nothing is
// added. On a container that shows one tag only, new shortcuts carry that tag.
Added addShortcuts(Workspace& workspace, const Settings& settings,
                   std::vector<clsShortcut> shortcuts, Panel panel, Point<Twips> at,
                   const FindPlace& findPlace);

}  // namespace varnowick
