#pragma once

#include <string>
#include <vector>

#include "TEXPRESSCAL/diagnose.h"
#include "TEXPRESSCAL/language/node_pool.h"
#include "TEXPRESSCAL/language/parser.h"
#include "TEXPRESSCAL/text/text_edit.h"

namespace lorv {

// One formula followed from the text as typed to its tree, with every unit's typed place: so whatever is
// wrong on the way is shown in the text as typed. In between the text is rewritten: names become what they
// stand for.
class FormulaTrace {
 public:
  explicit FormulaTrace(TextView typed);
  FormulaTrace(const FormulaTrace&) = delete;
  FormulaTrace& operator=(const FormulaTrace&) = delete;

  TextView Typed() const { return typed_; }
  // The formula in capitals, unit for unit as typed at first.
  TracedEdit& Text() { return text_; }

  // The tree of what Text() has become, or null. It lives until the next parse.
  ExprNode* Parse(const CValidParameter& resolver);

  // Names of more units than that have no value.
  void LimitNames(std::size_t units) { longest_name_ = units; }

  // Why the last parse failed. Of the `known` names the nearest is proposed for an unknown one.
  FormulaDiagnosis ExplainParse(std::vector<CString> known);
  // What an evaluation's error means; `node` is where it came up, or null.
  FormulaDiagnosis ExplainEvaluation(int code, const ExprNode* node);
  // A fault of a stretch of the parsed text.
  FormulaDiagnosis Named(FormulaFault fault, std::size_t first, std::size_t behind) const;
  // What the units of the parsed text were typed as.
  TypedRange Typed(std::size_t first, std::size_t behind) const { return rewritten_.Range(first, behind); }
  // The place behind the operand that begins at `place`, of an operator of this kind.
  std::size_t OperandEnd(std::size_t place, unsigned short kind);
  TextView Parsed() const { return {rewritten_.Text(), rewritten_.Length()}; }

 private:
  FormulaDiagnosis ExplainStop(unsigned int position, bool value_wanted);
  FormulaDiagnosis ExplainUnit(TCHAR c, std::size_t at, bool value_wanted);
  FormulaDiagnosis Unknown(std::size_t first, std::size_t behind) const;
  std::size_t NameEnd(std::size_t first) const;
  std::size_t TextNameEnd(std::size_t first) const;
  std::size_t WordEnd(std::size_t first) const;
  TCHAR At(std::size_t place) const {
    return place < rewritten_.Length() ? rewritten_.Text()[place] : TCHAR{0};
  }

  std::basic_string<TCHAR> typed_;
  TracedEdit text_;       // with values in it
  TracedEdit rewritten_;  // as it is parsed
  std::basic_string<TCHAR> parsed_;
  NodePool nodes_;
  std::vector<CString> known_;
  std::size_t longest_name_ = kVarListSize;
  TCHAR names_text_[kVarListSize] = {};
  ParseFault fault_ = ParseFault::kNone;
  unsigned int position_ = 0;  // where the last parse stopped
  unsigned int place_ = 0;     // where that began which it failed at
};

}  // namespace lorv
