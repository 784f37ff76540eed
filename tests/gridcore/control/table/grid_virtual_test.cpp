#include <utility>

#include "tests/gridcore/control/grid_desk.h"

namespace {

class GridVirtual : public lorv_test::GridDesk {
 protected:
  void Table(int rows) {
    grid->InsertColumn(0, _T("a"), 80);
    grid->InsertColumn(1, _T("b"), 80);
    EXPECT_TRUE(grid->EnableVirtualMode([this](CBCGPGridRow& row, int index) {
      ++filled;
      row.GetItem(0)->SetValue(_variant_t(index), FALSE);
    }));
    grid->SetVirtualRows(rows);
    Run();
  }
  int filled = 0;
};

}  // namespace

TEST_F(GridVirtual, RowsAreFilledWhenTheyAreNeeded) {
  Table(10000000);
  EXPECT_TRUE(grid->IsVirtualMode());
  EXPECT_EQ(grid->GetRowCount(), 10000000);
  // A page and little more.
  EXPECT_LT(filled, 40);
  EXPECT_EQ(grid->GetVirtualRow(9999999)->GetItem(0)->FormatItem(), CString(_T("9999999")));
  EXPECT_EQ(grid->GetVirtualRow(9999999)->GetRowId(), 9999999);
  EXPECT_EQ(grid->GetRow(5), grid->GetVirtualRow(5));
  EXPECT_EQ(grid->GetVirtualRow(10000000), nullptr);
  EXPECT_EQ(grid->GetVirtualRow(-1), nullptr);
}

TEST_F(GridVirtual, CallBacksMayAskForRowsWithinARow) {
  grid->InsertColumn(0, _T("a"), 80);
  int depth = 0;
  CBCGPGridRow* inner = nullptr;
  ASSERT_TRUE(grid->EnableVirtualMode([&](CBCGPGridRow& row, int index) {
    row.GetItem(0)->SetValue(_variant_t(index), FALSE);
    if (index != 7 || depth++ > 0) return;
    inner = grid->GetVirtualRow(7);
    EXPECT_NE(inner, &row);
    for (int other = 100; other < 5100; ++other) static_cast<void>(grid->GetVirtualRow(other));
    EXPECT_FALSE(grid->EnableVirtualMode(nullptr)) << "the call-back is still running";
    inner = grid->GetVirtualRow(7);
  }));
  grid->SetVirtualRows(10000);
  Run();
  EXPECT_EQ(grid->GetVirtualRow(7), inner) << "one row has one object";
  EXPECT_EQ(inner->GetRowId(), 7);
  // All that were kept can go, each once.
  for (int row = 5000; row < 10000; ++row) ASSERT_EQ(grid->GetVirtualRow(row)->GetRowId(), row);
  EXPECT_TRUE(grid->EnableVirtualMode(nullptr));
  EXPECT_EQ(grid->GetRowCount(), 0);
}

TEST_F(GridVirtual, CallBackMayMakeTheTableSmaller) {
  grid->InsertColumn(0, _T("a"), 80);
  bool shrinks = false;
  grid->EnableVirtualMode([&](CBCGPGridRow& /*row*/, int /*index*/) {
    if (std::exchange(shrinks, false)) grid->SetVirtualRows(5);
  });
  grid->SetVirtualRows(1000);
  Run();
  shrinks = true;
  EXPECT_EQ(grid->GetVirtualRow(900), nullptr);
  EXPECT_EQ(grid->GetRowCount(), 5);
  EXPECT_NE(grid->GetVirtualRow(4), nullptr);
  grid->SetVirtualRows(1000);
  EXPECT_EQ(grid->GetVirtualRow(900)->GetRowId(), 900);
}

TEST_F(GridVirtual, TheEndIsReachedAtOnce) {
  Table(10000000);
  Choose(0, 0);
  filled = 0;
  desktop.PressWith(VK_CONTROL, VK_END);
  Run();
  EXPECT_EQ(grid->GetCurSelItemID().m_nRow, 9999999);
  EXPECT_FALSE(grid->GetItemRect({9999999, 0}).IsRectEmpty());
  EXPECT_LE(grid->GetRowRect(9999999).bottom, grid->GetListRect().bottom);
  EXPECT_LT(filled, 60);
}

TEST_F(GridVirtual, FewRowsAreKept) {
  Table(100000);
  for (int row = 0; row < 100000; ++row) ASSERT_EQ(grid->GetRow(row)->GetItem(0)->GetValue().lVal, row);
  filled = 0;
  // The last ones are still there, the first are made anew.
  static_cast<void>(grid->GetRow(100000 - static_cast<int>(lorv::kMostVirtualRows) + 1));
  EXPECT_EQ(filled, 0);
  static_cast<void>(grid->GetRow(0));
  EXPECT_EQ(filled, 1);
}

