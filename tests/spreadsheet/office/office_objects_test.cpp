#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "framework/objects/exceptions.h"
#include "framework/values/ole_date.h"
#include "spreadsheet/automation/automation_family.h"
#include "spreadsheet/servers/native_spreadsheet.h"
#include "spreadsheet/servers/office/office_failure.h"
#include "spreadsheet/servers/office/office_system.h"
#include "tests/spreadsheet/office/memory_office_desk.h"

// The objects of an office over one in memory: what they make of the office's answers, and what becomes of
// each failure.

namespace lorv {
namespace {

using test::MemoryBook;
using test::MemoryOffice;
using test::OpenExchange;
using test::RowsOf;
using test::TextTable;
using test::Utf8;
using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

bool IsRefused(const std::function<void()>& body) {
  try {
    body();
  } catch (CException* failure) {
    failure->Delete();
    return true;
  }
  return false;
}

using OfficeObjects = test::MemoryOfficeDesk;

TEST_F(OfficeObjects, ATableArrivesAsTheGridShowsIt) {
  exchange.SetArray(TextTable({{"墙", "12.50", "007"}, {"", "-3", "=1+1"}}));
  exchange.AddRange(0, 0, 1, 0);
  exchange.SetHorizontaliAlign(-4108);
  EXPECT_TRUE(exchange.ToExcel(CString(), false, true, -4108, 1, false, _T("清单"), 0, 0));
  auto& cells = Sheet().cells;
  EXPECT_EQ(Sheet().name, _T("清单"));
  EXPECT_EQ((cells[{0, 0}].cell.text), _T("墙"));
  EXPECT_EQ((cells[{0, 0}].format.text), _T("@"));
  EXPECT_EQ((cells[{0, 1}].cell.number), 12.5);
  EXPECT_EQ((cells[{0, 1}].format.text), _T("0.00_ "));
  EXPECT_EQ((cells[{0, 2}].cell.kind), office::CellKind::kText);
  EXPECT_EQ((cells[{1, 0}].cell.kind), office::CellKind::kEmpty);
  EXPECT_EQ((cells[{1, 2}].cell.text), _T("=1+1"));
  EXPECT_EQ(Sheet().merges, (std::vector<office::Area>{{0, 0, 1, 0}}));
  EXPECT_EQ(Sheet().font_size, 10);
  EXPECT_EQ(Sheet().justify, 2);
  // Shown by a file that the desktop opens, and open for an import.
  ASSERT_EQ(machine.shell.started.size(), 1U);
  EXPECT_EQ(log.saved, Texts{"Calc MS Excel 2007 XML"});
  OpenExchange back;
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray()), (Rows{{"墙", "12.50", "007"}, {"", "-3", "=1+1"}}));
  system.EndAll();
  EXPECT_EQ(log.offices, 0);
}

TEST_F(OfficeObjects, EachExchangeHasAnOfficeThatEndsWithIt) {
  EXPECT_EQ(Load(0), 1);
  EXPECT_EQ(log.offices, 0);
  exchange.SetArray(TextTable({{"a"}}));
  EXPECT_TRUE(exchange.ToExcel(PathOf("out.xls"), true, false, 1, 1, false, CString(), 0, 0));
  EXPECT_EQ(log.offices, 0);
  EXPECT_EQ(test::ReadBytes(folder.Path() / "out.xls"), "MS Excel 97");
  // Saved and shown: the office has no workbook that could be read back.
  EXPECT_TRUE(exchange.ToExcel(PathOf("out.ods"), true, true, 1, 1, false, CString(), 0, 0));
  EXPECT_EQ(log.offices, 0);
  EXPECT_EQ(Messages(), Texts{});
}

TEST_F(OfficeObjects, TheLastOneShownGoesOnRunning) {
  for (const char* text : {"one", "two"}) {
    exchange.SetArray(TextTable({{text}, {"x"}}));
    EXPECT_TRUE(exchange.ToExcel());
    EXPECT_EQ(log.offices, 1);
  }
  OpenExchange back;
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray())[0][0], "two");
}

