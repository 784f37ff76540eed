#include <vector>

#include "tests/gridcore/control/grid_desk.h"

namespace {

// Notes the rows that are asked to draw themselves, and the part that they are asked for.
class PaintedGrid : public lorv_test::NotingGrid {
 public:
  std::vector<int> rows;
  std::vector<int> numbers;
  CRect box;

 protected:
  void OnDraw(CDC* dc) override {
    dc->GetClipBox(box);
    NotingGrid::OnDraw(dc);
  }
  BOOL OnDrawItem(CDC* dc, CBCGPGridRow* row) override {
    rows.push_back(row->GetRowId());
    return NotingGrid::OnDrawItem(dc, row);
  }
  void OnDrawRowHeaderItem(CDC* dc, CBCGPGridRow* row) override {
    numbers.push_back(row->GetRowId());
    NotingGrid::OnDrawRowHeaderItem(dc, row);
  }
};

class GridPainting : public lorv_test::GridDesk {
 protected:
  GridPainting() {
    auto own = std::make_unique<PaintedGrid>();
    painted = own.get();
    grid = std::move(own);
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    grid->EnableRowHeader(TRUE, -1, 30);
    Fill(30, 4);
    Run();
    painted->rows.clear();
    painted->numbers.clear();
  }
  void Paint(const std::vector<CRect>& parts) {
    for (const CRect& part : parts) grid->InvalidateRect(&part, FALSE);
    Run();
  }
  PaintedGrid* painted = nullptr;
};

}  // namespace

TEST_F(GridPainting, RowsBetweenTwoPartsAreNotDrawn) {
  const CRect first = grid->GetItemRect({1, 0});
  const CRect later = grid->GetItemRect({8, 2});
  Paint({first, later});
  EXPECT_EQ(painted->rows, (std::vector<int>{1, 8}));
  EXPECT_TRUE(painted->numbers.empty()) << "the row header was not out of date";
  CRect both;
  both.UnionRect(&first, &later);
  EXPECT_EQ(painted->box, both) << "the clip box of a painting is what is out of date";
}

TEST_F(GridPainting, RowHeaderIsDrawnWhereItIsOutOfDate) {
  const CRect row = grid->GetRowRect(5);
  Paint({CRect(0, row.top, 10, row.bottom)});
  EXPECT_TRUE(painted->rows.empty());
  EXPECT_EQ(painted->numbers, std::vector<int>{5});
}

TEST_F(GridPainting, HeaderAndARowLeaveTheOthersAlone) {
  Paint({CRect(40, 0, 60, 5), grid->GetItemRect({6, 1})});
  EXPECT_EQ(painted->rows, std::vector<int>{6});
}
