#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "spreadsheet/workbook_file.h"
#include "tests/support/data.h"
#include "tests/tools/run_tool.h"
#include "tools/lorv/csv/workbook_words.h"
#include "tools/lorv/language/messages_table.h"
#include "tools/lorv/language/spoken_language.h"

namespace lorv::test {
namespace {

// The Chinese literals of a source, each a part of some message; how many there are.
int CheckTexts(const std::string& source) {
  const auto messages = tool::Messages();
  int count = 0;
  for (std::size_t at = source.find("_T(\""); at != std::string::npos; at = source.find("_T(\"", at + 4)) {
    const std::string text = source.substr(at + 4, source.find("\")", at) - at - 4);
    if (static_cast<unsigned char>(text[0]) < 0x80) continue;
    ++count;
    EXPECT_TRUE(std::any_of(messages.begin(), messages.end(), [&](const tool::Message& message) {
      std::string chinese(message.chinese);
      for (std::size_t slash = 0; (slash = chinese.find('\\', slash)) != std::string::npos; slash += 2)
        chinese.insert(slash, 1, '\\');
      return chinese.find(text) != std::string::npos;
    })) << text;
  }
  return count;
}

class SheetVerb : public testing::Test {
 protected:
  std::string Path(const char* name) const { return (scratch_.Path() / name).string(); }
  void Put(const char* name, const std::string& bytes) const { WriteBytes(scratch_.Path() / name, bytes); }
  std::string Bytes(const char* name) const { return ReadBytes(scratch_.Path() / name); }

 private:
  ScratchFolder scratch_;
};

TEST_F(SheetVerb, ATableBecomesAWorkbookAndComesBack) {
  Put("t.csv", "名称,长\n墙,12.50\n007,\"a, b\"\n");
  const ToolRun made = RunTool({"sheet", Path("t.csv"), "--out", Path("t.xlsx"), "--sheet", "清单"});
  EXPECT_EQ(made.code, 0) << made.err;
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx")}).out, "1\t清单\t3 x 2\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "--sheet", "1"}).out,
            "名称,长\r\n墙,12.50\r\n007,\"a, b\"\r\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "--sheet", "清单", "--out", Path("b.csv")}).code, 0);
  EXPECT_EQ(Bytes("b.csv"), "名称,长\r\n墙,12.50\r\n007,\"a, b\"\r\n");
}

TEST_F(SheetVerb, NumbersBecomeNumbersAndTextsStayTexts) {
  const std::string table = "a,b\r\n12.50,-3\r\n007,1e3\r\n0.5,0\r\n.5,5.\r\n1234567890123456,-\r\n";
  Put("t.csv", table);
  ASSERT_EQ(RunTool({"sheet", Path("t.csv"), "--out", Path("t.xlsx")}).code, 0);
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "-s", "1"}).out, table);
  const WorkbookFile book(CString::FromUtf8(Path("t.xlsx")));
  EXPECT_EQ(book.RowTexts(0, 1)[0].ToUtf8(), "12.5") << "a number with two decimals shown";
  EXPECT_EQ(book.RowTexts(0, 2)[0].ToUtf8(), "007");
}

// A path of Windows as JSON has it.
std::string WithSlashesDoubled(const std::string& path) {
  std::string text;
  for (const char c : path) text.append(c == '\\' ? 2 : 1, c);
  return text;
}

// A number is the place of a sheet unless one is called so.
TEST_F(SheetVerb, NamesOfSheetsComeBeforeTheirNumbers) {
  WorkbookFile book;
  for (const TCHAR* name : {_T("a"), _T("b"), _T("2")})
    book.Put(book.AddSheet(name), 0, 0, _variant_t(name), {});
  Put("t.xlsx", book.Bytes());
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "-s", "2"}).out, "2\r\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "-s", "1"}).out, "a\r\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "-s", "b"}).out, "b\r\n");
}

TEST_F(SheetVerb, JsonHoldsSheetsCellsAndWhatWasWritten) {
  Put("t.csv", "a,\"b\"\"c\"\n1,\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.csv"), "-o", Path("t.xlsx"), "-s", "墙", "-j"}).out,
            "{\n  \"file\": \"" + WithSlashesDoubled(Path("t.xlsx")) +
                "\",\n  \"rows\": 2,\n  \"columns\": 2\n}\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "--json"}).out,
            "{\n  \"sheets\": [\n    {\n      \"number\": 1,\n      \"name\": \"墙\",\n      \"rows\": 2,\n"
            "      \"columns\": 2\n    }\n  ]\n}\n");
  const ToolRun cells = RunTool({"sheet", Path("t.xlsx"), "-s", "1", "-j"});
  EXPECT_EQ(cells.out,
            "{\n  \"name\": \"墙\",\n  \"cells\": [\n    [\n      \"a\",\n      \"b\\\"c\"\n    ],\n    [\n"
            "      \"1\",\n      \"\"\n    ]\n  ]\n}\n");
  EXPECT_EQ(RunTool({"sheet", Path("t.csv"), "--out", "-", "--json"}).code, 2);
}

