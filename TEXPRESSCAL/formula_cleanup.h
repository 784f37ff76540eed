#pragma once

#include "framework/text/cstring.h"

namespace lorv {

// Clears up the signs that cuts have left in a formula, as CAdExpCalculate::OptimizeExpr does at its end.
//
// Signs are + - * / and \, and the round brackets count as such. A "+" before or behind a sign goes, or takes
//   the sign before it; "()" goes; a sign behind "(" goes unless it is "-". Repeated until nothing more goes.
// Edges: a "+" at the very front stays, and what follows it is not looked at. Nothing is parsed: "a*+b"
//   becomes "a+b".
// Any thread that owns the text.
//
//   ClearUpSigns(text) on "a*+b"  makes "a+b"
COMM_LORV_API void ClearUpSigns(CString& text);

}  // namespace lorv
