#include "tools/lorv/argument_fault.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "tools/lorv/command_words.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/nearest_word.h"

// Puts faults of arguments into words of the tool. The argument library gives the kind of a fault by its type
// and the rest in an English sentence only, so names and values are cut out of that sentence; a sentence of
// another form stays as it is.

namespace lorv::tool {
namespace {

using Halves = std::pair<std::string, std::string>;

// What stands before and behind the first `sign`; all of it and nothing where there is none.
Halves Cut(const std::string& text, const std::string& sign) {
  const std::size_t at = text.find(sign);
  if (at == std::string::npos) return {text, {}};
  return {text.substr(0, at), text.substr(at + sign.size())};
}

// The letters of an option: to the search for the nearest word a dash is an operator.
std::string Letters(const std::string& option) {
  std::string letters = option.substr(std::min(option.find_first_not_of('-'), option.size()));
  std::replace(letters.begin(), letters.end(), '-', '_');
  return letters;
}

std::string NearestOption(const std::string& typed, const CLI::App& verb) {
  std::vector<std::string> options;
  // Long names only: a slip in one letter is another letter, and no option is near it.
  for (const CLI::Option* option : verb.get_options()) {
    for (const std::string& name : option->get_lnames()) options.push_back(Letters(name));
  }
  const std::string letters = Letters(typed);
  // It is known where one dash too few stands before it.
  const bool known = std::find(options.begin(), options.end(), letters) != options.end();
  std::string nearest = known ? letters : NearestWord(letters, options);
  std::replace(nearest.begin(), nearest.end(), '_', '-');
  return nearest.empty() ? nearest : "--" + nearest;
}

bool LooksLikeOption(const std::string& word) {
  return word.size() > 1 && word[0] == '-';
}

std::string OneTooMany(const CLI::App& verb) {
  const std::string word = WithoutShields(verb.remaining().front());
  if (!LooksLikeOption(word)) return Say("\"{}\" is one argument too many", {word});
  const std::string name = Cut(word, "=").first, nearest = NearestOption(name, verb);
  return Say("there is no option \"{}\" here", {name}) +
         (nearest.empty() ? std::string() : Say("; did you mean {}?", {nearest}));
}

// "--top: Value 0 not in range 1 to 9", "--rules: x not in {max,min}".
std::string WrongValue(const std::string& text) {
  const auto [name, rest] = Cut(text, ": ");
  const auto [value, range] = Cut(rest, " not in range ");
  if (!range.empty()) {
    const auto [least, most] = Cut(range, " to ");
    return Say("{} goes from {} to {}, not \"{}\"", {name, least, most, Cut(value, " ").second});
  }
  const auto [word, known] = Cut(rest, " not in ");
  return known.empty() ? text : Say("{} is one of {}, not \"{}\"", {name, known, word});
}

std::string WrongCount(const std::string& text) {
  const auto [name, rest] = Cut(text, ": ");
  // The library says "At Most" of an option that stands there twice.
  return Say(rest.starts_with("At Most") ? "{} is given more than once" : "{} needs a value", {name});
}

std::string NoNumber(const std::string& text, const CLI::App& verb) {
  const auto [name, value] = Cut(Cut(text, "Could not convert: ").second, " = ");
  const CLI::Option* const option = verb.get_option_no_throw(name);
  // A flag has no value that could be converted, so it is none that is wanted.
  if (option != nullptr && option->get_items_expected_max() == 0) return Say("{} takes no value", {name});
  return name.empty() ? text : Say("{} is a number, not \"{}\"", {name, value});
}

std::string Together(const std::string& text, const std::string& sign, const char* message) {
  const auto [one, other] = Cut(text, sign);
  return Say(message, {one, other});
}

template <class Kind>
bool Is(const CLI::ParseError& wrong) {
  return dynamic_cast<const Kind*>(&wrong) != nullptr;
}

}  // namespace

// The library gives the kind by the type alone: its names of faults are replaced by that of the verb.
std::string ArgumentFault(const CLI::ParseError& wrong, const CLI::App& verb) {
  std::string text = WithoutShields(wrong.what());
  // An unknown option is mostly the reason why the argument is missing.
  const std::vector<std::string> rest = verb.remaining();
  const bool unknown = !rest.empty() && LooksLikeOption(WithoutShields(rest.front()));
  if (Is<CLI::RequiredError>(wrong) && unknown) return OneTooMany(verb);
  if (Is<CLI::RequiredError>(wrong)) return Say("{} is missing", {Cut(text, " is required").first});
  if (Is<CLI::ExtrasError>(wrong)) return OneTooMany(verb);
  if (Is<CLI::ValidationError>(wrong)) return WrongValue(text);
  if (Is<CLI::ArgumentMismatch>(wrong)) return WrongCount(text);
  if (Is<CLI::ConversionError>(wrong)) return NoNumber(text, verb);
  if (Is<CLI::RequiresError>(wrong)) return Together(text, " requires ", "{} goes with {} only");
  if (Is<CLI::ExcludesError>(wrong)) return Together(text, " excludes ", "{} and {} exclude each other");
  return text;
}

}  // namespace lorv::tool
