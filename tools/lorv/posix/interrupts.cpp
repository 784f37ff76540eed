#include "tools/lorv/files/interrupts.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <string>

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
    if (sigaction(signal_number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL) continue;
    action.sa_handler = End;
    sigaction(signal_number, &action, nullptr);
  }
}

}  // namespace lorv::tool
