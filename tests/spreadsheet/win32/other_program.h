#pragma once

#include <windows.h>

#include <string>

namespace lorv::test {

// The program of com_program.cpp, which stands beside this one.
inline std::string ComProgramPath() {
  char own[MAX_PATH] = {};
  GetModuleFileNameA(nullptr, own, MAX_PATH);
  const std::string path(own);
  return path.substr(0, path.find_last_of('\\') + 1) + "lorv_com_program.exe";
}

// A spreadsheet program that runs beside this process, with one workbook open; it ends with the object.
class OtherProgram {
 public:
  // `family` is "Excel" or "Et"; `fate` is empty, or "dies 9" or "hangs 9": at the ninth call.
  OtherProgram(const std::string& family, const std::string& workbook, const std::string& fate = "") {
    static int made = 0;
    const std::string own = std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++made);
    const std::string ready = "lorv-ready-" + own;
    const std::string quit = "lorv-quit-" + own;
    const HANDLE is_ready = CreateEventA(nullptr, TRUE, FALSE, ready.c_str());
    quit_ = CreateEventA(nullptr, TRUE, FALSE, quit.c_str());
    std::string line =
        "\"" + ComProgramPath() + "\" " + family + " " + workbook + " " + ready + " " + quit + " " + fate;
    STARTUPINFOA start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION made_process = {};
    if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                       &made_process) != 0) {
      process_ = made_process.hProcess;
      CloseHandle(made_process.hThread);
      const HANDLE either[] = {is_ready, process_};
      runs_ = WaitForMultipleObjects(2, either, FALSE, kPatience) == WAIT_OBJECT_0;
    }
    CloseHandle(is_ready);
  }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;
  ~OtherProgram() {
    End();
    CloseHandle(quit_);
    if (process_ != nullptr) CloseHandle(process_);
  }

  bool Runs() const { return runs_; }
  // As its user closes it.
  void End() {
    SetEvent(quit_);
    if (process_ != nullptr && WaitForSingleObject(process_, kPatience) != WAIT_OBJECT_0) Kill();
  }
  // As the task manager ends it.
  void Kill() const { TerminateProcess(process_, 1); }

 private:
  static constexpr DWORD kPatience = 60000;

  HANDLE quit_ = nullptr;
  HANDLE process_ = nullptr;
  bool runs_ = false;
};

}  // namespace lorv::test
