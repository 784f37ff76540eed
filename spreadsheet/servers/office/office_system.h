#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "spreadsheet/connection/quiet_system.h"
#include "spreadsheet/servers/office/office_program.h"

namespace lorv::office {

// Starts an office; OfficeFault where that fails.
using Starter = std::function<std::unique_ptr<OfficeBridge>()>;

// LibreOffice as a spreadsheet program: a hidden one runs for each exchange, with a profile of its own, and
// reads and writes the files of the system.
//
// A workbook that the exchange shows is written into the suite's "Temp" folder as .xlsx and handed to the
//   desktop; the office behind the last one shown goes on running, so that it can be read back. All others
//   end with their last object.
// Failures: an office that does not start is reported to the user with its reason. One that ends or hangs in
//   the middle makes the call fail with COleDispatchException, code 0x800706BA.
// One thread: that of the user interface. The office ends with that thread.
class COMM_LORV_API OfficeSystem : public QuietSystem {
 public:
  // Plays one of the two programs. Without a starter it loads the module of the bridge.
  explicit OfficeSystem(Program family = Program::kExcel, Starter starter = {});

  const std::vector<ProgramRef>& Running() const { return running_; }
  // Ends the office that goes on running.
  void EndAll();

  AutoRef CreateDispatch(LPCTSTR program_id) override;
  std::optional<GUID> ClassOf(LPCTSTR program_id) override;
  AutoRef ActiveObject(const GUID& class_id) override;

 protected:
  std::vector<ListedWorkbook> OpenWorkbooks() override;

 private:
  // Null where it does not start, which was reported to the user.
  std::unique_ptr<OfficeBridge> NewOffice();
  void Forget(const OfficeProgram& program);
  void Show(OfficeProgram& program);

  Program family_;
  Starter starter_;
  std::vector<ProgramRef> running_;
};

}  // namespace lorv::office
