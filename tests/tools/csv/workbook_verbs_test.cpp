#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

#include "spreadsheet/workbook_file.h"
#include "tests/tools/takeoff/work_runs.h"
#include "tools/lorv/csv/csv_reader.h"
#include "tools/lorv/csv/sheet_table.h"
#include "tools/lorv/takeoff/output/table_file.h"

// The take-off with workbooks at its ends.

namespace lorv::test {
namespace {

using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

constexpr const char* kComponents =
    "类别,name,楼层,count,L,B,H\n墙,W1,1F,,6,0.2,3\n墙,W2,1F,2,4,0.2,3\n墙,W3,2F,,5,0.2,2.8\n柱,007,1F,,0.4,"
    "0.4,3\n";
constexpr const char* kRules =
    "class,name,unit,formula,decimals\n墙,砌体,m3,L*B*H,\n,side,m2,L*H,1\n柱,混凝土,m3,L*B*H,2\n";

class WorkbookVerbs : public WorkRuns {
 protected:
  static Rows RowsOf(const WorkbookFile& book, int sheet) {
    Rows rows;
    for (long row = 0; row < book.RowCount(sheet); ++row) {
      Texts& texts = rows.emplace_back();
      for (const CString& text : book.RowTexts(sheet, row)) texts.push_back(text.ToUtf8());
    }
    return rows;
  }
  Rows RowsOf(const std::string& name, int sheet) const {
    return RowsOf(WorkbookFile(CString::FromUtf8(Path(name))), sheet);
  }
  // A table of text as a workbook of one sheet.
  void MakeWorkbook(const std::string& name, const std::string& table) {
    WriteBytes(folder_.Path() / "made.csv", table);
    const ToolRun run = RunTool({"sheet", Path("made.csv"), "--out", Path(name)});
    ASSERT_EQ(run.code, 0) << run.err;
  }
};

const Rows kBill = {
    {"Class", "Quantity", "Unit", "Storey", "Components", "Total"},
    {"墙", "砌体", "m3", "1F", "3", "8.4"},
    {"墙", "砌体", "m3", "2F", "1", "2.8"},
    {"墙", "砌体", "m3", "all", "4", "11.2"},
    {"墙", "side", "m2", "1F", "3", "42"},
    {"墙", "side", "m2", "2F", "1", "14"},
    {"墙", "side", "m2", "all", "4", "56"},
    {"柱", "混凝土", "m3", "1F", "1", "0.48"},
    {},
    {"Whole building", "砌体", "m3", "", "4", "11.2"},
    {"", "side", "m2", "", "4", "56"},
    {"", "混凝土", "m3", "", "1", "0.48"},
};

TEST_F(WorkbookVerbs, ComponentsAndRulesOfWorkbooksGiveTheSameBill) {
  const ToolRun csv = Work(kComponents, kRules);
  MakeWorkbook("c.xlsx", kComponents);
  MakeWorkbook("r.xlsx", kRules);
  const ToolRun run = RunTool({"work", Path("c.xlsx"), "--rules", Path("r.xlsx")});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out, csv.out);
  // What the user says of the encoding of tables does not concern workbooks.
  EXPECT_EQ(RunTool({"work", Path("c.xlsx"), "--rules", Path("r.xlsx"), "--encoding", "gbk"}).out, csv.out);
}

TEST_F(WorkbookVerbs, CellsCountWithAllTheirDigits) {
  WorkbookFile book;
  book.AddSheet(_T("a"));
  for (int column = 0; const char* title : {"class", "L"}) {
    book.Put(0, 0, column++, _variant_t(CString::FromUtf8(title)));
  }
  book.Put(0, 1, 0, _variant_t(_T(" W ")));
  book.Put(0, 1, 1, _variant_t(1.23456789), {_T("0.0")});
  WriteBytes(folder_.Path() / "c.xlsx", book.Bytes());
  WriteBytes(folder_.Path() / "r.csv", "class,name,formula,decimals\nW,q,L,6\n");
  const ToolRun run = RunTool({"work", Path("c.xlsx"), "--rules", Path("r.csv")});
  EXPECT_NE(run.out.find("1.234568"), std::string::npos) << run.out << run.err;
}

TEST_F(WorkbookVerbs, MistakesAreReportedWithTheRowOfTheSheet) {
  WorkbookFile book;
  book.AddSheet(_T("a"));
  const std::vector<std::vector<LPCTSTR>> rows = {
      {_T("class"), _T("L")}, {_T("W"), _T("3")}, {}, {_T("W"), _T("x")}};
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t i = 0; i < rows[row].size(); ++i) {
      book.Put(0, static_cast<long>(row), static_cast<int>(i), _variant_t(rows[row][i]));
    }
  }
  WriteBytes(folder_.Path() / "c.xlsx", book.Bytes());
  WriteBytes(folder_.Path() / "r.csv", "class,name,formula\nW,q,L\n");
  const ToolRun run = RunTool({"work", Path("c.xlsx"), "--rules", Path("r.csv")});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("line 4"), std::string::npos) << run.err;
}

