#include "tools/lorv/formula/name_values.h"

#include <set>

#include "TEXPRESSCAL/formula_words.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/typed_number.h"

// Reads NAME=VALUE as it is typed behind a formula. What cannot be meant is refused at once: a name that no
// formula can hold, or a value that is nearly a number, would give a result with that value missing.

namespace lorv::tool {
namespace {

NameValue ReadOne(const std::string& word) {
  const auto [name, value] = CutAtEqualSign(word, "NAME=VALUE");
  NameValue pair{CString::FromUtf8(name), false, CString::FromUtf8(value), 0};
  if (name.empty()) throw BadInput(Say("\"{}\" has no name in front of the =", {word}));
  // A value that no formula can ask for would be lost: PI=3 changes nothing.
  if (!IsName(pair.name.View())) throw BadInput(Say("\"{}\" cannot be a name in a formula", {name}));
  const int length = pair.text.GetLength();
  // Quotes mark texts, as they do in formulas; one inside would end it.
  pair.is_text = length >= 2 && pair.text[0] == '\'' && pair.text.Find('\'', 1) == length - 1;
  if (pair.is_text) return pair;
  const std::optional<double> number = WholeNumber(value);
  if (!number) {
    throw BadInput(
        Say("the value of {} is \"{}\": neither a number nor a 'text' in single quotes", {name, value}) +
        NumberHint(value));
  }
  pair.number = *number;
  return pair;
}

}  // namespace

std::pair<std::string, std::string> CutAtEqualSign(const std::string& word, const char* expected) {
  const std::size_t at = word.find('=');
  if (at == std::string::npos) throw BadInput(Say("\"{}\" is not of the form {}", {word, expected}));
  return {word.substr(0, at), word.substr(at + 1)};
}

std::vector<NameValue> ReadNameValues(const std::vector<std::string>& words) {
  std::vector<NameValue> pairs;
  std::set<CString> names;
  for (const std::string& word : words) {
    pairs.push_back(ReadOne(word));
    // As formulas compare names: l and L cannot have a value each.
    if (!names.insert(NameKey(pairs.back().name.View())).second) {
      throw BadInput(Say("the name \"{}\" has two values", {pairs.back().name.ToUtf8()}));
    }
  }
  return pairs;
}

}  // namespace lorv::tool
