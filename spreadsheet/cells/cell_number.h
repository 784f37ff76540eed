#pragma once

#include "framework/text/cstring.h"

// Which texts of a table are numbers in a sheet, and how numbers are printed there.
// No shared state: any thread.
namespace lorv {

// Whether a text, without its sign, is a plain decimal number.
//
// Form: digits and points only. "0" is one; another text that begins with "0" needs a point behind it,
//   so that a code such as "007" stays a text; a text worth exactly 0 ("", "0.0") is none.
// Edges: the number of points does not matter: "1.2.3" is a number worth 1.2.
// Result: 1 or 0. With 1, `decimals` is the count of characters behind the first point; untouched with 0 and
//   for the text "0".
//
//   IsPlainNumber(_T("12.50"), decimals)  gives 1, decimals 2
COMM_LORV_API int IsPlainNumber(LPCTSTR text, __int64& decimals);

// printf's "%.<decimals>f". Fewer than no decimals count as none.
//
//   FixedNumber(2.5, 2)  gives _T("2.50")
COMM_LORV_API CString FixedNumber(double value, int decimals);

// The number format for a count of decimals.
//
//   NumberFormat(0)  gives _T("0"), NumberFormat(2)  gives _T("0.00_ ")
COMM_LORV_API CString NumberFormat(int decimals);

}  // namespace lorv
