#include "spreadsheet/connection/quiet_system.h"

#include <random>

#include "platform/ports/platform.h"

// What systems without programs of the desktop have in common: the table of running objects is a list of
// their own workbooks, and a workbook is shown by a file that the desktop opens.

namespace lorv {
namespace {

class RunningBook : public RunningObject {
 public:
  explicit RunningBook(ListedWorkbook book) : book_(std::move(book)) {}

  unsigned TypeInfoCount() override { return 1; }
  std::optional<GUID> TypeId(unsigned /*index*/) override { return WorkbookId(book_.family); }
  // Any such workbook answers whatever it is asked for; the type says which program is played.
  bool HasInterface(const GUID& /*id*/) override { return true; }
  std::optional<CString> DisplayName() override { return book_.name; }
  AutoRef Object() override { return book_.workbook; }

 private:
  ListedWorkbook book_;
};

class RunningBooks : public RunningObjects {
 public:
  explicit RunningBooks(std::vector<ListedWorkbook> books) : books_(std::move(books)) {}

  // The walk begins in front of the first entry, as that of the system's table does.
  bool Next() override { return ++at_ <= books_.size(); }
  std::unique_ptr<RunningObject> Bind() override { return std::make_unique<RunningBook>(books_[at_ - 1]); }

 private:
  std::vector<ListedWorkbook> books_;
  std::size_t at_ = 0;
};

}  // namespace

std::unique_ptr<RunningObjects> QuietSystem::EnumRunning() {
  return std::make_unique<RunningBooks>(OpenWorkbooks());
}

// Unguessable, as it names files in a folder that others may write into.
CString QuietSystem::NewGuid() {
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

// Cancelled: hosts of such systems ask by dialogs of their own and then call LoadExcel2.
std::optional<CString> QuietSystem::AskForFile(const FileQuestion& /*question*/) {
  return std::nullopt;
}

CString QuietSystem::ScratchPath(LPCTSTR extension) {
  const CString folder = PortsInForce().suite->RootFolder() + _T("Temp\\");
  PortsInForce().files->MakeFolder(folder);
  CString guid = NewGuid();
  return folder + guid.Mid(1, guid.GetLength() - 2) + extension;
}

void QuietSystem::OpenByDesktop(const CString& path) {
  PortsInForce().shell->Start({_T("open"), path, CString(), 1, 0});
}

}  // namespace lorv
