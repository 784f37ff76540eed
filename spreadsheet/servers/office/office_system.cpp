#include "spreadsheet/servers/office/office_system.h"

#include <utility>

#include "platform/ports/platform.h"
#include "spreadsheet/servers/office/office_failure.h"
#include "spreadsheet/servers/office/office_library.h"

// The office in the role of a spreadsheet program. It has no window: showing means writing a file and having
// the desktop open it. One office is kept for a later import, as a user's program would still be open.

namespace lorv::office {
namespace {

// Of the office in the role of a program.
constexpr GUID kOfficeClass = {0x2C9E7F0B, 0x51A8, 0x4E36, {0x8D, 0x17, 0x3B, 0x90, 0xE4, 0x6A, 0x52, 0xF8}};

void ReportWhyNot(const OfficeFault& fault) {
  const CString text = _T("无法启动 LibreOffice：") + CString(TextView(fault.reason));
  PortsInForce().dialogs->ShowMessage({text, CString(), kButtonsOk});
}

}  // namespace

OfficeSystem::OfficeSystem(Program family, Starter starter)
    : family_(family), starter_(starter ? std::move(starter) : Starter([] { return StartOffice(); })) {}

std::unique_ptr<OfficeBridge> OfficeSystem::NewOffice() {
  try {
    return starter_();
  } catch (const OfficeFault& fault) {
    ReportWhyNot(fault);
    return nullptr;
  }
}

void OfficeSystem::Forget(const OfficeProgram& program) {
  std::erase_if(running_, [&](const ProgramRef& other) { return other.get() == &program; });
}

void OfficeSystem::EndAll() {
  running_.clear();
}

AutoRef OfficeSystem::CreateDispatch(LPCTSTR program_id) {
  if (!ClassOf(program_id)) return nullptr;
  auto office = NewOffice();
  if (!office) return nullptr;
  const auto program = std::make_shared<OfficeProgram>(family_, std::move(office));
  program->on_visible = [this](OfficeProgram& each) { Show(each); };
  program->on_quit = [this](OfficeProgram& each) { Forget(each); };
  return ApplicationObject(program);
}

std::optional<GUID> OfficeSystem::ClassOf(LPCTSTR program_id) {
  // The other program is not installed here.
  if (CString(program_id) != ProgramId(family_)) return std::nullopt;
  return kOfficeClass;
}

AutoRef OfficeSystem::ActiveObject(const GUID& /*class_id*/) {
  return running_.empty() ? nullptr : ApplicationObject(running_.back());
}

std::vector<ListedWorkbook> OfficeSystem::OpenWorkbooks() {
  std::vector<ListedWorkbook> open;
  for (const auto& program : running_) {
    for (const auto& book : program->Books()) {
      open.push_back({program->Family(), book->name, WorkbookObject(program, book)});
    }
  }
  return open;
}

void OfficeSystem::Show(OfficeProgram& program) {
  for (const auto& book : program.Books()) {
    const CString path = ScratchPath(_T(".xlsx"));
    // The workbook keeps the name that it is listed by.
    const CString name = book->name;
    program.SaveBook(*book, path);
    book->name = name;
    OpenByDesktop(path);
  }
  // An office without a workbook has nothing to be read back.
  if (program.Books().empty()) return;
  running_.assign(1, program.shared_from_this());
}

}  // namespace lorv::office
