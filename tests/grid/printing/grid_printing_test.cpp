#include "grid/printing/grid_printing.h"

#include <functional>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "platform/headless/services/headless_printing.h"
#include "tests/support/headless_desk.h"
#include "tests/support/print.h"

namespace lorv_test {
namespace {

// Cells of 80 x 20 behind a row header of 30, on paper of 794 x 1123 dots at 96 an inch: margins of 10 mm are
// 37.8 dots, so that 718 x 1047 are left. The footer takes 26 of them, the header 20.
class GridPrinting : public Desk {
 protected:
  GridPrinting() : grid(std::make_unique<CBCGPBasicGridCtrl>()) {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), &top, 7);
    Run();
  }
  void Fill(int rows, int columns) {
    CString names = _T("c0"), one;
    for (int column = 1; column < columns; ++column) one.Format(_T(",c%d"), column), names += one;
    grid->InsertColumns(names, _T(""), 0);
    grid->AppendRows(rows);
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column) {
        one.Format(_T("%d.%d"), row, column);
        grid->SetValue(row, column, _variant_t(one), FALSE);
      }
    grid->AdjustLayout();
    Run();
  }
  bool Print(const lorv::GridPrintSettings& settings = {}) {
    lorv::GridPrinting print(*grid);
    print.settings = settings;
    const auto job = printer.Ask(grid->m_hWnd, lorv::kPrintNoSelection);
    return print.Print(*job);
  }
  std::vector<lorv::Drawn> Page(std::size_t page) const { return printer.pages[page]->List(); }
  // How often the text stands on the page, and where it begins.
  int Count(std::size_t page, LPCTSTR text) const {
    int count = 0;
    for (const lorv::Drawn& drawn : Page(page)) count += drawn.text == CString(text) ? 1 : 0;
    return count;
  }
  CRect PlaceOf(std::size_t page, LPCTSTR text) const {
    for (const lorv::Drawn& drawn : Page(page))
      if (drawn.text == CString(text)) return drawn.bounds;
    return {};
  }

  lorv::HeadlessPrinting printer;
  std::unique_ptr<CBCGPBasicGridCtrl> grid;
};

TEST_F(GridPrinting, EveryPageHasTheHeaderTheTitleAndItsNumber) {
  Fill(120, 3);
  lorv::GridPrintSettings settings;
  settings.document = _T("清单");
  settings.title = _T("构件表");
  EXPECT_TRUE(Print(settings));
  // 1047 - 26 - 26 - 20 pixels hold 48 rows.
  ASSERT_EQ(printer.pages.size(), 3U);
  for (std::size_t page = 0; page < 3; ++page) {
    EXPECT_EQ(Count(page, _T("c0")), 1) << page;
    EXPECT_EQ(Count(page, _T("c2")), 1) << page;
    EXPECT_EQ(Count(page, _T("构件表")), 1) << page;
  }
  EXPECT_EQ(Count(0, _T("1 / 3")), 1);
  EXPECT_EQ(Count(2, _T("3 / 3")), 1);
  EXPECT_EQ(printer.asked[1], CString(_T("begin pages 清单")));
  EXPECT_EQ(printer.asked[printer.asked.size() - 2], CString(_T("end")));
}

TEST_F(GridPrinting, EachRowStandsOnOnePageInOrder) {
  Fill(120, 2);
  EXPECT_TRUE(Print());
  int next = 0;
  for (std::size_t page = 0; page < printer.pages.size(); ++page) {
    CString first;
    first.Format(_T("%d.0"), next);
    EXPECT_EQ(Count(page, first), 1) << page;
    for (CString text = first; Count(page, text) == 1; text.Format(_T("%d.0"), next)) {
      for (std::size_t other = 0; other < printer.pages.size(); ++other)
        EXPECT_EQ(Count(other, text), other == page ? 1 : 0) << text.ToUtf8();
      ++next;
    }
  }
  EXPECT_EQ(next, 120);
}

TEST_F(GridPrinting, CellsStandAsOnTheScreen) {
  Fill(5, 3);
  EXPECT_TRUE(Print());
  ASSERT_EQ(printer.pages.size(), 1U);
  const CRect first = PlaceOf(0, _T("0.0"));
  const CRect right = PlaceOf(0, _T("0.1"));
  const CRect below = PlaceOf(0, _T("1.0"));
  EXPECT_EQ(right.left - first.left, 80);
  EXPECT_EQ(below.top - first.top, 20);
  EXPECT_EQ(first.left, 37 + 30 + 3) << "margin, row header, the text's own margin";
  EXPECT_EQ(Count(0, _T("1 / 1")), 1);
}

