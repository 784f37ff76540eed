#pragma once

#include <string>

#include "framework/text/cstring.h"

namespace lorv::tool {

// What the library says of a workbook, in the language that is spoken: the library has Chinese texts, which
// its interface fixes. A text that is not known stays as it is.
//
//   WorkbookWords(_T("区域太大。"))  gives "the area is too large" in English
std::string WorkbookWords(const CString& chinese);

}  // namespace lorv::tool
