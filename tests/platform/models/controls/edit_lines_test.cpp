#include "platform/models/controls/edit_lines.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using lorv::EditLines;

// The lines of a text without breaks of the width.
std::vector<int> StartsOf(const CString& text) {
  std::vector<int> starts = {0};
  for (int at = text.Find(_T("\r\n")); at >= 0; at = text.Find(_T("\r\n"), at + 2)) starts.push_back(at + 2);
  return starts;
}

}  // namespace

TEST(EditLines, HeaderExample) {
  const EditLines lines(_T("ab\r\nc"), {0, 4});
  EXPECT_EQ(lines.Of(3), 0);
  EXPECT_EQ(lines.Length(0), 2);
}

TEST(EditLines, PositionsOutsideBelongToTheNearerEnd) {
  const EditLines lines(_T("ab\r\nc"), {0, 4});
  EXPECT_EQ(lines.Of(-1), -1);
  EXPECT_EQ(lines.Of(0), 0);
  EXPECT_EQ(lines.Of(4), 1);
  EXPECT_EQ(lines.Of(99), 1);
}

TEST(EditLines, LinesThatAreNotHaveNoStartAndNoLength) {
  const EditLines lines(_T("ab\r\nc"), {0, 4});
  for (const int line : {-1, 2, 99}) {
    EXPECT_EQ(lines.Start(line), -1) << line;
    EXPECT_EQ(lines.Length(line), 0) << line;
    EXPECT_TRUE(lines.Text(line).IsEmpty()) << line;
  }
}

TEST(EditLines, ALineEndAtTheEndBeginsAnEmptyLine) {
  const EditLines lines(_T("a\r\n"), {0, 3});
  EXPECT_EQ(lines.Count(), 2);
  EXPECT_EQ(lines.Length(0), 1);
  EXPECT_EQ(lines.Length(1), 0);
  EXPECT_EQ(lines.Of(3), 1);
}

TEST(EditLines, AnEmptyTextIsOneLine) {
  const EditLines lines(CString(), {0});
  EXPECT_EQ(lines.Count(), 1);
  EXPECT_EQ(lines.Start(0), 0);
  EXPECT_EQ(lines.Length(0), 0);
  EXPECT_EQ(lines.Of(0), 0);
}

TEST(EditLines, ABreakOfTheWidthTakesNothingOffALine) {
  const EditLines lines(_T("abcdef\r\ngh"), {0, 3, 8});
  EXPECT_EQ(lines.Text(0), CString(_T("abc")));
  EXPECT_EQ(lines.Text(1), CString(_T("def")));
  EXPECT_EQ(lines.Text(2), CString(_T("gh")));
  EXPECT_FALSE(lines.EndsLine(3));
  EXPECT_TRUE(lines.EndsLine(8));
  EXPECT_FALSE(lines.EndsLine(0));
  // A line of one unit, in front of which nothing can be looked at.
  EXPECT_EQ(EditLines(_T("ab\r\nc"), {0, 1, 4}).Length(0), 1);
}

// Lines and ends put together are the text again, and every position is in the line that holds it.
TEST(EditLines, HoldTheWholeText) {
  std::mt19937 random(6);
  for (int round = 0; round < 2000; ++round) {
    CString text;
    const int pieces = static_cast<int>(random() % 8);
    for (int i = 0; i < pieces; ++i)
      text += random() % 3 == 0 ? CString(_T("\r\n")) : CString(_T('a'), static_cast<int>(random() % 4));
    const std::vector<int> starts = StartsOf(text);
    const EditLines lines(text, starts);
    CString joined;
    for (int line = 0; line < lines.Count(); ++line) {
      if (line != 0) joined += _T("\r\n");
      joined += lines.Text(line);
      const int behind = line + 1 < lines.Count() ? lines.Start(line + 1) : text.GetLength() + 1;
      for (int at = lines.Start(line); at < behind; ++at) ASSERT_EQ(lines.Of(at), line);
    }
    ASSERT_EQ(joined, text);
  }
}
