#include "platform/posix/services/start_program.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

// Starts programs that go on alone. A shell of the system starts them and ends at once, so the child belongs
// to nobody here and leaves no entry to wait for; words are passed as arguments and never as text of the
// script, so no name can be read as a command.

extern char** environ;

namespace lorv {
namespace {

constexpr const char* kStart =
    "command -v \"$0\" >/dev/null || exit 1; \"$0\" \"$@\" </dev/null >/dev/null 2>&1 &";
constexpr const char* kLook = "command -v \"$0\" >/dev/null";

bool RunScript(const char* script, std::vector<std::string> words) {
  words.insert(words.begin(), {"sh", "-c", script});
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t shell = 0;
  if (posix_spawn(&shell, "/bin/sh", nullptr, nullptr, arguments.data(), environ) != 0) return false;
  int status = 0;
  while (waitpid(shell, &status, 0) < 0) {
    if (errno != EINTR) return false;
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

bool StartProgram(std::vector<std::string> words) {
  return RunScript(kStart, std::move(words));
}

bool HasProgram(const std::string& name) {
  return RunScript(kLook, {name});
}

}  // namespace lorv
