#include <algorithm>
#include <cmath>

#include "framework/values/variant_text.h"
#include "platform/ports/platform.h"
#include "spreadsheet/AdExcel2GridEx.h"
#include "spreadsheet/cells/exchange_limits.h"
#include "spreadsheet/exchange/exchange_messages.h"

// A table on its way into a sheet: every cell by calls of its own, in an order that documents rely on.

using lorv::AutomationFamily;
using lorv::AutoRef;

namespace {

bool TakesEffect(int alignment) {
  return alignment == lorv::kAlignLeft || alignment == lorv::kAlignCentre || alignment == lorv::kAlignRight;
}

// Widths come back with the noise of a conversion from another unit.
long WholeWidth(double width) {
  constexpr double kSixDecimals = 1e6;
  return static_cast<long>(std::trunc(std::round(width * kSixDecimals) / kSixDecimals));
}

// Widths are only ever grown: a column that the user of an existing workbook made wide stays so.
void GrowColumn(const AutomationFamily& family, const AutoRef& cell, long length) {
  constexpr long kMargin = 2;
  const long width = WholeWidth(family.ColumnWidth(cell));
  const long wanted = length + kMargin;
  if (wanted <= width || width >= lorv::kMaxTextWidth) return;
  family.PutColumnWidth(cell, std::max(width, std::min(wanted, lorv::kMaxTextWidth)));
}

}  // namespace

bool CAdExcel2GridEx::ToExcel() {
  return ToExcel(CString(), false, true, 1, 1, false, CString(), 0, 0);
}

bool CAdExcel2GridEx::ToExcel(const CString& file, bool save, bool show, int alignment, int sheet_index,
                              bool open_existing, const CString& sheet_name, int row_offset,
                              int column_offset) {
  SetHorizontaliAlign(alignment);
  try {
    // Callers are commands of a menu, which nothing raised here may leave.
    return Export(file, save, show, sheet_index, open_existing, sheet_name, row_offset, column_offset);
  } catch (CException* failure) {
    lorv::ReportFailure(*failure);
    failure->Delete();
  } catch (...) {
    lorv::ShowUserMessage(lorv::kGeneralException, lorv::kCatchAll, lorv::kForeground);
  }
  return false;
}

bool CAdExcel2GridEx::Export(const CString& file, bool save, bool show, int sheet_index, bool open_existing,
                             const CString& sheet_name, int row_offset, int column_offset) {
  AutoRef workbook;
  const lorv::ConnectResult connected = lorv::ConnectSpreadsheet(workbook, true, file, open_existing);
  if (connected == lorv::CONNECT_CANCELLED) return false;
  if (connected == lorv::CONNECT_NONE) {
    lorv::ShowUserMessage(lorv::kNoProgram);
    return false;
  }
  const AutomationFamily family(lorv::ProgramOf(connected));
  const AutoRef application = family.Application(workbook);
  WriteWorkbook(family, workbook, file, save, sheet_index, sheet_name, row_offset, column_offset);
  // A workbook that is saved nowhere is shown in any case: else it would be lost, and its
  // program would run on unseen.
  if (!show && save && !file.IsEmpty()) {
    family.Quit(application);
  } else {
    family.PutVisible(application, true);
  }
  return true;
}

int CAdExcel2GridEx::SheetToWrite(const AutomationFamily& family, const AutoRef& worksheets,
                                  const CString& sheet_name, int sheet_index) const {
  const long count = family.SheetCount(worksheets);
  bool matched = false;
  // To the end: of equal names the last one counts.
  for (int i = 1; i <= count; ++i) {
    if (family.SheetName(family.Sheet(worksheets, i)) != sheet_name) continue;
    sheet_index = i;
    matched = true;
  }
  if (matched || sheet_index <= count) return sheet_index;
  family.AddSheetAfter(worksheets, family.Sheet(worksheets, static_cast<int>(count)));
  return static_cast<int>(count) + 1;
}

bool CAdExcel2GridEx::WriteWorkbook(const AutomationFamily& family, const AutoRef& workbook,
                                    const CString& file, bool save, int sheet_index,
                                    const CString& sheet_name, int row_offset, int column_offset) {
  const AutoRef worksheets = family.Worksheets(workbook);
  const int index = SheetToWrite(family, worksheets, sheet_name, sheet_index);
  const AutoRef worksheet = family.Sheet(worksheets, index);
  if (!sheet_name.IsEmpty()) family.PutSheetName(worksheet, sheet_name);
  WriteCells(family, worksheet, row_offset, column_offset);
  // Hidden last: a text that widens a hidden column would show it again.
  WriteMergedRanges(family, worksheet);
  HideColumns(family, worksheet);
  if (save && !file.IsEmpty()) SaveAndClose(family, workbook, file);
  return true;
}

