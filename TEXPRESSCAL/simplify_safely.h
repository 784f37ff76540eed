#pragma once

#include "framework/text/cstring.h"

namespace lorv {

// Whether a formula that gives -0 may give 0 after it was simplified, and the other way round.
enum class ZeroSign { kKept, kIgnored };

// A shorter formula that gives the same value, to the last bit, and the same error for any values of its
// variables.
//
// Evaluates on the formula's tree: folds what is constant, takes out zero terms, unit factors and the
// branches that can never be chosen. Names, brackets and letter case stay as they were typed where nothing is
// taken out. What is NOT done, because some value would show it: folding over a possible division by zero or
// argument outside a domain; functions whose last bit hangs on the system; moving terms ("a+2+3"); "a+0" as
// the whole formula, as it makes 0 of -0, unless `zero_sign` is kIgnored. "a*b-0", "2*(a+0)>1" and
// "(a+b*0)+1" lose their zero. Values are finite numbers put in as text by CAdExpCalculate, or as numbers by
// a parse; its quirks (chained comparisons, thirds put in as divisions, repeated names close to each other)
// are allowed for.
//
// Units: 16-bit units. Edges: a formula that does not parse, of more than lorv::kMaxFormulaText units, with a
//   sign "+" before an operand, a number right before a name, a name in mixed scripts or of more than 20
//   units, or operators inside quotes, comes back untouched.
// Result: never longer than `formula`. Throws nothing but std::bad_alloc. Any thread.
//
//   SimplifySafely(_T("1*A+IIF(2>1,B,C/0)"))  gives "A+(B)"
COMM_LORV_API CString SimplifySafely(const CString& formula, ZeroSign zero_sign = ZeroSign::kKept);

}  // namespace lorv
