#include "shortcuts/site_icon_fetch.h"

#include <gtest/gtest.h>

#include "core/png.h"
#include "tests/fakes/fake_codec.h"
#include "tests/fakes/fake_http.h"

namespace varnowick {
namespace {

class SiteIconFetchTest : public testing::Test {
 protected:
  FakeHttp http;
  FakeCodec codec;
  std::uint32_t now = 0xFFFFFF00;  // about to begin anew
  std::uint32_t millisecondsEach = 0;
  std::string picture;
  std::string undecodable;
  const std::string icon = encodePng({1, 1, {0xFF112233}});
  const std::string other = encodePng({1, 1, {0xFF445566}});

  bool fetch(const wchar_t* page = L"http://a.org/") {
    http.requests.clear();
    return fetchSiteIcon(
        http, codec, {page, L"proxy:1", 32},
        [this] { return std::exchange(now, now + millisecondsEach); },
        [this](std::string_view bytes) {
          if (bytes == undecodable) return false;
          picture = bytes;
          return true;
        });
  }
  void page(const std::string& bytes, const std::wstring& finalUrl = {}, int status = 200) {
    http.replies[L"http://a.org/"] = {status, bytes, finalUrl, {}};
  }
};

TEST_F(SiteIconFetchTest, TakesTheFirstThatIsAPicture) {
  page("<link rel=icon href=a.png sizes=32x32><link rel=icon href=b.png sizes=64x64>");
  http.replies[L"http://a.org/a.png"] = {200, "<html>not found", {}, {}};
  http.replies[L"http://a.org/b.png"] = {200, icon, {}, {}};
  http.replies[L"http://a.org/favicon.ico"] = {200, other, {}, {}};
  EXPECT_TRUE(fetch());
  EXPECT_EQ(picture, icon);
  for (const HttpRequest& request : http.requests) EXPECT_EQ(request.proxy, L"proxy:1");
  undecodable = icon;
  EXPECT_TRUE(fetch());
  EXPECT_EQ(picture, other) << "one that only claims to be a picture is passed over";
  http.replies[L"http://a.org/favicon.ico"].status = 404;
  EXPECT_FALSE(fetch());
}

TEST_F(SiteIconFetchTest, LooksWhereThePageReallyIs) {
  page("<link rel=icon href=i.png>", L"https://b.org/c/");
  http.replies[L"https://b.org/c/i.png"] = {200, icon, {}, {}};
  EXPECT_TRUE(fetch());
  page("<link rel=icon href=x.png>", {}, 404);
  http.replies[L"http://a.org/favicon.ico"] = {200, other, {}, {}};
  EXPECT_TRUE(fetch()) << "the site of a page that is gone";
  EXPECT_EQ(http.requests.size(), 2U) << "what the page of an error names is nobody's icon";
}

TEST_F(SiteIconFetchTest, AsksForTheSiteAloneAndNoOneNearby) {
  page("<link rel=icon href=http://192.168.0.1/i.png><link rel=icon href=//10.0.0.1/x>");
  EXPECT_FALSE(fetch(L"http://a.org/private/?token=1"));
  ASSERT_EQ(http.requests.size(), 2U);
  EXPECT_EQ(http.requests[0].url, L"http://a.org/");
  EXPECT_EQ(http.requests[1].url, L"http://a.org/favicon.ico");
  for (const HttpRequest& request : http.requests) EXPECT_TRUE(request.publicHostsOnly);
  EXPECT_FALSE(fetch(L"http://127.0.0.1:8080/"));
  EXPECT_TRUE(http.requests.empty());
}

TEST_F(SiteIconFetchTest, GivesUpInTime) {
  EXPECT_FALSE(fetch(L"http://nowhere.example/"));
  EXPECT_EQ(http.requests.size(), 1U);
  EXPECT_FALSE(fetch(L"ftp://a.org/"));
  millisecondsEach = 25'000;
  page("<link rel=icon href=1.png><link rel=icon href=2.png><link rel=icon href=3.png>");
  EXPECT_FALSE(fetch());
  EXPECT_LT(http.requests.size(), 4U);
  for (const HttpRequest& request : http.requests) EXPECT_LE(request.milliseconds, 20'000U);
}

}  // namespace
}  // namespace varnowick
