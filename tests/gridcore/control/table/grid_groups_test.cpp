#include <random>

#include "tests/gridcore/control/grid_desk.h"

namespace {

class GridGroups : public lorv_test::GridDesk {
 protected:
  void Table(const std::vector<std::pair<CString, CString>>& rows) {
    grid->InsertColumn(0, _T("grade"), 80);
    grid->InsertColumn(1, _T("name"), 80);
    for (const auto& row : rows) Add(row.first, row.second);
    grid->AdjustLayout();
  }
  int Add(const CString& grade, const CString& name) {
    const int row = grid->AddRow(FALSE);
    At(row, 0)->SetValue(_variant_t(grade));
    At(row, 1)->SetValue(_variant_t(name));
    return row;
  }
  void Usual() {
    Table({{_T("C35"), _T("a")}, {_T("C30"), _T("b")}, {_T("C35"), _T("c")}, {_T("C30"), _T("d")}});
  }
  // What stands on the screen from above: groups by their texts, rows by their names.
  std::string Shown() const {
    std::string text;
    const CRect list = grid->GetListRect();
    int last = -1;
    for (int y = static_cast<int>(list.top); y < list.bottom; ++y) {
      const int id = grid->HitTestRow({static_cast<int>(list.left) + 5, y});
      if (id < 0 || id == last) continue;
      last = id;
      const CBCGPGridRow* row = grid->GetRow(id);
      EXPECT_EQ(row->GetRowId(), id);
      text += text.empty() ? "" : " ";
      if (const auto* group = dynamic_cast<const lorv::GroupRow*>(row))
        text += "[" + group->GetValue().ToUtf8() + "]";
      else
        text += row->GetItem(1)->FormatItem().ToUtf8();
    }
    return text;
  }
  CPoint BoxOf(int group) const {
    const CRect row = grid->GetRowRect(grid->GetRowCount() + group);
    const int step = grid->GetHierarchyLevelOffset();
    const int level = grid->GetRowsOfGroup(*grid->GetGroupRow(group)).level;
    return On(*grid, static_cast<int>(row.left) + level * step + step / 2,
              static_cast<int>(row.CenterPoint().y));
  }
};

}  // namespace

TEST_F(GridGroups, RowsStandUnderTheirValue) {
  Usual();
  EXPECT_FALSE(grid->IsGrouping());
  grid->InsertGroupColumn(0, 0);
  EXPECT_TRUE(grid->IsGrouping());
  EXPECT_EQ(Shown(), "[C30] b d [C35] a c");
  EXPECT_EQ(grid->GetRowCount(), 4);
  EXPECT_EQ(grid->GetGroupRowCount(), 2);
  EXPECT_EQ(grid->GetTerminalRow(2)->GetItem(1)->FormatItem(), CString(_T("a")));
  EXPECT_EQ(grid->GetTerminalRow(4), nullptr);
  EXPECT_EQ(grid->GetRow(4), grid->GetGroupRow(0));
  EXPECT_EQ(grid->GetRow(5), grid->GetGroupRow(1));
  EXPECT_EQ(grid->GetRow(6), nullptr);
  EXPECT_EQ(grid->GetGroupRow(1)->GetRowId(), 5);
  const auto rows = grid->GetRowsOfGroup(*grid->GetGroupRow(1));
  EXPECT_EQ(rows.first, 2);
  EXPECT_EQ(rows.end, 4);
  const auto* group = dynamic_cast<const lorv::GroupRow*>(grid->GetGroupRow(0));
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group->GetName(), CString(_T("grade")));
  EXPECT_EQ(group->GetColumn(), 0);
}

