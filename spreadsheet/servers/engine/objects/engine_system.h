#pragma once

#include <vector>

#include "spreadsheet/connection/quiet_system.h"
#include "spreadsheet/servers/engine/objects/engine_objects.h"

namespace lorv::engine {

// The engine as a spreadsheet program: workbooks in memory, read from and written to .xlsx files.
//
// A workbook without a file that the exchange shows is written into the suite's "Temp" folder and handed to
//   the desktop, which opens it with the user's own program. The last program shown, and those started by
//   Start, are the running ones; the others end with their last object.
// One thread: that of the user interface.
class COMM_LORV_API EngineSystem : public QuietSystem {
 public:
  // Plays one of the two programs.
  explicit EngineSystem(Program family = Program::kExcel) : family_(family) {}

  // A program that runs as if its user had started it, with nothing open.
  ProgramRef Start();
  const std::vector<ProgramRef>& Running() const { return running_; }

  AutoRef CreateDispatch(LPCTSTR program_id) override;
  std::optional<GUID> ClassOf(LPCTSTR program_id) override;
  AutoRef ActiveObject(const GUID& class_id) override;

 protected:
  std::vector<ListedWorkbook> OpenWorkbooks() override;

 private:
  ProgramRef NewProgram();
  void Show(ProgramState& program);

  Program family_;
  std::vector<ProgramRef> running_;
  ProgramRef shown_;
};

}  // namespace lorv::engine
