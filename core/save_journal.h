// The save journal: the whole new state of the data files in one file, written
// before the files themselves are touched. A save that is cut off can then be
// finished at the next start, and a journal that is itself cut off is told from
// a whole one. Knows the form of the journal and nothing of the desktop.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnowick {

inline constexpr std::wstring_view kJournalName = L"\\Varnowick.journal";

// What one save leaves in the data folder.
struct SavedState {
  bool recovery = false;                // the main file is the recovery copy
  std::string mainFile;                 // its bytes
  std::vector<std::string> containers;  // bytes of 0.con, 1.con, ...
  bool operator==(const SavedState&) const = default;
};

// Tells torn bytes from whole ones; no protection against intent.
std::uint64_t checksum(std::string_view bytes);

// Journals are numbered in the order of the saves.
struct Journal {
  std::uint64_t number = 0;
  SavedState state;
};

std::string renderJournal(const SavedState& state, std::uint64_t number);
// Nothing unless the journal is whole and holds only files that a save writes.
std::optional<Journal> parseJournal(std::string_view bytes);

}  // namespace varnowick