TEST_F(GridGroups, StandWithinOneAnother) {
  Table({{_T("C35"), _T("b")}, {_T("C30"), _T("a")}, {_T("C35"), _T("a")}, {_T("C35"), _T("a")}});
  grid->InsertGroupColumn(0, 0);
  grid->InsertGroupColumn(1, 1);
  EXPECT_EQ(Shown(), "[C30] [a] a [C35] [a] a a [b] b");
  grid->RemoveGroupColumn(0);
  EXPECT_EQ(Shown(), "[a] a a a [b] b");
  grid->RemoveGroupColumn(0);
  EXPECT_EQ(Shown(), "a a a b");
  EXPECT_FALSE(grid->IsGrouping());
  EXPECT_EQ(grid->GetGroupRowCount(), 0);
}

TEST_F(GridGroups, BadColumnsArePassedOver) {
  Usual();
  for (const int column : {-1, 2}) grid->InsertGroupColumn(0, column);
  EXPECT_FALSE(grid->IsGrouping());
  grid->InsertGroupColumn(99, 0);
  grid->InsertGroupColumn(0, 0);
  EXPECT_EQ(grid->GetGroupColumnCount(), 1);
  EXPECT_EQ(grid->GetGroupColumn(0), 0);
  EXPECT_EQ(grid->GetGroupColumn(1), -1);
  grid->RemoveGroupColumn(1);
  grid->RemoveGroupColumn(-1);
  EXPECT_TRUE(grid->IsGrouping());
}

TEST_F(GridGroups, SortingWorksWithinThem) {
  Usual();
  grid->InsertGroupColumn(0, 0);
  grid->Sort(1, FALSE);
  EXPECT_EQ(Shown(), "[C30] d b [C35] c a");
}

TEST_F(GridGroups, TheBoxCollapsesAndExpands) {
  Usual();
  grid->InsertGroupColumn(0, 0);
  desktop.Click(BoxOf(0));
  Run();
  EXPECT_EQ(Shown(), "[C30] [C35] a c");
  EXPECT_FALSE(grid->GetGroupRow(0)->IsExpanded());
  // Grouped anew they stay as they are.
  grid->Sort(1, FALSE);
  EXPECT_EQ(Shown(), "[C30] [C35] c a");
  desktop.Click(BoxOf(0));
  Run();
  EXPECT_EQ(Shown(), "[C30] d b [C35] c a");
}

TEST_F(GridGroups, KeysPassOverThem) {
  Usual();
  grid->InsertGroupColumn(0, 0);
  Choose(1, 1);
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(2, 1));
  Key(VK_UP);
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(1, 1));
  grid->GetGroupRow(0)->Expand(FALSE);
  Choose(3, 1);
  Key(VK_UP);
  Key(VK_UP);
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(2, 1));
  for (const int key : {VK_PRIOR, VK_NEXT, VK_HOME, VK_END}) Key(key);
  EXPECT_NE(grid->GetCurSelItem(), nullptr);
}

TEST_F(GridGroups, TheirLinesAreNoCells) {
  Usual();
  grid->InsertGroupColumn(0, 0);
  const CPoint on = grid->GetRowRect(4).CenterPoint();
  CBCGPGridItemID id;
  CRect rect;
  EXPECT_FALSE(grid->HitTest(on, id, rect));
  EXPECT_EQ(grid->HitTestArea(on), CBCGPGridCtrl::clickValue);
  Choose(0, 0);
  desktop.Click(On(*grid, static_cast<int>(on.x), static_cast<int>(on.y)));
  Run();
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(0, 0));
  EXPECT_EQ(grid->GetItemRect({4, 0}).IsRectEmpty(), TRUE);
}

TEST_F(GridGroups, CellsBeginBehindTheRoomForBoxes) {
  Usual();
  const int left = static_cast<int>(grid->GetItemRect({0, 0}).left);
  grid->InsertGroupColumn(0, 0);
  const int step = grid->GetHierarchyLevelOffset();
  EXPECT_EQ(grid->GetHierarchyOffset(), step);
  EXPECT_EQ(grid->GetItemRect({0, 0}).left, left + step);
  const CPoint header(left + step + 5, static_cast<int>(grid->GetHeaderRect().CenterPoint().y));
  EXPECT_EQ(grid->HitTestHeader(header), 0);
  EXPECT_EQ(grid->HitTestHeader({left + step + 80, static_cast<int>(header.y)}), 1);
  EXPECT_EQ(grid->GetHorzScrollTotal(), 160 + step);
}

