// The table of operators, held against what a parse makes of each of them.

#include "TEXPRESSCAL/language/operators.h"

#include <gtest/gtest.h>

#include "TEXPRESSCAL/expression.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

CString Between(const CString& left, const Operator& op, const CString& right) {
  return left + CString(op.typed) + right;
}

TEST(Operators, AreParsedAsTheTableSays) {
  for (const Operator& op : kOperators) {
    CExpression expression;
    ASSERT_EQ(expression.ChangeExpression(Between(_T("1"), op, _T("2"))), -1) << Utf8(CString(op.typed));
    EXPECT_EQ(expression.m_pRoot->kind, op.kind) << Utf8(CString(op.typed));
  }
}

// Two operators side by side: the tighter one takes the operand between them, of equal ones the left.
TEST(Operators, BindAsTheTableSays) {
  for (const Operator& first : kOperators) {
    for (const Operator& second : kOperators) {
      // A literal between two comparisons is taken apart before the parse.
      const CString text = Between(Between(_T("1"), first, _T("(2)")), second, _T("3"));
      CExpression expression;
      ASSERT_EQ(expression.ChangeExpression(text), -1) << Utf8(text);
      const NodeKind root = second.strength > first.strength ? first.kind : second.kind;
      EXPECT_EQ(expression.m_pRoot->kind, root) << Utf8(text);
    }
  }
}

TEST(Operators, KindsAreDistinguished) {
  EXPECT_TRUE(IsComparison(kLess) && IsComparison(kEqual) && !IsComparison(kAnd) && !IsComparison(kAdd));
  EXPECT_TRUE(GivesTruth(kOr) && GivesTruth(kGreater) && !GivesTruth(kNot) && !GivesTruth(kPower));
  EXPECT_TRUE(UsesLeftOperand(kPower) && UsesLeftOperand(kAnd) && !UsesLeftOperand(kNot));
  for (const unsigned kind : {unsigned{kNumber}, unsigned{kSin}, unsigned{kNegate}, 0U, 127U, 128U, 0xFFFFU})
    EXPECT_EQ(StrengthOf(kind), 0) << kind;
}

}  // namespace
}  // namespace lorv::test
