#pragma once

#include "grid/bridge/true_db_grid.h"

// A grid for tables that the user extends by typing: below the last row there is one empty row more, the
// prepare row, which the rest of the program does not see. What is typed into it makes it a row of the table,
// and a fresh one stands below; of two empty rows at the end one goes.
//
// Units: rows and columns count from 0. With the prepare row on, GetRowCount leaves it out and GetRow of its
//   number gives null, or the first group row where the grid is grouped; its number is the count. In virtual
//   mode the virtual rows are given as they are.
// Edges: hidden columns do not count in a row; what stands in an open editor counts as soon as it is typed,
//   unless SetIsSame2014 asks to wait until it is saved. The prepare row is never removed while the last row
//   holds something, stays the last one when the rows are sorted or grouped, and is left out where selected
//   rows are deleted. Switched off, it stays as an ordinary row.
// Result: AddRow of a row gives the count less one, which with the prepare row on is the number of the row
//   before the one that was added; -1 is for a row that stays the caller's, and never an answer for one that
//   was taken.
// Rows come and go within the notification of the editor, which stays open. One thread: that of the user
// interface.
//
//   grid.SetAutoAddRow(true);  grid.GetRowCount()  gives 0, grid.GetPrepareRow()->GetRowId()  0
class COMM_LORV_API CBcgTrueDbGridCtrlEx : public CBcgTrueDbGridCtrl {
  DECLARE_DYNCREATE(CBcgTrueDbGridCtrlEx)
 public:
  void SetAutoAddRow(bool on);
  bool IsAutoAddRow() const { return auto_add_row_; }
  void SetIsSame2014(bool on) { same_2014_ = on; }
  void ReDim(int rows, int columns);
  // The last row there is; null without rows.
  CBCGPGridRow* GetPrepareRow() const;

  using CBcgTrueDbGridCtrl::GetRow;
  CBCGPGridRow* GetRow(int position) const override;
  int AddRow(CBCGPGridRow* row, int relayout) override;
  int AddRow(int relayout) override;
  int RemoveRow(int row, int relayout) override;
  void RemoveAll() override;
  int GetRowCount(int all = FALSE) const override;

 protected:
  void OnChangeItemValue();
  // A character that opens an editor changes its text without a notification.
  void OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) override;

  DECLARE_MESSAGE_MAP()

 private:
  CBCGPGridRow* MainRow(int row) const;
  bool IsRowEmpty(int row) const;
  void AddRowComboList(int row);
  CBCGPGridRow* RowInOrder(int position, int count) const;

  bool auto_add_row_ = false;
  bool same_2014_ = false;
};
