// Many rows at once: compared with the calculator itself, row by row.

#include "TEXPRESSCAL/calculate_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "TEXPRESSCAL/rows/row_table.h"
#include "TEXPRESSCAL/simd/block_work.h"
#include "framework/text/char_class.h"
#include "tests/TEXPRESSCAL/guarded_pages.h"
#include "tests/reference/formula_difference.h"
#include "tests/support/checked_share.h"
#include "tests/support/print.h"
#include "tests/support/same_bits.h"

namespace lorv::test {
namespace {

constexpr int kRowsShare = CheckedShare(10);

struct NamedColumn {
  Text name;
  std::vector<double> values;
};

// Every row of all columns, by both ways.
void ExpectSameAsRowByRow(const CAdExpCalculate& calculator, const std::vector<NamedColumn>& columns,
                          std::size_t rows, int threads = 1) {
  std::vector<ValueColumn> given;
  for (const NamedColumn& column : columns) given.push_back({CString(column.name), column.values.data()});
  std::vector<double> results(rows, -7);
  std::vector<int> errors(rows, -7);
  CalculateRows(calculator, given, rows, results.data(), errors.data(), threads);
  for (std::size_t row = 0; row < rows; ++row) {
    CAdExpCalculate single;
    single = calculator;
    CMapValue values = calculator.Values();
    single.SetVarValue(&values);
    for (const NamedColumn& column : columns)
      single.SetVarValue(column.name.c_str(), column.values[row], false);
    single.SetExpr(calculator.GetExpr());
    int error = -7;
    const double expected = single.Calculate(error);
    ASSERT_TRUE(SameBits(results[row], expected) && errors[row] == error)
        << Utf8(calculator.GetExpr()) << " in row " << row << ": " << results[row] << ", error "
        << errors[row] << " for " << expected << ", error " << error << ", evaluated as "
        << Utf8(single.GetCalcedExpr());
  }
}

TEST(CalculateRows, WorksEveryRow) {
  const double lengths[] = {1, 2, 3};
  const ValueColumn columns[] = {{_T("L"), lengths}};
  double results[3];
  CalculateRows(CAdExpCalculate(_T("L*2")), columns, 3, results, nullptr);
  EXPECT_EQ(results[0], 2);
  EXPECT_EQ(results[1], 4);
  EXPECT_EQ(results[2], 6);
}

// Values are fetched long before they are read; behind the last one that must do no harm.
TEST(CalculateRows, TakesColumnsBehindWhichThereIsNothing) {
  const GuardedPages pages;
  constexpr std::size_t kRows = 2 * GuardedPages::kPage / sizeof(double);
  auto* const lengths = reinterpret_cast<double*>(pages.Units());
  for (std::size_t row = 0; row < kRows; ++row) lengths[row] = static_cast<double>(row) / 1000;
  std::vector<double> results(kRows);
  for (const std::size_t rows : {kRows, kRows - 1, std::size_t{300}, std::size_t{1}}) {
    const ValueColumn columns[] = {{_T("L"), lengths + kRows - rows}};
    CalculateRows(CAdExpCalculate(_T("L*2")), columns, rows, results.data(), nullptr);
    EXPECT_EQ(results[rows - 1], static_cast<double>(kRows - 1) / 1000 * 2);
  }
}

TEST(CalculateRows, DoesNothingForNoRows) {
  CalculateRows(CAdExpCalculate(_T("L*2")), {}, 0, nullptr, nullptr);
  const ValueColumn columns[] = {{_T("L"), nullptr}};
  CalculateRows(CAdExpCalculate(_T("L*2")), columns, 0, nullptr, nullptr, 2);
}

TEST(CalculateRows, KeepsTheCalculatorsValuesAndKeywords) {
  CAdExpCalculate calculator(_T("L*B+Q"));
  calculator.SetVarValue(_T("B:3"));
  CStringArray keywords;
  keywords.Add(_T("Q"));
  keywords.Add(_T("B"));
  calculator.SetKeyWord(keywords);
  ExpectSameAsRowByRow(calculator, {{_T("l"), {1, 2, -3, 0.3333}}}, 4);
  int error = 0;
  calculator.SetVarValue(_T("L"), 1, false);
  EXPECT_EQ(calculator.Calculate(error), 3);
  EXPECT_EQ(calculator.Values().size(), 2U);
}

TEST(CalculateRows, TakesTheLaterOfTwoColumnsOfOneName) {
  ExpectSameAsRowByRow(CAdExpCalculate(_T("L*2")), {{_T("L"), {1, 2}}, {_T("l"), {5, 6}}}, 2);
}

TEST(CalculateRows, ReportsTheErrorOfEachRow) {
  for (const TCHAR* formula :
       {_T("1/A"), _T("SQRT(A)/A"), _T("IIF(A>1,1/(A-2),2)"), _T("A=0&&(1/A)=1"), _T("A=1||(1/A)=1"),
        _T("MAX(1/A,SQRT(A))"), _T("A/A/A"), _T("SQRT(A)/(1/A)"), _T("(1/A)^SQRT(A)"),
        _T("IIF(A,IIF(A>1,1/(A-2),3),LOG(A))"), _T("LOG(A)+1/A"), _T("A+"), _T("B*2"), _T("'A'=A"), _T("")}) {
    ExpectSameAsRowByRow(CAdExpCalculate(formula), {{_T("A"), {0, 1, 2, -1, 0.3333, 2.0005, 1e13, -0.0}}}, 8);
  }
}

TEST(CalculateRows, WorksOneBlockMoreAndOneLess) {
  for (const std::size_t rows :
       {kBlockRows - 1, kBlockRows, kBlockRows + 1, 16 * kBlockRows, 16 * kBlockRows + 1}) {
    std::vector<double> values(rows);
    for (std::size_t i = 0; i < rows; ++i) values[i] = static_cast<double>(i) / 8;
    ExpectSameAsRowByRow(CAdExpCalculate(_T("ROUND(A)*2+IIF(A>20,A-1,A/4)")), {{_T("A"), values}}, rows);
  }
}

TEST(CalculateRows, SavesAsManyNumbersAsThereIsRoomFor) {
  for (const int deep : {static_cast<int>(kMaxSavedBlocks) - 1, static_cast<int>(kMaxSavedBlocks),
                         static_cast<int>(kMaxSavedBlocks) + 1}) {
    Text formula;
    for (int i = 0; i < deep; ++i) formula += _T("(A-1)*(");
    formula += _T("A+1");
    formula.append(static_cast<std::size_t>(deep), ')');
    ExpectSameAsRowByRow(CAdExpCalculate(formula.c_str()), {{_T("A"), {0, 1, 2, 1.5}}}, 4);
  }
}

const TCHAR* const kNames[] = {_T("A"),   _T("B"),  _T("H"), _T("AB"), _T("A1"), _T("A_1"),
                               _T("ABC"), _T("B2"), _T("X"), _T("E3"), _T("墙"), _T("LONG_NAME_OF_WALL")};

double TypicalValue(ChoiceSource& source) {
  if (source.OneIn(60)) return MakeValue(source);
  if (source.OneIn(3)) return static_cast<double>(source.Below(6)) - 2;
  return static_cast<double>(source.Below(40000)) / 1000 - 8;
}

TEST(CalculateRows, GivesWhatRowByRowGives) {
  ChoiceSource source(20260301);
  for (int i = 0; i < 4000 / kRowsShare && !HasFatalFailure(); ++i) {
    const Text formula = source.OneIn(12) ? MakeAnyFormula(source)
                                          : MakeFormula(source, 1 + static_cast<int>(source.Below(4)));
    CAdExpCalculate calculator(formula.c_str());
    std::vector<NamedColumn> columns;
    const std::size_t rows = 1 + source.Below(i % 20 == 0 ? 400 : 20);
    for (const TCHAR* name : kNames) {
      if (source.OneIn(6)) {
        calculator.SetVarValue(name, TypicalValue(source), false);
        continue;
      }
      columns.push_back({name, {}});
      for (std::size_t row = 0; row < rows; ++row) columns.back().values.push_back(TypicalValue(source));
    }
    ExpectSameAsRowByRow(calculator, columns, rows);
  }
}

// Rows with thirds wait until there are enough of them.
TEST(CalculateRows, WorksManyRowsOfThirds) {
  const double kMixed[] = {0.3333, 0.667, 0.333, 1.25, -0.3333, 2, 0.334, 1e13, 2.0005, -1, 0};
  ChoiceSource source(11);
  for (const TCHAR* formula :
       {_T("A*B+1"), _T("1/A/B"), _T("A/B*2-B"), _T("IIF(A>B,A,B)/A"), _T("A^2+B"), _T("2^A*B"), _T("-A*-B"),
        _T("2A+3B"), _T("A*-B/C"), _T("MAX(A,B,C)-MIN(A,1)/A"), _T("AA*AA*B"), _T("ROUND(A*100)/B"),
        _T("(A<B)+(1>A)"), _T("1*+A")}) {
    CAdExpCalculate calculator(formula);
    calculator.SetVarValue(_T("C"), source.OneIn(2) ? 0.3333 : 2.5, false);
    std::vector<NamedColumn> columns = {{_T("A"), {}}, {_T("B"), {}}, {_T("AA"), {}}};
    constexpr std::size_t kRows = 700;
    for (NamedColumn& column : columns) {
      for (std::size_t row = 0; row < kRows; ++row) column.values.push_back(source.From(kMixed));
    }
    ExpectSameAsRowByRow(calculator, columns, kRows);
  }
}

// So many rows that their outcome is written past the caches: the same as in pieces that are not.
TEST(CalculateRows, WorksSoManyRowsAsInPieces) {
  constexpr std::size_t kRows = RowTable::kManyRows + 77;
  constexpr std::size_t kPiece = 1000;
  ChoiceSource source(12);
  std::vector<double> lengths(kRows);
  std::vector<double> counts(kRows);
  for (std::size_t row = 0; row < kRows; ++row) {
    lengths[row] = static_cast<double>(source.Below(4000)) / 1000;
    counts[row] = static_cast<double>(source.Below(50)) - 1;
  }
  const CAdExpCalculate calculator(_T("CEIL(L*7)/N+SQRT(N)+IIF(L>2,L,N*L)"));
  // The outcome does not begin at a line of memory.
  std::vector<double> results(kRows + 3, -7);
  std::vector<int> errors(kRows + 3, -7);
  const ValueColumn columns[] = {{_T("L"), lengths.data()}, {_T("N"), counts.data()}};
  CalculateRows(calculator, columns, kRows, results.data() + 1, errors.data() + 1, 2);
  for (const std::size_t outside : {std::size_t{0}, kRows + 1, kRows + 2}) {
    EXPECT_EQ(results[outside], -7);
    EXPECT_EQ(errors[outside], -7);
  }
  for (std::size_t first = 0; first < kRows; first += kPiece) {
    std::array<double, kPiece> expected{};
    std::array<int, kPiece> reported{};
    const ValueColumn piece[] = {{_T("L"), lengths.data() + first}, {_T("N"), counts.data() + first}};
    const std::size_t rows = std::min(kPiece, kRows - first);
    CalculateRows(calculator, piece, rows, expected.data(), reported.data());
    for (std::size_t i = 0; i < rows; ++i) {
      ASSERT_TRUE(SameBits(results[1 + first + i], expected[i])) << first + i;
      ASSERT_EQ(errors[1 + first + i], reported[i]) << first + i;
    }
  }
}

}  // namespace
}  // namespace lorv::test
