#include <algorithm>
#include <map>

#include "framework/text/surrogates.h"
#include "spreadsheet/servers/office/office_library.h"
#include "tests/spreadsheet/office/lent_office.h"
#include "tests/spreadsheet/office/office_desk.h"
#include "tests/spreadsheet/random_table.h"

// Workbooks of real users, from beside the project: every cell, merged area and sheet name by the engine as
// by a real office, one for all files.

namespace lorv {
namespace {

namespace fs = std::filesystem;
using test::LoadedBook;
using test::Rows;
using Texts = std::vector<std::string>;

std::unique_ptr<office::OfficeBridge> shared_office;

class OfficeData : public test::OfficeDesk {
 protected:
  static void SetUpTestSuite() { shared_office = office::StartOffice(); }
  static void TearDownTestSuite() { shared_office.reset(); }

  static Texts FilesOf(const fs::path& in, std::initializer_list<const char*> ends) {
    Texts names;
    for (const auto& entry : fs::directory_iterator(in)) {
      const std::string end = entry.path().extension().string();
      const std::string name = entry.path().filename().string();
      if (name.starts_with("damaged")) continue;
      if (std::find(ends.begin(), ends.end(), end) != ends.end()) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  LoadedBook ByOffice(const fs::path& file) { return Load(lent, CString::FromUtf8(file.string())); }
  LoadedBook ByEngine(const fs::path& file) { return Load(engine, CString::FromUtf8(file.string())); }

  // Names of sheets and the count of merged areas, as the list of the files has them.
  struct Facts {
    std::string sheets;
    long merges = 0;
  };
  std::map<std::string, Facts> ListedFacts(const fs::path& in) {
    std::map<std::string, Facts> facts;
    const LoadedBook list = ByEngine(in / "INFO.csv");
    for (const Texts& row : list.sheets.at(0)) {
      if (row.size() > 7) facts[row[0]] = {row[3], std::strtol(row[7].c_str(), nullptr, 10)};
    }
    return facts;
  }
  // Of all sheets, whatever an exchange would read.
  static long MergesOf(const fs::path& file) {
    test::LentOffice office(*shared_office);
    const auto book = office.OpenBook(office::Text(CString::FromUtf8(file.string()).View()), true);
    long count = 0;
    for (long at = 0; at < book->SheetCount(); ++at) {
      count += static_cast<long>(book->Sheet(at)->MergedAreas().size());
    }
    return count;
  }

  office::OfficeSystem lent{Program::kExcel,
                            [] { return std::make_unique<test::LentOffice>(*shared_office); }};
};

std::string Joined(const Texts& names) {
  std::string joined;
  for (const auto& name : names) joined += (joined.empty() ? "" : " | ") + name;
  return joined;
}

// The texts that differ, "row,column: one / other"; the first ones of very many.
Texts Differences(const Rows& one, const Rows& other) {
  constexpr std::size_t kMost = 400;
  if (one.size() != other.size()) {
    return {std::to_string(one.size()) + " rows / " + std::to_string(other.size())};
  }
  Texts found;
  for (std::size_t i = 0; i < one.size() && found.size() < kMost; ++i) {
    if (one[i].size() != other[i].size()) return {"columns of row " + std::to_string(i)};
    for (std::size_t j = 0; j < one[i].size(); ++j) {
      if (one[i][j] == other[i][j]) continue;
      found.push_back(std::to_string(i) + "," + std::to_string(j) + ": " + one[i][j] + " / " + other[i][j]);
    }
  }
  return found;
}

Texts Differences(const LoadedBook& one, const LoadedBook& other) {
  if (one.names != other.names) return {Joined(one.names) + " / " + Joined(other.names)};
  Texts found;
  for (std::size_t i = 0; i < one.sheets.size(); ++i) {
    for (const auto& each : Differences(one.sheets[i], other.sheets[i])) {
      found.push_back(one.names[i] + " " + each);
    }
  }
  if (one.ranges != other.ranges) found.emplace_back("merged areas");
  return found;
}

// The two formats that this file names by number alone are times of day to the programs of its users, as the
// words beside them say, and dates to an office that was started in English.
Texts KnownDifferences(const std::string& name) {
  if (name != "cn_formats.xlsx") return {};
  return {"Sheet1 23,0: 1:1:1 / 2020-1-1", "Sheet1 24,0: 1:1:1 / 2020-1-1"};
}

// Formulas of this file take areas by names that they put together, which the office works anew and cannot;
// the file holds what its own program has calculated.
constexpr const char* kUnknownFormulas = "cn_payroll_12_months.xlsx";
bool IsUnknownToTheOffice(const std::string& difference) {
  return difference.ends_with(" / ");
}

TEST_F(OfficeData, TheEngineReadsWhatTheOfficeShows) {
  const auto in = test::FindData("spreadsheets");
  if (!in) return;
  auto facts = ListedFacts(*in);
  int read = 0;
  for (const auto& name : FilesOf(*in, {".xlsx"})) {
    const LoadedBook by_engine = ByEngine(*in / name);
    EXPECT_EQ(by_engine.result, 1) << name;
    Texts differences = Differences(by_engine, ByOffice(*in / name));
    if (name == kUnknownFormulas) {
      EXPECT_GT(std::erase_if(differences, IsUnknownToTheOffice), 40U);
    }
    EXPECT_EQ(differences, KnownDifferences(name)) << name;
    EXPECT_EQ(Joined(by_engine.names), facts[name].sheets) << name;
    EXPECT_EQ(MergesOf(*in / name), facts[name].merges) << name;
    ++read;
  }
  EXPECT_GE(read, 16);
  EXPECT_EQ(Messages(), Texts{});
}

struct Place {
  const char* file;
  std::size_t sheet;
  std::size_t row;
  std::size_t column;
};

// Of each kind of value a cell, as the files themselves have it.
const std::pair<Place, std::string> kShown[] = {
    {{"56_MixedDateFormats.ods", 0, 4, 1}, "2025-12-31"},
    {{"DateFormats.xls", 0, 4, 0}, "UK date"},
    {{"DateFormats.xls", 0, 4, 1}, "2007-8-10"},
    {{"biff5_numbers.xls", 0, 3, 4}, "Formatted"},
    {{"biff5_numbers.xls", 0, 6, 4}, "155.00%"},
    {{"biff5_numbers.xls", 0, 18, 4}, "$1960.00"},
    {{"cn_fasteners.xls", 0, 1, 0}, "材质*"},
    {{"cn_fasteners.xls", 0, 2, 9}, "通润春（TRC）"},
    {{"cn_school.xls", 0, 2, 3}, "44.66"},
    {{"cn_school.xls", 1, 7, 2}, "第二小学"},
    {{"cn_school.xls", 1, 1, 3}, "2017-3-2"},
    {{"cn_school.xls", 1, 1, 4}, "12:32:12"},
    {{"currency_percent.ods", 0, 1, 0}, "10.00%"},
    {{"currency_percent.ods", 0, 3, 2}, "$10.12"},
    {{"currency_percent.ods", 0, 7, 0}, "This has    4 spaces before and 2 after  "},
    {{"currency_percent.ods", 1, 0, 0}, "Data on second sheet"},
    {{"merged_cells.ods", 0, 2, 0}, ""},
    {{"merged_cells.ods", 0, 2, 2}, "C"},
    {{"number_rows_repeated.ods", 2, 4, 0}, ""},
    {{"number_rows_repeated.ods", 2, 7, 1}, "D"},
};

// What only an office reads: the list of the files knows their sheets.
TEST_F(OfficeData, FilesThatOnlyAnOfficeReads) {
  const auto in = test::FindData("spreadsheets");
  if (!in) return;
  auto facts = ListedFacts(*in);
  int read = 0;
  for (const auto& name : FilesOf(*in, {".xls", ".ods"})) {
    const LoadedBook by_office = ByOffice(*in / name);
    EXPECT_EQ(by_office.result, 1) << name;
    EXPECT_EQ(Joined(by_office.names), facts[name].sheets) << name;
    EXPECT_EQ(MergesOf(*in / name), facts[name].merges) << name;
    for (const auto& [at, text] : kShown) {
      if (at.file != name) continue;
      EXPECT_EQ(by_office.sheets.at(at.sheet).at(at.row).at(at.column), text)
          << name << at.row << "," << at.column;
    }
    ++read;
  }
  EXPECT_GE(read, 12);
  EXPECT_EQ(Messages(), Texts{});
}

TEST_F(OfficeData, OneTableInBothKindsOfFiles) {
  const auto in = test::FindData("spreadsheets");
  if (!in) return;
  // Four words of the old file were written with another sign of money.
  EXPECT_EQ(Differences(ByOffice(*in / "cn_formats.xls"), ByOffice(*in / "cn_formats.xlsx")),
            (Texts{"Sheet1 3,5: ¥1.11 / ￥1.11", "Sheet1 3,6: ¥1.11 / ￥1.11", "Sheet1 4,5: ¥1 / ￥1",
                   "Sheet1 4,6: ¥1 / ￥1"}));
}

bool IsControl(TCHAR c) {
  return (c < _T(' ') && c != _T('\n') && c != _T('\r')) || c >= 0xFFFE;
}

// Half characters cannot be told to an office, and an .ods file has no controls. Takes the texts that are
// refused out of a table; whether there were any.
bool TakeRefused(CXArrayDBToArray& table, bool is_ods) {
  bool any = false;
  for (int row = 0; row < table.GetRowCount(); ++row) {
    for (int column = 0; column < table.GetColCount(); ++column) {
      const CString text = VariantToText(table.GetValue(row, column));
      const bool controls = std::any_of(text.View().begin(), text.View().end(), IsControl);
      if (!HasLoneHalf(text.View()) && !(is_ods && controls)) continue;
      any = true;
      table.SetValue(row, column, _variant_t(_T("taken")));
    }
  }
  return any;
}

// In cells of an office lines end with a line feed alone.
Rows WithPlainLines(Rows rows) {
  for (auto& row : rows) {
    for (auto& text : row) {
      for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.erase(at, 1);
    }
  }
  return rows;
}

// Every table is sent as it is, and where that is refused once more without what was: nothing is lost without
// a word.
TEST_F(OfficeData, RandomTablesComeBack) {
  std::mt19937 random(7121);
  const ScopedSpreadsheet scope(lent);
  const char* const files[] = {"t.xlsx", "t.xls", "t.ods"};
  int refused = 0;
  for (int round = 0; round < 30; ++round) {
    const char* const name = files[round % 3];
    CXArrayDBToArray table = test::RandomTable(random, round < 3 ? 32767 : 1);
    test::OpenExchange out;
    out.SetArray(table);
    const auto save = [&] { return out.ToExcel(PathOf(name), true, false, 1, 1, false, CString(), 0, 0); };
    if (TakeRefused(table, round % 3 == 2)) {
      machine.dialogs.messages.clear();
      EXPECT_FALSE(save()) << name;
      EXPECT_EQ(Messages().size(), 1U) << name;
      EXPECT_NE(Messages().at(0).find("字符"), std::string::npos) << Messages().at(0);
      machine.dialogs.messages.clear();
      out.SetArray(table);
      ++refused;
    }
    EXPECT_TRUE(save()) << name;
    EXPECT_EQ(
        Differences(ByOffice(folder.Path() / name).sheets.at(0), WithPlainLines(test::ShownRows(table))),
        Texts{})
        << name << round;
    EXPECT_EQ(Messages(), Texts{});
  }
  EXPECT_GT(refused, 5);
  EXPECT_LT(refused, 40);
}

TEST_F(OfficeData, DamagedFilesAreReported) {
  const auto in = test::FindData("spreadsheets");
  if (!in) return;
  for (const char* name : {"damaged_no_directory.xlsx", "damaged_too_small.xls"}) {
    machine.dialogs.messages.clear();
    EXPECT_EQ(ByOffice(*in / name).result, 0) << name;
    EXPECT_EQ(Messages().size(), 1U) << name;
  }
}

}  // namespace
}  // namespace lorv
