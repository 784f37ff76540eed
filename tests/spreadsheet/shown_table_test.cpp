#include "spreadsheet/exchange/shown_table.h"

#include <gtest/gtest.h>

#include <random>

#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/objects/engine_object.h"
#include "tests/spreadsheet/exchange_desk.h"

// Sheets of the engine are read without calls. A recording in front of it stands in the way of that, so that
// each sheet here is read by both ways, which must not differ in anything.

namespace lorv {
namespace {

using engine::Area;
using engine::Book;
using engine::Sheet;
using test::Utf8;

constexpr LPCTSTR kFormats[] = {
    _T("General"), _T("0"),       _T("0.00_ "),    _T("0.00%"),   _T("0%"),   _T("$#,##0.0"),
    _T("Y0.000"),  _T("h:mm:ss"), _T("yyyy/m/d"),  _T("0_ "),     _T("0.##"), _T("0.00E+00"),
    _T("@"),       _T("#.##"),    _T("0.0000000"), _T("mm:ss.0"), _T("%"),    _T("0.00;m")};

_variant_t RandomNumber(std::mt19937& random) {
  static constexpr double kOdd[] = {0,    -0.0,    0.005,   0.125,   2.675,          -1.5,
                                    1e15, 1e21,    -1e300,  4e-320,  0.05,           45358,
                                    -1,   2958465, 2958466, 1.0 / 3, 4398046511104.5};
  const auto which = static_cast<std::size_t>(random() % (std::size(kOdd) * 2));
  if (which < std::size(kOdd)) return {kOdd[which]};
  return {static_cast<double>(static_cast<int>(random())) / 4096};
}

_variant_t RandomValue(std::mt19937& random) {
  static constexpr LPCTSTR kTexts[] = {_T("墙"), _T("007"), _T(" x "), _T("a\nb"), _T("\xD800")};
  switch (random() % 10) {
    case 0:
      return {};
    case 1:
      return {random() % 2 == 0};
    case 2:
      return {long{DISP_E_PARAMNOTFOUND}, VT_ERROR};
    case 3:
      return {static_cast<double>(random() % 3000000) + 0.25, VT_DATE};
    case 4:
    case 5:
      return _variant_t(kTexts[random() % std::size(kTexts)]);
    default:
      return RandomNumber(random);
  }
}

// Cells, looks without values and gaps, down to the row and column of the area's end.
void FillAtRandom(Book& book, Sheet& sheet, const Area& within, std::mt19937& random) {
  for (long row = within.top; row <= within.bottom; ++row) {
    for (long column = within.left; column <= within.right; ++column) {
      if (random() % 4 == 0) continue;
      engine::CellStyle style;
      style.format = book.styles.FormatId(kFormats[random() % std::size(kFormats)]);
      if (random() % 3 != 0) engine::PutStyle(book, sheet, row, column, style);
      if (random() % 6 != 0) engine::PutCellValue(book, sheet, row, column, RandomValue(random));
    }
  }
}

long Between(std::mt19937& random, long low, long high) {
  return low + static_cast<long>(random() % static_cast<unsigned>(high - low + 1));
}

Area RandomArea(const Area& within, std::mt19937& random) {
  const long top = Between(random, within.top, within.bottom);
  const long left = Between(random, within.left, within.right);
  return {top, left, Between(random, top, within.bottom), Between(random, left, within.right)};
}

class ShownSheets : public test::ExchangeDesk, public testing::WithParamInterface<Program> {
 protected:
  struct Outcome {
    bool result = false;
    CXArrayDBToArray table;
    std::vector<CBCGPGridRange> ranges;
    std::vector<std::string> messages;
  };

  ShownSheets() : ExchangeDesk(GetParam()) {}

  Outcome Read() {
    machine.dialogs.messages.clear();
    test::OpenExchange in;
    in.GetArrayForWrite().ReDim(1, 1);
    Outcome outcome;
    outcome.result = in.FromExcel();
    outcome.table = in.GetArray();
    const auto& ranges = in.GetRanges();
    for (POSITION at = ranges.GetHeadPosition(); at != nullptr;) outcome.ranges.push_back(ranges.GetNext(at));
    outcome.messages = Messages();
    return outcome;
  }

  // The marked area by both ways.
  void ExpectTheSame() {
    record.lines.clear();
    const Outcome by_calls = Read();
    ASSERT_GT(record.lines.size(), 5U);
    const ScopedSpreadsheet plain(engine);
    record.lines.clear();
    const Outcome shown = Read();
    ASSERT_TRUE(record.lines.empty());
    EXPECT_EQ(shown.result, by_calls.result);
    EXPECT_EQ(shown.messages, by_calls.messages);
    EXPECT_EQ(shown.ranges, by_calls.ranges);
    ExpectSameTables(shown.table, by_calls.table);
  }

