#pragma once

#include <vector>

#include "framework/text/cstring.h"

namespace lorv {

// A name in a formula as typed; position and length in 16-bit units.
struct FormulaWord {
  int position;
  int length;
  CString name;
};

// The names of a formula in order, repeats included: what needs a value. Functions, PI, the words AND and OR
// between blanks, and everything in quotes are none.
//
// A name is a run of letters of any language, digits and "_" that does not begin with a digit; digits in
// front of it are a factor (2H is 2 times H), as the formula engine has it.
//
//   NamesOf(_T("2*墙长+max(B,1)"))  gives 墙长 at 2 and B at 9
COMM_LORV_API std::vector<FormulaWord> NamesOf(TextView formula);

// Whether a text can stand as a name in a formula.
COMM_LORV_API bool IsName(TextView text);

// The name in capital letters, by which it is looked up.
COMM_LORV_API CString NameKey(TextView name);

}  // namespace lorv
