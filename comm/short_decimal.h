#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// A real number as the shortest text within a bounded number of decimals: the core of Double2String, for
// callers that print a number for every value of every formula.
//
// Form: `digits` is the greatest number of decimals. The fewest decimals that give the value back to within
//   half a unit of the last permitted one are taken; a value that no such number of decimals gives back is
//   printed with all of them, zeros at its end included. `digits` outside 0 to 6 may print six.
//   With `fixed` at least `digits` decimals are printed.
// Edges: a negative value that rounds to nothing keeps its sign ("-0"). Values beyond the whole numbers of
//   64 bits are never short. Infinities and NaN print as "inf" and "nan".
// Result: the count of units written to `out`, at most `size`: a longer text is cut there. There is no
//   terminator. Nothing is written for a `size` below 1.
// No heap, no locale, no shared state: any thread.
//
//   ShortDecimal(12.5, 3, false, out, 64)    gives 4 and "12.5"
//   ShortDecimal(1.9999, 3, false, out, 64)  gives 5 and "2.000"
namespace lorv {

COMM_LORV_API int ShortDecimal(double value, int digits, bool fixed, TCHAR* out, int size);

}  // namespace lorv
