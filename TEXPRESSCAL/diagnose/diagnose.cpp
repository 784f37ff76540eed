#include "TEXPRESSCAL/diagnose.h"

#include <algorithm>

#include "TEXPRESSCAL/diagnose/diagnose_text.h"
#include "TEXPRESSCAL/diagnose/nearest_name.h"
#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/function_table.h"
#include "TEXPRESSCAL/language/operators.h"
#include "TEXPRESSCAL/language/parser.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/text/operator_rewriting.h"
#include "TEXPRESSCAL/values/substitution.h"

namespace lorv {
namespace {

// Accepts the names that the formula may use and gathers those that have no value.
class NameResolver final : public CValidParameter {
 public:
  NameResolver(const CMapValue& values, const TDefsetVars& keywords) : values_(values), keywords_(keywords) {}

  int ValidParameter(LPCTSTR name) const override {
    const bool has_value = TextLength(name) <= CStrCmp::kCapacity && values_.count(name) != 0;
    if (!has_value && keywords_.FindKey(name) < 0) return 0;
    if (!has_value) valueless_.emplace_back(name);
    return 1;
  }

  const std::vector<CString>& Valueless() const { return valueless_; }

 private:
  const CMapValue& values_;
  const TDefsetVars& keywords_;
  mutable std::vector<CString> valueless_;
};

// One formula followed through substitution, rewriting, parse and evaluation, with every unit's typed place.
class Tracer {
 public:
  Tracer(TextView formula, const CMapValue& values, const TDefsetVars& keywords)
      : typed_(formula), values_(values), keywords_(keywords), text_(Capitals(formula)), rewritten_(text_) {}

  FormulaDiagnosis Run();

 private:
  const ExprNode* Parse();
  FormulaDiagnosis ExplainParse();
  FormulaDiagnosis ExplainStop(unsigned int position, bool value_wanted);
  FormulaDiagnosis ExplainUnit(TCHAR c, std::size_t at, bool value_wanted);
  FormulaDiagnosis ExplainEvaluation(int code, const ExprNode* node);
  FormulaDiagnosis Named(FormulaFault fault, std::size_t first, std::size_t behind) const;
  FormulaDiagnosis Unknown(std::size_t first, std::size_t behind) const;
  std::size_t NameEnd(std::size_t first) const;
  std::size_t TextNameEnd(std::size_t first) const;
  std::size_t WordEnd(std::size_t first) const;
  std::vector<CString> KnownNames() const;
  TCHAR At(std::size_t place) const {
    return place < rewritten_.Length() ? rewritten_.Text()[place] : TCHAR{0};
  }

