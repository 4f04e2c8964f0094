// The jump-to box: which shortcuts, containers and files match what is typed, the
// likeliest first, and which characters to highlight. Knows captions, not records or
// windows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/workspace.h"

namespace varnowick {

enum class JumpKind : std::uint8_t { Shortcut, Container, File };

// One of the three: a file is named in its folder container, since a new listing
// numbers its rows anew.
struct JumpTarget {
  ShortcutSlot shortcut{};
  ContainerSlot container{};
  std::wstring file{};
  bool operator==(const JumpTarget&) const = default;
  bool none() const { return shortcut.none() && container.none(); }
  JumpKind kind() const {
    return !shortcut.none() ? JumpKind::Shortcut
           : file.empty()   ? JumpKind::Container
                            : JumpKind::File;
  }
};

struct JumpEntry {
  JumpTarget target;
  std::wstring caption;
  int starts = 0;  // how often it has been started
};

// The better the lower. A query matches regardless of case and accents.
enum class JumpRank : std::uint8_t {
  Prefix,      // the caption begins with it
  WordStarts,  // made of beginnings of words in order: "fox", "ff" for "Fire Fox"
  Contiguous,  // anywhere in one piece
  InOrder      // its characters in order
};

struct JumpMatch {
  JumpKind kind = JumpKind::Shortcut;
  JumpRank rank = JumpRank::InOrder;
  std::size_t entry = 0;  // for the functions of JumpTo
};

class JumpTo {
 public:
  void setEntries(std::vector<JumpEntry> entries);
  // Shortcuts, then containers, then files. Of each the best rank first; then what is
  // started most often, then by caption. Nothing for a query without characters other
  // than blanks.
  std::vector<JumpMatch> find(std::wstring_view query) const;
  // The indices into the match's caption, ascending. The query is the one that
  // gave the match.
  std::vector<std::size_t> highlighted(const JumpMatch& match, std::wstring_view query) const;
  const std::wstring& caption(const JumpMatch& match) const {
    return entries_[match.entry].entry.caption;
  }
  const JumpTarget& target(const JumpMatch& match) const {
    return entries_[match.entry].entry.target;
  }

 private:
  struct Prepared {
    JumpEntry entry;
    std::wstring folded;           // as long as the caption, up to a limit
    std::vector<bool> wordStart;   // of each character of folded
    std::uint64_t characters = 0;  // a bit for each kind of character in folded
  };
  std::vector<Prepared> entries_;  // in the order of their captions
};

}  // namespace varnowick
