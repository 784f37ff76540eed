#pragma once

#include <memory>
#include <vector>

#include "framework/values/variant.h"
#include "gridcore/cell_range.h"
#include "gridcore/items/grid_item.h"
#include "gridcore/rows/grid_row.h"

namespace lorv {

// Whose change it is. What handlers do in the middle of a change of the user is the program's; colours that
// only show what is selected are no part of the table and not reported at all.
enum class ChangeBy { kProgram, kUser, kSelection };

// What a run of changes is to the user: something of its own, or a part of the edit that is open.
enum class StepKind { kOwn, kPartOfEdit };

// Where a row stands: its number in the table, and its place among the rows of its parent.
struct RowPlace {
  int index = -1;
  CBCGPGridRow* parent = nullptr;
  int place = 0;
};

// The order of the rows, and what made it.
struct RowArrangement {
  std::vector<CBCGPGridRow*> rows;  // as numbered, nested ones behind theirs
  int sort_column = -1;
  bool ascending = true;
  std::vector<int> group_columns;
};

// Hears of what becomes of a grid's table, with what is needed to take it back.
//
// Units: rows and columns count from 0. Reported are cells and rows that stand in the table; a virtual
//   table's values are somebody else's, and never reported.
// Edges: calls come within the change that they report. They must neither change nor end the grid, raise
//   nothing and run no handler; an observer may be added or removed in any of them.
// The grid keeps a pointer: whoever adds an observer removes it before its end, or in OnGridGone.
// One thread: that of the user interface.
//
//   grid.Changes().Add(observer);  grid.SetValue(0, 0, _variant_t(7))  calls OnValueChanged with the old
//   value
class COMM_LORV_API GridObserver {
 public:
  virtual ~GridObserver() = default;

  // The changes until OnStepEnds are one step; steps within a step belong to it. `subject` is the cell that
  // the user works on, null where it is more than one: what handlers set it to is a part of the step.
  virtual void OnStepBegins(StepKind /*kind*/, const CBCGPGridItem* /*subject*/) {}
  virtual void OnStepEnds() {}
  // The editor that was open is gone, its text taken over or not.
  virtual void OnEditorClosed() {}

  // The item has its new value; `before` may be moved from.
  virtual void OnValueChanged(CBCGPGridItem& /*item*/, _variant_t& /*before*/, ChangeBy /*by*/) {}
  // Colours, picture or behaviour of the cell are about to become others.
  virtual void OnLooksChanging(CBCGPGridItem& /*item*/) {}

  // Rows with all that is nested in them. A row that was taken out is deleted unless an observer moves from
  // it; null where another one did.
  virtual void OnRowInserted(const RowPlace& /*place*/, CBCGPGridRow& /*row*/) {}
  virtual void OnRowRemoved(const RowPlace& /*place*/, std::unique_ptr<CBCGPGridRow>& /*row*/) {}
  // Rows are about to be brought into another order; `now` is the one that they stand in.
  virtual void OnRowsMoving(RowArrangement& /*now*/) {}
  // Merged cells are about to change, by themselves or along with rows.
  virtual void OnMergesChanging(const std::vector<CBCGPGridRange>& /*now*/) {}

  // A column is about to get another number, with its cells.
  virtual void OnColumnMoving(int /*from*/, int /*to*/) {}

  // What was reported before is of another table: columns came or went, all rows were removed, or a row was
  // deleted while it stood in the grid. Called while the rows still live.
  virtual void OnTableReplaced() {}
  virtual void OnGridGone() {}
};

}  // namespace lorv
