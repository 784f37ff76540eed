#include <objbase.h>

#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/objects/engine_object.h"
#include "tests/spreadsheet/win32/com_server.h"

// A spreadsheet program of its own process: the engine with one workbook in the table of running objects, or
// as a program that the system starts when somebody wants one.
//
//   lorv_com_program FAMILY NAME READY QUIT [dies|hangs CALLS]
//   lorv_com_program serve FAMILY [-Embedding]
//
// FAMILY is Excel or Et, NAME that of the workbook, READY the event that tells that it is there, QUIT the one
// that ends the program. At one of its calls it dies or hangs. The word -Embedding is the system's own.

namespace lorv::test {
namespace {

constexpr DWORD kLongest = 120000;  // a test that forgot its program

// What happens at the last call that is answered, for all objects of a program.
struct Fate {
  int calls = 0;
  int last = 0;  // 0: none
  bool hangs = false;

  void Call() {
    if (++calls != last) return;
    if (hangs) Sleep(INFINITE);
    TerminateProcess(GetCurrentProcess(), 1);
  }
};

Fate fate;

// An object whose calls count, and those of all that it hands out.
class Mortal : public AutoObject {
 public:
  explicit Mortal(AutoRef object) : object_(std::move(object)) {}
  AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) override {
    fate.Call();
    AutoValue value = object_->Invoke(dispid, form, args);
    if (value.object) value.object = std::make_shared<Mortal>(value.object);
    return value;
  }
  void KeepAlive() override { object_->KeepAlive(); }

 private:
  AutoRef object_;
};

std::shared_ptr<engine::Book> TableOf(engine::EngineSystem& engine, const char* word) {
  const auto book = engine.Start()->AddBook();
  const auto put = [&](long row, long column, const _variant_t& value) {
    engine::PutCellValue(*book, *book->sheets[0], row, column, value);
  };
  put(0, 0, _variant_t(CString::FromUtf8(word)));
  put(0, 1, _variant_t(1.5));
  put(1, 0, _variant_t(_T("x")));
  put(1, 1, _variant_t(2.0));
  return book;
}

Program FamilyOf(const std::string& word) {
  return word == "Et" ? Program::kEt : Program::kExcel;
}

// A program of one thread serves its calls by its messages.
void ServeUntil(HANDLE quit, DWORD longest = kLongest) {
  const DWORD begin = GetTickCount();
  while (GetTickCount() - begin < longest) {
    const DWORD what = MsgWaitForMultipleObjects(1, &quit, FALSE, 1000, QS_ALLINPUT);
    if (what == WAIT_OBJECT_0) return;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
  }
}

// Sees when its user ends the program, from any of its objects.
class Ending : public AutoObject {
 public:
  using End = std::function<void()>;
  Ending(AutoRef object, Program family, End end)
      : object_(std::move(object)), family_(family), end_(std::move(end)) {}
  AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) override {
    AutoValue value = object_->Invoke(dispid, form, args);
    if (form == Form::kCall && dispid == DispidOf(family_, Operation::kQuit)) end_();
    // Worksheets are handed back as arguments and are no way to an application's end.
    if (value.object && !engine::SheetOf(value.object))
      value.object = std::make_shared<Ending>(value.object, family_, end_);
    return value;
  }
  void KeepAlive() override { object_->KeepAlive(); }

 private:
  AutoRef object_;
  Program family_;
  End end_;
};

// Serves until its user has ended it, and somewhat longer: he still gives his objects back.
int Serve(Program family) {
  constexpr DWORD kAfterwards = 1000;
  CoInitialize(nullptr);
  const HANDLE has_quit = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  const HANDLE never = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  {
    std::optional<ProgramClass> served;
    const auto end = [&] {
      // Before the call is answered: the next user is to get a program of his own.
      served->Revoke();
      SetEvent(has_quit);
    };
    served.emplace(family, [&](const AutoRef& application) {
      return std::make_shared<Ending>(application, family, end);
    });
    ServeUntil(has_quit);
    ServeUntil(never, kAfterwards);
  }
  CoUninitialize();
  CloseHandle(never);
  CloseHandle(has_quit);
  return 0;
}

int Run(int count, char** words) {
  if (count > 2 && std::string(words[1]) == "serve") return Serve(FamilyOf(words[2]));
  if (count < 5) return 2;
  const Program family = FamilyOf(words[1]);
  if (count > 6) fate = {0, std::atoi(words[6]), std::string(words[5]) == "hangs"};
  CoInitialize(nullptr);
  {
    engine::EngineSystem engine(family);
    const auto book = TableOf(engine, words[1]);
    const auto object = std::make_shared<Mortal>(engine::WorkbookObject(engine.Running().back(), book));
    const RunningEntry entry(Dispatched(object, WorkbookId(family)), CString::FromUtf8(words[2]));
    const HANDLE quit = OpenEventA(SYNCHRONIZE, FALSE, words[4]);
    const HANDLE ready = OpenEventA(EVENT_MODIFY_STATE, FALSE, words[3]);
    SetEvent(ready);
    ServeUntil(quit);
    CloseHandle(ready);
    CloseHandle(quit);
  }
  CoUninitialize();
  return 0;
}

}  // namespace
}  // namespace lorv::test

int main(int count, char** words) {
  return lorv::test::Run(count, words);
}
