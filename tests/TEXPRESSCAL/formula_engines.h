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
struct Evaluated {
  int changed = 0;  // -1, or the index of the failure
  int code = 0;
  double value = 0;
  std::string names;

  bool operator==(const Evaluated& other) const {
    return changed == other.changed && code == other.code &&
           std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(other.value) &&
           names == other.names;
  }
};

inline void PrintTo(const Evaluated& evaluated, std::ostream* out) {
  *out << "failed at " << evaluated.changed << ", value " << evaluated.value << ", code " << evaluated.code
       << ", names \"" << evaluated.names << '"';
}

// Accepts the names of a comma list such as "A,B".
class ListResolver final : public CValidParameter {
 public:
  explicit ListResolver(const char* names) : names_(_T(",") + CString::FromUtf8(names) + _T(",")) {}
  int ValidParameter(LPCTSTR name) const override {
    return names_.Find((_T(",") + CString(name) + _T(",")).GetString()) >= 0 ? 1 : 0;
  }

 private:
  CString names_;
};

// `names` is null where the parser has no resolver.
struct LibraryEngine {
  static Evaluated Evaluate(const CString& formula, const char* names) {
    CExpression expression;
    ListResolver resolver(names == nullptr ? "" : names);
    if (names != nullptr) expression.m_pValidParameter = &resolver;
    Evaluated evaluated;
    evaluated.changed = expression.ChangeExpression(formula);
    evaluated.code = expression.Value(evaluated.value);
    evaluated.names = Utf8(expression.m_szVarList);
    return evaluated;
  }
};

struct ReferenceEngine {
  static Evaluated Evaluate(const CString& formula, const char* names) {
    reference::Expression expression;
    ListResolver resolver(names == nullptr ? "" : names);
    if (names != nullptr) {
      expression.resolver = [&](const reference::Text& name) {
        return resolver.ValidParameter(name.c_str()) != 0;
      };
    }
    Evaluated evaluated;
    evaluated.changed = expression.ChangeExpression(reference::Text(formula.View()));
    evaluated.code = expression.Value(evaluated.value);
    evaluated.names = Utf8(TextView(expression.var_list));
    return evaluated;
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
  const Evaluated evaluated = Engine::Evaluate(CString::FromUtf8(good.formula), nullptr);
  EXPECT_EQ(evaluated, (Evaluated{-1, good.code, good.value, ""})) << good.formula;
}

template <class Engine>
void ExpectBad(const BadFormula& bad) {
  const Evaluated evaluated = Engine::Evaluate(CString::FromUtf8(bad.formula), nullptr);
  EXPECT_EQ(evaluated, (Evaluated{bad.position, -1, 0, ""})) << bad.formula;
}

}  // namespace lorv::test
