#include <algorithm>
#include <set>
#include <utility>

#include "gridcore/accessibility/grid_cells.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/rows/group_row.h"

// Rows grouped by columns. Grouping brings the rows into the order of the columns; what begins where is kept
// beside the heights of the rows, so that the rows themselves and their numbers are the table's as ever.

void CBCGPGridCtrl::InsertGroupColumn(int place, int column) {
  if (!GetColumnsInfo().HasColumn(column) || IsGroupColumn(column) || IsVirtualMode() != FALSE) return;
  place = std::clamp(place, 0, GetGroupColumnCount());
  const lorv::StepScope step(changes_);
  // Before the columns change: an undo brings back the groups with the order of the rows.
  if (changes_.AreWatched()) changes_.ReportMoving(Arrangement());
  group_columns_.insert(group_columns_.begin() + place, column);
  Regroup();
}

void CBCGPGridCtrl::RemoveGroupColumn(int place) {
  if (place < 0 || place >= GetGroupColumnCount()) return;
  const lorv::StepScope step(changes_);
  if (changes_.AreWatched()) changes_.ReportMoving(Arrangement());
  group_columns_.erase(group_columns_.begin() + place);
  Regroup();
}

bool CBCGPGridCtrl::IsGroupColumn(int column) const {
  return std::find(group_columns_.begin(), group_columns_.end(), column) != group_columns_.end();
}

int CBCGPGridCtrl::GetGroupColumn(int place) const {
  return place >= 0 && place < GetGroupColumnCount() ? group_columns_[static_cast<std::size_t>(place)] : -1;
}

CBCGPGridRow* CBCGPGridCtrl::GetGroupRow(int number) const {
  return number >= 0 && number < GetGroupRowCount() ? group_rows_[static_cast<std::size_t>(number)].get()
                                                    : nullptr;
}

int CBCGPGridCtrl::GroupRowId(const CBCGPGridRow& row) const {
  const auto* group = dynamic_cast<const lorv::GroupRow*>(&row);
  // A line that was made for an earlier grouping has a number, but no place any more.
  return group == nullptr || GetGroupRow(group->GetNumber()) != group ? -1
                                                                      : rows_.Size() + group->GetNumber();
}

lorv::RowGroup CBCGPGridCtrl::GetRowsOfGroup(const CBCGPGridRow& group) const {
  const int id = IndexOfRow(group);
  return id < rows_.Size() ? lorv::RowGroup{} : heights_.Groups().At(id - rows_.Size());
}

void CBCGPGridCtrl::Regroup() {
  const auto life = life_.Watch();
  if (editing_ != nullptr) EndEditItem(TRUE);
  if (life.expired()) return;
  CBCGPGridRow* const current = GetCurSel();
  if (changes_.AreWatched()) changes_.ReportMoving(Arrangement());
  ArrangeRows();
  // The lines are made with the layout, once, however many steps want them anew.
  regroup_wanted_ = true;
  FollowRow(current);
  AdjustLayout();
}

void CBCGPGridCtrl::FollowRow(const CBCGPGridRow* row) {
  // The selection names places; the current cell goes with its row.
  selection_.Clear();
  if (cells_ != nullptr) cells_->RowsMoved();
  if (row == nullptr) return;
  current_.m_nRow = IndexOfRow(*row);
  selection_.Add(CBCGPGridRange(current_));
}

namespace {

// False, and the rows stay: not each place once.
bool BringInOrder(std::vector<CBCGPGridRow*>& rows, const std::vector<int>& order) {
  if (order.size() != rows.size()) return false;
  std::vector<CBCGPGridRow*> left = rows;
  std::vector<CBCGPGridRow*> arranged;
  arranged.reserve(rows.size());
  for (const int place : order) {
    if (place < 0 || place >= static_cast<int>(left.size())) return false;
    arranged.push_back(std::exchange(left[static_cast<std::size_t>(place)], nullptr));
    if (arranged.back() == nullptr) return false;
  }
  rows = std::move(arranged);
  return true;
}

// Found through the row for every two that are compared, the cells would take longer than all else. `gone`
// counts those that the table loses: who compares may replace cells.
template <class Before>
void SortByCells(std::vector<CBCGPGridRow*>& rows, int column, const unsigned& gone, Before before) {
  struct Entry {
    CBCGPGridRow* row;
    CBCGPGridItem* item;
  };
  std::vector<Entry> entries;
  entries.reserve(rows.size());
  for (CBCGPGridRow* const row : rows) entries.push_back({row, row->GetItem(column)});
  const unsigned gone_before = gone;
  const auto item_of = [&](const Entry& entry) {
    return gone == gone_before ? entry.item : entry.row->GetItem(column);
  };
  std::stable_sort(entries.begin(), entries.end(),
                   [&](const Entry& a, const Entry& b) { return before(item_of(a), item_of(b)); });
  std::transform(entries.begin(), entries.end(), rows.begin(), [](const Entry& entry) { return entry.row; });
}

}  // namespace

