#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <set>

#include "framework/objects/exceptions.h"
#include "spreadsheet/automation/automation_family.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/objects/engine_object.h"
#include "tests/spreadsheet/exchange_desk.h"
#include "tests/spreadsheet/table_grid.h"

// A table that is read from a sheet of this process goes to the caller without a copy, and the exchange makes
// its own again when somebody asks for it. Nobody may see that: exchanges that read by calls, which copy as
// ever, are held beside it.

namespace lorv {
namespace {

using test::OpenExchange;
using test::RowsOf;
using test::TextTable;
using test::Utf8;
using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

// An exchange and what it has loaded.
struct Reader {
  OpenExchange exchange;
  std::vector<CXArrayDBToArray> tables;
  CStringArray names;
  const CXArrayDBToArray* held = nullptr;  // by somebody who asked for the table once

  Rows Table() const {
    // Asked of a copy, so that the exchange itself stays as it is.
    const CAdExcel2GridEx copy(exchange);
    return RowsOf(copy.GetArray());
  }
};

class GivenTables : public test::ExchangeDesk {
 protected:
  GivenTables() {
    PutFile(_T("C:\\one.xlsx"), {"a"});
    PutFile(_T("C:\\three.xlsx"), {"a", "b", "c"});
    PutFile(_T("C:\\wide first.xlsx"), {"wide", "b"});
    PutFile(_T("C:\\wide last.xlsx"), {"a", "wide"});
    const auto book = OpenedBook();
    FillSheet(*book, *book->sheets[0], "open");
    program->Select(book->sheets[0], {0, 0, 1, 1});
  }

  static void FillSheet(engine::Book& book, engine::Sheet& sheet, const std::string& word) {
    const auto put = [&](long row, long column, const _variant_t& value) {
      engine::PutCellValue(book, sheet, row, column, value);
    };
    put(0, 0, _variant_t(CString::FromUtf8(word)));
    put(1, 0, _variant_t(1.5));
    put(2, 2, _variant_t(_T("end")));
    sheet.merges.Add({0, 1, 1, 1});
    // More columns than a table of the exchange takes.
    if (word == "wide") put(0, 100, _variant_t(_T("x")));
  }
  static void PutFile(LPCTSTR path, const Texts& sheets) {
    engine::Book book;
    for (const std::string& name : sheets) FillSheet(book, *book.AddSheet(book.sheets.size()), name);
    engine::WriteWorkbookFile(book, path);
  }

  static std::vector<CBCGPGridRange> RangesOf(const CAdExcel2GridEx& exchange) {
    std::vector<CBCGPGridRange> ranges;
    const auto& list = exchange.GetRanges();
    for (POSITION at = list.GetHeadPosition(); at != nullptr;) ranges.push_back(list.GetNext(at));
    return ranges;
  }
  static Texts TextsOf(const CStringArray& names) {
    Texts texts;
    for (int i = 0; i < names.GetSize(); ++i) texts.push_back(Utf8(names.GetAt(i)));
    return texts;
  }

  // The same work with sheets that are shown and with sheets that are asked.
  template <class Work>
  void Both(const Work& work) {
    machine.dialogs.messages.clear();
    long shown_result = 0;
    {
      const ScopedSpreadsheet plain(engine);
      shown_result = work(shown);
    }
    const Texts messages = Messages();
    machine.dialogs.messages.clear();
    record.lines.clear();
    EXPECT_EQ(shown_result, work(asked));
    EXPECT_EQ(messages, Messages());
  }
  void ExpectTheSame() {
    EXPECT_EQ(shown.Table(), asked.Table());
    EXPECT_EQ(TextsOf(shown.names), TextsOf(asked.names));
    EXPECT_EQ(RangesOf(shown.exchange), RangesOf(asked.exchange));
    ASSERT_EQ(shown.tables.size(), asked.tables.size());
    for (std::size_t i = 0; i < shown.tables.size(); ++i)
      EXPECT_EQ(RowsOf(shown.tables[i]), RowsOf(asked.tables[i]));
    if (shown.held != nullptr) {
      EXPECT_EQ(RowsOf(*shown.held), RowsOf(*asked.held));
    }
  }

