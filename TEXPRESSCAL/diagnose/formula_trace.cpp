#include "TEXPRESSCAL/diagnose/formula_trace.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "TEXPRESSCAL/diagnose/diagnose_text.h"
#include "TEXPRESSCAL/diagnose/function_alias_table.h"
#include "TEXPRESSCAL/diagnose/nearest_name.h"
#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/language/operators.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/text/operator_rewriting.h"
#include "framework/text/char_class.h"

// A formula parsed with the typed place of every unit, and faults explained at those places. The text goes
// through the same capitals, replacement and parser as in the calculator; only the buffer differs, as it
// remembers for each unit where it came from. So what is explained is what really failed.

namespace lorv {
namespace {

// A formula that has been parsed once holds allowed names only.
class AnyNameResolver final : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR /*name*/) const override { return 1; }
};

}  // namespace

FormulaTrace::FormulaTrace(TextView typed) : typed_(typed), text_(Capitals(typed)), rewritten_(text_) {}

// May be called again after names were replaced: everything behind the text is made anew.
ExprNode* FormulaTrace::Parse(const CValidParameter& resolver) {
  rewritten_ = text_;
  RewriteOperators(rewritten_);
  parsed_.assign(rewritten_.Text(), rewritten_.Length());
  nodes_.Clear();
  NameList names(names_text_);
  names.Clear();
  Parser parser(parsed_.data(), nodes_, &resolver, names);
  ExprNode* root = parser.Parse();
  fault_ = parser.Fault();
  position_ = parser.Position();
  place_ = parser.FaultPlace();
  return root;
}

std::size_t FormulaTrace::OperandEnd(std::size_t place, unsigned short kind) {
  TCHAR names_text[kVarListSize] = {};
  NameList names(names_text);
  const AnyNameResolver resolver;
  NodePool spare;
  Parser parser(parsed_.data(), spare, &resolver, names);
  return parser.OperandEnd(static_cast<unsigned int>(place), kind);
}

FormulaDiagnosis FormulaTrace::Named(FormulaFault fault, std::size_t first, std::size_t behind) const {
  FormulaDiagnosis diagnosis;
  const TypedRange range = rewritten_.Range(first, behind);
  diagnosis.fault = fault;
  diagnosis.position = range.first;
  diagnosis.length = range.behind - range.first;
  const FaultText& text = TextOfFault(fault);
  const TextView stretch = TextView(typed_).substr(static_cast<std::size_t>(range.first),
                                                   static_cast<std::size_t>(diagnosis.length));
  diagnosis.chinese.Format(text.chinese, stretch);
  diagnosis.english.Format(text.english, stretch);
  return diagnosis;
}

FormulaDiagnosis FormulaTrace::ExplainParse(std::vector<CString> known) {
  known_ = std::move(known);
  switch (fault_) {
    case ParseFault::kUnknownName:
      return Unknown(place_, NameEnd(place_));
    case ParseFault::kNoArguments:
      return Named(FormulaFault::kNoArguments, place_, NameEnd(place_));
    case ParseFault::kArgumentCount: {
      std::size_t behind = position_;
      // The parser stands behind the blanks that follow the bracket.
      while (behind > place_ && At(behind - 1) == ' ') --behind;
      return Named(FormulaFault::kArgumentCount, place_, behind);
    }
    case ParseFault::kOpenText:
      return Named(FormulaFault::kOpenText, place_, place_ + 1);
    case ParseFault::kTooDeep:
      return Named(FormulaFault::kTooDeep, place_, place_ + 1);
    case ParseFault::kOpenBracket:
      // At the end it is the bracket that is wrong, before it what stands in the bracket's way.
      if (At(position_) == 0) return Named(FormulaFault::kOpenBracket, place_, place_ + 1);
      return ExplainStop(position_, false);
    case ParseFault::kNoOperand:
      return ExplainStop(position_, true);
    default:
      return ExplainStop(position_, false);
  }
}

FormulaDiagnosis FormulaTrace::ExplainStop(unsigned int position, bool value_wanted) {
  const TCHAR c = At(position);
  if (c == 0) return Named(FormulaFault::kUnfinished, position, position);
  if (IsDigit(c) || IsAsciiLetter(c) || c == '\'' || c == '(') {
    return Named(FormulaFault::kNoOperator, position, std::max<std::size_t>(WordEnd(position), position + 1));
  }
  return ExplainUnit(c, position, value_wanted);
}

