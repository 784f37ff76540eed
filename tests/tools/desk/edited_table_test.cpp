#include "tools/lorv-desk/table/edited_table.h"

#include <gtest/gtest.h>

#include <random>

#include "framework/text/utf8.h"
#include "tests/support/data.h"
#include "tests/support/print.h"
#include "tools/lorv-desk/table/grid_exchange.h"
#include "tools/lorv-desk/table/table_text.h"
#include "tools/lorv/command/verb.h"

namespace lorv::tool {
namespace {

using test::Utf8;

bool GoOn(std::uint64_t /*done*/, std::uint64_t /*size*/) {
  return true;
}

// A file, and the grid that its table is read into; without a window.
class EditedTables : public testing::Test {
 protected:
  std::string Path() const { return (folder_.Path() / "表.csv").string(); }
  void Put(const std::string& bytes) { test::WriteBytes(folder_.Path() / "表.csv", bytes); }
  std::string Bytes() const { return test::ReadBytes(folder_.Path() / "表.csv"); }
  void Read(const std::string& bytes) {
    Put(bytes);
    grid = std::make_unique<CBCGPBasicGridCtrl>();
    table = std::make_unique<EditedTable>(Path());
    EXPECT_TRUE(table->Read(*grid, GoOn));
  }
  std::string Text(int row, int column) const {
    const CBCGPGridItem* item = grid->GetItem(row, column);
    return item == nullptr ? "(none)" : item->FormatItem().ToUtf8();
  }
  std::string Refusal(const std::string& bytes) {
    Put(bytes);
    CBCGPBasicGridCtrl fresh;
    EditedTable refused(Path());
    try {
      refused.Read(fresh, GoOn);
    } catch (const BadInput& wrong) {
      return wrong.what();
    }
    return "(read)";
  }

  std::unique_ptr<CBCGPBasicGridCtrl> grid;
  std::unique_ptr<EditedTable> table;

