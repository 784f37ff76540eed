#include "tables/grid_array.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>

#include "framework/values/variant_text.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using Table = CGridArray<_variant_t>;

// The number of cells up to the first empty one that lies outside, row by row, for a table without empty
// cells.
int WidthOf(const Table& table, int row) {
  int width = 0;
  while (table.GetValueAt(row, width).vt != VT_EMPTY) ++width;
  return width;
}

// A table whose cell in row r and column c holds 10 r + c.
Table Numbered(int rows, int columns) {
  Table table(rows, columns);
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < columns; ++c) table.SetValueAt(r, c, _variant_t(10 * r + c));
  }
  return table;
}

// All cells as texts, "." for an empty one, rows parted by "/".
std::string Shown(const Table& table, int width) {
  std::string text;
  for (int r = 0; r < table.GetRowCount(); ++r) {
    if (r != 0) text += "/";
    for (int c = 0; c < width; ++c) {
      const _variant_t& cell = table.GetValueAt(r, c);
      text += (c == 0 ? "" : " ") + (cell.vt == VT_EMPTY ? std::string(".") : Utf8(VariantToText(cell)));
    }
  }
  return text;
}

TEST(CGridArray, HeaderExample) {
  Table t(3, 2);
  EXPECT_EQ(t.SetValueAt(2, 1, _T("墙")), 1);
  EXPECT_EQ(t.SetValueAt(2, 2, 5L), 0);
}

TEST(CGridArray, NewOneIsEmptyAndHasAVirtualDestructor) {
  const Table table;
  EXPECT_EQ(table.GetRowCount(), 0);
  EXPECT_EQ(table.GetColCount(), 0);
  EXPECT_TRUE(std::has_virtual_destructor_v<Table>);
  EXPECT_EQ(Table(4, 3).GetRowCount(), 4);
  EXPECT_EQ(Table(4, 3).GetColCount(), 3);
}

TEST(CGridArray, RefusedDimensionsStoreTheColumnCountOnly) {
  Table table;
  EXPECT_EQ(table.SetArray(3, 0), 0);
  EXPECT_EQ(table.GetColCount(), 0);
  EXPECT_EQ(table.GetRowCount(), 0);
  EXPECT_EQ(table.SetArray(3, 2), 1);
  EXPECT_EQ(table.GetRowCount(), 3);
  EXPECT_EQ(table.SetArray(-1, 5), 0);
  EXPECT_EQ(table.GetColCount(), 5);
  EXPECT_EQ(table.GetRowCount(), 3);
  EXPECT_EQ(table.SetArray(9, -4), 0);
  EXPECT_EQ(table.GetColCount(), -4);
  EXPECT_EQ(table.GetRowCount(), 3);
}

TEST(CGridArray, NoRowsAreAllowed) {
  Table table = Numbered(2, 2);
  EXPECT_EQ(table.SetArray(0, 2), 1);
  EXPECT_EQ(table.GetRowCount(), 0);
  EXPECT_EQ(table.GetColCount(), 2);
}

TEST(CGridArray, NewDimensionsKeepTheCellsInside) {
  Table table = Numbered(2, 3);
  EXPECT_EQ(table.SetArray(2, 5), 1);
  EXPECT_EQ(Shown(table, 5), "0 1 2 . ./10 11 12 . .");
  EXPECT_EQ(table.SetArray(3, 2), 1);
  EXPECT_EQ(Shown(table, 3), "0 1 ./10 11 ./. . .");
  EXPECT_EQ(table.SetArray(1, 1), 1);
  EXPECT_EQ(Shown(table, 1), "0");
}

TEST(CGridArray, WithoutMemoryDimensionsAreRefusedAndCellsStay) {
  Table table = Numbered(2, 2);
  EXPECT_EQ(table.SetArray(std::numeric_limits<__int64>::max(), 3), 0);
  EXPECT_EQ(table.GetRowCount(), 2);
  EXPECT_EQ(Shown(table, 2), "0 1/10 11");
}

