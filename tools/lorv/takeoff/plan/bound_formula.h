#pragma once

#include <memory>
#include <string>
#include <vector>

#include "TEXPRESSCAL/exact_formula.h"
#include "TEXPRESSCAL/keyword_set.h"
#include "tools/lorv/takeoff/plan/suite_formula.h"

namespace lorv::tool {

// How the values of components get into formulas.
enum class ValueDigits {
  kAll,    // as they are
  kSuite,  // as the suite has it: three decimals, thirds
};

// A formula whose names are bound to what a component has, ready to be evaluated again and again.
class BoundFormula {
 public:
  // Never fails: a fault of the formula itself is kept, and is the outcome of every work. `known` are the
  // names of which the nearest is proposed for one that nothing has.
  BoundFormula(const CString& formula, const Lookup& lookup, const TDefsetVars& known = {},
               ValueDigits digits = ValueDigits::kAll);

  // With `instead`, missing names count as that number.
  Outcome Evaluate(ValueSource& source, std::optional<double> instead);
  // The same with all digits, whatever the formula was made for.
  Outcome EvaluateExactly(ValueSource& source, std::optional<double> instead);

  const std::optional<Fault>& FaultOfText() const { return fault_; }
  // What in the formula hardly means what it seems to, whatever the values.
  const std::vector<Fault>& Doubts() const { return doubts_; }
  // What only the maker of the formula knows.
  void AddDoubt(const Fault& doubt) { doubts_.push_back(doubt); }
  const CString& Typed() const { return typed_; }
  // The dimensions that it uses, each once.
  const std::vector<std::size_t>& Dimensions() const { return dimensions_; }
  // The formula with the values in place of the names, with all digits that were used.
  CString TextWithValues(ValueSource& source, std::optional<double> instead) const;

  // True for a formula without faults of dimensions and constants alone.
  bool NeedsNumbersOnly() const {
    return needs_numbers_only_ && (suite_ == nullptr || suite_->NeedsNumbersOnly());
  }
  // Evaluates such a formula for many rows at once; `columns` are the numbers of Dimensions(). A row that
  // fails or is doubtful is no number in the result.
  std::vector<double> EvaluateRows(const std::vector<std::vector<double>>& columns, std::size_t rows) const;

 private:
  struct Name {
    FormulaWord word;  // its first place
    Symbol symbol;
  };

  void Bind(const Lookup& lookup, const TDefsetVars& known);
  void Read();
  std::optional<double> ValueOf(const Name& name, ValueSource& source, std::optional<double> instead) const;

  CString typed_;
  std::vector<Name> names_;
  std::vector<std::size_t> dimensions_;
  std::vector<std::size_t> places_;  // of the dimensions among the names
  std::unique_ptr<ExactFormula> exact_;
  std::unique_ptr<SuiteFormula> suite_;  // none where all digits count
  std::vector<double> values_;
  std::vector<Fault> doubts_;
  std::optional<Fault> fault_;
  bool needs_numbers_only_ = false;
};

}  // namespace lorv::tool
