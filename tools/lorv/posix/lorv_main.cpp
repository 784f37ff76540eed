#include <sys/ioctl.h>
#include <unistd.h>

#include <iostream>

#include "tools/lorv/program.h"

namespace {

int Columns() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return 80;
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
  lorv::tool::Console console{std::cin, std::cout, std::cerr, isatty(STDERR_FILENO) == 1, Columns()};
  return lorv::tool::RunProgram({argv + 1, argv + argc}, console);
}
