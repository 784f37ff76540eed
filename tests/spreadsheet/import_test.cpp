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
using test::RowsOf;
using test::TextTable;
using test::Utf8;
using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

void Fill(engine::Book& book, engine::Sheet& sheet, const Rows& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < rows[i].size(); ++j) {
      engine::PutCellValue(book, sheet, static_cast<long>(i), static_cast<long>(j),
                           _variant_t(CString::FromUtf8(rows[i][j])));
    }
  }
}

class Import : public test::ExchangeDesk {
 protected:
  explicit Import(Program family = Program::kExcel) : ExchangeDesk(family) {}

  // A file of sheets, each with its own name in its first cell.
  static void PutFile(const Texts& sheet_names) {
    engine::Book book;
    for (const auto& name : sheet_names) {
      const auto sheet = book.AddSheet(book.sheets.size());
      book.Rename(*sheet, CString::FromUtf8(name));
      Fill(book, *sheet, {{name, "x"}});
    }
    engine::WriteWorkbookFile(book, _T("C:\\in.xlsx"));
  }
  int Load(int index) { return exchange.LoadExcel2(_T("C:\\in.xlsx"), tables, names, index); }
  Texts Names() const {
    Texts texts;
    for (int i = 0; i < names.GetSize(); ++i) texts.push_back(Utf8(names.GetAt(i)));
    return texts;
  }
  std::ptrdiff_t Count(const std::string& text) const {
    return std::count_if(record.lines.begin(), record.lines.end(),
                         [&](const std::string& line) { return line.find(text) != std::string::npos; });
  }

  OpenExchange exchange;
  std::vector<CXArrayDBToArray> tables;
  CStringArray names;
};

class ImportByEt : public Import {
 protected:
  ImportByEt() : Import(Program::kEt) {}
};

TEST_F(Import, TheMarkedCellsAreRead) {
  const auto book = OpenedBook();
  Fill(*book, *book->sheets[0],
       {{"a1", "b1", "c1", "d1", "e1"},
        {},
        {},
        {},
        {"a5", "b5", "c5", "d5", "e5"},
        {"a6", "b6", "c6", "d6", "e6"}});
  program->Select(book->sheets[0], {4, 2, 5, 4});
  EXPECT_TRUE(exchange.FromExcel());
  EXPECT_EQ(RowsOf(exchange.GetArray()), (Rows{{"c5", "d5", "e5"}, {"c6", "d6", "e6"}}));
  ExpectGolden("import_selection_excel.txt", record.lines);
}

TEST_F(ImportByEt, TheSecondProgramIsAskedWithItsOwnNumbers) {
  const auto book = OpenedBook();
  Fill(*book, *book->sheets[0], {{"a", "b"}, {"c", "d"}});
  book->sheets[0]->merges.Add({0, 0, 1, 0});
  EXPECT_TRUE(exchange.FromExcel());
  ExpectGolden("import_selection_et.txt", record.lines);
}

TEST_F(ImportByEt, AFileIsReadWithItsOwnNumbers) {
  PutFile({"一", "二"});
  EXPECT_EQ(Load(2), 1);
  EXPECT_EQ(Names(), Texts{"二"});
  ExpectGolden("import_file_et.txt", record.lines);
}

TEST_F(Import, LessThanTwoMarkedRowsReadAllThatIsUsed) {
  const auto book = OpenedBook();
  Fill(*book, *book->sheets[0], {{"", "", ""}, {"", "b", "c"}, {"", "", "f"}});
  for (const engine::Area& marked : {engine::Area{0, 0, 0, 0}, engine::Area{0, 0, 0, 16383}}) {
    program->Select(book->sheets[0], marked);
    EXPECT_TRUE(exchange.FromExcel());
    EXPECT_EQ(RowsOf(exchange.GetArray()), (Rows{{"b", "c"}, {"", "f"}}));
  }
}

TEST_F(Import, AnAreaThatIsTooLargeIsRefusedAndTheOldTableStays) {
  const auto book = OpenedBook();
  exchange.SetArray(TextTable({{"old"}}));
  const auto refused = [&](const engine::Area& marked) {
    machine.dialogs.messages.clear();
    program->Select(book->sheets[0], marked);
    EXPECT_TRUE(exchange.FromExcel());
    return Messages();
  };
  EXPECT_EQ(refused({0, 0, 1048575, 1}),
            Texts{"您选择的Excel区域太大(行1048576X列2),请重新选择(注意不能全选要框选)!"});
  EXPECT_EQ(refused({0, 0, 100000, 0}),
            Texts{"您选择的Excel区域太大(行100001X列1),请重新选择(注意不能全选要框选)!"});
  EXPECT_EQ(refused({0, 0, 1, 100}),
            Texts{"您选择的Excel区域太大(行2X列101),请重新选择(注意不能全选要框选)!"});
  EXPECT_EQ(RowsOf(exchange.GetArray()), Rows{{"old"}});
}

