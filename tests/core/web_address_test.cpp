#include "core/web_address.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(WebAddressTest, TakesAddressesApart) {
  const struct {
    const wchar_t *address, *site, *path, *query;
    unsigned port;
  } cases[] = {
      {L"http://a.org", L"http://a.org", L"/", L"", 80},
      {L"HTTPS://a.org:8443/b/c?d=/e#f", L"https://a.org:8443", L"/b/c", L"?d=/e", 8443},
      {L"https://a.org:443?q", L"https://a.org", L"/", L"?q", 443},
      {L"http://[::1]:81/x", L"http://[::1]:81", L"/x", L"", 81},
      {L"http://a.org:/x", L"http://a.org", L"/x", L"", 80},
  };
  for (const auto& c : cases) {
    const auto address = parseWebAddress(c.address);
    ASSERT_TRUE(address) << c.address;
    EXPECT_EQ(address->site(), c.site);
    EXPECT_EQ(address->path, c.path);
    EXPECT_EQ(address->query, c.query);
    EXPECT_EQ(address->port, c.port);
  }
  for (const wchar_t* address :
       {L"", L"http:", L"http://", L"http:///x", L"ftp://a.org/", L"file://c:/x",
        L"http://user@a.org/", L"http://a.org:0/", L"http://a.org:65536/", L"http://a.org:8x/",
        L"http://a.org:99999999999999999999/", L"http://a b/", L"http://a.org\\x",
        L"http://a.org/\r\nHost:x", L"javascript:http://a.org"})
    EXPECT_FALSE(parseWebAddress(address)) << address;
  EXPECT_FALSE(parseWebAddress(L"http://a.org/" + std::wstring(kMaxWebAddress, L'x')));
}

TEST(WebAddressTest, RedirectsMayLeadToTheWebOnly) {
  EXPECT_EQ(resolveWebReference(L"https://a.org/b", L"http://c.org/"), L"http://c.org/");
  EXPECT_EQ(resolveWebReference(L"http://a.org/b/c", L"d"), L"http://a.org/b/d");
  for (const wchar_t* target : {L"file:///c:/x", L"ftp://a.org/x", L"mailto:x@a.org", L"", L"#x"})
    EXPECT_FALSE(resolveWebReference(L"http://a.org/", target)) << target;
}

TEST(WebAddressTest, EscapesWhatIsNoPartOfARequestLine) {
  EXPECT_EQ(escapedForRequest("/a%20b?c=d"), "/a%20b?c=d");
  EXPECT_EQ(escapedForRequest("/\xC3\xA9 \r\n"), "/%C3%A9%20%0D%0A");
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