FormulaDiagnosis FormulaTrace::ExplainUnit(TCHAR c, std::size_t at, bool value_wanted) {
  // Asked first: most signs of an input method lie above 0x100 and would pass for names.
  if (const TextView plain = PlainSign(c); !plain.empty()) {
    FormulaDiagnosis diagnosis = Named(FormulaFault::kFullWidth, at, at + 1);
    diagnosis.suggestion = CString(plain);
    return diagnosis;
  }
  // Only letters of other scripts make names that substitution could have found.
  if (c >= 0x100 || c == '_') return Unknown(at, TextNameEnd(at));
  if (c == ',' && !value_wanted && at > 0 && IsDigit(At(at - 1)) && IsDigit(At(at + 1))) {
    return Named(FormulaFault::kDecimalComma, at, at + 1);
  }
  if (c == '.' && IsDigit(At(at + 1))) return Named(FormulaFault::kLeadingPoint, at, at + 1);
  if (c == ' ' && !value_wanted && at > 0 && At(at - 1) == '|')
    return Named(FormulaFault::kBlankBehindBar, at, at + 1);
  if (c == ')' && !value_wanted) return Named(FormulaFault::kExtraBracket, at, at + 1);
  const bool sign = StrengthOf(c) != 0 || TextView(_T("=&|),")).find(c) != TextView::npos;
  return Named(sign && value_wanted ? FormulaFault::kNoOperand : FormulaFault::kStrayCharacter, at, at + 1);
}

FormulaDiagnosis FormulaTrace::Unknown(std::size_t first, std::size_t behind) const {
  if (behind - first > longest_name_) return Named(FormulaFault::kLongName, first, behind);
  FormulaDiagnosis diagnosis = Named(FormulaFault::kUnknownName, first, behind);
  const TextView name = TextView(typed_).substr(static_cast<std::size_t>(diagnosis.position),
                                                static_cast<std::size_t>(diagnosis.length));
  const auto alias =
      std::find_if(std::begin(kFunctionAliases), std::end(kFunctionAliases),
                   [&](const FunctionAlias& known) { return CompareWithoutCase(name, known.other) == 0; });
  diagnosis.suggestion =
      alias == std::end(kFunctionAliases) ? NearestName(name, known_) : CString(alias->ours);
  return diagnosis;
}

FormulaDiagnosis FormulaTrace::ExplainEvaluation(int code, const ExprNode* node) {
  // An operand that is not there has no place; the whole formula stands for it.
  if (node == nullptr) {
    FormulaDiagnosis diagnosis = Named(FormulaFault::kMissingArgument, 0, rewritten_.Length());
    diagnosis.stops = false;
    return diagnosis;
  }
  if (code == kDivisionByZero) {
    // The node stands at its "/"; what is 0 begins behind it.
    std::size_t first = node->place + 1;
    while (At(first) == ' ') ++first;
    return Named(FormulaFault::kDivisionByZero, first, OperandEnd(first, kDivide));
  }
  const FormulaFault fault = code == kOutsideDomain    ? FormulaFault::kOutsideDomain
                             : code == kMissingOperand ? FormulaFault::kMissingArgument
                                                       : FormulaFault::kMalformedArguments;
  FormulaDiagnosis diagnosis = Named(fault, node->place, OperandEnd(node->place, kNot));
  diagnosis.stops = code == kMalformedArguments;
  return diagnosis;
}

std::size_t FormulaTrace::NameEnd(std::size_t first) const {
  while (IsNameChar(At(first))) ++first;
  return first;
}

// A name or a number.
std::size_t FormulaTrace::WordEnd(std::size_t first) const {
  while (IsNameChar(At(first)) || At(first) == '.') ++first;
  return first;
}

// A name as an estimator writes it: letters of any script, digits and "_", no punctuation.
std::size_t FormulaTrace::TextNameEnd(std::size_t first) const {
  const auto belongs = [this](std::size_t at) {
    const TCHAR c = At(at);
    return IsNameChar(c) || (c >= 0x100 && PlainSign(c).empty());
  };
  while (belongs(first)) ++first;
  return first;
}

}  // namespace lorv
