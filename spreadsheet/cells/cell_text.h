#pragma once

#include <string>

#include "framework/values/variant.h"

namespace lorv {

// The text that a cell of a sheet has in a table: as its user sees it, from the value and its number format.
//
// A double, the first that fits:
//   format ends in "%"                   the hundredfold value with the decimals of the format, "%" behind it
//   format holds "Y" or "$"              "$" and the value with the decimals of the format
//   "m" behind the first "m"             as a time "h:m:s", each without padding
//   format holds "." and no "E"          the value with the decimals of the format
//   three characters "0", "_" and any    the value without decimals
//   any other                            printf's "%.10g"
// Money: "$" and the whole part with the decimals of the format: 12.34 under "0.00" gives "$12.00".
// A date: "2024-3-7". A text: itself. All others, an empty value, a boolean and an error too: no text.
// Edges: letters of the format count as they are ("Y", not "y"). Decimals are counted by places of
//   characters: for "%" between the first "." and the last "%"; else from the last "." to the last "0", or,
//   with the last "0" directly before the point, the characters behind it. No point, or fewer than none: 0.
//   A number that is no time of the years 100 to 9999 is printed as any other; a date outside them has no
//   text. A format is read up to its first zero unit.
// No shared state: any thread.
//
//   SheetCellText(0.1234, _T("0.00%"))  gives _T("12.34%")
COMM_LORV_API CString SheetCellText(const VARIANT& value, const CString& format);

// The same for many cells of one number format, which is looked through once.
//
//   CellFormat(_T("0.00%")).AppendNumber(0.1234, out)  appends _T("12.34%")
class CellFormat {
 public:
  using Units = std::basic_string<TCHAR>;

  explicit CellFormat(TextView format);

  void AppendNumber(double value, Units& out) const;
  // Whatever the format says.
  static void AppendDate(double date, Units& out);

 private:
  enum class Kind { kPercent, kMoney, kTime, kFixed, kGeneral };

  Kind kind_ = Kind::kGeneral;
  int decimals_ = 0;
};

}  // namespace lorv
