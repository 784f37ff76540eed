#include "grid/export/text_export.h"

#include <string>
#include <vector>

#include "framework/text/utf8.h"
#include "grid/basic/basic_grid.h"

// A walk over the rows by their numbers: each is asked for once, and nothing of it is kept, so that a virtual
// table of any length costs the memory of one piece.

namespace lorv {
namespace {

void AppendField(std::string& line, TextView text, char separator) {
  const std::string bytes = TextToUtf8(text);
  const char special[] = {separator, '"', '\r', '\n', 0};
  // Readers cut blanks off at the ends of a field that has no quotes.
  const bool blank = !bytes.empty() && (bytes.front() == ' ' || bytes.back() == ' ');
  if (!blank && bytes.find_first_of(special) == std::string::npos) {
    line += bytes;
    return;
  }
  line += '"';
  for (const char c : bytes) {
    if (c == '"') line += '"';
    line += c;
  }
  line += '"';
}

// In the order of the screen: a column that was moved has its number there.
std::vector<int> ColumnsOf(const CBCGPBasicGridCtrl& grid, bool hidden) {
  std::vector<int> columns;
  for (int column = 0; column < grid.GetColumnCount(); ++column)
    if (hidden || grid.GetColumnVisible(column) != FALSE) columns.push_back(column);
  return columns;
}

}  // namespace

bool ExportText(const CBCGPBasicGridCtrl& grid, const TextExport& how,
                const std::function<bool(std::string_view piece)>& write) {
  const std::vector<int> columns = ColumnsOf(grid, how.hidden_cells);
  if (columns.empty()) return false;
  const auto life = grid.Watch();
  std::string piece;
  const auto add_line = [&](const auto& text_of) {
    for (const int column : columns) {
      if (column != columns.front()) piece += how.separator;
      AppendField(piece, text_of(column), how.separator);
    }
    piece += "\r\n";
  };
  CString room;
  const auto name_of = [&](int column) { return (room = grid.GetColumnName(column)).View(); };
  if (how.column_names) add_line(name_of);
  // The grid's own rows: a descendant may show one more, to be typed into.
  for (int row = 0; row < grid.CBCGPGridCtrl::GetRowCount(); ++row) {
    if (!how.hidden_cells && !grid.IsRowShown(row)) continue;
    // A virtual row is good until a few thousand others were asked for: its texts are taken at once.
    const CBCGPGridRow* const cells = grid.CBCGPGridCtrl::GetRow(row);
    add_line([&](int column) { return cells == nullptr ? TextView() : cells->ShownText(column, room); });
    if (piece.size() < kExportPiece) continue;
    // The caller's function may pump messages, and with them end the grid.
    if (!write(piece) || life.expired()) return false;
    piece.clear();
  }
  return piece.empty() || (write(piece) && !life.expired());
}

}  // namespace lorv
