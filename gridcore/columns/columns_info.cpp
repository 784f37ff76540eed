#include "gridcore/columns/columns_info.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

#include "gridcore/geometry/moved_element.h"

// Columns stand in a plain list; their places on the screen in LineSizes, which finds the column under the
// mouse among ten thousand as quickly as among ten.

namespace {

// Sums of widths stay within an int.
int KeptWidth(int width) {
  return std::clamp(width, 0, lorv::kMaxColumnWidth);
}

}  // namespace

const CBCGPGridColumnsInfo::Column* CBCGPGridColumnsInfo::Find(int column) const {
  return HasColumn(column) ? &columns_[static_cast<std::size_t>(column)] : nullptr;
}

CBCGPGridColumnsInfo::Column* CBCGPGridColumnsInfo::Find(int column) {
  return HasColumn(column) ? &columns_[static_cast<std::size_t>(column)] : nullptr;
}

void CBCGPGridColumnsInfo::Place(int column) {
  widths_.SetSize(column, 1, GetColumnWidth(column));
}

void CBCGPGridColumnsInfo::ColumnsMoved(int /*column*/, int /*count*/) {}

BOOL CBCGPGridColumnsInfo::InsertColumn(int column, LPCTSTR name, int width, int align) {
  if (column < 0 || column > GetColumnCount()) return FALSE;
  Column fresh;
  fresh.name = name;
  fresh.width = KeptWidth(width);
  fresh.align = align;
  columns_.insert(columns_.begin() + column, fresh);
  widths_.Insert(column, 1, fresh.width);
  UnmovedInserted(column);
  ColumnsMoved(column, 1);
  return TRUE;
}

int CBCGPGridColumnsInfo::InsertColumns(int column, int count, int width) {
  int done = 0;
  while (done < count && InsertColumn(column + done, _T(""), width) != FALSE) ++done;
  return done;
}

BOOL CBCGPGridColumnsInfo::DeleteColumn(int column) {
  if (!HasColumn(column)) return FALSE;
  columns_.erase(columns_.begin() + column);
  widths_.Remove(column, 1);
  UnmovedDeleted(column);
  ColumnsMoved(column, -1);
  return TRUE;
}

void CBCGPGridColumnsInfo::DeleteAllColumns() {
  while (GetColumnCount() > 0) CBCGPGridColumnsInfo::DeleteColumn(GetColumnCount() - 1);
}

BOOL CBCGPGridColumnsInfo::MoveColumn(int column, int to) {
  if (!CanMoveColumn(column, to)) return FALSE;
  if (column == to) return TRUE;
  if (unmoved_.empty()) {
    unmoved_.resize(columns_.size());
    std::iota(unmoved_.begin(), unmoved_.end(), 0);
  }
  lorv::MoveElement(columns_, column, to);
  lorv::MoveElement(unmoved_, column, to);
  widths_.Remove(column, 1);
  widths_.Insert(to, 1, GetColumnWidth(to));
  if (std::is_sorted(unmoved_.begin(), unmoved_.end())) unmoved_.clear();
  ColumnMoved(column, to);
  return TRUE;
}

int CBCGPGridColumnsInfo::GetUnmovedColumn(int column) const {
  if (!HasColumn(column)) return -1;
  return unmoved_.empty() ? column : unmoved_[static_cast<std::size_t>(column)];
}

int CBCGPGridColumnsInfo::FindUnmovedColumn(int number) const {
  if (!HasColumn(number) || unmoved_.empty()) return HasColumn(number) ? number : -1;
  return static_cast<int>(std::find(unmoved_.begin(), unmoved_.end(), number) - unmoved_.begin());
}

// A column that comes stands in front of the same neighbour in both orders.
void CBCGPGridColumnsInfo::UnmovedInserted(int column) {
  if (unmoved_.empty()) return;
  const auto place = unmoved_.begin() + column;
  const int number = place == unmoved_.end() ? static_cast<int>(unmoved_.size()) : *place;
  for (int& other : unmoved_)
    if (other >= number) ++other;
  unmoved_.insert(unmoved_.begin() + column, number);
}

void CBCGPGridColumnsInfo::UnmovedDeleted(int column) {
  if (unmoved_.empty()) return;
  const int number = unmoved_[static_cast<std::size_t>(column)];
  unmoved_.erase(unmoved_.begin() + column);
  for (int& other : unmoved_)
    if (other > number) --other;
  if (std::is_sorted(unmoved_.begin(), unmoved_.end())) unmoved_.clear();
}

CString CBCGPGridColumnsInfo::GetColumnName(int column) const {
  const Column* found = Find(column);
  return found == nullptr ? CString() : found->name;
}

void CBCGPGridColumnsInfo::SetColumnName(int column, LPCTSTR name) {
  if (Column* found = Find(column)) found->name = name;
}

int CBCGPGridColumnsInfo::GetColumnAlign(int column) const {
  const Column* found = Find(column);
  return found == nullptr ? -1 : found->align;
}

void CBCGPGridColumnsInfo::SetColumnAlign(int column, int align) {
  if (Column* found = Find(column)) found->align = align;
}

int CBCGPGridColumnsInfo::GetColumnWidth(int column) const {
  const Column* found = Find(column);
  // A hidden column keeps its width for the day it is shown, and answers with none.
  return found == nullptr || !found->visible ? 0 : found->width;
}

