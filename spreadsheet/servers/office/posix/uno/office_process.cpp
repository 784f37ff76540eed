#include "spreadsheet/servers/office/posix/uno/office_process.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "spreadsheet/servers/office/posix/uno/office_sockets.h"

// The office as a child process. Between fork and exec only calls are made that a process with several
// threads may make there, so all texts are put together before.

namespace lorv::office {
namespace {

constexpr int kSignalled = 128;
constexpr auto kPoll = std::chrono::milliseconds(5);

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

// The office takes file names by the code of its locale: only UTF-8 knows all names. Its own variables are
// ours to set, so that it needs no screen.
std::vector<std::string> Environment() {
  std::vector<std::string> all;
  for (char** each = environ; *each != nullptr; ++each) {
    const std::string one(*each);
    if (!one.starts_with("LC_") && !one.starts_with("LANG") && !one.starts_with("SAL_USE_VCLPLUGIN=")) {
      all.push_back(one);
    }
  }
  all.emplace_back("LC_ALL=C.UTF-8");
  all.emplace_back("SAL_USE_VCLPLUGIN=svp");
  return all;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// In the child: only what is safe beside other threads' locks.
[[noreturn]] void Become(const char* program, char** arguments, char** environment, pid_t parent) {
  // Of its own session, so that a terminal's signals for this process do not end it in the middle of a call.
  setsid();
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // The parent may have ended before that was set.
  if (getppid() != parent) _exit(1);
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  const int nothing = open("/dev/null", O_RDWR);
  for (int channel = 0; channel <= 2; ++channel) dup2(nothing, channel);
  // Whoever waits for the end of a pipe of this process must not wait for the office.
  close_range(3, ~0U, 0);
  execve(program, arguments, environment);
  _exit(1);
}

}  // namespace

OfficeProcess::OfficeProcess(std::string program) : program_(std::move(program)) {
  std::error_code missing;
  folder_ = (std::filesystem::temp_directory_path(missing) / "lorv-office-XXXXXX").string();
  if (missing || mkdtemp(folder_.data()) == nullptr) Fail("temporary folder");
  // Whose name nobody else has on this machine.
  pipe_ = std::filesystem::path(folder_).filename().string();
}

OfficeProcess::~OfficeProcess() {
  Kill();
  WaitForEnd(std::chrono::seconds(10));
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
  // One that was killed leaves the files of its pipes.
  for (const std::string& file : sockets_) std::filesystem::remove(file, ignored);
}

void OfficeProcess::NoteSockets() {
  sockets_ = SocketFilesOf(id_);
}

void OfficeProcess::Start() {
  std::vector<std::string> arguments = {program_,
                                        "--headless",
                                        "--invisible",
                                        "--norestore",
                                        "--nologo",
                                        "--nodefault",
                                        "--nolockcheck",
                                        "--nofirststartwizard",
                                        "--accept=pipe,name=" + pipe_ + ";urp;StarOffice.ComponentContext",
                                        "-env:UserInstallation=file://" + folder_ + "/profile"};
  std::vector<std::string> environment = Environment();
  const std::vector<char*> argument_list = Pointers(arguments);
  const std::vector<char*> environment_list = Pointers(environment);
  const std::lock_guard hold(lock_);
  const pid_t parent = getpid();
  const pid_t child = fork();
  if (child == 0) {
    Become(program_.c_str(), const_cast<char**>(argument_list.data()),
           const_cast<char**>(environment_list.data()), parent);
  }
  if (child < 0) Fail("fork");
  id_ = child;
  status_.reset();
}

std::optional<int> OfficeProcess::Ended() {
  const std::lock_guard hold(lock_);
  if (id_ < 0 || status_) return status_;
  int status = 0;
  const pid_t answer = waitpid(id_, &status, WNOHANG);
  if (answer == 0) return std::nullopt;
  // Where the host has its children collected elsewhere, the number alone shows that it is gone.
  if (answer < 0 && kill(id_, 0) == 0) return std::nullopt;
  status_ = answer < 0 || WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
  return status_;
}

bool OfficeProcess::WaitForEnd(std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (id_ >= 0 && !Ended()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(kPoll);
  }
  return true;
}

void OfficeProcess::Kill() {
  // The number is another process's once the child was collected.
  const std::lock_guard hold(lock_);
  if (id_ >= 0 && !status_) kill(id_, SIGKILL);
}

}  // namespace lorv::office
