#include "platform/shell.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "framework/desktop_port.h"
#include "platform/posix/native_path.h"
#include "platform/posix/terminal_progress.h"
#include "platform/posix/trash.h"

extern char** environ;

namespace lorv {
namespace {

namespace fs = std::filesystem;

// Starts a program and leaves it to itself; fails where there is no such program.
constexpr const char* kStartScript =
    "command -v \"$0\" >/dev/null || exit 1; \"$0\" \"$@\" </dev/null >/dev/null 2>&1 &";

std::error_code Delete(const fs::path& path) {
  std::error_code error;
  const auto removed = fs::remove_all(path, error);
  if (!error && removed == 0) return std::make_error_code(std::errc::no_such_file_or_directory);
  return error;
}

bool RunShell(const std::string& program, const std::string& parameter) {
  std::string words[] = {"sh", "-c", kStartScript, program, parameter};
  char* arguments[] = {words[0].data(), words[1].data(), words[2].data(),
                       words[3].data(), words[4].data(), nullptr};
  if (parameter.empty()) arguments[4] = nullptr;
  pid_t shell = 0;
  if (posix_spawn(&shell, "/bin/sh", nullptr, nullptr, arguments, environ) != 0) return false;
  int status = 0;
  while (waitpid(shell, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Where nobody sees the line, nothing is written.
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
    const bool viewer = start.file.CompareNoCase(_T("notepad.exe")) == 0;
    return RunShell(viewer ? "xdg-open" : NativePath(start.file), NativePath(start.parameters));
  }

  std::unique_ptr<ProgressDialog> MakeProgress() override {
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
