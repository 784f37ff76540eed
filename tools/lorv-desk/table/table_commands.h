#pragma once

#include <functional>
#include <vector>

#include "grid/clipboard/grid_clipboard.h"
#include "grid/commands/grid_commands.h"
#include "grid/find/grid_find.h"
#include "grid/history/grid_history.h"
#include "grid/printing/grid_printing.h"
#include "grid/view/grid_column_order.h"
#include "grid/view/grid_frozen_columns.h"
#include "grid/view/grid_sort.h"
#include "grid/view/grid_zoom.h"
#include "tools/lorv-desk/table/edited_grid.h"

namespace lorv::tool {

// What a table's window adds to its grid: undo, clipboard, find, sorting, columns that are dragged, zoom and
// printing, with one table of commands from which the keys and the menu come.
//
// Beside the commands that every grid knows: "save", "print", "to_spreadsheet", "from_spreadsheet".
// The grid must live as long.
class TableCommands {
 public:
  // What the window does itself.
  struct Window {
    std::function<bool()> save;
    std::function<bool(bool with_replacement)> find;  // shows the dialog
  };

  TableCommands(EditedGrid& grid, Window window);

  // The name of the document is what a printer's queue shows.
  void NamePrintedPages(const CString& title);
  bool Run(LPCTSTR name) { return commands_.Run(name); }
  bool ShowMenu(CPoint point) { return commands_.ShowMenu(MenuNames(), point); }
  // In the order of the menu; "-" is a line between entries.
  static std::vector<CString> MenuNames();

  const GridCommands& Table() const { return commands_; }
  GridHistory& History() { return history_; }
  GridFind& Find() { return find_; }
  GridZoom& Zoom() { return zoom_; }

 private:
  void AddOwn(Window window);
  bool InsertRow(bool done);
  bool Print();
  bool Paste();

  EditedGrid& grid_;
  GridHistory history_;
  GridClipboard clipboard_;
  GridFind find_;
  GridSort sort_;
  GridZoom zoom_;
  GridFrozenColumns frozen_;
  GridColumnOrder order_;
  GridPrinting printing_;
  // Calls all of the above: it ends first.
  GridCommands commands_;
};

}  // namespace lorv::tool
