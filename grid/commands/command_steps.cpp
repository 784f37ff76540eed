#include "grid/commands/command_steps.h"

#include "grid/basic/basic_grid.h"
#include "grid/commands/grid_command.h"
#include "grid/rows/listed_rows.h"

// What commands do that need nothing but the grid. Each change runs handlers, which may rebuild the table or
// end the grid.

namespace lorv {

namespace {

using Grid = CBCGPGridCtrl;

bool ClearCell(Grid& grid, const CBCGPGridItemID& id) {
  CBCGPGridItem* const item = grid.GetGridItem(id);
  if (item == nullptr || grid.IsEditableNow(item) == FALSE || item->FormatItem().IsEmpty()) return false;
  item->SetValue(_variant_t(), TRUE);
  // The last step: hosts check it as a typed value, and may end the cell.
  item->SetItemChanged();
  return true;
}

// Only cells that the user could have emptied by hand.
bool Clear(Grid& grid) {
  // The values of a virtual table are somebody else's.
  if (grid.IsVirtualMode() != FALSE) return false;
  const auto life = grid.Watch();
  const auto user = grid.Changes().ByUser();
  const StepScope step(grid.Changes());
  // A copy: hosts that answer a cleared cell may select another one.
  const std::vector<CBCGPGridRange> ranges = grid.GetSelection();
  bool any = false;
  for (const CBCGPGridRange& range : ranges)
    for (int row = range.m_nTop; row <= range.m_nBottom; ++row)
      for (int column = range.m_nLeft; column <= range.m_nRight; ++column) {
        if (!grid.IsRowShown(row) || grid.GetColumnVisible(column) == FALSE) continue;
        any = ClearCell(grid, {row, column}) || any;
        if (life.expired()) return any;
      }
  return any;
}

bool InsertRow(Grid& grid) {
  const CBCGPGridItemID at = grid.GetCurSelItemID();
  if (grid.IsReadOnly() != FALSE) return false;
  const auto user = grid.Changes().ByUser();
  const StepScope step(grid.Changes());
  CBCGPGridRow* const row = grid.CreateRow(grid.GetColumnCount());
  const int done = at.IsNull() ? grid.AddRow(row, TRUE) : grid.InsertRowBefore(at.m_nRow, row);
  // Refused, it is still nobody's.
  if (done < 0) delete row;
  return done >= 0;
}

bool DeleteRows(Grid& grid) {
  if (grid.IsReadOnly() != FALSE) return false;
  const auto user = grid.Changes().ByUser();
  const StepScope step(grid.Changes());
  // The suite's grids keep rows back that a plain one would delete, as the one to be typed into.
  if (auto* const basic = dynamic_cast<CBCGPBasicGridCtrl*>(&grid)) return basic->DeleteSelectedRows() > 0;
  ListedRows rows(grid);
  for (const CBCGPGridRange& range : grid.GetSelection())
    for (int row = range.m_nTop; row <= range.m_nBottom; ++row) rows.Add(row);
  // All at once: a layout for each would cost the square of the rows.
  const auto life = grid.Watch();
  const int done = rows.Remove();
  if (done > 0 && !life.expired()) grid.AdjustLayout();
  return done > 0;
}

bool SortBy(Grid& grid, BOOL ascending) {
  const CBCGPGridItemID at = grid.GetCurSelItemID();
  if (at.IsNull()) return false;
  const auto user = grid.Changes().ByUser();
  grid.Sort(at.m_nColumn, ascending);
  return true;
}

bool HideColumn(Grid& grid) {
  const int column = grid.GetCurSelItemID().m_nColumn;
  const CBCGPGridColumnsInfo& info = grid.GetColumnsInfo();
  // The last one that is to be seen stays.
  if (!info.HasColumn(column) || info.GetVisibleColumnCount() < 2) return false;
  grid.SetColumnVisible(column, FALSE);
  grid.AdjustLayout();
  return true;
}

bool ShowColumns(Grid& grid) {
  for (int column = 0; column < grid.GetColumnCount(); ++column) grid.SetColumnVisible(column, TRUE);
  grid.AdjustLayout();
  return true;
}

bool SwitchFilterBar(Grid& grid) {
  grid.EnableFilterBar(grid.IsFilterBarEnabled() == FALSE);
  return true;
}

// By name, so that the table of commands stays plain text which a document can be tested against.
struct OwnStep {
  LPCTSTR name;
  bool (*run)(Grid&);
};

constexpr OwnStep kOwnSteps[] = {
    {_T("select_all"), [](Grid& grid) { return grid.SelectAll() != FALSE; }},
    {_T("clear"), Clear},
    {_T("insert_row"), InsertRow},
    {_T("delete_rows"), DeleteRows},
    {_T("sort_up"), [](Grid& grid) { return SortBy(grid, TRUE); }},
    {_T("sort_down"), [](Grid& grid) { return SortBy(grid, FALSE); }},
    {_T("filter_bar"), SwitchFilterBar},
    {_T("hide_column"), HideColumn},
    {_T("show_columns"), ShowColumns},
};

}  // namespace

void BindOwnStep(GridCommand& command) {
  for (const OwnStep& step : kOwnSteps)
    if (command.name == step.name) command.run = step.run;
  if (command.name == _T("filter_bar"))
    command.checked = [](const Grid& grid) { return grid.IsFilterBarEnabled() != FALSE; };
}

}  // namespace lorv
