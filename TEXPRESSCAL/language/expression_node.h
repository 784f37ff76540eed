#pragma once

#include "framework/native/native_types.h"

// One node of a parsed formula.
//
// Nodes belong to the expression whose parse made them and live until its next parse, and so does the text of
// a text leaf, which is a copy of its own and terminated.
struct ExprNode {
  ExprNode* left;       // first operand or first argument; may be null
  ExprNode* right;      // second operand, or the list of further arguments; may be null
  unsigned short kind;  // lorv::NodeKind
  union {
    unsigned int length;  // text leaf: units of its text
    unsigned int place;   // others: where the operator, name or number stands in the rewritten text
  };
  union {
    double value;  // number leaf
    LPCTSTR text;  // text leaf
  };
};

namespace lorv {

// Node kinds. Operators are the characters that stand for them in the rewritten text.
enum NodeKind : unsigned short {
  kGreaterEqual = 4,
  kLessEqual = 5,
  kNotEqual = 6,
  kEqual = 7,
  kAnd = 8,
  kOr = 9,
  kNot = '!',
  kText = '\'',
  kMultiply = '*',
  kAdd = '+',
  kArgument = ',',
  kSubtract = '-',
  kDivide = '/',
  kLess = '<',
  kGreater = '>',
  kNumber = '@',
  kPower = '^',
  kAbsolute = '|',
  kSin = 150,
  kCos,
  kExp,
  kSqrt,
  kLog,
  kTg,
  kCtg,
  kAsin,
  kAcos,
  kAtg,
  kNegate,
  kFloor,
  kMax,
  kMin,
  kCeil,
  kRound,
  kIif,
  kLen,
  kInt,
  kAbs,
  kDtor,
  kRtod,
  kTan,
  kAtan,
  kSina,
  kCosa,
  kTana,
  kCtga,
  kFind
};

// Brackets, bars and calls may stand inside one another this deep; a formula that goes deeper fails at the
// bracket that opens one level too many.
constexpr int kMaxNesting = 1000;

// What "PI" stands for: these eleven digits and not the double nearest to the mathematical value.
constexpr double kPi = 3.1415926536;

}  // namespace lorv
