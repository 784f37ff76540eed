#pragma once

#include "framework/text/cstring.h"

// Dates as tagged values and spreadsheets hold them: a number of days.
//
// Units: whole days since 1899-12-30 (day 0), the time of day as the fraction. Below 0 the fraction still
//   counts from midnight forward: -1.25 is 1899-12-29 at 06:00. Times are rounded to the nearest second; the
//   second behind 23:59:59 is the next day's first.
// Range: the years 100 to 9999.
// Result: false for a number that is no date (outside the range, NaN), or for fields that are none; outputs
//   are then as they were.
// No shared state: any thread.
//
//   SplitOleDate(36526.5, t)  gives 2000-01-01 12:00:00
namespace lorv {

constexpr double kFirstOleDate = -657434.0;    // 0100-01-01
constexpr double kBehindOleDates = 2958466.0;  // 10000-01-01

COMM_LORV_API bool SplitOleDate(double date, SYSTEMTIME& time);
// Milliseconds and the day of the week are not looked at.
COMM_LORV_API bool JoinOleDate(const SYSTEMTIME& time, double& date);

// The date as "%Y-%m-%d"; the empty text for no date.
//
//   OleDateToText(-1)  gives _T("1899-12-29")
COMM_LORV_API CString OleDateToText(double date);

// "2000-1-31" or "2000/1/31", blanks around, and a time "12:30" or "12:30:59" behind it if wanted; a time
// alone is of day 0.
COMM_LORV_API bool TextToOleDate(TextView text, double& date);

}  // namespace lorv