 private:
  test::ScratchFolder folder_;
};

TEST_F(EditedTables, FirstRowNamesTheColumns) {
  Read("构件,长\nKL1,\"1,5\"\n\n板 , 2,x\n");
  EXPECT_EQ(grid->GetColumnCount(), 3);
  EXPECT_EQ(Utf8(grid->GetColumnName(0)), "构件");
  EXPECT_EQ(Utf8(grid->GetColumnName(2)), "");
  EXPECT_EQ(grid->GetRowCount(), 3);
  EXPECT_EQ(Text(0, 1), "1,5");
  EXPECT_EQ(Text(2, 0), "板 ");
  EXPECT_EQ(Text(2, 1), " 2");
  EXPECT_EQ(Text(2, 2), "x");
  // Every cell can be typed in, those that the file lacks too.
  EXPECT_EQ(Text(0, 2), "");
  EXPECT_EQ(Text(1, 1), "");
  EXPECT_EQ(grid->GetItem(0, 0)->GetValue().vt, VT_BSTR);
}

// What was not changed is written as it was read, byte for byte.
TEST_F(EditedTables, UnchangedOnesAreWrittenAsTheyWere) {
  const std::string wide_le(
      "\xFF\xFE"
      "a\0,\0b\0\r\0\n\0\x99\x58,\0x\0\r\0\n\0",
      22);
  const std::string wide_be("\xFE\xFF\0a\0;\0b\0\n\x58\x99\0;\0x\0\n", 18);
  const std::string files[] = {
      "",
      "a,b\r\n1,2\r\n",
      "a;b\n1;2\n",
      "a\tb\r1\t2\r",
      "a,b\n\n1,2\n,\n",
      "a,b,c\n1\n1,2\n1,2,3\n1,2,3,4\n",
      "sep=;\r\na;\"b,c\"\r\n1;2\r\n",
      "sep=|\na|\"b,c\"\n1|2\n",
      "a,b\n\"1,5\",\"say \"\"x\"\"\"\n\"two\r\nlines\",\" blank \"\n",
      "墙,梁\n柱,板\n",
      "\xEF\xBB\xBF墙,梁\r\n柱,板\r\n",
      "\xC7\xBD,\xC1\xBA\r\n\xD6\xF9,1\r\n",
      wide_le,
      wide_be,
      "007,1.50,-0,1e3\n0.10,.5,5.,+1\n",
      "\"#x\",1\n\"#y\",2\n",
  };
  for (const std::string& file : files) {
    SCOPED_TRACE(file);
    Read(file);
    table->Write(*grid);
    EXPECT_EQ(Bytes(), file);
  }
}

// What means the same is written in one way.
TEST_F(EditedTables, QuotesAreWrittenWhereTheyAreNeeded) {
  const struct {
    const char* file;
    const char* written;
  } cases[] = {
      {"\"a\",b\n1,2", "a,b\n1,2\n"},
      {"a,b\n \"1\" ,2\n", "a,b\n1,2\n"},
      {"a,b\n 1 ,2\n", "a,b\n\" 1 \",2\n"},
      {"a,b\n1;5,2\n", "a,b\n\"1;5\",2\n"},
      {"a,b\r\n1,2\n3,4\r", "a,b\r\n1,2\r\n3,4\r\n"},
  };
  for (const auto& one : cases) {
    Read(one.file);
    table->Write(*grid);
    EXPECT_EQ(Bytes(), one.written) << one.file;
  }
}

TEST_F(EditedTables, ChangesAreWritten) {
  Read("a,b,c\n1,2,3\n4\n");
  grid->SetValue(0, 1, _variant_t(_T("墙,\"x\"")), FALSE);
  grid->SetValue(0, 2, _variant_t(2.5), FALSE);
  grid->SetValue(1, 2, _variant_t(_T("6")), FALSE);
  table->Write(*grid);
  EXPECT_EQ(Bytes(), "a,b,c\n1,\"墙,\"\"x\"\"\",2.5\n4,,6\n");
  grid->SetValue(1, 2, _variant_t(), FALSE);
  grid->InsertRows(1, 1);
  grid->AppendRows(1);
  grid->SetValue(3, 0, _variant_t(_T("new")), FALSE);
  table->Write(*grid);
  EXPECT_EQ(Bytes(), "a,b,c\n1,\"墙,\"\"x\"\"\",2.5\n,,\n4\nnew,,\n");
  grid->DeleteRows(0, 4);
  table->Write(*grid);
  EXPECT_EQ(Bytes(), "a,b,c\n");
}

// Code page 936 has no such character: the file becomes one that can hold it.
TEST_F(EditedTables, FilesOfTheCodePageBecomeUtf8AtNeed) {
  Read("\xC7\xBD,b\n\xD6\xF9,?\n");
  grid->SetValue(0, 1, _variant_t(_T("梁?")), FALSE);
  table->Write(*grid);
  EXPECT_EQ(Bytes(), "\xC7\xBD,b\n\xD6\xF9,\xC1\xBA?\n");
  grid->SetValue(0, 1, _variant_t(CString::FromUtf8("\xF0\x9F\x8F\xA0")), FALSE);
  table->Write(*grid);
  EXPECT_EQ(Bytes(), "\xEF\xBB\xBF墙,b\n柱,\xF0\x9F\x8F\xA0\n");
  EXPECT_EQ(table->Form().encoding, Encoding::kUtf8);
}

TEST_F(EditedTables, WhatIsNoTableIsRefused) {
  EXPECT_NE(Refusal("a,b\n1,\"2\n").find("line 2"), std::string::npos);
  EXPECT_NE(Refusal(std::string("a,b\n1,\0\n", 8)).find("zero character"), std::string::npos);
  EXPECT_NE(Refusal("PK\x03\x04").find("(read)"), 0U);
  CBCGPBasicGridCtrl fresh;
  EXPECT_THROW(EditedTable("-").Read(fresh, GoOn), BadInput);
  EXPECT_THROW(EditedTable(Path() + ".none").Read(fresh, GoOn), BadInput);
}

// One short row and one very wide one would need more cells than memory has.
TEST_F(EditedTables, WideRowsCountForAllRows) {
  std::string file = "a\n";
  const int rows = static_cast<int>(kMaxTableCells / 16000) + 1;
  for (int row = 0; row < rows; ++row) file += "1\n";
  EXPECT_EQ(Refusal(file), "(read)");
  file += std::string(15999, ',') + "\n";
  EXPECT_NE(Refusal(file).find("more than"), std::string::npos);
}

TEST_F(EditedTables, ReadingCanBeEnded) {
  std::string file = "a,b\n";
  for (int row = 0; row < 20000; ++row) file += "1,2\n";
  Put(file);
  CBCGPBasicGridCtrl fresh;
  EditedTable ended(Path());
  std::uint64_t last = 0;
  int calls = 0;
  EXPECT_FALSE(ended.Read(fresh, [&](std::uint64_t done, std::uint64_t size) {
    EXPECT_GE(done, last);
    EXPECT_LE(done, size);
    EXPECT_EQ(size, file.size());
    last = done;
    return ++calls < 3;
  }));
  EXPECT_EQ(calls, 3);
  EXPECT_LT(fresh.GetRowCount(), 20000);
}

// A file that cannot be written stays as it was, to the byte.
TEST_F(EditedTables, WrittenWholeOrNotAtAll) {
  Read("a,b\n1,2\n");
  grid->SetValue(0, 0, _variant_t(_T("9")), FALSE);
  const std::string name = Path();
  const std::filesystem::path path = std::u8string(name.begin(), name.end());
  const auto folder = path.parent_path();
  std::filesystem::permissions(path, std::filesystem::perms::owner_read);
  EXPECT_THROW(table->Write(*grid), BadInput);
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  EXPECT_EQ(Bytes(), "a,b\n1,2\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  table->Write(*grid);
  EXPECT_EQ(Bytes(), "a,b\n9,2\n");
}

// Random tables through a file of random form and back.
TEST_F(EditedTables, RandomOnesComeBack) {
  std::mt19937 random(1);
  const auto below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
  const std::string pieces[] = {"a",  "1.5", "板", ",", ";",    "\t",   "\"",
                                "\n", "\r",  " ",  "#", "sep=", "梁KL1"};
  const Encoding encodings[] = {Encoding::kUtf8, Encoding::kUtf16Little, Encoding::kUtf16Big, Encoding::kGbk};
  for (int round = 0; round < 300; ++round) {
    // The two characters have no code that could be taken for UTF-8.
    CsvForm form;
    form.encoding = encodings[below(4)];
    form.has_mark = form.encoding != Encoding::kGbk;
    form.separator = ",;\t|"[below(4)];
    form.names_separator = true;
    form.line_end = below(2) == 0 ? "\n" : "\r\n";
    TableText text(form);
    std::string file = text.Head();
    std::vector<std::vector<std::string>> rows(1 + below(6));
    for (auto& row : rows) {
      row.resize(1 + below(4));
      for (std::string& cell : row) {
        for (std::size_t i = below(4); i > 0; --i) cell += pieces[below(std::size(pieces))];
        text.Line().Add(cell);
      }
      file += text.TakeRow();
    }
    ASSERT_TRUE(text.IsWhole());
    Read(file);
    ASSERT_EQ(grid->GetRowCount(), static_cast<int>(rows.size()) - 1);
    for (std::size_t row = 1; row < rows.size(); ++row)
      for (std::size_t cell = 0; cell < rows[row].size(); ++cell)
        ASSERT_EQ(Text(static_cast<int>(row) - 1, static_cast<int>(cell)), rows[row][cell]);
    table->Write(*grid);
    ASSERT_EQ(Bytes(), file);
  }
}

TEST(TableTexts, AreWrittenAsTheFormSays) {
  TableText text({Encoding::kUtf8, false, ';', false, "\n"});
  text.Line().Add("a;b").Add("c");
  EXPECT_EQ(text.TakeRow(), "\"a;b\";c\n");
  EXPECT_EQ(text.Head(), "");
  TableText usual({});
  usual.Line().Add("墙");
  EXPECT_EQ(usual.TakeRow(), "墙\r\n");
}

TEST(GridExchange, AnswersForTheGrid) {
  CBCGPBasicGridCtrl grid;
  GridExchange exchange(grid);
  exchange.AddColumn(80);
  exchange.AddColumn(60);
  exchange.AutoSizeLastColumn();
  exchange.AddRow();
  exchange.AddRow();
  exchange.SetValue(1, 1, _variant_t(_T("x")));
  EXPECT_EQ(exchange.RowCount(), 2);
  EXPECT_EQ(exchange.ColumnCount(), 2);
  EXPECT_EQ(exchange.Value(1, 1), _variant_t(_T("x")));
  EXPECT_EQ(grid.GetColumnWidth(1), 60);
  EXPECT_TRUE(grid.GetColumnsInfo().GetColumnWidthAutoSize(1));
  EXPECT_TRUE(exchange.IsColumnVisible(0));
  grid.SetColumnVisible(0, FALSE);
  EXPECT_FALSE(exchange.IsColumnVisible(0));
  exchange.MergeRange({0, 0, 1, 1});
  CList<CBCGPGridRange> merged;
  exchange.UnionCells(merged);
  ASSERT_EQ(merged.GetCount(), 1);
  EXPECT_EQ(merged.GetHead(), CBCGPGridRange(0, 0, 1, 1));
  exchange.LockRedraw();
  exchange.LockRedraw();
  exchange.UnlockRedraw();
  exchange.UnlockRedraw();
  exchange.RemoveAll();
  EXPECT_EQ(exchange.RowCount(), 0);
}

}  // namespace
}  // namespace lorv::tool
