#include <gtest/gtest.h>

#include "tests/gridcore/control/grid_desk.h"

namespace {

using GridSelection = lorv_test::GridDesk;
using lorv_test::Notes;
using Cell = CBCGPGridItemID;
using Range = CBCGPGridRange;

}  // namespace

TEST_F(GridSelection, ReportsTheOldOneThenTheNew) {
  Fill(3, 3);
  grid->SetCurSel({0, 0});
  EXPECT_EQ(grid->Taken(), (Notes{"choosing 0,0", "chosen 0,0"}));
  grid->SetCurSel({1, 2});
  EXPECT_EQ(grid->Taken(), (Notes{"leaving 0,0", "left 0,0", "choosing 1,2", "chosen 1,2"}));
  EXPECT_EQ(grid->GetCurSelItem(), At(1, 2));
  EXPECT_EQ(grid->GetCurSel(), grid->GetRow(1));
}

TEST_F(GridSelection, CellThatAloneIsSelectedIsSilent) {
  Fill(3, 3);
  Choose(1, 1);
  EXPECT_TRUE(grid->SetCurSel({1, 1}));
  EXPECT_EQ(grid->Taken(), Notes{});
}

TEST_F(GridSelection, NullIdClears) {
  Fill(3, 3);
  Choose(1, 1);
  EXPECT_TRUE(grid->SetCurSel(Cell(), lorv::kSelectClear, FALSE));
  EXPECT_EQ(grid->Taken(), (Notes{"leaving 1,1", "left 1,1"}));
  EXPECT_TRUE(grid->GetCurSelItemID().IsNull());
  EXPECT_TRUE(grid->GetSelection().empty());
}

TEST_F(GridSelection, AddedCellBecomesCurrent) {
  Fill(3, 3);
  Choose(0, 0);
  grid->SetCurSel({2, 2}, lorv::kSelectAdd);
  EXPECT_EQ(grid->Taken(), (Notes{"choosing 2,2", "chosen 2,2"}));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 2));
  EXPECT_TRUE(grid->IsItemSelected({0, 0}));
  EXPECT_EQ(grid->GetSelection().size(), 2U);
}

TEST_F(GridSelection, TwoCornersMakeARange) {
  Fill(4, 4);
  grid->SetCurSel({2, 3}, lorv::kSelectFirstCorner, FALSE);
  grid->SetCurSel({0, 1}, lorv::kSelectOppositeCorner, FALSE);
  EXPECT_EQ(grid->GetSelection(), (std::vector<Range>{{1, 0, 3, 2}}));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 1));
  std::vector<CBCGPGridItem*> items;
  EXPECT_EQ(grid->GetSelectedItems(items), 9);
}

TEST_F(GridSelection, RowAndColumn) {
  Fill(3, 3);
  grid->SetColumnVisible(0, FALSE);
  grid->SetCurSel(grid->GetRow(1));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, 1));
  EXPECT_TRUE(grid->IsRowSelected(1, TRUE));
  EXPECT_FALSE(grid->IsRowSelected(0));
  std::vector<CBCGPGridItem*> items;
  EXPECT_EQ(grid->GetSelectedItems(items), 2);
  grid->SelectColumn(2);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 2));
  EXPECT_TRUE(grid->IsColumnSelected(2));
  EXPECT_TRUE(grid->IsRowSelected(1));
  EXPECT_FALSE(grid->IsRowSelected(1, TRUE));
  grid->SetCurSel(static_cast<CBCGPGridRow*>(nullptr));
  EXPECT_TRUE(grid->GetCurSelItemID().IsNull());
  EXPECT_FALSE(grid->SelectRow(7));
  EXPECT_FALSE(grid->SelectColumn(-1));
}

TEST_F(GridSelection, HandlerMayRemoveTheRowThatIsBeingChosen) {
  Fill(3, 3);
  Choose(0, 0);
  grid->on = [this](const std::string& what) {
    if (what == "left 0,0") grid->RemoveAll();
  };
  EXPECT_FALSE(grid->SetCurSel({2, 2}));
  EXPECT_TRUE(grid->GetCurSelItemID().IsNull());
}

