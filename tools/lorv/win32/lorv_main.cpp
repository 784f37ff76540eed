#include <fcntl.h>
#include <io.h>

#include <iostream>

#include "framework/native/native_types.h"
#include "framework/text/utf8.h"
#include "tools/lorv/program.h"

// The start-up code would take "2*3" for a pattern of file names.
extern "C" {
extern int _dowildcard;
int _dowildcard = 0;
}

// The start of the program on Windows: arguments and console in Unicode, streams in bytes. What differs
// between systems ends here; all else sees a Console.

namespace {

bool IsConsole(DWORD which) {
  // Only a console has a mode; files and pipes give an error.
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}

int Columns() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) == 0) return 80;
  return info.srWindow.Right - info.srWindow.Left + 1;
}

// UTF-8 while the program runs; the console belongs to the user's shell and gets its own back.
class Utf8Console {
 public:
  Utf8Console() : in_(GetConsoleCP()), out_(GetConsoleOutputCP()) {
    SetConsoleCP(CP_UTF8);
    SetConsoleOutputCP(CP_UTF8);
  }
  ~Utf8Console() {
    SetConsoleCP(in_);
    SetConsoleOutputCP(out_);
  }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;

 private:
  UINT in_, out_;
};

}  // namespace

extern "C" int wmain(int argc, wchar_t** argv);

int wmain(int argc, wchar_t** argv) {
  const Utf8Console utf8;
  // The same bytes as on every other system: no carriage returns put in.
  for (const int file : {0, 1, 2}) _setmode(file, _O_BINARY);
  std::vector<std::string> words;
  for (int i = 1; i < argc; ++i) words.push_back(lorv::TextToUtf8(argv[i]));
  lorv::tool::Console console{std::cin, std::cout, std::cerr, IsConsole(STD_ERROR_HANDLE), Columns()};
  // The console edits lines and keeps a history by itself.
  console.in_is_terminal = IsConsole(STD_INPUT_HANDLE) && IsConsole(STD_OUTPUT_HANDLE);
  // The language of the menus is what the user reads; formats of numbers and dates may be of another country.
  console.locale = PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_CHINESE ? "zh" : "en";
  return lorv::tool::RunProgram(words, console);
}
