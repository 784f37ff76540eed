#include "tools/lorv/command_words.h"

#include <CLI/CLI.hpp>
#include <algorithm>

// Keeps formulas and texts from the argument library, which has notions of its own of what a word means.
// Words are marked before it sees them and freed of the mark when it hands values on.

namespace lorv::tool {
namespace {

// No argument begins with it by itself: a terminal does not pass it on.
constexpr char kShield = '\x01';

bool NamesOption(const std::string& word, const CLI::App& verb) {
  return verb.get_option_no_throw(word) != nullptr;
}

bool IsPlain(const std::string& word, const CLI::App& verb, bool formulas) {
  // A lone "-" is standard input or a formula of one sign, and no option.
  if (word.size() < 2 || word[0] != '-') return true;
  // With two dashes it is an option misspelt: no formula begins so on purpose.
  return formulas && word[1] != '-' && !NamesOption(word, verb);
}

std::string Unshield(std::string& value) {
  if (!value.empty() && value[0] == kShield) value.erase(0, 1);
  return {};
}

}  // namespace

std::vector<std::string> ShieldWords(const std::vector<std::string>& words, const CLI::App& verb,
                                     bool formulas) {
  std::vector<std::string> shielded;
  bool options_end = false;
  for (const std::string& word : words) {
    if (options_end || IsPlain(word, verb, formulas)) {
      shielded.push_back(kShield + word);
      continue;
    }
    // Behind "--" all are arguments. The sign itself goes: the marks do its work.
    options_end = word == "--";
    if (!options_end) shielded.push_back(word);
  }
  return shielded;
}

void UnshieldValues(CLI::App& verb) {
  for (CLI::Option* option : verb.get_options()) {
    if (option->get_items_expected_max() > 0) option->transform(CLI::Validator(Unshield, ""));
  }
}

std::string WithoutShields(std::string_view message) {
  std::string plain(message);
  plain.erase(std::remove(plain.begin(), plain.end(), kShield), plain.end());
  return plain;
}

}  // namespace lorv::tool
