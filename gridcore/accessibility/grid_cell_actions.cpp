#include "gridcore/accessibility/grid_cells.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/items/check_item.h"

// What a screen reader does to a grid on its user's behalf. It goes the way of keys and clicks, so that
// descendants and hosts hear of it as of the user himself. Each step runs handlers, which may end the grid
// and with it these cells: after it only what stands on the stack may be asked.

namespace lorv {
namespace {

using Life = std::weak_ptr<int>;

// The cell becomes the current one and the grid gets the keys; false: it did not, or the grid is gone.
bool GoTo(CBCGPGridCtrl& grid, const CBCGPGridItemID& id, const Life& life) {
  if (grid.SetCurSel(id) == FALSE || life.expired()) return false;
  grid.EnsureVisible(id);
  if (life.expired() || grid.m_hWnd == nullptr) return false;
  const CWnd* editor = grid.GetInPlaceWnd();
  // An editor that is open on the cell keeps them.
  if (editor == nullptr) grid.SetFocus();
  return !life.expired() && grid.GetCurSelItemID() == id;
}

// As a message of the keyboard, so that handlers of keys are asked as ever.
bool PressKey(CBCGPGridCtrl& grid, const CBCGPGridItemID& id, int key) {
  const Life life = grid.Watch();
  if (!GoTo(grid, id, life)) return false;
  grid.SendMessage(WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  return !life.expired();
}

bool Edit(CBCGPGridCtrl& grid, const CBCGPGridItemID& id) {
  if (!PressKey(grid, id, VK_F2)) return false;
  const CBCGPGridItem* item = grid.GetEditingItem();
  return item != nullptr && item->GetGridItemID() == id;
}

// Both halves of a click: a header is clicked when the button goes up.
bool Click(CBCGPGridCtrl& grid, const CRect& place) {
  if (place.IsRectEmpty() != FALSE || grid.m_hWnd == nullptr) return false;
  const CPoint at = place.CenterPoint();
  const LPARAM where = MAKELPARAM(at.x, at.y);
  const Life life = grid.Watch();
  grid.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, where);
  if (!life.expired() && grid.m_hWnd != nullptr) grid.SendMessage(WM_LBUTTONUP, 0, where);
  return true;
}

// Out of sight a button has no place to click at.
bool PressButton(CBCGPGridCtrl& grid, const CBCGPGridItemID& id) {
  const Life life = grid.Watch();
  grid.EnsureVisible(id);
  const CBCGPGridItem* item = life.expired() ? nullptr : grid.GetGridItem(id);
  return item != nullptr && Click(grid, item->GetButtonRect());
}

// The list belongs to the editor.
bool ShowList(CBCGPGridCtrl& grid, const CBCGPGridItemID& id) {
  if (!Edit(grid, id)) return false;
  grid.DropList(TRUE);
  return true;
}

bool TurnRow(CBCGPGridRow& row) {
  row.Expand(row.IsExpanded() == FALSE);
  return true;
}

bool CanExpand(const CBCGPGridRow& row) {
  return row.IsGroup() != FALSE || row.HasSubItems() != FALSE;
}

std::vector<AccessAction> ActionsOf(const CBCGPGridCtrl& grid, const CBCGPGridItem& item) {
  std::vector<AccessAction> actions;
  const bool editable = grid.IsEditableNow(&item) != FALSE;
  if (dynamic_cast<const CBCGPGridCheckItem*>(&item) != nullptr) {
    if (editable) actions.push_back(AccessAction::Toggle);
  } else if (editable) {
    actions.push_back(AccessAction::Edit);
    if ((item.GetFlags() & kItemHasList) != 0) actions.push_back(AccessAction::ShowList);
  }
  const bool button = (item.GetFlags() & kItemHasButton) != 0 && item.IsEnabled() != FALSE;
  if (button) actions.push_back(AccessAction::Press);
  actions.push_back(AccessAction::Focus);
  return actions;
}

}  // namespace

std::vector<AccessAction> GridCells::CellActions(CellAddress cell) const {
  if ((CellState(cell) & kAccessHidden) != 0) return {};
  const bool header = cell.row < 0 || cell.column < 0;
  if (!header && !IsGroupLine(cell.row)) return ActionsOf(grid_, *ItemAt(cell));
  const bool corner = cell.row < 0 && cell.column < 0;
  return corner ? std::vector<AccessAction>() : std::vector<AccessAction>{AccessAction::Press};
}

bool GridCells::DoAtCell(CellAddress cell, AccessAction action) {
  CBCGPGridCtrl& grid = grid_;
  const CBCGPGridItemID id(cell.row, cell.column);
  const bool header = cell.row < 0 || cell.column < 0 || IsGroupLine(cell.row);
  if (header) {
    CBCGPGridRow* const row = cell.row < 0 ? nullptr : grid.GetRow(cell.row);
    return row != nullptr && CanExpand(*row) ? TurnRow(*row) : Click(grid, CRect(CellPlace(cell)));
  }
  switch (action) {
    case AccessAction::Edit:
      return Edit(grid, id);
    case AccessAction::Toggle:
      return PressKey(grid, id, VK_SPACE);
    case AccessAction::Press:
      return PressButton(grid, id);
    case AccessAction::ShowList:
      return ShowList(grid, id);
    default:
      return GoTo(grid, id, grid.Watch());
  }
}

bool GridCells::SetCellText(CellAddress cell, const CString& text) {
  CBCGPGridCtrl& grid = grid_;
  const Life life = grid.Watch();
  if (!Edit(grid, {cell.row, cell.column})) return false;
  CWnd* const editor = grid.GetInPlaceWnd();
  editor->SetWindowText(text);
  if (life.expired() || grid.GetInPlaceWnd() != editor) return false;
  if (grid.EndEditItem(TRUE) != FALSE) return true;
  // A text that the cell refuses would stay in the editor, for a user who does not see it.
  if (!life.expired() && grid.GetInPlaceWnd() == editor) grid.EndEditItem(FALSE);
  return false;
}

bool GridCells::SelectCell(CellAddress cell, bool on) {
  const CBCGPGridItemID id(cell.row, cell.column);
  if (on) return grid_.SetCurSel(id) != FALSE;
  // A single cell cannot be taken out of a range, by keys or clicks either.
  const std::vector<CBCGPGridRange>& ranges = grid_.GetSelection();
  const bool alone = ranges.size() == 1 && ranges.front() == CBCGPGridRange(id);
  return alone && grid_.SetCurSel(CBCGPGridItemID(), kSelectClear) != FALSE;
}

}  // namespace lorv