TEST_F(Import, TheLargestAreaIsRead) {
  const auto book = OpenedBook();
  program->Select(book->sheets[0], {0, 0, 99999, 0});
  const ScopedSpreadsheet plain(engine);
  EXPECT_TRUE(exchange.FromExcel());
  EXPECT_EQ(exchange.GetArray().GetRowCount(), 100000);
  program->Select(book->sheets[0], {0, 0, 1, 99});
  EXPECT_TRUE(exchange.FromExcel());
  EXPECT_EQ(exchange.GetArray().GetColCount(), 100);
  EXPECT_TRUE(Messages().empty());
}

TEST_F(Import, EveryCellOfAMergedAreaAddsIt) {
  const auto book = OpenedBook();
  Fill(*book, *book->sheets[0], {{"a", "b", "c"}, {"d", "e", ""}, {"g", "", ""}});
  book->sheets[0]->merges.Add({1, 1, 2, 2});
  program->Select(book->sheets[0], {0, 0, 2, 2});
  EXPECT_TRUE(exchange.FromExcel());
  const auto& ranges = exchange.GetRanges();
  EXPECT_EQ(ranges.GetCount(), 4);
  for (POSITION at = ranges.GetHeadPosition(); at != nullptr;) {
    EXPECT_EQ(ranges.GetNext(at), CBCGPGridRange(2, 1, 3, 2));
  }
  EXPECT_EQ(RowsOf(exchange.GetArray())[2], (Texts{"g", "", ""}));
  // From a selection that begins inside it, its first row lies above the table.
  exchange.DelRangeData();
  program->Select(book->sheets[0], {2, 0, 3, 2});
  EXPECT_TRUE(exchange.FromExcel());
  EXPECT_EQ(ranges.GetHead(), CBCGPGridRange(2, -1, 3, 0));
}

TEST_F(Import, CellsArriveAsTheTextsThatAreSeen) {
  const auto book = OpenedBook();
  auto& sheet = *book->sheets[0];
  const auto put = [&](long column, const _variant_t& value, LPCTSTR format) {
    engine::CellStyle style;
    style.format = book->styles.FormatId(format);
    engine::PutStyle(*book, sheet, 0, column, style);
    engine::PutCellValue(*book, sheet, 0, column, value);
  };
  put(0, _variant_t(3.0), _T("0.00"));
  put(1, _variant_t(45358.0), _T("yyyy\\-mm\\-dd"));
  put(2, _variant_t(0.5), _T("hh:mm"));
  put(3, _variant_t(true), _T("General"));
  put(4, _variant_t(12.34), _T("\"$\"#,##0.00"));
  engine::PutCellValue(*book, sheet, 1, 0, _variant_t(_T("007")));
  EXPECT_TRUE(exchange.FromExcel());
  EXPECT_EQ(RowsOf(exchange.GetArray())[0], (Texts{"3.00", "2024-3-7", "12:0:0", "", "$12.34"}));
  EXPECT_EQ(RowsOf(exchange.GetArray())[1][0], "007");
  EXPECT_EQ(exchange.GetArray().GetValue(1, 4).vt, VT_BSTR);
}

TEST_F(Import, WithoutAProgramTheUserSeesAMessage) {
  EXPECT_FALSE(exchange.FromExcel());
  EXPECT_EQ(Messages(), Texts{"没有打开 excel 程序!"});
}

TEST_F(Import, WithoutAnActiveSheetTheUserSeesAMessage) {
  const auto book = OpenedBook();
  book->sheets.clear();
  EXPECT_TRUE(exchange.FromExcel());
  EXPECT_EQ(Messages(), Texts{"没有活动的表单，请打开一个Excel文件!"});
}

TEST_F(Import, WithoutASheetTheDataAreNotReady) {
  EXPECT_EQ(exchange.ReadSheet(AutomationFamily(Program::kExcel), nullptr, true), 0);
  EXPECT_EQ(Messages(), Texts{"Excel数据没有准备好!"});
}

TEST_F(Import, EachKindOfFailureHasItsOwnMessage) {
  const auto book = OpenedBook();
  Fill(*book, *book->sheets[0], {{"a"}, {"b"}});
  record.fail_at = 3;
  record.failure = static_cast<HRESULT>(0x800706BA);
  EXPECT_FALSE(exchange.FromExcel());
  EXPECT_EQ(Messages().back(), "COleException: COleException. SCODE: 800706ba.");
  record.fail_at = record.calls + 3;
  record.description = _T("服务器出错");
  EXPECT_FALSE(exchange.FromExcel());
  EXPECT_EQ(Messages().back(),
            "COleDispatchException: COleDispatchException. SCODE: 800706ba, Description: \"服务器出错\".");
  for (const auto& message : machine.dialogs.messages) EXPECT_EQ(message.style, 0x10000U);
  EXPECT_EQ(record.alive, 0);
}

