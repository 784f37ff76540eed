#include "tables/xarray_db.h"

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

#include "framework/values/variant_text.h"
#include "tables/value_compare.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// A table of one column with these cells.
CXArrayDBToArray Column(std::initializer_list<_variant_t> cells) {
  CXArrayDBToArray table;
  table.ReDim(static_cast<__int64>(cells.size()), 1);
  int row = 0;
  for (const _variant_t& cell : cells) table.SetValue(row++, 0, cell);
  return table;
}

TEST(CXArrayDBToArray, HeaderExample) {
  CXArrayDBToArray t;
  t.ReDim(2, 1);
  t.SetValue(1, 0, _T("ABC"));
  EXPECT_EQ(t.FindVal(0, _T("abc")), 1);
}

TEST(CXArrayDBToArray, FoundRowIsAnInt) {
  static_assert(std::is_same_v<decltype(CXArrayDBToArray().FindVal(0, _variant_t())), int>);
}

// Equal texts are found by a way of their own: it gives what comparing gives.
TEST(CXArrayDBToArray, TextsAreFoundAsTheyCompare) {
  std::mt19937 random(7);
  const TCHAR units[] = {'a', 'A', 'b', '_', 0, 0x5899, '@', 'z', 'Z', '{'};
  const auto text = [&] {
    std::basic_string<TCHAR> made(random() % 4, ' ');
    for (TCHAR& unit : made) unit = units[random() % std::size(units)];
    return _variant_t(CString(TextView(made)));
  };
  for (int i = 0; i < 20000; ++i) {
    const _variant_t sought = i % 50 == 0 ? _variant_t(static_cast<LPCTSTR>(nullptr)) : text();
    const CXArrayDBToArray table = Column({i % 70 == 0 ? _variant_t(static_cast<LPCTSTR>(nullptr)) : text()});
    for (const long type : {0L, 10L}) {
      const bool found = table.Find(0, 0, sought, 0, 1, type) == 0;
      EXPECT_EQ(found, CompareValues(1, type == 10, sought, table.GetValue(0, 0))) << i;
    }
  }
}

TEST(CXArrayDBToArray, NewOneHasNoRowsAndNoColumns) {
  const CXArrayDBToArray table;
  EXPECT_EQ(table.GetCount(1), 0);
  EXPECT_EQ(table.GetCount(2), 0);
  EXPECT_EQ(table.FindVal(0, _variant_t()), -1);
}

TEST(CXArrayDBToArray, CountKnowsTwoDimensions) {
  CXArrayDBToArray table;
  EXPECT_EQ(table.ReDim(3, 2), 1);
  EXPECT_EQ(table.GetCount(1), 3);
  EXPECT_EQ(table.GetCount(2), 2);
  for (const short other : {short{0}, short{3}, short{-1}}) EXPECT_EQ(table.GetCount(other), 0) << other;
}

TEST(CXArrayDBToArray, ReDimEmptiesAllCells) {
  CXArrayDBToArray table = Column({5L, _T("x")});
  EXPECT_EQ(table.ReDim(2, 2), 1);
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 2; ++column) EXPECT_EQ(table.GetValue(row, column).vt, VT_EMPTY);
  }
}

TEST(CXArrayDBToArray, RefusedReDimEmptiesTheCellsAllTheSame) {
  CXArrayDBToArray table = Column({5L, _T("x")});
  EXPECT_EQ(table.ReDim(2, 0), 0);
  EXPECT_EQ(table.GetCount(1), 2);
  EXPECT_EQ(table.GetCount(2), 0);
  EXPECT_EQ(table.GetValue(0, 0).vt, VT_EMPTY);
  EXPECT_EQ(table.GetValue(1, 0).vt, VT_EMPTY);
}

TEST(CXArrayDBToArray, SetValueOutsideDoesNothing) {
  CXArrayDBToArray table = Column({5L});
  table.SetValue(1, 0, 7L);
  table.SetValue(0, 1, 7L);
  table.SetValue(-1, -1, 7L);
  EXPECT_EQ(table.GetValue(0, 0).lVal, 5);
  EXPECT_EQ(table.GetCount(1), 1);
}

TEST(CXArrayDBToArray, AppendRowsAddsAtTheEnd) {
  CXArrayDBToArray table = Column({5L});
  EXPECT_EQ(table.AppendRows(3), 3);
  EXPECT_EQ(table.GetCount(1), 4);
  EXPECT_EQ(table.GetValue(0, 0).lVal, 5);
  EXPECT_EQ(table.GetValue(3, 0).vt, VT_EMPTY);
  EXPECT_EQ(table.AppendRows(0), 0);
  EXPECT_EQ(table.AppendRows(-2), 0);
  EXPECT_EQ(table.GetCount(1), 4);
}

