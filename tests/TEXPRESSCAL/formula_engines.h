#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <ostream>
#include <string>

#include "TEXPRESSCAL/express.h"
#include "tests/reference/reference_expression.h"
#include "tests/support/print.h"

// One suite for two engines: the library's parser and evaluator, and the slow reference. A table that both
// pass pins the reference as well, and the random comparisons then rest on something.
namespace lorv::test {

// A parse and an evaluation, with all that a caller can see of them.
struct Worked {
  int changed = 0;  // -1, or the index of the failure
  int code = 0;
  double value = 0;
  std::string names;

  bool operator==(const Worked& other) const {
    return changed == other.changed && code == other.code &&
           std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other.value) &&
           names == other.names;
  }
};

inline void PrintTo(const Worked& worked, std::ostream* out) {
  *out << "failed at " << worked.changed << ", value " << worked.value << ", code " << worked.code
       << ", names \"" << worked.names << '"';
}

// Accepts the names of a comma list such as "A,B".
class ListJudge final : public CValidParameter {
 public:
  explicit ListJudge(const char* names) : names_(_T(",") + CString::FromUtf8(names) + _T(",")) {}
  int ValidParameter(LPCTSTR name) const override {
    return names_.Find((_T(",") + CString(name) + _T(",")).GetString()) >= 0 ? 1 : 0;
  }

 private:
  CString names_;
};

// `names` is null where the parser has no judge.
struct LibraryEngine {
  static Worked Work(const CString& formula, const char* names) {
    CExpression expression;
    ListJudge judge(names == nullptr ? "" : names);
    if (names != nullptr) expression.m_pValidParameter = &judge;
    Worked worked;
    worked.changed = expression.ChangeExpression(formula);
    worked.code = expression.Value(worked.value);
    worked.names = Utf8(expression.m_szVarList);
    return worked;
  }
};

struct ReferenceEngine {
  static Worked Work(const CString& formula, const char* names) {
    reference::Expression expression;
    ListJudge judge(names == nullptr ? "" : names);
    if (names != nullptr) {
      expression.judge = [&](const reference::Text& name) { return judge.ValidParameter(name.c_str()) != 0; };
    }
    Worked worked;
    worked.changed = expression.ChangeExpression(reference::Text(formula.View()));
    worked.code = expression.Value(worked.value);
    worked.names = Utf8(TextView(expression.var_list));
    return worked;
  }
};

using BothEngines = testing::Types<LibraryEngine, ReferenceEngine>;

struct GoodFormula {
  const char* formula;
  double value;
  int code = 0;
};

struct BadFormula {
  const char* formula;
  int position;
};

template <class Engine>
void ExpectGood(const GoodFormula& good) {
  const Worked worked = Engine::Work(CString::FromUtf8(good.formula), nullptr);
  EXPECT_EQ(worked, (Worked{-1, good.code, good.value, ""})) << good.formula;
}

template <class Engine>
void ExpectBad(const BadFormula& bad) {
  const Worked worked = Engine::Work(CString::FromUtf8(bad.formula), nullptr);
  EXPECT_EQ(worked, (Worked{bad.position, -1, 0, ""})) << bad.formula;
}

}  // namespace lorv::test
