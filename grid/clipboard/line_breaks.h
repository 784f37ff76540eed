#pragma once

#include "grid/clipboard/tab_text.h"

namespace lorv {

// Gives the cells of a text table the line breaks that they have in the same table as HTML: some spreadsheets
// write a blank for each of them into the text.
//
// Edges: tables of other sizes, and cells whose words differ or that have line breaks already, stay as they
//   are; so do blanks, which HTML has lost.
COMM_LORV_API void TakeLineBreaks(TextTable& table, const TextTable& html);

}  // namespace lorv
