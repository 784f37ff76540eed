#include <gtest/gtest.h>

#include <algorithm>

#include "framework/objects/exceptions.h"
#include "spreadsheet/automation/automation_family.h"
#include "spreadsheet/connection/connect_spreadsheet.h"
#include "spreadsheet/connection/spreadsheet_system.h"
#include "tests/spreadsheet/exchange_desk.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using Texts = std::vector<std::string>;

// An object that answers nothing and is known by its name.
class NamedObject : public AutoObject {
 public:
  explicit NamedObject(std::string text) : name(std::move(text)) {}
  AutoValue Invoke(DISPID /*dispid*/, Form /*form*/, std::span<const AutoValue> /*args*/) override {
    AfxThrowOleException(E_NOTIMPL);
  }
  void KeepAlive() override {}
  std::string name;
};

std::string NameOf(const AutoRef& object) {
  const auto* const named = dynamic_cast<const NamedObject*>(object.get());
  return named == nullptr ? "none" : named->name;
}

// One entry of the table of running objects, as a test wants it.
struct Entry {
  std::string name;
  std::vector<std::optional<GUID>> types;  // nothing: that type information fails
  std::optional<Program> interface_of = std::nullopt;
  bool binds = true;
  bool has_name = true;
};

const GUID kStranger = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
const GUID kExcelBook = WorkbookId(Program::kExcel);
const GUID kEtBook = WorkbookId(Program::kEt);

class ScriptedSystem : public SpreadsheetSystem {
 public:
  std::vector<std::vector<Entry>> rounds;  // the last one goes on for ever
  std::vector<Program> registered;
  std::vector<Program> creatable;
  bool table = true;
  bool creating_throws = false;
  AutoRef active;
  int choice = 0;
  CString executable;
  std::optional<CString> chosen_file;
  Texts notes;
  Texts offered;
  int walks = 0;
  int sleeps = 0;

  AutoRef CreateDispatch(LPCTSTR program_id) override {
    notes.push_back("create " + Utf8(program_id));
    if (creating_throws) throw 5;
    for (const Program program : creatable) {
      if (CString(program_id) == ProgramId(program)) return application;
    }
    return nullptr;
  }
  std::optional<GUID> ClassOf(LPCTSTR program_id) override {
    for (const Program program : registered) {
      if (CString(program_id) == ProgramId(program)) return kStranger;
    }
    return std::nullopt;
  }
  AutoRef ActiveObject(const GUID& /*class_id*/) override {
    notes.emplace_back("active");
    return active;
  }
  std::unique_ptr<RunningObjects> EnumRunning() override;
  void NudgeWindow(LPCTSTR window_class, UINT message) override {
    notes.push_back("nudge " + Utf8(window_class) + " " + std::to_string(message));
  }
  CString ProgramOfFile(const CString& /*file*/) override { return executable; }
  CString ShortPath(const CString& path) override { return path + _T("~1"); }
  void RunCommand(const CString& command, int show) override {
    notes.push_back("run " + Utf8(command) + " " + std::to_string(show));
  }
  CString NewGuid() override { return _T("{0011-22}"); }
  void Sleep(unsigned milliseconds) override { sleeps += milliseconds == 10 ? 1 : 1000000; }
  void Trace(const CString& text) override { notes.push_back("trace " + Utf8(text)); }
  std::optional<CString> AskForFile(const FileQuestion& question) override {
    notes.push_back("ask " + Utf8(question.default_extension) + " " + Utf8(question.default_name) + " " +
                    std::to_string(question.flags) + " " + Utf8(question.filter));
    return chosen_file;
  }
  int ChooseName(const CStringArray& names) override {
    for (int i = 0; i < names.GetSize(); ++i) offered.push_back(Utf8(names.GetAt(i)));
    return choice;
  }
  void BeginWait() override {}
  void EndWait() override {}

  AutoRef application;
};

class ScriptedObject : public RunningObject {
 public:
  ScriptedObject(ScriptedSystem& system, Entry entry) : system_(system), entry_(std::move(entry)) {}
  unsigned TypeInfoCount() override { return static_cast<unsigned>(entry_.types.size()); }
  std::optional<GUID> TypeId(unsigned index) override { return entry_.types[index]; }
  bool HasInterface(const GUID& id) override {
    system_.notes.emplace_back("query");
    return entry_.interface_of && WorkbookId(*entry_.interface_of).Data1 == id.Data1;
  }
  std::optional<CString> DisplayName() override {
    if (!entry_.has_name) return std::nullopt;
    return CString::FromUtf8(entry_.name);
  }
  AutoRef Object() override { return std::make_shared<NamedObject>(entry_.name); }

 private:
  ScriptedSystem& system_;
  Entry entry_;
};