TEST(CGridArray, SetValueRefusesOutsideTheDeclaredWidthAndTheRows) {
  Table table = Numbered(2, 2);
  for (const int bad : {2, 3, -1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(table.SetValueAt(bad, 0, 5L), 0) << bad;
    EXPECT_EQ(table.SetValueAt(0, bad, 5L), 0) << bad;
    EXPECT_EQ(table.GetValueAt(bad, 0).vt, VT_EMPTY) << bad;
    EXPECT_EQ(table.GetValueAt(0, bad).vt, VT_EMPTY) << bad;
  }
  EXPECT_EQ(Shown(table, 2), "0 1/10 11");
}

TEST(CGridArray, SetAllValFillsEvenFromACellOfItsOwn) {
  Table table = Numbered(2, 2);
  EXPECT_TRUE(table.SetAllVal(table.GetValueAt(1, 1)));
  EXPECT_EQ(Shown(table, 2), "11 11/11 11");
  EXPECT_TRUE(Table().SetAllVal(_variant_t(1)));
}

TEST(CGridArray, SetValueTakesACellOfItsOwn) {
  Table table(1, 2);
  table.SetValueAt(0, 0, _variant_t(_T("梁")));
  EXPECT_EQ(table.SetValueAt(0, 1, table.GetValueAt(0, 0)), 1);
  EXPECT_EQ(table.SetValueAt(0, 0, table.GetValueAt(0, 0)), 1);
  EXPECT_EQ(Shown(table, 2), "梁 梁");
}

TEST(CGridArray, FailedCopyRaisesTheComErrorAndLeavesTheCell) {
  Table table = Numbered(1, 1);
  // A tag that is none can get into a value only by hand.
  _variant_t wrong;
  wrong.vt = 15;
  try {
    table.SetValueAt(0, 0, wrong);
    ADD_FAILURE() << "was copied";
  } catch (const _com_error& e) {
    EXPECT_EQ(e.Error(), DISP_E_BADVARTYPE);
  }
  EXPECT_EQ(Shown(table, 1), "0");
  wrong.vt = VT_EMPTY;
}

TEST(CGridArray, AppendRowInserts) {
  Table table;
  table.SetArray(0, 2);
  EXPECT_TRUE(table.AppendRow(0, false));
  EXPECT_TRUE(table.AppendRow(1, false));
  EXPECT_FALSE(table.AppendRow(5, false));
  EXPECT_FALSE(table.AppendRow(3, false));
  EXPECT_FALSE(table.AppendRow(-1, false));
  EXPECT_FALSE(table.AppendRow(-1, true));
  EXPECT_EQ(table.GetRowCount(), 2);
  EXPECT_EQ(table.SetValueAt(1, 1, 5L), 1);
  EXPECT_EQ(table.SetValueAt(1, 2, 5L), 0);
}

TEST(CGridArray, AppendRowGoesInAtThePositionOrBehindIt) {
  Table table = Numbered(2, 1);
  EXPECT_TRUE(table.AppendRow(0, false));
  EXPECT_EQ(Shown(table, 1), "./0/10");
  EXPECT_TRUE(table.AppendRow(1, true));
  EXPECT_EQ(Shown(table, 1), "./0/./10");
  EXPECT_TRUE(table.AppendRow(3, true));
  EXPECT_EQ(Shown(table, 1), "./0/./10/.");
  EXPECT_TRUE(table.AppendRow(5, true));
  EXPECT_EQ(Shown(table, 1), "./0/./10/./.");
}

TEST(CGridArray, AppendColumnLeavesTheDeclaredWidth) {
  Table table = Numbered(2, 2);
  EXPECT_TRUE(table.AppendColumn(0, true));
  EXPECT_EQ(table.GetColCount(), 2);
  EXPECT_EQ(Shown(table, 3), "0 . 1/10 . 11");
  EXPECT_EQ(table.SetValueAt(0, 2, 5L), 0);
  EXPECT_EQ(table.GetValueAt(0, 2).lVal, 1);
  EXPECT_TRUE(table.AppendColumn(0, false));
  EXPECT_EQ(Shown(table, 4), ". 0 . 1/. 10 . 11");
  EXPECT_EQ(table.SetArray(2, 2), 1);
  EXPECT_EQ(Shown(table, 3), ". 0 ./. 10 .");
}

TEST(CGridArray, ColumnsOutsideTheDeclaredWidthAreRefused) {
  Table table = Numbered(1, 2);
  for (const int bad : {-1, 2, 7}) {
    EXPECT_FALSE(table.AppendColumn(bad, false)) << bad;
    EXPECT_FALSE(table.AppendColumn(bad, true)) << bad;
    EXPECT_FALSE(table.RemoveCol(bad)) << bad;
  }
  Table none(3, 0);
  EXPECT_FALSE(none.AppendColumn(0, false));
}

TEST(CGridArray, RemoveColLeavesTheDeclaredWidth) {
  Table table = Numbered(2, 3);
  EXPECT_TRUE(table.RemoveCol(1));
  EXPECT_EQ(table.GetColCount(), 3);
  EXPECT_EQ(WidthOf(table, 0), 2);
  EXPECT_EQ(Shown(table, 2), "0 2/10 12");
  // The declared width still allows the column that no row has any more.
  EXPECT_EQ(table.SetValueAt(0, 2, 5L), 0);
  EXPECT_TRUE(table.RemoveCol(2));
  EXPECT_EQ(Shown(table, 2), "0 2/10 12");
  EXPECT_TRUE(table.AppendColumn(2, true));
  EXPECT_EQ(Shown(table, 3), "0 2 ./10 12 .");
}

TEST(CGridArray, RemoveRowRefusesOutside) {
  Table table = Numbered(3, 1);
  EXPECT_FALSE(table.RemoveRow(-1));
  EXPECT_FALSE(table.RemoveRow(3));
  EXPECT_TRUE(table.RemoveRow(1));
  EXPECT_EQ(Shown(table, 1), "0/20");
}

TEST(CGridArray, CopiesAreIndependent) {
  Table table = Numbered(2, 2);
  const Table copy(table);
  Table assigned;
  assigned = table;
  table.SetValueAt(0, 0, _variant_t(_T("x")));
  EXPECT_EQ(Shown(copy, 2), "0 1/10 11");
  EXPECT_EQ(Shown(assigned, 2), "0 1/10 11");
  EXPECT_EQ(assigned.GetColCount(), 2);
}

// Counts how often its cells are copied.
struct Counted {
  Counted() = default;
  Counted(const Counted&) { ++copies; }
  Counted(Counted&&) noexcept = default;
  Counted& operator=(const Counted&) {
    ++copies;
    return *this;
  }
  Counted& operator=(Counted&&) noexcept = default;
  ~Counted() = default;
  static int copies;
};
int Counted::copies = 0;

TEST(CGridArray, InsertingAndRemovingRowsCopiesNoCell) {
  CGridArray<Counted> table(100, 10);
  Counted::copies = 0;
  for (int i = 0; i < 200; ++i) table.AppendRow(i / 2, false);
  for (int i = 0; i < 50; ++i) table.RemoveRow(0);
  table.SetArray(5000, 20);
  table.AppendColumn(3, false);
  EXPECT_EQ(Counted::copies, 0);
}

}  // namespace
}  // namespace lorv
