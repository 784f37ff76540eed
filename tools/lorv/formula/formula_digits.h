#pragma once

#include "framework/text/cstring.h"

namespace lorv::tool {

// A number with all its digits, as a formula can hold it: formulas know no exponents.
//
//   Digits(1e-7)  gives "0.0000001"
CString Digits(double value);

// The same in brackets, for places where a sign would join what stands before it.
CString Literal(double value);

}  // namespace lorv::tool