void CAdExcel2GridEx::SaveAndClose(const AutomationFamily& family, const AutoRef& workbook,
                                   const CString& file) {
  const AutoRef application = family.Application(workbook);
  // The user has chosen the file already: the program must neither ask whether to replace it nor, at
  // closing, whether to save.
  family.PutDisplayAlerts(application, false);
  family.SaveAs(workbook, file);
  family.PutSaved(workbook, true);
  family.CloseWorkbook(workbook, file);
}

// `row` and `column` count from the offsets; with titles the first row is theirs.
CString CAdExcel2GridEx::TextToWrite(int row, int column, bool title_row) const {
  const int data_row = row - (title_row ? 1 : 0);
  return VariantToText(Table().GetValue(data_row, column));
}

bool CAdExcel2GridEx::WriteCells(const AutomationFamily& family, const AutoRef& worksheet, int row_offset,
                                 int column_offset) {
  const bool titles = !m_colTitles.IsEmpty();
  const __int64 row_end = Table().GetRowCount() + row_offset + (titles ? 1 : 0);
  const __int64 column_end = static_cast<__int64>(Table().GetColCount()) + column_offset;
  const AutoRef cells = family.Cells(worksheet);
  // Each cell's font costs two more calls to another process.
  const bool set_font_size = row_end * column_end <= lorv::kMaxFontCells;
  for (__int64 row = row_offset; row < row_end; ++row) {
    for (__int64 column = column_offset; column < column_end + m_nColAdjust; ++column) {
      const int at = static_cast<int>(column - column_offset);
      const bool is_title = titles && row == row_offset;
      // There may be fewer titles than columns; cells without one are not touched.
      if (is_title && at >= m_colTitles.GetSize()) continue;
      WriteCell(
          family,
          is_title ? m_colTitles.GetAt(at) : TextToWrite(static_cast<int>(row - row_offset), at, titles),
          static_cast<int>(row + 1), static_cast<int>(column + 1), cells, set_font_size);
    }
  }
  return true;
}

bool CAdExcel2GridEx::WriteCell(const AutomationFamily& family, const CString& text, int row, int column,
                                const AutoRef& cells, bool set_font_size) {
  const AutoRef cell = family.Item(cells, row, column);
  COleVariant value;
  const CString format = Str2ExcelValueStyle(text, value);
  // The format before the value: a program interprets what is put by the format that
  // the cell has at that time.
  if (!text.IsEmpty()) family.PutNumberFormat(cell, format);
  family.PutValue(cell, value);
  if (set_font_size) family.PutFontSize(family.Font(cell), m_nFontSize);
  if (value.vt == VT_BSTR) GrowColumn(family, cell, text.GetLength());
  if (TakesEffect(m_nHorizontalAlign)) family.PutHorizontalAlignment(cell, m_nHorizontalAlign);
  return true;
}

// The first cell keeps its value.
void CAdExcel2GridEx::EmptyBehindFirst(const AutomationFamily& family, const AutoRef& cells,
                                       const CBCGPGridRange& range) {
  for (int row = range.m_nTop; row <= range.m_nBottom; ++row) {
    const int first = row == range.m_nTop ? range.m_nLeft + 1 : range.m_nLeft;
    for (int column = first; column <= range.m_nRight; ++column) {
      WriteCell(family, CString(), row + 1, column + 1, cells, false);
    }
  }
}

bool CAdExcel2GridEx::WriteMergedRanges(const AutomationFamily& family, const AutoRef& worksheet) {
  if (m_ranges.IsEmpty()) return true;
  const AutoRef cells = family.Cells(worksheet);
  for (POSITION at = m_ranges.GetHeadPosition(); at != nullptr;) {
    const CBCGPGridRange range = m_ranges.GetNext(at);
    // Emptied before they are merged: a program asks its user before it drops values.
    EmptyBehindFirst(family, cells, range);
    const AutoRef area = family.Range(cells, RowCol2XlsCell(range.m_nTop, range.m_nLeft),
                                      RowCol2XlsCell(range.m_nBottom, range.m_nRight));
    family.PutMerged(area, true);
  }
  return true;
}

bool CAdExcel2GridEx::HideColumns(const AutomationFamily& family, const AutoRef& worksheet) {
  if (m_colInvisible.empty()) return true;
  const AutoRef cells = family.Cells(worksheet);
  for (const int column : m_colInvisible) {
    // A width of 0 hides a column in both programs; there is no operation of its own for it.
    const AutoRef cell = family.Item(cells, 1, column + 1);
    family.PutColumnWidth(family.EntireColumn(cell), 0);
  }
  return true;
}
