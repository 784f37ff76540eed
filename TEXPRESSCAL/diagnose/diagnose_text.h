#pragma once

#include "TEXPRESSCAL/diagnose.h"

namespace lorv {

// The messages of one fault: "%s" is the stretch of the formula that is meant.
struct FaultText {
  FormulaFault fault;
  LPCTSTR chinese;
  LPCTSTR english;
};

// The messages of a fault other than kNone. Constant: any thread.
const FaultText& TextOfFault(FormulaFault fault);

// The plain sign for a full-width or typographic one; empty if it is none.
TextView PlainSign(TCHAR c);

}  // namespace lorv
