#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "spreadsheet/automation/direct_sheet.h"
#include "spreadsheet/cells/cell_text.h"
#include "tables/xarray_db.h"

namespace lorv {

// Takes the cells of an area as texts into a table of its size: what calls for each cell would put there.
// Sheet and table must live as long as this. std::bad_alloc and `_com_error` (E_OUTOFMEMORY) leave the cells
// that were shown until then.
class ShownTable : public SheetVisitor {
 public:
  // Called with the merged area of a cell, with the cell's row in the table.
  using Merging = std::function<void(int row, const SheetArea& area)>;

  ShownTable(const DirectSheet& sheet, CXArrayDBToArray& table, Merging merging)
      : sheet_(sheet), table_(table), merging_(std::move(merging)) {}

  void Cell(int row, int column, const SheetCell& cell) override;
  void Merged(int row, int /*column*/, const SheetArea& area) override { merging_(row, area); }

 private:
  TextView TextOf(const SheetCell& cell);
  const CellFormat& FormatOf(std::uint32_t format);

  const DirectSheet& sheet_;
  CXArrayDBToArray& table_;
  Merging merging_;
  std::vector<std::optional<CellFormat>> formats_;  // by their numbers, as far as cells have had them
  CellFormat::Units made_;
};

}  // namespace lorv
