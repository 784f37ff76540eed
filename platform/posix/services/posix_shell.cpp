#include "platform/ports/shell.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "framework/ports/desktop_port.h"
#include "platform/ports/desktop_services.h"
#include "platform/posix/services/native_path.h"
#include "platform/posix/services/start_program.h"
#include "platform/posix/services/terminal_progress.h"
#include "platform/posix/services/trash.h"

// The shell's services: deleting with or without undo, starting a viewer, progress. What the desktop in force
// can show it shows; otherwise there is the terminal, or silence.

namespace lorv {
namespace {

namespace fs = std::filesystem;

std::error_code Delete(const fs::path& path) {
  std::error_code error;
  // A folder goes with all that is in it, as by the shell of Windows.
  const auto removed = fs::remove_all(path, error);
  if (!error && removed == 0) return std::make_error_code(std::errc::no_such_file_or_directory);
  return error;
}

// Where no terminal shows the line, nothing is written.
class SilentProgress : public ProgressDialog {
 public:
  void SetTitle(LPCTSTR /*title*/) override {}
  bool SetAnimation(LPCTSTR /*module*/, UINT /*resource*/) override { return true; }
  void Open(DWORD /*flags*/) override {}
  void SetCancelMessage(LPCTSTR /*message*/) override {}
  void Timer(DWORD /*action*/) override {}
  void SetProgress(DWORD /*position*/, DWORD /*total*/) override {}
  void SetLine(DWORD /*line*/, LPCTSTR /*text*/, bool /*compact_path*/) override {}
  bool HasUserCancelled() override { return false; }
  void Close() override {}
};

// A file that is no program: the desktop knows what opens it.
bool IsDocument(const std::string& path) {
  std::error_code error;
  return fs::is_regular_file(path, error) && access(path.c_str(), X_OK) != 0;
}

class PosixShell : public Shell {
 public:
  RECT DesktopRect() override {
    const Desktop* const desktop = DesktopIfAny();
    return desktop == nullptr ? RECT{0, 0, 1920, 1080} : desktop->Screen();
  }

  int Operate(const FileOperation& operation) override {
    if (operation.function != kFileDelete || operation.from.IsEmpty()) return EINVAL;
    const fs::path path = NativePath(operation.from);
    const bool keep = (operation.flags & kFileAllowUndo) != 0;
    return (keep ? MoveToTrash(path) : Delete(path)).value();
  }

  bool Start(const ShellStart& start) override {
    // The suite names the viewer of Windows; the desktop's own stands for it.
    const bool viewer = start.file.CompareNoCase(_T("notepad.exe")) == 0;
    std::vector<std::string> words;
    if (viewer || IsDocument(NativePath(start.file))) words.emplace_back("xdg-open");
    if (!viewer) words.push_back(NativePath(start.file));
    if (!start.parameters.IsEmpty()) words.push_back(NativePath(start.parameters));
    return StartProgram(std::move(words));
  }

  std::unique_ptr<ProgressDialog> MakeProgress() override {
    if (DesktopServices* const services = ServicesOfDesktop()) return services->MakeProgress();
    if (isatty(STDERR_FILENO) == 0) return std::make_unique<SilentProgress>();
    return std::make_unique<TerminalProgress>(stderr);
  }
};

}  // namespace

Shell& NativeShell() {
  static PosixShell shell;
  return shell;
}

}  // namespace lorv
