#include "spreadsheet/exchange/shown_table.h"

#include <utility>

// A sheet of this process on its way into a table. A cell costs its text and nothing else: no object, no
// arguments, and its number format is looked through once for all cells that have it.

namespace lorv {

void ShownTable::Cell(int row, int column, const SheetCell& cell) {
  const TextView text = TextOf(cell);
  _variant_t value;
  // Straight into the value that the table takes over: no text in between that would have to be given back.
  value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (value.bstrVal == nullptr) _com_raise_error(E_OUTOFMEMORY);
  value.vt = VT_BSTR;
  table_.SetValue(row, column, std::move(value));
}

TextView ShownTable::TextOf(const SheetCell& cell) {
  made_.clear();
  switch (cell.kind) {
    case VT_BSTR:
      return cell.text;
    case VT_R8:
      FormatOf(cell.format).AppendNumber(cell.number, made_);
      break;
    case VT_DATE:
      CellFormat::AppendDate(cell.number, made_);
      break;
    default:
      // As SheetCellText has it: a truth value or an error has no text.
      break;
  }
  return made_;
}

const CellFormat& ShownTable::FormatOf(std::uint32_t format) {
  if (format >= formats_.size()) formats_.resize(format + std::size_t{1});
  std::optional<CellFormat>& known = formats_[format];
  // Up to its first zero unit, as a text that crosses automation is read.
  if (!known) known.emplace(TextView(sheet_.FormatText(format).GetString()));
  return *known;
}

}  // namespace lorv
