#include "grid/clipboard/paste_run.h"

#include <algorithm>
#include <utility>

#include "framework/windows/window.h"
#include "grid/autorow/true_db_grid_ex.h"
#include "grid/items/multi_line_row.h"

// The target is worked out first, with the rows that it needs; then the cells get their values from the top
// left on. Nothing of the grid is kept over a value that is set.

namespace lorv {
namespace {

// With line breaks as editors have them.
CString TypedText(TextView text) {
  const auto breaks = [](TCHAR unit) { return unit == '\r' || unit == '\n'; };
  if (std::none_of(text.begin(), text.end(), breaks)) return {text.data(), static_cast<int>(text.size())};
  std::basic_string<TCHAR> typed;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (!breaks(text[at])) {
      typed += text[at];
      continue;
    }
    typed += _T("\r\n");
    if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') ++at;
  }
  return {typed.data(), static_cast<int>(typed.size())};
}

}  // namespace

PasteRun::PasteRun(CBCGPBasicGridCtrl& grid, const TextTable& table, PasteOptions options)
    : grid_(grid), table_(table), options_(std::move(options)), life_(grid.Watch()) {}

CBCGPGridItem* PasteRun::ItemAt(const CBCGPGridItemID& cell) const {
  return grid_.GetItem(cell.m_nRow, cell.m_nColumn);
}

bool PasteRun::AddsRows() const {
  const auto* const typed = dynamic_cast<const CBcgTrueDbGridCtrlEx*>(&grid_);
  return options_.adds_rows || (typed != nullptr && typed->IsAutoAddRow());
}

bool PasteRun::IsCovered(const CBCGPGridItemID& cell) const {
  if (!merges_) return false;
  const CBCGPGridRange block = grid_.GetMergedRange(cell);
  return block.IsValid() && (block.m_nTop != cell.m_nRow || block.m_nLeft != cell.m_nColumn);
}

bool PasteRun::FindRows(std::size_t wanted) {
  const bool adds = AddsRows();
  int row = target_.rows.empty() ? grid_.GetCurrentRow() : target_.rows.front();
  target_.rows.clear();
  while (target_.rows.size() < wanted) {
    const int count = grid_.GetRowCount();
    if (row < count) {
      if (grid_.IsRowShown(row)) target_.rows.push_back(row);
      ++row;
      continue;
    }
    // A row that a handler took away again would be added for ever.
    if (!adds || grid_.AddRow(FALSE) < 0 || Gone() || grid_.GetRowCount() <= count) break;
    ++report_.rows_added;
  }
  return !Gone() && !target_.rows.empty();
}

bool PasteRun::FindTarget() {
  const std::vector<CBCGPGridRange>& selection = grid_.GetSelection();
  target_ = ShownCells(grid_, selection.empty() ? CBCGPGridRange(grid_.GetCurSelItemID()) : selection.back());
  if (target_.IsEmpty()) return false;
  // The row that waits to be typed into is filled only where the paste begins there.
  while (target_.rows.size() > 1 && target_.rows.back() >= grid_.GetRowCount()) target_.rows.pop_back();
  const auto rows = static_cast<std::size_t>(table_.Rows());
  const auto columns = static_cast<std::size_t>(table_.columns);
  // As spreadsheets do: into a multiple of what was copied it repeats, into anything else it goes once, and
  // on beyond the selection.
  const bool repeats_down = target_.rows.size() % rows == 0;
  const bool repeats_across = target_.columns.size() % columns == 0;
  if (!repeats_across) {
    const CBCGPGridRange rest(target_.columns.front(), 0, grid_.GetColumnCount() - 1, 0);
    target_.columns = ShownCells(grid_, rest).columns;
    if (target_.columns.size() > columns) target_.columns.resize(columns);
  }
  return FindRows(repeats_down ? target_.rows.size() : rows);
}

void PasteRun::Refuse(const CBCGPGridItemID& cell, TextView text, PasteRefusal why) {
  ++report_.refused;
  // The count goes on; nobody reads a million names.
  if (report_.refused_cells.size() >= kMaxReportedRefusals) return;
  report_.refused_cells.push_back({cell, TypedText(text), why});
}

// Calls `take` with each cell of the target and its text; false: it stopped.
template <class Take>
bool PasteRun::EachCell(Take take) {
  const auto rows = static_cast<std::size_t>(table_.Rows());
  const auto columns = static_cast<std::size_t>(table_.columns);
  for (std::size_t down = 0; down < std::max(rows, target_.rows.size()); ++down) {
    const bool row_there = down < target_.rows.size();
    for (std::size_t across = 0; across < std::max(columns, target_.columns.size()); ++across) {
      const auto text = table_.At(static_cast<int>(down % rows), static_cast<int>(across % columns));
      if (!text.has_value()) continue;
      const bool there = row_there && across < target_.columns.size();
      const CBCGPGridItemID cell =
          there ? CBCGPGridItemID(target_.rows[down], target_.columns[across]) : CBCGPGridItemID();
      if (!take(cell, *text)) return false;
    }
  }
  return true;
}

