#include <gtest/gtest.h>

#include <algorithm>

#include "framework/objects/exceptions.h"
#include "spreadsheet/exchange_grid.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "tests/spreadsheet/exchange_desk.h"
#include "tests/spreadsheet/table_grid.h"

namespace lorv {
namespace {

using test::ExpectGolden;
using test::OpenExchange;
using test::TextTable;
using test::Utf8;
using Texts = std::vector<std::string>;

class Export : public test::ExchangeDesk {
 protected:
  using ExchangeDesk::ExchangeDesk;

  // How many lines hold a text.
  std::ptrdiff_t Count(const std::string& text) const {
    return std::count_if(record.lines.begin(), record.lines.end(),
                         [&](const std::string& line) { return line.find(text) != std::string::npos; });
  }
  static CStringArray Titles(const Texts& texts) {
    CStringArray titles;
    for (const auto& text : texts) titles.Add(CString::FromUtf8(text));
    return titles;
  }
  std::shared_ptr<engine::Book> Shown() const { return engine.Running().back()->Books().back(); }
  std::string TextAt(const engine::Sheet& sheet, long row, long column) const {
    return Utf8(VariantToText(engine::CellValue(*Shown(), sheet, row, column)));
  }
};

class ExportByEt : public Export {
 protected:
  ExportByEt() : Export(Program::kEt) {}
};

void FillJourney(OpenExchange& exchange, const CStringArray& titles) {
  exchange.SetArray(
      TextTable({{"墙", "12.50", ""}, {"007", "-3", "x"}, {"a longer text than the column", "0", "y"}}));
  exchange.SetColTitle(titles);
  exchange.AddRange(1, 1, 2, 2);
  ColumnList hidden;
  hidden.AddSorted(2);
  exchange.SetInVisibleCols(hidden);
}

TEST_F(Export, AsksTheFirstProgramInThisOrder) {
  OpenExchange exchange;
  FillJourney(exchange, Titles({"名称", "长"}));
  EXPECT_TRUE(exchange.ToExcel(_T("C:\\out.xls"), true, false, -4108, 2, false, _T("清单"), 1, 0));
  ExpectGolden("export_excel.txt", record.lines);
  EXPECT_TRUE(Messages().empty());
}

TEST_F(ExportByEt, AsksTheSecondProgramInThisOrder) {
  OpenExchange exchange;
  FillJourney(exchange, Titles({"名称", "长"}));
  EXPECT_TRUE(exchange.ToExcel(_T("C:\\out.xls"), true, false, -4108, 2, false, _T("清单"), 1, 0));
  ExpectGolden("export_et.txt", record.lines);
}

TEST_F(Export, OneCellTakesFiveCalls) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{"12.5"}}));
  EXPECT_TRUE(exchange.ToExcel());
  const auto from = std::find_if(record.lines.begin(), record.lines.end(), [](const std::string& line) {
    return line.find("Item(1, 1)") != std::string::npos;
  });
  ASSERT_NE(from, record.lines.end());
  const Texts asked(from, from + 5);
  EXPECT_EQ(asked,
            (Texts{"Range8 get Item(1, 1) -> Range9", "Range9 put NumberFormat(\"0.0_ \")",
                   "Range9 put Value(real 12.5)", "Range9 get Font() -> Font10", "Font10 put Size(10)"}));
  EXPECT_EQ(Count("put Visible(true)"), 1);
  EXPECT_EQ(Count("Quit"), 0);
}

TEST_F(Export, AThousandCellsKeepTheFontAndOneMoreDoesNot) {
  const auto sizes = [&](int rows, int columns, bool titles, int row_offset, int column_offset) {
    record.lines.clear();
    OpenExchange exchange;
    CXArrayDBToArray table;
    table.ReDim(rows, columns);
    exchange.SetArray(table);
    if (titles) exchange.SetColTitle(Titles({"a", "b"}));
    exchange.ToExcel(CString(), false, true, 1, 1, false, CString(), row_offset, column_offset);
    return Count("put Size");
  };
  EXPECT_EQ(sizes(1000, 1, false, 0, 0), 1000);
  EXPECT_EQ(sizes(1001, 1, false, 0, 0), 0);
  EXPECT_EQ(sizes(500, 2, true, 0, 0), 0);  // 501 x 2 with the titles
  EXPECT_EQ(sizes(499, 2, true, 0, 0), 1000);
  EXPECT_EQ(sizes(10, 2, false, 490, 0), 20);
  EXPECT_EQ(sizes(10, 2, false, 491, 0), 0);  // offsets count
  EXPECT_EQ(sizes(10, 2, false, 0, 99), 0);
}

