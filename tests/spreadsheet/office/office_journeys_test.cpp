#include <signal.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <thread>

#include "framework/objects/exceptions.h"
#include "spreadsheet/automation/automation_family.h"
#include "spreadsheet/servers/native_spreadsheet.h"
#include "spreadsheet/servers/office/office_library.h"
#include "spreadsheet/servers/office/posix/uno/office_sockets.h"
#include "tests/spreadsheet/office/office_desk.h"

// Whole exchanges with a real office.

namespace lorv {
namespace {

namespace fs = std::filesystem;
using test::LoadedBook;
using test::OpenExchange;
using test::Rows;
using test::RowsOf;
using test::TextTable;
using test::Utf8;
using Texts = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

class OfficeJourneys : public test::OfficeDesk {
 protected:
  static const Rows kTable;
  bool Save(const char* name) {
    OpenExchange out;
    out.SetArray(TextTable(kTable));
    CStringArray titles;
    for (const LPCTSTR title : {_T("名称"), _T("长度"), _T("编码"), _T("备注")}) titles.Add(title);
    out.SetColTitle(titles);
    out.AddRange(1, 3, 2, 3);
    ColumnList hidden;
    hidden.AddSorted(2);
    out.SetInVisibleCols(hidden);
    return out.ToExcel(PathOf(name), true, false, -4152, 1, false, _T("清单"), 0, 0);
  }
  static Rows WithTitles() {
    Rows rows = kTable;
    rows.insert(rows.begin(), {"名称", "长度", "编码", "备注"});
    // Under the first cell of a merged area there is nothing.
    rows[2][3] = "";
    return rows;
  }
  long ProcessId() const { return system.Running().empty() ? 0 : system.Running().front()->ProcessId(); }
  void ShowTable(const Rows& rows) {
    OpenExchange out;
    out.SetArray(TextTable(rows));
    EXPECT_TRUE(out.ToExcel());
    ASSERT_NE(ProcessId(), 0);
  }
};

const Rows OfficeJourneys::kTable = {
    {"墙", "12.50", "007", "=1+1"}, {"梁 <2>", "-3", "0.00", "x"}, {"a\nb", "0", "1,000", ""}};

TEST_F(OfficeJourneys, AShownTableIsReadBack) {
  ShowTable(OfficeJourneys::kTable);
  OpenExchange back;
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray()), kTable);
  // The file that the desktop was given.
  ASSERT_EQ(machine.shell.started.size(), 1U);
  const LoadedBook shown = Load(engine, machine.shell.started[0].file);
  ASSERT_EQ(shown.sheets.size(), 1U);
  EXPECT_EQ(shown.sheets[0], kTable);
  EXPECT_EQ(Messages(), Texts{});
}

TEST_F(OfficeJourneys, FilesOfAllThreeKinds) {
  const std::pair<const char*, std::string> kinds[] = {
      {"a.xls", "\xD0\xCF"}, {"a.xlsx", "PK"}, {"a.ods", "PK"}};
  for (const auto& [name, begin] : kinds) {
    EXPECT_TRUE(Save(name)) << name;
    EXPECT_EQ(test::ReadBytes(folder.Path() / name).substr(0, 2), begin);
    const LoadedBook loaded = Load(system, PathOf(name));
    EXPECT_EQ(loaded.result, 1) << name;
    EXPECT_EQ(loaded.names, Texts{"清单"}) << name;
    ASSERT_EQ(loaded.sheets.size(), 1U) << name;
    EXPECT_EQ(loaded.sheets[0], WithTitles()) << name;
    EXPECT_EQ(loaded.ranges, (std::vector<CBCGPGridRange>(2, {4, 1, 4, 2}))) << name;
  }
  EXPECT_EQ(Load(engine, PathOf("a.xlsx")).sheets.at(0), WithTitles());
  EXPECT_EQ(Messages(), Texts{});
}

TEST_F(OfficeJourneys, FilesMayHaveAnyName) {
  for (const char* name : {"墙 体#1%20?.xlsx", "a&b 'c'.ods"}) {
    EXPECT_TRUE(Save(name)) << name;
    EXPECT_EQ(Load(system, PathOf(name)).names, Texts{"清单"}) << name;
  }
  EXPECT_EQ(Messages(), Texts{});
}