TEST_F(GridSelection, HandlerMayEndTheGrid) {
  for (const char* at : {"leaving 0,0", "left 0,0", "choosing 1,1", "chosen 1,1"}) {
    grid = std::make_unique<lorv_test::NotingGrid>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    Fill(3, 3);
    Choose(0, 0);
    grid->on = [&](const std::string& what) {
      if (what == at) grid.reset();
    };
    grid->SetCurSel({1, 1});
    EXPECT_EQ(grid, nullptr) << at;
  }
}

TEST_F(GridSelection, ArrowsMoveAndStayAtTheEdges) {
  Fill(3, 3);
  Choose(1, 1);
  const std::pair<int, Cell> steps[] = {{VK_RIGHT, {1, 2}}, {VK_RIGHT, {1, 2}}, {VK_UP, {0, 2}},
                                        {VK_UP, {0, 2}},    {VK_LEFT, {0, 1}},  {VK_HOME, {0, 0}},
                                        {VK_LEFT, {0, 0}},  {VK_DOWN, {1, 0}},  {VK_END, {1, 2}},
                                        {VK_NEXT, {2, 2}},  {VK_DOWN, {2, 2}},  {VK_PRIOR, {0, 2}}};
  for (const auto& [key, cell] : steps) {
    Key(key);
    EXPECT_EQ(grid->GetCurSelItemID(), cell) << key;
  }
}

TEST_F(GridSelection, ArrowsPassHiddenColumnsAndRows) {
  Fill(4, 3);
  grid->SetColumnVisible(1, FALSE);
  grid->leaves_out_odd_rows = true;
  grid->AdjustLayout();
  Choose(0, 0);
  Key(VK_RIGHT);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 2));
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 2));
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 2));
}

TEST_F(GridSelection, FirstKeyWithNothingCurrentChoosesTheFirstCell) {
  Fill(2, 2);
  grid->SetFocus();
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 0));
}

TEST_F(GridSelection, ArrowsPassMergedCellsAsOne) {
  Fill(3, 4);
  grid->MergeRange({1, 0, 2, 1});
  Choose(0, 0);
  Key(VK_RIGHT);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 1));
  Key(VK_RIGHT);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 3));
  Key(VK_LEFT);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(0, 1));
  Key(VK_DOWN);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 1));
}

TEST_F(GridSelection, ShiftDrawsTheRangeOut) {
  Fill(4, 4);
  Choose(1, 1);
  desktop.PressWith(VK_SHIFT, VK_RIGHT);
  Run();
  desktop.PressWith(VK_SHIFT, VK_DOWN);
  Run();
  EXPECT_EQ(grid->GetSelection(), (std::vector<Range>{{1, 1, 2, 2}}));
  desktop.PressWith(VK_SHIFT, VK_LEFT);
  Run();
  desktop.PressWith(VK_SHIFT, VK_LEFT);
  Run();
  EXPECT_EQ(grid->GetSelection(), (std::vector<Range>{{0, 1, 1, 2}}));
}

TEST_F(GridSelection, ClickChoosesShiftExtendsCtrlAdds) {
  Fill(5, 4);
  ClickOn(1, 1);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, 1));
  desktop.KeyDown(VK_SHIFT);
  ClickOn(3, 2);
  desktop.KeyUp(VK_SHIFT);
  Run();
  EXPECT_EQ(grid->GetSelection(), (std::vector<Range>{{1, 1, 2, 3}}));
  desktop.KeyDown(VK_CONTROL);
  ClickOn(0, 0);
  desktop.KeyUp(VK_CONTROL);
  Run();
  EXPECT_EQ(grid->GetSelection().size(), 2U);
  EXPECT_TRUE(grid->IsItemSelected({0, 0}));
}

TEST_F(GridSelection, DragDrawsARangeAndEndsWithTheButton) {
  Fill(5, 4);
  desktop.MoveMouse(Centre(1, 0));
  desktop.MouseDown();
  desktop.MoveMouse(Centre(3, 2));
  Run();
  EXPECT_EQ(grid->GetSelection(), (std::vector<Range>{{0, 1, 2, 3}}));
  desktop.MouseUp();
  desktop.MoveMouse(Centre(0, 0));
  Run();
  EXPECT_EQ(grid->GetSelection(), (std::vector<Range>{{0, 1, 2, 3}}));
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
}
