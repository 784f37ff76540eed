#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "framework/text/utf8.h"
#include "platform/headless/services/headless_platform.h"
#include "spreadsheet/servers/engine/files/workbook_files.h"
#include "spreadsheet/servers/engine/objects/engine_system.h"
#include "tests/spreadsheet/open_exchange.h"
#include "tests/support/data.h"

// Workbooks of real users, read from beside the project.

namespace lorv {
namespace {

namespace fs = std::filesystem;
using test::RowsOf;
using test::Utf8;
using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

struct Loaded {
  int result = 0;
  std::vector<CXArrayDBToArray> tables;
  Texts names;
  Texts messages;
};

// By the exchange, from a file of the disk.
Loaded Load(const fs::path& file) {
  HeadlessPlatform machine;
  machine.files.Put(_T("C:\\in"), test::ReadBytes(file));
  const ScopedPlatform platform(machine.Ports());
  engine::EngineSystem engine;
  const ScopedSpreadsheet scope(engine);
  Loaded loaded;
  CStringArray names;
  CAdExcel2GridEx exchange;
  loaded.result = exchange.LoadExcel2(_T("C:\\in"), loaded.tables, names, 0);
  for (int i = 0; i < names.GetSize(); ++i) loaded.names.push_back(Utf8(names.GetAt(i)));
  for (const auto& message : machine.dialogs.messages) loaded.messages.push_back(Utf8(message.text));
  return loaded;
}

Rows ReadCsv(const fs::path& file) {
  HeadlessPlatform machine;
  machine.files.Put(_T("C:\\in"), test::ReadBytes(file));
  const ScopedPlatform platform(machine.Ports());
  const auto book = engine::ReadWorkbook(_T("C:\\in"));
  Rows rows;
  for (const auto& block : book->sheets[0]->cells.Blocks()) {
    for (const auto& cell : block) {
      rows.resize(std::max(rows.size(), static_cast<std::size_t>(cell.row()) + 1));
      Texts& row = rows[static_cast<std::size_t>(cell.row())];
      row.resize(std::max(row.size(), static_cast<std::size_t>(cell.column()) + 1));
      row[static_cast<std::size_t>(cell.column())] = Utf8(CString(book->texts.At(cell.text())));
    }
  }
  return rows;
}

std::optional<fs::path> Folder() {
  return test::FindData("spreadsheets");
}

TEST(DataFiles, SheetsHaveTheirNamesAndSizes) {
  const auto folder = Folder();
  if (!folder) return;
  const Rows info = ReadCsv(*folder / "INFO.csv");
  int read = 0;
  for (const Texts& row : info) {
    if (row.size() < 8 || row[1] != "xlsx") continue;
    const Loaded loaded = Load(*folder / row[0]);
    EXPECT_EQ(loaded.result, 1) << row[0];
    EXPECT_TRUE(loaded.messages.empty()) << row[0] << loaded.messages[0];
    std::string joined;
    for (const auto& name : loaded.names) joined += (joined.empty() ? "" : " | ") + name;
    EXPECT_EQ(joined, row[3]) << row[0];
    ++read;
  }
  EXPECT_GE(read, 15);
}

TEST(DataFiles, DamagedOnesAreRefusedWithAMessage) {
  const auto folder = Folder();
  if (!folder) return;
  for (const char* name :
       {"damaged_bad_crc.xlsx", "damaged_no_directory.xlsx", "cn_fasteners.xls", "biff5_numbers.xls"}) {
    const Loaded loaded = Load(*folder / name);
    EXPECT_EQ(loaded.result, 0) << name;
    EXPECT_EQ(loaded.messages.size(), 1U) << name;
    EXPECT_TRUE(loaded.tables.empty()) << name;
  }
}

// The shown text went through a narrow code page: what has no code there is "?".
std::string Narrowed(const std::string& text) {
  std::string narrow;
  for (const TCHAR c : Utf8ToText(text)) narrow += c < 0x80 ? static_cast<char>(c) : '?';
  return narrow;
}

bool HasNoDigit(const std::string& text) {
  return !text.empty() && text.find_first_of("0123456789#") == std::string::npos;
}

// Words are shown as they stand; numbers are shown by formats that the exchange knows in part only.
int ExpectSameWords(const Rows& rows, const Rows& shown, const std::string& what) {
  int compared = 0;
  for (std::size_t i = 0; i < std::min(rows.size(), shown.size()); ++i) {
    for (std::size_t j = 0; j < std::min(rows[i].size(), shown[i].size()); ++j) {
      if (!HasNoDigit(rows[i][j]) || shown[i][j] == "TRUE") continue;
      EXPECT_EQ(Narrowed(rows[i][j]), Narrowed(shown[i][j])) << what << " row " << i << " column " << j;
      ++compared;
    }
  }
  return compared;
}

TEST(DataFiles, WordsAreThoseThatTheProgramShows) {
  const auto folder = Folder();
  if (!folder) return;
  int compared = 0;
  for (const char* name : {"AverageTaxRates.xlsx", "DateFormatTests.xlsx", "merge_cells.xlsx"}) {
    const Loaded loaded = Load(*folder / name);
    const std::string shown = std::string(name) + ".sheet0.shown.csv";
    compared += ExpectSameWords(RowsOf(loaded.tables.at(0)), ReadCsv(*folder / shown), shown);
  }
  EXPECT_GT(compared, 20);
}

TEST(DataFiles, DatesOfBothSystems) {
  const auto folder = Folder();
  if (!folder) return;
  // Day 42735 since 1904, and a span of ten days and 15:10:10 that is shown as a time.
  const Loaded dates = Load(*folder / "date_1904.xlsx");
  ASSERT_EQ(dates.tables.size(), 1U);
  EXPECT_EQ(RowsOf(dates.tables[0]), (Rows{{"2021-1-1", "15"}, {"2021-1-2", "16"}, {"15:10:10", "17"}}));
  // Day 43085 since 1900, by a format of the user's and by one that the file names by number.
  const Loaded blanks = Load(*folder / "cn_blanks_and_dates.xlsx");
  ASSERT_EQ(blanks.tables.size(), 1U);
  const Rows rows = RowsOf(blanks.tables[0]);
  EXPECT_EQ(rows[0], (Texts{"1", "测试1", "1234.567", "2017-12-16", "1111", "2017-12-16"}));
  EXPECT_EQ(rows[1], (Texts{"2", "", "1235.567", "", "1112", "2017-12-17"}));
}

}  // namespace
}  // namespace lorv
