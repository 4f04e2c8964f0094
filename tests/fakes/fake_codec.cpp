#include "tests/fakes/fake_codec.h"

#include <cstdint>

namespace varnowick {
namespace {

constexpr wchar_t kReplacement = L'\xFFFD';
constexpr unsigned char kEuroByte = 0x80;
constexpr wchar_t kEuro = L'\x20AC';

void appendUtf8(std::string& out, std::uint32_t c) {
  const auto byte = [&out](std::uint32_t b) { out.push_back(static_cast<char>(b)); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | (c >> 6));
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | (c >> 12));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | (c >> 18));
    byte(0x80 | ((c >> 12) & 0x3F));
    byte(0x80 | ((c >> 6) & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

void appendWide(std::wstring& out, std::uint32_t c) {
  if (sizeof(wchar_t) == 2 && c >= 0x10000) {
    out.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
    out.push_back(static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
  } else {
    out.push_back(static_cast<wchar_t>(c));
  }
}

}  // namespace

std::wstring FakeCodec::fromAnsi(std::string_view bytes) {
  std::wstring text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 || (page_ == CodePage::Western && byte >= 0xA0))
      text.push_back(static_cast<wchar_t>(byte));
    else
      text.push_back(page_ == CodePage::Western && byte == kEuroByte ? kEuro : kReplacement);
  }
  return text;
}

std::optional<std::string> FakeCodec::toAnsi(std::wstring_view text) {
  std::string bytes;
  for (const wchar_t c : text) {
    const auto code = static_cast<std::uint32_t>(c);
    if (code < 0x80 || (page_ == CodePage::Western && code >= 0xA0 && code < 0x100))
      bytes.push_back(static_cast<char>(code));
    else if (page_ == CodePage::Western && c == kEuro)
      bytes.push_back(static_cast<char>(kEuroByte));
    else
      return std::nullopt;
  }
  return bytes;
}

// The bytes are valid, because the file layer has made sure of it.
std::wstring FakeCodec::fromUtf8(std::string_view bytes) {
  std::wstring text;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i++]);
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    std::uint32_t code = more == 0 ? lead : lead & (0x3FU >> more);
    for (int k = 0; k < more && i < bytes.size(); ++k)
      code = (code << 6) | (static_cast<unsigned char>(bytes[i++]) & 0x3FU);
    appendWide(text, code);
  }
  return text;
}

std::string FakeCodec::toUtf8(std::wstring_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto code = static_cast<std::uint32_t>(text[i]);
    if (sizeof(wchar_t) == 2 && code >= 0xD800 && code < 0xDC00 && i + 1 < text.size())
      code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(text[++i]) - 0xDC00);
    appendUtf8(bytes, code);
  }
  return bytes;
}

std::wstring FakeCodec::fromUtf16Le(std::string_view bytes) {
  const auto unitAt = [&](std::size_t i) {
    return i + 1 < bytes.size()
               ? static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]) |
                                            static_cast<unsigned char>(bytes[i + 1]) << 8)
               : 0U;
  };
  std::wstring text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    std::uint32_t code = unitAt(i);
    const std::uint32_t next = unitAt(i + 2);
    if (code >= 0xD800 && code < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
      code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
      i += 2;
    } else if (code >= 0xD800 && code < 0xE000) {
      code = kReplacement;
    }
    appendWide(text, code);
  }
  return text;
}

}  // namespace varnowick