TEST_F(SheetVerb, ReadsStandardInputAndWritesStandardOutput) {
  const ToolRun made = RunTool({"sheet", "-", "--out", Path("t.xlsx")}, "a,b\n");
  EXPECT_EQ(made.code, 0) << made.err;
  EXPECT_EQ(RunTool({"sheet", Path("t.xlsx"), "--out", "-"}).out, "a,b\r\n");
}

// What stood there is kept until the new file is whole.
TEST_F(SheetVerb, AFileIsReplacedAsAWhole) {
  Put("t.csv", "a\n");
  Put("kept.xlsx", "before");
  EXPECT_EQ(RunTool({"sheet", Path("t.csv"), "--out", Path("kept.xlsx"), "--sheet", "a/b"}).code, 2);
  EXPECT_EQ(Bytes("kept.xlsx"), "before");
  EXPECT_EQ(RunTool({"sheet", Path("t.csv"), "--out", Path("t.csv")}).code, 0) << "onto itself";
  EXPECT_EQ(Bytes("t.csv"), "a\r\n");
}

TEST_F(SheetVerb, WhatCannotBeUsedIsReported) {
  Put("t.csv", "a\n");
  Put("bad.xlsx", "PK no archive");
  const ToolRun bad = RunTool({"sheet", Path("bad.xlsx")});
  EXPECT_EQ(bad.code, 2);
  EXPECT_EQ(bad.err, "lorv: \"" + Path("bad.xlsx") + "\": this is no workbook\n");
  EXPECT_EQ(RunTool({"sheet", Path("bad.xlsx"), "--lang", "zh"}).err,
            "lorv: \"" + Path("bad.xlsx") + "\": 文件不是有效的工作簿。\n");
  const ToolRun none = RunTool({"sheet", Path("none.xlsx")});
  EXPECT_EQ(none.code, 2);
  EXPECT_NE(none.err.find("there is no file “"), std::string::npos) << none.err;
  EXPECT_EQ(RunTool({"sheet", Path("t.csv"), "--sheet", "2"}).err, "lorv: there is no sheet \"2\"\n");
  const ToolRun named = RunTool({"sheet", Path("t.csv"), "--out", Path("n.xlsx"), "--sheet", "a/b"});
  EXPECT_EQ(named.code, 2);
  EXPECT_NE(named.err.find("“a/b” cannot be the name of a sheet"), std::string::npos) << named.err;
  EXPECT_EQ(Bytes("n.xlsx"), "");
}

// Every text of the library about workbooks has its English, so that none goes out in Chinese only.
// Text under the name of a workbook is what no program opens without a warning.
TEST_F(SheetVerb, NothingIsWrittenUnderTheNameOfAnotherWorkbook) {
  Put("t.csv", "a\n1\n");
  for (const char* const name : {"t.ods", "t.XLS", "t.xlsm", "t.xlsb"}) {
    const ToolRun run = RunTool({"sheet", Path("t.csv"), "--out", Path(name)});
    EXPECT_EQ(run.code, 2) << name;
    EXPECT_NE(run.err.find("a workbook is written as .xlsx, a table as .csv"), std::string::npos) << run.err;
    EXPECT_FALSE(std::filesystem::exists(Path(name)));
  }
  EXPECT_EQ(RunTool({"sheet", Path("t.csv"), "--out", Path("ods")}).code, 0);
}

TEST(WorkbookWords, AllTextsOfTheLibraryAreKnown) {
  int checked = 0;
  for (const char* folder : {"spreadsheet/servers/engine", "spreadsheet/workbook_file.cpp"}) {
    std::vector<std::filesystem::path> files = {ProjectFolder() / folder};
    if (std::filesystem::is_directory(files[0])) {
      for (const auto& entry : std::filesystem::recursive_directory_iterator(files[0])) {
        if (entry.path().extension() == ".cpp") files.push_back(entry.path());
      }
      files.erase(files.begin());
    }
    for (const auto& file : files) checked += CheckTexts(ReadBytes(file));
  }
  EXPECT_GT(checked, 30);
}

TEST(WorkbookWords, HeaderExampleAndValues) {
  tool::SpeakLanguage(tool::Language::kEnglish);
  EXPECT_EQ(tool::WorkbookWords(_T("区域太大。")), "the area is too large");
  EXPECT_EQ(tool::WorkbookWords(CString::FromUtf8("工作表名称“墙 1”已经存在。")),
            "there is a sheet “墙 1” already");
  EXPECT_EQ(tool::WorkbookWords(_T("区域太大")), "区域太大") << "a text that is not known";
  EXPECT_EQ(tool::WorkbookWords(_T("")), "");
  tool::SpeakLanguage(tool::Language::kChinese);
  EXPECT_EQ(tool::WorkbookWords(_T("区域太大。")), "区域太大。");
  tool::SpeakLanguage(tool::Language::kEnglish);
}

}  // namespace
}  // namespace lorv::test
