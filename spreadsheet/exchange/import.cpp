#include "module/progress.h"
#include "platform/ports/platform.h"
#include "spreadsheet/AdExcel2GridEx.h"
#include "spreadsheet/cells/exchange_limits.h"
#include "spreadsheet/connection/spreadsheet_system.h"
#include "spreadsheet/exchange/exchange_messages.h"
#include "spreadsheet/exchange/shown_table.h"

// A sheet on its way into a table: every cell by calls of its own, as the text that its user sees.

using lorv::AutomationFamily;
using lorv::AutoRef;

namespace {

constexpr DWORD kHideReadOnlyOverwritePrompt = 6;
// One marked row is the cell or title that the user happened to click; then the whole sheet is meant.
constexpr long kFewestSelectedRows = 2;

void ReportOleFailure(const COleException& failure) {
  CString text;
  text.Format(_T("COleException. SCODE: %08lx."), failure.m_sc);
  lorv::ShowUserMessage(text, _T("COleException"), lorv::kForeground);
}

void ReportDispatchFailure(const COleDispatchException& failure) {
  CString text;
  text.Format(_T("COleDispatchException. SCODE: %08lx, Description: \"%s\"."), failure.m_scError,
              failure.m_strDescription);
  lorv::ShowUserMessage(text, _T("COleDispatchException"), lorv::kForeground);
}

}  // namespace

bool CAdExcel2GridEx::FromExcel() {
  try {
    return Import();
  } catch (COleException* failure) {
    // Automation's own failures first, as their codes help who is asked for help.
    ReportOleFailure(*failure);
    failure->Delete();
  } catch (COleDispatchException* failure) {
    ReportDispatchFailure(*failure);
    failure->Delete();
  } catch (CException* failure) {
    failure->Delete();
    lorv::ShowUserMessage(lorv::kGeneralException, lorv::kCatchAll, lorv::kForeground);
  } catch (...) {
    lorv::ShowUserMessage(lorv::kGeneralException, lorv::kCatchAll, lorv::kForeground);
  }
  return false;
}

bool CAdExcel2GridEx::Import() {
  AutoRef workbook;
  // No program is started: what is read is the sheet that the user has in front of him.
  const lorv::ConnectResult connected = lorv::ConnectSpreadsheet(workbook, false, CString(), false);
  if (connected == lorv::CONNECT_CANCELLED) return false;
  if (connected == lorv::CONNECT_NONE) {
    lorv::ShowUserMessage(lorv::kNoProgram);
    return false;
  }
  ReadActiveSheet(AutomationFamily(lorv::ProgramOf(connected)), workbook);
  return true;
}

bool CAdExcel2GridEx::ReadActiveSheet(const AutomationFamily& family, const AutoRef& workbook) {
  const AutoRef application = family.Application(workbook);
  const AutoRef worksheet = family.ActiveSheet(application);
  if (worksheet) {
    ReadSheet(family, worksheet, false);
  } else {
    lorv::ShowUserMessage(_T("没有活动的表单，请打开一个Excel文件!"));
  }
  return true;
}

int CAdExcel2GridEx::ReadSheet(const AutomationFamily& family, const AutoRef& worksheet,
                               bool use_used_range) {
  if (!worksheet) {
    lorv::ShowUserMessage(_T("Excel数据没有准备好!"));
    return 0;
  }
  AutoRef range;
  if (use_used_range) {
    range = family.UsedRange(worksheet);
  } else {
    range = family.Selection(family.Application(worksheet));
    // Nothing marked is less than two rows as well.
    if (!range || family.Count(family.Rows(range)) < kFewestSelectedRows) range = family.UsedRange(worksheet);
  }
  const long rows = family.Count(family.Rows(range));
  long columns = family.Count(family.Columns(range));
  if (columns > lorv::kMaxSelectedColumns) {
    // The rows of the selection stay.
    range = family.UsedRange(worksheet);
    columns = family.Count(family.Columns(range));
  }
  const long first_row = family.Row(range);
  const long first_column = family.Column(range);
  if (rows < 1 || columns < 1) return 0;
  // Each cell costs several calls to another process: a sheet marked as a whole would keep
  // the user waiting for hours.
  if (rows > lorv::kMaxReadRows || columns > lorv::kMaxReadColumns) {
    CString text;
    text.Format(_T("您选择的Excel区域太大(行%dX列%d),请重新选择(注意不能全选要框选)!"), rows, columns);
    lorv::ShowUserMessage(text);
    return 0;
  }
  // Only now, so that a refused area leaves the table that was read before.
  m_array.ReDim(rows, static_cast<int>(columns));
  const lorv::SheetArea area = {first_row, first_column, rows, columns};
  if (ReadShown(worksheet, area)) return 1;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      ReadCell(family, worksheet, row, column, static_cast<int>(first_row) + row,
               static_cast<int>(first_column) + column);
    }
  }
  return 1;
}

// Half a microsecond a cell is saved where the sheet is one of this process. What stands behind the sheet's
// cells is the same by both ways.
bool CAdExcel2GridEx::ReadShown(const AutoRef& worksheet, const lorv::SheetArea& area) {
  const auto* const sheet = dynamic_cast<const lorv::DirectSheet*>(worksheet.get());
  if (sheet == nullptr) return false;
  lorv::ShownTable table(*sheet, m_array, [&](int row, const lorv::SheetArea& merged) {
    AddMergedArea(merged, row, static_cast<int>(area.row) + row);
  });
  return sheet->Visit(area, table);
}