TEST_F(OfficeJourneys, WidthsFormatsAndHiddenColumnsAreKept) {
  const AutomationFamily family(Program::kExcel);
  const AutoRef application = system.CreateDispatch(_T("Excel.Application"));
  const AutoRef workbook = family.AddWorkbook(family.Workbooks(application), AutoValue::Missing());
  const AutoRef cells = family.Cells(family.Sheet(family.Worksheets(workbook), 1));
  for (int width = 1; width <= 255; width += 2) {
    const AutoRef column = family.EntireColumn(family.Item(cells, 1, width));
    family.PutColumnWidth(column, width);
    EXPECT_EQ(family.ColumnWidth(column), width);
  }
  const AutoRef hidden = family.Item(cells, 1, 7);
  family.PutColumnWidth(family.EntireColumn(hidden), 0);
  EXPECT_EQ(family.ColumnWidth(hidden), 0);
  int row = 0;
  for (const LPCTSTR format :
       {_T("General"), _T("0"), _T("0.00_ "), _T("@"), _T("0.00%"), _T("yyyy-mm-dd"), _T("h:mm:ss"),
        _T("#,##0.00;[Red]-#,##0.00"), _T("yyyy\"年\"m\"月\""), _T("[h]:mm:ss")}) {
    const AutoRef cell = family.Item(cells, ++row, 1);
    family.PutNumberFormat(cell, format);
    EXPECT_EQ(Utf8(family.NumberFormat(cell)), Utf8(format));
  }
  family.PutHorizontalAlignment(hidden, -4108);
  family.PutFontSize(family.Font(hidden), 14);
  family.Quit(application);
}

TEST_F(OfficeJourneys, SheetsAreAddedAndNamed) {
  for (const char* sheet : {"一", "二"}) {
    OpenExchange out;
    out.SetArray(TextTable({{sheet}}));
    const bool open = std::string(sheet) == "二";
    EXPECT_TRUE(out.ToExcel(PathOf(open ? "a" : "a.xls"), true, false, 1, open ? 2 : 1, open,
                            CString::FromUtf8(sheet), 0, 0));
  }
  // Opened as "a.xls", saved as "a".
  const LoadedBook loaded = Load(system, PathOf("a"));
  EXPECT_EQ(loaded.names, (Texts{"一", "二"}));
  EXPECT_EQ(loaded.sheets, (std::vector<Rows>{{{"一"}}, {{"二"}}}));
  OpenExchange bad;
  bad.SetArray(TextTable({{"x"}}));
  EXPECT_FALSE(bad.ToExcel(PathOf("b.xls"), true, false, 1, 1, false, _T("a/b"), 0, 0));
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_NE(Messages()[0].find("a/b"), std::string::npos);
  EXPECT_FALSE(fs::exists(folder.Path() / "b.xls"));
}

TEST_F(OfficeJourneys, ASelectionIsRead) {
  ShowTable(kTable);
  system.Running().front()->Books().front()->book->Select(0, {1, 0, 2, 1});
  OpenExchange back;
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray()), (Rows{{"梁 <2>", "-3"}, {"a\nb", "0"}}));
  // One row is the cell that the user happened to click.
  system.Running().front()->Books().front()->book->Select(0, {1, 0, 1, 1});
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray()), kTable);
}

TEST_F(OfficeJourneys, AReadingIsCancelledBetweenSheets) {
  engine::Book book;
  for (int i = 0; i < 3; ++i) book.AddSheet(book.sheets.size());
  engine::WriteWorkbookFile(book, PathOf("three.xlsx"));
  EXPECT_EQ(Load(system, PathOf("three.xlsx")).names.size(), 3U);
  machine.shell.user_cancelled = true;
  const LoadedBook loaded = Load(system, PathOf("three.xlsx"));
  EXPECT_EQ(loaded.result, 1);
  EXPECT_TRUE(loaded.names.empty());
}

TEST_F(OfficeJourneys, WhatIsNoWorkbookIsRefused) {
  test::WriteBytes(folder.Path() / "junk.xls", std::string("\x01\x02junk", 6));
  test::WriteBytes(folder.Path() / "empty.xlsx", "");
  for (const char* name : {"junk.xls", "empty.xlsx", "none.ods"}) {
    machine.dialogs.messages.clear();
    EXPECT_EQ(Load(system, PathOf(name)).result, 0) << name;
    ASSERT_EQ(Messages().size(), 1U) << name;
    EXPECT_NE(Messages()[0].find(name), std::string::npos) << Messages()[0];
  }
}

TEST_F(OfficeJourneys, AFolderThatIsNotThereCannotBeSavedInto) {
  EXPECT_FALSE(Save("none/a.xls"));
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_NE(Messages()[0].find("a.xls"), std::string::npos);
}

