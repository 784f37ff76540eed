#include <gtest/gtest.h>

#include "tests/gridcore/control/grid_desk.h"
#include "tests/support/whole_number_limits.h"

namespace {

using lorv_test::GridDesk;
using lorv_test::Notes;
using Cell = CBCGPGridItemID;

// A cell of a class of its own, for columns that ask for it.
class OwnItem : public CBCGPGridItem {
  DECLARE_DYNCREATE(OwnItem)
};
IMPLEMENT_DYNCREATE(OwnItem, CBCGPGridItem)

using GridTable = GridDesk;

}  // namespace

TEST(GridControl, HeaderExampleWithoutAWindow) {
  CBCGPGridCtrl grid;
  grid.InsertColumn(0, _T("梁"), 80, -1, TRUE);
  EXPECT_EQ(grid.AddRow(TRUE), 0);
  EXPECT_EQ(grid.GetRowCount(), 1);
}

TEST_F(GridTable, HandlersOfAClearedRangeMayDoAnything) {
  const std::function<void()> deeds[] = {[this] { grid->RemoveAll(); }, [this] { grid->DeleteColumn(0); },
                                         [this] { grid.reset(); }};
  for (const auto& deed : deeds) {
    grid = std::make_unique<lorv_test::NotingGrid>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    Fill(3, 3);
    int heard = 0;
    grid->on = [&](const std::string& what) {
      if (what.rfind("changed", 0) == 0 && ++heard == 2) deed();
    };
    EXPECT_GE(grid->ClearRange({0, 0, 2, 2}, TRUE, TRUE, nullptr), 2);
    EXPECT_GE(heard, 2);
    if (grid != nullptr) grid->on = nullptr;
  }
}

TEST_F(GridTable, RowsKnowTheirNumbers) {
  Fill(3, 2);
  CBCGPGridRow* last = grid->GetRow(2);
  EXPECT_EQ(last->GetRowId(), 2);
  EXPECT_EQ(grid->InsertRowBefore(0, grid->CreateRow(2)), 0);
  EXPECT_EQ(last->GetRowId(), 3);
  EXPECT_EQ(grid->InsertRowAfter(3, grid->CreateRow(2)), 4);
  EXPECT_EQ(grid->InsertRowAfter(kMost, grid->CreateRow(2)), 5);
  EXPECT_EQ(grid->RemoveRow(0), 1);
  EXPECT_EQ(last->GetRowId(), 2);
  EXPECT_EQ(last->GetItem(1)->GetGridItemID(), Cell(2, 1));
}

TEST_F(GridTable, RefusesRowsOutside) {
  Fill(2, 1);
  for (const int at : {-1, kLeast}) {
    const std::unique_ptr<CBCGPGridRow> row(grid->CreateRow(1));
    EXPECT_EQ(grid->InsertRowBefore(at, row.get()), -1);
    EXPECT_EQ(grid->InsertRowAfter(at, row.get()), -1);
    EXPECT_EQ(grid->InsertRowBefore(2, row.get()), -1);
  }
  EXPECT_EQ(grid->AddRow(static_cast<CBCGPGridRow*>(nullptr), TRUE), -1);
  EXPECT_EQ(grid->AddRow(grid->GetRow(0), TRUE), -1);
  for (const int at : {-1, 2, kMost, kLeast}) {
    EXPECT_EQ(grid->RemoveRow(at), 0);
    EXPECT_EQ(grid->GetRow(at), nullptr);
    EXPECT_EQ(grid->GetGridItem({at, 0}), nullptr);
    EXPECT_EQ(grid->GetGridItem({0, at == 2 ? 1 : at}), nullptr);
    EXPECT_TRUE(grid->GetItemRect({at, at}).IsRectEmpty());
    EXPECT_TRUE(grid->GetRowRect(at).IsRectEmpty());
    EXPECT_FALSE(grid->SetCurSel({at, 0}));
  }
  EXPECT_EQ(grid->GetRowCount(), 2);
}

