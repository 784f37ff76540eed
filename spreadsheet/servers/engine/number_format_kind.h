#pragma once

#include "framework/text/text_compare.h"

namespace lorv::engine {

constexpr LPCTSTR kGeneralFormat = _T("General");

// Whether a number format shows a date: a year or a day outside quotes, or a month without a time of day, in
// its first section. "[h]:mm" and "mm:ss" are times and none.
//
//   IsDateFormat(_T("yyyy\\-mm\\-dd"))  gives true
bool IsDateFormat(TextView format);

// The format of a number that files leave out: those of the English program, and the Chinese program's own
// dates. "General" for a number without one.
LPCTSTR BuiltInFormat(unsigned id);

}  // namespace lorv::engine
