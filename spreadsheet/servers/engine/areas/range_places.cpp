#include "spreadsheet/servers/engine/areas/range_places.h"

#include <algorithm>

#include "spreadsheet/servers/engine/areas/cell_reference.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"

// Places within a range, as programs ask for them: a cell by its number, a part by its corners, a count.
// All is checked here against the sheet's size, as the offsets come from outside.

namespace lorv::engine {
namespace {

// What is put into a range goes into each of its cells.
constexpr __int64 kMostCellsAtOnce = 1000000;

__int64 CellsOf(const Area& area) {
  return static_cast<__int64>(area.Rows()) * area.Columns();
}

}  // namespace

Area ItemOf(const Area& range, long row, long column) {
  // In 64 bits: the offsets are the caller's, and the sum may be beyond a long's range.
  const __int64 at_row = static_cast<__int64>(range.top) + row - 1;
  const __int64 at_column = static_cast<__int64>(range.left) + column - 1;
  if (at_row < 0 || at_row >= kMaxRows || at_column < 0 || at_column >= kMaxColumns) {
    Fail(_T("单元格超出工作表的范围。"));
  }
  const auto top = static_cast<long>(at_row);
  const auto left = static_cast<long>(at_column);
  return {top, left, top, left};
}

Area CornersOf(const Area& range, const CString& first, const CString& last) {
  const auto a = ParseCell(first.View());
  const auto b = ParseCell(last.View());
  if (!a || !b) Fail(_T("单元格地址无效。"));
  Area area = Union({a->row, a->column, a->row, a->column}, {b->row, b->column, b->row, b->column});
  area.top += range.top;
  area.bottom += range.top;
  area.left += range.left;
  area.right += range.left;
  if (area.bottom >= kMaxRows || area.right >= kMaxColumns) Fail(_T("单元格超出工作表的范围。"));
  return area;
}

long CountOf(const Area& range, RangePart part) {
  if (part == RangePart::kRows) return range.Rows();
  if (part == RangePart::kColumns) return range.Columns();
  return static_cast<long>(std::min<__int64>(CellsOf(range), 0x7FFFFFFF));
}

double CheckedWidth(double width) {
  // What is no number is none of them, too.
  if (!(width >= 0 && width <= kMaxSheetColumnWidth)) Fail(_T("列宽须为0至255。"));
  return width;
}

void CheckCells(const Area& area) {
  if (CellsOf(area) > kMostCellsAtOnce) Fail(_T("区域太大。"));
}

}  // namespace lorv::engine
