#pragma once

#include "framework/text/cstring.h"
#include "spreadsheet/servers/office/office_port.h"

namespace lorv::office {

// A number format as the spreadsheet programs spell it, of the office's spelling: letters of dates and times
// in lower case, "[Red]" for "[RED]". What stands in quotes, behind "\", "_" and "*", and in "[$...]" stays.
//
//   ProgramSpelling({_T("YYYY-MM-DD"), true})  gives "yyyy-mm-dd"
CString ProgramSpelling(const OfficeFormat& format);

}  // namespace lorv::office
