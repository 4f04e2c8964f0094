// Builds .lnk files byte by byte, healthy or not.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace varnowick {

inline std::string little(std::uint32_t value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
  return out;
}

inline std::string longs(std::initializer_list<std::size_t> values) {
  std::string out;
  for (const std::size_t value : values) out += little(static_cast<std::uint32_t>(value), 4);
  return out;
}

inline std::string wideBytes(std::u16string_view text) {
  std::string out;
  for (const char16_t c : text) out += little(c, 2);
  return out;
}

struct ShellLinkBytes {
  static constexpr std::uint32_t kItemList = 1, kInfo = 2, kName = 4, kRelative = 8, kFolder = 0x10,
                                 kArguments = 0x20, kIcon = 0x40, kUnicode = 0x80;
  std::uint32_t flags = 0;
  std::uint32_t attributes = 0x20;
  std::uint32_t iconIndex = 0;
  std::string rest;  // everything behind the header

  std::string bytes() const {
    return longs({0x4C}) + std::string("\x01\x14\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46", 16) +
           longs({flags, attributes, 0, 0, 0, 0, 0, 0, 0, iconIndex, 0, 0, 0, 0}) + rest;
  }

  // With a local path in the ANSI code page, cut into base and rest.
  static std::string localInfo(const std::string& base, const std::string& suffix) {
    const std::size_t suffixAt = 0x1C + base.size() + 1;
    return longs({suffixAt + suffix.size() + 1, 0x1C, 1, 0, 0x1C, 0, suffixAt}) + base + '\0' +
           suffix + '\0';
  }
  // With wide texts beside ANSI ones that lost characters.
  static std::string wideInfo(std::u16string_view base) {
    const std::string wide = wideBytes(base) + std::string(2, '\0');
    const std::size_t wideAt = 0x24 + 2;
    const std::size_t size = wideAt + wide.size() + 2;
    return longs({size, 0x24, 1, 0, 0x24, 0, 0x25, wideAt, size - 2}) + std::string(2, '\0') +
           wide + std::string(2, '\0');
  }
  static std::string networkInfo(const std::string& share, const std::string& suffix) {
    const std::string name = share + '\0';
    const std::size_t linkSize = 0x14 + name.size();
    const std::size_t suffixAt = 0x1C + linkSize;
    return longs({suffixAt + suffix.size() + 1, 0x1C, 2, 0, 0, 0x1C, suffixAt}) +
           longs({linkSize, 0, 0x14, 0, 0}) + name + suffix + '\0';
  }
  static std::string wideText(std::u16string_view text) {
    return little(static_cast<std::uint32_t>(text.size()), 2) + wideBytes(text);
  }
  static std::string ansiText(const std::string& text) {
    return little(static_cast<std::uint32_t>(text.size()), 2) + text;
  }
  static std::string environmentBlock(std::uint32_t signature, std::u16string_view path) {
    std::string block =
        little(0x314, 4) + little(signature, 4) + std::string(260, '\0') + wideBytes(path);
    block.resize(0x314);
    return block;
  }
};

}  // namespace varnowick