TEST_F(Export, TheAdjustmentDoesNotCountAmongTheThousand) {
  OpenExchange exchange(-1);
  CXArrayDBToArray table;
  table.ReDim(501, 2);
  exchange.SetArray(table);
  exchange.ToExcel();
  EXPECT_EQ(Count("get Item("), 501 + 2);
  EXPECT_EQ(Count("put Size"), 0);
}

TEST_F(Export, ANegativeAdjustmentLeavesColumnsOut) {
  OpenExchange exchange(-1);
  exchange.SetArray(TextTable({{"a", "b", "c", "d"}}));
  exchange.SetColTitle(Titles({"1a", "1b", "1c", "1d"}));
  exchange.ToExcel();
  EXPECT_EQ(Count("put Value("), 6);
  EXPECT_EQ(TextAt(*Shown()->sheets[0], 0, 2), "1c");
  EXPECT_EQ(TextAt(*Shown()->sheets[0], 0, 3), "");
  EXPECT_EQ(TextAt(*Shown()->sheets[0], 1, 2), "c");
}

TEST_F(Export, FewerTitlesThanColumnsLeaveTheRestOfTheRowAlone) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{"a", "b"}}));
  exchange.SetColTitle(Titles({"t"}));
  exchange.ToExcel();
  EXPECT_EQ(Count("put Value("), 3);
}

TEST_F(Export, AnEmptyTextPutsItsValueAndNoFormat) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{""}}));
  exchange.ToExcel(CString(), false, true, -4131, 1, false, CString(), 0, 0);
  EXPECT_EQ(Count("put NumberFormat"), 0);
  EXPECT_EQ(Count("put Value(empty)"), 1);
  EXPECT_EQ(Count("put Size(10)"), 1);
  EXPECT_EQ(Count("put HorizontalAlignment(-4131)"), 1);
}

TEST_F(Export, OnlyThreeAlignmentsTakeEffect) {
  for (const int alignment : {1, 0, -4130, 5}) {
    OpenExchange exchange;
    exchange.SetArray(TextTable({{"a"}}));
    exchange.ToExcel(CString(), false, true, alignment, 1, false, CString(), 0, 0);
    EXPECT_EQ(exchange.GetHorizontaliAlign(), alignment);
  }
  EXPECT_EQ(Count("HorizontalAlignment"), 0);
}

TEST_F(Export, ColumnsGrowToEightyAndNeverShrink) {
  OpenExchange exchange;
  const auto book = OpenedBook();
  auto& sheet = *book->sheets[0];
  sheet.columns.Set(0, 0, {10, false});
  sheet.columns.Set(1, 1, {90, false});
  sheet.columns.Set(2, 2, {10.9999999, false});
  const auto place = [&](const std::string& text, int column) {
    const AutomationFamily family(Program::kExcel);
    const AutoRef workbook = engine::WorkbookObject(program, book);
    const AutoRef cells = family.Cells(family.Sheet(family.Worksheets(workbook), 1));
    exchange.WriteCell(family, CString::FromUtf8(text), 1, column + 1, cells, false);
    return sheet.columns.At(column).width;
  };
  EXPECT_EQ(place("123456789a", 0), 12);  // 10 characters and 2 more
  EXPECT_EQ(place(std::string(100, 'x'), 0), 80);
  EXPECT_EQ(place(std::string(200, 'x'), 0), 80);
  EXPECT_EQ(place(std::string(200, 'x'), 1), 90);
  EXPECT_EQ(place("123456789", 2), 10.9999999);     // 11 after rounding to six decimals
  EXPECT_EQ(place("1234567890.5", 2), 10.9999999);  // a number makes no column grow
}

