#pragma once

#include <memory>
#include <string_view>

#include "spreadsheet/servers/engine/book/book.h"

namespace lorv::engine {

// A text table as a workbook of one sheet: every cell a text, as it is written.
//
// Form: cells parted by commas, or by tabs where the first line has more of those; rows by LF, CR or CRLF; a
//   cell in quotes may hold separators, line ends and doubled quotes.
// Encodings: UTF-8 or UTF-16 by a mark; without one UTF-8 where all bytes are that, else code page 936.
// Raises the engine's failure beyond the limits of a sheet.
std::shared_ptr<Book> ReadTextTable(std::string_view bytes, const CString& sheet_name);

// Whether bytes can be a text table: no zero byte among the first, unless they are UTF-16 with its mark.
bool LooksLikeText(std::string_view bytes);

}  // namespace lorv::engine
