// Finds the links in the text of a note. Knows no layout and opens nothing; what a
// click leads to goes through the rules of outside links all the same, since a note
// may have been pasted from anywhere.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace varnowick {

// Nobody looks for more, and each takes its place in memory.
inline constexpr std::size_t kMaxNoteLinks = 10'000;

struct NoteLink {
  std::size_t start = 0;  // in the units of the text
  std::size_t length = 0;
  bool operator==(const NoteLink&) const = default;
};

// The http, https, ftp, mailto and www. addresses in their order, and bare ones like
// "example.org/recipe": a host in one of the oldest general domains with a path
// behind it, since "1.2/3", "Mr.Smith" and "notes.txt" are none. Links do not
// overlap. Takes time in proportion to the text, whatever it holds.
std::vector<NoteLink> findNoteLinks(std::wstring_view text);

// The address to open for a link as it stands in the text: with its scheme. It may
// still be refused by the rules of outside links.
std::wstring addressOfNoteLink(std::wstring_view shown);

}  // namespace varnowick
