#include "platform/win32/win32_text_codec.h"

#include <windows.h>

namespace varnowick {

namespace {

constexpr wchar_t kReplacement = 0xFFFD;
// The functions of the system count in int; longer texts are no texts.
constexpr std::size_t kMaxLength = 0x7FFFFFF0;

bool isHighSurrogate(wchar_t c) { return c >= 0xD800 && c <= 0xDBFF; }
bool isLowSurrogate(wchar_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

// One character's bytes; nothing when the code page does not define them.
std::wstring fromAnsiStrictly(unsigned codePage, std::string_view bytes) {
  const int length = static_cast<int>(bytes.size());
  const int count =
      MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), length, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(count > 0 ? count : 0), L'\0');
  if (count > 0) {
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), length, text.data(), count);
  }
  return text;
}

// The length of the UTF-8 sequence at the start, 0 when there is no valid one.
std::size_t sequenceLength(std::string_view bytes) {
  const auto at = [&](std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U;
  };
  const unsigned lead = at(0);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  for (std::size_t i = 1; i < length; ++i) {
    if ((at(i) & 0xC0) != 0x80) return 0;
  }
  const unsigned second = at(1);
  // Overlong forms, surrogates and what lies beyond the last plane.
  if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
      (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F)) {
    return 0;
  }
  return length;
}

void appendUtf8(std::string& out, char32_t c) {
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | (c >> 18));
    put(0x80 | ((c >> 12) & 0x3F));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

}  // namespace

std::wstring Win32TextCodec::fromAnsi(std::string_view bytes) {
  if (bytes.empty() || bytes.size() > kMaxLength) return {};
  const unsigned page = codePage_ == CP_ACP ? GetACP() : codePage_;
  if (page == CP_UTF8) return fromUtf8(bytes);
  std::wstring whole = fromAnsiStrictly(page, bytes);
  if (!whole.empty()) return whole;

  // Something in it is undefined: find out what, character by character.
  std::wstring text;
  for (std::size_t i = 0; i < bytes.size();) {
    const bool lead = IsDBCSLeadByteEx(page, static_cast<BYTE>(bytes[i])) != 0;
    std::size_t length = lead && i + 1 < bytes.size() ? 2 : 1;
    std::wstring one = fromAnsiStrictly(page, bytes.substr(i, length));
    if (one.empty()) {
      one = kReplacement;
      length = 1;
    }
    text += one;
    i += length;
  }
  return text;
}

std::optional<std::string> Win32TextCodec::toAnsi(std::wstring_view text) {
  if (text.empty()) return std::string();
  if (text.size() > kMaxLength / 4) return std::nullopt;
  const unsigned page = codePage_ == CP_ACP ? GetACP() : codePage_;
  std::string bytes;
  if (page == CP_UTF8) {
    bytes = toUtf8(text);
  } else {
    const int length = static_cast<int>(text.size());
    const int count = WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, text.data(), length, nullptr,
                                          0, nullptr, nullptr);
    if (count <= 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(count));
    BOOL lossy = FALSE;
    WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes.data(), count,
                        nullptr, &lossy);
    if (lossy) return std::nullopt;
  }
  // Only reading it back proves it: some code pages map two characters to one byte.
  if (fromAnsi(bytes) != text) return std::nullopt;
  return bytes;
}

std::wstring Win32TextCodec::fromUtf8(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const std::size_t length = sequenceLength(bytes);
    if (length == 0) {
      text.push_back(kReplacement);
      bytes.remove_prefix(1);
      continue;
    }
    const auto lead = static_cast<unsigned char>(bytes[0]);
    char32_t c = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
      c = (c << 6) | (static_cast<unsigned char>(bytes[i]) & 0x3FU);
    }
    if (c >= 0x10000) {
      text.push_back(static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10)));
      c = 0xDC00 + ((c - 0x10000) & 0x3FF);
    }
    text.push_back(static_cast<wchar_t>(c));
    bytes.remove_prefix(length);
  }
  return text;
}

std::string Win32TextCodec::toUtf8(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t c = text[i];
    if (isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
      c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00U);
    } else if (isHighSurrogate(text[i]) || isLowSurrogate(text[i])) {
      c = kReplacement;
    }
    appendUtf8(bytes, c);
  }
  return bytes;
}

std::wstring Win32TextCodec::fromUtf16Le(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text.push_back(static_cast<wchar_t>(static_cast<unsigned char>(bytes[i]) |
                                        static_cast<unsigned char>(bytes[i + 1]) << 8));
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair =
        isHighSurrogate(text[i]) && i + 1 < text.size() && isLowSurrogate(text[i + 1]);
    if (pair) {
      ++i;
    } else if (isHighSurrogate(text[i]) || isLowSurrogate(text[i])) {
      text[i] = kReplacement;
    }
  }
  return text;
}

}  // namespace varnowick
