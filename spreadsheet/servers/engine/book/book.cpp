#include "spreadsheet/servers/engine/book/book.h"

#include <algorithm>
#include <iterator>

#include "framework/text/surrogates.h"
#include "spreadsheet/servers/engine/areas/range_places.h"
#include "spreadsheet/servers/engine/engine_failure.h"

// The workbook behind every object of the engine and behind WorkbookFile: sheets with their cells, columns
// and merged areas, over pools of texts and styles that they share. Names of sheets are checked here, for
// programs take a file with a bad one for damaged.

namespace lorv::engine {

void ColumnShapes::Set(long first, long last, const ColumnShape& shape) {
  // What follows the run is asked before anything changes: the run that held it may be among those erased.
  const ColumnShape behind = At(last + 1);
  runs_.erase(runs_.lower_bound(first), runs_.upper_bound(last));
  runs_[first] = shape;
  runs_.emplace(last + 1, behind);
}

void Sheet::PutWidth(long first, long last, double width) {
  CheckedWidth(width);
  ColumnShape shape = columns.At(first);
  shape.hidden = width == 0;
  // A hidden column keeps its width, for the day when its user shows it again.
  if (!shape.hidden) shape.width = width;
  columns.Set(first, last, shape);
}

Area Sheet::UsedArea() const {
  Area used;
  bool any = false;
  for (const auto& block : cells.Blocks()) {
    for (const Cell& cell : block) {
      if (cell.kind() == CellKind::kEmpty) continue;
      const long column = cell.column();
      if (!any) used = {cell.row(), column, cell.row(), column};
      any = true;
      // Cells come in the order of their rows: only the columns have to be compared.
      used.bottom = cell.row();
      used.left = std::min(used.left, column);
      used.right = std::max(used.right, column);
    }
  }
  if (marked.Rows() > 0) any = TakeIntoUse(marked, any, used);
  // Of rows only the height counts: they reach to the last column.
  if (any && marked_rows.Rows() > 0) {
    any = TakeIntoUse({marked_rows.top, used.left, marked_rows.bottom, used.right}, any, used);
  }
  for (const auto& [corner, area] : merges.All()) any = TakeIntoUse(area, any, used);
  return used;
}

std::shared_ptr<Sheet> Book::AddSheet(std::size_t at) {
  auto sheet = std::make_shared<Sheet>();
  // From the count of sheets on, as programs name them; a sheet of the user's may have the name already.
  for (std::size_t number = sheets.size() + 1; sheet->name.IsEmpty(); ++number) {
    CString proposed;
    proposed.Format(_T("Sheet%d"), number);
    const auto taken = [&](const auto& other) {
      // Programs take "sheet1" and "Sheet1" for one name.
      return CompareWithoutCase(other->name.View(), proposed.View()) == 0;
    };
    if (std::none_of(sheets.begin(), sheets.end(), taken)) sheet->name = proposed;
  }
  sheets.insert(sheets.begin() + static_cast<std::ptrdiff_t>(at), sheet);
  return sheet;
}

void Book::Rename(Sheet& sheet, const CString& wanted) const {
  if (!IsSheetName(wanted)) {
    Fail(_T("“") + wanted + _T("”不能作为工作表名称：名称须为1至31个字符，且不能含有 \\ / ? * [ ] : 。"));
  }
  for (const auto& other : sheets) {
    if (other.get() != &sheet && CompareWithoutCase(other->name.View(), wanted.View()) == 0) {
      Fail(_T("工作表名称“") + wanted + _T("”已经存在。"));
    }
  }
  sheet.name = wanted;
}

bool IsSheetName(const CString& name) {
  const TextView text = name.View();
  if (text.empty() || text.size() > kMaxSheetName || HasLoneHalf(text)) return false;
  // At its ends an apostrophe would be read as the quotes that references put around names.
  if (text.front() == _T('\'') || text.back() == _T('\'')) return false;
  return std::none_of(text.begin(), text.end(), [](TCHAR c) {
    return c < _T(' ') || c >= 0xFFFE || TextView(_T("\\/?*[]:")).find(c) != TextView::npos;
  });
}

}  // namespace lorv::engine
