#include "grid/items/check_item_ex.h"
#include "grid/items/multi_line_row.h"
#include "grid/view/column_widths.h"
#include "tests/grid/basic/basic_desk.h"

// A grid whose window comes to a screen of other dots an inch: its own sizes are those of 96 dots, scaled.

namespace {

using lorv::ForDots;

constexpr int kScreens[] = {120, 144, 192};

class BasicDots : public lorv_test::BasicDesk {
 protected:
  void MoveTo(int dots) {
    desktop.SetDpi(dots);
    // As a window does that fits what stands in it to its new size.
    grid->AdjustLayout();
    Run();
  }
  CBCGPGridPresentationItem* PutList(int row, int column) {
    auto* item = new CBCGPGridPresentationItem(_variant_t(_T("a")));
    item->SetPresentationStyle(lorv::kListCell);
    item->AddOption(_T("a"));
    grid->ReplaceItem(row, column, item, FALSE);
    return item;
  }
  std::string Sizes() {
    std::string sizes = grid->GetColsWidth().ToUtf8();
    for (const int size :
         {grid->GetRowHeight(), grid->GetHeaderRect().Height(), grid->GetRowHeaderRect().Width(),
          grid->GetVertScrollOffset(), grid->GetVertScrollTotal()})
      sizes += " " + std::to_string(size);
    return sizes;
  }
};

}  // namespace

TEST_F(BasicDots, SizesAreScaledAndComeBackToThePixel) {
  Fill(40, 3);
  grid->SetRowHeight(33);
  grid->AdjustLayout();
  const CBCGPGridPresentationItem* const list = PutList(7, 1);
  // A layout brings the current cell into sight.
  Choose(7, 1);
  grid->SetFirstRow(6);
  ASSERT_EQ(list->GetButtonRect().Width(), 20);
  const std::string before = Sizes();
  for (const int dots : kScreens) {
    SCOPED_TRACE(dots);
    MoveTo(dots);
    EXPECT_EQ(grid->GetRowHeight(), ForDots(33, dots));
    EXPECT_EQ(grid->GetItemRect({9, 0}).Height(), ForDots(33, dots));
    EXPECT_EQ(grid->GetHeaderRect().Height(), ForDots(33, dots));
    EXPECT_EQ(grid->GetRowHeaderRect().Width(), ForDots(30, dots));
    EXPECT_EQ(grid->GetColumnWidth(2), ForDots(80, dots));
    EXPECT_EQ(list->GetButtonRect().Width(), ForDots(17, dots) + ForDots(3, dots));
    EXPECT_EQ(grid->GetFirstRow(), 6) << "what was in sight stays there";
    // The edge between two rows is taken hold of within two pixels of 96 dots.
    const CRect row = grid->GetRowRect(8);
    const int inside = static_cast<int>(row.bottom) - ForDots(2, dots);
    desktop.MoveMouse(On(*grid, 5, inside));
    Run();
    EXPECT_EQ(desktop.Cursor(), lorv::kCursorSizeDown);
    desktop.MoveMouse(On(*grid, 5, inside - 1));
    Run();
    EXPECT_EQ(desktop.Cursor(), lorv::kCursorArrow);
    MoveTo(96);
    EXPECT_EQ(Sizes(), before);
  }
}

// Nobody set it for the new screen, as the windows of a dialog have theirs set.
TEST_F(BasicDots, ItsFontGoesAlong) {
  Fill(3, 2);
  const LONG usual = grid->GetFont()->Face().lfHeight;
  for (const int dots : kScreens) {
    MoveTo(dots);
    EXPECT_EQ(grid->GetFont()->Face().lfHeight, ForDots(usual, dots));
    MoveTo(96);
    EXPECT_EQ(grid->GetFont()->Face().lfHeight, usual);
  }
  LOGFONT bold = grid->GetBoldFont()->Face();
  EXPECT_EQ(bold.lfHeight, usual);
  bold.lfHeight = -20;
  grid->SetBoldFont(bold);
  MoveTo(144);
  EXPECT_EQ(grid->GetBoldFont()->Face().lfHeight, -30);
}

