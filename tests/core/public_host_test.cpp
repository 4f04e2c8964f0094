#include "core/public_host.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

TEST(PublicHost, NothingOfTheLocalNetworkIsPublic) {
  for (const wchar_t* host :
       {L"example.org", L"EXAMPLE.org.", L"93.184.216.34", L"172.32.0.1", L"11.0.0.1",
        L"[2606:2800:220:1:248:1893:25c8:1946]", L"[::ffff:93.184.216.34]", L"b\u00FCcher.example",
        L"my-local.net", L"10.example.org", L"3com.com"})
    EXPECT_TRUE(isPublicHost(host)) << testing::PrintToString(host);
  for (const wchar_t* host : {L"",
                              L".",
                              L"localhost",
                              L"a.localhost",
                              L"LocalHost.",
                              L"router",
                              L"nas.local",
                              L"x.lan",
                              L"x.internal",
                              L"x.home.arpa",
                              L"127.0.0.1",
                              L"127.1",
                              L"2130706433",
                              L"0x7f.1",
                              L"0177.0.0.1",
                              L"10.1.2.3",
                              L"172.16.0.1",
                              L"172.31.255.255",
                              L"192.168.0.1",
                              L"169.254.169.254",
                              L"100.64.0.1",
                              L"0.0.0.0",
                              L"255.255.255.255",
                              L"1.2.3.4.5",
                              L"300.1.1.1",
                              L"[::1]",
                              L"[::]",
                              L"[fc00::1]",
                              L"[FD12:3456::1]",
                              L"[fe80::1%25eth0]",
                              L"[febf::1]",
                              L"[::ffff:127.0.0.1]",
                              L"[::ffff:c0a8:1]",
                              L"[64:ff9b::10.0.0.1]",
                              L"[2002:7f00:1::]",
                              L"[1::2::3]",
                              L"[g::1]",
                              L"[]",
                              L"\uFF11\uFF12\uFF17\uFF0E\uFF11",
                              L"127\u30020\u30020\u30021",
                              L"127%2e0.0.1x"})
    EXPECT_FALSE(isPublicHost(host)) << testing::PrintToString(host);
}

}  // namespace
}  // namespace varnowick
