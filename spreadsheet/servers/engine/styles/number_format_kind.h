#pragma once

#include "framework/text/cstring.h"
#include "framework/text/text_compare.h"

namespace lorv::engine {

constexpr LPCTSTR kGeneralFormat = _T("General");

// Whether a number format shows a date: a year or a day outside quotes, or a month without a time of day, in
// its first section. "[h]:mm" and "mm:ss" are times and none.
//
//   IsDateFormat(_T("yyyy\\-mm\\-dd"))  gives true
bool IsDateFormat(TextView format);

// What stands in brackets as the programs spell it: "[Red]" for "[RED]", "[h]" for "[H]". "[$...]" and
// conditions stay.
//
//   SpelledBracket(_T("[RED]"))  gives _T("[Red]")
std::basic_string<TCHAR> SpelledBracket(TextView bracket);

// A format of a file as the programs spell it: other writers' brackets are large.
//
//   SpelledFormat(_T("0.00;[RED]-0.00"))  gives _T("0.00;[Red]-0.00")
CString SpelledFormat(TextView format);

// The format of a number that files leave out: those of the English program, and the Chinese program's own
// dates. "General" for a number without one.
LPCTSTR BuiltInFormat(unsigned id);

}  // namespace lorv::engine
