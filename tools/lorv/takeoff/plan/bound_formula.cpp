#include "tools/lorv/takeoff/plan/bound_formula.h"

#include <algorithm>
#include <cmath>

#include "TEXPRESSCAL/diagnose.h"
#include "tools/lorv/formula/formula_digits.h"
#include "tools/lorv/language/spoken_language.h"

// A formula of the rules with its names bound: to columns, constants and quantities above. It chooses between
// the exact way and the suite's, and hands whole blocks of rows to either. Faults of the text are kept and
// not thrown, as one wrong rule must not stop the bill of the others.

namespace lorv::tool {
namespace {

// "; did you mean X?" for a name that is near a known one.
std::string Proposal(const CString& name, const TDefsetVars& known) {
  const CString nearest = DiagnoseFormula(name, {}, known).suggestion;
  return nearest.IsEmpty() ? "" : Say("; did you mean {}?", {nearest.ToUtf8()});
}

// The language of formulas has no way to write a quote inside a text: none is looked for.
CString WithoutQuotes(CString words) {
  words.Replace(_T("'"), _T("\""));
  return words;
}

}  // namespace

BoundFormula::BoundFormula(const CString& formula, const Lookup& lookup, const TDefsetVars& known,
                           ValueDigits digits)
    : typed_(formula) {
  Bind(lookup, known);
  if (!fault_) Read();
  if (digits == ValueDigits::kSuite) suite_ = std::make_unique<SuiteFormula>(formula, lookup);
}

void BoundFormula::Bind(const Lookup& lookup, const TDefsetVars& known) {
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    const CString key = NameKey(word.name.View());
    const bool is_bound = std::any_of(names_.begin(), names_.end(), [&](const Name& name) {
      return NameKey(name.word.name.View()) == key;
    });
    if (is_bound) continue;
    names_.push_back({word, lookup(key)});
    const Symbol& symbol = names_.back().symbol;
    // The first unknown name only: what follows is often the same slip once more.
    if (symbol.kind == Symbol::kUnknown && !fault_) {
      fault_ = Fault{word.position, word.length,
                     Say("nothing is named \"{}\" here", {word.name.ToUtf8()}) + Proposal(word.name, known),
                     true, true};
    }
    // Places among all names go with them: blocks come as columns of dimensions alone.
    if (symbol.kind != Symbol::kDimension) continue;
    dimensions_.push_back(symbol.index);
    places_.push_back(names_.size() - 1);
  }
}

// Names of words are told apart before the text is parsed: where a number belongs, a word is doubtful.
void BoundFormula::Read() {
  std::vector<ExactName> names;
  for (const Name& name : names_) names.push_back({name.word.name, name.symbol.kind == Symbol::kText});
  exact_ = std::make_unique<ExactFormula>(typed_, names);
  if (exact_->Fault().fault != FormulaFault::kNone) {
    fault_ = FaultOf(exact_->Fault());
    return;
  }
  for (const FormulaDiagnosis& doubt : exact_->Doubts()) doubts_.push_back(FaultOf(doubt));
  values_.resize(names.size());
  // Texts and earlier quantities are known only one component after the other.
  needs_numbers_only_ = std::all_of(names_.begin(), names_.end(), [](const Name& name) {
    return name.symbol.kind == Symbol::kDimension || name.symbol.kind == Symbol::kConstant;
  });
}

std::optional<double> BoundFormula::ValueOf(const Name& name, ValueSource& source,
                                            std::optional<double> instead) const {
  const Symbol& symbol = name.symbol;
  std::optional<double> value;
  if (symbol.kind == Symbol::kConstant) value = symbol.constant;
  if (symbol.kind == Symbol::kDimension) value = source.DimensionOf(symbol.index);
  if (symbol.kind == Symbol::kResult) value = source.ResultOf(symbol.index);
  return value ? value : instead;
}

