#include "gridcore/geometry/shown_lines.h"

#include <gtest/gtest.h>

namespace {

// The rows 0, 1 under the group 3, the row 2 under the group 4; lines of 20, groups of 30.
lorv::ShownLines Grouped() {
  lorv::ShownLines lines;
  lines.StartOver({{0, 2}, {2, 3}});
  lines.Append(1, 30);
  lines.Append(2, 20);
  lines.Append(1, 30);
  lines.Append(1, 20);
  return lines;
}

}  // namespace

TEST(ShownLines, HeaderExample) {
  lorv::ShownLines lines;
  lines.Append(2, 20);
  EXPECT_EQ(lines.LineAt(20), 1);
}

TEST(ShownLines, GroupsHaveTheNumbersBehindTheRows) {
  const lorv::ShownLines lines = Grouped();
  EXPECT_EQ(lines.RowCount(), 3);
  EXPECT_EQ(lines.Total(), 120);
  const int offsets[] = {30, 50, 100, 0, 70};
  for (int id = 0; id < 5; ++id) {
    EXPECT_EQ(lines.OffsetOf(id), offsets[id]) << id;
    EXPECT_EQ(lines.SizeOf(id), id < 3 ? 20 : 30) << id;
    EXPECT_EQ(lines.LineAt(offsets[id]), id);
  }
  EXPECT_EQ(lines.SizeOf(-1), 0);
  EXPECT_EQ(lines.SizeOf(5), 0);
  EXPECT_EQ(lines.LineAt(120), -1);
}

TEST(ShownLines, WalksOverWhatIsShown) {
  lorv::ShownLines lines = Grouped();
  lines.SetSize(1, 0);
  EXPECT_EQ(lines.NextShown(3), 0);
  EXPECT_EQ(lines.NextShown(0), 4);
  EXPECT_EQ(lines.NextShown(1), 4);
  EXPECT_EQ(lines.NextShown(2), -1);
  EXPECT_EQ(lines.PreviousShown(4), 0);
  EXPECT_EQ(lines.PreviousShown(3), -1);
}

TEST(ShownLines, RowsComeAndGo) {
  lorv::ShownLines lines = Grouped();
  lines.Insert(3, 5);
  EXPECT_EQ(lines.RowCount(), 4);
  EXPECT_EQ(lines.OffsetOf(3), 120);
  EXPECT_EQ(lines.OffsetOf(5), 70);
  std::vector<int> gone;
  lines.Remove(2, [&](int group) { gone.push_back(group); });
  EXPECT_EQ(gone, std::vector<int>{1});
  EXPECT_EQ(lines.RowCount(), 3);
  EXPECT_EQ(lines.Total(), 75);
  EXPECT_EQ(lines.OffsetOf(2), 70);
  lines.Remove(0, [&](int) { FAIL(); });
  EXPECT_EQ(lines.OffsetOf(0), 30);
  lines.Clear();
  EXPECT_EQ(lines.Total(), 0);
}
