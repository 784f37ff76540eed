#include "grid/view/column_widths.h"

#include "grid/columns/column_texts.h"
#include "grid/commands/grid_commands.h"
#include "gridcore/control/grid_control.h"

// Widths by way of the table of columns, so that any grid has them.

namespace lorv {

namespace {

// A hidden column has no width of its own; it is shown for the moment of the question.
int WidthOf(CBCGPGridColumnsInfo& info, int column) {
  const bool hidden = info.GetColumnVisible(column) == FALSE;
  if (hidden) info.SetColumnVisible(column, TRUE);
  const int width = info.GetColumnWidth(column);
  if (hidden) info.SetColumnVisible(column, FALSE);
  return width;
}

bool HoldsWidths(const CString& text) {
  for (int i = 0; i < text.GetLength(); ++i)
    if (text[i] != _T(',') && (text[i] < _T('0') || text[i] > _T('9'))) return false;
  return !text.IsEmpty();
}

}  // namespace

CString ColumnWidthsOf(CBCGPGridCtrl& grid) {
  std::vector<int> widths;
  widths.reserve(static_cast<std::size_t>(grid.GetColumnCount()));
  for (int column = 0; column < grid.GetColumnCount(); ++column)
    widths.push_back(ForDots(WidthOf(grid.GetColumnsInfo(), column), kUsualDpi, grid.Dots()));
  return WidthsToText(widths);
}

bool CopyColumnWidths(CBCGPGridCtrl& grid) {
  return grid.GetColumnCount() > 0 && DesktopInForce().SetClipboardText(ColumnWidthsOf(grid));
}

bool PasteColumnWidths(CBCGPGridCtrl& grid) {
  CString text = DesktopInForce().ClipboardText();
  // Spreadsheets end what they copy by a line break.
  text.Trim();
  if (!HoldsWidths(text)) return false;
  int column = 0;
  for (const int width : WidthsFromText(text)) grid.SetColumnWidth(column++, grid.Scaled(width));
  grid.AdjustLayout();
  return true;
}

void BindColumnWidths(GridCommands& commands) {
  commands.Bind(_T("copy_widths"), CopyColumnWidths);
}

}  // namespace lorv