TEST_F(GridPrinting, AWideTableIsDrawnSmallerOrParted) {
  Fill(3, 20);
  EXPECT_TRUE(Print());
  ASSERT_EQ(printer.pages.size(), 1U) << "1630 pixels on 718";
  EXPECT_EQ(Count(0, _T("0.19")), 1);
  EXPECT_LE(PlaceOf(0, _T("0.19")).right, 794 - 37);
  printer.pages.clear();
  lorv::GridPrintSettings settings;
  settings.fit_width = false;
  EXPECT_TRUE(Print(settings));
  ASSERT_EQ(printer.pages.size(), 3U) << "eight columns on each";
  EXPECT_EQ(Count(0, _T("0.7")), 1);
  EXPECT_EQ(Count(0, _T("0.8")), 0);
  EXPECT_EQ(Count(1, _T("0.8")), 1);
  EXPECT_EQ(Count(1, _T("c8")), 1) << "with its header";
  EXPECT_EQ(Count(2, _T("0.19")), 1);
}

TEST_F(GridPrinting, HiddenRowsAndColumnsAreNotThere) {
  Fill(6, 3);
  grid->SetRowVisible(2, false);
  grid->SetColumnVisible(1, FALSE);
  grid->AdjustLayout();
  EXPECT_TRUE(Print());
  EXPECT_EQ(Count(0, _T("2.0")), 0);
  EXPECT_EQ(Count(0, _T("0.1")), 0);
  EXPECT_EQ(Count(0, _T("c1")), 0);
  EXPECT_EQ(Count(0, _T("3.2")), 1);
  EXPECT_EQ(PlaceOf(0, _T("3.0")).top - PlaceOf(0, _T("1.0")).top, 20);
}

TEST_F(GridPrinting, MergedCellsAreOneAndStandTogether) {
  Fill(60, 3);
  // The page ends behind row 49, in the middle of these.
  grid->MergeRange({0, 48, 1, 52});
  EXPECT_TRUE(Print());
  ASSERT_EQ(printer.pages.size(), 2U);
  EXPECT_EQ(Count(0, _T("48.0")), 0);
  EXPECT_EQ(Count(1, _T("48.0")), 1);
  EXPECT_EQ(Count(1, _T("49.0")), 0) << "covered";
  EXPECT_EQ(Count(1, _T("49.2")), 1);
}

TEST_F(GridPrinting, GroupsHaveTheirLines) {
  Fill(4, 2);
  for (int row = 0; row < 4; ++row) grid->SetValue(row, 0, _variant_t(row < 2 ? _T("墙") : _T("梁")), FALSE);
  grid->InsertGroupColumn(0, 0);
  EXPECT_TRUE(Print());
  ASSERT_EQ(grid->GetGroupRowCount(), 2);
  EXPECT_EQ(Count(0, static_cast<lorv::GroupRow*>(grid->GetGroupRow(1))->GetText()), 1);
}

TEST_F(GridPrinting, TheSelectionStaysOnTheScreen) {
  Fill(5, 3);
  EXPECT_TRUE(Print());
  grid->SelectRange({0, 1, 2, 3});
  EXPECT_TRUE(Print());
  EXPECT_TRUE(Page(0) == Page(1)) << "the paper is the same";
  EXPECT_EQ(grid->GetSelection().size(), 1U);
  EXPECT_EQ(grid->GetCurSelItemID(), CBCGPGridItemID(1, 0));
  // The suite's grid colours the row that the user stands in.
  grid->SetSelRowBKColor(lorv::kSelectedRowColour);
  grid->SetCurSel({2, 1});
  ASSERT_EQ(grid->GetItem(2, 0)->GetBackgroundColor(), lorv::kSelectedRowColour);
  EXPECT_TRUE(Print());
  EXPECT_EQ(Page(0).size(), Page(2).size());
  EXPECT_TRUE(Page(0) == Page(2));
  EXPECT_EQ(grid->GetItem(2, 0)->GetBackgroundColor(), lorv::kSelectedRowColour)
      << "and on the screen it stays";
}

TEST_F(GridPrinting, WhereTheScreenIsScrolledToDoesNotMatter) {
  Fill(100, 10);
  EXPECT_TRUE(Print());
  const auto before = Page(1);
  grid->EnsureVisible({99, 9});
  const int across = grid->GetHorzScrollOffset();
  printer.pages.clear();
  EXPECT_TRUE(Print());
  EXPECT_TRUE(Page(1) == before);
  EXPECT_EQ(grid->GetHorzScrollOffset(), across) << "and stays there";
}

TEST_F(GridPrinting, PlansSayWhatStandsWhere) {
  Fill(120, 2);
  const lorv::GridPrinting print(*grid);
  const lorv::GridPrintPlan plan = print.Plan({794, 1123}, 96);
  ASSERT_EQ(plan.pages.size(), 3U);
  EXPECT_EQ(plan.pages[0], (lorv::GridPiece{0, 0, 160, 1000}));
  EXPECT_EQ(plan.pages[1], (lorv::GridPiece{0, 1000, 160, 1000}));
  EXPECT_EQ(plan.pages[2], (lorv::GridPiece{0, 2000, 160, 400}));
  EXPECT_TRUE(plan.complete);
  const lorv::GridPrintPlan fine = print.Plan({794 * 6, 1123 * 6}, 96 * 6);
  EXPECT_EQ(fine.pages.size(), 3U) << "the same paper with more dots";
  EXPECT_DOUBLE_EQ(fine.scale, 6);
}

