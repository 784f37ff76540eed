#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/lorv/formula/formula_fault.h"
#include "tools/lorv/formula/formula_words.h"

namespace lorv::tool {

// What a name in a formula stands for.
struct Symbol {
  enum Kind {
    kUnknown,
    kDimension,  // a number of the component, by index
    kResult,     // an earlier quantity of the component, by index
    kText,       // words of the component, by column
    kConstant,   // a number known from the start
  };
  Kind kind = kUnknown;
  std::size_t index = 0;
  double constant = 0;
};

// What a formula takes from the component at hand. Nothing stands for a value that is missing.
class ValueSource {
 public:
  virtual ~ValueSource() = default;
  virtual std::optional<double> DimensionOf(std::size_t index) = 0;
  virtual std::optional<double> ResultOf(std::size_t index) = 0;
  virtual CString TextOf(std::size_t column) = 0;
};

// How the work of a formula ended.
struct Outcome {
  enum State { kWorked, kMissing, kFaulty };
  State state = kWorked;
  double value = 0;
  Fault fault;  // of the formula as typed, where it was not worked
};

// A formula whose names are bound to what a component has, ready to be worked again and again.
//
// Each name of a dimension is set into the text as one character of its own that no formula can hold. So a
// name may be long, Chinese, and part of another name, and each value reaches every place: a text replaced by
// a shorter one would otherwise make the calculator pass over what follows close behind. Constants and
// earlier quantities go in as all their digits in brackets: only what was measured has three decimals.
class BoundFormula {
 public:
  using Lookup = std::function<Symbol(const CString& key)>;

  // Never fails: a fault of the formula itself is kept, and is the outcome of every work. `known` are the
  // names of which the nearest is proposed for one that nothing has.
  BoundFormula(const CString& formula, const Lookup& lookup, const TDefsetVars& known = {});

  // With `instead`, missing names count as that number.
  Outcome Work(ValueSource& source, std::optional<double> instead);
  const std::optional<tool::Fault>& FaultOfText() const { return fault_; }
  const CString& Typed() const { return typed_; }
  // The dimensions that it uses, each once.
  const std::vector<std::size_t>& Dimensions() const { return dimensions_; }

  // True for a formula without faults of dimensions and constants alone, in which nothing can fail unseen.
  bool NeedsNumbersOnly() const { return !row_text_.IsEmpty(); }
  // Works such a formula for many rows at once; `columns` are the numbers of Dimensions(). A row that fails
  // is no number in the result.
  std::vector<double> WorkRows(const std::vector<std::vector<double>>& columns, std::size_t rows) const;

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

  void Bind(const Lookup& lookup, const TDefsetVars& known);
  void BindWord(const FormulaWord& word, Piece& piece, const TDefsetVars& known);
  void Check();
  Text Fill(ValueSource& source, std::optional<double> instead, Outcome& outcome);
  // A place in the text that was worked, as the place in the formula as typed.
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

// A number as a formula holds it, in brackets and with all its digits: formulas know no exponents.
CString Literal(double value);

}  // namespace lorv::tool
