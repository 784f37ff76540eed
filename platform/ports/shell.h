#pragma once

#include <memory>

#include "framework/native/export.h"
#include "framework/text/cstring.h"
#include "platform/ports/progress_dialog.h"

// What the desktop's shell does for a program.
// One thread: that of the user interface.
namespace lorv {

// One call of the shell's file operation, with its own numbers.
struct FileOperation {
  UINT function = 0;
  CString from;  // one path; the port adds the list's second terminator
  WORD flags = 0;
};
constexpr UINT kFileDelete = 3;
constexpr WORD kFileSilent = 0x4;
constexpr WORD kFileNoConfirmation = 0x10;
constexpr WORD kFileAllowUndo = 0x40;
constexpr WORD kFileNoErrorInterface = 0x400;

// One call that starts a program or opens a document.
struct ShellStart {
  CString verb;
  CString file;
  CString parameters;
  int show = 0;
  ULONG mask = 0;
};

class COMM_LORV_API Shell {
 public:
  Shell() = default;
  Shell(const Shell&) = delete;
  Shell& operator=(const Shell&) = delete;
  virtual ~Shell() = default;

  // 0 for success, else the shell's number. With kFileAllowUndo a deleted file goes to the trash.
  virtual int Operate(const FileOperation& operation) = 0;
  // Whether it was started; its end is not waited for. Off Windows "notepad.exe" stands for the desktop's
  // viewer of text files.
  virtual bool Start(const ShellStart& start) = 0;
  // Null where the system has no such dialog.
  virtual std::unique_ptr<ProgressDialog> MakeProgress() = 0;
  // The desktop's rectangle in pixels: off Windows that of the desktop in force, 1920 by 1080 without one.
  virtual RECT DesktopRect() = 0;
};

COMM_LORV_API Shell& NativeShell();

}  // namespace lorv
