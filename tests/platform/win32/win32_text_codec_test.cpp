#include "platform/win32/win32_text_codec.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(Win32TextCodec, AnsiIsExactOrNothing) {
  const struct {
    unsigned codePage;
    std::wstring text;
    const char* bytes;  // nullptr: the code page cannot hold it
  } rows[] = {
      {1252, L"plain", "plain"},
      {1252, L"\u20ac \u00e9 \u2014", "\x80 \xE9 \x97"},
      {1252, L"\u0101", nullptr},      // best fit would give "a"
      {1252, L"\uff21", nullptr},      // full-width A, the same
      {1252, L"\u221e", nullptr},      // infinity, best fit "8"
      {1252, L"?", "?"},               // a question mark is no loss
      {1252, L"\U0001F600", nullptr},  // outside the first plane
      {1252, {0xD83D}, nullptr},       // half a character
      {1251, L"\u041f\u0440", "\xCF\xF0"},
      {932, L"\u65e5\u672c", "\x93\xFA\x96\x7B"},
      {932, L"\u00e9", nullptr},
      {65001, L"\u00e9\u65e5", "\xC3\xA9\xE6\x97\xA5"},
      {65001, {0xD83D}, nullptr},
  };
  for (const auto& row : rows) {
    Win32TextCodec codec(row.codePage);
    const std::optional<std::string> bytes = codec.toAnsi(row.text);
    ASSERT_EQ(bytes.has_value(), row.bytes != nullptr) << row.codePage << ' ' << row.text.size();
    if (!bytes) continue;
    EXPECT_EQ(*bytes, row.bytes);
    EXPECT_EQ(codec.fromAnsi(*bytes), row.text);
  }
}

TEST(Win32TextCodec, EveryByteOfTheSystemsCodePageComesBack) {
  for (const unsigned codePage : {0U, 1252U, 1250U, 1251U}) {
    Win32TextCodec codec(codePage);
    for (int byte = 1; byte < 256; ++byte) {
      const std::string bytes(1, static_cast<char>(byte));
      const std::wstring text = codec.fromAnsi(bytes);
      ASSERT_EQ(text.size(), 1U) << codePage << ": " << byte;
      if (text == L"\ufffd") continue;  // not defined
      EXPECT_EQ(codec.toAnsi(text), bytes) << codePage << ": " << byte;
    }
  }
}

TEST(Win32TextCodec, UndefinedBytesHurtOnlyThemselves) {
  Win32TextCodec japanese(932);
  // A lead byte at the end, and one with an impossible second byte.
  EXPECT_EQ(japanese.fromAnsi("a\x93"), L"a\ufffd");
  const std::wstring broken = japanese.fromAnsi("\x81\x20z\x93\xFA");
  EXPECT_EQ(broken.substr(broken.size() - 2), L"z\u65e5");
}

TEST(Win32TextCodec, Utf8RoundTripsAndMarksWhatIsInvalid) {
  Win32TextCodec codec;
  const std::wstring text = L"a\u00e9\u20ac\ufeff\uffff\U0001F600\U0010FFFF";
  EXPECT_EQ(codec.fromUtf8(codec.toUtf8(text)), text);
  EXPECT_EQ(codec.toUtf8(L"\U0001F600"), "\xF0\x9F\x98\x80");

  const struct {
    std::string_view bytes;
    std::wstring_view text;
  } rows[] = {
      {"a\x80z", L"a\ufffdz"},                            // a stray continuation
      {"\xC0\xAF", L"\ufffd\ufffd"},                      // overlong
      {"\xE0\x80\xAF", L"\ufffd\ufffd\ufffd"},            // overlong
      {"\xED\xA0\x80", L"\ufffd\ufffd\ufffd"},            // a surrogate
      {"\xF4\x90\x80\x80", L"\ufffd\ufffd\ufffd\ufffd"},  // beyond the last plane
      {"\xE2\x82", L"\ufffd\ufffd"},                      // cut off
      {"\xE2\x82z", L"\ufffd\ufffdz"},
      {"\xFF\xFE", L"\ufffd\ufffd"},
  };
  for (const auto& row : rows) EXPECT_EQ(codec.fromUtf8(row.bytes), row.text);

  // Half a character is replaced alone; what stands beside it stays.
  EXPECT_EQ(codec.toUtf8(std::wstring{0xD83D, L'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(codec.toUtf8(std::wstring{0xDE00, 0xD83D}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Win32TextCodec, ReadsUtf16Bytes) {
  Win32TextCodec codec;
  using namespace std::literals;
  EXPECT_EQ(codec.fromUtf16Le("a\0\xAC\x20\x3D\xD8\x00\xDE"sv), L"a\u20ac\U0001F600");
  EXPECT_EQ(codec.fromUtf16Le("\x3D\xD8z\0\x00\xDE\x00\xDE!"sv), L"\ufffdz\ufffd\ufffd");
}

}  // namespace
}  // namespace varnowick