Outcome BoundFormula::Evaluate(ValueSource& source, std::optional<double> instead) {
  // The suite's way finds the same faults, but without the name that was likely meant.
  if (suite_ != nullptr && !fault_) return suite_->Evaluate(source, instead);
  return EvaluateExactly(source, instead);
}

Outcome BoundFormula::EvaluateExactly(ValueSource& source, std::optional<double> instead) {
  if (fault_) return {Outcome::kFaulty, 0, *fault_};
  for (std::size_t i = 0; i < names_.size(); ++i) {
    const Name& name = names_[i];
    if (name.symbol.kind == Symbol::kText) {
      exact_->SetText(i, WithoutQuotes(source.TextOf(name.symbol.index)).View());
      continue;
    }
    // What is missing is reported at the name, not as the fault that a 0 in its place would make elsewhere.
    const std::optional<double> value = ValueOf(name, source, instead);
    if (!value) {
      return {Outcome::kMissing, 0,
              Fault{name.word.position, name.word.length,
                    Say("no value for \"{}\"", {name.word.name.ToUtf8()}), false, true}};
    }
    values_[i] = *value;
  }
  int code = 0;
  const double result = exact_->Evaluate(values_.data(), code);
  if (code != 0 && code != kDoubtfulNumber) return {Outcome::kFaulty, 0, FaultOf(exact_->Explain())};
  if (!std::isfinite(result)) {
    return {Outcome::kFaulty, 0, Fault{0, typed_.GetLength(), Say("the result is no number"), false, true}};
  }
  Outcome outcome{Outcome::kEvaluated, result, {}};
  if (code == kDoubtfulNumber) outcome.doubt = FaultOf(exact_->Explain());
  // What was calculated stays as it came out; the doubt goes beside it: the bill must not lose its line.
  return outcome;
}

CString BoundFormula::TextWithValues(ValueSource& source, std::optional<double> instead) const {
  CString text;
  int at = 0;
  for (const FormulaWord& word : NamesOf(typed_.View())) {
    const CString key = NameKey(word.name.View());
    const auto name = std::find_if(names_.begin(), names_.end(),
                                   [&](const Name& known) { return NameKey(known.word.name.View()) == key; });
    text += typed_.Mid(at, word.position - at);
    at = word.position + word.length;
    if (name->symbol.kind == Symbol::kText) {
      text += _T("'") + WithoutQuotes(source.TextOf(name->symbol.index)) + _T("'");
      continue;
      // Behind a digit a name is a factor; its own digits would make one number with those before them.
    }
    if (word.position > 0 && typed_[word.position - 1] >= '0' && typed_[word.position - 1] <= '9')
      text += _T("*");
    const double value = ValueOf(*name, source, instead).value_or(0);
    text += value < 0 ? Literal(value) : Digits(value);
  }
  // A negative number in brackets, as A-B would otherwise show two signs side by side.
  return text + typed_.Mid(at);
}

std::vector<double> BoundFormula::EvaluateRows(const std::vector<std::vector<double>>& columns,
                                               std::size_t rows) const {
  if (suite_ != nullptr) return suite_->EvaluateRows(columns, rows);
  std::vector<const double*> by_name(names_.size());
  std::vector<std::vector<double>> constants(names_.size());
  for (std::size_t i = 0; i < places_.size(); ++i) by_name[places_[i]] = columns[i].data();
  for (std::size_t i = 0; i < names_.size(); ++i) {
    // A constant is a column of equal numbers: the library's rows know columns only.
    if (names_[i].symbol.kind != Symbol::kConstant) continue;
    constants[i].assign(rows, names_[i].symbol.constant);
    by_name[i] = constants[i].data();
  }
  std::vector<double> results(rows);
  std::vector<int> codes(rows);
  exact_->EvaluateRows(by_name.data(), rows, results.data(), codes.data());
  for (std::size_t row = 0; row < rows; ++row) {
    if (codes[row] != 0 || !std::isfinite(results[row])) results[row] = std::nan("");
  }
  // Rows in doubt are left to the single way as well: it says why.
  return results;
}

}  // namespace lorv::tool
