#pragma once

#include <vector>

#include "TEXPRESSCAL/language/expression_node.h"

namespace lorv {

// Parts of a formula that may be NaN or infinite while the expression around them gives a finite number:
// comparisons, AND, OR, NOT, the test of IIF, MAX and MIN, divisors, both sides of a power, what is rounded
// or cut, and the arguments of EXP and ATAN.
//
// Looked for are the parts with a power, EXP, ASIN, ACOS, CTG or CTGA in them: sums and products of what
// buildings measure stay within the range of numbers. Few formulas have any, the others cost nothing.
std::vector<const ExprNode*> PartsThatMayHide(const ExprNode* root);

// The innermost part that is NaN or infinite and is hidden in this way, for the values that stand in the
// tree's leaves; null if there is none. Branches that are not chosen are not looked into.
const ExprNode* HiddenPart(const ExprNode* root);

}  // namespace lorv
