#pragma once

#include <string>

#include "tools/lorv-desk/grid_window.h"
#include "tools/lorv-desk/table/edited_grid.h"
#include "tools/lorv-desk/table/edited_table.h"

namespace lorv::tool {

// What the window's menu offers, by the commands' numbers.
enum TableCommand : UINT {
  kSaveTable = 100,
  kInsertTableRow = 101,
  kDeleteTableRows = 102,
  kTableToSpreadsheet = 103,
  kTableFromSpreadsheet = 104
};

// The window in which a table's file is edited. Ctrl+S saves; the right button shows a menu of the commands;
// closing asks about what is not saved yet.
class TableWindow : public GridWindow {
 public:
  explicit TableWindow(const std::string& path);

  // Makes the window, hidden, and reads the file while a dialog shows the progress. False: the user ended it.
  // Throws BadInput with the reason why the file, or a window, cannot be had.
  bool Read();
  // False where that failed; the user was told. What stands in an open editor is saved too.
  bool Save();
  // One of TableCommand; 0 and what is none: nothing.
  void Do(UINT command);
  EditedGrid& Table() { return *table_; }

 protected:
  BOOL PreTranslateMessage(MSG* message) override;
  void OnClose();
  void OnContextMenu(CWnd* window, CPoint point);
  DECLARE_MESSAGE_MAP()

 private:
  void FitColumns();
  void InsertRow();

  EditedTable file_;
  EditedGrid* table_;  // the window's
};

}  // namespace lorv::tool
