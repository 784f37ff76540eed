#pragma once

#include <array>

#include "framework/native/native_types.h"

// What the exchange asks of a spreadsheet program: each operation with its number in both programs.
namespace lorv {

// The two programs that are served.
enum class Program { kExcel, kEt };

enum class ObjectKind { kApplication, kAny, kWorkbooks, kWorkbook, kWorksheets, kWorksheet, kRange, kFont };

enum class Operation {
  kWorkbooks,
  kActiveSheet,
  kSelection,
  kDisplayAlerts,
  kVisible,
  kQuit,
  kApplication,
  kAddWorkbook,
  kOpenWorkbook,
  kWorksheets,
  kSaved,
  kCloseWorkbook,
  kSaveAs,
  kSheetCount,
  kSheet,
  kAddSheet,
  kSheetName,
  kCells,
  kUsedRange,
  kCount,
  kItem,
  kRange,
  kRow,
  kColumn,
  kRows,
  kColumns,
  kEntireColumn,
  kColumnWidth,
  kFont,
  kHorizontalAlignment,
  kNumberFormat,
  kValue,
  kMergeCells,
  kMergeArea,
  kFontSize,
};

struct OperationRow {
  Operation operation;
  ObjectKind on;
  const char* name;
  const char* forms;  // "get", "put", "call", or "get put"
  DISPID excel;
  DISPID et;
};

// In the order of Operation. Numbers repeat between objects: an operation is found by object and number.
inline constexpr std::array<OperationRow, 35> kOperations = {{
    {Operation::kWorkbooks, ObjectKind::kApplication, "Workbooks", "get", 0x23C, 0x111000},
    {Operation::kActiveSheet, ObjectKind::kApplication, "ActiveSheet", "get", 0x133, 0x111006},
    {Operation::kSelection, ObjectKind::kApplication, "Selection", "get", 0x93, 0x111009},
    {Operation::kDisplayAlerts, ObjectKind::kApplication, "DisplayAlerts", "put", 0x157, 0x11102C},
    {Operation::kVisible, ObjectKind::kApplication, "Visible", "put", 0x22E, 0x111003},
    {Operation::kQuit, ObjectKind::kApplication, "Quit", "call", 0x12E, 0x112000},
    {Operation::kApplication, ObjectKind::kAny, "Application", "get", 0x94, 0x3E8},
    {Operation::kAddWorkbook, ObjectKind::kWorkbooks, "Add", "call", 0xB5, 0x222000},
    {Operation::kOpenWorkbook, ObjectKind::kWorkbooks, "Open", "call", 0x2AA, 0x222002},
    {Operation::kWorksheets, ObjectKind::kWorkbook, "Worksheets", "get", 0x1E5, 0x31100B},
    {Operation::kSaved, ObjectKind::kWorkbook, "Saved", "put", 0x12A, 0x31100E},
    {Operation::kCloseWorkbook, ObjectKind::kWorkbook, "Close", "call", 0x115, 0x312000},
    {Operation::kSaveAs, ObjectKind::kWorkbook, "SaveAs", "call", 0x11C, 0x312001},
    {Operation::kSheetCount, ObjectKind::kWorksheets, "Count", "get", 0x76, 0x1821000},
    {Operation::kSheet, ObjectKind::kWorksheets, "Item", "get", 0xAA, 0x1821001},
    {Operation::kAddSheet, ObjectKind::kWorksheets, "Add", "call", 0xB5, 0x1822006},
    {Operation::kSheetName, ObjectKind::kWorksheet, "Name", "get put", 0x6E, 0x511002},
    {Operation::kCells, ObjectKind::kWorksheet, "Cells", "get", 0xEE, 0x511015},
    {Operation::kUsedRange, ObjectKind::kWorksheet, "UsedRange", "get", 0x19C, 0x511005},
    {Operation::kCount, ObjectKind::kRange, "Count", "get", 0x76, 0xC11002},
    {Operation::kItem, ObjectKind::kRange, "Item", "get", 0xAA, 0xC11024},
    {Operation::kRange, ObjectKind::kRange, "Range", "get", 0xC5, 0xC11032},
    {Operation::kRow, ObjectKind::kRange, "Row", "get", 0x101, 0xC11026},
    {Operation::kColumn, ObjectKind::kRange, "Column", "get", 0xF0, 0xC11025},
    {Operation::kRows, ObjectKind::kRange, "Rows", "get", 0x102, 0xC11023},
    {Operation::kColumns, ObjectKind::kRange, "Columns", "get", 0xF1, 0xC11022},
    {Operation::kEntireColumn, ObjectKind::kRange, "EntireColumn", "get", 0xF6, 0xC11020},
    {Operation::kColumnWidth, ObjectKind::kRange, "ColumnWidth", "get put", 0xF2, 0xC1100D},
    {Operation::kFont, ObjectKind::kRange, "Font", "get", 0x92, 0xC11010},
    {Operation::kHorizontalAlignment, ObjectKind::kRange, "HorizontalAlignment", "put", 0x88, 0xC11016},
    {Operation::kNumberFormat, ObjectKind::kRange, "NumberFormat", "get put", 0xC1, 0xC11012},
    {Operation::kValue, ObjectKind::kRange, "Value", "get put", 6, 0xC11006},
    {Operation::kMergeCells, ObjectKind::kRange, "MergeCells", "get put", 0xD0, 0xC1101E},
    {Operation::kMergeArea, ObjectKind::kRange, "MergeArea", "get", 0x569, 0xC11027},
    {Operation::kFontSize, ObjectKind::kFont, "Size", "put", 0x68, 0xD1100A},
}};

constexpr const OperationRow& RowOf(Operation operation) {
  return kOperations[static_cast<std::size_t>(operation)];
}

constexpr DISPID DispidOf(Program program, Operation operation) {
  const OperationRow& row = RowOf(operation);
  return program == Program::kExcel ? row.excel : row.et;
}

// The program's name among the system's program identifiers.
constexpr LPCTSTR ProgramId(Program program) {
  return program == Program::kExcel ? _T("Excel.Application") : _T("ET.Application");
}

// The interface by which a workbook of the program is recognised among running objects.
constexpr GUID WorkbookId(Program program) {
  return program == Program::kExcel
             ? GUID{0x000208DA, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}}
             : GUID{0x45541003, 0x5750, 0x5300, {0x4B, 0x49, 0x4E, 0x47, 0x53, 0x4F, 0x46, 0x54}};
}

// The operation behind a number, for an object that answers; null for a number that the object has not.
constexpr const OperationRow* FindOperation(Program program, ObjectKind on, DISPID dispid) {
  for (const OperationRow& row : kOperations) {
    const DISPID number = program == Program::kExcel ? row.excel : row.et;
    if (number == dispid && (row.on == on || row.on == ObjectKind::kAny)) return &row;
  }
  return nullptr;
}

}  // namespace lorv
