#include <CLI/CLI.hpp>
#include <cmath>
#include <ostream>

#include "tools/lorv/formula/fault_report.h"
#include "tools/lorv/formula/formula_words.h"
#include "tools/lorv/formula/name_values.h"
#include "tools/lorv/text/display_width.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {
namespace {

struct CalcArguments {
  std::string formula;
  std::vector<std::string> values;
  bool explain = false;
  bool json = false;
};

constexpr const char* kHelp =
    "A name is letters of any language, digits and _, up to 20 characters; capitals and small letters are "
    "the\n"
    "same. A name without a value is an error. Values go in with three decimals, 1/3 and 2/3 as they are. A\n"
    "text goes in single quotes.\n"
    "\n"
    "Examples:\n"
    "  lorv calc \"L*B*H\" L=3.6 B=0.24 H=2.8\n"
    "  lorv calc --explain \"2*(墙长+B)*IIF(H>3,1.2,1)\" 墙长=6 B=0.24 H=3.3\n"
    "  lorv calc \"FIND(CLMC,'砖')>0\" \"CLMC='砖墙'\"\n"
    "  lorv calc -2^2                       a sign binds tighter than ^: 4\n"
    "\n"
    "Exit code 0: the number is printed. 1: the formula is wrong, a mark shows where; or it gives a number\n"
    "that does not mean what it seems to. 2: a wrong argument.";

// A formula with its values, worked the way the suite does it.
class Calculation {
 public:
  explicit Calculation(const CalcArguments& arguments)
      : typed_(CString::FromUtf8(arguments.formula)), pairs_(ReadNameValues(arguments.values)) {
    Set();
    int error = 0;
    value_ = calculator_.Calculate(error);
    failed_ = error != 0;
    fault_ = FindFault(error);
  }

  int Report(const CalcArguments& arguments, Console& console) const;

 private:
  void Set();
  std::optional<Fault> FindFault(int error) const;
  std::optional<Fault> UnreachedName() const;
  void Explain(std::ostream& out) const;
  void Write(std::ostream& out) const;
  bool HasNumber() const { return !failed_ && std::isfinite(value_); }

  void PutInTexts();
  void Append(const CString& piece, int place, bool as_typed);

  CString typed_;
  CString set_;              // with texts in place of their names, as the calculator gets it
  std::vector<int> places_;  // of each unit of it, and of its end, in the formula as typed
  std::vector<NameValue> pairs_;
  CMapValue numbers_;
  CAdExpCalculate calculator_;
  double value_ = 0;
  bool failed_ = false;
  std::optional<Fault> fault_;
};

// Texts are put in for their names before the calculator sees the formula: it knows numbers only.
void Calculation::PutInTexts() {
  int at = 0;
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    for (const NameValue& pair : pairs_) {
      if (!pair.is_text || NameKey(pair.name.View()) != NameKey(word.name.View())) continue;
      Append(typed_.Mid(at, word.position - at), at, true);
      Append(pair.text, word.position, false);
      at = word.position + word.length;
    }
  }
  Append(typed_.Mid(at), at, true);
  places_.push_back(typed_.GetLength());
}

void Calculation::Append(const CString& piece, int place, bool as_typed) {
  set_ += piece;
  for (int i = 0; i < piece.GetLength(); ++i) places_.push_back(as_typed ? place + i : place);
}

void Calculation::Set() {
  PutInTexts();
  calculator_.SetExpr(set_);
  for (const NameValue& pair : pairs_) {
    if (pair.is_text) continue;
    calculator_.SetVarValue(pair.name, pair.number, false);
    numbers_[pair.name] = pair.number;
  }
}

std::optional<Fault> Calculation::FindFault(int error) const {
  if (typed_.IsEmpty()) return Fault{0, 0, "the formula is empty", true, true};
  std::optional<Fault> fault = FaultOf(set_, numbers_, {});
  if (fault) {
    const int behind =
        places_[static_cast<std::size_t>(fault->position) + static_cast<std::size_t>(fault->length)];
    fault->position = places_[static_cast<std::size_t>(fault->position)];
    fault->length = std::max(0, behind - fault->position);
    return fault;
  }
  if (error != 0) return Fault{0, typed_.GetLength(), "the formula cannot be worked", false, true};
  if (!std::isfinite(value_)) return Fault{0, typed_.GetLength(), "the result is no number", false, true};
  return UnreachedName();
}

// Where a value is shorter than its name, the search for the name goes on a little too far behind it: a
// second place close by keeps the name, which then counts 1000000.
std::optional<Fault> Calculation::UnreachedName() const {
  const auto left = NamesOf(calculator_.GetCalcedExpr().View());
  if (left.empty()) return std::nullopt;
  const CString& name = left[0].name;
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    if (NameKey(word.name.View()) != NameKey(name.View())) continue;
    return Fault{
        word.position, word.length,
        "the value of " + word.name.ToUtf8() +
            " does not reach all its places, and counts 1000000 there; write it once, or with blanks around",
        false, false};
  }
  return std::nullopt;
}

void Calculation::Explain(std::ostream& out) const {
  out << "formula  " << Printable(typed_.ToUtf8()) << "\n";
  std::set<CString> told;
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    const CString key = NameKey(word.name.View());
    if (!told.insert(key).second) continue;
    const auto found = numbers_.find(CStrCmp(key));
    out << (told.size() == 1 ? "names    " : "         ") << PadRight(word.name.ToUtf8(), 12) << " = "
        << (found == numbers_.end() ? "(no value)" : PlainReal(found->second)) << "\n";
  }
  for (const NameValue& pair : pairs_) {
    if (pair.is_text || told.contains(NameKey(pair.name.View()))) continue;
    out << "not used " << pair.name.ToUtf8() << "\n";
  }
  out << "worked   " << Printable(calculator_.GetCalcedExpr().ToUtf8()) << "\n";
  if (HasNumber()) out << "result   " << PlainReal(value_) << "\n";
}

void Calculation::Write(std::ostream& out) const {
  JsonText json;
  json.Open('{');
  json.Key("formula").String(typed_.ToUtf8());
  json.Key("names").Open('[');
  for (const FormulaWord& word : NamesOf(typed_.View())) json.String(word.name.ToUtf8());
  json.Close(']');
  json.Key("worked").String(calculator_.GetCalcedExpr().ToUtf8());
  json.Key("result");
  if (HasNumber()) {
    json.Number(value_);
  } else {
    json.Null();
  }
  WriteFault(json, fault_);
  json.Close('}');
  out << json.Text();
}

int Calculation::Report(const CalcArguments& arguments, Console& console) const {
  if (arguments.json) {
    Write(console.out);
  } else if (arguments.explain) {
    Explain(console.out);
  } else if (HasNumber() && (!fault_ || !fault_->stops)) {
    console.out << PlainReal(value_) << "\n";
  }
  if (fault_ && !arguments.json) PrintFault(console, typed_, *fault_);
  return fault_ ? kResultFailed : kFine;
}

}  // namespace

Work DeclareCalc(CLI::App& app) {
  auto arguments = std::make_shared<CalcArguments>();
  app.add_option("FORMULA", arguments->formula, "the formula")->required();
  app.add_option("NAME=VALUE", arguments->values, "what its names stand for");
  app.add_flag("--explain", arguments->explain, "show the names, and the text as it was worked");
  app.add_flag("--json", arguments->json, "print it all as JSON");
  app.footer(kHelp);
  return [arguments](Console& console) { return Calculation(*arguments).Report(*arguments, console); };
}

}  // namespace lorv::tool
