#include "grid/gestures/cell_tip.h"

#include <gtest/gtest.h>

namespace {

const CRect kCell(100, 40, 170, 60);

lorv::CellTip Plan(LPCTSTR own, LPCTSTR given, int text_width) {
  return lorv::PlanCellTip(own, given, kCell, kCell.Width(), text_width, 16);
}

}  // namespace

TEST(CellTip, HeaderExamples) {
  const lorv::CellTip tip = lorv::PlanCellTip(_T("own"), {}, CRect(0, 0, 70, 20), 70, 100, 16);
  EXPECT_EQ(tip.rect, CRect(5, 25, 51, 47));
  EXPECT_TRUE(tip.multiline);
  EXPECT_TRUE(lorv::PlanCellTip(_T("own"), {}, CRect(0, 0, 101, 20), 101, 100, 16).text.IsEmpty());
}

TEST(CellTip, AsWideAsItsTextACellGetsOne) {
  EXPECT_EQ(Plan(_T("own"), _T(""), 70).text, _T("own"));
  EXPECT_TRUE(Plan(_T("own"), _T(""), 69).text.IsEmpty());
}

TEST(CellTip, LinesBeginWhereTheTextIsMoreThanTwentyPixelsWider) {
  EXPECT_FALSE(Plan(_T("own"), _T(""), 90).multiline);
  EXPECT_EQ(Plan(_T("own"), _T(""), 90).rect, CRect(105, 65, 175, 87));
  EXPECT_TRUE(Plan(_T("own"), _T(""), 91).multiline);
  EXPECT_EQ(Plan(_T("own"), _T(""), 91).rect, CRect(105, 65, 151, 87)) << "two thirds of 70";
}

TEST(CellTip, AGivenTextReplacesWhateverThereIs) {
  EXPECT_EQ(Plan(_T("own"), _T("given"), 10).text, _T("given"));
  EXPECT_EQ(Plan(_T("own"), _T("given"), 200).text, _T("given"));
  EXPECT_EQ(Plan(_T(""), _T("given"), 0).rect, CRect(105, 65, 175, 87));
  EXPECT_TRUE(Plan(_T(""), _T(""), 0).text.IsEmpty());
}
