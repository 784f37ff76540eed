// Property: a calculator used again and again answers each time as the slow reference does.
//
// The input is a list of lines: "k" and a keyword; "f" and a formula (sets and evaluates it), "w" (evaluates
// again what is left), each followed by its "v" lines: a name, ":" and a number; "c" clears the values before
// that work.

#include "fuzz/formula_input.h"

namespace {

using lorv::test::CalculatorCase;

CalculatorCase CaseOf(const std::uint8_t* data, std::size_t size) {
  CalculatorCase made;
  for (const std::string& line : lorv::fuzz::LinesOf(data, size)) {
    if (line.empty()) continue;
    const std::string rest = line.substr(1);
    if (line[0] == 'k') made.keywords.push_back(lorv::fuzz::TextOf(rest));
    if (line[0] == 'f' || (line[0] == 'w' && !made.rounds.empty())) {
      CalculatorCase::Round round;
      round.set_formula = line[0] == 'f';
      round.formula = round.set_formula ? lorv::fuzz::TextOf(rest) : made.rounds.back().formula;
      made.rounds.push_back(round);
    }
    if (made.rounds.empty()) continue;
    if (line[0] == 'c') made.rounds.back().clear_values = true;
    const std::size_t colon = rest.rfind(':');
    if (line[0] == 'v' && colon != std::string::npos) {
      made.rounds.back().values.emplace_back(lorv::fuzz::TextOf(rest.substr(0, colon)),
                                             lorv::fuzz::NumberOf(rest.substr(colon + 1)));
    }
  }
  return made;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const CalculatorCase made = CaseOf(data, size);
  lorv::fuzz::Require(lorv::test::CalculatorDifference(made), lorv::test::Shown(made));
  return 0;
}
