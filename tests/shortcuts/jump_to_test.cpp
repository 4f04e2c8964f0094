#include "shortcuts/jump_to.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnowick {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

JumpTo boxOf(std::vector<JumpEntry> entries) {
  JumpTo box;
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].target.none()) entries[i].target.shortcut.index = static_cast<int>(i);
  box.setEntries(std::move(entries));
  return box;
}

// The caption with what is highlighted in brackets; empty when it does not match.
std::wstring highlight(const wchar_t* caption, std::wstring_view query, JumpRank expected) {
  const JumpTo box = boxOf({{{}, caption, 0}});
  const auto matches = box.find(query);
  if (matches.empty()) return L"";
  EXPECT_EQ(matches[0].rank, expected) << caption;
  const auto positions = box.highlighted(matches[0], query);
  std::wstring shown;
  for (std::size_t i = 0; caption[i] != 0; ++i) {
    const bool lit = std::find(positions.begin(), positions.end(), i) != positions.end();
    shown += lit ? std::wstring(L"[") + caption[i] + L"]" : std::wstring(1, caption[i]);
  }
  return shown;
}

TEST(JumpTo, RanksAndHighlightsTheBestReading) {
  struct Case {
    const wchar_t* caption;
    const wchar_t* query;
    JumpRank rank;
    const wchar_t* shown;
  };
  const Case cases[] = {
      {L"Fire Fox", L"fir", JumpRank::Prefix, L"[F][i][r]e Fox"},
      {L"Fire Fox", L"fire f", JumpRank::Prefix, L"[F][i][r][e][ ][F]ox"},
      {L"Fire Fox", L"FOX", JumpRank::WordStarts, L"Fire [F][o][x]"},
      {L"Fire Fox", L"ff", JumpRank::WordStarts, L"[F]ire [F]ox"},
      {L"Fire Fox", L"fifo", JumpRank::WordStarts, L"[F][i]re [F][o]x"},
      {L"FireFox2", L"ff2", JumpRank::WordStarts, L"[F]ire[F]ox[2]"},
      {L"Foo Fobar", L"fob", JumpRank::WordStarts, L"Foo [F][o][b]ar"},
      {L"Fire Fox", L"ire", JumpRank::Contiguous, L"F[i][r][e] Fox"},
      {L"Fire Fox", L"rx", JumpRank::InOrder, L"Fi[r]e Fo[x]"},
      {L"Fire Fox", L"xf", JumpRank::InOrder, L""},
      {L"Fire Fox", L"foxx", JumpRank::InOrder, L""},
      {L"Fire Fox", L"  fox ", JumpRank::WordStarts, L"Fire [F][o][x]"},
      {L"Mon Caf\u00E9", L"cafe", JumpRank::WordStarts, L"Mon [C][a][f][\u00E9]"},
      {L"\u041F\u043E\u0447\u0442\u0430", L"\u043F\u043E", JumpRank::Prefix,
       L"[\u041F][\u043E]\u0447\u0442\u0430"},
      {L"-a", L"a", JumpRank::WordStarts, L"-[a]"},
      {L"", L"a", JumpRank::Prefix, L""},
  };
  for (const Case& c : cases) EXPECT_EQ(highlight(c.caption, c.query, c.rank), c.shown) << c.query;
}

TEST(JumpTo, OrdersByKindThenRankThenStartsThenCaption) {
  const JumpTo box = boxOf({{{}, L"unmapped", 99},
                            {{}, L"The Map", 1},
                            {{}, L"maple", 0},
                            {{}, L"Map", 0},
                            {{}, L"mapper", 3},
                            {{}, L"m a p", 0},
                            {{}, L"nothing", 50},
                            {{}, L"my tap", 7}});
  std::vector<int> slots;
  for (const JumpMatch& m : box.find(L"map")) slots.push_back(box.target(m).shortcut.index);
  EXPECT_THAT(slots, ElementsAre(4, 3, 2, 1, 5, 0, 7));

  const JumpTo all = boxOf(
      {{{{}, {1}, L"map.txt"}, L"map.txt", 0}, {{{}, {1}, L""}, L"Maps", 0}, {{}, L"unmapped", 0}});
  std::vector<JumpKind> kinds;
  for (const JumpMatch& m : all.find(L"map")) kinds.push_back(m.kind);
  EXPECT_THAT(kinds, ElementsAre(JumpKind::Shortcut, JumpKind::Container, JumpKind::File));
}

TEST(JumpTo, FindsNothingForNothing) {
  const JumpTo box = boxOf({{{}, L"a b", 0}});
  EXPECT_THAT(box.find(L""), IsEmpty());
  EXPECT_THAT(box.find(L"   "), IsEmpty());
  EXPECT_THAT(JumpTo{}.find(L"a"), IsEmpty());
}

TEST(JumpTo, HostileCaptionsAndQueriesStayBounded) {
  std::wstring steps;
  for (int i = 0; i < 50000; ++i) steps += L"a ";
  const JumpTo box = boxOf({{{}, steps, 0}, {{}, std::wstring(50000, L'a') + L"b", 0}});
  EXPECT_THAT(box.find(std::wstring(60, L'a') + L"b"), IsEmpty());
  const std::wstring query(100000, L'a');
  for (const JumpMatch& m : box.find(query))
    for (const std::size_t at : box.highlighted(m, query)) EXPECT_LT(at, steps.size());
}

}  // namespace
}  // namespace varnowick
