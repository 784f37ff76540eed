#include "grid/view/grid_sort.h"

#include <limits>
#include <random>

#include "platform/text/unit_order.h"
#include "tests/grid/basic/basic_desk.h"

namespace {

class GridSort : public lorv_test::BasicDesk {
 protected:
  GridSort() { grid->InsertColumns(_T("a,b"), _T("80,80"), 0); }
  // Column 0 has the values, column 1 their former places.
  void Values(const std::vector<_variant_t>& values) {
    grid->AppendRows(static_cast<int>(values.size()));
    for (int row = 0; row < static_cast<int>(values.size()); ++row) {
      grid->GetItem(row, 0)->SetValue(values[static_cast<std::size_t>(row)], FALSE);
      grid->GetItem(row, 1)->SetValue(_variant_t(row), FALSE);
    }
  }
  std::string Places() const {
    std::string places;
    for (int row = 0; row < grid->GetRowCount(); ++row)
      places += grid->GetItem(row, 1)->FormatItem().ToUtf8() + " ";
    return places;
  }
  std::string Sorted(BOOL up) {
    grid->Sort(0, up);
    return Places();
  }
};

}  // namespace

TEST_F(GridSort, NumbersBySizeBeforeTextsAndTheEmptyLast) {
  Values({_variant_t(_T("b")), _variant_t(10), _variant_t(), _variant_t(9.5), _variant_t(_T("A")),
          _variant_t(-1)});
  const lorv::GridSort sort(*grid);
  EXPECT_EQ(Sorted(TRUE), "5 3 1 4 0 2 ");
  EXPECT_EQ(Sorted(FALSE), "0 4 1 3 5 2 ");
}

TEST_F(GridSort, TextsOfNumbersAreNumbersWhereAsked) {
  Values({_variant_t(_T("10")), _variant_t(_T("9")), _variant_t(_T(" 9.5 ")), _variant_t(_T("9a")),
          _variant_t(8)});
  lorv::GridSort sort(*grid);
  EXPECT_EQ(Sorted(TRUE), "4 1 2 0 3 ");
  lorv::SortOptions plain;
  plain.texts_of_numbers = false;
  sort.SetOptions(plain);
  EXPECT_EQ(Sorted(TRUE), "4 2 0 1 3 ");
}

TEST_F(GridSort, EqualOnesStayInBothDirections) {
  Values({_variant_t(_T("x")), _variant_t(_T("X")), _variant_t(1), _variant_t(_T("1")), _variant_t(1.0)});
  const lorv::GridSort sort(*grid);
  EXPECT_EQ(Sorted(TRUE), "2 3 4 0 1 ");
  EXPECT_EQ(Sorted(FALSE), "0 1 2 3 4 ");
}

TEST_F(GridSort, WhatIsNoNumberStandsInFrontAndZerosAreOne) {
  Values({_variant_t(0.0), _variant_t(-0.0), _variant_t(std::numeric_limits<double>::quiet_NaN()),
          _variant_t(-std::numeric_limits<double>::infinity())});
  const lorv::GridSort sort(*grid);
  EXPECT_EQ(Sorted(TRUE), "2 3 0 1 ");
}

TEST_F(GridSort, EmptyCellsAreTheLeastTextsWithoutTheOption) {
  Values({_variant_t(_T("b")), _variant_t(), _variant_t(5)});
  lorv::SortOptions options;
  options.empty_last = false;
  const lorv::GridSort sort(*grid, options);
  EXPECT_EQ(Sorted(TRUE), "2 1 0 ");
  EXPECT_EQ(Sorted(FALSE), "0 1 2 ");
}

TEST_F(GridSort, ChineseStandsBySoundWhereTheSystemHasIt) {
  // liang, ban, zhu, ban with a second sign
  Values({_variant_t(_T("梁")), _variant_t(_T("板")), _variant_t(_T("柱")), _variant_t(_T("板C"))});
  lorv::SortOptions options;
  lorv::GridSort sort(*grid, options);
  const bool known = lorv::UnitOrder::BySound().IsBySound();
  EXPECT_EQ(Sorted(TRUE), known ? "1 3 0 2 " : "1 3 2 0 ");
  options.by_sound = false;
  sort.SetOptions(options);
  EXPECT_EQ(Sorted(TRUE), "1 3 2 0 ");
}