  TextView typed_;
  const CMapValue& values_;
  const TDefsetVars& keywords_;
  TracedEdit text_;       // with values in it
  TracedEdit rewritten_;  // as it is parsed
  std::basic_string<TCHAR> parsed_;
  NodePool nodes_;
  TCHAR names_text_[kVarListSize] = {};
  ParseFault fault_ = ParseFault::kNone;
  unsigned int position_ = 0;
  unsigned int place_ = 0;
};

// Parses what the values have left; keywords without a value become 0 and the text is parsed again.
const ExprNode* Tracer::Parse() {
  for (bool first = true;; first = false) {
    rewritten_ = text_;
    RewriteOperators(rewritten_);
    parsed_.assign(rewritten_.Text(), rewritten_.Length());
    nodes_.Clear();
    NameList names(names_text_);
    names.Clear();
    const NameResolver resolver(values_, keywords_);
    Parser parser(parsed_.data(), nodes_, &resolver, names);
    const ExprNode* root = parser.Parse();
    fault_ = parser.Fault();
    position_ = parser.Position();
    place_ = parser.FaultPlace();
    if (root == nullptr || !first || resolver.Valueless().empty()) return root;
    for (const CString& name : resolver.Valueless()) SubstituteValue(text_, name.View(), 0);
  }
}

// The steps of a calculator, done with texts that remember where each unit was typed. No fast way is taken:
// only formulas that fail are explained, and a person waits for it.
FormulaDiagnosis Tracer::Run() {
  for (const auto& [name, value] : values_) {
    const TextView text(static_cast<LPCTSTR>(name));
    if (!text.empty()) SubstituteValue(text_, text, value);
  }
  const ExprNode* root = Parse();
  if (root == nullptr) return ExplainParse();
  Evaluator evaluator(nullptr);
  evaluator.Evaluate(root);
  if (evaluator.Error() == kNoError) return {};
  return ExplainEvaluation(evaluator.Error(), evaluator.ErrorNode());
}

// The texts of a fault show the stretch as it was typed, not as it was rewritten.
FormulaDiagnosis Tracer::Named(FormulaFault fault, std::size_t first, std::size_t behind) const {
  FormulaDiagnosis diagnosis;
  const TypedRange range = rewritten_.Range(first, behind);
  diagnosis.fault = fault;
  diagnosis.position = range.first;
  diagnosis.length = range.behind - range.first;
  const FaultText& text = TextOfFault(fault);
  const TextView stretch =
      typed_.substr(static_cast<std::size_t>(range.first), static_cast<std::size_t>(diagnosis.length));
  diagnosis.chinese.Format(text.chinese, stretch);
  diagnosis.english.Format(text.english, stretch);
  return diagnosis;
}

// The parser knows where it stopped and which rule did; a person wants to see what is wrong there.
FormulaDiagnosis Tracer::ExplainParse() {
  switch (fault_) {
    case ParseFault::kUnknownName:
      return Unknown(place_, NameEnd(place_));
    case ParseFault::kNoArguments:
      return Named(FormulaFault::kNoArguments, place_, NameEnd(place_));
    case ParseFault::kArgumentCount: {
      std::size_t behind = position_;
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

// Whatever could begin an operand misses an operator before it.
FormulaDiagnosis Tracer::ExplainStop(unsigned int position, bool value_wanted) {
  const TCHAR c = At(position);
  if (c == 0) return Named(FormulaFault::kUnfinished, position, position);
  if (IsDigit(c) || IsAsciiLetter(c) || c == '\'' || c == '(') {
    return Named(FormulaFault::kNoOperator, position, std::max<std::size_t>(WordEnd(position), position + 1));
  }
  return ExplainUnit(c, position, value_wanted);
}

// In the order of how likely a mistake each is.
FormulaDiagnosis Tracer::ExplainUnit(TCHAR c, std::size_t at, bool value_wanted) {
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

FormulaDiagnosis Tracer::Unknown(std::size_t first, std::size_t behind) const {
  FormulaDiagnosis diagnosis = Named(FormulaFault::kUnknownName, first, behind);
  const TextView name =
      typed_.substr(static_cast<std::size_t>(diagnosis.position), static_cast<std::size_t>(diagnosis.length));
  diagnosis.suggestion = NearestName(name, KnownNames());
  return diagnosis;
}

// Shows the operand that is to blame: its end is found by parsing once more from where it begins.
FormulaDiagnosis Tracer::ExplainEvaluation(int code, const ExprNode* node) {
  if (node == nullptr) {
    FormulaDiagnosis diagnosis = Named(FormulaFault::kMissingArgument, 0, rewritten_.Length());
    diagnosis.stops = false;
    return diagnosis;
  }
  NameList names(names_text_);
  const NameResolver resolver(values_, keywords_);
  NodePool spare;
  Parser parser(parsed_.data(), spare, &resolver, names);
  if (code == kDivisionByZero) {
    std::size_t first = node->place + 1;
    while (At(first) == ' ') ++first;
    return Named(FormulaFault::kDivisionByZero, first,
                 parser.OperandEnd(static_cast<unsigned int>(first), kDivide));
  }
  const FormulaFault fault = code == kOutsideDomain    ? FormulaFault::kOutsideDomain
                             : code == kMissingOperand ? FormulaFault::kMissingArgument
                                                       : FormulaFault::kMalformedArguments;
  FormulaDiagnosis diagnosis = Named(fault, node->place, parser.OperandEnd(node->place, kNot));
  diagnosis.stops = code == kMalformedArguments;
  return diagnosis;
}

std::size_t Tracer::NameEnd(std::size_t first) const {
  while (IsNameChar(At(first))) ++first;
  return first;
}

// A name or a number.
std::size_t Tracer::WordEnd(std::size_t first) const {
  while (IsNameChar(At(first)) || At(first) == '.') ++first;
  return first;
}

// A name as an estimator writes it: letters of any script, digits and "_", no punctuation.
std::size_t Tracer::TextNameEnd(std::size_t first) const {
  const auto belongs = [this](std::size_t at) {
    const TCHAR c = At(at);
    return IsNameChar(c) || (c >= 0x100 && PlainSign(c).empty());
  };
  while (belongs(first)) ++first;
  return first;
}

// All that might have been meant.
std::vector<CString> Tracer::KnownNames() const {
  std::vector<CString> names;
  for (const auto& [name, value] : values_) names.emplace_back(static_cast<LPCTSTR>(name));
  for (const CStrCmp& name : keywords_) names.emplace_back(static_cast<LPCTSTR>(name));
  for (const CDtaFunction& function : Functions()) names.emplace_back(function.pszName);
  return names;
}

}  // namespace

FormulaDiagnosis DiagnoseFormula(LPCTSTR formula, const CMapValue& values, const TDefsetVars& keywords) {
  const TextView typed = formula == nullptr ? TextView() : TextView(formula);
  if (typed.empty()) return {};
  if (typed.size() > kMaxFormulaText) {
    FormulaDiagnosis diagnosis;
    diagnosis.fault = FormulaFault::kTooLong;
    diagnosis.position = kMaxFormulaText;
    diagnosis.length = static_cast<int>(typed.size()) - kMaxFormulaText;
    diagnosis.chinese = TextOfFault(FormulaFault::kTooLong).chinese;
    diagnosis.english = TextOfFault(FormulaFault::kTooLong).english;
    diagnosis.stops = false;
    return diagnosis;
  }
  if (IsPlainNumber(typed)) return {};
  return Tracer(typed, values, keywords).Run();
}

}  // namespace lorv
