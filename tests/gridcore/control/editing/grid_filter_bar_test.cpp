#include "tests/gridcore/control/grid_desk.h"

namespace {

// The grid's own filter, and a note of its changes.
class FilteredGrid : public CBCGPGridCtrl {
 public:
  int changes = 0;
  std::function<void()> on;
  using CBCGPGridCtrl::KeepLastRow;
  void OnFilterBarChanged() override {
    ++changes;
    const auto copy = on;
    if (copy) copy();
  }
};

class FilterBar : public lorv_test::Desk {
 protected:
  FilterBar() : grid(std::make_unique<FilteredGrid>()) {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    grid->InsertColumn(0, _T("grade"), 80);
    grid->InsertColumn(1, _T("name"), 80);
    const LPCTSTR names[][2] = {{_T("C30"), _T("wall")}, {_T("C35"), _T("Beam")}, {_T("C30"), _T("beam")}};
    for (const auto& row : names) {
      const int at = grid->AddRow(FALSE);
      for (int column = 0; column < 2; ++column)
        grid->GetGridItem({at, column})->SetValue(_variant_t(row[column]));
    }
    grid->AdjustLayout();
    grid->EnableFilterBar();
    Run();
  }
  std::string Shown() const {
    std::string shown;
    for (int row = 0; row < grid->GetRowCount(); ++row)
      if (grid->GetRowRect(row).IsRectEmpty() == FALSE) shown += static_cast<char>('0' + row);
    return shown;
  }
  void ClickBar(int column) {
    const CRect bar = grid->GetFilterBarRect();
    desktop.Click(On(*grid, static_cast<int>(grid->GetItemRect({0, column}).left) + 10,
                     static_cast<int>(bar.CenterPoint().y)));
    Run();
  }

  std::unique_ptr<FilteredGrid> grid;
};

}  // namespace

TEST_F(FilterBar, TextsLeaveRowsOut) {
  EXPECT_EQ(Shown(), "012");
  grid->SetFilterBarText(0, _T("c30"));
  EXPECT_EQ(Shown(), "02");
  grid->SetFilterBarText(1, _T("EA"));
  EXPECT_EQ(Shown(), "2");
  EXPECT_EQ(grid->GetFilterBarText(1), CString(_T("EA")));
  grid->SetFilterBarText(0, _T(""));
  EXPECT_EQ(Shown(), "12");
  EXPECT_EQ(grid->changes, 3);
  grid->SetFilterBarText(0, _T(""));
  grid->SetFilterBarText(2, _T("x"));
  grid->SetFilterBarText(-1, _T("x"));
  EXPECT_EQ(grid->changes, 3);
  EXPECT_EQ(grid->GetFilterBarText(9), CString());
}

TEST_F(FilterBar, OffItLeavesNothingOut) {
  grid->SetFilterBarText(0, _T("C35"));
  const int top_of_list = static_cast<int>(grid->GetListRect().top);
  grid->EnableFilterBar(FALSE);
  EXPECT_FALSE(grid->IsFilterBarEnabled());
  EXPECT_EQ(Shown(), "012");
  EXPECT_LT(grid->GetListRect().top, top_of_list);
  EXPECT_TRUE(grid->GetFilterBarRect().IsRectEmpty());
  grid->EnableFilterBar();
  EXPECT_EQ(Shown(), "1");
}

TEST_F(FilterBar, IsTypedInto) {
  ClickBar(1);
  desktop.Type(_T("be"));
  Run();
  EXPECT_EQ(grid->GetFilterBarText(1), CString(_T("be")));
  EXPECT_EQ(Shown(), "12");
  desktop.Press(VK_BACK);
  desktop.Press(VK_BACK);
  Run();
  EXPECT_EQ(Shown(), "012");
  EXPECT_EQ(grid->changes, 4);
  desktop.Press(VK_RETURN);
  Run();
  EXPECT_EQ(CWnd::GetFocus(), grid.get());
}

TEST_F(FilterBar, FollowsItsColumns) {
  grid->SetFilterBarText(1, _T("beam"));
  grid->InsertColumn(0, _T("new"), 80);
  EXPECT_EQ(grid->GetFilterBarText(2), CString(_T("beam")));
  grid->DeleteColumn(0);
  EXPECT_EQ(grid->GetFilterBarText(1), CString(_T("beam")));
  grid->DeleteColumn(1);
  EXPECT_EQ(Shown(), "012");
}

TEST_F(FilterBar, TheRowThatStaysTheLastIsShown) {
  grid->AddRow(TRUE);
  grid->KeepLastRow(true);
  grid->SetFilterBarText(0, _T("C35"));
  EXPECT_EQ(Shown(), "13");
}

// The row header begins below the bar: what was drawn beside it before is gone.
TEST_F(FilterBar, NothingOfTheRowsStandsBesideIt) {
  grid->EnableFilterBar(FALSE);
  grid->EnableRowHeader(TRUE);
  grid->EnableLineNumbers(TRUE);
  grid->AdjustLayout();
  Run();
  grid->EnableFilterBar();
  Run();
  const CRect bar = grid->GetFilterBarRect();
  const CRect corner(0, bar.top, bar.left, bar.bottom);
  ASSERT_FALSE(corner.IsRectEmpty());
  int numbers = 0;
  for (const lorv::Drawn& drawn : desktop.Seen(grid->m_hWnd)) {
    if (drawn.kind != lorv::Drawn::Kind::Text || drawn.bounds.left >= bar.left) continue;
    CRect common;
    EXPECT_FALSE(common.IntersectRect(&drawn.bounds, &corner)) << drawn.text.ToUtf8();
    ++numbers;
  }
  EXPECT_EQ(numbers, 3);
}

TEST_F(FilterBar, AHandlerMayEndTheGrid) {
  ClickBar(0);
  grid->on = [this] { grid.reset(); };
  desktop.Type(_T("x"));
  Run();
  EXPECT_EQ(grid, nullptr);
}

TEST_F(FilterBar, AHandlerMaySwitchItOff) {
  ClickBar(0);
  grid->on = [this] { grid->EnableFilterBar(FALSE); };
  desktop.Type(_T("x"));
  Run();
  EXPECT_EQ(Shown(), "012");
  EXPECT_EQ(CWnd::GetFocus(), grid.get());
}
