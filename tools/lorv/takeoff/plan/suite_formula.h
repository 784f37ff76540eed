#pragma once

#include <memory>
#include <vector>

#include "TEXPRESSCAL/formula_words.h"
#include "tools/lorv/takeoff/plan/value_source.h"

namespace lorv::tool {

// A formula evaluated the suite's way: values have three decimals, and what is near a third is one.
//
// Each name of a dimension is set into the text as one character of its own that no formula can hold. So a
// name may be long, Chinese, and part of another name, and each value reaches every place: a text replaced by
// a shorter one would otherwise make the calculator pass over what follows close behind. Constants and
// earlier quantities go in as all their digits in brackets: only what was measured has three decimals.
class SuiteFormula {
 public:
  // Never fails: a fault of the formula itself is kept, and is the outcome of every work.
  SuiteFormula(const CString& formula, const Lookup& lookup);

  // With `instead`, missing names count as that number.
  Outcome Evaluate(ValueSource& source, std::optional<double> instead);
  // The dimensions that it uses, each once.
  const std::vector<std::size_t>& Dimensions() const { return dimensions_; }

  // True for a formula without faults of dimensions and constants alone, in which nothing can fail unseen.
  bool NeedsNumbersOnly() const { return !row_text_.IsEmpty(); }
  // Evaluates such a formula for many rows at once; `columns` are the numbers of Dimensions(). A row that
  // fails is no number in the result.
  std::vector<double> EvaluateRows(const std::vector<std::vector<double>>& columns, std::size_t rows) const;

 private:
  // A stretch of the formula, then what stands behind it.
  struct Piece {
    CString text;
    int position;      // of `text` in the formula as typed
    FormulaWord word;  // the name behind it; none for the last piece
    Symbol symbol;
    TCHAR mark = 0;  // of a dimension
  };
  struct Text;

  void Bind(const Lookup& lookup);
  void BindWord(const FormulaWord& word, Piece& piece);
  void Check();
  Text Fill(ValueSource& source, std::optional<double> instead, Outcome& outcome);
  // A place in the text that was evaluated, as the place in the formula as typed.
  int TypedPlace(int position, bool end, const Text& text) const;
  Fault AsTyped(const Fault& fault, const Text& text) const;

  CString typed_;
  std::vector<Piece> pieces_;
  std::vector<std::size_t> dimensions_;  // the first one has the first mark
  CString row_text_;                     // the text for all rows, with marks; empty where it is not the same
  std::optional<Fault> fault_;
  bool silent_codes_ = false;                    // uses functions whose errors the calculator keeps to itself
  std::unique_ptr<CAdExpCalculate> calculator_;  // a copy of a calculator knows no names
};

}  // namespace lorv::tool
