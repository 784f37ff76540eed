#include <gtest/gtest.h>

#include <algorithm>

#include "spreadsheet/servers/engine/book/cell_values.h"
#include "tests/spreadsheet/exchange_desk.h"

// Of each journey through a program each call fails in turn, by both kinds of failure: the user gets one
// message, every object is given back, and nothing stays busy.

namespace lorv {
namespace {

using test::OpenExchange;
using test::TextTable;

class JourneyFailures : public test::ExchangeDesk, public testing::WithParamInterface<Program> {
 protected:
  JourneyFailures() : ExchangeDesk(GetParam()) {}

  void PutBook(LPCTSTR path, int sheets) {
    engine::Book book;
    for (int i = 0; i < sheets; ++i) {
      const auto sheet = book.AddSheet(book.sheets.size());
      engine::PutCellValue(book, *sheet, 0, 0, _variant_t(_T("a")));
      engine::PutCellValue(book, *sheet, 1, 1, _variant_t(2.5));
      sheet->merges.Add({0, 0, 0, 1});
    }
    engine::WriteWorkbookFile(book, path);
  }

  std::ptrdiff_t Count(const std::string& line) const {
    return std::count(record.lines.begin(), record.lines.end(), line);
  }

  // A journey succeeds if it made fewer calls than the one that was to fail.
  void ExpectTheWholeJourney(bool succeeded) const { EXPECT_EQ(succeeded, record.calls < record.fail_at); }

  // The count of calls of the journey.
  int FailEachCall(const std::function<void()>& journey) {
    for (int n = 1;; ++n) {
      record = CallRecord();
      record.fail_at = n;
      if (n % 2 == 0) record.description = _T("服务器出错");
      machine.dialogs.messages.clear();
      journey();
      if (record.calls < n) return n - 1;
      EXPECT_EQ(machine.dialogs.messages.size(), 1U) << n;
      EXPECT_EQ(record.alive, 0) << n;
      EXPECT_EQ(Count("begin wait"), Count("end wait")) << n;
      EXPECT_LT(n, 1000) << "a journey without end";
      if (HasFailure() || n == 1000) return n;
    }
  }
};

TEST_P(JourneyFailures, ImportOfTheSelection) {
  const auto book = OpenedBook();
  engine::Sheet& sheet = *book->sheets[0];
  for (long row = 0; row < 3; ++row) engine::PutCellValue(*book, sheet, row, 0, _variant_t(_T("x")));
  sheet.merges.Add({0, 1, 1, 2});
  program->Select(book->sheets[0], {0, 0, 2, 2});
  const int calls = FailEachCall([&] {
    OpenExchange exchange;
    ExpectTheWholeJourney(exchange.FromExcel());
    // The program is its user's: no failure of ours ends it.
    EXPECT_FALSE(program->ended);
  });
  EXPECT_GT(calls, 60);
}

TEST_P(JourneyFailures, ImportOfTheUsedArea) {
  const auto book = OpenedBook();
  engine::PutCellValue(*book, *book->sheets[0], 0, 0, _variant_t(_T("x")));
  const int calls = FailEachCall([&] {
    OpenExchange exchange;
    ExpectTheWholeJourney(exchange.FromExcel());
  });
  EXPECT_GT(calls, 12);
}

TEST_P(JourneyFailures, ImportOfOneSheetOfAFile) {
  PutBook(_T("C:\\in.xlsx"), 2);
  const int calls = FailEachCall([&] {
    OpenExchange exchange;
    std::vector<CXArrayDBToArray> tables;
    CStringArray names;
    const int result = exchange.LoadExcel2(_T("C:\\in.xlsx"), tables, names, 2);
    // The tables and their names go together, whatever failed.
    EXPECT_EQ(static_cast<int>(tables.size()), names.GetSize());
    EXPECT_EQ(static_cast<std::size_t>(result), tables.size());
  });
  EXPECT_GT(calls, 30);
}

TEST_P(JourneyFailures, ImportOfAllSheetsOfAFile) {
  PutBook(_T("C:\\in.xlsx"), 3);
  const int calls = FailEachCall([&] {
    OpenExchange exchange;
    std::vector<CXArrayDBToArray> tables;
    CStringArray names;
    exchange.LoadExcel2(_T("C:\\in.xlsx"), tables, names, 0);
    EXPECT_EQ(static_cast<int>(tables.size()), names.GetSize());
  });
  EXPECT_GT(calls, 90);
}

TEST_P(JourneyFailures, ExportToAWorkbookThatStaysOpen) {
  const int calls = FailEachCall([&] {
    OpenExchange exchange;
    exchange.SetArray(TextTable({{"墙", "12.50"}, {"007", ""}}));
    ExpectTheWholeJourney(exchange.ToExcel());
  });
  EXPECT_GT(calls, 20);
}

TEST_P(JourneyFailures, ExportIntoAnExistingFile) {
  const int calls = FailEachCall([&] {
    PutBook(_T("C:\\old.xls"), 1);
    OpenExchange exchange;
    exchange.SetArray(TextTable({{"墙", "12.50"}}));
    exchange.AddRange(2, 0, 2, 1);
    ColumnList hidden;
    hidden.AddSorted(0);
    exchange.SetInVisibleCols(hidden);
    ExpectTheWholeJourney(exchange.ToExcel(_T("C:\\old"), true, false, -4131, 5, true, _T("新"), 0, 0));
  });
  EXPECT_GT(calls, 30);
}

INSTANTIATE_TEST_SUITE_P(BothPrograms, JourneyFailures, testing::Values(Program::kExcel, Program::kEt),
                         [](const auto& each) { return each.param == Program::kExcel ? "Excel" : "Et"; });

}  // namespace
}  // namespace lorv