  Reader shown;
  Reader asked;
};

constexpr int kWorks = 14;

auto Loading(LPCTSTR file, int index) {
  return [=](Reader& reader) {
    return long{reader.exchange.LoadExcel2(file, reader.tables, reader.names, index)};
  };
}

long ExportTable(Reader& reader) {
  EXPECT_TRUE(reader.exchange.ToExcel(_T("C:\\out.xlsx"), true, false, 1, 1, false, CString(), 0, 0));
  Reader back;
  const long result = Loading(_T("C:\\out.xlsx"), 1)(back);
  reader.tables.push_back(back.tables.at(0));
  return result;
}

long TakeGrid(Reader& reader) {
  test::TableGrid grid;
  grid.columns.resize(2);
  grid.rows = {{_variant_t(_T("g")), _variant_t(1.5)}};
  reader.exchange.SetArray(grid);
  return 0;
}

// A grid without columns leaves the rows as they are: those of the table that was given away, too.
long TakeEmptyGrid(Reader& reader) {
  test::TableGrid grid;
  reader.exchange.SetArray(grid);
  return static_cast<long>(reader.exchange.GetArray().GetRowCount());
}

long Hold(Reader& reader) {
  reader.held = &reader.exchange.GetArray();
  return static_cast<long>(reader.held->GetRowCount());
}

long Change(Reader& reader) {
  CXArrayDBToArray& table = reader.exchange.GetArrayForWrite();
  reader.held = &table;
  table.SetValue(0, 0, _variant_t(_T("changed")));
  // The caller's tables are his own.
  if (!reader.tables.empty()) reader.tables.back().SetValue(0, 0, _variant_t(_T("theirs")));
  return 0;
}

std::function<long(Reader&)> WorkOf(int which) {
  switch (which) {
    case 0:
      return Loading(_T("C:\\one.xlsx"), 1);
    case 1:
      return Loading(_T("C:\\three.xlsx"), 0);
    case 2:
      return Loading(_T("C:\\three.xlsx"), 2);
    case 3:
      return Loading(_T("C:\\wide first.xlsx"), 0);
    case 4:
      return Loading(_T("C:\\wide last.xlsx"), 0);
    case 5:
      return Loading(_T("C:\\three.xlsx"), 9);
    case 6:
      return Loading(_T("C:\\none.xlsx"), 0);
    case 7:
      return [](Reader& reader) { return long{reader.exchange.FromExcel()}; };
    case 8:
      return ExportTable;
    case 9:
      return [](Reader& reader) {
        reader.exchange.SetArray(TextTable({{"new"}}));
        return 0L;
      };
    case 10:
      return TakeGrid;
    case 11:
      return TakeEmptyGrid;
    case 12:
      return Hold;
    default:
      return Change;
  }
}

// Whether the exchange has no table of its own after a work, if nobody has asked for it before.
bool GivesAway(int which) {
  return which <= 3;
}

bool HandsOut(int which) {
  return which >= 11;
}

TEST_F(GivenTables, NobodySeesThatTheyAreMadeAgain) {
  std::mt19937 random(1871);
  std::set<std::pair<int, int>> seen;
  for (int episode = 0; episode < 150; ++episode) {
    shown = Reader();
    asked = Reader();
    int state = 0;  // 0 has its table, 1 has given it away, 2 has handed it out
    for (int step = 0; step < 7; ++step) {
      // What hands the table out ends what can be seen of the rest.
      const int which = static_cast<int>(random() % static_cast<unsigned>(step < 3 ? kWorks - 3 : kWorks));
      seen.insert({state, which});
      Both(WorkOf(which));
      ExpectTheSame();
      ASSERT_FALSE(HasFailure()) << "episode " << episode << ", step " << step << ", work " << which;
      if (state != 2) state = HandsOut(which) ? 2 : GivesAway(which) ? 1 : 0;
    }
  }
  EXPECT_EQ(seen.size(), 3U * kWorks);
}

// A program whose sheets are shown, are watched, and which may refuse to quit.
class WatchedProgram : public AutoObject {
 public:
  using Sheets = std::vector<std::weak_ptr<engine::Sheet>>;
  WatchedProgram(AutoRef object, Sheets& sheets, bool quits)
      : object_(std::move(object)), sheets_(sheets), quits_(quits) {}

  AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) override {
    if (!quits_ && dispid == DispidOf(Program::kExcel, Operation::kQuit)) AfxThrowOleException(E_FAIL);
    AutoValue value = object_->Invoke(dispid, form, args);
    if (const auto sheet = engine::SheetOf(value.object)) {
      sheets_.emplace_back(sheet);
    } else if (value.object) {
      value.object = std::make_shared<WatchedProgram>(value.object, sheets_, quits_);
    }
    return value;
  }
  void KeepAlive() override { object_->KeepAlive(); }

 private:
  AutoRef object_;
  Sheets& sheets_;
  bool quits_;
};

class WatchedSystem : public engine::EngineSystem {
 public:
  AutoRef CreateDispatch(LPCTSTR program_id) override {
    return std::make_shared<WatchedProgram>(EngineSystem::CreateDispatch(program_id), sheets, quits);
  }

  WatchedProgram::Sheets sheets;
  bool quits = true;
};

TEST_F(GivenTables, TheWorkbookStaysUntilTheTableIsMade) {
  WatchedSystem system;
  const ScopedSpreadsheet scope(system);
  ASSERT_EQ(Loading(_T("C:\\one.xlsx"), 1)(shown), 1);
  ASSERT_FALSE(system.sheets.empty());
  EXPECT_FALSE(system.sheets.back().expired());
  const CAdExcel2GridEx copy(shown.exchange);
  const Rows rows = {{"a", "", ""}, {"1.5", "", ""}, {"", "", "end"}};
  EXPECT_EQ(RowsOf(shown.exchange.GetArray()), rows);
  EXPECT_FALSE(system.sheets.back().expired()) << "the copy has its table still to make";
  EXPECT_EQ(RowsOf(copy.GetArray()), rows);
  EXPECT_TRUE(system.sheets.back().expired());
  // Who has asked once holds a reference: from now on the table is never away.
  ASSERT_EQ(Loading(_T("C:\\three.xlsx"), 2)(shown), 1);
  EXPECT_TRUE(system.sheets.back().expired());
}

TEST_F(GivenTables, WhatTakesItsPlaceLetsTheWorkbookGo) {
  WatchedSystem system;
  const ScopedSpreadsheet scope(system);
  ASSERT_EQ(Loading(_T("C:\\three.xlsx"), 0)(shown), 1);
  EXPECT_FALSE(system.sheets.back().expired());
  shown.exchange.SetArray(TextTable({{"new"}}));
  EXPECT_TRUE(system.sheets.back().expired());
  EXPECT_EQ(shown.Table(), (Rows{{"new"}}));
}

// The program goes on running with its workbook, which its next user may change.
TEST_F(GivenTables, AProgramThatGoesOnRunningChangesNoTable) {
  WatchedSystem system;
  system.quits = false;
  const ScopedSpreadsheet scope(system);
  EXPECT_EQ(Loading(_T("C:\\one.xlsx"), 1)(shown), 1);
  EXPECT_EQ(Messages().size(), 1U);
  // Made at once, so that nothing of the workbook is needed any more.
  EXPECT_TRUE(system.sheets.back().expired());
  EXPECT_EQ(shown.Table(), RowsOf(shown.tables.at(0)));
}

// An exchange whose table stands for another's is as good as that one.
TEST_F(GivenTables, ATableThatWasGivenAwayIsExported) {
  const ScopedSpreadsheet plain(engine);
  ASSERT_EQ(Loading(_T("C:\\one.xlsx"), 1)(shown), 1);
  EXPECT_EQ(ExportTable(shown), 1);
  EXPECT_EQ(RowsOf(shown.tables.at(1)), RowsOf(shown.tables.at(0)));
}

}  // namespace
}  // namespace lorv
