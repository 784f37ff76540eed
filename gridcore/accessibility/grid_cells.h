#pragma once

#include <memory>
#include <vector>

#include "framework/ports/accessible_port.h"

class CBCGPGridCtrl;
class CBCGPGridItem;

namespace lorv {

// A grid as a table for screen readers, by the framework's port for accessible objects. A grid makes it the
// first time somebody asks for it and reports changes from then on: one that nobody reads pays nothing.
//
// Rows are the grid's rows by number, hidden ones included, and behind them the lines of its groups. A row's
//   header is its number from 1 on; a column's header what stands over it, from the top. Of merged cells the
//   first one stands for all; the others are hidden.
// Actions are what the user could do: Edit opens the editor, Toggle turns a check over, Press presses the
//   cell's button, clicks a header, or expands and collapses a row or group by its row header; ShowList opens
//   the cell's list, Focus makes the cell current.
// A text that is set goes through the cell's editor, so that whatever listens or refuses does so as ever; the
//   cell is current then. False where the cell keeps its value.
// Reported are: the current cell and the selection; values and states of cells in sight; new or other rows
//   and columns.
// The grid's own, it ends with it; it may end in every call that acts. Thread and the rest as in
// framework/ports/accessible_port.h.
class COMM_LORV_API GridCells final : public AccessibleCells {
 public:
  explicit GridCells(CBCGPGridCtrl& grid);

  SIZE CellCount() const override;
  CString TableName() const override;
  CString ColumnHeader(int column) const override;
  CString RowHeader(int row) const override;
  CString CellText(CellAddress cell) const override;
  unsigned CellState(CellAddress cell) const override;
  RECT CellPlace(CellAddress cell) const override;
  CellAddress CellAt(POINT client) const override;
  CellAddress CurrentCell() const override;
  CellAddress MainCell(CellAddress cell) const override;
  SIZE CellSpan(CellAddress cell) const override;
  CellAddress CellOf(HWND window) const override;
  std::vector<CellAddress> SelectedCells(std::size_t most) const override;
  bool SetCellText(CellAddress cell, const CString& text) override;
  bool SelectCell(CellAddress cell, bool on) override;
  std::vector<AccessAction> CellActions(CellAddress cell) const override;
  bool DoAtCell(CellAddress cell, AccessAction action) override;

  // For the grid, after a change.
  void ChosenChanged();
  void FocusCame();
  void CellRedrawn(const CBCGPGridItem& item);
  void RowsMoved() { moved_ = true; }
  void LaidOut();

 private:
  void Remember();
  CBCGPGridItem* ItemAt(CellAddress cell) const;
  bool IsGroupLine(int row) const;
  bool IsCovered(CellAddress cell) const;
  bool IsOutOfSight(CellAddress cell) const;
  unsigned HeaderState(CellAddress cell) const;
  unsigned ItemState(const CBCGPGridItem& item, CellAddress cell) const;

  CBCGPGridCtrl& grid_;
  // What was reported last.
  SIZE count_ = {0, 0};
  bool moved_ = false;
  CellAddress current_;
  CString current_text_;
  unsigned current_state_ = 0;
};

}  // namespace lorv