class ScriptedWalk : public RunningObjects {
 public:
  ScriptedWalk(ScriptedSystem& system, std::vector<Entry> entries)
      : system_(system), entries_(std::move(entries)) {}
  bool Next() override { return ++at_ <= entries_.size(); }
  std::unique_ptr<RunningObject> Bind() override {
    const Entry& entry = entries_[at_ - 1];
    if (!entry.binds) return nullptr;
    return std::make_unique<ScriptedObject>(system_, entry);
  }

 private:
  ScriptedSystem& system_;
  std::vector<Entry> entries_;
  std::size_t at_ = 0;
};

std::unique_ptr<RunningObjects> ScriptedSystem::EnumRunning() {
  if (!table) return nullptr;
  const auto round = static_cast<std::size_t>(walks++);
  if (rounds.empty()) return std::make_unique<ScriptedWalk>(*this, std::vector<Entry>());
  return std::make_unique<ScriptedWalk>(*this, rounds[std::min(round, rounds.size() - 1)]);
}

class Connection : public testing::Test {
 protected:
  ConnectResult Find(const char* name) { return FindRunningWorkbook(book, CString::FromUtf8(name)); }
  ConnectResult Connect() { return ConnectSpreadsheet(book, true, CString(), false); }
  std::ptrdiff_t Noted(const std::string& text) const {
    return std::count(system.notes.begin(), system.notes.end(), text);
  }

  HeadlessPlatform machine;
  ScopedPlatform platform_scope{machine.Ports()};
  ScriptedSystem system;
  ScopedSpreadsheet scope{system};
  AutoRef book;
};

TEST_F(Connection, TheFirstWorkbookEndsASearchWithoutAName) {
  system.rounds = {{{"C:\\a.xlsx", {kEtBook}}, {"C:\\b.xlsx", {kExcelBook}}}};
  EXPECT_EQ(Find(""), CONNECT_ET);
  EXPECT_EQ(NameOf(book), "C:\\a.xlsx");
  EXPECT_EQ(system.walks, 1);
  EXPECT_EQ(system.sleeps, 0);
  EXPECT_TRUE(system.offered.empty());
  EXPECT_EQ(system.notes, (Texts{"trace GetTypeInfoCount", "trace QueryInterface", "trace GetDisplayName",
                                 "trace C:\\a.xlsx"}));
}

TEST_F(Connection, ANameIsFoundEqualOrContained) {
  system.rounds = {{{"C:\\HOUSE.XLS", {kExcelBook}}, {"C:\\Temp\\x.csv - WPS", {kEtBook}}}};
  EXPECT_EQ(Find("c:\\house.xls"), CONNECT_EXCEL);
  EXPECT_EQ(Find("x.csv"), CONNECT_ET);
  EXPECT_EQ(NameOf(book), "C:\\Temp\\x.csv - WPS");
  // Containment distinguishes letter case: nothing is sought, so the two are offered in the end.
  EXPECT_EQ(Find("X.CSV"), CONNECT_EXCEL);
  EXPECT_EQ(system.offered, (Texts{"C:\\HOUSE.XLS", "C:\\Temp\\x.csv - WPS"}));
}

TEST_F(Connection, AFileThatNeverAppearsTakesAThousandRounds) {
  EXPECT_EQ(Find("C:\\none.csv"), CONNECT_NONE);
  EXPECT_EQ(system.walks, 1000);
  EXPECT_EQ(system.sleeps, 1000);
  system.walks = system.sleeps = 0;
  EXPECT_EQ(Find(""), CONNECT_NONE);
  EXPECT_EQ(system.walks, 1);
  EXPECT_EQ(system.sleeps, 1);
}

TEST_F(Connection, AFileThatAppearsLaterIsFound) {
  system.rounds = {{}, {}, {{"C:\\x.csv", {kExcelBook}}}};
  EXPECT_EQ(Find("C:\\x.csv"), CONNECT_EXCEL);
  EXPECT_EQ(system.sleeps, 2);
}

TEST_F(Connection, WhatWasFoundIsKnownOverTheRounds) {
  system.rounds = {{{"C:\\a.xlsx", {kExcelBook}}}, {}};
  EXPECT_EQ(Find("C:\\x.csv"), CONNECT_EXCEL);
  EXPECT_EQ(NameOf(book), "C:\\a.xlsx");
  EXPECT_TRUE(system.offered.empty());
  // A later entry of the same name takes its place.
  system.walks = 0;
  system.rounds = {{{"C:\\a.xlsx", {kExcelBook}}}, {{"C:\\a.xlsx", {kEtBook}}}};
  EXPECT_EQ(Find("C:\\x.csv"), CONNECT_ET);
}