// Rows of the range are those of the table, columns those of the sheet: callers know it so.
void CAdExcel2GridEx::AddMergedArea(const lorv::SheetArea& area, int table_row, int sheet_row) {
  const long first = area.row - sheet_row + table_row;
  // Called for each cell of an area, so that an area is listed as often as it has cells.
  AddRange(first, area.column, first + area.rows - 1, area.column + area.columns - 1);
}

void CAdExcel2GridEx::NoteMergedArea(const AutomationFamily& family, const AutoRef& cell, int table_row,
                                     int sheet_row) {
  const AutoRef area = family.MergeArea(cell);
  lorv::SheetArea merged;
  merged.row = family.Row(area);
  merged.column = family.Column(area);
  merged.columns = family.Count(family.Columns(area));
  merged.rows = family.Count(family.Rows(area));
  AddMergedArea(merged, table_row, sheet_row);
}

int CAdExcel2GridEx::ReadCell(const AutomationFamily& family, const AutoRef& worksheet, int table_row,
                              int table_column, int sheet_row, int sheet_column) {
  const AutoRef cell = family.Item(family.Cells(worksheet), sheet_row, sheet_column);
  if (family.IsMerged(cell)) NoteMergedArea(family, cell, table_row, sheet_row);
  const COleVariant value(family.Value(cell));
  CString format = family.NumberFormat(cell);
  const CString text = ExcelCellValue2Str(value, format);
  if (table_row == m_array.GetRowCount()) m_array.AppendRow(m_array.GetRowCount(), false);
  m_array.SetValue(table_row, table_column, _variant_t(text));
  return 1;
}

int CAdExcel2GridEx::LoadExcel(std::vector<CXArrayDBToArray>& tables, CStringArray& names, int sheet_index) {
  const lorv::FileQuestion question = {_T("*.xls, *.xlsx, *.et"), CString(), kHideReadOnlyOverwritePrompt,
                                       _T("Excel Files (*.xls, *.xlsx, *.et)|*.xls; *.xlsx; *.et||")};
  const auto chosen = lorv::SpreadsheetInForce().AskForFile(question);
  return chosen ? LoadExcel2(*chosen, tables, names, sheet_index) : 0;
}

int CAdExcel2GridEx::LoadExcel2(const CString& file, std::vector<CXArrayDBToArray>& tables,
                                CStringArray& names, int sheet_index) {
  int result = 0;
  try {
    AutoRef workbook;
    const lorv::ConnectResult connected = lorv::ConnectSpreadsheet(workbook, true, CString(), false);
    if (connected == lorv::CONNECT_CANCELLED) return 0;
    if (connected == lorv::CONNECT_NONE) {
      lorv::ShowUserMessage(lorv::kNoProgram);
      return 0;
    }
    const AutomationFamily family(lorv::ProgramOf(connected));
    const AutoRef application = family.Application(workbook);
    result = ReadWorkbookFile(family, workbook, file, tables, names, sheet_index);
    // The program was started for this file alone; after an exception it is left running.
    family.Quit(application);
  } catch (CException* failure) {
    lorv::ReportFailure(*failure);
    failure->Delete();
  }
  return result;
}

int CAdExcel2GridEx::ReadWorkbookFile(const AutomationFamily& family, const AutoRef& workbook,
                                      const CString& file, std::vector<CXArrayDBToArray>& tables,
                                      CStringArray& names, int sheet_index) {
  const AutoRef application = family.Application(workbook);
  const AutoRef workbooks = family.Workbooks(application);
  if (!workbooks) return 0;
  // As a template: the file itself is neither locked nor changed.
  const AutoRef loaded = family.AddWorkbook(workbooks, lorv::AutoValue(_variant_t(file)));
  const AutoRef worksheets = family.Worksheets(loaded);
  const long count = family.SheetCount(worksheets);
  // With one sheet there is nothing to choose, whatever the caller's index.
  if (count == 1) sheet_index = 1;
  if (sheet_index == 0) {
    ReadAllSheets(family, worksheets, count, tables, names);
    return 1;
  }
  const lorv::WaitScope wait(lorv::SpreadsheetInForce());
  const AutoRef worksheet = family.Sheet(worksheets, sheet_index);
  if (!worksheet) {
    CString text;
    text.Format(_T("请重新设置sheet索引值(1~%d)"), count);
    lorv::ShowUserMessage(text);
    family.Quit(application);
    return 0;
  }
  TakeSheet(family, worksheet, tables, names);
  return 1;
}

void CAdExcel2GridEx::TakeSheet(const AutomationFamily& family, const AutoRef& worksheet,
                                std::vector<CXArrayDBToArray>& tables, CStringArray& names) {
  // A sheet that is refused gives the table of the one before it.
  ReadSheet(family, worksheet, true);
  const CString name = family.SheetName(worksheet);
  tables.push_back(m_array);
  names.Add(name);
}

void CAdExcel2GridEx::ReadAllSheets(const AutomationFamily& family, const AutoRef& worksheets, long count,
                                    std::vector<CXArrayDBToArray>& tables, CStringArray& names) {
  CProgressCom progress(static_cast<int>(count));
  progress.StartProgress(_T("正在读取Excel"));
  for (int i = 1; i <= count; ++i) {
    if (progress.QueryCancel(_T("是否取消导入？"))) break;
    const AutoRef worksheet = family.Sheet(worksheets, i);
    if (!worksheet) continue;
    CString line;
    line.Format(_T("读取第%d个Sheet(%s)..."), i, family.SheetName(worksheet));
    progress.StepProgress(i - 1, line);
    TakeSheet(family, worksheet, tables, names);
  }
  progress.EndProgress();
}