TEST_F(OfficeObjects, MergedAreasAreUsed) {
  auto& sheet = *file->sheets[0];
  sheet.cells[{2, 1}] = {{office::CellKind::kText, 0, _T("x")}, {}};
  sheet.merges = {{3, 1, 4, 2}, {5, 0, 5, 200}};
  EXPECT_EQ(Load(0), 1);
  // The one that no table has room for is left out.
  EXPECT_EQ(RowsOf(tables.at(0)),
            (Rows{{"", "", ""}, {"", "", ""}, {"", "x", ""}, {"", "", ""}, {"", "", ""}}));
  // Without a value they are all there is.
  sheet.cells.clear();
  sheet.merges = {{3, 1, 4, 1}};
  EXPECT_EQ(Load(0), 1);
  EXPECT_EQ(RowsOf(tables.at(1)), (Rows{{""}, {""}}));
}

TEST_F(OfficeObjects, ValuesOfAllKindsBecomeTexts) {
  auto& cells = file->sheets[0]->cells;
  cells[{0, 0}] = {{office::CellKind::kNumber, 45358.5, {}}, {_T("YYYY-MM-DD"), true}};
  cells[{0, 1}] = {{office::CellKind::kNumber, 0.5, {}}, {_T("H:MM:SS"), true}};
  cells[{0, 2}] = {{office::CellKind::kNumber, 1, {}}, {_T("BOOLEAN"), false}};
  cells[{0, 3}] = {{office::CellKind::kError, 0, {}}, {_T("General"), false}};
  cells[{0, 4}] = {{office::CellKind::kNumber, 12.34, {}},
                   {_T("[$$-409]#,##0.00;[RED]-[$$-409]#,##0.00"), false}};
  cells[{0, 5}] = {{office::CellKind::kNumber, 3, {}}, {_T("0.00"), false}};
  EXPECT_EQ(Load(0), 1);
  // Money keeps its fraction, as in the engine.
  EXPECT_EQ(RowsOf(tables.at(0)), (Rows{{"2024-3-7", "12:0:0", "", "", "$12.34", "3.00"}}));
}

TEST_F(OfficeObjects, DatesCountFromTheWorkbooksFirstDay) {
  file->from_1904 = true;
  file->sheets[0]->cells[{0, 0}] = {{office::CellKind::kNumber, 42735, {}}, {_T("YYYY-MM-DD"), true}};
  EXPECT_EQ(Load(0), 1);
  EXPECT_EQ(RowsOf(tables.at(0)), (Rows{{"2021-1-1"}}));
}

TEST_F(OfficeObjects, ValuesOfOtherTypesArePut) {
  const AutoRef sheet = NewSheet();
  const AutoRef cells = family.Cells(sheet);
  family.PutValue(family.Item(cells, 1, 1), _variant_t(true));
  family.PutValue(family.Item(cells, 1, 2), _variant_t(45358.0, VT_DATE));
  family.PutValue(family.Item(cells, 1, 3), _variant_t(7L));
  EXPECT_EQ(family.Value(family.Item(cells, 1, 1)).vt, VT_BOOL);
  EXPECT_EQ(family.Value(family.Item(cells, 1, 2)).vt, VT_DATE);
  EXPECT_EQ(family.Value(family.Item(cells, 1, 3)).dblVal, 7.0);
  EXPECT_TRUE(IsRefused([&] { family.PutValue(family.Item(cells, 1, 3), _variant_t(HUGE_VAL)); }));
  const CString longer(_T('x'), 32768);
  EXPECT_TRUE(IsRefused([&] { family.PutValue(family.Item(cells, 1, 3), _variant_t(longer)); }));
}

