#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "framework/text/cstring.h"

// Conversion of tagged values from one kind to another, with the same answer on every system and in every
// locale.
//
// Texts of values: whole numbers in decimal; a double with at most 15 significant digits and a float with 7,
//   in the exponent form from 1E+15 (1E+07) upwards and below 0.0001 ("1.5E-05"); zero never has a sign;
//   infinities "1.#INF" and "-1.#INF", NaN "1.#QNAN" or, with its sign set, "-1.#IND"; money with up to 4
//   decimals; booleans "-1" and "0"; dates as "%Y-%m-%d"; an empty value the empty text.
// Values of texts: blanks around; a sign; digits, commas between whole digits passed over, one point, an
//   exponent. Booleans also "True" and "False" in any letter case; dates see framework/values/ole_date.h.
// Fractions become whole numbers by rounding, a half to the even neighbour. An empty value counts as 0.
// Result: DISP_E_TYPEMISMATCH for what has no meaning in the other kind (null, error, a text that is no
//   number), DISP_E_OVERFLOW for what does not fit, DISP_E_BADVARTYPE for a tag that is none, E_OUTOFMEMORY.
//   The target is then as it was. It may be the source.
// No shared state: any thread.
namespace lorv {

COMM_LORV_API HRESULT ChangeValueType(VARIANT& target, const VARIANT& source, VARTYPE type);

// The text of a double as above.
//
//   RealValueToText(0.1 + 0.2)  gives _T("0.3")
COMM_LORV_API CString RealValueToText(double value);

// True for the kinds that hold nothing outside the value itself: they may be copied as bytes.
constexpr bool IsPlainType(VARTYPE type) {
  constexpr unsigned kToDate = (1U << (VT_DATE + 1)) - 1;
  constexpr unsigned kWholeNumbers = (1U << (VT_UINT + 1)) - (1U << VT_I1);
  constexpr unsigned kPlain = kToDate | (1U << VT_ERROR) | (1U << VT_BOOL) | kWholeNumbers;
  return type <= VT_UINT && (kPlain >> type & 1U) != 0;
}

// Copies a value of a plain kind: its head and the eight bytes behind it. They go through registers of two
// kinds: made one word of 16 bytes, as the compiler would, the copy of a value just made takes three times as
// long, since the processor does not pass two stores on to one load.
inline void CopyPlain(VARIANT& target, const VARIANT& source) {
  constexpr std::size_t kHead = offsetof(VARIANT, llVal);
  std::uint64_t head = 0;
  double value = 0;
  std::memcpy(&head, &source, kHead);
  std::memcpy(&value, &source.llVal, sizeof(value));
  std::memcpy(static_cast<void*>(&target), &head, kHead);
  std::memcpy(&target.llVal, &value, sizeof(value));
}

// The value that a value by reference refers to, sharing what it holds; any other as it is.
HRESULT FollowReference(const VARIANT& source, VARIANT& shared);

// The system's own answer for objects and other kinds that only it knows. One implementation a system.
HRESULT ChangeSystemType(VARIANT& target, const VARIANT& source, VARTYPE type);

}  // namespace lorv