TEST_F(WorkbookVerbs, TheBillIsASheetWithNumbers) {
  const ToolRun run = Work(kComponents, kRules, {"--quiet", "--bill", Path("bill.xlsx")});
  EXPECT_EQ(run.code, 0) << run.err;
  const WorkbookFile book(CString::FromUtf8(Path("bill.xlsx")));
  ASSERT_EQ(book.SheetCount(), 1);
  EXPECT_EQ(book.SheetName(0).ToUtf8(), "Bill");
  EXPECT_EQ(RowsOf(book, 0), kBill);
  // As a sheet shows them: with the decimals of each quantity.
  const ToolRun shown = RunTool({"sheet", Path("bill.xlsx"), "--sheet", "1"});
  EXPECT_NE(shown.out.find("墙,砌体,m3,all,4,11.200\r\n"), std::string::npos) << shown.out;
  EXPECT_NE(shown.out.find("墙,side,m2,1F,3,42.0\r\n"), std::string::npos);
}

TEST_F(WorkbookVerbs, TheFullTableHasTheBillInFront) {
  const ToolRun run = Work(kComponents, kRules, {"--quiet", "--out", Path("out.XLSX")});
  EXPECT_EQ(run.code, 0) << run.err;
  const WorkbookFile book(CString::FromUtf8(Path("out.XLSX")));
  ASSERT_EQ(book.SheetCount(), 2);
  EXPECT_EQ(RowsOf(book, 0), kBill);
  const Rows table = RowsOf(book, 1);
  ASSERT_EQ(table.size(), 5U);
  EXPECT_EQ(table[0].back(), "not worked");
  EXPECT_EQ(table[4][1], "007");
}

TEST_F(WorkbookVerbs, ThreeKeysMakeTwoLevelsOfGroups) {
  const ToolRun run = Work("class,storey,type,L\nW,1,a,1\nW,1,b,2\nW,2,a,4\n", "class,name,formula\nW,q,L\n",
                           {"--quiet", "--by", "class,storey,type", "--bill", Path("b.xlsx")});
  EXPECT_EQ(run.code, 0) << run.err;
  const Rows rows = RowsOf("b.xlsx", 0);
  ASSERT_GE(rows.size(), 6U);
  EXPECT_EQ(rows[1], (Texts{"W", "q", "", "1", "a", "1", "1"}));
  EXPECT_EQ(rows[3], (Texts{"W", "q", "", "1", "all", "2", "3"}));
}

TEST_F(WorkbookVerbs, ATableAndABillInTheLanguageOfTheUser) {
  const ToolRun run = Work(kComponents, kRules, {"--quiet", "--out", Path("out.xlsx"), "--lang", "zh"});
  EXPECT_EQ(run.code, 0) << run.err;
  const WorkbookFile book(CString::FromUtf8(Path("out.xlsx")));
  EXPECT_EQ(book.SheetName(0).ToUtf8(), "清单");
  EXPECT_EQ(RowsOf(book, 0)[0][1], "工程量");
}

TEST_F(WorkbookVerbs, DamagedWorkbooksAreRefusedAndNothingIsWritten) {
  WriteBytes(folder_.Path() / "c.xlsx", "PK\x03\x04 damaged");
  WriteBytes(folder_.Path() / "r.csv", kRules);
  const ToolRun run =
      RunTool({"work", Path("c.xlsx"), "--rules", Path("r.csv"), "--bill", Path("bill.xlsx")});
  EXPECT_EQ(run.code, 2);
  EXPECT_NE(run.err.find("c.xlsx"), std::string::npos) << run.err;
  EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "bill.xlsx"));
  const ToolRun nowhere = Work(kComponents, kRules, {"--quiet", "--bill", Path("no folder/bill.xlsx")});
  EXPECT_EQ(nowhere.code, 2);
}

// How many bars were drawn and taken away again.
std::ptrdiff_t CountBars(const std::string& err) {
  const std::string blanks = "\r" + std::string(70, ' ') + "\r";
  std::ptrdiff_t count = 0;
  for (std::size_t at = 0; (at = err.find(blanks, at)) != std::string::npos; at += blanks.size()) ++count;
  return count;
}

