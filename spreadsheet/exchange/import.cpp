#include <utility>

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

namespace lorv {

// A sheet of this process whose table went to a caller; its program has quit, so that nothing changes it.
struct UnreadSheet {
  AutoRef worksheet;
  SheetArea area;
};

}  // namespace lorv

namespace {

constexpr DWORD kHideReadOnlyOverwritePrompt = 6;
// One marked row is the cell or title that the user happened to click; then the whole sheet is meant.
constexpr long kFewestSelectedRows = 2;

// Without the room for it no cell of a sheet may pass for read.
void MakeRoom(CXArrayDBToArray& table, const lorv::SheetArea& area) {
  if (table.ReDim(area.rows, static_cast<int>(area.columns)) == 0) AfxThrowMemoryException();
}

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

std::optional<lorv::SheetArea> CAdExcel2GridEx::AreaToRead(const AutomationFamily& family,
                                                           const AutoRef& worksheet, bool use_used_range,
                                                           AutoRef& range) const {
  if (!worksheet) {
    lorv::ShowUserMessage(_T("Excel数据没有准备好!"));
    return std::nullopt;
  }
  if (use_used_range) {
    range = family.UsedRange(worksheet);
  } else {
    range = family.Selection(family.Application(worksheet));
    // Nothing marked is less than two rows as well.
    if (!range || family.Count(family.Rows(range)) < kFewestSelectedRows) range = family.UsedRange(worksheet);
  }
  lorv::SheetArea area;
  area.rows = family.Count(family.Rows(range));
  area.columns = family.Count(family.Columns(range));
  if (area.columns > lorv::kMaxSelectedColumns) {
    // The rows of the selection stay.
    range = family.UsedRange(worksheet);
    area.columns = family.Count(family.Columns(range));
  }
  area.row = family.Row(range);
  area.column = family.Column(range);
  if (area.rows < 1 || area.columns < 1) return std::nullopt;
  // Each cell costs several calls to another process: a sheet marked as a whole would keep
  // the user waiting for hours.
  if (area.rows > lorv::kMaxReadRows || area.columns > lorv::kMaxReadColumns) {
    CString text;
    text.Format(_T("您选择的Excel区域太大(行%dX列%d),请重新选择(注意不能全选要框选)!"), area.rows,
                area.columns);
    lorv::ShowUserMessage(text);
    return std::nullopt;
  }
  return area;
}

int CAdExcel2GridEx::ReadSheet(const AutomationFamily& family, const AutoRef& worksheet,
                               bool use_used_range) {
  std::optional<lorv::SheetArea> shown;
  return ReadSheetShown(family, worksheet, use_used_range, shown);
}

int CAdExcel2GridEx::ReadSheetShown(const AutomationFamily& family, const AutoRef& worksheet,
                                    bool use_used_range, std::optional<lorv::SheetArea>& shown) {
  // Given back behind its cells: the order of releases is part of what programs see.
  AutoRef range;
  const auto area = AreaToRead(family, worksheet, use_used_range, range);
  // An area that is refused leaves the table that was read before.
  if (!area) return 0;
  if (ReadArea(family, worksheet, *area)) shown = area;
  return 1;
}

bool CAdExcel2GridEx::ReadArea(const AutomationFamily& family, const AutoRef& worksheet,
                               const lorv::SheetArea& area) {
  m_unread.reset();
  MakeRoom(m_array, area);
  if (ReadShown(worksheet, area)) return true;
  for (int row = 0; row < area.rows; ++row) {
    for (int column = 0; column < area.columns; ++column) {
      ReadCell(family, worksheet, row, column, static_cast<int>(area.row) + row,
               static_cast<int>(area.column) + column);
    }
  }
  return false;
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

// What a sheet of this process holds need not be kept twice, in the caller's table and in this object's:
// hardly anybody asks for the latter, and copying a million texts takes as long as making them.
CXArrayDBToArray CAdExcel2GridEx::GiveAway(const AutoRef& worksheet, const lorv::SheetArea& area) {
  if (m_is_handed_out) return m_array;
  m_unread = std::make_shared<lorv::UnreadSheet>(lorv::UnreadSheet{worksheet, area});
  return std::exchange(m_array, CXArrayDBToArray());
}

void CAdExcel2GridEx::ReadAgain() const {
  const auto& sheet = dynamic_cast<const lorv::DirectSheet&>(*m_unread->worksheet);
  CXArrayDBToArray table;
  MakeRoom(table, m_unread->area);
  // Merged areas were listed when the sheet was read.
  lorv::ShownTable visitor(sheet, table, [](int /*row*/, const lorv::SheetArea& /*merged*/) {});
  sheet.Visit(m_unread->area, visitor);
  m_array = std::move(table);
  m_unread.reset();
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
  CXArrayDBToArray& table = Table();
  if (table_row == table.GetRowCount()) table.AppendRow(table.GetRowCount(), false);
  table.SetValue(table_row, table_column, _variant_t(text));
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
  bool has_quit = false;
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
    has_quit = true;
  } catch (CException* failure) {
    lorv::ReportFailure(*failure);
    failure->Delete();
  } catch (...) {
    Table();
    throw;
  }
  // In a program that was left running somebody may change the sheet that the table is to be made from.
  if (!has_quit) Table();
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
  std::optional<lorv::SheetArea> shown;
  ReadSheetShown(family, worksheet, true, shown);
  const CString name = family.SheetName(worksheet);
  // A sheet that is refused gives the table of the one before it.
  tables.push_back(shown ? GiveAway(worksheet, *shown) : Table());
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
