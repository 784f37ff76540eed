#pragma once

#include "TEXPRESSCAL/keyword_set.h"
#include "TEXPRESSCAL/map_value.h"

namespace lorv {

// What is wrong with a formula.
enum class FormulaFault {
  kNone,
  kTooLong,          // longer than a calculator holds: the rest would be cut
  kUnfinished,       // the formula ends where a value must stand
  kNoOperand,        // a value must stand here
  kNoOperator,       // two values side by side
  kStrayCharacter,   // belongs to no formula
  kFullWidth,        // a full-width sign typed for a plain one
  kDecimalComma,     // a comma typed for the decimal point
  kLeadingPoint,     // a number that begins with its point
  kExtraBracket,     // a closing bracket without its opening one
  kOpenBracket,      // an opening bracket or bar without its closing one
  kOpenText,         // a quote without its closing one
  kBlankBehindBar,   // a blank behind a closing bar, where none may stand
  kNoArguments,      // a function without its brackets
  kArgumentCount,    // IIF or FIND with the wrong count of arguments
  kUnknownName,      // a name that has no value and is no keyword
  kLongName,         // a name of more units than those by which values are kept: it has none
  kTooDeep,          // brackets deeper than kMaxNesting
  kDivisionByZero,   // the divisor is 0
  kOutsideDomain,    // a root or logarithm of what has none
  kMissingArgument,  // a function without the argument it uses
  kMalformedArguments,

  // The formula gives a number, which is hardly the one that was meant.
  kSurplusArgument,  // a function takes no notice of it
  kSecondPoint,      // the number ends at its second point
  kLengthIsZero,     // LEN gives 0 for every text
  kTextResult,       // a text counts as the number 0
  kTextAsNumber,     // so does one within the formula
  kBeyond32Bits,     // a number too large to be rounded or cut: it became -2147483648
  kNumberSearched,   // FIND looks for texts only: it is 0 where a number stands
  kDroppedFactor,    // digits in front of a function or PI, which do not count
  kDroppedOperand,   // a value in front of "!", which negates what is behind it and nothing else
  kMixedJoins,       // AND behind OR without brackets: they bind alike, where one expects AND first
  kComparedTruth,    // a second comparison, as in 1<L+1<5: it compares the 1 or 0 of the first
  kNoNumber          // a part is NaN or infinite, and the result hides it
};

// A fault with its place in the formula as typed.
struct FormulaDiagnosis {
  FormulaFault fault = FormulaFault::kNone;
  int position = 0;    // first unit, from 0; the formula's length for its end
  int length = 0;      // units; 0 at the end of the formula
  CString suggestion;  // what was likely meant: a known name, the plain sign; may be empty
  CString chinese;     // the message
  CString english;
  bool stops = true;  // false: Calculate gives a value all the same
};

// Says what is wrong with a formula, in the text as it was typed, where Calculate counts in its rewritten
// one.
//
// The formula is evaluated as CAdExpCalculate does it with these values and keywords (the names of `values`
// count as keywords): a keyword without a value is 0. Only the first fault of the syntax is found, or the
// last one of the values, which is the one that Calculate reports.
// Units: 16-bit units of the formula as typed; only what a calculator keeps of it is looked at.
// Edges: an empty formula has no fault. A missing argument and an argument outside the domain are faults here
//   though Calculate goes on with 0 (`stops` is false).
// Result: the fault; kNone if there is none, with no message.
// Nothing is kept. Any thread.
//
//   DiagnoseFormula(_T("(L+B*2"), values, keywords)  gives kOpenBracket at 0, length 1
COMM_LORV_API FormulaDiagnosis DiagnoseFormula(LPCTSTR formula, const CMapValue& values,
                                               const TDefsetVars& keywords);

}  // namespace lorv