TEST_F(GridPrinting, PagesMayBePictures) {
  Fill(5, 2);
  const lorv::GridPrinting print(*grid);
  const SIZE size = {400, 300};
  std::shared_ptr<lorv::Canvas> picture = desktop.MakeCanvas(size);
  const lorv::GridPrintPlan plan = print.Plan(size, picture->Dpi());
  ASSERT_EQ(plan.pages.size(), 1U);
  EXPECT_TRUE(print.DrawPage(plan, 0, picture));
  const auto pixels = picture->Pixels({0, 0, 400, 300});
  ASSERT_EQ(pixels.size(), 400U * 300U);
  EXPECT_EQ(pixels[0], 0xFFFFFFFFU) << "the margin";
  EXPECT_NE(pixels[45 * 400 + 45], 0xFFFFFFFFU) << "the header";
  EXPECT_FALSE(print.DrawPage(plan, 1, picture));
  EXPECT_FALSE(print.DrawPage(plan, -1, picture));
  EXPECT_FALSE(print.DrawPage(plan, 0, nullptr));
}

TEST_F(GridPrinting, TablesWithoutRowsOrColumns) {
  EXPECT_FALSE(Print()) << "nothing to print";
  Fill(0, 2);
  printer.pages.clear();
  EXPECT_TRUE(Print());
  ASSERT_EQ(printer.pages.size(), 1U);
  EXPECT_EQ(Count(0, _T("c1")), 1);
}

TEST_F(GridPrinting, MarginsAndPapersOfNoUse) {
  Fill(5, 2);
  lorv::GridPrinting print(*grid);
  EXPECT_TRUE(print.Plan({0, 100}, 96).pages.empty());
  EXPECT_TRUE(print.Plan({100, 100}, 0).pages.empty());
  print.settings.margin = 1000;
  EXPECT_TRUE(print.Plan({700, 1000}, 96).pages.empty()) << "two margins of 100 mm on 185";
  print.settings.margin = -5;
  EXPECT_EQ(print.Plan({794, 1123}, 96).pages.size(), 1U);
}

TEST_F(GridPrinting, APrinterMayRefuse) {
  Fill(5, 2);
  printer.begins = false;
  EXPECT_FALSE(Print());
  EXPECT_TRUE(printer.pages.empty());
}

TEST_F(GridPrinting, ATableLargerThanAnyJobSaysSo) {
  grid->InsertColumns(_T("c"), _T(""), 0);
  grid->EnableVirtualMode([](CBCGPGridRow& /*row*/, int /*index*/) {});
  grid->SetVirtualRows(10000000);
  const lorv::GridPrintPlan plan = lorv::GridPrinting(*grid).Plan({794, 1123}, 96);
  EXPECT_EQ(plan.pages.size(), static_cast<std::size_t>(lorv::kMostPrintedPages));
  EXPECT_FALSE(plan.complete);
}

// A cell whose drawing does what the test wants.
class MeddlingCell : public CBCGPGridItem {
 public:
  explicit MeddlingCell(std::function<void()> step) : step_(std::move(step)) {}
  void OnDrawValue(CDC* /*dc*/, CRect /*rect*/) override {
    const auto step = step_;
    step();
  }

 private:
  std::function<void()> step_;
};

class EndingGrid : public CBCGPBasicGridCtrl {
 public:
  std::function<void()> step;

 protected:
  BOOL OnDrawItem(CDC* dc, CBCGPGridRow* row) override {
    const BOOL drawn = CBCGPBasicGridCtrl::OnDrawItem(dc, row);
    const auto copy = step;
    if (copy) copy();
    return drawn;
  }
};

TEST_F(GridPrinting, HandlersMayEndTheGridAndThePrinting) {
  for (const bool both : {false, true}) {
    auto ending = std::make_unique<EndingGrid>();
    auto* const raw = ending.get();
    raw->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), &top, 8);
    raw->InsertColumns(_T("a,b"), _T(""), 0);
    raw->AppendRows(200);
    Run();
    auto print = std::make_unique<lorv::GridPrinting>(*raw);
    raw->step = [&] {
      ending.reset();
      if (both) print.reset();
    };
    const auto job = printer.Ask(nullptr, 0);
    EXPECT_FALSE(print->Print(*job));
    EXPECT_EQ(ending, nullptr);
    if (print != nullptr) {
      EXPECT_TRUE(print->Plan({794, 1123}, 96).pages.empty()) << "it has ended";
      EXPECT_FALSE(print->Print(*job));
    }
  }
}

TEST_F(GridPrinting, WhatDrawingDoesToTheGridIsNoMatter) {
  Fill(3, 2);
  grid->ReplaceItem(1, 1, new MeddlingCell([this] { grid->Invalidate(FALSE); }), FALSE);
  EXPECT_TRUE(Print());
  EXPECT_EQ(Count(0, _T("2.1")), 1);
}

}  // namespace
}  // namespace lorv_test