TEST_F(BasicDots, AnOpenEditorStaysOverItsCellInTheOtherFont) {
  Fill(6, 3);
  grid->SetCurEditingItem(2, 1);
  ASSERT_NE(Editor(), nullptr);
  const LONG usual = grid->GetFont()->Face().lfHeight;
  MoveTo(144);
  ASSERT_NE(Editor(), nullptr);
  EXPECT_EQ(lorv::PeerOf(Editor()->m_hWnd)->Font().lfHeight, ForDots(usual, 144));
  CRect editor;
  Editor()->GetWindowRect(&editor);
  grid->ScreenToClient(&editor);
  CRect cell = grid->GetItemRect({2, 1});
  cell.right -= 1;
  cell.bottom -= 1;
  EXPECT_EQ(editor, cell);
}

TEST_F(BasicDots, AGridThatIsMadeOnAFineScreenBeginsWithItsSizes) {
  grid.reset();
  desktop.SetDpi(144);
  grid = std::make_unique<lorv_test::BasicGrid>();
  // Without a window there is no screen: what is set so early is for 96 dots.
  grid->InsertColumn(0, _T("a"), 50);
  Make();
  EXPECT_EQ(grid->GetColumnWidth(0), 75);
  EXPECT_EQ(grid->GetRowHeaderRect().Width(), 45);
  EXPECT_EQ(grid->GetRowHeight(), 30);
  EXPECT_EQ(grid->GetButtonWidth(), 26);
  // With one, pixels are those of its screen, and Scaled gives them.
  grid->InsertColumn(1, _T("b"), grid->Scaled(50));
  EXPECT_EQ(grid->GetColumnWidth(1), 75);
  EXPECT_EQ(lorv::ColumnWidthsOf(*grid), _T("50,50"));
  ASSERT_TRUE(lorv::CopyColumnWidths(*grid));
  MoveTo(96);
  EXPECT_EQ(lorv::ColumnWidthsOf(*grid), _T("50,50"));
  grid->SetColumnWidth(0, 90);
  EXPECT_TRUE(lorv::PasteColumnWidths(*grid));
  EXPECT_EQ(grid->GetColumnWidth(0), 50);
}

// The characters of this desktop are as wide at any dots: in columns of the double width texts need fewer
// lines.
TEST_F(BasicDots, RowsOfSeveralLinesAreCountedAnew) {
  grid->InsertColumns(_T("a,b"), _T("70,70"), 0);
  grid->AddMultiLineRow(4, 1);
  grid->AdjustLayout();
  grid->SetValue(0, 0, _variant_t(_T("12345678901234567890")));
  dynamic_cast<CBCGPGridMultiLineRow&>(*grid->GetRow(0)).OnItemUpdate(FALSE);
  grid->AdjustLayout();
  ASSERT_EQ(grid->GetRow(0)->GetLinesNumber(), 2);
  MoveTo(192);
  EXPECT_EQ(grid->GetRow(0)->GetLinesNumber(), 1);
  EXPECT_EQ(grid->GetRowRect(0).Height(), grid->GetRowHeight());
  MoveTo(96);
  EXPECT_EQ(grid->GetRow(0)->GetLinesNumber(), 2);
  EXPECT_EQ(grid->GetRowRect(0).Height(), 2 * 16 + 4);
}

TEST_F(BasicDots, CheckBoxesAndTextsKeepTheirShareOfTheCell) {
  EXPECT_EQ(lorv::CheckBoxPlace(CRect(0, 0, 150, 75), 26, false, 144), CRect(62, 25, 88, 49));
  EXPECT_EQ(lorv::CheckBoxPlace(CRect(0, 0, 100, 20), 17, false, 96), CRect(41, 2, 58, 18));
}