// True where the cell can take the text; a refusal is noted.
bool PasteRun::Check(const CBCGPGridItemID& cell, TextView text) {
  const CBCGPGridItem* const item = cell.IsNull() ? nullptr : ItemAt(cell);
  if (item == nullptr) return Refuse({}, text, PasteRefusal::kOutside), false;
  if (IsCovered(cell)) return false;
  if (IsLocked(*item)) return Refuse(cell, text, PasteRefusal::kLocked), false;
  if (!options_.accepts) return true;
  if (options_.accepts(cell, item->ValueTyped(TypedText(text)))) return true;
  Refuse(cell, text, PasteRefusal::kNotAccepted);
  return false;
}

// False: the grid is gone.
bool PasteRun::Set(const CBCGPGridItemID& cell, TextView text) {
  CBCGPGridItem* const item = ItemAt(cell);
  if (item == nullptr) return Refuse({}, text, PasteRefusal::kOutside), true;
  const _variant_t value = item->ValueTyped(TypedText(text));
  if (options_.all_or_nothing) former_.push_back({cell, item->GetValue()});
  {
    const auto by_user = grid_.Changes().ByUser();
    grid_.SetValue(cell.m_nRow, cell.m_nColumn, value, FALSE);
  }
  if (Gone()) return false;
  const CBCGPGridItem* const now = ItemAt(cell);
  if (now != nullptr && now->GetValue() == value)
    ++report_.cells;
  else
    Refuse(cell, text, PasteRefusal::kNotTaken);
  return true;
}

bool PasteRun::SetAll() {
  // All is asked before the first is set, so that a refusal usually leaves no trace at all.
  if (options_.all_or_nothing) {
    EachCell([this](const CBCGPGridItemID& cell, TextView text) { return Check(cell, text), !Gone(); });
    if (Gone() || report_.refused > 0) return false;
  }
  const bool checked = options_.all_or_nothing;
  const auto set = [&](const CBCGPGridItemID& cell, TextView text) {
    const bool takes = checked ? ItemAt(cell) != nullptr && !IsCovered(cell) : Check(cell, text);
    return !Gone() && (!takes || Set(cell, text));
  };
  return EachCell(set) && (!options_.all_or_nothing || report_.refused == 0);
}

void PasteRun::TakeBack() {
  // Backwards: a cell that was set twice gets its first value last.
  for (auto last = former_.rbegin(); last != former_.rend() && !Gone(); ++last) {
    const auto by_user = grid_.Changes().ByUser();
    grid_.SetValue(last->cell.m_nRow, last->cell.m_nColumn, last->value, FALSE);
  }
  for (; report_.rows_added > 0 && !Gone(); --report_.rows_added)
    if (grid_.RemoveRow(grid_.GetRowCount() - 1, FALSE) == 0) break;
  report_.cells = 0;
}

void PasteRun::TakeLooks() {
  const auto by_user = grid_.Changes().ByUser();
  for (const CellExtent& extent : table_.extents) {
    const auto top = static_cast<std::size_t>(extent.row);
    const auto left = static_cast<std::size_t>(extent.column);
    if (top >= target_.rows.size() || left >= target_.columns.size()) continue;
    CBCGPGridItem* const item = ItemAt({target_.rows[top], target_.columns[left]});
    if (item == nullptr || IsLocked(*item)) continue;
    if (extent.back != kNoColour) item->SetBackgroundColor(extent.back, FALSE);
    if (extent.text != kNoColour) item->SetTextColor(extent.text, FALSE);
    const std::size_t bottom = std::min(target_.rows.size(), top + static_cast<std::size_t>(extent.rows)) - 1;
    const std::size_t right =
        std::min(target_.columns.size(), left + static_cast<std::size_t>(extent.columns)) - 1;
    grid_.MergeRange(
        {target_.columns[left], target_.rows[top], target_.columns[right], target_.rows[bottom]});
  }
}

void PasteRun::Finish() {
  bool lines_change = report_.rows_added > 0;
  for (const int row : target_.rows) {
    auto* const lines = dynamic_cast<CBCGPGridMultiLineRow*>(grid_.GetRow(row));
    if (lines == nullptr || grid_.m_hWnd == nullptr) continue;
    lines->OnItemUpdate(FALSE);
    lines_change = true;
  }
  if (lines_change) grid_.AdjustLayout();
  if (Gone() || !report_.pasted) return;
  report_.range = {target_.columns.front(), target_.rows.front(), target_.columns.back(),
                   target_.rows.back()};
  grid_.SetCurSel({report_.range.m_nTop, report_.range.m_nLeft});
  if (!Gone() && !report_.range.IsSingle()) grid_.SelectRange(report_.range);
  if (!Gone()) grid_.Invalidate(FALSE);
}

PasteReport PasteRun::Run() {
  const StepScope step(grid_.Changes());
  if (!FindTarget()) return std::move(report_);
  std::vector<CBCGPGridRange> blocks;
  merges_ = grid_.GetMergedItemsInRange({0, 0, grid_.GetColumnCount(), grid_.CBCGPGridCtrl::GetRowCount()},
                                        blocks) > 0;
  bool done = false;
  try {
    done = SetAll();
  } catch (...) {
    // What was set so far is there, and not drawn yet.
    if (!Gone() && options_.all_or_nothing) TakeBack();
    if (!Gone()) grid_.Invalidate(FALSE);
    throw;
  }
  if (Gone()) return {};
  if (!done) TakeBack();
  report_.pasted = done && !Gone();
  if (report_.pasted && options_.takes_looks) TakeLooks();
  if (!Gone()) Finish();
  if (Gone()) report_.pasted = false;
  return std::move(report_);
}

}  // namespace lorv
