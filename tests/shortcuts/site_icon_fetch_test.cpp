#include "shortcuts/site_icon_fetch.h"

#include <gtest/gtest.h>

#include <map>

#include "core/png.h"
#include "tests/fakes/fake_codec.h"

namespace varnowick {
namespace {

class SiteIconFetchTest : public testing::Test {
 protected:
  std::map<std::wstring, FetchReply> replies;
  std::vector<FetchRequest> requests;
  FakeCodec codec;
  std::uint32_t now = 0xFFFFFF00;  // about to begin anew
  std::uint32_t millisecondsEach = 0;
  std::string picture;
  std::string undecodable;
  const std::string icon = encodePng({1, 1, {0xFF112233}});
  const std::string other = encodePng({1, 1, {0xFF445566}});

  bool fetch(const wchar_t* page = L"http://a.org/") {
    requests.clear();
    SiteIconSearch search({page, L"proxy:1", 32}, now);
    while (const auto request = search.next(std::exchange(now, now + millisecondsEach))) {
      requests.push_back(*request);
      FetchReply reply = replies[request->url];
      if (reply.finalUrl.empty()) reply.finalUrl = request->url;
      if (!search.came(reply, codec) || reply.bytes == undecodable) continue;
      picture = reply.bytes;
      return true;
    }
    return false;
  }
  static FetchReply reply(int status, const std::string& bytes) {
    FetchReply made;
    made.status = status;
    made.bytes = bytes;
    return made;
  }
  void page(const std::string& bytes, const std::wstring& finalUrl = {}, int status = 200) {
    replies[L"http://a.org/"] = reply(status, bytes);
    replies[L"http://a.org/"].finalUrl = finalUrl;
  }
};

TEST_F(SiteIconFetchTest, TakesTheFirstThatIsAPicture) {
  page("<link rel=icon href=a.png sizes=32x32><link rel=icon href=b.png sizes=64x64>");
  replies[L"http://a.org/a.png"] = reply(200, "<html>not found");
  replies[L"http://a.org/b.png"] = reply(200, icon);
  replies[L"http://a.org/favicon.ico"] = reply(200, other);
  EXPECT_TRUE(fetch());
  EXPECT_EQ(picture, icon);
  for (const FetchRequest& request : requests) EXPECT_EQ(request.proxy, L"proxy:1");
  undecodable = icon;
  EXPECT_TRUE(fetch());
  EXPECT_EQ(picture, other) << "one that only claims to be a picture is passed over";
  replies[L"http://a.org/favicon.ico"].status = 404;
  EXPECT_FALSE(fetch());
}

TEST_F(SiteIconFetchTest, LooksWhereThePageReallyIs) {
  page("<link rel=icon href=i.png>", L"https://b.org/c/");
  replies[L"https://b.org/c/i.png"] = reply(200, icon);
  EXPECT_TRUE(fetch());
  page("<link rel=icon href=x.png>", {}, 404);
  replies[L"http://a.org/favicon.ico"] = reply(200, other);
  EXPECT_TRUE(fetch()) << "the site of a page that is gone";
  EXPECT_EQ(requests.size(), 2U) << "what the page of an error names is nobody's icon";
}

TEST_F(SiteIconFetchTest, AsksForTheSiteAloneAndNoOneNearby) {
  page("<link rel=icon href=http://192.168.0.1/i.png><link rel=icon href=//10.0.0.1/x>");
  EXPECT_FALSE(fetch(L"http://a.org/private/?token=1"));
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].url, L"http://a.org/");
  EXPECT_EQ(requests[1].url, L"http://a.org/favicon.ico");
  for (const FetchRequest& request : requests) EXPECT_TRUE(request.publicHostsOnly);
  EXPECT_FALSE(fetch(L"http://127.0.0.1:8080/"));
  EXPECT_TRUE(requests.empty());
}

TEST_F(SiteIconFetchTest, GivesUpInTime) {
  EXPECT_FALSE(fetch(L"http://nowhere.example/"));
  EXPECT_EQ(requests.size(), 1U);
  EXPECT_FALSE(fetch(L"ftp://a.org/"));
  millisecondsEach = 25'000;
  page("<link rel=icon href=1.png><link rel=icon href=2.png><link rel=icon href=3.png>");
  EXPECT_FALSE(fetch());
  EXPECT_LT(requests.size(), 4U);
  for (const FetchRequest& request : requests) EXPECT_LE(request.milliseconds, 20'000U);
}

}  // namespace
}  // namespace varnowick
