#include "gridcore/columns/columns_info_ex.h"

#include <algorithm>

#include "gridcore/geometry/line_span.h"

// Header cells hold the numbers of their columns; so they follow when columns come and go, and are placed
// anew whenever the columns are.

namespace {

std::vector<int> SortedNumbers(const CArray<int, int>* numbers) {
  if (numbers == nullptr) return {};
  std::vector<int> sorted(numbers->begin(), numbers->end());
  std::sort(sorted.begin(), sorted.end());
  sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
  return sorted;
}

bool LieWithin(const std::vector<int>& sorted, int count) {
  return !sorted.empty() && sorted.front() >= 0 && sorted.back() < count;
}

bool Holds(const std::vector<int>& sorted, int number) {
  return std::binary_search(sorted.begin(), sorted.end(), number);
}

}  // namespace

void CBCGPGridColumnsInfoEx::SetHeaderLineCount(int lines) {
  lines_ = std::clamp(lines, 1, kMaxHeaderLines);
}

CBCGPGridHeaderItem* CBCGPGridColumnsInfoEx::AddHeaderItem(const CArray<int, int>* columns,
                                                           const CArray<int, int>* lines,
                                                           CBCGPGridHeaderItem* parent, LPCTSTR text,
                                                           int align, int flag) {
  auto item = std::make_unique<CBCGPGridHeaderItem>();
  item->columns = SortedNumbers(columns);
  item->lines = SortedNumbers(lines);
  if (!LieWithin(item->columns, GetColumnCount()) || !LieWithin(item->lines, lines_)) return nullptr;
  item->text = text;
  item->align = align;
  item->flag = flag;
  item->parent = parent;
  items_.push_back(std::move(item));
  return items_.back().get();
}

CBCGPGridHeaderItem* CBCGPGridColumnsInfoEx::GetHeaderItem(int index) const {
  return index >= 0 && index < GetHeaderItemCount() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

CBCGPGridHeaderItem* CBCGPGridColumnsInfoEx::GetHeaderItemAt(int column, int line) const {
  for (auto at = items_.rbegin(); at != items_.rend(); ++at)
    if (Holds((*at)->columns, column) && Holds((*at)->lines, line)) return at->get();
  return nullptr;
}

bool CBCGPGridColumnsInfoEx::GetOwnHeaderLines(int column, int& first, int& last) const {
  int line = 0;
  while (line < lines_ && GetHeaderItemAt(column, line) != nullptr) ++line;
  if (line == lines_ || !HasColumn(column)) return false;
  first = line;
  while (line < lines_ && GetHeaderItemAt(column, line) == nullptr) ++line;
  last = line - 1;
  return true;
}

void CBCGPGridColumnsInfoEx::ReposHeaderItems(int line_height) {
  for (const auto& item : items_) {
    item->rect = CRect();
    for (const int column : item->columns) {
      const int width = GetColumnWidth(column);
      const int left = GetColumnLeft(column);
      if (width > 0) item->rect |= CRect(left, 0, left + width, 1);
    }
    if (item->rect.IsRectEmpty() != FALSE) continue;
    item->rect.top = item->lines.front() * line_height;
    item->rect.bottom = (item->lines.back() + 1) * line_height;
  }
}

void CBCGPGridColumnsInfoEx::ColumnsMoved(int column, int count) {
  for (const auto& item : items_) {
    if (count < 0) std::erase(item->columns, column);
    for (int& number : item->columns)
      if (number >= column) number += count;
  }
  const auto orphaned = [](const CBCGPGridHeaderItem* item) { return item->columns.empty(); };
  for (const auto& item : items_)
    if (item->parent != nullptr && orphaned(item->parent)) item->parent = nullptr;
  std::erase_if(items_, [&](const auto& item) { return orphaned(item.get()); });
}

bool CBCGPGridColumnsInfoEx::CanMoveColumn(int column, int to) const {
  if (!CBCGPGridColumnsInfo::CanMoveColumn(column, to)) return false;
  return std::all_of(items_.begin(), items_.end(), [=](const auto& item) {
    const lorv::LineSpan span{item->columns.front(), item->columns.back()};
    if (span.first == span.last) return true;
    return (column < span.first || column > span.last) && lorv::SpansAfterMove(span, column, to).size() == 1;
  });
}

void CBCGPGridColumnsInfoEx::ColumnMoved(int from, int to) {
  for (const auto& item : items_)
    for (int& number : item->columns) number = lorv::LineAfterMove(number, from, to);
}