TEST_F(GridTable, ColumnsDecideTheClassOfNewCells) {
  grid->InsertColumn(0, _T("a"), 50);
  grid->InsertColumn(1, _T("b"), 50);
  grid->SetItemRTC(1, RUNTIME_CLASS(OwnItem));
  grid->AddRow(TRUE);
  EXPECT_FALSE(At(0, 0)->IsKindOf(RUNTIME_CLASS(OwnItem)));
  EXPECT_TRUE(At(0, 1)->IsKindOf(RUNTIME_CLASS(OwnItem)));
}

TEST_F(GridTable, ColumnThatGoesLeavesTheCells) {
  Fill(1, 3);
  EXPECT_TRUE(grid->DeleteColumn(1));
  EXPECT_EQ(grid->GetColumnCount(), 2);
  EXPECT_EQ(grid->GetRow(0)->GetItemCount(), 3);
  EXPECT_EQ(At(0, 1)->FormatItem(), _T("1"));
  EXPECT_EQ(At(0, 2), nullptr);
  EXPECT_FALSE(grid->DeleteColumn(2));
}

TEST_F(GridTable, CurrentCellGoesWithItsRow) {
  Fill(4, 2);
  Choose(2, 1);
  grid->RemoveRow(0);
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(1, 1));
  grid->InsertRowBefore(0, grid->CreateRow(2));
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 1));
  EXPECT_EQ(grid->Taken(), Notes{});
  grid->RemoveRow(2);
  EXPECT_TRUE(grid->GetCurSelItemID().IsNull());
  EXPECT_EQ(grid->GetCurSel(), nullptr);
  EXPECT_EQ(grid->GetCurSelItem(), nullptr);
}

TEST_F(GridTable, RowsGoTogether) {
  Fill(5, 1);
  std::vector<CBCGPGridItem*> items;
  std::vector<CBCGPGridRow*> rows;
  for (const int row : {1, 3, 3, 9}) grid->PrepareRemoveRow(row, items, rows);
  EXPECT_EQ(rows.size(), 2U);
  EXPECT_EQ(grid->DoRemoveRows(items, rows), 2);
  EXPECT_EQ(grid->GetRowCount(), 3);
  EXPECT_EQ(At(1, 0)->FormatItem(), _T("20"));
}

TEST_F(GridTable, ClearsLockedCellsToo) {
  Fill(2, 2);
  At(0, 0)->SetReadOnly();
  EXPECT_EQ(grid->ClearRange({0, 0, 9, 0}), 2);
  EXPECT_EQ(At(0, 0)->GetValue().vt, VT_EMPTY);
  EXPECT_EQ(At(1, 0)->FormatItem(), _T("10"));
  EXPECT_EQ(grid->ClearRange({}), 0);
}

namespace {

// Replaces the cells of every row by equal ones while two of them are compared.
class ReplacingGrid : public CBCGPGridCtrl {
 public:
  int CompareItems(const CBCGPGridItem* a, const CBCGPGridItem* b) const override {
    const int compared = CBCGPGridCtrl::CompareItems(a, b);
    if (++compared_ % 5 == 0)
      for (int row = 0; row < GetRowCount(); ++row)
        GetRow(row)->ReplaceItem(0, new CBCGPGridItem(GetRow(row)->CopyValue(0)), FALSE);
    return compared;
  }

 private:
  mutable int compared_ = 0;
};

}  // namespace

TEST_F(GridTable, SortsWhileACompareReplacesCells) {
  ReplacingGrid replacing;
  replacing.InsertColumn(0, _T("c"), 80);
  for (int row = 0; row < 40; ++row)
    replacing.GetRow(replacing.AddRow(FALSE))->GetItem(0)->SetValue(_variant_t(row * 7 % 40), FALSE);
  replacing.Sort(0);
  for (int row = 0; row < 40; ++row) ASSERT_EQ(static_cast<int>(replacing.GetRow(row)->CopyValue(0)), row);
}

