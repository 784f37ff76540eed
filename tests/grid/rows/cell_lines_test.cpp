#include "grid/rows/cell_lines.h"

#include <gtest/gtest.h>

#include <limits>

using lorv::CellLines;
using lorv::RowLines;

namespace {

// Each unit is 10 pixels wide.
int TenEach(const CString& text) {
  return text.GetLength() * 10;
}

int Lines(LPCTSTR text, int width) {
  return CellLines(text, width, TenEach);
}

}  // namespace

TEST(CellLines, HeaderExamples) {
  EXPECT_EQ(CellLines(CString(_T('x'), 50), 100, TenEach), 5);
  EXPECT_EQ(RowLines(5, 3, 1), 3);
  EXPECT_EQ(RowLines(1, 2, 4), 4);
}

TEST(CellLines, EachStartedLineCounts) {
  EXPECT_EQ(Lines(_T("0123456789"), 100), 1);
  EXPECT_EQ(Lines(_T("0123456789a"), 100), 2);
  EXPECT_EQ(Lines(_T("0"), 1), 10);
}

TEST(CellLines, BreaksAreTwoCharactersAndNoLineFeed) {
  EXPECT_EQ(Lines(_T("ab\\ncd"), 100), 2);
  EXPECT_EQ(Lines(_T("ab\ncd"), 100), 1);
  EXPECT_EQ(Lines(_T("ab\\n\\ncd"), 100), 2) << "an empty piece needs no line";
  EXPECT_EQ(Lines(_T("0123456789a\\nb"), 100), 3);
}

TEST(CellLines, NothingNeedsNoLine) {
  EXPECT_EQ(Lines(_T(""), 100), 0);
  EXPECT_EQ(Lines(_T("\\n"), 100), 0);
}

TEST(CellLines, ACellWithoutWidthCountsOne) {
  EXPECT_EQ(Lines(_T("abc\\ndef"), 0), 1);
  EXPECT_EQ(Lines(_T(""), -5), 1);
}

TEST(CellLines, HugeTextsStayWithinTheNumbersOfAnInt) {
  const auto huge = [](const CString&) { return std::numeric_limits<int>::max(); };
  EXPECT_EQ(CellLines(_T("a\\nb"), 1, huge), std::numeric_limits<int>::max());
}

TEST(CellLines, TheLeastCountsForMoreThanTheMost) {
  EXPECT_EQ(RowLines(0, 1, 1), 1);
  EXPECT_EQ(RowLines(-3, 5, 1), 1);
  EXPECT_EQ(RowLines(5, 2, 4), 4);
  EXPECT_EQ(RowLines(5, 9, 4), 5);
}
