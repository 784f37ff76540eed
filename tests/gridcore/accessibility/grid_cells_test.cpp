#include "gridcore/accessibility/grid_cells.h"

#include "gridcore/columns/columns_info_ex.h"
#include "gridcore/items/check_item.h"
#include "tests/gridcore/accessibility/reading_desk.h"

namespace lorv_test {
namespace {

using lorv::AccessRole;

class GridCells : public ReadingDesk {};

TEST_F(GridCells, AGridIsATableWithHeadersAndCells) {
  Fill(3, 2);
  grid->SetColumnName(1, _T("长\r\n度"));
  EXPECT_EQ(Table()->Role(), AccessRole::Table);
  EXPECT_EQ(Table()->TableSize().cx, 2);
  EXPECT_EQ(Table()->TableSize().cy, 3);
  EXPECT_EQ(Table()->ChildCount(), 4 * 3) << "with the headers and their corner";
  EXPECT_EQ(Cell(-1, 1)->Role(), AccessRole::ColumnHeader);
  EXPECT_EQ(Name(-1, 1), "长 度") << "on one line";
  EXPECT_EQ(Cell(2, -1)->Role(), AccessRole::RowHeader);
  EXPECT_EQ(Name(2, -1), "3");
  EXPECT_EQ(Cell(2, 1)->Role(), AccessRole::Cell);
  EXPECT_EQ(Name(2, 1), "3 长 度");
  EXPECT_EQ(Value(2, 1), "21");
  EXPECT_EQ(Cell(2, 1)->Row(), 2);
  EXPECT_EQ(Cell(2, 1)->Column(), 1);
  EXPECT_EQ(Cell(3, 0), nullptr);
  EXPECT_EQ(Cell(0, 2), nullptr);
}

TEST_F(GridCells, TheTableIsNamedByItsTextOrTheLabelBeforeIt) {
  EXPECT_EQ(Table()->Name(), CString());
  grid->SetWindowText(_T("构件表"));
  EXPECT_EQ(Table()->Name(), CString(_T("构件表")));
}

TEST_F(GridCells, AHeaderOfSeveralLinesIsReadFromTheTop) {
  class TallHeader : public CBCGPGridCtrl {
   public:
    CBCGPGridColumnsInfoEx info;
    const CBCGPGridColumnsInfo& GetColumnsInfo() const override { return info; }
    CBCGPGridColumnsInfo& GetColumnsInfo() override { return info; }
  } tall;
  tall.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 100), &top, 8);
  for (const LPCTSTR name : {_T("宽"), _T("高"), _T("备注")})
    tall.InsertColumn(tall.GetColumnCount(), name, 50);
  tall.info.SetHeaderLineCount(2);
  CArray<int, int> columns, lines;
  columns.Add(0), columns.Add(1), lines.Add(0);
  tall.info.AddHeaderItem(&columns, &lines, nullptr, _T("尺寸"), DT_CENTER, 0);
  const auto table = lorv::AccessibleOf(tall.m_hWnd);
  EXPECT_EQ(table->CellAt(-1, 0)->Name(), CString(_T("尺寸 宽")));
  EXPECT_EQ(table->CellAt(-1, 1)->Name(), CString(_T("尺寸 高")));
  EXPECT_EQ(table->CellAt(-1, 2)->Name(), CString(_T("备注")));
}

TEST_F(GridCells, StatesAreThoseOfTheCell) {
  Fill(3, 3);
  grid->GetRow(2)->ReplaceItem(0, new CBCGPGridCheckItem(true));
  grid->GetRow(2)->ReplaceItem(1, new CBCGPGridCheckItem(false));
  At(0, 1)->SetReadOnly();
  At(0, 2)->Enable(FALSE);
  grid->SetFocus();
  grid->SelectRange({0, 0, 1, 1});
  EXPECT_TRUE(Has(0, 0, lorv::kAccessFocused | lorv::kAccessSelected | lorv::kAccessFocusable));
  EXPECT_FALSE(Has(0, 0, lorv::kAccessReadOnly));
  EXPECT_TRUE(Has(0, 1, lorv::kAccessReadOnly | lorv::kAccessSelected));
  EXPECT_FALSE(Has(0, 1, lorv::kAccessFocused));
  EXPECT_FALSE(Has(1, 2, lorv::kAccessSelected));
  EXPECT_TRUE(Has(0, 2, lorv::kAccessDisabled));
  EXPECT_TRUE(Has(2, 0, lorv::kAccessCheckable | lorv::kAccessChecked));
  EXPECT_TRUE(Has(2, 1, lorv::kAccessCheckable));
  EXPECT_FALSE(Has(2, 1, lorv::kAccessChecked));
  At(2, 1)->SetValue(_variant_t(_T("哪个")));
  EXPECT_FALSE(Has(2, 1, lorv::kAccessChecked)) << "no truth value";
  grid->SetReadOnly();
  EXPECT_TRUE(Has(0, 0, lorv::kAccessReadOnly));
  top.SetFocus();
  EXPECT_FALSE(Has(0, 0, lorv::kAccessFocused)) << "the keys go elsewhere";
}

