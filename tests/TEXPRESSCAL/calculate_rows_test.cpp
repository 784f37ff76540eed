// Many rows at once: the judge is the calculator itself, row by row.

#include "TEXPRESSCAL/calculate_rows.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

#include "TEXPRESSCAL/block_work.h"
#include "TEXPRESSCAL/formula_plan.h"
#include "TEXPRESSCAL/number_functions.h"
#include "framework/char_class.h"
#include "tests/reference/formula_difference.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kShare = 10;
#else
constexpr int kShare = 1;
#endif

struct NamedColumn {
  Text name;
  std::vector<double> values;
};

bool SameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
         (std::isnan(a) && std::isnan(b));
}

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
        << errors[row] << " for " << expected << ", error " << error << ", worked as "
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

TEST(CalculateRows, TellsTheErrorOfEachRow) {
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
  for (int i = 0; i < 4000 / kShare && !HasFatalFailure(); ++i) {
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

// Each generation of loops that this processor can run, on one program and one block.
std::vector<double> WorkedBy(const BlockLoops& loops, const FormulaProgram& program,
                             const std::vector<double>& values, std::vector<std::uint8_t>& errors) {
  std::vector<BlockCell> cells;
  for (std::size_t i = 0; i < program.ConstantEnd(); ++i) cells.push_back({nullptr, program.Cells()[i]});
  for (std::size_t i = 0; i < program.SlotCount(); ++i) cells[i].column = values.data();
  std::vector<double> results(values.size());
  errors.assign(values.size(), 0);
  const auto room = std::make_unique<BlockRoom>();
  loops.work({program.Steps().data(), cells.data(), program.ConstantEnd(), values.size(), results.data(),
              errors.data(), room.get(),
              [](unsigned short kind, double x) { return NumberFunction(kind, x); }});
  return results;
}

void ExpectWorkedAlike(const BlockLoops& loops, FormulaProgram& program, const std::vector<double>& values,
                       const Text& formula) {
  std::vector<std::uint8_t> errors;
  const std::vector<double> results = WorkedBy(loops, program, values, errors);
  for (std::size_t row = 0; row < values.size(); ++row) {
    std::fill_n(program.Slots(), program.SlotCount(), values[row]);
    int error = 0;
    const double expected = program.Work(error);
    EXPECT_TRUE(SameBits(results[row], expected) && errors[row] == error)
        << Shown(formula) << " of " << values[row] << " by " << loops.name << ": " << results[row]
        << ", error " << int{errors[row]} << " for " << expected << ", error " << error;
  }
}

const double kEdges[] = {0,
                         -0.0,
                         1,
                         -1,
                         0.5,
                         -0.5,
                         1.5,
                         2.5,
                         1e-10,
                         -1e-10,
                         0.9999999999,
                         2147483646.5,
                         2147483647,
                         2147483647.5,
                         2147483648.0,
                         2147483649.0,
                         -2147483647.5,
                         -2147483648.0,
                         -2147483648.5,
                         -2147483649.0,
                         1e300,
                         -1e300,
                         4.9e-324,
                         std::numeric_limits<double>::infinity(),
                         -std::numeric_limits<double>::infinity(),
                         std::numeric_limits<double>::quiet_NaN()};

TEST(CalculateRows, GivesTheSameOnEveryGenerationOfProcessors) {
  std::vector<double> values(std::begin(kEdges), std::end(kEdges));
  ChoiceSource source(5);
  while (values.size() < kBlockRows - 1) values.push_back(MakeValue(source));
  values.push_back(-1e-11);  // the last of a block of whole strides, and of one that is not
  values[kBlockRows - 2] = -1e-11;
  std::array<const BlockLoops*, 4> loops{};
  const std::size_t count = UsableBlockLoops(loops.data(), loops.size());
  ASSERT_GE(count, 1U);
  CMapValue names;
  names[_T("A")] = 1;
  for (const TCHAR* text : {_T("FLOOR(A)"),
                            _T("CEIL(A)"),
                            _T("ROUND(A)"),
                            _T("INT(A)"),
                            _T("SQRT(A)"),
                            _T("LOG(A)"),
                            _T("ABS(A)"),
                            _T("SIN(A)"),
                            _T("EXP(A)"),
                            _T("A/(A-1)"),
                            _T("A<1"),
                            _T("1<A"),
                            _T("A>=1"),
                            _T("A<>1"),
                            _T("MAX(A,1,0-A)"),
                            _T("MIN(A,1)"),
                            _T("1-A*A"),
                            _T("A^2"),
                            _T("2^A"),
                            _T("!A"),
                            _T("IIF(A,1/(A-1),SQRT(A))"),
                            _T("(A>0)AND(A<2)"),
                            _T("(A>0)&&(A<2)||(A=5)"),
                            _T("-A+|A|"),
                            _T("A+2*A"),
                            _T("A-A*3")}) {
    FormulaPlan plan;
    Text capitals(text);
    if (!plan.Make(capitals, names)) continue;
    FormulaProgram program = plan.Program();
    for (std::size_t i = 0; i < count; ++i) {
      ExpectWorkedAlike(*loops[i], program, values, capitals);
      ExpectWorkedAlike(*loops[i], program, {values.begin(), values.end() - 1}, capitals);
    }
  }
}

// The rules of one value at a time are the judge.
void ExpectReadAlike(const BlockLoops& loops, const std::vector<double>& values) {
  std::vector<double> readings(values.size(), -7);
  RowMarks refused{};
  const double* const read = loops.read(values.data(), readings.data(), values.size(), 0, refused);
  EXPECT_TRUE(read == values.data() || read == readings.data());
  for (std::size_t i = 0; i < values.size(); ++i) {
    double expected = 0;
    const bool plain = ReadsPlainly(values[i], expected);
    ASSERT_EQ((refused[i / 64] >> i % 64 & 1) == 0, plain) << loops.name << ' ' << values[i];
    if (plain) {
      ASSERT_TRUE(SameBits(read[i], expected)) << loops.name << ' ' << values[i];
    }
  }
}

TEST(CalculateRows, ReadsValuesAlikeOnEveryGenerationOfProcessors) {
  std::array<const BlockLoops*, 4> loops{};
  const std::size_t count = UsableBlockLoops(loops.data(), loops.size());
  ChoiceSource source(6);
  for (int turn = 0; turn < 20000 / kShare && !HasFatalFailure(); ++turn) {
    std::vector<double> values(1 + source.Below(turn % 10 == 0 ? kBlockRows : 20));
    const std::size_t any_share = source.OneIn(3) ? 10 : 1000;
    for (double& value : values)
      value = source.OneIn(any_share) ? MakeValue(source) : static_cast<double>(source.Below(100000)) / 1000;
    for (std::size_t i = 0; i < count; ++i) ExpectReadAlike(*loops[i], values);
  }
}

TEST(CalculateRows, ReadsTheEdgesOfThirdsAlikeOnEveryGenerationOfProcessors) {
  std::array<const BlockLoops*, 4> loops{};
  const std::size_t count = UsableBlockLoops(loops.data(), loops.size());
  for (const double middle : {1.0 / 3, 2.0 / 3, 1.0 / 3 - 0.001, 1.0 / 3 + 0.001, 2.0 / 3 - 0.001,
                              2.0 / 3 + 0.001, 0.0, 0x1p36 / 1000}) {
    for (const double sign : {1.0, -1.0}) {
      std::vector<double> values{sign * middle};
      for (int i = 0; i < 60; ++i)
        values.push_back(std::nextafter(values.back(), i < 30 ? -2 * sign : 1e300 * sign));
      for (std::size_t i = 0; i < count; ++i) ExpectReadAlike(*loops[i], values);
    }
  }
}

// The quotient is mended where the processor can; a plain division is the judge.
TEST(CalculateRows, ReadsEveryCountOfThousandthsAsTheQuotient) {
  std::array<const BlockLoops*, 4> loops{};
  const std::size_t count = UsableBlockLoops(loops.data(), loops.size());
  ChoiceSource source(9);
  std::vector<double> values(kBlockRows);
  std::vector<double> readings(kBlockRows);
  for (int turn = 0; turn < 40000 / kShare; ++turn) {
    const double first = std::floor(std::ldexp(1.0 + static_cast<double>(source.Below(1U << 30)) / (1U << 30),
                                               static_cast<int>(source.Below(35))));
    for (std::size_t i = 0; i < values.size(); ++i)
      values[i] = (first + static_cast<double>(i)) / 1000 * (1 + 0x1p-40);  // not the quotient itself
    for (std::size_t k = 0; k < count; ++k) {
      RowMarks refused{};
      const double* const read = loops[k]->read(values.data(), readings.data(), values.size(), 0, refused);
      for (std::size_t i = 0; i < values.size(); ++i) {
        if ((refused[i / 64] >> i % 64 & 1) != 0) continue;
        ASSERT_TRUE(SameBits(read[i], std::nearbyint(values[i] * 1000) / 1000))
            << loops[k]->name << ' ' << values[i];
      }
    }
  }
}

TEST(CalculateRows, ReadsPlacesAlikeOnEveryGenerationOfProcessors) {
  std::array<const BlockLoops*, 4> loops{};
  const std::size_t count = UsableBlockLoops(loops.data(), loops.size());
  ChoiceSource source(16);
  for (int turn = 0; turn < 60000 / kShare; ++turn) {
    std::array<double, 16> values{};
    std::array<std::size_t, 16> places{};
    std::array<double, 16> copies{};
    std::array<double, 16> readings{};
    for (std::size_t i = 0; i < values.size(); ++i) {
      values[i] = source.OneIn(100) ? MakeValue(source) : static_cast<double>(source.Below(100000)) / 1013;
      places[i] = source.Below(values.size()) * sizeof(double);
    }
    for (std::size_t k = 0; k < count; ++k) {
      const std::size_t wanted = loops[k]->lanes * (1 + source.Below(16 / loops[k]->lanes));
      const auto read =
          wanted == loops[k]->lanes && source.OneIn(2) ? loops[k]->read_stride : loops[k]->read_places;
      const bool all_read = read(reinterpret_cast<const char*>(values.data()),
                                 {places.data(), wanted, copies.data(), readings.data()});
      bool expected_all = true;
      for (std::size_t i = 0; i < wanted; ++i) {
        const double value = values[places[i] / sizeof(double)];
        double expected = 0;
        const bool plain = ReadsPlainly(value, expected);
        expected_all = expected_all && plain;
        ASSERT_TRUE(SameBits(copies[i], value));
        if (all_read) {
          ASSERT_TRUE(SameBits(readings[i], expected)) << loops[k]->name << ' ' << value;
        }
      }
      ASSERT_EQ(all_read, expected_all) << loops[k]->name;
    }
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

}  // namespace
}  // namespace lorv::test