TEST_F(OfficeObjects, WhatNoFileKeepsIsRefused) {
  const auto save = [&](const CString& text, const char* name) {
    CXArrayDBToArray table;
    table.ReDim(1, 1);
    table.SetValue(0, 0, _variant_t(text));
    exchange.SetArray(table);
    machine.dialogs.messages.clear();
    return exchange.ToExcel(PathOf(name), true, false, 1, 1, false, CString(), 0, 0);
  };
  EXPECT_FALSE(save(CString(TCHAR{0xD800}), "a.xlsx"));
  EXPECT_EQ(Messages(), Texts{"文字含有不完整的字符（单个代理项），无法写入单元格。"});
  EXPECT_TRUE(save(_T("\x01"), "a.xlsx"));
  EXPECT_FALSE(save(_T("\x01"), "a.ods"));
  EXPECT_EQ(Messages(), Texts{"文字含有 .ods 文件无法保存的控制字符。"});
  EXPECT_TRUE(save(_T("a\r\nb"), "a.ods"));
  EXPECT_EQ(Messages(), Texts{});
}

TEST_F(OfficeObjects, RangesAreAskedAsThePrograms) {
  const AutoRef sheet = NewSheet();
  const AutoRef cells = family.Cells(sheet);
  const AutoRef range = family.Range(cells, _T("B2"), _T("C4"));
  family.PutMerged(range, true);
  EXPECT_TRUE(family.IsMerged(family.Item(cells, 3, 3)));
  EXPECT_FALSE(family.IsMerged(family.Item(cells, 1, 1)));
  // Merged in part: neither yes nor no.
  EXPECT_FALSE(family.IsMerged(family.Range(cells, _T("B2"), _T("D4"))));
  const AutoRef area = family.MergeArea(family.Item(cells, 3, 3));
  EXPECT_EQ(family.Row(area), 2);
  EXPECT_EQ(family.Column(area), 2);
  EXPECT_EQ(family.Count(family.Rows(area)), 3);
  EXPECT_EQ(family.Count(family.Columns(area)), 2);
  EXPECT_EQ(family.Count(area), 6);
  EXPECT_TRUE(IsRefused([&] { family.Item(cells, 0, 1); }));
  EXPECT_TRUE(IsRefused([&] { family.Range(cells, _T("?"), _T("A1")); }));
  EXPECT_TRUE(IsRefused([&] { sheet->Invoke(12345, Form::kGet, {}); }));
}

TEST_F(OfficeObjects, AWidthOfNoneHidesAndComesBack) {
  const AutoRef column = family.EntireColumn(family.Item(family.Cells(NewSheet()), 1, 2));
  family.PutColumnWidth(column, 20);
  EXPECT_EQ(family.ColumnWidth(column), 20);
  family.PutColumnWidth(column, 0);
  EXPECT_EQ(family.ColumnWidth(column), 0);
  EXPECT_TRUE(IsRefused([&] { family.PutColumnWidth(column, 256); }));
  EXPECT_TRUE(IsRefused([&] { family.PutFontSize(family.Font(column), 0); }));
}

TEST_F(OfficeObjects, SheetsAreAddedAndNamed) {
  const AutoRef sheet = NewSheet();
  const AutoRef sheets = family.Worksheets(workbook);
  EXPECT_EQ(Utf8(family.SheetName(family.AddSheetAfter(sheets, sheet))), "Sheet2");
  EXPECT_EQ(family.SheetCount(sheets), 2);
  // A name that the office passes over, and one that it takes and files cannot hold.
  EXPECT_TRUE(IsRefused([&] { family.PutSheetName(sheet, _T("taken")); }));
  EXPECT_TRUE(IsRefused([&] { family.PutSheetName(sheet, CString(_T('x'), 32)); }));
  EXPECT_TRUE(IsRefused([&] { family.Sheet(sheets, 3); }));
  EXPECT_EQ(Utf8(family.SheetName(sheet)), "Sheet1");
}

