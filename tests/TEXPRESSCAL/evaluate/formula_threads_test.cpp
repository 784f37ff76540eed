// The engine on several threads at once: separate objects share nothing but the function table, and many rows
// are shared out among threads. The thread sanitizer runs this program, too.
#include <gtest/gtest.h>

#include <iterator>
#include <thread>
#include <vector>

#include "TEXPRESSCAL/calculate_rows.h"
#include "TEXPRESSCAL/express.h"
#include "tests/support/print.h"

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 200;

// Runs the work on all threads at the same time; each gets its own number.
template <class Work>
void OnAllThreads(Work work) {
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) threads.emplace_back([&work, i] { work(i); });
  for (std::thread& thread : threads) thread.join();
}

TEST(FormulaThreads, ExpressionsOnTheirOwnThreadsDoNotMeet) {
  std::vector<double> sums(kThreads);
  OnAllThreads([&sums](int i) {
    CString text;
    text.Format(_T("MAX(%d,2)+SQRT(16)*IIF(1<2<3,1,0)"), i);
    for (int round = 0; round < kRounds; ++round) {
      CExpression expression;
      double value = 0;
      if (expression.ChangeExpression(text) == -1) expression.Value(value);
      sums[static_cast<std::size_t>(i)] += value;
    }
  });
  for (int i = 0; i < kThreads; ++i) {
    EXPECT_EQ(sums[static_cast<std::size_t>(i)], kRounds * ((i > 2 ? i : 2) + 4)) << "thread " << i;
  }
}

TEST(FormulaThreads, CalculatorsOnTheirOwnThreadsDoNotMeet) {
  std::vector<double> sums(kThreads);
  OnAllThreads([&sums](int i) {
    CAdExpCalculate calculator;
    for (int round = 0; round < kRounds; ++round) {
      calculator.SetExpr(_T("长*B+ROUND(C)"));
      calculator.SetVarValue(_T("长"), i, false);
      calculator.SetVarValue(_T("B"), 2.5, false);
      calculator.SetVarValue(_T("C"), 1.25, false);
      sums[static_cast<std::size_t>(i)] += calculator.Calculate();
    }
  });
  for (int i = 0; i < kThreads; ++i) {
    EXPECT_EQ(sums[static_cast<std::size_t>(i)], kRounds * (i * 2.5 + 1)) << "thread " << i;
  }
}

// All threads copy the one calculator, whose working copy may not be written yet.
TEST(FormulaThreads, RowsAreSharedOutAmongThreads) {
  constexpr std::size_t kRows = 60000;
  const double kMixed[] = {0.3333, 2, 0.0015, -1.25, 0, 0.667, 12.5};
  std::vector<double> column(kRows);
  for (std::size_t row = 0; row < kRows; ++row) column[row] = kMixed[row % std::size(kMixed)];
  const lorv::ValueColumn columns[] = {{_T("A"), column.data()}};
  for (const TCHAR* formula : {_T("1/(A-0.3334)+A*2"), _T("FIND('B','AB')+1/A")}) {
    CAdExpCalculate calculator(formula);
    calculator.SetVarValue(_T("A"), 7, false);
    calculator.Calculate();
    std::vector<double> alone(kRows), shared(kRows);
    std::vector<int> alone_errors(kRows), shared_errors(kRows);
    lorv::CalculateRows(calculator, columns, kRows, alone.data(), alone_errors.data());
    lorv::CalculateRows(calculator, columns, kRows, shared.data(), shared_errors.data(), kThreads);
    EXPECT_EQ(alone, shared);
    EXPECT_EQ(alone_errors, shared_errors);
  }
}

}  // namespace
