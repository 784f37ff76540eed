#include <sys/ioctl.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <iostream>

#include "tools/lorv/posix/terminal_lines.h"
#include "tools/lorv/program.h"

// The start of the program on Unix: finds out what the streams are connected to and hands on. What differs
// between systems ends here; all else sees a Console.

namespace {

int Columns() {
  // The width of the stream that messages go to, as the other one is often a file.
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return 80;
}

// The first one that is set decides the language of messages.
std::string Locale() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value != nullptr && *value != 0) return value;
  }
  return {};
}

bool WantsColours() {
  const char* const none = std::getenv("NO_COLOR");
  // A terminal that calls itself dumb shows escapes as letters.
  const char* const kind = std::getenv("TERM");
  const bool can = kind != nullptr && std::string(kind) != "dumb";
  return isatty(STDERR_FILENO) == 1 && can && (none == nullptr || *none == 0);
}

}  // namespace

int main(int argc, char** argv) {
  // Streams of this program alone are used, and text is read and written many times faster so.
  std::ios::sync_with_stdio(false);
  lorv::tool::Console console{std::cin, std::cout, std::cerr, isatty(STDERR_FILENO) == 1, Columns()};
  // Both, as the prompt is written to the one and lines come from the other.
  console.in_is_terminal = isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1;
  console.colours = WantsColours();
  console.locale = Locale();
  std::unique_ptr<lorv::tool::LineEditor> editor;
  // Only for the session: a script with a formula pays nothing for it.
  if (argc == 1 && console.in_is_terminal) {
    // The editing library reads characters by the user's locale; nothing else of the program asks it.
    std::setlocale(LC_CTYPE, "");
    editor = lorv::tool::TerminalLines();
    console.editor = editor.get();
  }
  return lorv::tool::RunProgram({argv + 1, argv + argc}, console);
}
