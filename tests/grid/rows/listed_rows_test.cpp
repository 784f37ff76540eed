#include "grid/rows/listed_rows.h"

#include <gtest/gtest.h>

#include "tests/support/headless_desk.h"

namespace lorv {
namespace {

class ListedRowsTest : public testing::Test {
 protected:
  ListedRowsTest() {
    grid.InsertColumn(0, _T("a"), 50);
    for (int row = 0; row < 5; ++row) grid.AddRow(grid.CreateRow(1), FALSE);
    for (int row = 0; row < 5; ++row) grid.GetGridItem({row, 0})->SetValue(_variant_t(row * 10));
  }

  CBCGPGridCtrl grid;
};

TEST_F(ListedRowsTest, HeaderExample) {
  ListedRows rows(grid);
  rows.Add(1);
  rows.Add(3);
  rows.Add(3);
  EXPECT_EQ(rows.Remove(), 2);
  ASSERT_EQ(grid.GetRowCount(), 3);
  EXPECT_EQ(grid.GetGridItem({1, 0})->FormatItem(), _T("20"));
  EXPECT_EQ(grid.GetGridItem({2, 0})->FormatItem(), _T("40"));
  EXPECT_EQ(rows.Remove(), 0);
}

TEST_F(ListedRowsTest, NumbersWithoutARowAreNone) {
  ListedRows rows(grid);
  for (const int row : {-1, 5, 9}) rows.Add(row);
  EXPECT_EQ(rows.Remove(), 0);
  EXPECT_EQ(grid.GetRowCount(), 5);
}

TEST_F(ListedRowsTest, AnyOrder) {
  ListedRows rows(grid);
  for (const int row : {4, 0, 4, 2, 0}) rows.Add(row);
  EXPECT_EQ(rows.Remove(), 3);
  EXPECT_EQ(grid.GetGridItem({0, 0})->FormatItem(), _T("10"));
}

}  // namespace
}  // namespace lorv