TEST_F(GridGroups, RowsJoinThemAndTheLastTakesItsGroupAlong) {
  Usual();
  grid->InsertGroupColumn(0, 0);
  Add(_T("C40"), _T("e"));
  grid->AdjustLayout();
  EXPECT_EQ(Shown(), "[C30] b d [C35] a c e");
  grid->Regroup();
  EXPECT_EQ(Shown(), "[C30] b d [C35] a c [C40] e");
  EXPECT_EQ(grid->RemoveRow(1, FALSE), 1);
  EXPECT_EQ(grid->RemoveRow(0, FALSE), 1);
  EXPECT_EQ(grid->GetGroupRowCount(), 2);
  grid->AdjustLayout();
  EXPECT_EQ(Shown(), "[C35] a c [C40] e");
  EXPECT_EQ(grid->GetGroupRow(0)->GetRowId(), 3);
  grid->DeleteColumn(0);
  EXPECT_FALSE(grid->IsGrouping());
  EXPECT_EQ(grid->GetGroupRowCount(), 0);
  grid->RemoveAll();
  EXPECT_EQ(grid->GetRowCount(), 0);
}

TEST_F(GridGroups, WithoutRowsInSightTheyAreHidden) {
  Usual();
  grid->InsertGroupColumn(0, 0);
  grid->leaves_out_odd_rows = true;
  grid->AdjustLayout();
  EXPECT_EQ(Shown(), "[C30] b [C35] a");
  grid->InsertGroupColumn(1, 1);
  EXPECT_EQ(Shown(), "[C30] [b] b [C35] [a] a");
}

TEST_F(GridGroups, NestedRowsStayWithTheirRow) {
  Usual();
  grid->GetRow(0)->AddSubItem(grid->CreateRow(2));
  At(1, 1)->SetValue(_variant_t(_T("x")));
  grid->InsertGroupColumn(0, 0);
  EXPECT_EQ(Shown(), "[C30] b d [C35] a x c");
  EXPECT_EQ(grid->GetHierarchyOffset(), 2 * grid->GetHierarchyLevelOffset());
}

// What is shown must be the rows in order under the texts of their columns, whatever was done.
TEST_F(GridGroups, RandomStepsFollowAPlainModel) {
  Table({});
  std::mt19937 random(5);
  const auto number = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
  for (int step = 0; step < 400; ++step) {
    CString grade;
    grade.Format(_T("g%d"), number(3));
    CString name;
    name.Format(_T("n%d"), step);
    const int what = number(6);
    if (what <= 1) Add(grade, name);
    if (what == 2 && grid->GetRowCount() > 6) grid->RemoveRow(number(grid->GetRowCount()), FALSE);
    if (what == 3) grid->InsertGroupColumn(0, number(2));
    if (what == 4) grid->RemoveGroupColumn(number(2));
    if (what == 5 && grid->GetRowCount() > 0) At(number(grid->GetRowCount()), 0)->SetValue(_variant_t(grade));
    grid->Regroup();
    std::string wanted;
    CString before[2];
    bool begun = false;
    for (int row = 0; row < grid->GetRowCount(); ++row) {
      bool outer = !begun;
      for (int level = 0; level < grid->GetGroupColumnCount(); ++level) {
        const CString text = At(row, grid->GetGroupColumn(level))->FormatItem();
        outer = outer || text != before[level];
        if (outer) wanted += (wanted.empty() ? "[" : " [") + text.ToUtf8() + "]";
        before[level] = text;
      }
      begun = true;
      wanted += (wanted.empty() ? "" : " ") + At(row, 1)->FormatItem().ToUtf8();
    }
    const std::string shown = Shown();
    ASSERT_EQ(shown, wanted.substr(0, shown.size())) << step;
  }
}