// Of a long saving too: a workbook is made at the end, when all components are through.
TEST_F(WorkbookVerbs, TheSavingOfAWorkbookIsSeen) {
  WriteBytes(folder_.Path() / "c.csv", kComponents);
  WriteBytes(folder_.Path() / "r.csv", kRules);
  const auto work = [&](const Texts& more) {
    Texts words = {"work", Path("c.csv"), "--rules", Path("r.csv"), "--quiet"};
    words.insert(words.end(), more.begin(), more.end());
    const ToolRun run = RunOnTerminal(words);
    EXPECT_EQ(run.code, 0) << run.err;
    return CountBars(run.err);
  };
  EXPECT_EQ(work({}), 1) << "of the components";
  EXPECT_EQ(work({"--out", Path("out.csv"), "--bill", Path("bill.csv")}), 1);
  EXPECT_EQ(work({"--out", Path("out.xlsx")}), 2);
  EXPECT_EQ(work({"--bill", Path("bill.xlsx")}), 2);
  EXPECT_EQ(work({"--out", Path("out.xlsx"), "--bill", Path("bill.xlsx")}), 3);
  EXPECT_EQ(RowsOf("out.xlsx", 0), kBill);
  EXPECT_EQ(CountBars(RunOnTerminal({"sheet", Path("c.csv"), "--out", Path("c.xlsx")}).err), 1);
  EXPECT_EQ(CountBars(Work(kComponents, kRules, {"--out", Path("out.xlsx")}).err), 0) << "no terminal";
}

// On a terminal as elsewhere: nothing of the new file, all of the old one.
TEST_F(WorkbookVerbs, ASavingThatFailsLeavesTheOldWorkbook) {
  WriteBytes(folder_.Path() / "c.csv", "class,name,L\nW,a,1\n");
  WriteBytes(folder_.Path() / "r.csv", "class,name,formula\nW," + std::string(40000, 'q') + ",L\n");
  WriteBytes(folder_.Path() / "bill.xlsx", "old");
  const ToolRun run =
      RunOnTerminal({"work", Path("c.csv"), "--rules", Path("r.csv"), "--bill", Path("bill.xlsx"), "-q"});
  EXPECT_EQ(run.code, 2) << run.err;
  EXPECT_EQ(ReadBytes(folder_.Path() / "bill.xlsx"), "old");
  // The two tables and the old workbook.
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 3);
}

TEST(SheetTable, TablesOfTextComeInAsBefore) {
  ScratchFolder folder;
  WriteBytes(folder.Path() / "t.xlsx", "a,b\n1,2\n");
  std::istringstream none;
  tool::InputBytes bytes((folder.Path() / "t.xlsx").string(), none);
  EXPECT_FALSE(bytes.IsWorkbook());
  std::string block;
  bytes.Read(block, 100);
  EXPECT_EQ(block, "a,b\n1,2\n");
}

TEST(SheetTable, CellsWithMarksComeThroughTheReader) {
  WorkbookFile book;
  book.AddSheet(_T("a"));
  const Texts cells = {"a,b", "12\" pipe", "line\nend", "#1", "x;y\tz", "墙"};
  for (std::size_t i = 0; i < cells.size(); ++i) {
    book.Put(0, 0, static_cast<int>(i), _variant_t(CString::FromUtf8(cells[i])));
  }
  ScratchFolder folder;
  WriteBytes(folder.Path() / "t.xlsx", book.Bytes());
  std::istringstream none;
  tool::InputBytes bytes((folder.Path() / "t.xlsx").string(), none);
  EXPECT_TRUE(bytes.IsWorkbook());
  tool::CsvReader reader(bytes, tool::Encoding::kAuto, false);
  tool::CsvRow row;
  ASSERT_TRUE(reader.Next(row));
  ASSERT_EQ(row.Size(), cells.size());
  for (std::size_t i = 0; i < cells.size(); ++i) EXPECT_EQ(row[i], cells[i]);
  EXPECT_FALSE(reader.Next(row));
}

TEST(TableFile, AWorkbookIsRecognisedByTheEndOfItsName) {
  EXPECT_TRUE(tool::NamesWorkbook("a.xlsx"));
  EXPECT_TRUE(tool::NamesWorkbook("A.XlSX"));
  EXPECT_TRUE(tool::NamesWorkbook(".xlsx"));
  EXPECT_FALSE(tool::NamesWorkbook("xlsx"));
  EXPECT_FALSE(tool::NamesWorkbook("a.xlsx.csv"));
  EXPECT_FALSE(tool::NamesWorkbook("-"));
  EXPECT_FALSE(tool::NamesWorkbook(""));
}

}  // namespace
}  // namespace lorv::test