TEST(CXArrayDBToArray, InsertRowsGivesTheCount) {
  CXArrayDBToArray table = Column({1L, 2L});
  EXPECT_EQ(table.InsertRows(1, 2), 2);
  EXPECT_EQ(table.GetCount(1), 4);
  EXPECT_EQ(table.GetValue(0, 0).lVal, 1);
  EXPECT_EQ(table.GetValue(1, 0).vt, VT_EMPTY);
  EXPECT_EQ(table.GetValue(3, 0).lVal, 2);
  EXPECT_EQ(table.InsertRows(0, 0), 0);
  EXPECT_EQ(table.GetCount(1), 4);
}

TEST(CXArrayDBToArray, InsertRowsOutsideGoesToTheNearerEnd) {
  CXArrayDBToArray table = Column({1L});
  EXPECT_EQ(table.InsertRows(99, 1), 1);
  EXPECT_EQ(table.InsertRows(-5, 1), 1);
  EXPECT_EQ(table.GetCount(1), 3);
  EXPECT_EQ(table.GetValue(1, 0).lVal, 1);
}

TEST(CXArrayDBToArray, DeleteRowsCountsWhatWasThere) {
  CXArrayDBToArray table = Column({1L, 2L, 3L});
  EXPECT_EQ(table.DeleteRows(0, 5), 3);
  EXPECT_EQ(table.GetCount(1), 0);
  table = Column({1L, 2L, 3L, 4L});
  EXPECT_EQ(table.DeleteRows(1, 2), 2);
  EXPECT_EQ(table.GetValue(1, 0).lVal, 4);
  EXPECT_EQ(table.DeleteRows(1, std::numeric_limits<long>::max()), 1);
  EXPECT_EQ(table.DeleteRows(1, 1), 0);
  EXPECT_EQ(table.DeleteRows(-1, 1), 0);
  EXPECT_EQ(table.DeleteRows(0, -1), 0);
  EXPECT_EQ(table.GetCount(1), 1);
}

TEST(CXArrayDBToArray, DeleteColumnsGivesOneAndLeavesTheDeclaredWidth) {
  CXArrayDBToArray table;
  table.ReDim(1, 4);
  for (int column = 0; column < 4; ++column) table.SetValue(0, column, _variant_t(column));
  EXPECT_EQ(table.DeleteColumns(1, 2), 1);
  EXPECT_EQ(table.GetCount(2), 4);
  EXPECT_EQ(table.GetValue(0, 1).lVal, 3);
  EXPECT_EQ(table.GetValue(0, 2).vt, VT_EMPTY);
  EXPECT_EQ(table.DeleteColumns(9, 1), 1);
  EXPECT_EQ(table.DeleteColumns(-1, 1), 1);
  EXPECT_EQ(table.DeleteColumns(0, -1), 1);
  EXPECT_EQ(table.GetValue(0, 0).lVal, 0);
  EXPECT_EQ(table.DeleteColumns(0, 2147483647), 1);
  EXPECT_EQ(table.GetValue(0, 0).vt, VT_EMPTY);
}

TEST(CXArrayDBToArray, ClearKeepsTheShapeAndPutsZero) {
  CXArrayDBToArray table;
  table.ReDim(2, 2);
  table.SetAllVal(_variant_t(_T("x")));
  table.Clear();
  EXPECT_EQ(table.GetCount(1), 2);
  EXPECT_EQ(table.GetCount(2), 2);
  for (int row = 0; row < 2; ++row) {
    for (int column = 0; column < 2; ++column) {
      EXPECT_EQ(table.GetValue(row, column).vt, VT_I4);
      EXPECT_EQ(table.GetValue(row, column).lVal, 0);
    }
  }
}

TEST(CXArrayDBToArray, ClearGoesByTheDeclaredWidth) {
  CXArrayDBToArray table;
  table.ReDim(1, 2);
  table.AppendColumn(0, true);
  table.Clear();
  EXPECT_EQ(table.GetValue(0, 1).vt, VT_I4);
  EXPECT_EQ(table.GetValue(0, 2).vt, VT_EMPTY);
  CXArrayDBToArray empty;
  empty.Clear();
  EXPECT_EQ(empty.GetCount(1), 0);
}

TEST(CXArrayDBToArray, FindValDistinguishesTagsAndNotCase) {
  const CXArrayDBToArray table = Column({_T("5"), _T("abc"), 5.0, 5L});
  EXPECT_EQ(table.FindVal(0, _variant_t(5L)), 3);
  EXPECT_EQ(table.FindVal(0, _variant_t(_T("ABC"))), 1);
  EXPECT_EQ(table.FindVal(0, _variant_t(6L)), -1);
  EXPECT_EQ(table.FindVal(1, _variant_t(5L)), -1);
  EXPECT_EQ(table.FindVal(-1, _variant_t(5L)), -1);
  EXPECT_EQ(Column({_T("5")}).FindVal(0, _variant_t(5)), -1);
}

