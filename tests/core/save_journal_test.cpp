#include "core/save_journal.h"

#include <gtest/gtest.h>

namespace varnowick {
namespace {

const SavedState kState{true, "106\r\nmain", {"", std::string("a\0\r\nEND\r\n", 9), "third"}};

TEST(SaveJournal, SurvivesWhole) {
  EXPECT_EQ(parseJournal(renderJournal(kState, 7))->state, kState);
  EXPECT_EQ(parseJournal(renderJournal({}, 1'000'000'000'000))->number, 1'000'000'000'000U);
}

TEST(SaveJournal, AnythingLessIsDropped) {
  const std::string whole = renderJournal(kState, 7);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(parseJournal(whole.substr(0, size))) << size;
    // As a torn write leaves it: the right length with nothing in a part.
    std::string torn = whole;
    torn[size] = static_cast<char>(~torn[size]);
    EXPECT_FALSE(parseJournal(torn)) << size;
  }
  EXPECT_FALSE(parseJournal(whole + "\r\n"));
}

TEST(SaveJournal, WritesToNoOtherFile) {
  std::string elsewhere = renderJournal({false, "x", {"y"}}, 1);
  elsewhere.replace(elsewhere.find("0.con"), 5, "..\\..\\evil.exe");
  EXPECT_FALSE(parseJournal(elsewhere));
  const std::string head =
      renderJournal({}, 1).substr(0, renderJournal({}, 1).find("\r\n0\r\n") + 2);
  EXPECT_FALSE(parseJournal(head + "99999999999999999999\r\n"));
  EXPECT_FALSE(parseJournal(head + "1\r\n\\Varnowick.ini\r\n18446744073709551615 0\r\nx\r\n"));
}

}  // namespace
}  // namespace varnowick
