#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "TEXPRESSCAL/calculate_rows.h"
#include "TEXPRESSCAL/diagnose.h"

namespace lorv {

// The code of a number that was evaluated without an error while some FLOOR, CEIL, ROUND or INT met a number
// that 32 bits do not hold, and made -2147483648 of it.
constexpr int kDoubtfulNumber = 100;

// The code of a finite result although some part of the formula is NaN or infinite: a comparison, a choice,
// MAX or a divisor has hidden it, such as "IIF(ASIN(2)>0,1,2)", which gives 2.
constexpr int kHiddenNoNumber = 101;

// A formula whose names stand for values with all their digits.
//
// The grammar, the functions and their errors are the calculator's. What differs is how values get in: the
// calculator writes them into the text with three decimals, and what is near a third as "1/3"; here they are
// the very numbers. So 0.0004 is no 0, 0.334 no third, and a name stands for its value wherever it stands, as
// a whole word: letters of any language, digits and "_", of any length. Digits in front of it multiply.
//
// Units: positions count 16-bit units of the formula as typed.
// Edges: letter case never matters. Of two names alike the first counts. A name that is a function, PI or a
//   number is never found. No point may stand beside a name. A text used as a number counts as 0, and so
//   does a result that is a text.
// Result: Fault() says what is wrong with a formula; such a one gives 0 and the code kNoFormula. Throws
//   nothing but std::bad_alloc.
// An object belongs to one thread, but for EvaluateRows, which may run on several.
//
//   const ExactName names[] = {{_T("A")}, {_T("L")}};  ExactFormula f(_T("A*L"), names);
//   const double values[] = {0.0004, 1000};  int code;  f.Evaluate(values, code)  gives 0.4
struct ExactName {
  CString name;
  bool is_text = false;  // its value is set by SetText
};

class COMM_LORV_API ExactFormula {
 public:
  static constexpr int kNoFormula = -1;

  ExactFormula(const CString& formula, std::span<const ExactName> names);
  ExactFormula(ExactFormula&& other) noexcept;
  ExactFormula& operator=(ExactFormula&& other) noexcept;
  ~ExactFormula();

  // Why the formula cannot be evaluated; kNone if it can.
  const FormulaDiagnosis& Fault() const;
  // What in it hardly means what it seems to, in the order of their places. They stop nothing.
  const std::vector<FormulaDiagnosis>& Doubts() const;
  // Whether the formula uses a name, by its place among the names.
  bool Uses(std::size_t name) const;

  // The value of a name that is a text. Letter case goes, as in texts in quotes.
  void SetText(std::size_t name, TextView text);
  // The number for these values, one for each name (those of texts are not looked at), and its code: 0, 1
  // division by zero, 4 argument outside the domain, 5 malformed arguments, 10 missing argument,
  // kDoubtfulNumber, kHiddenNoNumber. With an error the number is what came out so far.
  double Evaluate(const double* values, int& code);
  // What the code of the last Evaluate means, and where it came up; kNone for 0.
  FormulaDiagnosis Explain();

  // Evaluates many rows at once; what one row gives and its code are those of Evaluate. False, with nothing
  // done, for a formula with a fault or with names that stand for texts. `columns` has a column for each
  // name, which may be null for one that is not used; `codes` may be null. All arrays are the caller's.
  bool EvaluateRows(const double* const* columns, std::size_t rows, double* results, int* codes) const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// Evaluates a formula for many rows of values with all their digits: what CalculateRows does with the suite's
// three.
//
// Result: `results` and, unless it is null, `codes` get one entry a row, as by ExactFormula::Evaluate.
//   False, with both untouched, for a formula that cannot be evaluated; ExactFormula says why.
//
//   const double a[] = {0.0004};  double r[1];  const ValueColumn columns[] = {{_T("A"), a}};
//   CalculateExactRows(_T("A*1000"), columns, 1, r, nullptr)  gives true and 0.4
COMM_LORV_API bool CalculateExactRows(const CString& formula, std::span<const ValueColumn> columns,
                                      std::size_t rows, double* results, int* codes);

}  // namespace lorv
