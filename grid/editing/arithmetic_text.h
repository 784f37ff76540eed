#pragma once

#include "framework/text/cstring.h"

namespace lorv {

// Evaluates a formula that was typed into a cell, and writes the result with at most three decimals.
//
// Result: false, and `text` is as it was, for a text with "=", one that is a number already, and one that is
//   no valid formula.
// As CAdExpCalculate: one thread at a time.
//
//   ArithmeticText(_T("1+2/4"), text)  makes the text "1.5"
COMM_LORV_API bool ArithmeticText(const CString& typed, CString& text);

}  // namespace lorv