void CBCGPGridCtrl::ArrangeRows() {
  // Copies: a descendant compares items, and what it runs may change the columns.
  const std::vector<int> groups = group_columns_;
  const int sorted = sort_.column;
  const bool up = sort_.ascending;
  const RowSorter sorter = sorted < 0 ? RowSorter() : row_sorter_;
  const auto before = [&](const CBCGPGridRow* a, const CBCGPGridRow* b) {
    for (const int column : groups) {
      const int compared = CompareItems(a->GetItem(column), b->GetItem(column));
      if (compared != 0) return compared < 0;
    }
    // Rows alike in their groups stay as they stand, or as the sorter left them.
    if (sorted < 0 || sorter != nullptr) return false;
    const int compared = CompareItems(a->GetItem(sorted), b->GetItem(sorted));
    return up ? compared < 0 : compared > 0;
  };
  ArrangeRows([&](RowList& rows) {
    // What stands in order by the column stays so within the groups.
    if (sorter != nullptr) BringInOrder(rows, sorter(rows, sorted, up));
    if (sorter == nullptr && groups.empty() && sorted >= 0)
      return SortByCells(rows, sorted, sort_.items_gone, [&](const CBCGPGridItem* a, const CBCGPGridItem* b) {
        const int compared = CompareItems(a, b);
        return up ? compared < 0 : compared > 0;
      });
    if (sorter == nullptr || !groups.empty()) std::stable_sort(rows.begin(), rows.end(), before);
  });
}

namespace {

// The values of the groups around, outermost first: what distinguishes a group from others when rows move.
using GroupPath = std::vector<CString>;

}  // namespace

// The groups of the rows as they stand: a new one begins where the text of its column changes, or an outer
// one begins.
class CBCGPGridCtrl::GroupMaker {
 public:
  explicit GroupMaker(CBCGPGridCtrl& grid) : grid_(grid) {
    for (int group = 0; group < grid.GetGroupRowCount(); ++group)
      // What the user collapsed stays so while rows come and go; the values say which group it was.
      if (grid.GetGroupRow(group)->IsExpanded() == FALSE) collapsed_.insert(PathOf(group));
  }

  void Take(const CBCGPGridRow& row, int index) {
    const auto& columns = grid_.group_columns_;
    std::size_t level = 0;
    while (level < path_.size() && path_[level] == row.GetCellText(columns[level])) ++level;
    CloseFrom(level, index);
    for (; level < columns.size(); ++level) Begin(row, index, columns[level]);
  }

  void End(int index) {
    CloseFrom(0, index);
    grid_.ForgetGroups();
    grid_.group_rows_ = std::move(rows_);
    grid_.heights_.StartOver(std::move(groups_));
  }

 private:
  GroupPath PathOf(int group) const {
    GroupPath path;
    for (; group >= 0; group = grid_.heights_.Groups().At(group).parent)
      path.insert(path.begin(), grid_.group_rows_[static_cast<std::size_t>(group)]->GetValue());
    return path;
  }

  void Begin(const CBCGPGridRow& row, int index, int column) {
    const int number = static_cast<int>(groups_.size());
    lorv::RowGroup group;
    group.first = group.end = index;
    group.level = static_cast<int>(path_.size());
    group.parent = open_.empty() ? -1 : open_.back();
    path_.push_back(row.GetCellText(column));
    group.expanded = collapsed_.count(path_) == 0;
    groups_.push_back(group);
    open_.push_back(number);
    rows_.push_back(std::make_unique<lorv::GroupRow>(column, grid_.GetColumnName(column), path_.back()));
    rows_.back()->SetNumber(number);
    rows_.back()->Expand(group.expanded ? TRUE : FALSE, FALSE);
    grid_.Own(*rows_.back());
  }

  void CloseFrom(std::size_t level, int index) {
    for (; open_.size() > level; open_.pop_back())
      groups_[static_cast<std::size_t>(open_.back())].end = index;
    path_.resize(std::min(path_.size(), level));
  }

  CBCGPGridCtrl& grid_;
  std::set<GroupPath> collapsed_;
  GroupPath path_;
  std::vector<int> open_;
  std::vector<lorv::RowGroup> groups_;
  std::vector<std::unique_ptr<lorv::GroupRow>> rows_;
};

void CBCGPGridCtrl::Own(CBCGPGridRow& row) {
  row.owner_ = this;
}

void CBCGPGridCtrl::MakeGroups() {
  regroup_wanted_ = false;
  GroupMaker maker(*this);
  int index = 0;
  int end = rows_.Size();
  // The row that waits to be typed into belongs to no group.
  if (switches_.keeps_last_row && end > 0) --end;
  rows_.ForEach([&](const CBCGPGridRow& row) {
    if (index < end && row.parent_ == nullptr && !group_columns_.empty()) maker.Take(row, index);
    ++index;
  });
  maker.End(end);
}

void CBCGPGridCtrl::ForgetGroups() {
  // Rows without an owner report their end to nobody.
  for (const auto& row : group_rows_) row->owner_ = nullptr;
  group_rows_.clear();
}

void CBCGPGridCtrl::GroupGone(int number) {
  const auto gone = group_rows_.begin() + number;
  (*gone)->owner_ = nullptr;
  group_rows_.erase(gone);
  for (int next = number; next < GetGroupRowCount(); ++next)
    group_rows_[static_cast<std::size_t>(next)]->SetNumber(next);
}

void CBCGPGridCtrl::GroupColumnsMove(int column, int step) {
  if (step < 0) std::erase(group_columns_, column);
  for (int& group : group_columns_)
    if (group >= column) group += step;
  regroup_wanted_ = regroup_wanted_ || !group_rows_.empty();
}