TEST_F(Export, AMergedRangeIsEmptiedButForItsFirstCell) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{"a", "b", "c"}, {"d", "e", "f"}, {"g", "h", "i"}}));
  exchange.AddRange(1, 1, 2, 2);
  exchange.ToExcel();
  const auto book = Shown();
  EXPECT_EQ(Count("get Range(\"B2\", \"C3\")"), 1);
  EXPECT_EQ(Count("put Value(empty)"), 3);
  EXPECT_EQ(Count("put Size"), 9);
  EXPECT_EQ(TextAt(*book->sheets[0], 1, 1), "e");
  EXPECT_EQ(TextAt(*book->sheets[0], 2, 2), "");
  ASSERT_NE(book->sheets[0]->merges.Find(2, 2), nullptr);
  EXPECT_EQ(*book->sheets[0]->merges.Find(2, 2), (engine::Area{1, 1, 2, 2}));
}

TEST_F(Export, RangesAndHiddenColumnsAreNotShifted) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{"a", "b"}, {"c", "d"}}));
  exchange.SetColTitle(Titles({"x", "y"}));
  exchange.AddRange(0, 0, 0, 1);
  ColumnList hidden;
  hidden.AddSorted(0);
  exchange.SetInVisibleCols(hidden);
  exchange.ToExcel(CString(), false, true, 1, 1, false, CString(), 2, 3);
  EXPECT_EQ(Count("get Range(\"A1\", \"B1\")"), 1);
  EXPECT_TRUE(Shown()->sheets[0]->columns.At(0).hidden);
  EXPECT_FALSE(Shown()->sheets[0]->columns.At(3).hidden);
  EXPECT_EQ(TextAt(*Shown()->sheets[0], 2, 3), "x");
  EXPECT_EQ(TextAt(*Shown()->sheets[0], 3, 3), "a");
}

TEST_F(Export, TheSheetOfTheNameIsTaken) {
  // A workbook of three sheets stands at the file's name with ".xls" behind it.
  engine::Book stands;
  for (int i = 0; i < 3; ++i) stands.AddSheet(stands.sheets.size());
  stands.Rename(*stands.sheets[2], _T("清单"));
  engine::WriteWorkbookFile(stands, _T("C:\\house.xls"));
  const auto index = [&](const char* name, int wanted) {
    record.lines.clear();
    OpenExchange exchange;
    exchange.SetArray(TextTable({{"a"}}));
    exchange.ToExcel(_T("C:\\house"), false, true, 1, wanted, true, CString::FromUtf8(name), 0, 0);
    const auto& sheets = Shown()->sheets;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
      if (TextAt(*sheets[i], 0, 0) == "a") return std::to_string(i + 1) + " " + Utf8(sheets[i]->name);
    }
    return std::string("none");
  };
  EXPECT_EQ(index("清单", 1), "3 清单");
  EXPECT_EQ(Count("put Name(\"清单\")"), 1);
  EXPECT_EQ(Count("Workbooks2 call Open(\"C:\\house.xls\", missing, missing"), 1);
  EXPECT_EQ(index("汇总", 1), "1 汇总");
  EXPECT_EQ(index("", 2), "2 Sheet2");
  EXPECT_EQ(Count("put Name"), 0);
  index("sheet1", 5);  // letter case counts, so a fourth sheet is to take the name
  EXPECT_EQ(Messages(), (Texts{"工作表名称“sheet1”已经存在。"}));
  EXPECT_EQ(index("", 5), "4 Sheet4");
  EXPECT_EQ(Count("call Add(missing, Worksheet"), 1);
  EXPECT_EQ(Count("get Item(short 4)"), 1);
}

TEST_F(Export, AMissingFileIsNotOpened) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{"a"}}));
  EXPECT_TRUE(exchange.ToExcel(_T("C:\\none"), false, true, 1, 1, true, CString(), 0, 0));
  EXPECT_EQ(Count("call Add(missing)"), 1);
  EXPECT_EQ(Count("call Open"), 0);
}

