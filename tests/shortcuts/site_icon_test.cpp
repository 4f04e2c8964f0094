#include "shortcuts/site_icon.h"

#include <gtest/gtest.h>

#include "shortcuts/html_tags.h"
#include "tests/fakes/fake_codec.h"

namespace varnowick {
namespace {

using Addresses = std::vector<std::wstring>;

TEST(SiteIconTest, AreAskedForAgainInTime) {
  const struct {
    std::uint64_t fetched;
    bool hasIcon, due;
  } cases[] = {{100, true, false}, {94, true, false}, {93, true, true},   {100, false, false},
               {99, false, true},  {101, true, true}, {101, false, true}, {0, true, true}};
  for (const auto& c : cases)
    EXPECT_EQ(siteIconIsDue(c.fetched, c.hasIcon, 100), c.due) << c.fetched;
}

TEST(SiteIconTest, NamesTheBestIconsFirst) {
  FakeCodec codec;
  const struct {
    std::string page;
    Addresses addresses;
  } cases[] = {
      {"", {L"http://a.org/favicon.ico"}},
      {"<LINK HREF='/s.png' REL=\"Shortcut ICON\"><link rel=stylesheet href=x.css>",
       {L"http://a.org/s.png", L"http://a.org/favicon.ico"}},
      {"<link rel=icon href=16.png sizes=16x16><link rel=icon href=any.png>"
       "<link rel=icon href=90.png sizes=90X90><link rel=icon href=40.png sizes='16x16 40x40'>"
       "<link rel=apple-touch-icon href=t.png sizes=32x32>"
       "<link rel=icon type=image/svg+xml href=v.svg>",
       {L"http://a.org/40.png", L"http://a.org/90.png", L"http://a.org/any.png",
        L"http://a.org/16.png", L"http://a.org/t.png", L"http://a.org/favicon.ico"}},
      {"<base href='//b.org/d/'><link rel=icon href='i?a=1&amp;b=2'/>",
       {L"http://b.org/d/i?a=1&b=2", L"http://a.org/favicon.ico"}},
      {"<!-- <link rel=icon href=c.png> --><script>'<link rel=icon href=s.png>'</script>"
       "<title><link rel=icon href=t.png></title><body><link rel=icon href=b.png>",
       {L"http://a.org/favicon.ico"}},
      {"<link rel=icon href=javascript:x><link rel=icon><link href=x><link rel=icon href='cut",
       {L"http://a.org/favicon.ico"}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(siteIconAddresses(c.page, L"http://a.org/", 32, codec), c.addresses) << c.page;
  EXPECT_TRUE(siteIconAddresses("", L"file:///c:/x.html", 32, codec).empty());
}

// Pages that are built to be slow or to fill memory are read like any other.
TEST(SiteIconTest, HostilePagesEndSoon) {
  FakeCodec codec;
  for (const char* part : {"<", "<a ", "<a b=", "<a b='", "<!--", "<script>", "</script", "=\"'",
                           "<link rel=icon href=/x >", "<link rel='icon icon icon ' "}) {
    std::string page;
    while (page.size() < 2 * kMaxPageHead) page += part;
    EXPECT_LE(siteIconAddresses(page, L"http://a.org/", 32, codec).size(), kMaxSiteIcons) << part;
  }
}

TEST(HtmlTagsTest, ReadsAttributesInAllTheirForms) {
  HtmlTagReader reader("x < 3 <A b c=1 D = \"<e>\" f='g>h'/></a><i=x>");
  HtmlTag tag;
  ASSERT_TRUE(reader.next(tag));
  std::string read = tag.name;
  for (const char* name : {"c", "d", "f", "b"}) read += tag.value(name);
  EXPECT_EQ(read, "a1<e>g>h");
  ASSERT_TRUE(reader.next(tag) && tag.name == "/a");
  EXPECT_TRUE(reader.next(tag) && !reader.next(tag));
}

TEST(SiteIconTest, TakesPicturesOfTheSizeOfIcons) {
  std::string gif = "GIF89a\x20";
  gif += std::string("\0\x20\0", 3) + std::string(20, '\0');
  EXPECT_TRUE(isUsableSiteIcon(gif));
  gif[7] = '\x7F';
  EXPECT_FALSE(isUsableSiteIcon(gif));
  gif[7] = '\0';
  EXPECT_FALSE(isUsableSiteIcon(gif + std::string(kMaxSiteIconBytes, '\0')));
  EXPECT_FALSE(isUsableSiteIcon("<html><body>404</body></html>"));
}

}  // namespace
}  // namespace varnowick