TEST_F(Connection, TheProgramIsAskedToRegisterInEachRound) {
  system.registered = {Program::kExcel};
  system.rounds = {{}, {{"C:\\x.csv", {kExcelBook}}}};
  EXPECT_EQ(Find("C:\\x.csv"), CONNECT_EXCEL);
  EXPECT_EQ(Noted("nudge XLMAIN 1042"), 2);
  system.registered = {Program::kEt};
  EXPECT_EQ(Find("C:\\x.csv"), CONNECT_EXCEL);
  EXPECT_EQ(Noted("nudge XLMAIN 1042"), 2);
}

TEST_F(Connection, WithoutTheTableTheSearchEndsAtOnce) {
  system.table = false;
  system.registered = {Program::kExcel};
  EXPECT_EQ(Find("C:\\x.csv"), CONNECT_NONE);
  EXPECT_EQ(Noted("active"), 0);
  EXPECT_EQ(system.sleeps, 0);
}

TEST_F(Connection, WhatFailsIsPassedOver) {
  system.rounds = {{{"unbound", {kExcelBook}, std::nullopt, false},
                    {"stranger", {kStranger}, Program::kExcel},
                    {"nameless", {kExcelBook}, std::nullopt, true, false},
                    {"second type", {std::nullopt, kStranger, kEtBook}}}};
  EXPECT_EQ(Find(""), CONNECT_ET);
  EXPECT_EQ(NameOf(book), "second type");
  EXPECT_EQ(Noted("query"), 0);  // with type information no interface is asked for
}

TEST_F(Connection, AMatchThatIsNotSoughtGoesOnToTheNextType) {
  system.rounds = {{{"C:\\a.xlsx", {kExcelBook, kEtBook}}}};
  EXPECT_EQ(Find("C:\\x.csv"), CONNECT_ET);  // the second entry of its name
}

TEST_F(Connection, ObjectsWithoutTypesMatchByEqualityOnly) {
  system.rounds = {{{"C:\\a.xlsx", {}, Program::kExcel}, {"C:\\b.et", {}, Program::kEt}, {"no book", {}}}};
  EXPECT_EQ(Find("c:\\B.et"), CONNECT_ET);
  EXPECT_EQ(NameOf(book), "C:\\b.et");
  // No name is contained here: the user is asked.
  system.choice = 1;
  EXPECT_EQ(Find(""), CONNECT_ET);
  EXPECT_EQ(system.offered, (Texts{"C:\\a.xlsx", "C:\\b.et"}));
}

TEST_F(Connection, TheUserChoosesAmongSeveral) {
  system.rounds = {{{"b", {}, Program::kEt}, {"B", {}, Program::kExcel}, {"a", {}, Program::kExcel}}};
  const auto chosen = [&](int choice) {
    system.choice = choice;
    system.offered.clear();
    book.reset();
    return Find("");
  };
  EXPECT_EQ(chosen(0), CONNECT_EXCEL);
  EXPECT_EQ(NameOf(book), "B");
  EXPECT_EQ(system.offered, (Texts{"B", "a", "b"}));  // letter case counts in their order
  EXPECT_EQ(chosen(2), CONNECT_ET);
  EXPECT_EQ(NameOf(book), "b");
  EXPECT_EQ(chosen(-1), CONNECT_CANCELLED);
  EXPECT_EQ(NameOf(book), "none");
  system.registered = {Program::kExcel};
  EXPECT_EQ(chosen(3), CONNECT_NONE);
  EXPECT_EQ(Noted("active"), 1);
}

TEST_F(Connection, TheFirstProgramWins) {
  engine::EngineSystem engine;
  system.application = engine.CreateDispatch(ProgramId(Program::kExcel));
  system.creatable = {Program::kEt, Program::kExcel};
  EXPECT_EQ(Connect(), CONNECT_EXCEL);
  EXPECT_EQ(system.notes, Texts{"create Excel.Application"});
}

TEST_F(Connection, TheSecondProgramIsTakenWhereTheFirstIsNot) {
  engine::EngineSystem engine(Program::kEt);
  system.application = engine.CreateDispatch(ProgramId(Program::kEt));
  system.creatable = {Program::kEt};
  EXPECT_EQ(Connect(), CONNECT_ET);
  ASSERT_TRUE(book);
  EXPECT_EQ(AutomationFamily(Program::kEt).SheetCount(AutomationFamily(Program::kEt).Worksheets(book)), 1);
}

TEST_F(Connection, AFailureOfTheFirstProgramDoesNotLeadToTheSecond) {
  system.creating_throws = true;
  EXPECT_EQ(Connect(), CONNECT_NONE);
  EXPECT_EQ(Noted("create Excel.Application"), 1);
  EXPECT_EQ(Noted("create ET.Application"), 0);
  EXPECT_EQ(system.walks, 1000);
}

