#pragma once

#include <span>
#include <utility>
#include <vector>

#include "tests/reference/choice_source.h"
#include "tests/reference/reference_text.h"

// Random formulas, names and values: well-formed ones from a grammar, then broken on purpose.
namespace lorv::test {

using reference::Text;

// The names that stand in the formulas of MakeFormula: short and long, one inside another, Chinese, mixed.
std::span<const TCHAR* const> UsualNames();

// A formula of the grammar, at most `depth` levels of brackets and calls deep.
Text MakeFormula(ChoiceSource& source, int depth);

// Breaks a text in a few places: units cut, doubled, put in, exchanged; among them control characters,
// Chinese characters, halves of surrogate pairs, quotes, bars and blanks.
void BreakText(ChoiceSource& source, Text& text);

// A formula, in one of two cases broken.
Text MakeAnyFormula(ChoiceSource& source);

// One of UsualNames, and at times an odd one, or one that is no name.
Text MakeName(ChoiceSource& source);

// Negative, thirds and their neighbours, tiny, huge, not a number, infinite, any bits.
double MakeValue(ChoiceSource& source);

// A calculator's life: the names it knows, then formulas evaluated one after the other, each with some values
// set before. The same text often comes again with other values.
struct CalculatorCase {
  struct Round {
    Text formula;
    std::vector<std::pair<Text, double>> values;
    bool set_formula = true;  // else Calculate runs again on what the last one left
    bool clear_values = false;
  };
  std::vector<Text> keywords;
  std::vector<Round> rounds;
};

CalculatorCase MakeCalculatorCase(ChoiceSource& source);

}  // namespace lorv::test
