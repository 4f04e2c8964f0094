#include "core/public_host.h"

#include <gtest/gtest.h>

#include "tests/support/words.h"

namespace varnowick {
namespace {

TEST(PublicHost, RangesThatAreNotPublicEndWhereTheyEnd) {
  const struct {
    std::uint32_t first, last;
  } ranges[] = {{0x00000000, 0x00FFFFFF}, {0x0A000000, 0x0AFFFFFF}, {0x64400000, 0x647FFFFF},
                {0x7F000000, 0x7FFFFFFF}, {0xA9FE0000, 0xA9FEFFFF}, {0xAC100000, 0xAC1FFFFF},
                {0xC0000000, 0xC00000FF}, {0xC0A80000, 0xC0A8FFFF}, {0xC6120000, 0xC613FFFF},
                {0xE0000000, 0xFFFFFFFF}};
  const auto isPublic = [](std::uint32_t address) {
    return isPublicHost(std::to_wstring(address));
  };
  for (const auto& range : ranges) {
    EXPECT_FALSE(isPublic(range.first) || isPublic(range.last)) << range.first;
    if (range.first != 0) {
      EXPECT_TRUE(isPublic(range.first - 1)) << range.first;
    }
    if (range.last != 0xFFFFFFFF) {
      EXPECT_TRUE(isPublic(range.last + 1)) << range.last;
    }
  }
}

TEST(PublicHost, NothingOfTheLocalNetworkIsPublic) {
  const auto check = [](const wchar_t* hosts, bool expected) {
    for (const std::wstring& host : words(hosts))
      EXPECT_EQ(isPublicHost(host), expected) << testing::PrintToString(host);
  };
  check(L"example.org EXAMPLE.org. my-local.net 10.example.org 3com.com b\u00FCcher.example", true);
  check(L"93.184.216.34 8.8.2056 010.0.0.1 0x8.8.8.8", true);  // 010 is eight
  check(L"[2606:2800:220:1:248:1893:25c8:1946] [2606:2:3:4:5:6:7::] [2606:2:3:4:5:6:1.2.3.4]",
        true);
  check(
      L"[2000::1] [3fff::1] [2001:1::1] [64:ff9b::8.8.8.8] [::8.8.8.8] [::ffff:8.8.8.8] "
      L"[2002:5db8:d822::]",
      true);

  check(L". localhost a.localhost LocalHost. router nas.local x.lan x.internal x.home.arpa", false);
  check(L"x.localdomain x.intranet x.private x.home x.corp x.test", false);
  check(L"127.0.0.1 127.1 0x7f.1 0177.0.0.1 012.0.0.1 1.2.3.4.5 300.1.1.1 256.1.1.1", false);
  check(L"8.8.65536 08.1.1.1 127.0.0.0000000000000001 10.0x00000000000001 1.2.3.08", false);
  check(L"[::1] [::] [fc00::1] [FD12:3456::1] [fe80::1%25eth0] [1fff::1] [4000::1]", false);
  check(L"[::ffff:127.0.0.1] [::ffff:c0a8:1] [64:ff9b::10.0.0.1] [2002:7f00:1::] [2001::1]", false);
  check(L"[] [g::1] [2606::2::3] [2606::12345] [2606:2:3:4:5:6:7] [2606:2:3:4:5:6:7:8:]", false);
  check(L"[2606:2:3:4:5:6:7:8::] [2606:2:3:4:5:6:7:1.2.3.4] [2606::1.2.3.4:5]", false);
  check(L"\uFF11\uFF12\uFF17\uFF0E\uFF11 127\u30020\u30020\u30021 127%2e0.0.1x a_b.org", false);
  EXPECT_FALSE(isPublicHost(L""));
}

}  // namespace
}  // namespace varnowick
