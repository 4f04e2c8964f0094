#include "core/line_format.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "tests/fakes/fake_codec.h"

namespace varnowick {
namespace {

using Lines = std::vector<std::string>;

Lines linesOf(std::string_view bytes) {
  FakeCodec codec;
  LineReader reader(bytes, codec);
  Lines lines;
  for (std::string_view line; reader.next(line);) lines.emplace_back(line);
  EXPECT_EQ(reader.lineNumber(), lines.size());
  return lines;
}

TEST(LineReader, EndsLinesInEveryStyle) {
  using namespace std::string_literals;
  EXPECT_EQ(linesOf(""), Lines{});
  EXPECT_EQ(linesOf("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
  EXPECT_EQ(linesOf("\r\n\n\r\r\n"), (Lines{"", "", "", ""}));
  EXPECT_EQ(linesOf("seven77\r\neight888\nlonger than a word\r"),
            (Lines{"seven77", "eight888", "longer than a word"}));
  EXPECT_EQ(linesOf("a\0b\r\n\0"s), (Lines{"a\0b"s, "\0"s}));
  EXPECT_EQ(linesOf("\xEF\xBB\xBF"
                    "106\r\n"),
            Lines{"106"});
  EXPECT_EQ(linesOf(std::string(50'000'000, '\x01') + "\n").size(), 1U);
}

TEST(LineReader, TakesAnExpectedLineOnlyWhole) {
  FakeCodec codec;
  LineReader reader("[X]\r\n[XY]\r\n[X]\n[X]", codec);
  EXPECT_FALSE(reader.nextIs("[Y]"));
  EXPECT_TRUE(reader.nextIs("[X]"));
  EXPECT_FALSE(reader.nextIs("[X]"));
  EXPECT_EQ(reader.lineNumber(), 1U);
}

TEST(Values, Flags) {
  for (const char* yes : {"1", "-1", "2", "0.5", "True", "TRUE", "true"})
    EXPECT_EQ(parseFlag(yes), true) << yes;
  for (const char* no : {"0", "-0", "0.0", "False", "fALSE"}) EXPECT_EQ(parseFlag(no), false) << no;
  for (const char* bad : {"", "yes", "1x", "nan", "inf", "--1"})
    EXPECT_EQ(parseFlag(bad), std::nullopt) << bad;
}

TEST(Values, WholeNumbers) {
  using Int = std::numeric_limits<int>;
  const std::pair<const char*, int> numbers[] = {{"12648447", 12648447},
                                                 {"-2147483648", Int::min()},
                                                 {"2147483647", Int::max()},
                                                 {"+7", 7},
                                                 {"0.5", 0},
                                                 {"1.5", 2},
                                                 {"2.5", 2},
                                                 {"-2.5", -2},
                                                 {"-1.5", -2},
                                                 {"-0.5", 0},
                                                 {"2.500001", 3},
                                                 {"-2.7", -3},
                                                 {".75", 1},
                                                 {"1E2", 100},
                                                 {"999999999", 999999999},
                                                 {"-1000000000", -1000000000},
                                                 {"2147483647.4", Int::max()}};
  for (const auto& [text, number] : numbers) EXPECT_EQ(parseInteger(text), number) << text;
  for (const char* bad : {"2147483648", "-2147483649", "1e999", "12abc", "1,5", "- 5", "-", ".", "",
                          ":", "/", "1:", "1/"})
    EXPECT_EQ(parseInteger(bad), std::nullopt) << bad;
  EXPECT_EQ(parseInteger(std::string(63, '0') + "7"), 7);
  EXPECT_EQ(parseInteger(std::string(64, '0') + "7"), std::nullopt) << "costs no time";
}

TEST(Values, PositionsStayWithinBounds) {
  EXPECT_EQ(parseSingle("9999999"), 9999999.0F);
  EXPECT_EQ(parseSingle("-9999999"), -9999999.0F);
  EXPECT_EQ(parseSingle("0.1"), 0.1F);
  for (const char* bad : {"10000000", "-1e8", "nan", "inf", "-inf", "infinity", "0x10"})
    EXPECT_EQ(parseSingle(bad), std::nullopt) << bad;
}

std::string written(void (*write)(LineWriter&), FakeCodec::CodePage page) {
  FakeCodec codec(page);
  return renderFile(codec, 0, write);
}
std::string written(void (*write)(LineWriter&)) {
  return written(write, FakeCodec::CodePage::Western);
}

TEST(LineWriter, PutsABlankWhereThePlusWouldStandAndKeepsOutWhatIsNoPosition) {
  EXPECT_EQ(written([](LineWriter& out) {
              for (const int value : {0, 42, std::numeric_limits<int>::min()}) out.integer(value);
              for (const float value : {-0.0F, 1.5F, -0.1F, 1e-7F}) out.single(value);
              out.wholeTwips(2.5F);
            }),
            " 0\r\n 42\r\n-2147483648\r\n 0\r\n 1.5\r\n-0.1\r\n 0.0000001\r\n 2\r\n");
  EXPECT_EQ(written([](LineWriter& out) {
              out.single(std::numeric_limits<float>::quiet_NaN());
              out.wholeTwips(std::numeric_limits<float>::quiet_NaN());
              out.single(std::numeric_limits<float>::infinity());
              out.wholeTwips(-1e20F);
            }),
            " 0\r\n 0\r\n 9999999\r\n-9999999\r\n");
}

TEST(LineWriter, SinglesSurviveExactly) {
  for (float value : {0.1F, 1.0F / 3, 8.25F, 9999998.5F, 1e-30F, -123456.789F,
                      std::numeric_limits<float>::denorm_min()}) {
    FakeCodec codec;
    const std::string line = renderFile(codec, 0, [&](LineWriter& out) { out.single(value); });
    EXPECT_EQ(parseSingle(trimBlanks(std::string_view(line).substr(0, line.size() - 2))), value);
  }
}

TEST(LineWriter, KeepsTextOnOneLineAndMarksWhatWouldEndTheNote) {
  EXPECT_EQ(written([](LineWriter& out) {
              out.text(L"  a\r\nb\n");
              out.text(L" \r\n ");
              out.lines(L"", "[E]");
              out.lines(L" a \n[E]\r[E] \r\n", "[E]");
            }),
            "a  b\r\n\r\n a \r\n[E] \r\n[E] \r\n\r\n");
}

TEST(Encoding, IsChosenForAWholeFile) {
  const struct {
    const char* what;
    FakeCodec::CodePage page;
    void (*write)(LineWriter&);
    std::string bytes;
  } cases[] = {
      {"fits", FakeCodec::CodePage::Western, [](LineWriter& out) { out.text(L"\x00E9\x20AC"); },
       "\xE9\x80\r\n"},
      {"one line does not fit", FakeCodec::CodePage::Western,
       [](LineWriter& out) {
         out.text(L"\x00E9");
         out.text(L"\x4E2D");
       },
       "\xC3\xA9\r\n\xE4\xB8\xAD\r\n"},
      {"nothing fits", FakeCodec::CodePage::AsciiOnly, [](LineWriter& out) { out.text(L"\x00E9"); },
       "\xC3\xA9\r\n"},
      {"fits, but would be taken for UTF-8", FakeCodec::CodePage::Western,
       [](LineWriter& out) { out.text(L"\x00C3\x00A9"); }, "\xC3\x83\xC2\xA9\r\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(written(c.write, c.page), c.bytes) << c.what;
}

TEST(Encoding, IsToldByWholeFiles) {
  EXPECT_EQ(detectEncoding("plain"), Encoding::Ascii);
  for (const char* utf8 :
       {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80",
        "\xF4\x8F\xBF\xBF and more", "longer than 8 \xC3\xA9"})
    EXPECT_EQ(detectEncoding(utf8), Encoding::Utf8) << utf8;
  for (const char* ansi :
       {"\x80", "\xE9", "\xC3\xA9 \xE9", "\xC1\xBF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
        "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF8\x88\x80\x80\x80", "\xE4\xB8", "\xC3\x28"})
    EXPECT_EQ(detectEncoding(ansi), Encoding::Ansi) << ansi;
}

// A codec that writes half a character pair would turn the file into ANSI.
TEST(Encoding, SurvivesACodecThatWritesInvalidUtf8) {
  class Bad : public FakeCodec {
   public:
    std::string toUtf8(std::wstring_view) override { return "a\xED\xA0\x80z"; }
    std::optional<std::string> toAnsi(std::wstring_view) override { return std::nullopt; }
  } codec;
  EXPECT_EQ(renderFile(codec, 0, [](LineWriter& out) { out.text(L"\x00E9"); }),
            "a\xEF\xBF\xBDz\r\n");
}

TEST(Encoding, BytesWithoutMeaningAreReported) {
  FakeCodec codec;
  LineReader reader("\xE9\x81\r\n", codec);
  std::wstring text;
  EXPECT_TRUE(reader.decode("\xE9", text));
  EXPECT_EQ(text, L"\x00E9");
  EXPECT_FALSE(reader.decode("a\x81", text));
  EXPECT_EQ(text, L"a\xFFFD");
}

}  // namespace
}  // namespace varnowick
