#pragma once

#include <array>
#include <cstddef>

#include "TEXPRESSCAL/language/expression_node.h"
#include "framework/text/text_compare.h"

// The operators between two operands: how they are typed, which node they make, how tightly they bind.
//
// This is the only list of them. The rewriting before a parse, the parser, the evaluators and the simplifier
// all read it, so that an operator means the same in each of them.
namespace lorv {

struct Operator {
  TextView typed;  // in capitals; the blanks around a word belong to it
  NodeKind kind;   // below ' ' it is the control character that the rewriting puts in the operator's place
  unsigned char strength;

  constexpr bool IsRewritten() const { return kind < ' '; }
  constexpr bool IsWord() const { return typed.front() == ' '; }
};

// How tightly operators bind, loosest first; all join to the left, the power included. AND and OR bind alike.
constexpr unsigned char kJoinStrength = 1;
constexpr unsigned char kComparisonStrength = 2;
constexpr unsigned char kSumStrength = 3;
constexpr unsigned char kProductStrength = 4;
constexpr unsigned char kPowerStrength = 5;
constexpr unsigned char kNotStrength = 6;

constexpr unsigned char kLoosestStrength = kJoinStrength;
constexpr unsigned char kTightestStrength = kNotStrength;

// In the order of the rewriting, which also puts every operator before the shorter ones it begins with.
inline constexpr std::array<Operator, 20> kOperators = {{
    {_T(">="), kGreaterEqual, kComparisonStrength},
    {_T("=>"), kGreaterEqual, kComparisonStrength},
    {_T("<="), kLessEqual, kComparisonStrength},
    {_T("=<"), kLessEqual, kComparisonStrength},
    {_T("!="), kNotEqual, kComparisonStrength},
    {_T("<>"), kNotEqual, kComparisonStrength},
    {_T("=="), kEqual, kComparisonStrength},
    {_T("="), kEqual, kComparisonStrength},
    {_T(" AND "), kAnd, kJoinStrength},
    {_T("&&"), kAnd, kJoinStrength},
    {_T(" OR "), kOr, kJoinStrength},
    {_T("||"), kOr, kJoinStrength},
    {_T("<"), kLess, kComparisonStrength},
    {_T(">"), kGreater, kComparisonStrength},
    {_T("+"), kAdd, kSumStrength},
    {_T("-"), kSubtract, kSumStrength},
    {_T("*"), kMultiply, kProductStrength},
    {_T("/"), kDivide, kProductStrength},
    {_T("^"), kPower, kPowerStrength},
    {_T("!"), kNot, kNotStrength},
}};

// By kind; 0 for what is no operator.
inline constexpr auto kStrengths = [] {
  std::array<unsigned char, 128> strengths{};
  for (const Operator& each : kOperators) strengths[each.kind] = each.strength;
  return strengths;
}();

constexpr int StrengthOf(unsigned kind) {
  return kind < kStrengths.size() ? kStrengths[kind] : 0;
}

constexpr bool IsComparison(unsigned kind) {
  return StrengthOf(kind) == kComparisonStrength;
}

// An operator whose left operand is evaluated: all but "!", which has one for the grammar's sake.
constexpr bool UsesLeftOperand(unsigned kind) {
  return StrengthOf(kind) != 0 && kind != kNot;
}

// An operator that gives a truth, 1 or 0.
constexpr bool GivesTruth(unsigned kind) {
  return IsComparison(kind) || StrengthOf(kind) == kJoinStrength;
}

}  // namespace lorv
