// Separate objects of the engine on several threads at once: nothing is shared but the function table. The
// thread sanitizer runs this program, too.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

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

}  // namespace
