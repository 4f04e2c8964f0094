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
  using enum JumpRank;
  const struct {
    const wchar_t *caption, *query;
    JumpRank rank;
    const wchar_t* shown;
  } cases[] = {
      {L"Fire Fox", L"fir", Prefix, L"[F][i][r]e Fox"},
      {L"Fire Fox", L"fire f", Prefix, L"[F][i][r][e][ ][F]ox"},
      {L"Fire Fox", L"FOX", WordStarts, L"Fire [F][o][x]"},
      {L"Fire Fox", L"ff", WordStarts, L"[F]ire [F]ox"},
      {L"Fire Fox", L"fifo", WordStarts, L"[F][i]re [F][o]x"},
      {L"FireFox2", L"ff2", WordStarts, L"[F]ire[F]ox[2]"},
      {L"Foo Fobar", L"fob", WordStarts, L"Foo [F][o][b]ar"},
      {L"Fire Fox", L"ire", Contiguous, L"F[i][r][e] Fox"},
      {L"Fire Fox", L"rx", InOrder, L"Fi[r]e Fo[x]"},
      {L"Fire Fox", L"xf", InOrder, L""},
      {L"Fire Fox", L"foxx", InOrder, L""},
      {L"Fire Fox", L"  fox ", WordStarts, L"Fire [F][o][x]"},
      {L"Mon Caf\u00E9", L"cafe", WordStarts, L"Mon [C][a][f][\u00E9]"},
      {L"\u041F\u043E\u0447\u0442\u0430", L"\u043F\u043E", Prefix,
       L"[\u041F][\u043E]\u0447\u0442\u0430"},
      {L"-a", L"a", WordStarts, L"-[a]"},
      {L"a\u2013b", L"b", WordStarts, L"a\u2013[b]"},
      {L"a\u00A0b", L"b", WordStarts, L"a\u00A0[b]"},
      {L"a\u3000b", L"b", WordStarts, L"a\u3000[b]"},
      {L"a\u00C0b", L"b", Contiguous, L"a\u00C0[b]"},
      {L"\u0401\u042F\u0391", L"\u0451\u044F\u03B1", Prefix, L"[\u0401][\u042F][\u0391]"},
      {L"", L"a", Prefix, L""},
  };
  for (const auto& c : cases) EXPECT_EQ(highlight(c.caption, c.query, c.rank), c.shown) << c.query;
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

TEST(JumpTo, NothingAndTooMuchAreFoundSoon) {
  for (const wchar_t* nothing : {L"", L"   "})
    EXPECT_THAT(boxOf({{{}, L"a b", 0}}).find(nothing), IsEmpty());
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
