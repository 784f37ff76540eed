#include "grid/find/grid_find.h"

#include "grid/commands/grid_commands.h"
#include "grid/find/cell_search.h"
#include "gridcore/control/grid_control.h"

// What is found becomes current, which runs handlers; so does each replacement. Cells are looked up anew
// after every one.

namespace lorv {

GridFind::GridFind(CBCGPGridCtrl& grid) : grid_(&grid), grid_life_(grid.Watch()) {}

void GridFind::SetOptions(const FindOptions& options) {
  options_ = options;
  scope_.clear();
  const CBCGPGridCtrl* const grid = Grid();
  if (!options.selection_only || grid == nullptr) return;
  scope_ = grid->GetSelection();
  // One selected cell is just where the user stands.
  if (scope_.size() == 1 && scope_.front().IsSingle()) scope_.clear();
}

CBCGPGridItemID GridFind::FindFrom(const CBCGPGridItemID& from, bool backwards) const {
  const CBCGPGridCtrl* const grid = Grid();
  if (grid == nullptr) return {};
  const CellSearch search(*grid, options_, scope_);
  if (from.IsNull()) return search.First(search.Start(backwards), backwards);
  const CBCGPGridItemID found = search.First(search.Behind(from, backwards), backwards);
  if (!found.IsNull() || !options_.wrap) return found;
  // What lies behind the cell has been searched: only what stands before it, and itself, can be found now.
  return search.First(search.Start(backwards), backwards);
}

int GridFind::Count() const {
  const CBCGPGridCtrl* const grid = Grid();
  if (grid == nullptr) return 0;
  const CellSearch search(*grid, options_, scope_);
  int count = 0;
  for (CBCGPGridItemID at = search.First(search.Start(false), false); !at.IsNull();
       at = search.First(search.Behind(at, false), false))
    ++count;
  return count;
}

bool GridFind::EndsEdit() {
  CBCGPGridCtrl* const grid = Grid();
  if (grid == nullptr) return false;
  const auto life = life_.Watch();
  const auto grid_life = grid_life_;
  if (grid->GetEditingItem() != nullptr) grid->EndEditItem(TRUE);
  return !life.expired() && !grid_life.expired() && grid->GetEditingItem() == nullptr;
}

bool GridFind::Go(bool backwards) {
  if (!EndsEdit()) return false;
  const CBCGPGridItemID found = FindFrom(grid_->GetCurSelItemID(), backwards);
  if (found.IsNull()) return false;
  CBCGPGridCtrl& grid = *grid_;
  const auto grid_life = grid_life_;
  grid.SetCurSel(found);
  if (!grid_life.expired()) grid.EnsureVisible(found);
  return true;
}

// False: the grid or this object is gone.
bool GridFind::ReplaceCell(const CBCGPGridItemID& id, const CString& by, ReplaceCount& count) {
  CBCGPGridCtrl& grid = *grid_;
  if (grid.IsVirtualMode() != FALSE || grid.IsEditableNow(grid.GetGridItem(id)) == FALSE) {
    ++count.kept;
    return true;
  }
  const auto life = life_.Watch();
  const auto grid_life = grid_life_;
  // The cell is current while it changes, as if the user had typed there: dialogs look at it in their
  // handlers.
  if (grid.GetCurSelItemID() != id) grid.SetCurSel(id, kSelectOnly, FALSE);
  if (life.expired() || grid_life.expired()) return false;
  const CellSearch search(grid, options_, scope_);
  CBCGPGridItem* const item = grid.GetGridItem(id);
  // Handlers have put something else there.
  if (item == nullptr || !search.Matches(id)) return true;
  const _variant_t before = item->GetValue();
  int places = 0;
  const _variant_t value =
      item->ValueOfText(search.Matcher().Replaced(item->FormatItem().View(), by, places));
  item->SetValue(value, TRUE);
  item->SetItemChanged();
  if (life.expired() || grid_life.expired()) return false;
  const CBCGPGridItem* const now = grid.GetGridItem(id);
  // A handler that refuses puts the old value back; there is no other sign of it.
  const bool taken_back = now != nullptr && now->GetValue() == before && !(before == value);
  count.refused += taken_back ? 1 : 0;
  count.changed += taken_back ? 0 : 1;
  count.places += taken_back ? 0 : places;
  return true;
}

ReplaceCount GridFind::ReplaceNext(const CString& by) {
  ReplaceCount count;
  if (!EndsEdit()) return count;
  const CBCGPGridItemID at = grid_->GetCurSelItemID();
  // Its own: handlers may change or end the caller's.
  const CString text(by.View());
  const auto user = grid_->Changes().ByUser();
  const StepScope step(grid_->Changes());
  if (CellSearch(*grid_, options_, scope_).Matches(at) && !ReplaceCell(at, text, count)) return count;
  Go(options_.backwards);
  return count;
}

ReplaceCount GridFind::ReplaceAll(const CString& by) {
  ReplaceCount count;
  if (!EndsEdit()) return count;
  CBCGPGridCtrl& grid = *grid_;
  const CBCGPGridItemID current = grid.GetCurSelItemID();
  const std::vector<CBCGPGridRange> selected = grid.GetSelection();
  // Its own: handlers may change or end the caller's.
  const CString text(by.View());
  const auto user = grid.Changes().ByUser();
  const StepScope step(grid.Changes());
  // Rows that handlers add below are not gone on into.
  const int rows = grid.GetRowCount();
  CBCGPGridItemID at(0, -1);
  for (;;) {
    // Anew for each: columns and hidden rows may have changed in handlers.
    const CellSearch search(grid, options_, scope_);
    at = search.First(search.Behind(at, false), false);
    if (at.IsNull() || at.m_nRow >= rows) break;
    if (!ReplaceCell(at, text, count)) return count;
  }
  const auto grid_life = grid_life_;
  if (count.changed + count.refused == 0) return count;
  if (selected.empty() || selected.front().IsSingle())
    grid.SetCurSel(current, current.IsNull() ? kSelectClear : kSelectOnly);
  else
    grid.SelectRange(selected.front());
  return count;
}

bool GridFind::IsPatternValid() const {
  return !options_.pattern || TextPattern(options_.text.View(), options_.match_case).IsValid();
}

void GridFind::Bind(GridCommands& commands) {
  const auto can = [this](const CBCGPGridCtrl&) { return !options_.text.IsEmpty(); };
  commands.Bind(
      _T("find_next"), [this](CBCGPGridCtrl&) { return FindNext(); }, can);
  commands.Bind(
      _T("find_previous"), [this](CBCGPGridCtrl&) { return FindPrevious(); }, can);
}

}  // namespace lorv
