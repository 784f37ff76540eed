#pragma once

#include <string>
#include <utility>

#include "TEXPRESSCAL/optimize_expression.h"
#include "tests/support/print.h"

// Opens the simplifier's private rules to the tests, each under its own name.
struct SimplifierRules {
  COptimizeExpression simplifier;

  void SetFunction(int function) { simplifier.m_nFuncIndex = function; }
  int Function() const { return simplifier.m_nFuncIndex; }
  const CMapValue& Values() const { return simplifier.m_mapKeyValue; }

#define LORV_RULE(name)                                            \
  template <class... Arguments>                                    \
  auto name(Arguments&&... arguments) const {                      \
    return simplifier.name(std::forward<Arguments>(arguments)...); \
  }
  LORV_RULE(EstimateOptCase)
  LORV_RULE(EstimateOptCase_front)
  LORV_RULE(EstimateOptCase_back)
  LORV_RULE(BracketMatch)
  LORV_RULE(BracketToFrontMatch)
  LORV_RULE(BracketToBackMatch)
  LORV_RULE(FuncBracketMatch)
  LORV_RULE(ReverseFindSubstring)
  LORV_RULE(FindStep)
  LORV_RULE(ReplaceSingleObject)
  LORV_RULE(IsValue)
  LORV_RULE(ReplaceDivisionZero)
  LORV_RULE(ReplaceMutiZeroAndSubtration)
  LORV_RULE(ReplaceZeroMutiple)
  LORV_RULE(ReplaceAndSubtrationZero)
  LORV_RULE(ReplaceZeroAndSubtration)
  LORV_RULE(ZeroAndMutipleAndDvsion)
  LORV_RULE(ZeroAndAddAndSubtratration)
  LORV_RULE(ClearRepeatOperator)
  LORV_RULE(OptimizateZero)
  LORV_RULE(AddBracket)
  LORV_RULE(ClearNosenseBracket)
  LORV_RULE(ClearFurthestBracket)
  LORV_RULE(SExperOptimizate)
  LORV_RULE(SubsectionOptimize)
  LORV_RULE(IdentityFuncElement)
  LORV_RULE(GetMaxOrMinValue)
  LORV_RULE(ValStrChangDouble)
  LORV_RULE(OptimizateAll)
  LORV_RULE(OptimizateMaxMin)
  LORV_RULE(OptimizateIIF)
  LORV_RULE(InclusiveFunc)
#undef LORV_RULE

  // The text that a rule leaves, and behind a blank what it gave.
  template <class Rule>
  static std::string After(LPCTSTR text, Rule rule) {
    CString changed(text);
    const int result = static_cast<int>(rule(changed));
    return lorv::test::Utf8(changed) + " " + std::to_string(result);
  }
};

inline const SimplifierRules rules;
