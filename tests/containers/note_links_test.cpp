#include "containers/note_links.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shortcuts/outside_links.h"

namespace varnowick {
namespace {

std::vector<std::wstring> shown(const std::wstring& text) {
  std::vector<std::wstring> links;
  for (const NoteLink& link : findNoteLinks(text))
    links.push_back(text.substr(link.start, link.length));
  return links;
}

TEST(NoteLinks, AreFoundWhereTheyStand) {
  using Links = std::vector<std::wstring>;
  const struct {
    const wchar_t* text;
    Links links;
  } cases[] = {
      {L"See http://example.org/a?b=1#c, or (https://example.org/x_(y)).",
       {L"http://example.org/a?b=1#c", L"https://example.org/x_(y)"}},
      {L"Write to mailto:me@example.org!\r\nftp://example.org",
       {L"mailto:me@example.org", L"ftp://example.org"}},
      {L"www.example.org. and WWW.EXAMPLE.ORG/Path", {L"www.example.org", L"WWW.EXAMPLE.ORG/Path"}},
      {L"twice www.example.org www.example.org", {L"www.example.org", L"www.example.org"}},
      {L"bare example.org/recipe, and (my-site.co.com/)",
       {L"example.org/recipe", L"my-site.co.com/"}},
      {L"az09AZ-az09AZ.info/x", {L"az09AZ-az09AZ.info/x"}},
      {L"http://example.org/redirect?to=other.com/page",
       {L"http://example.org/redirect?to=other.com/page"}},
      {L"\x65E5\x672C http://example.org/\x65E5 \x65E5", {L"http://example.org/\x65E5"}},
      // What only looks a little like one.
      {L"and/or 1.2/3 notes.txt/x example.org C:/a.com/b me@example.org/x", {}},
      {L"-a.com/x a..com/x .com/x a-.com/x \x00E4.com/x src\\a.com/x", {}},
      {L"file:///c:/x javascript:alert(1) http:// https:/// www. mailto:", {}},
      {L"", {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(&c - cases);
    EXPECT_EQ(shown(c.text), c.links);
  }
}

TEST(NoteLinks, LeadSomewhereSafe) {
  EXPECT_EQ(addressOfNoteLink(L"www.example.org"), L"http://www.example.org");
  EXPECT_EQ(addressOfNoteLink(L"example.org/a"), L"http://example.org/a");
  EXPECT_EQ(addressOfNoteLink(L"HTTPS://example.org"), L"HTTPS://example.org");
  for (const wchar_t* text : {L"a.com/x\\y", L"a.com/\"x", L"a.com/x\x01y", L"www.a\\b.com/c"}) {
    for (const std::wstring& link : shown(text))
      EXPECT_TRUE(isSafeOutsideLink(addressOfNoteLink(link)));
  }
}

// Each of these would take hours if looking at one place meant looking far around it.
TEST(NoteLinks, NoTextTakesLong) {
  const std::size_t size = 1'000'000;
  const wchar_t* const patterns[] = {
      L"/", L"a/",       L"a.com/",  L"http://",    L"www.",          L"a.",
      L"(", L"mailto:@", L",a.com/", L"/,a.com/\"", L"example.org/x "};
  for (const wchar_t* pattern : patterns) {
    std::wstring text;
    while (text.size() < size) text += pattern;
    const auto links = findNoteLinks(text);
    EXPECT_LE(links.size(), kMaxNoteLinks);
    std::size_t end = 0;
    for (const NoteLink& link : links) {
      EXPECT_GE(link.start, end);
      end = link.start + link.length;
    }
    EXPECT_LE(end, text.size());
  }
}

}  // namespace
}  // namespace varnowick