class RunningFailure : public engine::EngineSystem {
 public:
  explicit RunningFailure(bool framework) : framework_(framework) {}
  std::unique_ptr<RunningObjects> EnumRunning() override {
    if (framework_) AfxThrowInvalidArgException();
    throw 5;
  }

 private:
  bool framework_;
};

TEST_F(Import, AllOtherFailuresShareOneMessage) {
  for (const bool framework : {true, false}) {
    RunningFailure system(framework);
    const ScopedSpreadsheet scope(system);
    EXPECT_FALSE(exchange.FromExcel());
    EXPECT_EQ(Messages().back(), "Catch-All: General Exception caught.");
  }
}

TEST_F(Import, OneSheetOfAFileIsRead) {
  PutFile({"一", "二", "三"});
  EXPECT_EQ(Load(2), 1);
  EXPECT_EQ(Names(), Texts{"二"});
  ASSERT_EQ(tables.size(), 1U);
  EXPECT_EQ(RowsOf(tables[0]), (Rows{{"二", "x"}}));
  ExpectGolden("import_file.txt", record.lines);
  EXPECT_TRUE(machine.shell.progress.empty());
  EXPECT_EQ(record.alive, 0);
}

TEST_F(Import, AllSheetsAreReadWithProgress) {
  PutFile({"一", "二", "三"});
  names.Add(_T("before"));
  tables.emplace_back();
  EXPECT_EQ(Load(0), 1);
  EXPECT_EQ(Names(), (Texts{"before", "一", "二", "三"}));
  EXPECT_EQ(tables.size(), 4U);
  Texts progress;
  for (const auto& line : machine.shell.progress) progress.push_back(Utf8(line));
  ExpectGolden("import_progress.txt", progress);
}

TEST_F(Import, ASingleSheetIsReadWhateverTheIndex) {
  PutFile({"一"});
  for (const int index : {0, 7, -1}) {
    EXPECT_EQ(Load(index), 1) << index;
    EXPECT_TRUE(machine.shell.progress.empty());
  }
  EXPECT_EQ(Names(), (Texts{"一", "一", "一"}));
}

TEST_F(Import, AnIndexOutsideIsTheProgramsOwnFailure) {
  PutFile({"一", "二"});
  EXPECT_EQ(Load(3), 0);
  EXPECT_EQ(Messages(), Texts{"没有这个序号的工作表。"});
  EXPECT_EQ(Count("Quit"), 0);
  EXPECT_TRUE(tables.empty());
}

TEST_F(Import, WhereTheSystemHasNoProgressTheReadingGoesOn) {
  machine.shell.has_progress = false;
  PutFile({"一", "二"});
  EXPECT_EQ(Load(0), 1);
  EXPECT_EQ(tables.size(), 2U);
}

TEST_F(Import, ACancelledReadKeepsWhatWasRead) {
  PutFile({"一", "二", "三"});
  // The user cancels while the first sheet is read, and confirms.
  class Cancelling : public HeadlessShell {
   public:
    std::unique_ptr<ProgressDialog> MakeProgress() override { return HeadlessShell::MakeProgress(); }
  };
  class AtTheSecondCheck : public HeadlessDialogs {
   public:
    int ShowMessage(const MessageRequest& request) override {
      HeadlessDialogs::ShowMessage(request);
      return messages.size() < 2 ? kAnswerNo : kAnswerYes;
    }
  } dialogs;
  Platform ports = machine.Ports();
  ports.dialogs = &dialogs;
  const ScopedPlatform scope(ports);
  machine.shell.user_cancelled = true;
  EXPECT_EQ(Load(0), 1);
  EXPECT_EQ(Names(), Texts{"一"});
  EXPECT_EQ(tables.size(), 1U);
  ASSERT_EQ(dialogs.messages.size(), 2U);
  EXPECT_EQ(Utf8(dialogs.messages[0].text), "是否取消导入？");
}

