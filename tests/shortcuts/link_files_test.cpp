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

// The texts of a link that can be read, by lines.
std::wstring textsOf(const Bytes& bytes) {
  FakeCodec codec;
  const auto link = parseShellLink(bytes.bytes(), codec);
  if (!link) return L"refused";
  return link->target + L"\n" + link->description + L"\n" + link->relativePath + L"\n" +
         link->workingFolder + L"\n" + link->arguments + L"\n" + link->iconLocation;
}

TEST(ShellLinkTest, ReadsEveryField) {
  EXPECT_EQ(textsOf(fullLink()),
            L"C:\\Tools\\x.exe\nTwo  lines\n.\\x.exe\nD:\\Work\n/a \"b c\" \x20AC\n"
            L"%SystemRoot%\\shell32.dll");
  FakeCodec codec;
  Bytes link = fullLink();
  for (const bool special : {false, true}) {
    if (special) link.attributes = 0x10, link.flags |= 1U << 12;
    const auto read = parseShellLink(link.bytes(), codec);
    EXPECT_EQ(read->iconIndex, -3);
    EXPECT_TRUE(read->targetIsFolder == special && read->advertised == special);
  }
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
  for (const Case& c : cases) {
    Bytes link;
    link.flags = c.flags;
    link.rest = c.rest;
    EXPECT_EQ(textsOf(link), c.target + L"\n\n\n\n\n") << c.name;
  }
}

TEST(ShellLinkTest, ReadsAnsiTextsAndAnIconBehindThem) {
  Bytes link;
  link.flags = Bytes::kName | Bytes::kArguments;
  link.rest = Bytes::ansiText("gr\xFC") + Bytes::ansiText(std::string("a\0b", 3)) +
              Bytes::environmentBlock(0xA0000007, u"%i%") +
              Bytes::environmentBlock(0xA0000001, u"%t%");
  EXPECT_EQ(textsOf(link), L"%t%\ngr\x00FC\n\n\na\n%i%");
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
