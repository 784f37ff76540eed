#pragma once

#include <string>

#include "tools/lorv-desk/grid_window.h"
#include "tools/lorv-desk/table/edited_grid.h"
#include "tools/lorv-desk/table/edited_table.h"
#include "tools/lorv-desk/table/find_dialog.h"
#include "tools/lorv-desk/table/table_commands.h"

namespace lorv::tool {

// The window in which a table's file is edited, with the commands of TableCommands by their keys and in the
// menu of the right button. Closing asks about what is not saved yet.
class TableWindow : public GridWindow {
 public:
  explicit TableWindow(const std::string& path);
  ~TableWindow() override;

  // Makes the window, hidden, and reads the file while a dialog shows the progress. False: the user ended it.
  // Throws BadInput with the reason why the file, or a window, cannot be had.
  bool Read();
  // False where that failed; the user has seen a message. What stands in an open editor is saved too.
  bool Save();
  EditedGrid& Table() { return *table_; }
  TableCommands& Commands() { return commands_; }
  FindDialog& Finder() { return finder_; }

 protected:
  void OnClose();
  void OnContextMenu(CWnd* window, CPoint point);
  DECLARE_MESSAGE_MAP()

 private:
  void FitColumns();

  EditedTable file_;
  EditedGrid* table_;  // the window's
  TableCommands commands_;
  FindDialog finder_;
};

}  // namespace lorv::tool
