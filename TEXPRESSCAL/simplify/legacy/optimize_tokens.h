#pragma once

#include "framework/text/cstring.h"

namespace lorv {

// The functions that are folded; COptimizeExpression counts them in this order.
enum FoldedFunction { kFoldedMax, kFoldedMin, kFoldedIif, kFoldedFunctions };

constexpr LPCTSTR kFoldedNames[] = {_T("max"), _T("min"), _T("iif")};
constexpr int kFoldedNameLength = 3;

// The characters that end an operand. The comma is one, so an argument of a function is an operand.
constexpr TextView kOperandEnds = _T("+-*/,");

constexpr struct {
  LPCTSTR old;
  LPCTSTR fresh;
} kRepeatedOperators[] = {
    {_T("++"), _T("+")}, {_T("--"), _T("+")}, {_T("+-"), _T("-")},
    {_T("-+"), _T("-")}, {_T("*+"), _T("*")}, {_T("/+"), _T("/")},
};

constexpr LPCTSTR kZeroBeforeProduct[] = {_T("0*"), _T("0/")};
constexpr LPCTSTR kZeroBehindSum[] = {_T("-0"), _T("+0")};
constexpr LPCTSTR kZeroBeforeSum[] = {_T("0-"), _T("0+")};

constexpr bool EndsOperand(TCHAR c) {
  return kOperandEnds.find(c) != TextView::npos;
}

// How a bracket changes the depth.
constexpr int DepthStep(TCHAR c) {
  if (c == '(') return 1;
  return c == ')' ? -1 : 0;
}

}  // namespace lorv
