#include "tools/lorv/files/interrupts.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <string>

// Signals that end the program. The handler does no more than remove files whose names lie ready, and then
// lets the signal do what it would have done: a shell sees a program that was ended by it.

namespace lorv::tool {

struct NativeName {
  std::string path;
};

namespace {

constexpr int kEndings[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGALRM, SIGXCPU, SIGXFSZ};

void (*remove_all)() = nullptr;

// The signal is blocked while this runs, and ends the program when it returns.
void End(int signal_number) {
  remove_all();
  std::signal(signal_number, SIG_DFL);
  std::raise(signal_number);
}

}  // namespace

NativeName* MakeNativeName(const CString& path) {
  auto* const name = new NativeName{path.ToUtf8()};
  // The suite's paths come with "\", which the system takes for a part of a name.
  std::replace(name->path.begin(), name->path.end(), '\\', '/');
  return name;
}

void FreeNativeName(NativeName* name) {
  delete name;
}

void RemoveNativeFile(const NativeName& name) {
  unlink(name.path.c_str());
}

void CallBeforeTheEnd(void (*remove)()) {
  remove_all = remove;
  for (const int signal_number : kEndings) {
    struct sigaction action {};
    // A signal that is ignored stays so: a program under nohup goes on when its terminal closes.
    if (sigaction(signal_number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action.sa_handler = End;
    sigaction(signal_number, &action, nullptr);
  }
}

}  // namespace lorv::tool