TEST(CXArrayDBToArray, FindGoesForwardAndBackward) {
  const CXArrayDBToArray table = Column({7L, 8L, 7L});
  const _variant_t seven(7L);
  EXPECT_EQ(table.Find(0, 0, seven, 0, 1, 0), 0);
  EXPECT_EQ(table.Find(1, 0, seven, 0, 1, 0), 2);
  EXPECT_EQ(table.Find(2, 0, seven, 0, 1, 0), 2);
  EXPECT_EQ(table.Find(1, 0, seven, 1, 1, 0), 0);
  EXPECT_EQ(table.Find(2, 0, seven, 1, 1, 0), 2);
  for (const long direction : {2L, -1L}) EXPECT_EQ(table.Find(0, 0, seven, direction, 1, 0), -1) << direction;
}

TEST(CXArrayDBToArray, FindStaysInsideTheTable) {
  const CXArrayDBToArray table = Column({7L, 8L});
  const _variant_t nothing;
  EXPECT_EQ(table.Find(2, 0, _variant_t(7L), 0, 1, 0), -1);
  EXPECT_EQ(table.Find(2, 0, _variant_t(7L), 1, 1, 0), 0);
  EXPECT_EQ(table.Find(-3, 0, _variant_t(8L), 0, 1, 0), 1);
  EXPECT_EQ(table.Find(-1, 0, _variant_t(7L), 1, 1, 0), -1);
  EXPECT_EQ(table.Find(0, 1, nothing, 0, 1, 0), -1);
  EXPECT_EQ(table.Find(0, -1, nothing, 0, 1, 0), -1);
}

TEST(CXArrayDBToArray, FindDistinguishesCaseForTwoValueTypes) {
  const CXArrayDBToArray table = Column({_T("abc"), _T("ABC")});
  const _variant_t upper(_T("ABC"));
  EXPECT_EQ(table.Find(0, 0, upper, 0, 1, 10), 1);
  EXPECT_EQ(table.Find(0, 0, upper, 0, 1, 13), 1);
  for (const long type : {0L, 1L, 9L, 11L, 12L, 14L})
    EXPECT_EQ(table.Find(0, 0, upper, 0, 1, type), 0) << type;
}

TEST(CXArrayDBToArray, FindComparesByTheCode) {
  const CXArrayDBToArray table = Column({_T("b")});
  const struct {
    LPCTSTR value;
    std::string hits;  // the comparisons that are true
  } kRows[] = {{_T("b"), "135"}, {_T("c"), "236"}, {_T("a"), "456"}};
  for (const auto& row : kRows) {
    std::string hits;
    for (long comparison = -1; comparison <= 8; ++comparison) {
      if (table.Find(0, 0, _variant_t(row.value), 0, comparison, 10) == 0) hits += std::to_string(comparison);
    }
    EXPECT_EQ(hits, row.hits) << Utf8(row.value);
  }
}

TEST(CXArrayDBToArray, ObjectsCannotBeSearched) {
  const _variant_t object(static_cast<IUnknown*>(nullptr));
  const CXArrayDBToArray table = Column({object});
  EXPECT_THROW(table.FindVal(0, object), _com_error);
  EXPECT_EQ(table.FindVal(0, _variant_t(1)), -1);
}

TEST(CXArrayDBToArray, CopiesHaveCellsOfTheirOwn) {
  CXArrayDBToArray table = Column({_T("x")});
  const CXArrayDBToArray copy(table);
  CXArrayDBToArray assigned;
  assigned = table;
  table.SetValue(0, 0, _variant_t(_T("y")));
  EXPECT_EQ(Utf8(VariantToText(copy.GetValue(0, 0))), "x");
  EXPECT_EQ(Utf8(VariantToText(assigned.GetValue(0, 0))), "x");
}

TEST(CXArrayDBToArray, MillionCellsAreSetAndFound) {
  CXArrayDBToArray table;
  ASSERT_EQ(table.ReDim(100000, 10), 1);
  for (int row = 0; row < 100000; ++row) {
    for (int column = 0; column < 10; ++column) table.SetValue(row, column, _variant_t(row * 0.5));
  }
  EXPECT_EQ(table.FindVal(9, _variant_t(49999.5)), 99999);
  EXPECT_EQ(table.InsertRows(0, 1000), 1000);
  EXPECT_EQ(table.FindVal(9, _variant_t(49999.5)), 100999);
}

}  // namespace
}  // namespace lorv
