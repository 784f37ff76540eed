#include "tools/lorv/describe/program_words.h"

#include "tools/lorv/describe/spoken_help.h"

// What help and manual say of the whole program; both ask here, so they never differ.

namespace lorv::tool {
namespace {

constexpr const char* kAbout =
    "lorv - formulas of construction quantity take-off, from the command line.\n"
    "\n"
    "A formula is what an estimator types: numbers, names, + - * / ^, brackets, comparisons and functions,\n"
    "in English or Chinese letters. `lorv work` calculates whole tables of building components with it.\n";

constexpr const char* kExamples =
    "Examples:\n"
    "  lorv calc \"L*B*H\" L=3.6 B=0.24 H=2.8       the number\n"
    "  lorv calc \"墙长*墙高-洞口\" 墙长=6 墙高=3 洞口=2.1\n"
    "  lorv work house.csv --rules house-rules.csv --out quantities.csv\n"
    "\n"
    "`lorv VERB --help` says the rest; `lorv` alone is a calculator that keeps names. Text is UTF-8 in and "
    "out.\n"
    "\n"
    "Exit codes: 0 fine, 1 a formula or a result is wrong, 2 an argument or a file cannot be used.";

}  // namespace

std::string AboutProgram() {
  return HelpText("about", kAbout);
}

std::string ProgramExamples() {
  return HelpText("examples", kExamples);
}

}  // namespace lorv::tool
