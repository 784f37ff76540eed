#include <gtest/gtest.h>
#include <objbase.h>

#include <random>
#include <thread>

#include "framework/objects/exceptions.h"
#include "spreadsheet/servers/com/win32/com_object.h"
#include "spreadsheet/servers/com/win32/com_system.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "tests/spreadsheet/exchange_desk.h"
#include "tests/spreadsheet/random_table.h"
#include "tests/spreadsheet/win32/com_server.h"
#include "tests/spreadsheet/win32/other_program.h"

// The exchange by way of the system's own automation, with the engine as the program at its other end.

namespace lorv {
namespace {

using test::ComProgram;
using test::Dispatched;
using test::OpenExchange;
using test::OtherProgram;
using test::RowsOf;
using test::RunningEntry;
using test::TextTable;
using test::Utf8;
using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

class ChoosingSystem : public com::ComSystem {
 public:
  int choice = 0;
  Texts offered;
  // A thousand rounds are long enough without it.
  void Sleep(unsigned /*milliseconds*/) override {}
  int ChooseName(const CStringArray& names) override {
    for (int i = 0; i < names.GetSize(); ++i) offered.push_back(Utf8(names.GetAt(i)));
    return choice;
  }
};

class Com : public testing::Test {
 protected:
  Com() {
    CoInitialize(nullptr);
    machine.files.MakeFolder(_T("C:\\Suite"));
  }
  ~Com() override { CoUninitialize(); }

  Texts Messages() const {
    Texts texts;
    for (const auto& message : machine.dialogs.messages) texts.push_back(Utf8(message.text));
    return texts;
  }
  // A workbook that a user of the program has open.
  static std::shared_ptr<engine::Book> Opened(engine::EngineSystem& engine, const Rows& rows) {
    const auto book = engine.Start()->AddBook();
    for (std::size_t i = 0; i < rows.size(); ++i) {
      for (std::size_t j = 0; j < rows[i].size(); ++j) {
        engine::PutCellValue(*book, *book->sheets[0], static_cast<long>(i), static_cast<long>(j),
                             _variant_t(CString::FromUtf8(rows[i][j])));
      }
    }
    return book;
  }
  static com::ComPointer<IDispatch> BookObject(engine::EngineSystem& engine,
                                               const std::shared_ptr<engine::Book>& book, Program family,
                                               bool typed = true) {
    const auto type = typed ? std::optional<GUID>(WorkbookId(family)) : std::nullopt;
    return Dispatched(engine::WorkbookObject(engine.Running().back(), book), type);
  }

