#include "spreadsheet/servers/engine/engine_system.h"

#include <algorithm>
#include <random>

#include "platform/ports/platform.h"
#include "spreadsheet/servers/engine/workbook_files.h"

// The engine in the role of a spreadsheet program: it can be created, runs, is found among the running
// ones and shows its workbooks. There is no window of its own, so showing means writing a file and
// having the desktop open it.

namespace lorv::engine {
namespace {

// Of the engine in the role of a program.
constexpr GUID kEngineClass = {0x6F1B2A54, 0x93C1, 0x4D0E, {0x9A, 0x4E, 0x27, 0x61, 0x5C, 0x08, 0xB3, 0xD1}};

class RunningBook : public RunningObject {
 public:
  RunningBook(ProgramRef program, std::shared_ptr<Book> book)
      : program_(std::move(program)), book_(std::move(book)) {}

  unsigned TypeInfoCount() override { return 1; }
  std::optional<GUID> TypeId(unsigned /*index*/) override { return WorkbookId(program_->Family()); }
  // Any workbook of the engine answers whatever it is asked for; the type says which program is played.
  bool HasInterface(const GUID& /*id*/) override { return true; }
  std::optional<CString> DisplayName() override { return book_->name; }
  AutoRef Object() override { return WorkbookObject(program_, book_); }

 private:
  ProgramRef program_;
  std::shared_ptr<Book> book_;
};

class RunningBooks : public RunningObjects {
 public:
  // The books as they are now: the caller may close some while it walks.
  explicit RunningBooks(const std::vector<ProgramRef>& programs) {
    for (const auto& program : programs) {
      for (const auto& book : program->Books()) books_.emplace_back(program, book);
    }
  }

  bool Next() override { return ++at_ <= books_.size(); }
  std::unique_ptr<RunningObject> Bind() override {
    const auto& [program, book] = books_[at_ - 1];
    return std::make_unique<RunningBook>(program, book);
  }

 private:
  std::vector<std::pair<ProgramRef, std::shared_ptr<Book>>> books_;
  std::size_t at_ = 0;
};

}  // namespace

ProgramRef EngineSystem::NewProgram() {
  auto program = std::make_shared<ProgramState>(family_);
  // A program knows nothing of the system that it belongs to.
  program->on_visible = [this](ProgramState& state) { Show(state); };
  program->on_quit = [this](ProgramState& state) {
    std::erase_if(running_, [&](const ProgramRef& each) { return each.get() == &state; });
    if (shown_.get() == &state) shown_.reset();
  };
  return program;
}

ProgramRef EngineSystem::Start() {
  running_.push_back(NewProgram());
  return running_.back();
}

AutoRef EngineSystem::CreateDispatch(LPCTSTR program_id) {
  return ClassOf(program_id) ? ApplicationObject(NewProgram()) : nullptr;
}

std::optional<GUID> EngineSystem::ClassOf(LPCTSTR program_id) {
  // The other program is not installed here.
  if (CString(program_id) != ProgramId(family_)) return std::nullopt;
  return kEngineClass;
}

AutoRef EngineSystem::ActiveObject(const GUID& /*class_id*/) {
  return running_.empty() ? nullptr : ApplicationObject(running_.back());
}

std::unique_ptr<RunningObjects> EngineSystem::EnumRunning() {
  return std::make_unique<RunningBooks>(running_);
}

CString EngineSystem::NewGuid() {
  std::random_device random;
  CString text;
  const unsigned a = random();
  const unsigned b = random();
  const unsigned c = random();
  const unsigned d = random();
  // The digits 4 and 8 say that it is made of random bits.
  text.Format(_T("{%08X-%04X-4%03X-8%03X-%04X%08X}"), a, b >> 16, b & 0xFFF, c >> 20, c & 0xFFFF, d);
  return text;
}

std::optional<CString> EngineSystem::AskForFile(const FileQuestion& /*question*/) {
  return std::nullopt;
}

void EngineSystem::Show(ProgramState& program) {
  // One shown workbook is kept, so that it can be read back; more would pile up, as nobody closes them.
  const ProgramRef self = program.shared_from_this();
  if (std::find(running_.begin(), running_.end(), self) == running_.end()) {
    std::erase(running_, shown_);
    running_.push_back(self);
    shown_ = self;
  }
  Files& files = *PortsInForce().files;
  const CString folder = PortsInForce().suite->RootFolder() + _T("Temp\\");
  for (const auto& book : program.Books()) {
    files.MakeFolder(folder);
    // A name of its own each time: the one before may still be open in the user's program.
    CString guid = NewGuid();
    const CString path = folder + guid.Mid(1, guid.GetLength() - 2) + _T(".xlsx");
    WriteWorkbookFile(*book, path);
    PortsInForce().shell->Start({_T("open"), path, CString(), 1, 0});
  }
}

}  // namespace lorv::engine