TEST_F(GridCells, PlacesAreOnTheScreenAndEmptyOutOfSight) {
  Fill(50, 3);
  const CPoint origin = On(*grid, 0, 0);
  EXPECT_EQ(CRect(Cell(1, 1)->Place()), CRect(80, 40, 160, 60) + origin);
  EXPECT_EQ(CRect(Cell(-1, 1)->Place()), CRect(80, 0, 160, 20) + origin);
  EXPECT_TRUE(Has(40, 0, lorv::kAccessOffscreen));
  EXPECT_EQ(CRect(Cell(40, 0)->Place()), CRect());
  grid->EnsureVisible({40, 0});
  EXPECT_FALSE(Has(40, 0, lorv::kAccessOffscreen));
  EXPECT_TRUE(Has(0, 0, lorv::kAccessOffscreen));
  EXPECT_FALSE(Has(0, 0, lorv::kAccessHidden)) << "it can be scrolled to";
}

TEST_F(GridCells, HiddenRowsAndColumnsSayTheyAre) {
  Fill(4, 3);
  grid->leaves_out_odd_rows = true;
  grid->SetColumnVisible(2, FALSE);
  grid->AdjustLayout();
  EXPECT_TRUE(Has(1, 0, lorv::kAccessHidden));
  EXPECT_TRUE(Has(1, -1, lorv::kAccessHidden));
  EXPECT_TRUE(Has(0, 2, lorv::kAccessHidden));
  EXPECT_TRUE(Has(-1, 2, lorv::kAccessHidden));
  EXPECT_FALSE(Has(2, 0, lorv::kAccessHidden));
  EXPECT_TRUE(Cell(1, 0)->Actions().empty());
  grid->SelectAll();
  EXPECT_EQ(Table()->Selected().size(), 4U) << "of two rows and columns that are seen";
}

TEST_F(GridCells, APointHitsHeadersAndCells) {
  Fill(3, 3);
  grid->EnableRowHeader(TRUE);
  grid->AdjustLayout();
  const auto at = [this](int x, int y) { return Table()->At(On(*grid, x, y)); };
  EXPECT_EQ(at(120, 5)->Number(), Cell(-1, 1)->Number());
  EXPECT_EQ(at(5, 45)->Number(), Cell(1, -1)->Number());
  EXPECT_EQ(at(120, 45)->Number(), Cell(1, 1)->Number());
  EXPECT_EQ(at(5, 5), nullptr) << "the corner";
  EXPECT_EQ(at(390, 290), nullptr);
}

TEST_F(GridCells, MergedCellsAreOne) {
  Fill(4, 4);
  grid->MergeRange({1, 1, 2, 3});
  EXPECT_EQ(Cell(3, 2)->Number(), Cell(1, 1)->Number());
  EXPECT_EQ(Cell(1, 1)->Span().cx, 2);
  EXPECT_EQ(Cell(1, 1)->Span().cy, 3);
  EXPECT_EQ(Cell(0, 0)->Span().cx, 1);
  EXPECT_EQ(CRect(Cell(1, 1)->Place()), CRect(80, 40, 240, 100) + On(*grid, 0, 0));
  const auto covered = Table()->Numbered(lorv::NumberOfCell(grid->m_hWnd, {2, 2}));
  EXPECT_EQ(covered->Value(), CString());
  EXPECT_NE(covered->State() & lorv::kAccessHidden, 0U);
  grid->SelectRange({1, 1, 2, 3});
  EXPECT_EQ(Table()->Selected().size(), 1U);
}

TEST_F(GridCells, GroupsAreLinesThatExpand) {
  Fill(4, 2);
  for (int row = 0; row < 4; ++row) At(row, 0)->SetValue(_variant_t(row < 2 ? _T("梁") : _T("板")));
  grid->InsertGroupColumn(0, 0);
  ASSERT_EQ(Table()->TableSize().cy, 6);
  EXPECT_EQ(Value(4, 0), grid->GetGroupRow(0)->IsGroup() != FALSE
                             ? static_cast<lorv::GroupRow*>(grid->GetGroupRow(0))->GetText().ToUtf8()
                             : "");
  EXPECT_EQ(Value(4, 1), "");
  EXPECT_TRUE(Has(4, 0, lorv::kAccessExpandable | lorv::kAccessExpanded | lorv::kAccessReadOnly));
  EXPECT_TRUE(Has(4, 1, lorv::kAccessHidden));
  const CPoint in_line = CRect(Cell(4, 0)->Place()).CenterPoint();
  EXPECT_EQ(Table()->At(in_line)->Number(), Cell(4, 0)->Number());
  EXPECT_TRUE(Cell(4, 0)->Do(lorv::AccessAction::Press));
  EXPECT_FALSE(Has(4, 0, lorv::kAccessExpanded));
  EXPECT_TRUE(Has(0, 1, lorv::kAccessHidden)) << "its rows are out of sight";
  EXPECT_FALSE(Cell(4, 0)->SetValue(_T("柱")));
}

