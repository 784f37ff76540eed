#include "grid/events/event_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

std::string Bytes(int id) {
  const lorv::EventKind* kind = lorv::FindEvent(id);
  return kind == nullptr ? "none" : std::string(kind->Types());
}

}  // namespace

TEST(EventTable, HeaderExample) {
  EXPECT_EQ(lorv::FindEvent(10)->name, "OnHeadClickGrid");
}

TEST(EventTable, NumbersOccurOnce) {
  std::set<int> ids;
  for (const lorv::EventKind& kind : lorv::kEventKinds) EXPECT_TRUE(ids.insert(kind.id).second) << kind.id;
  EXPECT_EQ(ids.size(), 36U);
}

TEST(EventTable, NumbersWithoutAnEventHaveNone) {
  for (const int id : {0, 2, 3, 6, 7, 12, 14, 17, 24, 27, 31, 35, 76, -599, -608})
    EXPECT_EQ(lorv::FindEvent(id), nullptr) << id;
}

TEST(EventTable, EventsWithoutArguments) {
  for (const int id : {-600, -601, 4, 16, 38, 75}) EXPECT_EQ(Bytes(id), "") << id;
}

TEST(EventTable, MouseAndKeysGoByShortAndLongNumbers) {
  for (const int id : {-605, -606, -607}) EXPECT_EQ(Bytes(id), "\x02\x02\x03\x03") << id;
  EXPECT_EQ(Bytes(-602), "\x42\x02");
  EXPECT_EQ(Bytes(-603), "\x42");
  EXPECT_EQ(Bytes(-604), "\x42\x02");
}

TEST(EventTable, ColumnsAreShortNumbers) {
  for (const int id : {1, 10, 25, 28, 29, 33, 34, 40}) EXPECT_EQ(Bytes(id), "\x02") << id;
}

TEST(EventTable, AnswersGoByPointer) {
  for (const int id : {8, 13, 15, 63}) EXPECT_EQ(Bytes(id), "\x42") << id;
  EXPECT_EQ(Bytes(5), "\x02\x4C\x42");
  EXPECT_EQ(Bytes(9), "\x02\x42");
  EXPECT_EQ(Bytes(11), "\x4C\x02");
  EXPECT_EQ(Bytes(26), "\x02\x02\x42");
  EXPECT_EQ(Bytes(30), "\x02\x4C\x4C");
  EXPECT_EQ(Bytes(32), "\x02\x4C\x02");
}

TEST(EventTable, StylesAndTipsCarryAnObject) {
  EXPECT_EQ(Bytes(36), "\x02\x02\x4C\x02\x09");
  EXPECT_EQ(Bytes(49), "\x02\x02\x03\x48\x0B\x09");
  EXPECT_EQ(Bytes(51), "\x02\x4C\x09");
}

TEST(EventTable, EventsThatNothingRaisesKeepTheirPlace) {
  EXPECT_EQ(Bytes(55), "\x03\x0C\x02\x02\x02\x02\x02\x02\x42");
  EXPECT_EQ(Bytes(57), "\x09\x43\x42\x42\x44\x44");
  EXPECT_EQ(Bytes(58), "\x09\x43\x42\x42\x44\x44\x42");
}