TEST_F(GridSort, LongTextsAreComparedToTheirEnds) {
  Values(
      {_variant_t(_T("KL-12b")), _variant_t(_T("kl-12A")), _variant_t(_T("KL-1")), _variant_t(_T("KL-12"))});
  const lorv::GridSort sort(*grid);
  EXPECT_EQ(Sorted(TRUE), "2 3 1 0 ");
}

TEST_F(GridSort, RandomTextsAsByComparingThemOneByOne) {
  std::mt19937 random(11);
  std::vector<_variant_t> values;
  std::vector<std::pair<std::string, int>> expected;
  for (int row = 0; row < 600; ++row) {
    std::string text;
    for (auto left = random() % 7 + 1; left > 0; --left) text += static_cast<char>('a' + random() % 3);
    values.emplace_back(static_cast<LPCTSTR>(CString::FromUtf8(text)));
    expected.emplace_back(text, row);
  }
  Values(values);
  std::sort(expected.begin(), expected.end());
  std::string places;
  for (const auto& [text, place] : expected) places += std::to_string(place) + " ";
  const lorv::GridSort sort(*grid);
  EXPECT_EQ(Sorted(TRUE), places);
}

TEST_F(GridSort, AClickOnTheHeaderSortsSo) {
  Values({_variant_t(_T("10")), _variant_t(_T("9")), _variant_t(_T("8"))});
  grid->EnableHeader(TRUE, lorv::kHeaderSorts);
  grid->AdjustLayout();
  const lorv::GridSort sort(*grid);
  const CRect header = grid->GetHeaderRect();
  const CPoint at = On(*grid, static_cast<int>(grid->GetItemRect({0, 0}).left) + 20,
                       static_cast<int>(header.CenterPoint().y));
  desktop.Click(at);
  Run();
  EXPECT_EQ(Places(), "2 1 0 ");
  desktop.Click(at);
  Run();
  EXPECT_EQ(Places(), "0 1 2 ");
}

TEST_F(GridSort, WithItsEndTheGridHasItsOwnOrderAgain) {
  Values({_variant_t(_T("10")), _variant_t(_T("9"))});
  auto first = std::make_unique<lorv::GridSort>(*grid);
  auto second = std::make_unique<lorv::GridSort>(*grid);
  // The first one is no longer the grid's.
  first.reset();
  EXPECT_EQ(Sorted(TRUE), "1 0 ");
  second.reset();
  EXPECT_EQ(Sorted(TRUE), "0 1 ");
  lorv::GridSort left(*grid);
  grid.reset();
  left.SetOptions({});
}

TEST_F(GridSort, WithinGroupsTooAndNestedRowsWithinTheirs) {
  Values({_variant_t(3), _variant_t(1), _variant_t(2), _variant_t(0)});
  for (int row = 0; row < 4; ++row) grid->GetItem(row, 1)->SetValue(_variant_t(row % 2), FALSE);
  const lorv::GridSort sort(*grid);
  grid->InsertGroupColumn(0, 1);
  grid->Sort(0, TRUE);
  std::string seen;
  for (int row = 0; row < 4; ++row) seen += grid->GetItem(row, 0)->FormatItem().ToUtf8() + " ";
  EXPECT_EQ(seen, "2 3 0 1 ");
  grid->RemoveGroupColumn(0);
  CBCGPGridRow* const parent = grid->GetRow(0);
  for (const int value : {7, 5}) {
    CBCGPGridRow* const below = grid->CreateRow(2);
    below->GetItem(0)->SetValue(_variant_t(value), FALSE);
    parent->AddSubItem(below);
  }
  grid->Sort(0, TRUE);
  EXPECT_EQ(parent->GetSubItem(0)->GetItem(0)->FormatItem(), CString(_T("5")));
}

TEST_F(GridSort, ASorterThatLosesRowsChangesNothing) {
  Values({_variant_t(2), _variant_t(1), _variant_t(3)});
  const std::vector<std::vector<int>> answers = {{}, {0, 1}, {0, 0, 1}, {0, 1, 3}, {-1, 0, 1}, {0, 1, 2, 0}};
  for (const auto& answer : answers) {
    grid->SetRowSorter([&](const std::vector<CBCGPGridRow*>&, int, bool) { return answer; });
    EXPECT_EQ(Sorted(TRUE), "0 1 2 ");
  }
  grid->SetRowSorter([](const std::vector<CBCGPGridRow*>&, int, bool) { return std::vector<int>{2, 0, 1}; });
  EXPECT_EQ(Sorted(TRUE), "2 0 1 ");
}
