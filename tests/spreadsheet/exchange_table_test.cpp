#include <gtest/gtest.h>

#include "tests/spreadsheet/open_exchange.h"
#include "tests/spreadsheet/table_grid.h"

namespace lorv {
namespace {

using test::OpenExchange;
using test::RowsOf;
using test::TableGrid;
using test::TextTable;
using Notes = std::vector<std::string>;

std::vector<CBCGPGridRange> RangesOf(const CAdExcel2GridEx& exchange) {
  std::vector<CBCGPGridRange> ranges;
  const auto& list = exchange.GetRanges();
  for (POSITION at = list.GetHeadPosition(); at != nullptr;) ranges.push_back(list.GetNext(at));
  return ranges;
}

TEST(ExchangeTable, BothGettersGiveTheTableItself) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{"a", "b"}}));
  EXPECT_EQ(&exchange.GetArray(), &exchange.GetArrayForWrite());
  exchange.GetArrayForWrite().SetValue(0, 1, _variant_t(_T("c")));
  EXPECT_EQ(RowsOf(exchange.GetArray()), (std::vector<Notes>{{"a", "c"}}));
}

TEST(ExchangeTable, AlignmentIsOneAtFirst) {
  OpenExchange exchange;
  EXPECT_EQ(exchange.GetHorizontaliAlign(), 1);
  exchange.SetHorizontaliAlign(-4108);
  EXPECT_EQ(exchange.GetHorizontaliAlign(), -4108);
}

TEST(ExchangeTable, ASingleCellAndAReversedRangeAreRefused) {
  OpenExchange exchange;
  EXPECT_EQ(exchange.AddRange(2, 3, 2, 3), 0);
  EXPECT_EQ(exchange.AddRange(2, 3, 2, 4), 1);
  EXPECT_EQ(exchange.AddRange(2, 3, 1, 9), 1);
  EXPECT_EQ(exchange.AddRange(2, 3, 9, 2), 1);
  EXPECT_EQ(exchange.AddRange(2, 3, 2, 3), 1);
  EXPECT_EQ(exchange.AddRange(2, 3, 2, 4), 2);
  EXPECT_EQ(exchange.AddRange(0, 0, 1, 0), 3);
  const auto ranges = RangesOf(exchange);
  EXPECT_EQ(ranges[0], CBCGPGridRange(3, 2, 4, 2));
  EXPECT_EQ(ranges[1], ranges[0]);
  exchange.DelRangeData();
  EXPECT_TRUE(RangesOf(exchange).empty());
}

TEST(ExchangeTable, RangesAreReplacedByACopy) {
  OpenExchange exchange;
  exchange.AddRange(0, 0, 5, 5);
  CList<CBCGPGridRange> fresh;
  fresh.AddTail(CBCGPGridRange(1, 2, 3, 4));
  exchange.SetRangeData(fresh);
  fresh.RemoveAll();
  EXPECT_EQ(RangesOf(exchange), (std::vector<CBCGPGridRange>{{1, 2, 3, 4}}));
  exchange.SetRangeData(exchange.GetRanges());
  EXPECT_EQ(RangesOf(exchange).size(), 1U);
}

TEST(ExchangeTable, RangesAreMergedInAGridInTheirOrderWithoutPainting) {
  OpenExchange exchange;
  TableGrid grid;
  exchange.MergeCell(grid);
  EXPECT_TRUE(grid.notes.empty());
  exchange.AddRange(0, 0, 1, 1);
  exchange.AddRange(5, 5, 6, 6);
  exchange.MergeCell(grid);
  EXPECT_EQ(grid.notes, (Notes{"merge*", "merge*"}));
  EXPECT_EQ(grid.merged, (std::vector<CBCGPGridRange>{{0, 0, 1, 1}, {5, 5, 6, 6}}));
  EXPECT_EQ(grid.locks, 0);
}

TEST(ExchangeTable, HiddenColumnsAreReplaced) {
  OpenExchange exchange;
  ColumnList columns;
  columns.AddSorted(4);
  columns.AddSorted(1);
  EXPECT_EQ(exchange.SetInVisibleCols(columns), 1);
  EXPECT_EQ(exchange.GetColInvisibleArr().size(), 2U);
  EXPECT_EQ(exchange.SetInVisibleCols(ColumnList()), 0);
  EXPECT_TRUE(exchange.GetColInvisibleArr().empty());
}

TableGrid& Filled(TableGrid& grid) {
  grid.columns = {{_T("名称"), true, 80}, {_T("编号"), false, 80}, {_T("长"), true, 80}};
  grid.rows = {{_variant_t(_T("墙")), _variant_t(7L), _variant_t(2.5)},
               {_variant_t(), _variant_t(true), _variant_t(1.0, VT_DATE)}};
  grid.first_visible = 1;
  return grid;
}

TEST(ExchangeTable, AGridsValuesStandAsTheyAre) {
  TableGrid grid;
  OpenExchange exchange;
  exchange.SetArray(Filled(grid));
  const auto& table = exchange.GetArray();
  ASSERT_EQ(table.GetRowCount(), 2);
  ASSERT_EQ(table.GetColCount(), 3);
  for (long row = 0; row < 2; ++row) {
    for (int column = 0; column < 3; ++column) {
      EXPECT_EQ(table.GetValue(static_cast<int>(row), column), grid.Value(row, column));
    }
  }
  // Its first visible row is put back; the current one goes to the end.
  EXPECT_EQ(grid.notes, (Notes{"first visible 1*", "current row 2*"}));
  EXPECT_EQ(grid.locks, 0);
  ASSERT_EQ(exchange.GetColInvisibleArr().size(), 1U);
  EXPECT_EQ(exchange.GetColInvisibleArr()[0], 1);
}

TEST(ExchangeTable, HiddenColumnsOfASecondGridAreAdded) {
  TableGrid grid;
  OpenExchange exchange;
  exchange.SetArray(Filled(grid));
  grid.columns[1].visible = true;
  grid.columns[2].visible = false;
  exchange.SetArray(grid);
  EXPECT_EQ(exchange.GetColInvisibleArr().size(), 2U);
  EXPECT_EQ(exchange.GetArray().GetRowCount(), 2);
}

TEST(ExchangeTable, TheCurrentRowIsNarrowed) {
  TableGrid grid;
  grid.columns = {{_T("a"), true, 80}};
  grid.rows.assign(40000, {_variant_t()});
  OpenExchange().SetArray(grid);
  EXPECT_EQ(grid.notes.back(), "current row -25536*");
}

}  // namespace
}  // namespace lorv
