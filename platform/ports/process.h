#pragma once

#include <cstdint>
#include <optional>

#include "framework/native/export.h"
#include "framework/text/cstring.h"

// What the running program knows of itself and of the machine.
// Any thread.
namespace lorv {

struct ThreadTimes {
  std::int64_t kernel = 0;  // counts of 100 nanoseconds
  std::int64_t user = 0;
};

class COMM_LORV_API Process {
 public:
  Process() = default;
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  virtual ~Process() = default;

  // The path of a module, cut to `limit` units with a terminator; empty for a module that is not loaded.
  // A null handle is the main program. Off Windows a handle is any address inside the module.
  virtual CString ModulePath(HINSTANCE module, int limit) = 0;
  // A text of a file's version block, by its path in the block such as
  // "\StringFileInfo\040904B0\FileVersion"; nothing where there is none. Files have version blocks on
  // Windows only.
  virtual std::optional<CString> VersionText(LPCTSTR path, LPCTSTR block) = 0;
  // Physical memory that is free to be taken, in bytes.
  virtual std::uint64_t FreePhysicalMemory() = 0;
  // Calls the entry of this ordinal with a record, if the process has loaded a module of this name already;
  // false, and nothing is done, if not. Off Windows exports have no ordinals: the entry of ordinal 28 is the
  // function "Ordinal28".
  virtual bool CallLoadedModule(LPCTSTR module, int ordinal, void* record) = 0;
  // Time that the calling thread has used.
  virtual ThreadTimes TimesOfThread() = 0;
};

COMM_LORV_API Process& NativeProcess();

}  // namespace lorv
