#include "gridcore/rows/group_row.h"

#include "tests/gridcore/control/grid_desk.h"

namespace {

class GroupRows : public lorv_test::GridDesk {
 protected:
  // Three rows under two values.
  void Table() {
    grid->InsertColumn(0, _T("grade"), 80);
    for (LPCTSTR value : {_T("C35"), _T("C30"), _T("C35")})
      grid->GetRow(grid->AddRow(FALSE))->GetItem(0)->SetValue(_variant_t(value));
    grid->InsertGroupColumn(0, 0);
    Run();
  }
  const lorv::GroupRow& Group(int number) const {
    return dynamic_cast<const lorv::GroupRow&>(*grid->GetGroupRow(number));
  }
};

}  // namespace

TEST_F(GroupRows, TheLineHasNameValueAndNumberOfRows) {
  Table();
  EXPECT_EQ(Group(0).GetText(), _T("grade: C30 (1)"));
  EXPECT_EQ(Group(1).GetText(), _T("grade: C35 (2)"));
  EXPECT_EQ(Group(1).GetValueTooltip(), _T("grade: C35 (2)"));
  grid->RemoveRow(2);
  Run();
  EXPECT_EQ(Group(1).GetText(), _T("grade: C35 (1)")) << "a row less";
}

TEST_F(GroupRows, TheTextStandsBehindTheBox) {
  Table();
  const CRect line = grid->GetRowRect(grid->GetRowCount());
  const CRect text = Group(0).GetTooltipRect();
  EXPECT_EQ(text.top, line.top);
  EXPECT_EQ(text.right, line.right);
  EXPECT_GT(text.left, line.left);
  EXPECT_EQ(grid->HitTestArea(text.CenterPoint()), CBCGPGridCtrl::clickValue);
  EXPECT_TRUE(grid->GetGroupTextRect(*grid->GetRow(0)).IsRectEmpty()) << "no group";
}

TEST_F(GroupRows, WithoutAGridThereIsNothingButTheText) {
  const lorv::GroupRow row(0, _T("grade"), _T("C30"));
  EXPECT_EQ(row.GetText(), _T("grade: C30 (0)"));
  EXPECT_TRUE(row.GetTooltipRect().IsRectEmpty());
}