  static void ExpectSameTables(const CXArrayDBToArray& shown, const CXArrayDBToArray& by_calls) {
    ASSERT_EQ(shown.GetRowCount(), by_calls.GetRowCount());
    ASSERT_EQ(shown.GetColCount(), by_calls.GetColCount());
    for (int row = 0; row < shown.GetRowCount(); ++row) {
      for (int column = 0; column < shown.GetColCount(); ++column) {
        ASSERT_TRUE(shown.GetValue(row, column) == by_calls.GetValue(row, column))
            << row << " " << column << ": " << Utf8(VariantToText(shown.GetValue(row, column))) << " and "
            << Utf8(VariantToText(by_calls.GetValue(row, column)));
      }
    }
  }
};

INSTANTIATE_TEST_SUITE_P(BothPrograms, ShownSheets, testing::Values(Program::kExcel, Program::kEt),
                         [](const auto& each) { return each.param == Program::kExcel ? "Excel" : "Et"; });

TEST_P(ShownSheets, AreReadAsByCalls) {
  std::mt19937 random(GetParam() == Program::kExcel ? 71 : 72);
  for (int round = 0; round < 60; ++round) {
    const auto book = OpenedBook();
    Sheet& sheet = *book->sheets[0];
    book->dates_of_1904 = round % 3 == 0;
    // In a corner of the sheet, or somewhere in it.
    const long top = round % 4 == 0 ? engine::kMaxRows - 12 : Between(random, 0, 5);
    const long left = round % 4 == 1 ? engine::kMaxColumns - 8 : Between(random, 0, 3);
    const Area within = {top, left, top + 11, left + 7};
    FillAtRandom(*book, sheet, within, random);
    for (long merges = Between(random, 0, 3); merges > 0; --merges)
      sheet.merges.Add(RandomArea(within, random));
    for (int marked = 0; marked < 4; ++marked) {
      // One row and less is all that is used.
      program->Select(book->sheets[0], marked == 0 ? Area{top, left, top, left} : RandomArea(within, random));
      ExpectTheSame();
      if (testing::Test::HasFatalFailure() || testing::Test::HasNonfatalFailure()) return;
    }
    AutomationFamily(GetParam()).Quit(engine::ApplicationObject(program));
  }
}

TEST_P(ShownSheets, ManyCellsOverSeveralBlocksAreReadAsByCalls) {
  std::mt19937 random(5);
  const auto book = OpenedBook();
  FillAtRandom(*book, *book->sheets[0], {0, 0, 999, 11}, random);
  for (const Area& marked : {Area{0, 0, 999, 11}, Area{340, 5, 700, 5}, Area{990, 3, 1010, 20}}) {
    program->Select(book->sheets[0], marked);
    ExpectTheSame();
  }
}

TEST_P(ShownSheets, AnEmptySheetIsOneEmptyText) {
  const auto book = OpenedBook();
  program->Select(book->sheets[0], {});
  ExpectTheSame();
  const ScopedSpreadsheet plain(engine);
  const Outcome outcome = Read();
  ASSERT_EQ(outcome.table.GetRowCount(), 1);
  EXPECT_EQ(outcome.table.GetValue(0, 0).vt, VT_BSTR);
}

// A program's selection may say more than there is: then both ways fail alike, with what was read until then.
TEST_P(ShownSheets, AnAreaBeyondTheSheetFailsAsByCalls) {
  const auto book = OpenedBook();
  engine::PutCellValue(*book, *book->sheets[0], 1048575, 16383, _variant_t(_T("last")));
  for (const Area& marked : {Area{1048574, 16383, 1048576, 16383}, Area{1048574, 16382, 1048575, 16384},
                             Area{1048576, 0, 1048577, 0}, Area{-1, 0, 1, 0}}) {
    program->Select(book->sheets[0], marked);
    ExpectTheSame();
  }
}

class NoVisitor : public SheetVisitor {
 public:
  void Cell(int /*row*/, int /*column*/, const SheetCell& /*cell*/) override { ++cells; }
  void Merged(int /*row*/, int /*column*/, const SheetArea& /*area*/) override { ++merged; }
  int cells = 0;
  int merged = 0;
};

TEST_P(ShownSheets, AreasThatAreNoneAreNotShown) {
  const auto book = OpenedBook();
  const AutoRef sheet = engine::WorksheetObject(
      std::make_shared<engine::SheetPlace>(engine::SheetPlace{program, book, book->sheets[0]}));
  const auto* const direct = dynamic_cast<const DirectSheet*>(sheet.get());
  ASSERT_NE(direct, nullptr);
  NoVisitor visitor;
  for (const SheetArea& area :
       {SheetArea{0, 1, 1, 1}, SheetArea{1, 0, 1, 1}, SheetArea{1, 1, 0, 1}, SheetArea{1, 1, 1, -1},
        SheetArea{1, 1, 1048577, 1}, SheetArea{1048577, 1, 1, 1}, SheetArea{2, 1, 0x7FFFFFFF, 1},
        SheetArea{1, 16384, 1, 2}}) {
    EXPECT_FALSE(direct->Visit(area, visitor));
  }
  EXPECT_EQ(visitor.cells, 0);
  EXPECT_TRUE(direct->Visit({1048576, 16383, 1, 2}, visitor));
  EXPECT_EQ(visitor.cells, 2);
  EXPECT_EQ(visitor.merged, 0);
}

}  // namespace
}  // namespace lorv