TEST_F(GridVirtual, AnEditedRowStays) {
  Table(100000);
  Choose(3, 0);
  Key(VK_F2);
  CEdit* const editor = Editor();
  ASSERT_NE(editor, nullptr);
  for (int row = 100; row < 20000; ++row) static_cast<void>(grid->GetRow(row));
  ASSERT_EQ(Editor(), editor);
  desktop.Type(_T("77"));
  Run();
  grid->Taken();
  EXPECT_TRUE(grid->EndEditItem(TRUE));
  EXPECT_EQ(grid->Taken().front(), "changed 3,0 77");
}

TEST_F(GridVirtual, NoRowComesOrGoesByItself) {
  Table(10);
  CBCGPGridRow own;
  EXPECT_EQ(grid->AddRow(TRUE), -1);
  EXPECT_EQ(grid->AddRow(&own, TRUE), -1);
  EXPECT_EQ(grid->InsertRowAfter(20, &own), -1);
  EXPECT_EQ(grid->InsertRowBefore(2, &own), -1);
  EXPECT_EQ(grid->RemoveRow(2, TRUE), 0);
  EXPECT_EQ(grid->GetRow(2)->AddSubItem(&own), -1);
  EXPECT_EQ(grid->ClearRange({0, 0, 1, 9}), 0);
  grid->Sort(0, FALSE);
  EXPECT_FALSE(grid->IsSorting());
  grid->InsertGroupColumn(0, 0);
  EXPECT_FALSE(grid->IsGrouping());
  EXPECT_EQ(grid->GetRowCount(), 10);
}

TEST_F(GridVirtual, FewerRowsTakeTheSelectionAlong) {
  Table(100);
  Choose(90, 1);
  grid->SetVirtualRows(50);
  EXPECT_TRUE(grid->GetCurSelItemID().IsNull());
  EXPECT_EQ(grid->GetCurSelItem(), nullptr);
  grid->SetVirtualRows(-5);
  EXPECT_EQ(grid->GetRowCount(), 0);
  grid->SetVirtualRows(0x7FFFFFFF);
  EXPECT_EQ(grid->GetRowCount(), lorv::kMaxVirtualTable);
}

TEST_F(GridVirtual, AColumnOfMillionsCanBeSelected) {
  Table(10000000);
  grid->SelectColumn(1);
  std::vector<CBCGPGridItem*> items;
  EXPECT_EQ(grid->GetSelectedItems(items), static_cast<int>(lorv::kMostVirtualRows / 2));
  for (const CBCGPGridItem* item : items) ASSERT_EQ(item->GetColumnId(), 1);
  EXPECT_TRUE(grid->IsColumnSelected(1));
}

TEST_F(GridVirtual, RefreshFillsAnew) {
  Table(10);
  filled = 0;
  grid->RefreshVirtualRows();
  Run();
  EXPECT_EQ(filled, 10);
}

TEST_F(GridVirtual, EndsWithAnEmptyTable) {
  Table(10);
  EXPECT_TRUE(grid->EnableVirtualMode(nullptr));
  EXPECT_FALSE(grid->IsVirtualMode());
  EXPECT_EQ(grid->GetRowCount(), 0);
  EXPECT_EQ(grid->AddRow(TRUE), 0);
  EXPECT_EQ(grid->GetVirtualRow(0), nullptr);
  grid->SetVirtualRows(4);
  EXPECT_EQ(grid->GetRowCount(), 1);
  // And begins with one.
  EXPECT_TRUE(grid->EnableVirtualMode([](CBCGPGridRow&, int) {}));
  EXPECT_EQ(grid->GetRowCount(), 0);
}

TEST_F(GridVirtual, ARowThatIsHeldOutlivesTheTable) {
  lorv::VirtualRows rows([](int) { return std::make_unique<CBCGPGridRow>(); },
                         [](const CBCGPGridRow&) { return false; }, [](CBCGPGridRow&) {});
  rows.Resize(100000);
  const auto held = rows.Hold(*rows.At(7));
  for (int row = 8; row < 10000; ++row) static_cast<void>(rows.At(row));
  EXPECT_EQ(rows.MadeCount(), lorv::kMostVirtualRows);
  EXPECT_EQ(rows.IndexOf(*held), -1);
  EXPECT_NE(rows.At(7), held.get());
  EXPECT_EQ(rows.IndexOf(*rows.At(7)), 7);
  rows.Resize(5);
  EXPECT_EQ(rows.MadeCount(), 0U);
  EXPECT_EQ(rows.At(7), nullptr);
}
