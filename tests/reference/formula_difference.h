#pragma once

#include <string>
#include <vector>

#include "tests/reference/formula_maker.h"

// Evaluates a case by the library and by the reference and gives the first difference in words; empty when
// they agree in everything that a caller can see. Numbers are compared bit for bit (any two that are no
// numbers count as equal).
namespace lorv::test {

// A parse and an evaluation; `names` are those the resolver accepts, without one if `resolves` is false.
std::string ParserDifference(const Text& formula, bool resolves, const std::vector<Text>& names);

std::string CalculatorDifference(const CalculatorCase& made);

struct RewritingCase {
  Text text;
  Text name;
  Text value;
  Text pairs;
  double number = 0;
  bool first_flag = false;   // all, bBracket
  bool second_flag = false;  // bMultiply
};

RewritingCase MakeRewritingCase(ChoiceSource& source);
std::string RewritingDifference(const RewritingCase& made);

// Readable forms, every unit outside printable ASCII as \uXXXX.
std::string Shown(const Text& text);
std::string Shown(const CalculatorCase& made);
std::string Shown(const RewritingCase& made);

// Smaller cases that still differ: what a failing test prints.
Text ShrunkFormula(Text formula, bool resolves, const std::vector<Text>& names);
CalculatorCase Shrunk(CalculatorCase made);
RewritingCase Shrunk(RewritingCase made);

}  // namespace lorv::test
