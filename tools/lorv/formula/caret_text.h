#pragma once

#include <string>

#include "framework/text/cstring.h"

namespace lorv::tool {

// The formula on one line and a mark under `length` units from `position` on the next: "^", or "^^^" for a
// longer stretch. Both lines begin with four blanks and end with a line end.
//
// The mark stands right on a terminal, where a Chinese character takes two columns. A formula wider than
// `columns` is cut around the mark, with "..." where something is missing. Controls show as blanks.
// A position outside the formula marks the place behind its end.
//
//   CaretText(_T("墙长*+2"), 3, 1, 80)  gives "    墙长*+2\n         ^\n"
std::string CaretText(const CString& formula, int position, int length, int columns);

}  // namespace lorv::tool