TEST_F(Export, ProgramsEndOnlyAfterSavingUnseen) {
  const auto last = [&](const char* file, bool save, bool show) {
    record.lines.clear();
    OpenExchange exchange;
    exchange.SetArray(TextTable({{"a"}}));
    EXPECT_TRUE(exchange.ToExcel(CString::FromUtf8(file), save, show, 1, 1, false, CString(), 0, 0));
    return std::to_string(Count("Quit")) + std::to_string(Count("put Visible(true)")) +
           std::to_string(Count("SaveAs")) + std::to_string(Count("call Close"));
  };
  EXPECT_EQ(last("C:\\a.xls", true, false), "1011");
  EXPECT_EQ(last("C:\\a.xls", true, true), "0111");
  EXPECT_EQ(last("C:\\a.xls", false, false), "0100");
  EXPECT_EQ(last("", true, false), "0100");
  EXPECT_EQ(last("", false, true), "0100");
}

TEST_F(Export, AFailureOfTheProgramIsReportedInItsOwnWords) {
  OpenExchange exchange;
  exchange.SetArray(TextTable({{"a"}}));
  EXPECT_FALSE(exchange.ToExcel(CString(), false, true, 1, 1, false, _T("a/b"), 0, 0));
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Messages()[0].find("“a/b”不能作为工作表名称"), 0U);
  EXPECT_EQ(record.alive, 0);
}

TEST_F(Export, EveryCallMayFailWithoutALeakOrASecondMessage) {
  int calls = 1;
  for (int n = 1; n <= calls; ++n) {
    record = CallRecord();
    record.fail_at = n;
    record.description = n % 2 == 0 ? CString(_T("服务器出错")) : CString();
    machine.dialogs.messages.clear();
    OpenExchange exchange;
    FillJourney(exchange, Titles({"名称", "长"}));
    // What fails before a workbook is there leads to the search among running programs.
    const bool result = exchange.ToExcel(_T("C:\\out.xls"), true, false, -4108, 2, false, _T("清单"), 1, 0);
    if (record.calls < n) break;
    calls = n + 1;
    EXPECT_FALSE(result) << n;
    ASSERT_EQ(machine.dialogs.messages.size(), 1U) << n;
    if (n > 2) {
      EXPECT_EQ(Messages()[0] == "服务器出错", n % 2 == 0) << n;
    } else {
      EXPECT_EQ(Messages()[0], "没有打开 excel 程序!");
    }
    EXPECT_EQ(record.alive, 0) << n;
  }
  EXPECT_GT(calls, 50);
}

class ThrowingSystem : public engine::EngineSystem {
 public:
  AutoRef CreateDispatch(LPCTSTR /*program_id*/) override { return nullptr; }
  std::optional<GUID> ClassOf(LPCTSTR /*program_id*/) override { return std::nullopt; }
  std::unique_ptr<RunningObjects> EnumRunning() override { throw 5; }
};

TEST_F(Export, AnyOtherFailureIsReportedInGeneralWords) {
  ThrowingSystem system;
  const ScopedSpreadsheet scope(system);
  OpenExchange exchange;
  EXPECT_FALSE(exchange.ToExcel());
  ASSERT_EQ(machine.dialogs.messages.size(), 2U);
  EXPECT_EQ(Messages()[1], "Catch-All: General Exception caught.");
  EXPECT_EQ(machine.dialogs.messages[1].style, 0x10000U);
}

TEST_F(Export, AGridGoesOutWithTitlesAndRangesOneRowDown) {
  test::TableGrid grid;
  grid.columns = {{_T("名称"), true, 80}, {_T("编号"), false, 80}};
  grid.rows = {{_variant_t(_T("墙")), _variant_t(7L)}, {_variant_t(), _variant_t(2.5)}};
  grid.merged = {{0, 0, 0, 1}};
  EXPECT_TRUE(GridToExcel(grid, 0));
  const auto& sheet = *Shown()->sheets[0];
  EXPECT_EQ(TextAt(sheet, 0, 0), "名称");
  EXPECT_EQ(TextAt(sheet, 0, 1), "编号");
  EXPECT_EQ(TextAt(sheet, 1, 0), "墙");
  EXPECT_EQ(TextAt(sheet, 1, 1), "7");
  EXPECT_TRUE(sheet.columns.At(1).hidden);
  ASSERT_NE(sheet.merges.Find(1, 0), nullptr);
  EXPECT_EQ(*sheet.merges.Find(1, 0), (engine::Area{1, 0, 2, 0}));
}

}  // namespace
}  // namespace lorv
