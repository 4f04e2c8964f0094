// Reads link files: the shell's own (.lnk) and web links (.url), from their
// bytes. Everything in them is hostile until checked. It opens nothing, resolves
// nothing and waits for nothing; what a link leads to need not exist.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/text_codec.h"

namespace varnowick {

// Links are a few kilobytes; what is larger is no link.
inline constexpr std::size_t kMaxLinkFile = 1 << 20;

// Texts are as they stand in the file: paths may hold names of environment
// variables between percent signs. None holds a control character.
struct ShellLink {
  std::wstring target;        // full path; empty when the link leads to no file
  std::wstring relativePath;  // of the target, seen from the link's own folder
  std::wstring arguments;
  std::wstring workingFolder;
  std::wstring iconLocation;
  int iconIndex = 0;  // within iconLocation, or the target when that is empty
  std::wstring description;
  bool targetIsFolder = false;
  // Leads to a program that the system installs on first use: only the link
  // itself can be started.
  bool advertised = false;
};

// Nothing when the bytes are no such link or are damaged up to the end of its
// texts. Damage behind them is let pass, as the shell does.
std::optional<ShellLink> parseShellLink(std::string_view bytes, TextCodec& codec);

struct WebLink {
  std::wstring address;  // of any scheme: the caller checks it
  std::wstring iconFile;
  int iconIndex = 0;
};

// Nothing when there is no address in the file.
std::optional<WebLink> parseWebLink(std::string_view bytes, TextCodec& codec);

}  // namespace varnowick