TEST_F(GridCells, SelectionAndCurrentCellAreReported) {
  Fill(3, 3);
  grid->SetFocus();
  Table();
  Report();
  grid->SetCurSel({1, 2});
  EXPECT_EQ(Report(), (Notes{"focus 1,2", "selection"}));
  grid->SelectRange({1, 1, 2, 2});
  EXPECT_EQ(Report(), (Notes{"focus 1,1", "selection"}));
  grid->SetCurSel({1, 1});
  EXPECT_EQ(Report(), (Notes{"selection"})) << "the cell is the same";
  EXPECT_EQ(Table()->FocusedChild()->Number(), Cell(1, 1)->Number());
  grid->SetCurSel(CBCGPGridItemID(), lorv::kSelectClear);
  EXPECT_EQ(Report(), (Notes{"selection"}));
  EXPECT_EQ(Table()->FocusedChild(), nullptr);
  grid->SetCurSel({0, 0});
  top.SetFocus();
  Report();
  grid->SetFocus();
  EXPECT_TRUE(WasShown("focus 0,0")) << "the keys are back";
}

TEST_F(GridCells, ChangesOfCellsInSightAreReported) {
  Fill(50, 3);
  grid->GetRow(2)->ReplaceItem(0, new CBCGPGridCheckItem(true));
  grid->SetCurSel({0, 0});
  Table();
  Report();
  At(1, 1)->SetValue(_variant_t(7));
  EXPECT_EQ(Report(), (Notes{"value 1,1"}));
  At(40, 1)->SetValue(_variant_t(7));
  EXPECT_EQ(Report(), Notes()) << "scrolled away";
  At(0, 0)->SetValue(_variant_t(8));
  EXPECT_EQ(Report(), (Notes{"value 0,0"}));
  At(0, 0)->SetBackgroundColor(RGB(1, 2, 3));
  EXPECT_EQ(Report(), Notes()) << "nothing that is read";
  At(0, 0)->SetReadOnly();
  EXPECT_EQ(Report(), (Notes{"state 0,0"}));
  At(2, 0)->OnSpace();
  EXPECT_EQ(Report(), (Notes{"state 2,0"}));
}

TEST_F(GridCells, RowsAndColumnsThatComeAndGoAreReported) {
  Fill(3, 3);
  grid->SetFocus();
  grid->SetCurSel({2, 2});
  Table();
  Report();
  grid->RemoveRow(0);
  EXPECT_EQ(Report(), (Notes{"structure", "focus 1,2", "selection"}));
  grid->AddRow(TRUE);
  EXPECT_EQ(Report(), (Notes{"structure"}));
  grid->InsertColumn(0, _T("新"), 50);
  EXPECT_TRUE(WasShown("structure"));
  grid->Sort(1, FALSE);
  EXPECT_TRUE(WasShown("structure"));
  grid->AdjustLayout();
  EXPECT_EQ(Report(), Notes()) << "all is as it was";
}

TEST_F(GridCells, WhoeverIsNotAskedReportsNothing) {
  Fill(3, 3);
  desktop.TakeReports();
  grid->SetCurSel({1, 1});
  At(1, 1)->SetValue(_variant_t(7));
  grid->RemoveRow(0);
  EXPECT_TRUE(desktop.TakeReports().empty());
}

TEST_F(GridCells, ObjectsOfCellsThatAreGoneSaySo) {
  Fill(3, 3);
  const auto table = Table();
  const auto cell = Cell(2, 1);
  const auto header = Cell(-1, 2);
  grid->RemoveRow(0);
  EXPECT_FALSE(cell->Exists());
  EXPECT_EQ(cell->Value(), CString());
  EXPECT_FALSE(cell->Do(lorv::AccessAction::Edit));
  EXPECT_FALSE(cell->SetValue(_T("7")));
  grid->AddRow(TRUE);
  EXPECT_TRUE(cell->Exists());
  grid->DeleteColumn(2);
  EXPECT_FALSE(header->Exists());
  grid.reset();
  EXPECT_FALSE(table->Exists());
  EXPECT_FALSE(cell->Exists());
  EXPECT_EQ(cell->Name(), CString());
  EXPECT_EQ(table->ChildCount(), 0);
  EXPECT_EQ(table->CellAt(0, 0), nullptr);
  EXPECT_FALSE(cell->Select(true));
}

TEST_F(GridCells, AVirtualTableFillsTheRowsThatAreAskedFor) {
  grid->InsertColumn(0, _T("c"), 80);
  int filled = 0;
  grid->EnableVirtualMode([&filled](CBCGPGridRow& row, int index) {
    ++filled;
    row.GetItem(0)->SetValue(_variant_t(index), FALSE);
  });
  grid->SetVirtualRows(10000000);
  filled = 0;
  EXPECT_EQ(Table()->TableSize().cy, 10000000);
  EXPECT_EQ(Value(9999999, 0), "9999999");
  EXPECT_EQ(Name(9999999, 0), "10000000 c");
  EXPECT_LE(filled, 2);
}

}  // namespace
}  // namespace lorv_test