  HeadlessPlatform machine;
  ScopedPlatform platform_scope{machine.Ports()};
  ChoosingSystem system;
  ScopedSpreadsheet scope{system};
};

TEST_F(Com, ATableGoesThroughAProgramAndBack) {
  for (const Program family : {Program::kExcel, Program::kEt}) {
    ComProgram program(family);
    OpenExchange out;
    out.SetArray(TextTable({{"墙", "12.50", ""}, {"007", "-3", "x"}}));
    out.AddRange(0, 1, 0, 2);
    ASSERT_TRUE(out.ToExcel(_T("C:\\t.xlsx"), true, false, -4108, 2, false, _T("清单"), 0, 0));
    OpenExchange in;
    std::vector<CXArrayDBToArray> tables;
    CStringArray names;
    ASSERT_EQ(in.LoadExcel2(_T("C:\\t.xlsx"), tables, names, 2), 1);
    EXPECT_EQ(RowsOf(tables[0]), (Rows{{"墙", "12.50", ""}, {"007", "-3", "x"}}));
    EXPECT_EQ(Utf8(names.GetAt(0)), "清单");
    EXPECT_EQ(in.GetRanges().GetCount(), 2);
    EXPECT_TRUE(Messages().empty());
  }
}

// Out through a program and back by a new one of the same kind.
void ExpectBack(const CXArrayDBToArray& table, const CString& path) {
  OpenExchange out;
  out.SetArray(table);
  ASSERT_TRUE(out.ToExcel(path, true, false, 1, 1, false, CString(), 0, 0));
  OpenExchange in;
  std::vector<CXArrayDBToArray> tables;
  CStringArray names;
  ASSERT_EQ(in.LoadExcel2(path, tables, names, 1), 1);
  EXPECT_EQ(RowsOf(tables.at(0)), test::ShownRows(table));
}

TEST_F(Com, RandomTablesComeBack) {
  std::mt19937 random(7122);
  for (const Program family : {Program::kExcel, Program::kEt}) {
    const ComProgram program(family);
    for (int round = 0; round < 20; ++round) {
      ExpectBack(test::RandomTable(random, round == 0 ? 32767 : 1), _T("C:\\t.xlsx"));
      ASSERT_FALSE(HasFailure()) << round;
    }
  }
  EXPECT_EQ(Messages(), Texts{});
}

CString ScratchPathOf(LPCTSTR name) {
  TCHAR folder[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  return CString(LPCTSTR{folder}) + name;
}

// What the system starts by the command in its registry, as it starts the programs of a user: each exchange
// has a process of its own, whose files are those of the system.
TEST_F(Com, AProgramIsStartedByTheSystem) {
  std::mt19937 random(7123);
  const CString path = ScratchPathOf(_T("lorv-started.xlsx"));
  for (const Program family : {Program::kExcel, Program::kEt}) {
    const CString word = family == Program::kExcel ? _T("Excel") : _T("Et");
    const test::ProgramKeys keys(
        family, _T("\"") + CString::FromUtf8(test::ComProgramPath()) + _T("\" serve ") + word);
    ExpectBack(test::RandomTable(random, 1), path);
    EXPECT_FALSE(machine.files.Exists(path)) << "written in this process";
    EXPECT_NE(GetFileAttributesW(path), INVALID_FILE_ATTRIBUTES);
    DeleteFileW(path);
  }
  EXPECT_EQ(Messages(), Texts{});
}

// The entry is there, the program is not: as one that was removed without its installer's help.
TEST_F(Com, AProgramThatDoesNotStartIsNone) {
  const test::ProgramKeys keys(Program::kExcel, _T("C:\\no such program.exe"));
  EXPECT_EQ(system.CreateDispatch(ProgramId(Program::kExcel)), nullptr);
}

TEST_F(Com, FailuresCarryTheirCodeAndWords) {
  ComProgram program(Program::kExcel);
  OpenExchange out;
  out.SetArray(TextTable({{"a"}}));
  EXPECT_FALSE(out.ToExcel(CString(), false, true, 1, 1, false, _T("a/b"), 0, 0));
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Messages()[0].find("“a/b”不能作为工作表名称"), 0U);
}

TEST_F(Com, TheRunningWorkbookIsRead) {
  engine::EngineSystem engine;
  const auto book = Opened(engine, {{"a", "b"}, {"c", "d"}});
  const RunningEntry entry(BookObject(engine, book, Program::kExcel), _T("C:\\open.xlsx"));
  OpenExchange in;
  EXPECT_TRUE(in.FromExcel());
  EXPECT_EQ(RowsOf(in.GetArray()), (Rows{{"a", "b"}, {"c", "d"}}));
  EXPECT_TRUE(system.offered.empty());
  AutoRef found;
  EXPECT_EQ(FindRunningWorkbook(found, _T("C:\\OPEN.xlsx")), CONNECT_EXCEL);
  EXPECT_EQ(FindRunningWorkbook(found, _T("open.xlsx")), CONNECT_EXCEL);
}

TEST_F(Com, OfSeveralProgramsTheFirstEntryIsTaken) {
  engine::EngineSystem excel(Program::kExcel);
  engine::EngineSystem et(Program::kEt);
  const RunningEntry first(BookObject(excel, Opened(excel, {{"1"}, {"2"}}), Program::kExcel),
                           _T("C:\\a.xlsx"));
  const RunningEntry second(BookObject(et, Opened(et, {{"3"}, {"4"}}), Program::kEt), _T("C:\\b.et"));
  AutoRef found;
  EXPECT_EQ(FindRunningWorkbook(found, _T("C:\\b.et")), CONNECT_ET);
  EXPECT_EQ(AutomationFamily(Program::kEt).SheetCount(AutomationFamily(Program::kEt).Worksheets(found)), 1);
  EXPECT_NE(FindRunningWorkbook(found, CString()), CONNECT_NONE);
}

TEST_F(Com, WithoutAnyProgramTheUserSeesAMessage) {
  OpenExchange in;
  EXPECT_FALSE(in.FromExcel());
  EXPECT_EQ(Messages(), Texts{"没有打开 excel 程序!"});
}

TEST_F(Com, AnObjectThatIsNoWorkbookIsPassedOver) {
  engine::EngineSystem engine;
  const auto book = Opened(engine, {{"a"}, {"b"}});
  const RunningEntry untyped(BookObject(engine, book, Program::kExcel, false), _T("C:\\untyped.xlsx"));
  OpenExchange in;
  EXPECT_FALSE(in.FromExcel());
  EXPECT_EQ(Messages(), Texts{"没有打开 excel 程序!"});
}

TEST_F(Com, TheActiveApplicationGetsAWorkbook) {
  ComProgram program(Program::kExcel);
  const auto state = program.Engine().Start();
  const auto object = Dispatched(engine::ApplicationObject(state));
  const auto class_id = system.ClassOf(ProgramId(Program::kExcel));
  ASSERT_TRUE(class_id);
  DWORD active = 0;
  ASSERT_EQ(RegisterActiveObject(object.Get(), *class_id, ACTIVEOBJECT_STRONG, &active), S_OK);
  AutoRef book;
  EXPECT_EQ(AttachActiveApplication(book), CONNECT_EXCEL);
  EXPECT_EQ(state->Books().size(), 1U);
  RevokeActiveObject(active, nullptr);
  book.reset();
}

// A program that has gone: every call fails as the system reports it.
class GoneObject : public AutoObject {
 public:
  AutoValue Invoke(DISPID /*dispid*/, Form /*form*/, std::span<const AutoValue> /*args*/) override {
    AfxThrowOleException(static_cast<HRESULT>(0x800706BA));
  }
  void KeepAlive() override {}
};

TEST_F(Com, AProgramThatHasGoneIsReportedByItsCode) {
  const RunningEntry entry(Dispatched(std::make_shared<GoneObject>(), WorkbookId(Program::kExcel)),
                           _T("C:\\gone.xlsx"));
  OpenExchange in;
  EXPECT_FALSE(in.FromExcel());
  EXPECT_EQ(Messages(), Texts{"COleException. SCODE: 800706ba."});
}

TEST_F(Com, AProgramOfAnotherProcessIsRead) {
  OtherProgram program("Excel", "C:\\other.xlsx");
  ASSERT_TRUE(program.Runs());
  OpenExchange in;
  EXPECT_TRUE(in.FromExcel());
  EXPECT_EQ(RowsOf(in.GetArray()), (Rows{{"Excel", "1.5"}, {"x", "2"}}));
  AutoRef found;
  EXPECT_EQ(FindRunningWorkbook(found, _T("other.xlsx")), CONNECT_EXCEL);
  found.reset();
  // Closed by its user there is none.
  program.End();
  EXPECT_FALSE(in.FromExcel());
  EXPECT_EQ(Messages(), Texts{"没有打开 excel 程序!"});
}

TEST_F(Com, OfTwoProgramsOfOtherProcessesTheUserChooses) {
  const OtherProgram excel("Excel", "C:\\one.xlsx");
  const OtherProgram et("Et", "C:\\two.et");
  ASSERT_TRUE(excel.Runs() && et.Runs());
  AutoRef found;
  EXPECT_EQ(FindRunningWorkbook(found, _T("two.et")), CONNECT_ET);
  EXPECT_TRUE(system.offered.empty());
  system.choice = 1;
  EXPECT_EQ(FindRunningWorkbook(found, _T("C:\\none.xlsx")), CONNECT_ET);
  EXPECT_EQ(system.offered, (Texts{"C:\\one.xlsx", "C:\\two.et"}));
  const AutomationFamily family(Program::kEt);
  const AutoRef cells = family.Cells(family.Sheet(family.Worksheets(found), 1));
  EXPECT_EQ(Utf8(VariantToText(family.Value(family.Item(cells, 1, 1)))), "Et");
}

TEST_F(Com, AProgramOfAnotherProcessDiesInTheMiddle) {
  const OtherProgram program("Excel", "C:\\dies.xlsx", "dies 20");
  ASSERT_TRUE(program.Runs());
  OpenExchange in;
  EXPECT_FALSE(in.FromExcel());
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Messages()[0].find("COleException. SCODE: 80"), 0U) << Messages()[0];
  // What it has left in the table answers no more.
  EXPECT_FALSE(in.FromExcel());
  EXPECT_EQ(Messages().back(), "没有打开 excel 程序!");
}

TEST_F(Com, AHungProgramOfAnotherProcessIsEndedByItsUser) {
  const OtherProgram program("Et", "C:\\hangs.et", "hangs 20");
  ASSERT_TRUE(program.Runs());
  std::thread user([&] {
    ::Sleep(3000);
    program.Kill();
  });
  OpenExchange in;
  EXPECT_FALSE(in.FromExcel());
  user.join();
  ASSERT_EQ(Messages().size(), 1U);
  EXPECT_EQ(Messages()[0].find("COleException. SCODE: 80"), 0U) << Messages()[0];
}

TEST_F(Com, SmallOperationsOfTheSystem) {
  const CString guid = system.NewGuid();
  EXPECT_EQ(guid.GetLength(), 38);
  EXPECT_NE(Utf8(guid), Utf8(system.NewGuid()));
  EXPECT_FALSE(system.ClassOf(_T("No.Such.Program")));
  EXPECT_EQ(system.CreateDispatch(_T("No.Such.Program")), nullptr);
  EXPECT_EQ(Utf8(system.ShortPath(_T("C:\\no such file"))), "C:\\no such file");
}

}  // namespace
}  // namespace lorv
