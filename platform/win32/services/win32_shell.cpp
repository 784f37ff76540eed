#include "platform/ports/shell.h"

#include "platform/win32/services/shell_headers.h"

#include "platform/win32/services/shell_progress.h"

// The shell's services of the system, with the flags and masks that callers pass.

namespace lorv {
namespace {

class Win32Shell : public Shell {
 public:
  int Operate(const FileOperation& operation) override {
    // The shell takes a list of paths: the text's own terminator ends the path, this one the list.
    CString list = operation.from;
    list.AppendChar(0);
    SHFILEOPSTRUCTW native = {};
    native.wFunc = operation.function;
    native.pFrom = list;
    native.fFlags = operation.flags;
    return SHFileOperationW(&native);
  }

  bool Start(const ShellStart& start) override {
    SHELLEXECUTEINFOW native = {};
    native.cbSize = sizeof(native);
    native.fMask = start.mask;
    native.lpVerb = start.verb;
    native.lpFile = start.file;
    native.lpParameters = start.parameters;
    native.nShow = start.show;
    if (!ShellExecuteExW(&native)) return false;
    // Given where the mask asks to keep it; the process is not waited for.
    if (native.hProcess != nullptr) CloseHandle(native.hProcess);
    return true;
  }

  std::unique_ptr<ProgressDialog> MakeProgress() override { return MakeShellProgress(); }

  RECT DesktopRect() override {
    RECT rect = {};
    GetWindowRect(GetDesktopWindow(), &rect);
    return rect;
  }
};

}  // namespace

Shell& NativeShell() {
  static Win32Shell shell;
  return shell;
}

}  // namespace lorv
