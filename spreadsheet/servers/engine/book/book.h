#pragma once

#include <map>
#include <memory>
#include <vector>

#include "framework/text/cstring.h"
#include "spreadsheet/servers/engine/areas/merge_list.h"
#include "spreadsheet/servers/engine/book/cell_store.h"
#include "spreadsheet/servers/engine/book/text_pool.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/styles/style_pool.h"

// A workbook in memory: what the exchange writes and reads, and nothing else of what a program knows.
// One thread at a time.
namespace lorv::engine {

struct ColumnShape {
  double width = kStandardWidth;  // characters of the standard font
  bool hidden = false;
  bool operator==(const ColumnShape&) const = default;
};

// Columns share a shape in long runs: a run begins at its key and ends before the next one.
class ColumnShapes {
 public:
  ColumnShapes() : runs_{{0, ColumnShape()}} {}
  const ColumnShape& At(long column) const { return std::prev(runs_.upper_bound(column))->second; }
  void Set(long first, long last, const ColumnShape& shape);
  const std::map<long, ColumnShape>& Runs() const { return runs_; }

 private:
  std::map<long, ColumnShape> runs_;
};

struct Sheet {
  // Of some columns; 0 hides them, and they keep the width they had. Raises the engine's failure for what is
  // no width from 0 to kMaxSheetColumnWidth.
  void PutWidth(long first, long last, double width);

  CString name;
  CellStore cells;
  MergeList merges;
  ColumnShapes columns;
  bool is_chart = false;  // a chart's sheet of a file: it has a name and no cells
  long frozen_rows = 0;
  std::map<long, int> row_levels;  // rows that can be folded away; those of level 0 may be missing

  // Cells without a value that are used all the same, as far as a file says: with a frame, a fill, or a
  // formula or text that is empty; and rows with a frame or fill. An area of no rows holds none.
  Area marked = {0, 0, -1, -1};
  Area marked_rows = {0, 0, -1, -1};

  // The area that holds values; marked cells and rows and merged areas, as far as one read can take them; the
  // first cell of an empty sheet.
  Area UsedArea() const;
};

struct Book {
  std::vector<std::shared_ptr<Sheet>> sheets;
  TextPool texts;
  StylePool styles;
  bool dates_of_1904 = false;
  CString name;  // as the programs show it, with the folder of a saved file

  // Adds one at a place, under a name of its own.
  std::shared_ptr<Sheet> AddSheet(std::size_t at);
  // Raises the engine's failure for a name that a sheet cannot have, or that another one has.
  void Rename(Sheet& sheet, const CString& wanted) const;
};

// Whether a sheet may have the name: 1 to 31 units, none of \ / ? * [ ] : and no control character, no
// apostrophe at its ends, no half of a pair.
bool IsSheetName(const CString& name);

}  // namespace lorv::engine
