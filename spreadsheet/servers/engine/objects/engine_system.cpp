#include "spreadsheet/servers/engine/objects/engine_system.h"

#include <algorithm>

#include "spreadsheet/servers/engine/files/workbook_files.h"

// The engine in the role of a spreadsheet program: it can be created, runs, is found among the running
// ones and shows its workbooks. There is no window of its own, so showing means writing a file and
// having the desktop open it.

namespace lorv::engine {
namespace {

// Of the engine in the role of a program.
constexpr GUID kEngineClass = {0x6F1B2A54, 0x93C1, 0x4D0E, {0x9A, 0x4E, 0x27, 0x61, 0x5C, 0x08, 0xB3, 0xD1}};

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

std::vector<ListedWorkbook> EngineSystem::OpenWorkbooks() {
  std::vector<ListedWorkbook> open;
  for (const auto& program : running_) {
    for (const auto& book : program->Books()) {
      open.push_back({program->Family(), book->name, WorkbookObject(program, book)});
    }
  }
  return open;
}

void EngineSystem::Show(ProgramState& program) {
  // One shown workbook is kept, so that it can be read back; more would pile up, as nobody closes them.
  const ProgramRef self = program.shared_from_this();
  if (std::find(running_.begin(), running_.end(), self) == running_.end()) {
    std::erase(running_, shown_);
    running_.push_back(self);
    shown_ = self;
  }
  for (const auto& book : program.Books()) {
    const CString path = ScratchPath(_T(".xlsx"));
    WriteWorkbookFile(*book, path);
    OpenByDesktop(path);
  }
}

}  // namespace lorv::engine
