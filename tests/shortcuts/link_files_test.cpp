#include "shortcuts/link_files.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_codec.h"
#include "tests/shortcuts/shell_link_bytes.h"

namespace varnowick {
namespace {

using Bytes = ShellLinkBytes;

Bytes fullLink() {
  Bytes link;
  link.flags = Bytes::kItemList | Bytes::kInfo | Bytes::kName | Bytes::kRelative | Bytes::kFolder |
               Bytes::kArguments | Bytes::kIcon | Bytes::kUnicode;
  link.iconIndex = 0xFFFFFFFD;
  link.rest = little(4, 2) + std::string("\2\0\0\0", 4) + Bytes::localInfo("C:\\Tools\\", "x.exe") +
              Bytes::wideText(u"Two\r\nlines") + Bytes::wideText(u".\\x.exe") +
              Bytes::wideText(u"D:\\Work") + Bytes::wideText(u"/a \"b c\" \u20AC") +
              Bytes::wideText(u"%SystemRoot%\\shell32.dll") + little(0, 4);
  return link;
}

TEST(ShellLinkTest, ReadsEveryField) {
  FakeCodec codec;
  const auto link = parseShellLink(fullLink().bytes(), codec);
  ASSERT_TRUE(link);
  EXPECT_EQ(link->target, L"C:\\Tools\\x.exe");
  EXPECT_EQ(link->description, L"Two  lines");
  EXPECT_EQ(link->relativePath, L".\\x.exe");
  EXPECT_EQ(link->workingFolder, L"D:\\Work");
  EXPECT_EQ(link->arguments, L"/a \"b c\" \x20AC");
  EXPECT_EQ(link->iconLocation, L"%SystemRoot%\\shell32.dll");
  EXPECT_EQ(link->iconIndex, -3);
  EXPECT_FALSE(link->targetIsFolder);
  EXPECT_FALSE(link->advertised);
}

TEST(ShellLinkTest, FindsTheTargetInItsForms) {
  struct Case {
    const char* name;
    std::uint32_t flags;
    std::string rest;
    std::wstring target;
  } cases[] = {
      {"wide path", Bytes::kInfo, Bytes::wideInfo(u"C:\\\u0416.exe"), L"C:\\\x0416.exe"},
      {"share", Bytes::kInfo, Bytes::networkInfo("\\\\srv\\pub", "a\\b.txt"),
       L"\\\\srv\\pub\\a\\b.txt"},
      {"share itself", Bytes::kInfo, Bytes::networkInfo("\\\\srv\\pub", ""), L"\\\\srv\\pub"},
      {"only behind the texts", 0, Bytes::environmentBlock(0xA0000001, u"%windir%\\n.exe"),
       L"%windir%\\n.exe"},
      {"link info wins", Bytes::kInfo,
       Bytes::localInfo("C:\\a", "") + Bytes::environmentBlock(0xA0000001, u"C:\\b"), L"C:\\a"},
      {"link info to be ignored", Bytes::kInfo | 0x100, Bytes::localInfo("C:\\a", ""), L""},
      {"no file at all", Bytes::kItemList, little(2, 2) + "xx", L""},
  };
  FakeCodec codec;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Bytes link;
    link.flags = c.flags;
    link.rest = c.rest;
    const auto read = parseShellLink(link.bytes(), codec);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->target, c.target);
  }
}

TEST(ShellLinkTest, ReadsAnsiTexts) {
  FakeCodec codec;
  Bytes link;
  link.flags = Bytes::kName | Bytes::kArguments;
  link.attributes = 0x10;
  link.rest = Bytes::ansiText(
                  "gr\xFC"
                  "n") +
              Bytes::ansiText(std::string("a\0b", 3));
  const auto read = parseShellLink(link.bytes(), codec);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->description, L"gr\x00FCn");
  EXPECT_EQ(read->arguments, L"a");
  EXPECT_TRUE(read->targetIsFolder);
}

// However a link is cut off or bent, it is read within its bytes or refused.
TEST(ShellLinkTest, SurvivesDamage) {
  FakeCodec codec;
  const std::string whole = fullLink().bytes() + Bytes::environmentBlock(0xA0000007, u"x");
  const std::size_t textsEnd = fullLink().bytes().size() - 4;
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const std::string cut = whole.substr(0, size);
    EXPECT_EQ(parseShellLink(cut, codec).has_value(), size >= textsEnd) << size;
  }
  for (std::size_t at = 0x4C; at < whole.size(); ++at) {
    for (const char value : {'\0', '\x7F', '\xFF'}) {
      std::string bent = whole;
      bent[at] = value;
      parseShellLink(bent, codec);
    }
  }
}

TEST(ShellLinkTest, RefusesWhatIsNoLinkOrNoText) {
  FakeCodec codec;
  std::string otherClass = fullLink().bytes();
  otherClass[4] = '\x02';
  Bytes control;
  control.flags = Bytes::kInfo;
  control.rest = Bytes::localInfo("C:\\a\nb", "");
  Bytes endless;
  endless.flags = Bytes::kInfo;
  endless.rest = Bytes::localInfo("C:\\" + std::string(5000, 'a'), "");
  for (const std::string& bytes :
       {otherClass, control.bytes(), endless.bytes(), std::string(kMaxLinkFile + 1, 'L')})
    EXPECT_FALSE(parseShellLink(bytes, codec));
}

TEST(WebLinkTest, ReadsTheAddress) {
  FakeCodec codec;
  const std::string wide = "\xFF\xFE" + wideBytes(u"[InternetShortcut]\r\nURL=http://a/\u0416\r\n");
  struct Case {
    std::string bytes;
    std::wstring address, iconFile;
    int iconIndex;
  } cases[] = {
      {"[InternetShortcut]\r\nURL=http://a/\r\nIconFile=C:\\i.ico\r\nIconIndex=2\r\n", L"http://a/",
       L"C:\\i.ico", 2},
      {"[DEFAULT]\nURL=http://no/\n[internetshortcut]\n url = http://b/?x=y=z \n[X]\nIconFile=n",
       L"http://b/?x=y=z", L"", 0},
      {"\xEF\xBB\xBF[InternetShortcut]\nURL=http://\xD0\x96/\nURL=http://second/\nIconIndex=x\n",
       L"http://\x0416/", L"", 0},
      {wide, L"http://a/\x0416", L"", 0},
      {"[InternetShortcut]\nURL=http://a/\x01\nURL=javascript:alert(1)", L"javascript:alert(1)",
       L"", 0},
  };
  for (const Case& c : cases) {
    const auto link = parseWebLink(c.bytes, codec);
    ASSERT_TRUE(link) << c.bytes;
    EXPECT_EQ(link->address, c.address);
    EXPECT_EQ(link->iconFile, c.iconFile);
    EXPECT_EQ(link->iconIndex, c.iconIndex);
  }
  for (const char* bytes :
       {"", "URL=http://a/", "[InternetShortcut]\nURL=\n", "\xFF\xFE", "\xFF\xFEx"})
    EXPECT_FALSE(parseWebLink(bytes, codec)) << bytes;
}

}  // namespace
}  // namespace varnowick
