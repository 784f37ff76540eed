#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>
#include <vector>

#include "TEXPRESSCAL/express.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/formula/name_values.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/folded_text.h"
#include "tools/lorv/text/json_text.h"
#include "tools/lorv/text/typed_number.h"

// The verb `rewrite`: the library's replacements in formulas, each as its function does it. They work in a
// buffer of the caller's, so room is made here for what the text may grow to.

namespace lorv::tool {
namespace {

struct RewriteArguments {
  std::string operation;
  std::string text;
  std::vector<std::string> pairs;
  bool first = false;
  bool brackets = false;
  bool multiply = false;
  bool json = false;
};

constexpr const char* kHelp =
    "Operations, as they are or by the name of the library's function:\n"
    "  text      ReplaceStr            OLD=NEW: plain text, wherever it stands\n"
    "  value     ReplExprWithValue     NAME=VALUE: a name by a value's text, at the edges of names only\n"
    "  number    ReplExprWithOneValue  NAME=NUMBER: as values go into a formula: three decimals, thirds as "
    "1/3\n"
    "  formula   ReplaceExprWithExpr   NAME=FORMULA ...: names by formulas, in one walk\n"
    "  split     SplitMidBracketKey    cut [...] off names; lists each name with what stood in the brackets\n"
    "  pairs     StrValueToMap         read a list NAME:NUMBER;... and write it in order, MapValueToStr\n"
    "Each does exactly what the library's function does. Letter case counts, except for names in "
    "\"formula\".\n"
    "\n"
    "Examples:\n"
    "  lorv rewrite formula \"2*a\" a=b+c --brackets      2*(b+c)\n"
    "  lorv rewrite formula \"2a\" a=3 --multiply         2*3\n"
    "  lorv rewrite number \"2a\" a=0.333                 2*1/3\n"
    "  lorv rewrite split \"2*abc[1]\"                    2*abc, and abc with 1";

// What an operation made of the text.
struct Rewritten {
  CString text;
  std::optional<long long> count;   // of replacements
  std::vector<CTwoStrValue> names;  // split off
  bool done = true;                 // false: refused, the text is as it was
};

using Pair = std::pair<CString, CString>;

Pair OnePair(const RewriteArguments& arguments, const char* form) {
  if (arguments.pairs.size() != 1)
    throw BadInput(Say("the operation {} takes one {}", {arguments.operation, form}));
  const auto [name, value] = CutAtEqualSign(arguments.pairs[0], form);
  return {CString::FromUtf8(name), CString::FromUtf8(value)};
}

// Room for a text in which `most` places of `old` grow to `fresh`. A place takes a unit at least, so there
// are no more of them than units.
std::vector<TCHAR> Room(const CString& text, int old, int fresh, int most) {
  const int growth = std::max(0, fresh - std::max(old, 1));
  const int places = std::min(most, text.GetLength());
  std::vector<TCHAR> room(static_cast<std::size_t>(text.GetLength()) +
                          static_cast<std::size_t>(growth) * static_cast<std::size_t>(places) + 1);
  std::copy_n(text.GetString(), text.GetLength(), room.begin());
  return room;
}

Rewritten ReplaceText(const RewriteArguments& arguments) {
  const CString text = CString::FromUtf8(arguments.text);
  const auto [old, fresh] = OnePair(arguments, "OLD=NEW");
  std::vector<TCHAR> room = Room(text, old.GetLength(), fresh.GetLength(), text.GetLength());
  // Replacements are limited by the library, so the room that is made for every unit always suffices.
  const int count = ReplaceStr(room.data(), old, fresh, !arguments.first);
  return {CString(room.data()), count, {}, true};
}

Rewritten ReplaceValue(const RewriteArguments& arguments) {
  const CString text = CString::FromUtf8(arguments.text);
  const auto [name, value] = OnePair(arguments, "NAME=VALUE");
  std::vector<TCHAR> room = Room(text, name.GetLength(), value.GetLength(), text.GetLength());
  const int count = ReplExprWithValue(room.data(), name, value, !arguments.first);
  return {CString(room.data()), count, {}, true};
}

Rewritten ReplaceNumber(const RewriteArguments& arguments) {
  const CString text = CString::FromUtf8(arguments.text);
  const auto [name, value] = OnePair(arguments, "NAME=NUMBER");
  const std::optional<double> number = WholeNumber(value.ToUtf8());
  if (!number) throw BadInput(Say("\"{}\" is no number", {value.ToUtf8()}));
  // One unit more than a value's text, for the "*" that may come in front of it.
  std::vector<TCHAR> room = Room(text, name.GetLength(), kValueText + 1, kMaxSubstitutions);
  ReplExprWithOneValue(room.data(), name, *number);
  return {CString(room.data()), std::nullopt, {}, true};
}

Rewritten ReplaceFormula(const RewriteArguments& arguments) {
  if (arguments.pairs.empty())
    throw BadInput(Say("the operation {} takes {}", {arguments.operation, "NAME=FORMULA"}));
  std::vector<CTwoStrValue> pairs;
  for (const std::string& word : arguments.pairs) {
    const auto [name, formula] = CutAtEqualSign(word, "NAME=FORMULA");
    pairs.push_back({CString::FromUtf8(name), CString::FromUtf8(formula)});
  }
  Rewritten rewritten{CString::FromUtf8(arguments.text), std::nullopt, {}, true};
  rewritten.done = ReplaceExprWithExpr(rewritten.text, pairs, arguments.brackets, arguments.multiply);
  return rewritten;
}

Rewritten Split(const RewriteArguments& arguments) {
  if (!arguments.pairs.empty())
    throw BadInput(Say("the operation {} takes the text alone", {arguments.operation}));
  Rewritten rewritten{CString::FromUtf8(arguments.text), std::nullopt, {}, true};
  // The pairs hold these names as well, each with what stood in its brackets.
  CStringArray names;
  SplitMidBracketKey(rewritten.text, names, rewritten.names);
  return rewritten;
}

Rewritten OrderPairs(const RewriteArguments& arguments) {
  if (!arguments.pairs.empty())
    throw BadInput(Say("the operation {} takes the text alone", {arguments.operation}));
  CMapValue values;
  const int count = StrValueToMap(CString::FromUtf8(arguments.text), values);
  return {MapValueToStr(values), count, {}, true};
}

constexpr struct {
  const char* name;
  const char* function;
  Rewritten (*run)(const RewriteArguments& arguments);
} kOperations[] = {{"text", "replacestr", ReplaceText},
                   {"value", "replexprwithvalue", ReplaceValue},
                   {"number", "replexprwithonevalue", ReplaceNumber},
                   {"formula", "replaceexprwithexpr", ReplaceFormula},
                   {"split", "splitmidbracketkey", Split},
                   {"pairs", "strvaluetomap", OrderPairs}};

Rewritten Run(const RewriteArguments& arguments) {
  // Either name, in any letter case: programmers of the suite know the functions, others the words.
  const std::string wanted = Folded(arguments.operation);
  std::string known;
  for (const auto& operation : kOperations) {
    if (wanted == operation.name || wanted == operation.function) return operation.run(arguments);
    known += std::string(known.empty() ? "" : ", ") + operation.name;
  }
  throw BadInput(Say("there is no operation \"{}\"; known are {}", {arguments.operation, known}));
}

void Write(const Rewritten& rewritten, std::ostream& out) {
  JsonText json;
  json.Open('{');
  json.Key("text").String(rewritten.text.ToUtf8());
  json.Key("done").Bool(rewritten.done);
  if (rewritten.count) json.Key("count").Number(*rewritten.count);
  json.Key("names").Open('[');
  for (const CTwoStrValue& pair : rewritten.names) {
    json.Open('{');
    json.Key("name").String(pair.strFirst.ToUtf8());
    json.Key("annotation").String(pair.strSecond.ToUtf8());
    json.Close('}');
  }
  json.Close(']');
  json.Close('}');
  out << json.Text();
}

int Rewrite(const RewriteArguments& arguments, Console& console) {
  const Rewritten rewritten = Run(arguments);
  if (arguments.json) {
    Write(rewritten, console.out);
    return rewritten.done ? kFine : kResultFailed;
  }
  if (!rewritten.done) {
    console.err
        << "lorv: "
        << Say("the text is empty, or it or the result is longer than a formula may be; nothing is changed")
        << "\n";
    return kResultFailed;
  }
  console.out << rewritten.text.ToUtf8() << "\n";
  for (const CTwoStrValue& pair : rewritten.names) {
    console.out << pair.strFirst.ToUtf8() << "\t" << pair.strSecond.ToUtf8() << "\n";
  }
  return kFine;
}

}  // namespace

Work DeclareRewrite(VerbSyntax& syntax) {
  auto arguments = std::make_shared<RewriteArguments>();
  syntax.Value("OPERATION", arguments->operation, "what to do; see below").Required();
  syntax.Value("TEXT", arguments->text, "the formula").Required();
  syntax.Value("PAIRS", arguments->pairs, "what for what, parted by =");
  syntax.Flag("--first", arguments->first, "text, value: the first place only");
  syntax.Flag("--brackets", arguments->brackets, "formula: put what is more than a product in brackets");
  syntax.Flag("--multiply", arguments->multiply,
              "formula: put * between a digit or letter and what is put in");
  syntax.Flag("-j,--json", arguments->json, "print text, count and names as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return Rewrite(*arguments, console); };
}

}  // namespace lorv::tool