TEST_F(OfficeJourneys, TheOfficeIsKilledBetweenTwoExchanges) {
  ShowTable(kTable);
  kill(static_cast<pid_t>(ProcessId()), SIGKILL);
  OpenExchange back;
  EXPECT_FALSE(back.FromExcel());
  EXPECT_EQ(Messages(), Texts{"COleDispatchException: COleDispatchException. SCODE: 800706ba, Description: "
                              "\"电子表格程序已退出，或没有响应。\"."});
  // The next exchange has an office of its own.
  machine.dialogs.messages.clear();
  ShowTable({{"new"}, {"x"}});
  EXPECT_TRUE(back.FromExcel());
  EXPECT_EQ(RowsOf(back.GetArray())[0][0], "new");
  EXPECT_EQ(Messages(), Texts{});
}

// The office that this process has started last; 0 where there is none.
pid_t OwnOffice() {
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::ifstream stat(entry.path() / "stat");
    pid_t id = 0;
    pid_t parent = 0;
    std::string name;
    std::string state;
    if (stat >> id >> name >> state >> parent && parent == getpid() && name == "(soffice.bin)" &&
        state != "Z")
      return id;
  }
  return 0;
}

TEST_F(OfficeJourneys, TheOfficeIsKilledInTheMiddleOfWriting) {
  // A busy machine takes its time to start an office; from then on this one takes cells for seconds.
  std::atomic<pid_t> started = 0;
  office::OfficeSystem noted(Program::kExcel, [&] {
    auto bridge = office::StartOffice();
    started = static_cast<pid_t>(bridge->ProcessId());
    return bridge;
  });
  const ScopedSpreadsheet scope(noted);
  std::atomic<bool> ended = false;
  std::thread killer([&] {
    while (!ended && started == 0) std::this_thread::sleep_for(std::chrono::milliseconds(20));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    if (started != 0) kill(started, SIGKILL);
  });
  OpenExchange out;
  out.SetArray(TextTable(Rows(100000, {"a", "1.25"})));
  const auto begin = Clock::now();
  EXPECT_FALSE(out.ToExcel());
  ended = true;
  killer.join();
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(60));
  EXPECT_EQ(Messages(), Texts{"电子表格程序已退出，或没有响应。"});
  EXPECT_EQ(OwnOffice(), 0);
}

TEST_F(OfficeJourneys, AnOfficeThatHangsIsEnded) {
  auto bridge = office::StartOffice({60, 2});
  const auto book = bridge->NewBook();
  const auto id = static_cast<pid_t>(bridge->ProcessId());
  kill(id, SIGSTOP);
  const auto begin = Clock::now();
  bool gone = false;
  try {
    book->SheetCount();
  } catch (const office::OfficeFault& fault) {
    gone = fault.gone;
  }
  EXPECT_TRUE(gone);
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(20));
}

TEST_F(OfficeJourneys, NothingIsLeftBehind) {
  const auto count = [] {
    return std::count_if(fs::directory_iterator(fs::temp_directory_path()), {}, [](const auto& entry) {
      return entry.path().filename().string().starts_with("lorv-office-");
    });
  };
  const auto before = count();
  EXPECT_TRUE(Save("a.xlsx"));
  EXPECT_EQ(OwnOffice(), 0);
  ShowTable(kTable);
  EXPECT_NE(OwnOffice(), 0);
  system.EndAll();
  EXPECT_EQ(OwnOffice(), 0);
  EXPECT_EQ(count(), before);
}

TEST_F(OfficeJourneys, AKilledOfficeLeavesNoPipes) {
  auto bridge = office::StartOffice();
  const auto id = static_cast<pid_t>(bridge->ProcessId());
  const auto pipes = office::SocketFilesOf(id);
  // One for this process, one for other starts of the same office.
  EXPECT_EQ(pipes.size(), 2U);
  EXPECT_TRUE(std::all_of(pipes.begin(), pipes.end(), [](const auto& file) { return fs::exists(file); }));
  kill(id, SIGKILL);
  bridge.reset();
  EXPECT_TRUE(std::none_of(pipes.begin(), pipes.end(), [](const auto& file) { return fs::exists(file); }));
  EXPECT_TRUE(office::SocketFilesOf(id).empty());
}

TEST_F(OfficeJourneys, TheEnvironmentChoosesIt) {
  setenv("COMM_LORV_SPREADSHEET", "office", 1);
  const LoadedBook loaded = Save("a.xls") ? Load(NativeSpreadsheet(), PathOf("a.xls")) : LoadedBook();
  unsetenv("COMM_LORV_SPREADSHEET");
  ASSERT_EQ(loaded.sheets.size(), 1U);
  EXPECT_EQ(loaded.sheets[0], WithTitles());
}

}  // namespace
}  // namespace lorv
