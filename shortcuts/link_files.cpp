// The layout of .lnk files is the documented Shell Link Binary File Format
// (MS-SHLLINK): a header of 76 bytes, then those of item list, link info, counted
// texts and extra blocks that the header's flags announce, in this order.
#include "shortcuts/link_files.h"

#include <algorithm>
#include <cstdint>

#include "core/line_format.h"
#include "shortcuts/paths.h"

namespace varnowick {
namespace {

constexpr std::size_t kHeaderSize = 0x4C;
constexpr std::string_view kClassId("\x01\x14\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 16);

enum LinkFlag : std::uint32_t {
  kHasItemList = 1U << 0,
  kHasLinkInfo = 1U << 1,
  kHasName = 1U << 2,
  kHasRelativePath = 1U << 3,
  kHasWorkingFolder = 1U << 4,
  kHasArguments = 1U << 5,
  kHasIconLocation = 1U << 6,
  kIsUnicode = 1U << 7,
  kForceNoLinkInfo = 1U << 8,
  kHasDarwinId = 1U << 12,
};
constexpr std::uint32_t kFolderAttribute = 0x10;
constexpr std::uint32_t kEnvironmentBlock = 0xA0000001;
constexpr std::uint32_t kIconEnvironmentBlock = 0xA0000007;
// Of both environment blocks: size, signature, an ANSI and a wide path.
constexpr std::size_t kEnvironmentAnsi = 8;
constexpr std::size_t kEnvironmentWide = kEnvironmentAnsi + 260;
constexpr std::size_t kEnvironmentSize = kEnvironmentWide + 520;

constexpr std::size_t kMaxLinkPath = 4096;
constexpr std::size_t kMaxArguments = 32767;

// The caller has checked that the bytes are there.
std::uint32_t little16(std::string_view b, std::size_t at) {
  return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
         static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8;
}
std::uint32_t little32(std::string_view b, std::size_t at) {
  return little16(b, at) | little16(b, at + 2) << 16;
}

// Takes bytes from the front; none when there are too few.
std::optional<std::string_view> take(std::string_view& rest, std::size_t count) {
  if (count > rest.size()) return std::nullopt;
  const std::string_view taken = rest.substr(0, count);
  rest.remove_prefix(count);
  return taken;
}

// A text that ends at its first zero, or with the bytes.
std::wstring ansiAt(std::string_view bytes, std::size_t at, TextCodec& codec) {
  if (at >= bytes.size()) return {};
  bytes.remove_prefix(at);
  return codec.fromAnsi(bytes.substr(0, bytes.find('\0')));
}
std::wstring wideAt(std::string_view bytes, std::size_t at, TextCodec& codec) {
  if (at >= bytes.size()) return {};
  bytes.remove_prefix(at);
  std::size_t end = 0;
  while (end + 1 < bytes.size() && little16(bytes, end) != 0) end += 2;
  return codec.fromUtf16Le(bytes.substr(0, end));
}

bool isText(const std::wstring& text, std::size_t limit) {
  return text.size() <= limit &&
         std::none_of(text.begin(), text.end(), [](wchar_t c) { return c < L' ' || c == 0x7F; });
}

// The path of a file on a server: the share, and the rest behind it.
std::wstring networkBase(std::string_view info, std::size_t at, TextCodec& codec) {
  if (at >= info.size() || info.size() - at < 0x14) return {};
  std::string_view link = info.substr(at);
  link = link.substr(0, little32(link, 0));
  if (link.size() < 0x14) return {};
  const std::uint32_t name = little32(link, 8);
  if (name > 0x14 && link.size() >= 0x1C) return wideAt(link, little32(link, 0x14), codec);
  return name < 0x14 ? std::wstring{} : ansiAt(link, name, codec);
}

std::wstring pathOf(std::string_view info, TextCodec& codec) {
  if (info.size() < 0x1C) return {};
  const std::uint32_t headerSize = little32(info, 4);
  const std::uint32_t flags = little32(info, 8);
  const bool wide = headerSize >= 0x24 && info.size() >= 0x24;
  const auto textAt = [&](std::size_t ansiOffset, std::size_t wideOffset) -> std::wstring {
    if (wide && little32(info, wideOffset) != 0)
      return wideAt(info, little32(info, wideOffset), codec);
    const std::uint32_t at = little32(info, ansiOffset);
    return at < 0x1C ? std::wstring{} : ansiAt(info, at, codec);
  };
  const std::wstring rest = textAt(0x18, 0x20);
  if ((flags & 1) != 0) {
    const std::wstring local = textAt(0x10, 0x1C);
    return local.empty() ? local : local + rest;
  }
  if ((flags & 2) == 0) return {};
  const std::wstring share = networkBase(info, little32(info, 0x14), codec);
  if (share.empty() || rest.empty()) return share;
  return share.back() == L'\\' ? share + rest : share + L"\\" + rest;
}

std::wstring environmentPath(std::string_view block, TextCodec& codec) {
  if (block.size() < kEnvironmentSize) return {};
  std::wstring path = wideAt(block.substr(0, kEnvironmentSize), kEnvironmentWide, codec);
  return path.empty() ? ansiAt(block.substr(0, kEnvironmentWide), kEnvironmentAnsi, codec) : path;
}

// What stands behind the texts only fills gaps, so that damage there is let pass.
void readExtraBlocks(std::string_view rest, ShellLink& link, TextCodec& codec) {
  while (rest.size() >= 8) {
    const auto block = take(rest, little32(rest, 0));
    if (!block || block->size() < 8) return;
    const std::uint32_t signature = little32(*block, 4);
    if (signature == kEnvironmentBlock && link.target.empty())
      link.target = environmentPath(*block, codec);
    if (signature == kIconEnvironmentBlock && link.iconLocation.empty())
      link.iconLocation = environmentPath(*block, codec);
  }
}

bool readTexts(std::string_view& rest, std::uint32_t flags, ShellLink& link, TextCodec& codec) {
  const struct {
    std::uint32_t flag;
    std::wstring ShellLink::*field;
  } texts[] = {{kHasName, &ShellLink::description},
               {kHasRelativePath, &ShellLink::relativePath},
               {kHasWorkingFolder, &ShellLink::workingFolder},
               {kHasArguments, &ShellLink::arguments},
               {kHasIconLocation, &ShellLink::iconLocation}};
  for (const auto& [flag, field] : texts) {
    if ((flags & flag) == 0) continue;
    const auto count = take(rest, 2);
    if (!count) return false;
    const bool wide = (flags & kIsUnicode) != 0;
    const auto bytes = take(rest, std::size_t{little16(*count, 0)} * (wide ? 2 : 1));
    if (!bytes) return false;
    link.*field = wide ? wideAt(*bytes, 0, codec) : ansiAt(*bytes, 0, codec);
  }
  return true;
}

bool isHealthy(const ShellLink& link) {
  return isText(link.target, kMaxLinkPath) && isText(link.relativePath, kMaxLinkPath) &&
         isText(link.arguments, kMaxArguments) && isText(link.workingFolder, kMaxLinkPath) &&
         isText(link.iconLocation, kMaxLinkPath);
}

}  // namespace

std::optional<ShellLink> parseShellLink(std::string_view bytes, TextCodec& codec) {
  if (bytes.size() > kMaxLinkFile) return std::nullopt;
  std::string_view rest = bytes;
  const auto header = take(rest, kHeaderSize);
  if (!header || little32(*header, 0) != kHeaderSize || header->substr(4, 16) != kClassId)
    return std::nullopt;
  const std::uint32_t flags = little32(*header, 0x14);

  ShellLink link;
  link.targetIsFolder = (little32(*header, 0x18) & kFolderAttribute) != 0;
  link.advertised = (flags & kHasDarwinId) != 0;
  link.iconIndex = static_cast<std::int32_t>(little32(*header, 0x38));

  if ((flags & kHasItemList) != 0) {
    const auto size = take(rest, 2);
    if (!size || !take(rest, little16(*size, 0))) return std::nullopt;
  }
  // The block is there whenever the flag says so, even if it is to be ignored.
  if ((flags & kHasLinkInfo) != 0) {
    const auto info = rest.size() < 4 ? std::nullopt : take(rest, little32(rest, 0));
    if (!info || info->size() < 4) return std::nullopt;
    if ((flags & kForceNoLinkInfo) == 0) link.target = pathOf(*info, codec);
  }
  if (!readTexts(rest, flags, link, codec)) return std::nullopt;
  readExtraBlocks(rest, link, codec);

  // A description of several lines is a description still.
  std::replace_if(
      link.description.begin(), link.description.end(), [](wchar_t c) { return c < L' '; }, L' ');
  if (!isHealthy(link)) return std::nullopt;
  return link;
}

std::optional<WebLink> parseWebLink(std::string_view bytes, TextCodec& codec) {
  if (bytes.size() > kMaxLinkFile) return std::nullopt;
  std::string converted;
  if (bytes.starts_with("\xFF\xFE")) {
    converted = codec.toUtf8(codec.fromUtf16Le(bytes.substr(2)));
    bytes = converted;
  }
  WebLink link;
  LineReader lines(bytes, codec);
  bool inSection = false;
  for (std::string_view line; lines.next(line);) {
    line = trimBlanks(line);
    std::wstring text;
    if (line.size() > kMaxLinkPath || !lines.decode(line, text)) continue;
    if (text.starts_with(L"[")) {
      inSection = sameIgnoringCase(text, L"[InternetShortcut]");
      continue;
    }
    const std::size_t equals = text.find(L'=');
    if (!inSection || equals == std::wstring::npos) continue;
    const std::wstring_view key = trimBlanks(std::wstring_view(text).substr(0, equals));
    std::wstring value(trimBlanks(std::wstring_view(text).substr(equals + 1)));
    if (!isText(value, kMaxLinkPath)) continue;
    // As in all files of this kind, the first of equal keys counts.
    if (sameIgnoringCase(key, L"URL") && link.address.empty()) {
      link.address = std::move(value);
    } else if (sameIgnoringCase(key, L"IconFile") && link.iconFile.empty()) {
      link.iconFile = std::move(value);
    } else if (sameIgnoringCase(key, L"IconIndex")) {
      const std::string_view digits = line.substr(line.find('=') + 1);
      if (const auto index = parseInteger(trimBlanks(digits))) link.iconIndex = *index;
    }
  }
  if (link.address.empty()) return std::nullopt;
  return link;
}

}  // namespace varnowick
