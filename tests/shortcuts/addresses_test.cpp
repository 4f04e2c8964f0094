#include "shortcuts/addresses.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

using Addresses = std::vector<std::wstring>;

TEST(AddressesTest, FindsAddressesInText) {
  const struct {
    std::wstring text;
    Addresses found;
  } cases[] = {
      {L"see http://a.org/x, and HTTPS://B.org/y.", {L"http://a.org/x", L"HTTPS://B.org/y"}},
      {L"(http://a.org/w_(c)) [www.b.org/?q=1&r=2]",
       {L"http://a.org/w_(c)", L"http://www.b.org/?q=1&r=2"}},
      {L"<ftp://f.org/p>\"mailto:me@x.org\"", {L"ftp://f.org/p", L"mailto:me@x.org"}},
      {L"http://a.org http://a.org", {L"http://a.org"}},
      {L"xhttp://a.org www.nothing mailto:nobody http:// http:///etc www..org", {}},
      {L"javascript:alert(1) file:///c:/x.exe telnet://a", {}},
      {L"http://a.org/http://b.org", {L"http://a.org/http://b.org"}},
      {L"http://a.org/\x202Egpj.exe", {L"http://a.org/"}},
      {L"http://a.org/" + std::wstring(3000, L'x') + L" http://b.org", {L"http://b.org"}},
  };
  for (const auto& c : cases) EXPECT_EQ(extractUrls(c.text), c.found);
}

TEST(AddressesTest, LooksAtAndTakesALimitedAmount) {
  std::wstring many;
  for (int i = 0; i < 1000; ++i) many += L" http://a.org/" + std::to_wstring(i);
  EXPECT_EQ(extractUrls(many).size(), kMaxAddresses);
  std::wstring large(kMaxSearchedText, L'h');
  for (std::size_t i = 1; i < large.size(); i += 2) large[i] = L' ';
  EXPECT_TRUE(extractUrls(large + L" http://late.org").empty());
}

TEST(AddressesTest, TakesAWholeTextForAnAddressOrPath) {
  EXPECT_EQ(wholeAddress(L" \r\nwww.a.org/b\r\n"), L"http://www.a.org/b");
  EXPECT_EQ(wholeAddress(L"http://a.org"), L"http://a.org");
  for (const wchar_t* text : {L"", L"a.org", L"http://a.org http://b.org", L"javascript:x",
                              L"http:a", L"http://a.org/\"--x"})
    EXPECT_FALSE(wholeAddress(text));

  EXPECT_EQ(wholePath(L" \"C:\\Program Files\\x y.exe\"\n"), L"C:\\Program Files\\x y.exe");
  EXPECT_EQ(wholePath(L"@:\\x.exe"), L"@:\\x.exe");
  for (const wchar_t* text :
       {L"C:", L"C:x", L"C:/x", L"1:\\x", L"C:\\a|b", L"C:\\a:b", L"C:\\a\nD:\\b", L"\\\\server",
        L"\\\\a\\", L"\\\\a\\\\b", L"\\\\.\\pipe", L"\\\\\\share", L"\\\\?\\C:\\x", L"\\\\.\\C:\\x",
        L"C:\\a\" /b \"c"})
    EXPECT_FALSE(wholePath(text)) << text;

  EXPECT_TRUE(looksLikeAddress(L"javascript:alert(1)"));
  for (const wchar_t* text : {L"C:\\x", L"Note: buy milk", L"no colon", L"two words:x", L"end:"})
    EXPECT_FALSE(looksLikeAddress(text));
}

TEST(AddressesTest, ReadsListsOfPathsAndAddresses) {
  const struct {
    const wchar_t *text, *items;  // of the items, joined by a bar
  } cases[] = {
      {L"C:\\a b.txt\r\nD:\\c\n\n", L"C:\\a b.txt|D:\\c"},
      {L"\"C:\\a b.txt\" \"\\\\srv\\pub\\c d\"", L"C:\\a b.txt|\\\\srv\\pub\\c d"},
      {L"http://a.org www.b.org\n\\\\srv\\pub", L"http://a.org|http://www.b.org|\\\\srv\\pub"},
      {L"C:\\x http://a.org", L"C:\\x|http://a.org"},
      {L"C:\\x\nsome words", L""},
      {L"\"C:\\x", L""},
      {L"javascript:x\nhttp://a.org", L""}};
  for (const auto& c : cases) {
    std::wstring joined;
    for (const ListedItem& item : listedItems(c.text))
      joined += (joined.empty() ? L"" : L"|") + item.text;
    EXPECT_EQ(joined, c.items) << c.text;
  }
}

TEST(AddressesTest, NamesTheHost) {
  const struct {
    const wchar_t *address, *host;
  } cases[] = {{L"http://www.a.org:80/b?c", L"a.org"},
               {L"https://bank.com@evil.org/bank.com", L"evil.org"},
               {L"ftp://f.org", L"f.org"},
               {L"http://[::1]/x", L"[::1]"},
               {L"mailto:me@x.org?subject=y", L"me@x.org"}};
  for (const auto& c : cases) EXPECT_EQ(hostOf(c.address), c.host);
}

}  // namespace
}  // namespace varnowick
