#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/headless/services/headless_files.h"
#include "platform/headless/services/headless_mail.h"
#include "platform/headless/services/headless_printing.h"
#include "platform/ports/platform.h"

// A whole machine in memory: every port answers from what was set, the same at each run, and records what it
// was asked. For tests, and for hosts without a desktop.
// One thread at a time.
namespace lorv {

// Stands still until it is set; local time is universal time.
class COMM_LORV_API HeadlessClock : public Clock {
 public:
  std::int64_t now = 0x01DB0000'00000000;

  SYSTEMTIME LocalTime() override { return ToLocal(now); }
  std::int64_t Now() override { return now; }
  SYSTEMTIME ToLocal(std::int64_t time) override;
  std::int64_t FromLocal(const SYSTEMTIME& local) override;
};

class COMM_LORV_API HeadlessProcess : public Process {
 public:
  std::map<HINSTANCE, CString> modules;  // the null handle is the main program
  std::map<CString, CString> versions;   // by path + " " + block
  std::uint64_t free_memory = std::uint64_t{4} << 30;
  CString loaded_module;  // the one that CallLoadedModule finds
  ThreadTimes times;
  std::vector<CString> asked;
  std::vector<std::vector<BYTE>> records;  // what loaded_module was called with
  std::size_t record_size = 72;

  HeadlessProcess();
  CString ModulePath(HINSTANCE module, int limit) override;
  std::optional<CString> VersionText(LPCTSTR path, LPCTSTR block) override;
  std::uint64_t FreePhysicalMemory() override { return free_memory; }
  bool CallLoadedModule(LPCTSTR module, int ordinal, void* record) override;
  ThreadTimes TimesOfThread() override { return times; }
  // Called within CallLoadedModule, while what the record points to lives.
  void (*on_call)(void* record) = nullptr;
};

// Reads files of the machine; profile values come from a map by section + "\" + key.
class COMM_LORV_API HeadlessSettings : public Settings {
 public:
  HeadlessSettings(Files& files, const CodePage& code_page) : files_(files), code_page_(code_page) {}

  std::map<CString, int> profile;
  std::vector<CString> asked;

  int FileValue(LPCTSTR file, LPCTSTR section, LPCTSTR key, int fallback) override;
  int ProfileValue(LPCTSTR section, LPCTSTR key, int fallback) override;

 private:
  Files& files_;
  const CodePage& code_page_;
};

class COMM_LORV_API HeadlessDialogs : public Dialogs {
 public:
  int answer = kAnswerOk;
  std::vector<MessageRequest> messages;

  int ShowMessage(const MessageRequest& request) override;
};

class COMM_LORV_API HeadlessSuite : public Suite {
 public:
  CString root = _T("C:\\Suite\\");
  CString user = _T("C:\\Users\\Estimator\\");
  CString support = _T("SMTP:support@suite.example");

  CString RootFolder() override { return root; }
  CString UserPath() override { return user; }
  CString SupportAddress() override { return support; }
};

class COMM_LORV_API HeadlessShell : public Shell {
 public:
  bool has_progress = true;
  bool has_animation = true;
  bool in_windows = false;  // progress dialogs are windows of the desktop in force, and not recorded
  bool user_cancelled = false;
  bool starts = true;
  int result = 0;
  RECT desktop = {0, 0, 1920, 1080};
  std::vector<FileOperation> operations;
  std::vector<ShellStart> started;
  std::vector<CString> progress;  // the calls to progress dialogs: "title 计算", "progress 3 10", ...

  int Operate(const FileOperation& operation) override;
  bool Start(const ShellStart& start) override;
  std::unique_ptr<ProgressDialog> MakeProgress() override;
  RECT DesktopRect() override { return desktop; }
};

class COMM_LORV_API HeadlessPlatform {
 public:
  HeadlessClock clock;
  HeadlessFiles files{clock};
  HeadlessProcess process;
  HeadlessSettings settings{files, SuiteCodePage()};
  HeadlessDialogs dialogs;
  HeadlessSuite suite;
  HeadlessShell shell;
  HeadlessMail mail;
  HeadlessPrinting printing;

  Platform Ports();
};

}  // namespace lorv
