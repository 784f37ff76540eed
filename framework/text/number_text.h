#pragma once

#include <cstdint>
#include <string>

#include "framework/native/export.h"
#include "framework/text/text_compare.h"

// The one place where numbers are read from text and printed, the same on every system and in every locale.
namespace lorv {

// A number read from the beginning of a text.
//
// Form: blanks in front are skipped; a sign; digits with at most one point; an exponent if digits follow
//   its letter. The longest valid beginning counts, what stands behind it does not matter.
// Edges: 0 where no number begins. Values beyond the range give infinity with their sign, below it 0.
// `used` (if given) is the count of units read, 0 where no number begins.
//
//   ReadReal(_T(" 1.2.3"))  gives 1.2
COMM_LORV_API double ReadReal(TextView text, std::size_t* used = nullptr);

// A whole number read like that: blanks, sign, digits. Beyond the 32-bit range the nearer end of it.
//
//   ReadInteger(_T("12mm"))  gives 12
COMM_LORV_API int ReadInteger(TextView text);

// A real number in one of printf's forms f, e, g (capital letters: capital text) with a precision; "inf" and
// "nan" for infinities and NaN. The digits are those of the exact binary value, a tie goes to even.
//
//   RealToText(1.5, 'f', 3)  gives "1.500"
COMM_LORV_API std::string RealToText(double value, char form, int precision);

// "%.Nf" into a buffer, N 0 or more, without a zero behind it: the count of characters, or 0 if they do not
// fit.
COMM_LORV_API int FixedToText(double value, int decimals, char* out, int size);

}  // namespace lorv
