// Smaller cases that still fail, and cases in print.

#include "tests/reference/shrinking.h"

#include <cstdio>

#include "tests/reference/findings.h"

namespace lorv::test {

void ShrinkText(Text& text, const std::function<bool()>& fails) {
  for (std::size_t run = text.size(); run > 0; run = run > 16 ? run / 2 : run - 1) {
    for (std::size_t at = 0; at + run <= text.size();) {
      const Text whole = text;
      text.erase(at, run);
      if (fails()) continue;
      text = whole;
      ++at;
    }
  }
}

void ShrinkNumber(double& number, const std::function<bool()>& fails) {
  const double whole = number;
  for (const double simple : {0.0, 1.0, -1.0, 0.5, 10.0}) {
    number = simple;
    if (fails()) return;
  }
  number = whole;
}

std::string Shown(const Text& text) {
  std::string out;
  for (const TCHAR c : text) {
    if (c >= 32 && c < 127) {
      out += static_cast<char>(c);
    } else {
      char buffer[16];
      std::snprintf(buffer, sizeof buffer, "\\u%04X", static_cast<unsigned>(c));
      out += buffer;
    }
  }
  return out;
}

std::string Shown(const CalculatorCase& made) {
  std::string out = "keywords:";
  for (const Text& name : made.keywords) out += " \"" + Shown(name) + "\"";
  for (const CalculatorCase::Round& round : made.rounds) {
    out += round.clear_values ? "\n  values cleared;" : "\n ";
    out += round.set_formula ? " formula \"" + Shown(round.formula) + "\"" : " formula left as evaluated";
    for (const auto& [name, value] : round.values) out += ", \"" + Shown(name) + "\" = " + ShownNumber(value);
  }
  return out;
}

std::string Shown(const RewritingCase& made) {
  return "text \"" + Shown(made.text) + "\", name \"" + Shown(made.name) + "\", value \"" +
         Shown(made.value) + "\", number " + ShownNumber(made.number) + ", pairs \"" + Shown(made.pairs) +
         "\", flags " + (made.first_flag ? "true " : "false ") + (made.second_flag ? "true" : "false");
}

Text ShrunkFormula(Text formula, bool resolves, const std::vector<Text>& names) {
  ShrinkText(formula, [&] { return !ParserDifference(formula, resolves, names).empty(); });
  return formula;
}

CalculatorCase Shrunk(CalculatorCase made) {
  const auto fails = [&made] { return !CalculatorDifference(made).empty(); };
  ShrinkList(made.rounds, fails);
  ShrinkList(made.keywords, fails);
  for (CalculatorCase::Round& round : made.rounds) {
    ShrinkList(round.values, fails);
    for (auto& [name, value] : round.values) ShrinkNumber(value, fails);
    if (!round.set_formula) continue;
    // Rounds of one formula keep one formula.
    ShrinkText(round.formula, fails);
  }
  return made;
}

RewritingCase Shrunk(RewritingCase made) {
  const auto fails = [&made] { return !RewritingDifference(made).empty(); };
  for (Text* text : {&made.text, &made.pairs, &made.value, &made.name}) ShrinkText(*text, fails);
  ShrinkNumber(made.number, fails);
  return made;
}

}  // namespace lorv::test
