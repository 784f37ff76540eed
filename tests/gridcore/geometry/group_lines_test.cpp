#include "gridcore/geometry/group_lines.h"

#include <gtest/gtest.h>

namespace {

// Rows 0 to 6; the groups {0..3} with {0..2} and {3} within, and {4..5} with {4..5} within; row 6 in none.
lorv::GroupLines Nested() {
  lorv::GroupLines lines;
  lines.Set(
      {{0, 4, 0, -1, true}, {0, 3, 1, 0, true}, {3, 4, 1, 0, true}, {4, 6, 0, -1, true}, {4, 6, 1, 3, true}});
  return lines;
}

}  // namespace

TEST(GroupLines, HeaderExample) {
  lorv::GroupLines lines;
  lines.Set({{0, 2}, {2, 3}});
  EXPECT_EQ(lines.LineOfRow(2), 4);
  EXPECT_EQ(lines.LineOfGroup(1), 3);
}

TEST(GroupLines, EachLineIsARowOrAGroup) {
  const lorv::GroupLines lines = Nested();
  const std::vector<int> wanted = {-1, -2, 0, 1, 2, -3, 3, -4, -5, 4, 5, 6};
  for (int line = 0; line < static_cast<int>(wanted.size()); ++line) {
    const int want = wanted[static_cast<std::size_t>(line)];
    const auto place = lines.PlaceOf(line);
    EXPECT_EQ(place.group, want < 0) << line;
    EXPECT_EQ(place.number, want < 0 ? -1 - want : want) << line;
    EXPECT_EQ(want < 0 ? lines.LineOfGroup(-1 - want) : lines.LineOfRow(want), line);
  }
}

TEST(GroupLines, KnowTheInnermostGroup) {
  const lorv::GroupLines lines = Nested();
  const std::vector<int> wanted = {1, 1, 1, 2, 4, 4, -1};
  for (int row = 0; row < 7; ++row)
    EXPECT_EQ(lines.GroupOf(row), wanted[static_cast<std::size_t>(row)]) << row;
}

TEST(GroupLines, CollapsedOnesHideWhatIsWithin) {
  lorv::GroupLines lines = Nested();
  lines.Expand(0, false);
  EXPECT_FALSE(lines.IsGroupHidden(0));
  EXPECT_TRUE(lines.IsGroupHidden(1));
  EXPECT_TRUE(lines.IsRowHidden(0));
  EXPECT_TRUE(lines.IsRowHidden(3));
  EXPECT_FALSE(lines.IsRowHidden(4));
  EXPECT_FALSE(lines.IsRowHidden(6));
  lines.Expand(0, true);
  lines.Expand(2, false);
  EXPECT_FALSE(lines.IsRowHidden(0));
  EXPECT_TRUE(lines.IsRowHidden(3));
}

TEST(GroupLines, RowsJoinTheGroupTheyStandIn) {
  lorv::GroupLines lines = Nested();
  lines.RowInserted(3);
  EXPECT_EQ(lines.At(0).end, 5);
  EXPECT_EQ(lines.At(1).end, 3);
  EXPECT_EQ(lines.At(2).first, 3);
  EXPECT_EQ(lines.At(2).end, 5);
  EXPECT_EQ(lines.At(3).first, 5);
  lines.RowInserted(7);
  EXPECT_EQ(lines.At(4).end, 7);
}

TEST(GroupLines, GroupsWithoutRowsAreErased) {
  lorv::GroupLines lines = Nested();
  lines.RowRemoved(3);
  EXPECT_EQ(lines.LastWithoutRows(), 2);
  lines.Erase(2);
  EXPECT_EQ(lines.LastWithoutRows(), -1);
  EXPECT_EQ(lines.Count(), 4);
  EXPECT_EQ(lines.At(3).parent, 2);
  EXPECT_EQ(lines.At(3).first, 3);
  EXPECT_EQ(lines.GroupOf(4), 3);
}
