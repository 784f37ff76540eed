#include "grid/clipboard/grid_clipboard.h"

#include "framework/ports/desktop_port.h"
#include "grid/basic/basic_grid.h"
#include "grid/clipboard/copied_cells.h"
#include "grid/clipboard/html_table.h"
#include "grid/clipboard/line_breaks.h"
#include "grid/clipboard/paste_run.h"
#include "grid/commands/grid_commands.h"

// The clipboard of a grid. What lies on it is read once, and pasted by a PasteRun.

namespace lorv {
namespace {

TextTable HtmlOnClipboard() {
  const std::vector<BYTE> bytes = DesktopInForce().ClipboardBytes(CString(TransferData::kHtml));
  return ReadHtmlTable(std::string(bytes.begin(), bytes.end()));
}

// Views of the table may lead into `text`.
TextTable TableOnClipboard(const PasteOptions& options, CString& text) {
  Desktop& desktop = DesktopInForce();
  const bool has_text = desktop.HasClipboardText();
  // The text is exact, also where HTML would fold blanks: looks alone are a reason for the other form.
  if (!has_text || options.takes_looks) {
    TextTable table = HtmlOnClipboard();
    if (table.Rows() > 0 && table.columns > 0) return table;
  }
  if (!has_text) return {};
  text = desktop.ClipboardText();
  TextTable table = ReadTabText(TextView(text.GetString(), static_cast<std::size_t>(text.GetLength())));
  // Beyond that, spreadsheets take longer to write the HTML than all of a paste takes.
  if (!options.takes_looks && table.cells.size() <= static_cast<std::size_t>(kMaxHtmlCells))
    TakeLineBreaks(table, HtmlOnClipboard());
  return table;
}

// A cell is followed by one unit at least; so a virtual table need not be counted row by row.
bool IsTooLarge(const std::vector<CBCGPGridRange>& selection) {
  long long cells = 0;
  for (const CBCGPGridRange& range : selection) cells += range.CellCount();
  return cells > static_cast<long long>(kMaxCopiedUnits);
}

// False: the cells of the grid cannot be changed now, or it is gone.
bool EndEditFirst(CBCGPBasicGridCtrl& grid) {
  const auto life = grid.Watch();
  if (grid.GetEditingItem() != nullptr) grid.EndEditItem(TRUE);
  return !life.expired() && grid.GetEditingItem() == nullptr && grid.IsReadOnly() == FALSE &&
         grid.IsVirtualMode() == FALSE;
}

}  // namespace

GridClipboard::GridClipboard(CBCGPBasicGridCtrl& grid) : grid_(&grid), life_(grid.Watch()) {}

bool GridClipboard::Copy() const {
  if (Grid() == nullptr || IsTooLarge(grid_->GetSelection())) return false;
  const CellArea area = ShownSelection(*grid_);
  if (area.IsEmpty()) return false;
  const TransferData copied = CopiedCells(*grid_, area);
  return copied.HasText() && DesktopInForce().SetClipboard(copied);
}

bool GridClipboard::Cut() {
  if (Grid() == nullptr) return false;
  // Handlers may end the grid, and this object as well.
  CBCGPBasicGridCtrl& grid = *grid_;
  const auto life = life_;
  // What could not be copied must not be cut.
  if (!EndEditFirst(grid) || !GridClipboard(grid).Copy()) return false;
  const CellArea area = ShownSelection(grid);
  const StepScope step(grid.Changes());
  for (const int row : area.rows)
    for (const int column : area.columns) {
      const CBCGPGridItem* const item = grid.GetItem(row, column);
      if (item == nullptr || IsLocked(*item)) continue;
      const auto by_user = grid.Changes().ByUser();
      grid.SetValue(row, column, _variant_t(), FALSE);
      if (life.expired()) return false;
    }
  grid.Invalidate(FALSE);
  return true;
}

PasteReport GridClipboard::Paste(const PasteOptions& options) {
  if (Grid() == nullptr) return {};
  CBCGPBasicGridCtrl& grid = *grid_;
  if (!EndEditFirst(grid)) return {};
  CString text;
  const TextTable table = TableOnClipboard(options, text);
  if (table.Rows() == 0 || table.columns == 0) return {};
  return PasteRun(grid, table, options).Run();
}

void GridClipboard::Bind(GridCommands& commands) {
  commands.Bind(_T("copy"), [this](CBCGPGridCtrl&) { return Copy(); });
  commands.Bind(_T("cut"), [this](CBCGPGridCtrl&) { return Cut(); });
  commands.Bind(_T("paste"), [this](CBCGPGridCtrl&) { return Paste().pasted; });
}

}  // namespace lorv
