#include "spreadsheet/servers/engine/book/shown_cells.h"

#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/engine_limits.h"

// The cells of an area shown one after the other: the engine's side of reading a sheet without calls. What is
// shown of a cell is what its range would answer, as both ask LookAt.

namespace lorv::engine {
namespace {

bool IsWithinSheet(const SheetArea& area) {
  return area.row >= 1 && area.column >= 1 && area.rows >= 1 && area.columns >= 1 && area.row <= kMaxRows &&
         area.column <= kMaxColumns && area.rows <= kMaxRows - area.row + 1 &&
         area.columns <= kMaxColumns - area.column + 1;
}

SheetArea AsPrograms(const Area& area) {
  return {area.top + 1, area.left + 1, area.Rows(), area.Columns()};
}

}  // namespace

bool ShowCells(const Book& book, const Sheet& sheet, const SheetArea& area, SheetVisitor& visitor) {
  if (!IsWithinSheet(area)) return false;
  // Most sheets have no merged area, and then no cell is looked for among them.
  const bool any_merged = sheet.merges.Size() > 0;
  const SheetCell none;
  CellCursor cursor(sheet.cells, area.row - 1, area.column - 1);
  for (int i = 0; i < area.rows; ++i) {
    const long row = area.row - 1 + i;
    for (int j = 0; j < area.columns; ++j) {
      const long column = area.column - 1 + j;
      const Area* const merged = any_merged ? sheet.merges.Find(row, column) : nullptr;
      if (merged != nullptr) visitor.Merged(i, j, AsPrograms(*merged));
      const Cell* const cell = cursor.At(row, column);
      visitor.Cell(i, j, cell == nullptr ? none : LookAt(book, *cell));
    }
  }
  return true;
}

}  // namespace lorv::engine
