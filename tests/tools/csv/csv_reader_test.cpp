#include "tools/lorv/csv/csv_reader.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "tests/support/data.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/csv/csv_limits.h"
#include "tools/lorv/csv/csv_writer.h"
#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/language/spoken_language.h"

namespace lorv::tool {
namespace {

using Rows = std::vector<std::vector<std::string>>;

Rows Read(const std::string& file, Encoding encoding = Encoding::kAuto, bool comments = false) {
  std::istringstream in(file);
  InputBytes bytes("-", in);
  CsvReader reader(bytes, encoding, comments);
  Rows rows;
  for (CsvRow row; reader.Next(row);) {
    rows.emplace_back();
    for (std::size_t i = 0; i < row.Size(); ++i) rows.back().emplace_back(row[i]);
  }
  return rows;
}

std::string Refusal(const std::string& file, Encoding encoding = Encoding::kAuto) {
  // A program that ran before may have spoken another one.
  SpeakLanguage(Language::kEnglish);
  try {
    Read(file, encoding);
  } catch (const BadInput& wrong) {
    return wrong.what();
  }
  return "(read)";
}

TEST(CsvReader, ReadsWhatSpreadsheetsWrite) {
  const struct {
    const char* file;
    Rows rows;
  } cases[] = {
      {"", {}},
      {"a,b\n1,2\n", {{"a", "b"}, {"1", "2"}}},
      {"a,b\r\n1,2", {{"a", "b"}, {"1", "2"}}},
      {"a,b\r1,2\r", {{"a", "b"}, {"1", "2"}}},
      {"a;b\n1,5;2\n", {{"a", "b"}, {"1,5", "2"}}},
      {"a\tb\n1\t\n", {{"a", "b"}, {"1", ""}}},
      {"sep=;\na;b,c,d,e\n", {{"a", "b,c,d,e"}}},
      {"\"a,b\",\"say \"\"x\"\"\",\"two\nlines\"\n", {{"a,b", "say \"x\"", "two\nlines"}}},
      {"\"\",x\n", {{"", "x"}}},
      {" a , \"b\" ,c \n", {{"a", "b", "c"}}},
      {"12\" pipe,2'\n", {{"12\" pipe", "2'"}}},
      {"a,b\n\n , \n1,2\n", {{"a", "b"}, {"1", "2"}}},
      {"墙,梁\n柱,板\n", {{"墙", "梁"}, {"柱", "板"}}},
      {",\n#,1\n", {{"#", "1"}}},
  };
  for (const auto& one : cases) EXPECT_EQ(Read(one.file), one.rows) << one.file;
}

TEST(CsvReader, RemarksAreProse) {
  EXPECT_EQ(Read("# the \"first, one\na,b\n#x\n1,#2\n", Encoding::kAuto, true),
            (Rows{{"a", "b"}, {"1", "#2"}}));
}

TEST(CsvReader, RecognisesEncodings) {
  const Rows wanted{{"墙", "é"}};
  EXPECT_EQ(Read("\xEF\xBB\xBF墙,é\n"), wanted);
  EXPECT_EQ(Read("墙,é\n"), wanted);
  EXPECT_EQ(Read("\xC7\xBD,\xA8\xA6\n"), wanted) << "GBK";
  EXPECT_EQ(Read(std::string("\xFF\xFE\x99\x58,\0\xE9\0\n\0", 10)), wanted);
  EXPECT_EQ(Read(std::string("\xFE\xFF\x58\x99\0,\0\xE9\0\n", 10)), wanted);
  EXPECT_EQ(Read(std::string("a\0,\0\x99\x58", 6)), (Rows{{"a", "墙"}})) << "UTF-16 without a mark";
}

TEST(CsvReader, EncodingNamedIsTaken) {
  EXPECT_EQ(Read("\xC7\xBD\n", Encoding::kGbk), (Rows{{"墙"}}));
  EXPECT_NE(Refusal("a\n\xB3\xA4\n", Encoding::kUtf8).find("line 2: this is not UTF-8"), std::string::npos);
  EXPECT_EQ(EncodingByName("gbk"), Encoding::kGbk);
  EXPECT_THROW(EncodingByName("latin"), BadInput);
}

TEST(CsvReader, ReadsAcrossBlocks) {
  // Longer than several blocks, with Chinese text, CRLF and quotes at every possible place of a border.
  std::string file;
  Rows rows;
  for (int i = 0; i < 60000; ++i) {
    const std::string name = "墙" + std::string(static_cast<std::size_t>(i % 7), 'x');
    file += name + ",\"a\r\nb\"," + std::to_string(i) + "\r\n";
    rows.push_back({name, "a\r\nb", std::to_string(i)});
  }
  EXPECT_EQ(Read(file), rows);
}

TEST(CsvReader, SaysWhereAFileIsDamaged) {
  const struct {
    const char* file;
    const char* message;
  } cases[] = {
      {"a,b\n1,\"2\n3,4\n", "standard input, line 2, column 3: the quote that opens here is never closed"},
      {"a,b\n\"1\"x,2\n",
       "standard input, line 2, column 4: text behind a closing quote; a quote inside a quoted cell is "
       "written "
       "twice"},
      {"墙,b\n墙墙,\"x", "standard input, line 2, column 4: the quote that opens here is never closed"},
  };
  for (const auto& one : cases) EXPECT_EQ(Refusal(one.file), one.message) << one.file;
  EXPECT_EQ(Refusal(std::string("abc,d\n1\0,2\n", 11)),
            "standard input, line 2, column 2: a zero character: this is no text file");
  EXPECT_NE(Refusal(std::string("\xFF\xFE\x99\x58\x99", 5)).find("in the middle of a UTF-16"),
            std::string::npos);
  EXPECT_NE(Refusal("a\n\xFF\xFF\xFF\n").find("neither UTF-8 nor GBK"), std::string::npos);
}

TEST(CsvReader, CellLimit) {
  EXPECT_EQ(Read(std::string(kMaxCsvCell - 1, 'x'))[0][0].size(), kMaxCsvCell - 1);
  EXPECT_EQ(Read(std::string(kMaxCsvCell, 'x'))[0][0].size(), kMaxCsvCell);
  EXPECT_NE(Refusal(std::string(kMaxCsvCell + 1, 'x')).find("a cell of more than"), std::string::npos);
}

TEST(CsvReader, CellsInARowLimit) {
  EXPECT_EQ(Read("a" + std::string(kMaxCsvCells - 2, ','))[0].size(), kMaxCsvCells - 1);
  EXPECT_EQ(Read("a" + std::string(kMaxCsvCells - 1, ','))[0].size(), kMaxCsvCells);
  EXPECT_NE(Refusal("a" + std::string(kMaxCsvCells, ',')).find("a row of more than"), std::string::npos);
}

TEST(CsvReader, LineLimitStopsWhatIsNoTable) {
  EXPECT_NE(Refusal(std::string(kMaxCsvLine + (1 << 19), 'x')).find("a line of more than"),
            std::string::npos);
}

TEST(CsvWriter, HeaderExample) {
  CsvLine line;
  line.Add("L, m").Add("2");
  EXPECT_EQ(line.Take(), "\"L, m\",2\r\n");
}

TEST(CsvWriter, WhatIsWrittenReadsBack) {
  const std::vector<std::string> cells = {"a",          "",   "b,c", "say \"x\"", " blank ",
                                          "two\nlines", "#1", "a;b", "墙\t"};
  CsvLine line;
  for (const std::string& cell : cells) line.Add(cell);
  EXPECT_EQ(Read(line.Take(), Encoding::kAuto, true), Rows{cells});
}

TEST(OutputFile, AppearsWholeOrNotAtAll) {
  const test::ScratchFolder folder;
  const auto path = folder.Path() / "out.csv";
  const std::u8string u8 = path.u8string();
  const std::string name(u8.begin(), u8.end());
  test::WriteBytes(path, "before");
  {
    OutputFile out(name, std::cout);
    out.Write("after");
    EXPECT_EQ(test::ReadBytes(path), "before");
  }
  EXPECT_EQ(test::ReadBytes(path), "before");
  const auto files = [&] { return std::distance(std::filesystem::directory_iterator(folder.Path()), {}); };
  EXPECT_EQ(files(), 1) << "what was not committed is gone";
  OutputFile out(name, std::cout);
  out.Write("after");
  out.Commit();
  EXPECT_EQ(test::ReadBytes(path), "after");
  EXPECT_EQ(files(), 1);
}

TEST(OutputFile, RefusesFoldersAndMissingFolders) {
  const test::ScratchFolder folder;
  EXPECT_THROW(OutputFile(folder.Path().string(), std::cout), BadInput);
  EXPECT_THROW(OutputFile((folder.Path() / "no" / "out.csv").string(), std::cout), BadInput);
}

}  // namespace
}  // namespace lorv::tool
