#pragma once

#include <string>
#include <utility>
#include <vector>

namespace lorv::bench {

// A formula that both engines of the comparison understand, with a value of at most three decimals for each
// of its names.
struct Formula {
  std::string name;  // T for trivial (5 to 13 characters), M typical (30 to 65), X long (200 to 750)
  std::string text;
  std::vector<std::pair<std::string, double>> values;
};

// Three trivial, six typical and three long ones, as estimators write them.
std::vector<Formula> TwelveFormulas();

// Different formulas of the typical size, the same ones in every run: so many that branch prediction does
// not learn them.
std::vector<Formula> RandomFormulas(int count);

// The names that occur in a text, with their values.
std::vector<std::pair<std::string, double>> ValuesFor(const std::string& text);

}  // namespace lorv::bench