void CBCGPGridColumnsInfo::SetColumnWidth(int column, int width) {
  Column* found = Find(column);
  if (found == nullptr) return;
  found->width = KeptWidth(width);
  Place(column);
}

int CBCGPGridColumnsInfo::GetMinWidth(int column) const {
  const Column* found = Find(column);
  return found == nullptr ? 0 : found->least;
}

void CBCGPGridColumnsInfo::SetMinWidth(int column, int width) {
  if (Column* found = Find(column)) found->least = KeptWidth(width);
}

BOOL CBCGPGridColumnsInfo::GetColumnVisible(int column) const {
  const Column* found = Find(column);
  return found != nullptr && found->visible;
}

void CBCGPGridColumnsInfo::SetColumnVisible(int column, BOOL visible) {
  Column* found = Find(column);
  if (found == nullptr) return;
  found->visible = visible != FALSE;
  Place(column);
}

BOOL CBCGPGridColumnsInfo::GetColumnWidthAutoSize(int column) const {
  const Column* found = Find(column);
  return found != nullptr && found->auto_size;
}

void CBCGPGridColumnsInfo::SetColumnWidthAutoSize(int column, BOOL on) {
  if (Column* found = Find(column)) found->auto_size = on != FALSE;
}

int CBCGPGridColumnsInfo::GetAutoSizeCount() const {
  return static_cast<int>(
      std::count_if(columns_.begin(), columns_.end(), [](const Column& column) { return column.auto_size; }));
}

const CRuntimeClass* CBCGPGridColumnsInfo::GetItemRTC(int column) const {
  const Column* found = Find(column);
  return found == nullptr ? nullptr : found->item_class;
}

bool CBCGPGridColumnsInfo::HasItemClasses() const {
  return std::any_of(columns_.begin(), columns_.end(),
                     [](const Column& column) { return column.item_class != nullptr; });
}

void CBCGPGridColumnsInfo::SetItemRTC(int column, const CRuntimeClass* item_class) {
  if (Column* found = Find(column)) found->item_class = item_class;
}

int CBCGPGridColumnsInfo::GetNextVisibleColumn(int column, BOOL forward) const {
  const int step = forward != FALSE ? 1 : -1;
  // A number outside counts as the place in front of the first column or behind the last one.
  for (int at = std::clamp(column, -1, GetColumnCount()) + step; HasColumn(at); at += step)
    if (columns_[static_cast<std::size_t>(at)].visible) return at;
  return -1;
}

int CBCGPGridColumnsInfo::GetFirstVisibleColumn() const {
  return GetNextVisibleColumn(-1, TRUE);
}

int CBCGPGridColumnsInfo::GetLastVisibleColumn() const {
  return GetNextVisibleColumn(GetColumnCount(), FALSE);
}

int CBCGPGridColumnsInfo::GetVisibleColumnCount() const {
  return static_cast<int>(
      std::count_if(columns_.begin(), columns_.end(), [](const Column& column) { return column.visible; }));
}

int CBCGPGridColumnsInfo::GetWidthOfFirst(int count, int most) const {
  if (count <= 0 || most <= 0) return 0;
  const std::int64_t all = widths_.OffsetOf(count);
  return Bounded(all <= most ? all : widths_.OffsetOf(widths_.LineAt(most)));
}

int CBCGPGridColumnsInfo::HitTestDivider(int place, int reach) const {
  // Of columns that end at one place the last one is meant: so one dragged to nothing is drawn out again.
  for (int at = GetLastVisibleColumn(); at >= 0; at = GetNextVisibleColumn(at, FALSE)) {
    const std::int64_t edge = std::int64_t{GetColumnLeft(at)} + GetColumnWidth(at);
    if (edge < std::int64_t{place} - reach) return -1;
    if (edge <= std::int64_t{place} + reach) return at;
  }
  return -1;
}

void CBCGPGridColumnsInfo::Share(const std::vector<int>& sharing, int room) {
  std::int64_t total = 0;
  for (const int column : sharing) total += GetColumnWidth(column);
  int left = room;
  for (std::size_t i = 0; i < sharing.size(); ++i) {
    const int column = sharing[i];
    const auto rest = static_cast<int>(sharing.size() - i);
    int width =
        total > 0 ? static_cast<int>(std::int64_t{GetColumnWidth(column)} * room / total) : left / rest;
    // What rounding left over goes to the last one.
    if (rest == 1) width = left;
    // A least width is kept even where the others get nothing for it.
    width = std::max(width, GetMinWidth(column));
    SetColumnWidth(column, width);
    left = std::max(0, left - width);
  }
}

void CBCGPGridColumnsInfo::Resize(int room, BOOL spread) {
  std::vector<int> sharing;
  std::int64_t others = 0;
  for (int at = GetFirstVisibleColumn(); at >= 0; at = GetNextVisibleColumn(at, TRUE)) {
    if (spread != FALSE || GetColumnWidthAutoSize(at) != FALSE)
      sharing.push_back(at);
    else
      others += GetColumnWidth(at);
  }
  const std::int64_t left = room - others;
  // Without room they stay as wide as they are, and the grid scrolls.
  if (!sharing.empty() && left > 0) Share(sharing, static_cast<int>(left));
}
