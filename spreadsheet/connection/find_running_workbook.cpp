#include <algorithm>
#include <iterator>
#include <map>

#include "framework/text/text_compare.h"
#include "spreadsheet/connection/connect_spreadsheet.h"
#include "spreadsheet/connection/spreadsheet_system.h"

// The search for a workbook among the objects that the system lists as running, by the name that each shows.
// A program that has just been started enters its workbooks some time later, so the list is walked again and
// again, with a short wait between.

namespace lorv {
namespace {

// The message by which the first program is asked to enter its workbooks at once.
constexpr UINT kRegisterYourself = 0x412;

struct RunningWorkbookEntry {
  ConnectResult result = CONNECT_NONE;
  AutoRef workbook;
};

bool IsSame(const GUID& a, const GUID& b) {
  return a.Data1 == b.Data1 && a.Data2 == b.Data2 && a.Data3 == b.Data3 &&
         std::equal(std::begin(a.Data4), std::end(a.Data4), std::begin(b.Data4));
}

std::optional<Program> ProgramOfWorkbook(const GUID& type) {
  for (const Program program : {Program::kExcel, Program::kEt}) {
    if (IsSame(type, WorkbookId(program))) return program;
  }
  return std::nullopt;
}

// The search of one workbook. What was found stays known over the rounds; later entries overwrite.
class Search {
 public:
  explicit Search(const CString& name) : name_(name) {}

  // One walk through the table: false where the table is not to be had.
  bool Walk() {
    AskProgramToRegister();
    const auto running = system_.EnumRunning();
    if (!running) return false;
    while (sought_ == nullptr && running->Next()) {
      if (const auto object = running->Bind()) Look(*object);
    }
    return true;
  }

  const RunningWorkbookEntry* Sought() const { return sought_; }

  ConnectResult Settle(AutoRef& workbook) {
    if (found_.empty()) return AttachActiveApplication(workbook);
    // With one workbook open there is nothing to choose.
    if (found_.size() == 1) return Take(found_.begin()->second, workbook);
    CStringArray names;
    for (const auto& [name, entry] : found_) names.Add(name);
    const int chosen = system_.ChooseName(names);
    if (chosen < 0) return CONNECT_CANCELLED;
    if (chosen >= static_cast<int>(found_.size())) return AttachActiveApplication(workbook);
    return Take(std::next(found_.begin(), chosen)->second, workbook);
  }

  static ConnectResult Take(const RunningWorkbookEntry& entry, AutoRef& workbook) {
    workbook = entry.workbook;
    return entry.result;
  }

 private:
  // The first program enters its workbooks into the table when it loses the focus, or when asked.
  void AskProgramToRegister() {
    if (system_.ClassOf(ProgramId(Program::kExcel))) system_.NudgeWindow(_T("XLMAIN"), kRegisterYourself);
  }

  void Look(RunningObject& object) {
    const unsigned types = object.TypeInfoCount();
    system_.Trace(_T("GetTypeInfoCount"));
    for (unsigned i = 0; i < types && sought_ == nullptr; ++i) LookByType(object, i);
    // Without type information only the question for the interface itself is left.
    if (types == 0) LookByInterface(object);
  }

  void LookByType(RunningObject& object, unsigned index) {
    const auto type = object.TypeId(index);
    const auto program = type ? ProgramOfWorkbook(*type) : std::nullopt;
    if (!program) return;
    system_.Trace(_T("QueryInterface"));
    const auto shown = object.DisplayName();
    if (!shown) return;
    system_.Trace(_T("GetDisplayName"));
    system_.Trace(*shown);
    const RunningWorkbookEntry& entry = Enter(*shown, *program, object);
    // A shown name may hold more than the one that is sought, its folder for instance.
    if (IsEqual(*shown) || shown->View().find(name_.View()) != TextView::npos) sought_ = &entry;
  }

  void LookByInterface(RunningObject& object) {
    for (const Program program : {Program::kExcel, Program::kEt}) {
      if (!object.HasInterface(WorkbookId(program))) continue;
      const auto shown = object.DisplayName();
      if (!shown) return;
      const RunningWorkbookEntry& entry = Enter(*shown, program, object);
      if (IsEqual(*shown)) sought_ = &entry;
      return;
    }
  }

  bool IsEqual(const CString& shown) const { return CompareWithoutCase(name_.View(), shown.View()) == 0; }

  const RunningWorkbookEntry& Enter(const CString& shown, Program program, RunningObject& object) {
    return found_[shown] = {ResultOf(program), object.Object()};
  }

  SpreadsheetSystem& system_ = SpreadsheetInForce();
  const CString& name_;
  std::map<CString, RunningWorkbookEntry> found_;
  const RunningWorkbookEntry* sought_ = nullptr;
};

}  // namespace

ConnectResult FindRunningWorkbook(AutoRef& workbook, const CString& name) {
  Search search(name);
  // An empty name means any workbook that is open; waiting is for a program that is starting.
  const int rounds = name.IsEmpty() ? 1 : kSearchRounds;
  for (int round = 0; round < rounds; ++round) {
    if (!search.Walk()) return CONNECT_NONE;
    if (search.Sought() != nullptr) return Search::Take(*search.Sought(), workbook);
    SpreadsheetInForce().Sleep(kSearchWait);
  }
  return search.Settle(workbook);
}

}  // namespace lorv