TEST_F(GridTable, SortsNumbersBeforeTextsAndKeepsEqualsInOrder) {
  grid->InsertColumn(0, _T("a"), 50);
  grid->InsertColumn(1, _T("b"), 50);
  const _variant_t values[] = {_variant_t(_T("b")), _variant_t(10), _variant_t(9.5), _variant_t(_T("a")),
                               _variant_t(10)};
  for (int row = 0; row < 5; ++row) {
    grid->AddRow(FALSE);
    At(row, 0)->SetValue(values[row]);
    At(row, 1)->SetValue(_variant_t(row));
  }
  Choose(4, 0);
  const auto order = [&] {
    std::string text;
    for (int row = 0; row < 5; ++row) text += At(row, 1)->FormatItem().ToUtf8();
    return text;
  };
  grid->Sort(0);
  EXPECT_EQ(order(), "21430");
  EXPECT_TRUE(grid->IsSorting());
  EXPECT_EQ(grid->GetCurSelItemID(), Cell(2, 0));
  grid->Sort(0, FALSE);
  EXPECT_EQ(order(), "03142");
  EXPECT_FALSE(grid->IsSortedAscending());
  grid->Sort(9);
  EXPECT_EQ(grid->GetSortColumn(), 0);
}

TEST_F(GridTable, FilteredRowsTakeNoRoomAndKeepTheirNumbers) {
  Fill(4, 1);
  const int height = grid->GetRowHeight();
  grid->leaves_out_odd_rows = true;
  grid->AdjustLayout();
  EXPECT_TRUE(grid->GetRowRect(1).IsRectEmpty());
  EXPECT_EQ(grid->GetRowRect(2).top, grid->GetListRect().top + height);
  EXPECT_EQ(grid->GetRow(2)->GetRowId(), 2);
  EXPECT_EQ(grid->GetVertScrollTotal(), 2 * height);
}

TEST_F(GridTable, RowsOfSeveralLinesAreHigher) {
  Fill(3, 1);
  const int height = grid->GetRowHeight();
  grid->GetRow(1)->SetLinesNumber(3, FALSE);
  EXPECT_GT(grid->GetRowRect(1).Height(), 2 * height);
  const CRect before = grid->GetRowRect(2);
  grid->AdjustLayout();
  EXPECT_EQ(grid->GetRowRect(2), before);
  grid->GetRow(1)->SetLinesNumber(1);
  EXPECT_EQ(grid->GetRowRect(1).Height(), height);
}

TEST_F(GridTable, MergedCellsAreOneRectangle) {
  Fill(4, 4);
  EXPECT_TRUE(grid->MergeRange({1, 1, 2, 2}));
  EXPECT_FALSE(grid->MergeRange({2, 2, 3, 3}));
  EXPECT_FALSE(grid->MergeRange({3, 3, 4, 3}));
  const CRect block = grid->GetItemRect({2, 2});
  EXPECT_EQ(block, grid->GetItemRect({1, 1}));
  EXPECT_EQ(block.Width(), 160);
  EXPECT_EQ(At(2, 2)->GetMergedMainItem(), At(1, 1));
  EXPECT_EQ(At(0, 0)->GetMergedMainItem(), nullptr);
  std::vector<CBCGPGridRange> blocks;
  EXPECT_EQ(grid->GetMergedItemsInRange({0, 0, 3, 3}, blocks), 1);
  EXPECT_EQ(grid->HitTest(CPoint(block.BottomRight() - CSize(1, 1))), At(1, 1));
  EXPECT_TRUE(grid->UnmergeAt({2, 1}));
  EXPECT_FALSE(grid->UnmergeAt({2, 1}));
}

TEST_F(GridTable, CellThatIsDeletedInTheMiddleOfItsEditClosesTheEditor) {
  Fill(2, 2);
  Choose(1, 1);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  grid->GetRow(1)->ReplaceItem(1, new CBCGPGridItem(_variant_t(5)));
  EXPECT_EQ(Editor(), nullptr);
  Key(VK_F2);
  ASSERT_NE(Editor(), nullptr);
  grid->RemoveAll();
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(grid->GetRowCount(), 0);
}
