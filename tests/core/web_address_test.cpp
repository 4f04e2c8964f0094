#include "core/web_address.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(WebAddressTest, TakesAddressesApart) {
  const struct {
    const wchar_t *address, *parts;
    unsigned port;
  } cases[] = {
      {L"http://a.org", L"http://a.org|/|", 80},
      {L"HTTPS://a.org:8443/b/c?d=/e#f", L"https://a.org:8443|/b/c|?d=/e", 8443},
      {L"https://a.org:443?q", L"https://a.org|/|?q", 443},
      {L"http://[::1]:81/x", L"http://[::1]:81|/x|", 81},
      {L"http://a.org:/x", L"http://a.org|/x|", 80},
      {L"http://a.org:65535/x?", L"http://a.org:65535|/x|?", 65535},
  };
  for (const auto& c : cases) {
    const auto address = parseWebAddress(c.address);
    ASSERT_TRUE(address) << c.address;
    EXPECT_EQ(address->site() + L"|" + address->path + L"|" + address->query, c.parts);
    EXPECT_EQ(address->port, c.port);
  }
  for (const wchar_t* address : {L"",
                                 L"http:",
                                 L"http://",
                                 L"http:///x",
                                 L"ftp://a.org/",
                                 L"file://c:/x",
                                 L"http://user@a.org/",
                                 L"http://a.org:0/",
                                 L"http://a.org:65536/",
                                 L"http://a.org:8x/",
                                 L"http://a.org:99999999999999999999/",
                                 L"http://a b/",
                                 L"http://a.org\\x",
                                 L"http://a.org/\r\nHost:x",
                                 L"javascript:http://a.org",
                                 L"http://a\x7F",
                                 L"http://a\x80",
                                 L"http://a.org/<",
                                 L"http://a.org/>",
                                 L"http://a.org/`",
                                 L"http://a.org/\""})
    EXPECT_FALSE(parseWebAddress(address)) << address;
  const std::wstring longest = L"http://a.org/" + std::wstring(kMaxWebAddress - 13, L'x');
  EXPECT_TRUE(parseWebAddress(longest));
  EXPECT_FALSE(parseWebAddress(longest + L"x"));
}

TEST(WebAddressTest, ReferencesLeadToTheWebOnly) {
  const wchar_t* page = L"http://a.org:8080/b/c.html?q=/x#f";
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"i.ico", L"http://a.org:8080/b/i.ico"},
      {L"/i.ico?v=1#x", L"http://a.org:8080/i.ico?v=1"},
      {L"//cdn.org/i.ico", L"http://cdn.org/i.ico"},
      {L"https://b.org", L"https://b.org"},
      {L"../../../i.ico", L"http://a.org:8080/i.ico"},
      {L"./x/../i/./j.ico", L"http://a.org:8080/b/i/j.ico"},
      {L"x/.", L"http://a.org:8080/b/x/"},
      {L"x/y/..", L"http://a.org:8080/b/x/"},
      {L"?q", L"http://a.org:8080/b/c.html?q"},
      {L"i?u=http://x", L"http://a.org:8080/b/i?u=http://x"}};
  for (const auto& [reference, address] : cases)
    EXPECT_EQ(resolveWebReference(page, reference), address);
  EXPECT_EQ(resolveWebReference(L"https://a.org", L"i.ico"), L"https://a.org/i.ico");
  EXPECT_EQ(resolveWebReference(L"http://a.org/", L"https://b.org"), L"https://b.org");
  EXPECT_EQ(resolveWebReference(L"https://a.org/", L"//b.org/i.ico"), L"https://b.org/i.ico");
  EXPECT_FALSE(resolveWebReference(L"https://a.org/", L"http://a.org/i.ico"));
  EXPECT_FALSE(resolveWebReference(L"ftp://a.org/", L"i.ico"));
  for (const wchar_t* reference :
       {L"", L"#x", L"data:image/png;base64,AAAA", L"javascript:x", L"file:///c:/x",
        L"ftp://a/i.ico", L"mailto:x@a.org", L"http://u:p@b.org/i", L"a b.ico", L"\\\\srv\\i"})
    EXPECT_FALSE(resolveWebReference(page, reference)) << reference;
}

TEST(WebAddressTest, EscapesWhatIsNoPartOfARequestLine) {
  EXPECT_EQ(escapedForRequest("/a%20b?c=d"), "/a%20b?c=d");
  EXPECT_EQ(escapedForRequest("/\xC3\xA9 \r\n~\x7F"), "/%C3%A9%20%0D%0A~%7F");
}

TEST(WebAddressTest, ProxiesAreNamedWithoutTheirScheme) {
  const struct {
    const wchar_t *setting, *proxy;
  } cases[] = {{L"", L""},
               {L"0", L""},
               {L"  ", L""},
               {L"proxy:8080", L"proxy:8080"},
               {L" http://proxy:8080/ ", L"proxy:8080"},
               {L"HTTPS://Proxy.example.org", L"Proxy.example.org"},
               {L"proxy:", L"proxy"},
               {L"proxy:x", L""},
               {L"a b:80", L""},
               {L"http://", L""},
               {L":80", L""}};
  for (const auto& c : cases) EXPECT_EQ(proxyServer(c.setting), c.proxy) << c.setting;
}

}  // namespace
}  // namespace varnowick
