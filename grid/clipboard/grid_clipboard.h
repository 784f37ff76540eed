#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "framework/text/cstring.h"
#include "framework/values/variant.h"
#include "gridcore/cell_range.h"

class CBCGPBasicGridCtrl;

namespace lorv {

class GridCommands;

// Refused cells that a paste reports one by one; beyond it they are counted.
constexpr std::size_t kMaxReportedRefusals = 1000;
// Cells that are copied as HTML too; larger ranges are offered as text alone.
constexpr long long kMaxHtmlCells = 100000;

// The longest text that is copied, in 16-bit units; half a gigabyte.
constexpr std::size_t kMaxCopiedUnits = std::size_t{1} << 28U;

enum class PasteRefusal {
  kLocked,       // read-only, not to be edited or not enabled
  kNotAccepted,  // by PasteOptions::accepts
  kNotTaken,     // the grid or the cell kept another value
  kOutside       // no row or column is left for it
};

struct RefusedCell {
  CBCGPGridItemID cell;  // null for one outside
  CString text;
  PasteRefusal why = PasteRefusal::kLocked;
};

struct PasteOptions {
  bool all_or_nothing = false;  // one refused cell refuses all
  bool adds_rows = false;       // as grids do that add rows while the user types
  bool takes_looks = false;     // colours and merged cells, where the clipboard has them
  // Asked before a value is set. It may change the table or end the grid: what is pasted goes into the cells
  // that are there then.
  std::function<bool(const CBCGPGridItemID& cell, const _variant_t& value)> accepts;
};

struct PasteReport {
  bool pasted = false;  // cells have what was on the clipboard, all that were not refused
  int cells = 0;
  int rows_added = 0;
  CBCGPGridRange range;  // where it went
  long long refused = 0;
  std::vector<RefusedCell> refused_cells;  // the first of them
};

// Copies cells of a grid to the clipboard, takes them out, and pastes what other programs put there, as
// spreadsheets do: text with tabs, and HTML beside it.
//
// Copied are the cells of the selection that are shown; several ranges where they have the same rows, or the
// same columns. A merged block is its first cell.
// Pasted is at the top left corner of the selection. Hidden rows and columns are stepped over, cells that are
// locked keep their values; a selection that is a multiple of what is pasted, in rows or in columns, is
// filled with it in that direction. A text becomes the value that typing it would make. A cell that a short
// row lacks keeps its value. Rows are added in a grid that adds them while the user types, and where it is
// asked for. HTML is read where there is no text, or where looks are wanted;
//   up to kMaxHtmlCells it gives the line breaks of cells whose text has none. Edges: false, or a report of
// nothing, without a selection, with nothing on the clipboard, in a virtual table
//   (which can be copied from), in a read-only grid, or where handlers ended the grid. An open editor is
//   ended first by Cut and Paste, with what was typed. A value that cannot be set raises what it raises; what
//   was set until then stays, with all_or_nothing nothing does.
// Cut and Paste are one step of the user to those who observe the grid; neither calls OnItemChanged.
// The grid may end before it. One thread: that of the user interface.
//
//   lorv::GridClipboard clipboard(grid);  grid.SelectRange({0, 0, 1, 2});  clipboard.Copy()
class COMM_LORV_API GridClipboard {
 public:
  explicit GridClipboard(CBCGPBasicGridCtrl& grid);

  // False: nothing is selected, or more than kMaxCopiedUnits; the clipboard is as it was.
  bool Copy() const;
  // The cells are empty afterwards, but for those that are locked. Nothing changes where nothing was copied.
  bool Cut();
  PasteReport Paste(const PasteOptions& options = {});

  // The commands cut, copy and paste are this object's, which must outlive them. Whoever wants the report of
  // a paste binds that one himself.
  void Bind(GridCommands& commands);

 private:
  CBCGPBasicGridCtrl* Grid() const { return life_.expired() ? nullptr : grid_; }

  CBCGPBasicGridCtrl* grid_;
  std::weak_ptr<int> life_;
};

}  // namespace lorv
