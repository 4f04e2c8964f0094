#include "ui/win/images/site_icons.h"

#include <gtest/gtest.h>

#include "core/png.h"
#include "tests/fakes/fake_fetcher.h"

namespace varnowick {
namespace {

FetchReply found(const std::string& bytes) {
  FetchReply reply;
  reply.status = 200;
  reply.bytes = bytes;
  return reply;
}

TEST(SiteIcons, GoOnUntilAPictureIsTakenOrNoneIsLeft) {
  FakeFetchers fetchers;
  std::vector<std::pair<unsigned, std::string>> came;
  SiteIcons icons(fetchers, [&](const ImageRequest& request, std::string bytes) {
    came.emplace_back(request.generation, std::move(bytes));
  });
  FakeFetcher& fetcher = *fetchers.made.at(0);
  std::vector<ImageRequest> requests;
  for (unsigned i = 0; i < 10; ++i) {
    const std::wstring address = L"http://s" + std::to_wstring(i) + L".example/";
    requests.push_back({{ImageRef::Source::IconOf, address}, 32, i});
    icons.fetch(requests.back(), L"");
  }
  EXPECT_EQ(fetcher.requests.size(), 6U) << "the others wait";
  const std::string picture = encodePng({1, 1, {0xFF112233}});
  ASSERT_TRUE(fetcher.answer(L"http://s3.example/", found("<link rel=icon href=i.png>")));
  ASSERT_TRUE(fetcher.answer(L"http://s3.example/i.png", found(picture)));
  ASSERT_EQ(came, (std::vector<std::pair<unsigned, std::string>>{{3, picture}}));
  // It turns out to be none.
  icons.fetch(requests[3], L"");
  ASSERT_TRUE(fetcher.answer(L"http://s3.example/favicon.ico", found("<html>")));
  EXPECT_EQ(came.back(), (std::pair<unsigned, std::string>{3, ""}));
  EXPECT_EQ(fetcher.requests.back().request.url, L"http://s6.example/");
  ASSERT_TRUE(fetcher.answer(L"http://s6.example/", {}));
  EXPECT_EQ(came.back(), (std::pair<unsigned, std::string>{6, ""})) << "no such host";
}

}  // namespace
}  // namespace varnowick