TEST_F(Connection, ARegisteredProgramIsStartedByTheShell) {
  system.registered = {Program::kEt};
  system.rounds = {{}, {{"C:\\Suite\\Temp\\0011-22.csv", {kEtBook}}}};
  machine.files.MakeFolder(_T("C:\\Suite"));
  EXPECT_EQ(Connect(), CONNECT_ET);
  ASSERT_EQ(machine.shell.started.size(), 1U);
  const ShellStart& start = machine.shell.started[0];
  EXPECT_EQ(Utf8(start.verb), "open");
  EXPECT_EQ(Utf8(start.file), "C:\\Suite\\Temp\\0011-22.csv");
  EXPECT_EQ(start.mask, 64U);
  EXPECT_EQ(start.show, 0);
  // Empty, and it stays.
  EXPECT_EQ(machine.files.BytesOf(_T("C:\\Suite\\Temp\\0011-22.csv")), "");
}

TEST_F(Connection, AnAssociatedProgramIsRunWithTheFileInQuotes) {
  system.executable = _T("C:\\Program Files\\et.exe");
  EXPECT_EQ(Connect(), CONNECT_NONE);
  EXPECT_EQ(Noted("run C:\\Program Files\\et.exe~1 \"C:\\Suite\\Temp\\0011-22.csv\" 0"), 1);
  EXPECT_TRUE(machine.dialogs.messages.empty());
}

TEST_F(Connection, AProgramThatTheUserChoosesIsRunWithTheFileWithoutQuotes) {
  system.chosen_file = _T("D:\\WPS\\et.exe");
  EXPECT_EQ(Connect(), CONNECT_NONE);
  EXPECT_EQ(Noted("run \"D:\\WPS\\et.exe\" C:\\Suite\\Temp\\0011-22.csv 0"), 1);
  EXPECT_EQ(Noted("ask exe EXCEL.exe 4100 Excel (*EXCEL.exe, *et.exe)|*EXCEL.exe; *et.exe||"), 1);
  ASSERT_EQ(machine.dialogs.messages.size(), 1U);
  EXPECT_EQ(Utf8(machine.dialogs.messages[0].text), "找不到Excel,请选择Excel程序文件路径:");
}

TEST_F(Connection, ACancelledChoiceStillSearchesAndReportsASecondTime) {
  CAdExcel2GridEx exchange;
  EXPECT_FALSE(exchange.ToExcel());
  EXPECT_EQ(system.walks, 1000);
  ASSERT_EQ(machine.dialogs.messages.size(), 2U);
  EXPECT_EQ(Utf8(machine.dialogs.messages[1].text), "没有打开 excel 程序!");
  for (const auto& note : system.notes) EXPECT_NE(note.substr(0, 3), "run");
}

TEST_F(Connection, ACancelledChoiceOfWorkbookIsSilent) {
  system.rounds = {{{"a", {}, Program::kExcel}, {"b", {}, Program::kExcel}}};
  system.choice = -1;
  CAdExcel2GridEx exchange;
  EXPECT_FALSE(exchange.FromExcel());
  EXPECT_TRUE(machine.dialogs.messages.empty());
}

TEST_F(Connection, ARunningProgramWithoutAWorkbookGetsOne) {
  engine::EngineSystem engine;
  const auto program = engine.Start();
  system.registered = {Program::kExcel};
  system.active = engine::ApplicationObject(program);
  EXPECT_EQ(AttachActiveApplication(book), CONNECT_EXCEL);
  EXPECT_EQ(program->Books().size(), 1U);
}

TEST_F(Connection, RegisteredButNotRunningTheOtherIsNotTried) {
  system.registered = {Program::kExcel, Program::kEt};
  EXPECT_EQ(AttachActiveApplication(book), CONNECT_NONE);
  EXPECT_EQ(Noted("active"), 1);
  system.registered.clear();
  EXPECT_EQ(AttachActiveApplication(book), CONNECT_NONE);
  EXPECT_EQ(Noted("active"), 1);
}

TEST_F(Connection, AProgramThatGivesNoWorkbookIsEnded) {
  engine::EngineSystem engine;
  const auto program = engine.Start();
  CallRecord record;
  record.fail_at = 2;  // Workbooks answers, Add fails
  system.registered = {Program::kExcel};
  system.active =
      RecordedObject(record, Program::kExcel, ObjectKind::kApplication, engine::ApplicationObject(program));
  EXPECT_EQ(AttachActiveApplication(book), CONNECT_NONE);
  EXPECT_TRUE(program->ended);
  EXPECT_FALSE(book);
  // It writes its release into the record, which ends before the system does.
  system.active.reset();
}

}  // namespace
}  // namespace lorv
