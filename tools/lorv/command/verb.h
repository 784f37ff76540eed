#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <stdexcept>
#include <string>

namespace lorv::tool {

class LineEditor;
class VerbSyntax;

// What a verb talks to: the three streams (bytes are UTF-8) and what is known of the screen behind them.
struct Console {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  bool err_is_terminal = false;  // a progress bar may be drawn
  int columns = 80;              // of the terminal; 80 where there is none
  bool in_is_terminal = false;   // somebody sits there and types
  bool colours = false;          // messages may be coloured
  std::string locale = {};       // the name of the user's; decides the language of messages
  LineEditor* editor = nullptr;  // reads lines with history and completion; null: they come from `in`
  std::chrono::milliseconds bar_after{500};  // how long a work lasts before its progress bar appears
};

// How a run of the program ends. Scripts rely on the numbers.
enum ExitCode {
  kFine = 0,          // everything asked for was done
  kResultFailed = 1,  // the work was done, and a formula or a result is wrong
  kBadInput = 2,      // an argument or a file cannot be used; nothing was written
};

// What a verb throws to end with exit code 2. The text is for the user, in one or more lines, without
// "lorv:" in front and without a line end behind.
class BadInput : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// What is done once the arguments are read; gives the exit code.
using Work = std::function<int(Console&)>;

// One verb of the tool: `lorv NAME ...`. To add one, write a file verb_NAME.cpp with its declaring function
// and name it in verbs_table.cpp.
struct Verb {
  const char* name;
  const char* summary;  // one line of the list of verbs
  // Declares the verb's arguments and their help, and gives what is done once they are read. What they are
  // read into must live as long as the work: keep it in a shared pointer.
  Work (*declare)(VerbSyntax& syntax);
  // The verb takes formulas: an argument such as -2^2 is a formula and no option.
  bool takes_formulas = false;
};

}  // namespace lorv::tool
