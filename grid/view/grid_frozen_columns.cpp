#include "grid/view/grid_frozen_columns.h"

#include "grid/commands/grid_commands.h"
#include "gridcore/control/grid_control.h"

// The count is the grid's; here is who asks for it.

namespace lorv {

GridFrozenColumns::GridFrozenColumns(CBCGPGridCtrl& grid, int count)
    : grid_(&grid), grid_life_(grid.Watch()) {
  if (count > 0) grid.SetFrozenColumns(count);
}

GridFrozenColumns::~GridFrozenColumns() {
  if (!grid_life_.expired()) grid_->SetFrozenColumns(0);
}

void GridFrozenColumns::SetCount(int count) {
  if (!grid_life_.expired()) grid_->SetFrozenColumns(count);
}

int GridFrozenColumns::Count() const {
  return grid_life_.expired() ? 0 : grid_->GetFrozenColumns();
}

bool GridFrozenColumns::FreezeToCurrent() {
  if (grid_life_.expired()) return false;
  const CBCGPGridItemID at = grid_->GetCurSelItemID();
  if (at.IsNull()) return false;
  grid_->SetFrozenColumns(at.m_nColumn + 1);
  return true;
}

void GridFrozenColumns::Bind(GridCommands& commands) {
  commands.Bind(_T("freeze_columns"), [this](CBCGPGridCtrl&) { return FreezeToCurrent(); });
  commands.Bind(_T("unfreeze_columns"), [this](CBCGPGridCtrl&) {
    SetCount(0);
    return true;
  });
}

}  // namespace lorv