TEST_F(OfficeObjects, ASheetThatTheFormatCannotHoldIsRefused) {
  NewSheet();
  Sheet().PutNumber(65536, 0, 1);
  EXPECT_TRUE(IsRefused([&] { family.SaveAs(workbook, PathOf("a.xls")); }));
  family.SaveAs(workbook, PathOf("a.XLSX"));
  family.SaveAs(workbook, PathOf("a.ods"));
  EXPECT_EQ(log.saved, (Texts{"Calc MS Excel 2007 XML", "calc8"}));
}

TEST_F(OfficeObjects, AFailedSavingLeavesTheOldFileAndNothingElse) {
  NewSheet();
  test::WriteBytes(folder.Path() / "a.xls", "old");
  log.fault = {false, _T("the disk is full")};
  log.fail_at = log.calls + 4;
  try {
    family.SaveAs(workbook, PathOf("a.xls"));
    ADD_FAILURE() << "saved";
  } catch (COleDispatchException* failure) {
    EXPECT_NE(Utf8(failure->m_strDescription).find("the disk is full"), std::string::npos);
    EXPECT_EQ(failure->m_scError, static_cast<SCODE>(0x800A03EC));
    failure->Delete();
  }
  EXPECT_EQ(test::ReadBytes(folder.Path() / "a.xls"), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST_F(OfficeObjects, AnOfficeThatDoesNotStartIsReported) {
  starts_with = _T("no such library");
  EXPECT_EQ(Load(0), 0);
  ASSERT_GE(machine.dialogs.messages.size(), 2U);
  EXPECT_EQ(Messages().front(), "无法启动 LibreOffice：no such library");
  EXPECT_EQ(Messages().back(), "没有打开 excel 程序!");
  EXPECT_TRUE(tables.empty());
}

TEST_F(OfficeObjects, AMissingFileIsReported) {
  EXPECT_EQ(exchange.LoadExcel2(PathOf("none.xls"), tables, names, 0), 0);
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Messages()[0].find("找不到文件"), 0U);
}

TEST_F(OfficeObjects, AnOfficeThatIsGoneHasItsCode) {
  exchange.SetArray(TextTable({{"a"}, {"b"}}));
  EXPECT_TRUE(exchange.ToExcel());
  log.fault = {true, {}};
  log.fail_at = log.calls + 1;
  EXPECT_FALSE(exchange.FromExcel());
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Messages()[0],
            "COleDispatchException. SCODE: 800706ba, Description: \"电子表格程序已退出，或没有响应。\".");
}

TEST_F(OfficeObjects, ObjectsOfAProgramThatHasQuitFail) {
  NewSheet();
  family.Quit(application);
  EXPECT_EQ(log.offices, 0);
  EXPECT_TRUE(IsRefused([&] { family.AddWorkbook(family.Workbooks(application), AutoValue::Missing()); }));
}

TEST_F(OfficeObjects, TheSelectionIsRead) {
  exchange.SetArray(TextTable({{"a", "b"}, {"c", "d"}, {"e", "f"}}));
  EXPECT_TRUE(exchange.ToExcel());
  book->Select(0, {1, 1, 2, 1});
  OpenExchange back;
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray()), (Rows{{"d"}, {"f"}}));
  // A drawing is marked: the used area.
  book->has_selection = false;
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray()).size(), 3U);
  book->active = -1;
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(Messages(), Texts{"没有活动的表单，请打开一个Excel文件!"});
}

TEST(OfficeChoice, TheEnvironmentNamesIt) {
  const ScopedSpreadsheet scope(OfficeSpreadsheet());
  EXPECT_TRUE(SpreadsheetInForce().ClassOf(_T("Excel.Application")).has_value());
  EXPECT_NE(dynamic_cast<office::OfficeSystem*>(&OfficeSpreadsheet()), nullptr);
}

}  // namespace
}  // namespace lorv
