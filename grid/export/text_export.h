#pragma once

#include <functional>
#include <string_view>

#include "framework/text/cstring.h"

class CBCGPBasicGridCtrl;

namespace lorv {

// Bytes after which a piece of an export is handed over.
constexpr std::size_t kExportPiece = std::size_t{64} << 10U;

struct TextExport {
  char separator = ',';       // or ';' or a tab
  bool column_names = true;   // in a first line
  bool hidden_cells = false;  // rows and columns out of sight too
};

// Writes the texts that a grid shows as a table of separated texts, a piece at a time: a virtual table of any
// length is written without being held.
//
// Units: UTF-8; lines end with CR LF. A text stands in quotes, its own quotes twice, where it holds the
//   separator, a quote or a line break, or begins or ends with a blank.
// `write` gets pieces of about kExportPiece bytes, which are valid during the call; it may end the grid.
// Result: true when all was handed over; false where `write` answered false or the grid ended, or has no
//   columns that count.
// One thread: that of the user interface.
//
//   ExportText(grid, {}, [&](std::string_view piece) { return bool(file.write(piece.data(), ...)); })
COMM_LORV_API bool ExportText(const CBCGPBasicGridCtrl& grid, const TextExport& how,
                              const std::function<bool(std::string_view piece)>& write);

}  // namespace lorv
