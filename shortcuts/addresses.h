// Finds what can become a shortcut in a text from outside: web addresses, and a
// text that is the path of a file. Opens nothing and looks at no disk.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnowick {

// The part of a text that is looked at, and the addresses taken from it.
inline constexpr std::size_t kMaxSearchedText = 5'000'000;
inline constexpr std::size_t kMaxAddresses = 100;

// The http, https, ftp, mailto and www. addresses of a text in their order, each
// once and at most `limit`; all are safe outside links. The marks of a sentence
// around an address are no part of it.
std::vector<std::wstring> extractUrls(std::wstring_view text, std::size_t limit = kMaxAddresses);

// One of them where it stands in the text: www. has no scheme there.
struct FoundAddress {
  std::size_t start = 0;
  std::size_t length = 0;
  std::wstring address;
};
// All of them, with those that occur more than once. Takes time in proportion to
// the text, whatever it holds.
std::vector<FoundAddress> findUrls(std::wstring_view text, std::size_t limit);
// Where an address ends that begins at `from`, before the marks of the sentence.
std::size_t addressEnd(std::wstring_view text, std::size_t from);

// The address that the whole text is, blanks at its ends apart; www. gets its
// scheme. Nothing when it is none or no safe one.
std::optional<std::wstring> wholeAddress(std::wstring_view text);

// True when the text begins with a scheme, whatever scheme that is, and not with
// the word before a colon of a sentence.
bool looksLikeAddress(std::wstring_view text);

// The path on a drive or a server that the whole text is, quotes and blanks at its
// ends apart ("@:\x" is one too). A path of a device is none.
std::optional<std::wstring> wholePath(std::wstring_view text);
// A path on another machine: looking at it takes as long as the network likes, and signs
// the user in there.
bool isServerPath(std::wstring_view path);

// What a text lists that consists of paths and addresses: one a line, or several on a
// line with blanks between them and those that hold blanks in quotes. Nothing when
// there is anything else in it. Of a list longer than kMaxAddresses one more than that.
struct ListedItem {
  std::wstring text;
  bool isPath = false;
};
std::vector<ListedItem> listedItems(std::wstring_view text);

// The host without "www." and port; of a mail address the address.
std::wstring hostOf(std::wstring_view address);

}  // namespace varnowick