TEST_F(Import, ASheetThatIsTooLargeRepeatsTheTableBeforeIt) {
  engine::Book book;
  Fill(book, *book.AddSheet(0), {{"a"}});
  const auto large = book.AddSheet(1);
  Fill(book, *large, {{"b"}});
  engine::PutCellValue(book, *large, 0, 100, _variant_t(_T("far")));
  engine::WriteWorkbookFile(book, _T("C:\\in.xlsx"));
  EXPECT_EQ(Load(0), 1);
  ASSERT_EQ(tables.size(), 2U);
  EXPECT_EQ(RowsOf(tables[1]), Rows{{"a"}});
  EXPECT_EQ(Names(), (Texts{"Sheet1", "Sheet2"}));
  EXPECT_EQ(Messages().size(), 1U);
}

TEST_F(Import, AMissingFileIsReportedAndGivesNothing) {
  EXPECT_EQ(Load(0), 0);
  EXPECT_EQ(Messages(), Texts{"找不到文件“C:\\in.xlsx”。"});
  EXPECT_TRUE(tables.empty());
  EXPECT_EQ(record.alive, 0);
}

TEST_F(Import, AFailingQuitStillGivesWhatWasRead) {
  PutFile({"一"});
  EXPECT_EQ(Load(1), 1);
  const int calls = record.calls;
  record = CallRecord();
  record.fail_at = calls;
  EXPECT_EQ(Load(1), 1);
  EXPECT_EQ(Messages().size(), 1U);
}

TEST_F(Import, EveryCallMayFailWithoutALeak) {
  PutFile({"一", "二"});
  int calls = 1;
  for (int n = 1; n <= calls; ++n) {
    record = CallRecord();
    record.fail_at = n;
    machine.dialogs.messages.clear();
    const int result = Load(0);
    if (record.calls < n) break;
    calls = n + 1;
    EXPECT_EQ(machine.dialogs.messages.size(), 1U) << n;
    EXPECT_EQ(record.alive, 0) << n;
    EXPECT_LE(result, 1);
  }
  EXPECT_GT(calls, 30);
}

TEST_F(Import, AFileIsAskedFor) {
  EXPECT_EQ(exchange.LoadExcel(tables, names, 0), 0);
  EXPECT_TRUE(tables.empty());
  EXPECT_EQ(names.GetSize(), 0);
  PutFile({"一"});
  class Asked : public engine::EngineSystem {
   public:
    FileQuestion question;
    std::optional<CString> AskForFile(const FileQuestion& asked) override {
      question = asked;
      return CString(_T("C:\\in.xlsx"));
    }
  } system;
  const ScopedSpreadsheet scope(system);
  EXPECT_EQ(exchange.LoadExcel(tables, names, 0), 1);
  EXPECT_EQ(Utf8(system.question.default_extension), "*.xls, *.xlsx, *.et");
  EXPECT_EQ(Utf8(system.question.default_name), "");
  EXPECT_EQ(system.question.flags, 6U);
  EXPECT_EQ(Utf8(system.question.filter), "Excel Files (*.xls, *.xlsx, *.et)|*.xls; *.xlsx; *.et||");
}

TEST_F(Import, AGridWithoutColumnsGetsThem) {
  const auto book = OpenedBook();
  Fill(*book, *book->sheets[0], {{"a", "b", "c"}, {"d", "e", "f"}});
  test::TableGrid grid;
  EXPECT_TRUE(GridFromExcel(grid, 0));
  EXPECT_EQ(grid.notes,
            (Texts{"remove all", "add column 80", "add column 80", "add column 80", "auto size"}));
  EXPECT_EQ(grid.RowCount(), 2);
  EXPECT_EQ(Utf8(VariantToText(grid.Value(1, 2))), "f");
}

TEST_F(Import, AGridTakesAsManyColumnsAsItHas) {
  const auto book = OpenedBook();
  Fill(*book, *book->sheets[0], {{"a", "b", "c"}, {"d", "e", "f"}});
  const auto taken = [&](std::size_t columns, int mode) {
    test::TableGrid grid;
    grid.columns.resize(columns);
    EXPECT_TRUE(GridFromExcel(grid, mode));
    std::string text;
    for (const auto& value : grid.rows[0]) text += Utf8(VariantToText(value)) + "|";
    return text;
  };
  EXPECT_EQ(taken(2, 0), "a|b|");
  EXPECT_EQ(taken(4, 0), "a|b|c||");
  EXPECT_EQ(taken(3, -1), "a|b||");
  EXPECT_EQ(taken(5, 1), "a|b|c|||");
}

TEST_F(Import, ATableWithoutColumnsLeavesTheGridAlone) {
  test::TableGrid grid;
  grid.columns.resize(1);
  EXPECT_FALSE(GridFromExcel(grid, 0));
  const auto book = OpenedBook();
  book->sheets.clear();
  EXPECT_FALSE(GridFromExcel(grid, 0));
  EXPECT_TRUE(grid.notes.empty());
}

}  // namespace
}  // namespace lorv
