// The loops of every generation of processors that this one can run give what the rules of single numbers
// give.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "TEXPRESSCAL/compiled/formula_plan.h"
#include "TEXPRESSCAL/evaluate/number_functions.h"
#include "TEXPRESSCAL/simd/block_work.h"
#include "framework/collections/aligned_row.h"
#include "tests/reference/formula_difference.h"
#include "tests/support/checked_share.h"
#include "tests/support/print.h"
#include "tests/support/same_bits.h"

namespace lorv::test {
namespace {

constexpr int kLoopsShare = CheckedShare(10);

std::vector<const BlockLoops*> AllLoops() {
  std::vector<const BlockLoops*> loops(4);
  loops.resize(UsableBlockLoops(loops.data(), loops.size()));
  return loops;
}

// Each generation of loops that this processor can run, on one program and one block.
std::vector<double> EvaluatedBy(const BlockLoops& loops, const FormulaProgram& program,
                                const std::vector<double>& values, bool streams,
                                std::vector<std::uint8_t>& errors) {
  std::vector<BlockCell> cells;
  for (std::size_t i = 0; i < program.ConstantEnd(); ++i) cells.push_back({nullptr, program.Cells()[i]});
  std::vector<double> column = values;
  column.resize((values.size() + kBlockStride - 1) / kBlockStride * kBlockStride);
  for (std::size_t i = 0; i < program.SlotCount(); ++i) cells[i].column = column.data();
  AlignedRow<double> results(values.size() + 1, -7);
  errors.assign(values.size(), 0);
  const auto scratch = std::make_unique<BlockScratch>();
  loops.evaluate({program.Steps().data(), program.Steps().size(), cells.data(), program.ConstantEnd(),
                  values.size(), results.data(), streams, errors.data(), scratch.get(),
                  [](unsigned short kind, double x) { return NumberFunction(kind, x); }, nullptr, 0});
  loops.end_stream();
  EXPECT_EQ(results.back(), -7);
  return {results.begin(), results.end() - 1};
}

void ExpectEvaluatedAlike(const BlockLoops& loops, FormulaProgram& program, const std::vector<double>& values,
                          bool streams, const Text& formula) {
  std::vector<std::uint8_t> errors;
  const std::vector<double> results = EvaluatedBy(loops, program, values, streams, errors);
  for (std::size_t row = 0; row < values.size(); ++row) {
    std::fill_n(program.Slots(), program.SlotCount(), values[row]);
    int error = 0;
    const double expected = program.Evaluate(error);
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

TEST(BlockLoops, GivesTheSameOnEveryGeneration) {
  std::vector<double> values(std::begin(kEdges), std::end(kEdges));
  ChoiceSource source(5);
  while (values.size() < kBlockRows - 1) values.push_back(MakeValue(source));
  values.push_back(-1e-11);  // the last of a block of whole strides, and of one that is not
  values[kBlockRows - 2] = -1e-11;
  const std::vector<const BlockLoops*> loops = AllLoops();
  ASSERT_FALSE(loops.empty());
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
                            _T("A-A*3"),
                            _T("A*2*A"),
                            _T("A+1-A"),
                            _T("3-A-1"),
                            _T("3-(A-1)"),
                            _T("(A-1)*(A+2)*(A*A-3)-A"),
                            _T("1/(A-1)+SQRT(A)/A")}) {
    FormulaPlan plan;
    Text capitals(text);
    if (!plan.Make(capitals, names)) continue;
    FormulaProgram program = plan.Program();
    for (std::size_t i = 0; i < loops.size(); ++i) {
      ExpectEvaluatedAlike(*loops[i], program, values, false, capitals);
      ExpectEvaluatedAlike(*loops[i], program, {values.begin(), values.end() - 1}, true, capitals);
    }
  }
}

// Compared with the rules of one value at a time.
void ExpectReadAlike(const BlockLoops& loops, bool often_thirds, const std::vector<double>& values) {
  std::vector<double> readings(values.size(), -7);
  RowMarks refused{};
  bool often = often_thirds;
  const double* const read = loops.read(values.data(), readings.data(), values.size(), often, refused);
  EXPECT_TRUE(read == values.data() || read == readings.data());
  bool any_refused = false;
  for (std::size_t i = 0; i < values.size(); ++i) {
    double expected = 0;
    const bool plain = ReadsPlainly(values[i], expected);
    any_refused = any_refused || !plain;
    ASSERT_EQ((refused[i / 64] >> i % 64 & 1) == 0, plain) << loops.name << ' ' << values[i];
    if (plain) {
      ASSERT_TRUE(SameBits(read[i], expected)) << loops.name << ' ' << values[i];
    }
  }
  if (read == values.data()) {
    EXPECT_EQ(often, often_thirds || any_refused) << loops.name;
  }
}

void ExpectReadAlike(const BlockLoops& loops, const std::vector<double>& values) {
  ExpectReadAlike(loops, false, values);
  ExpectReadAlike(loops, true, values);
}

TEST(BlockLoops, ReadsValuesAlikeOnEveryGeneration) {
  const std::vector<const BlockLoops*> loops = AllLoops();
  ChoiceSource source(6);
  for (int turn = 0; turn < 20000 / kLoopsShare && !HasFatalFailure(); ++turn) {
    std::vector<double> values(1 + source.Below(turn % 10 == 0 ? kBlockRows : 20));
    const std::size_t any_share = source.OneIn(3) ? 10 : 1000;
    for (double& value : values)
      value = source.OneIn(any_share) ? MakeValue(source) : static_cast<double>(source.Below(100000)) / 1000;
    for (const BlockLoops* some : loops) ExpectReadAlike(*some, values);
  }
}

TEST(BlockLoops, ReadsTheEdgesOfThirdsAlikeOnEveryGeneration) {
  const std::vector<const BlockLoops*> loops = AllLoops();
  for (const double middle : {1.0 / 3, 2.0 / 3, 1.0 / 3 - 0.001, 1.0 / 3 + 0.001, 2.0 / 3 - 0.001,
                              2.0 / 3 + 0.001, 0.0, 0x1p36 / 1000}) {
    for (const double sign : {1.0, -1.0}) {
      std::vector<double> values{sign * middle};
      for (int i = 0; i < 60; ++i)
        values.push_back(std::nextafter(values.back(), i < 30 ? -2 * sign : 1e300 * sign));
      for (const BlockLoops* some : loops) ExpectReadAlike(*some, values);
    }
  }
}

// The quotient is mended where the processor can; it is compared with a plain division.
TEST(BlockLoops, ReadsEveryCountOfThousandthsAsTheQuotient) {
  const std::vector<const BlockLoops*> loops = AllLoops();
  ChoiceSource source(9);
  std::vector<double> values(kBlockRows);
  std::vector<double> readings(kBlockRows);
  for (int turn = 0; turn < 40000 / kLoopsShare; ++turn) {
    const double first = std::floor(std::ldexp(1.0 + static_cast<double>(source.Below(1U << 30)) / (1U << 30),
                                               static_cast<int>(source.Below(35))));
    for (std::size_t i = 0; i < values.size(); ++i)
      values[i] = (first + static_cast<double>(i)) / 1000 * (1 + 0x1p-40);  // not the quotient itself
    for (std::size_t k = 0; k < loops.size(); ++k) {
      RowMarks refused{};
      bool often_thirds = false;
      const double* const read =
          loops[k]->read(values.data(), readings.data(), values.size(), often_thirds, refused);
      for (std::size_t i = 0; i < values.size(); ++i) {
        if ((refused[i / 64] >> i % 64 & 1) != 0) continue;
        ASSERT_TRUE(SameBits(read[i], std::nearbyint(values[i] * 1000) / 1000))
            << loops[k]->name << ' ' << values[i];
      }
    }
  }
}

TEST(BlockLoops, ReadsPlacesAlikeOnEveryGeneration) {
  const std::vector<const BlockLoops*> loops = AllLoops();
  ChoiceSource source(16);
  for (int turn = 0; turn < 60000 / kLoopsShare; ++turn) {
    std::array<double, 16> values{};
    std::array<std::size_t, 16> places{};
    std::array<double, 16> copies{};
    std::array<double, 16> readings{};
    for (std::size_t i = 0; i < values.size(); ++i) {
      values[i] = source.OneIn(100) ? MakeValue(source) : static_cast<double>(source.Below(100000)) / 1013;
      places[i] = source.Below(values.size()) * sizeof(double);
    }
    for (std::size_t k = 0; k < loops.size(); ++k) {
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

TEST(BlockLoops, ReadsThirdsAlikeOnEveryGeneration) {
  ChoiceSource source(17);
  const double kNear[] = {1.0 / 3, 2.0 / 3, 0.3333, 0.333,    0.334,  0.332,
                          0.666,   0.667,   0.668,  -1.0 / 3, 0.3323, 0.6677};
  for (int turn = 0; turn < 20000 / kLoopsShare; ++turn) {
    AlignedRow<double> values(64);
    for (double& value : values) {
      value = source.OneIn(3) ? source.From(kNear)
              : source.OneIn(60)
                  ? MakeValue(source)
                  : static_cast<double>(source.Below(100000)) / (source.OneIn(2) ? 1000 : 1013);
    }
    for (const BlockLoops* loops : AllLoops()) {
      AlignedRow<double> numbers(64);
      AlignedRow<double> divisors(64);
      const std::uint64_t doubtful = loops->read_thirds(values.data(), numbers.data(), divisors.data(), 64);
      for (std::size_t i = 0; i < 64; ++i) {
        if ((doubtful >> i & 1) != 0) continue;
        double number = ThirdsOf(values[i]);
        const double divisor = number == 0 ? 1 : 3;
        if (number == 0) {
          ASSERT_TRUE(ReadsPlainly(values[i], number)) << loops->name << ' ' << values[i];
        }
        ASSERT_TRUE(SameBits(numbers[i], number) && divisors[i] == divisor)
            << loops->name << ' ' << values[i];
      }
    }
  }
}

// Doubt is for what is rare, or rows would be evaluated as text.
TEST(BlockLoops, DoubtsNoThirdsAndNoTypedLengths) {
  AlignedRow<double> values(64);
  for (std::size_t i = 0; i < 64; ++i) values[i] = i % 2 == 0 ? static_cast<double>(i) * 1.001 : 1.0 / 3;
  values[1] = 0.3333;
  values[3] = 2.0 / 3;
  AlignedRow<double> numbers(64);
  AlignedRow<double> divisors(64);
  for (const BlockLoops* loops : AllLoops())
    EXPECT_EQ(loops->read_thirds(values.data(), numbers.data(), divisors.data(), 64), 0U) << loops->name;
}

TEST(BlockLoops, WritesZerosPastTheCachesWhereTheyBelong) {
  for (const BlockLoops* loops : AllLoops()) {
    for (std::size_t from = 0; from < 20; ++from) {
      for (const std::size_t count : {0U, 1U, 7U, 15U, 16U, 17U, 33U, 100U}) {
        AlignedRow<int> errors(150, -7);
        loops->stream_no_errors(errors.data() + from, count);
        loops->end_stream();
        for (std::size_t i = 0; i < errors.size(); ++i)
          ASSERT_EQ(errors[i], i >= from && i < from + count ? 0 : -7)
              << loops->name << ' ' << from << ' ' << count;
      }
    }
  }
}

}  // namespace
}  // namespace lorv::test
