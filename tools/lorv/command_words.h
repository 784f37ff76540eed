#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace lorv::tool {

// Shields the words behind the verb from the argument library, which would take "-2^2" for an option and
// "[A]" for a list: every word that is no option gets a mark in front. `verb` says which options there are.
// With `formulas`, a word with a single "-" that names no option of the verb is a word like any other.
std::vector<std::string> ShieldWords(const std::vector<std::string>& words, const CLI::App& verb,
                                     bool formulas);

// Takes the mark off again: a step of every option of `verb` that takes a value.
void UnshieldValues(CLI::App& verb);

// A message of the argument library as the user should see it.
std::string WithoutShields(std::string_view message);

}  // namespace lorv::tool
