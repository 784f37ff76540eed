#include "TEXPRESSCAL/optimize_expression.h"

#include "TEXPRESSCAL/expression.h"
#include "TEXPRESSCAL/simplify/legacy/optimize_tokens.h"
#include "TEXPRESSCAL/values/substitution.h"

// The suite's own simplifier: folds max, min and iif, and strips what is zero, by searching the text. Its
// rules are kept to the letter, their damage included, because callers know its answers; whoever needs the
// value kept uses SimplifySafely. Recursion is cut at a named depth, and the text is then as it was given.

using lorv::kFoldedFunctions;
using lorv::kFoldedIif;
using lorv::kFoldedMin;
using lorv::kFoldedNameLength;
using lorv::kFoldedNames;

const CString s_strFuncName[3] = {CString(kFoldedNames[0]), CString(kFoldedNames[1]),
                                  CString(kFoldedNames[2])};
const CString s_strOperator{lorv::kOperandEnds};

namespace {

// Ends the folding of a formula whose calls go too deep, or never end.
struct TooDeep {};

// Counts the calls that are being folded inside one another on this thread.
class DepthGuard {
 public:
  DepthGuard() {
    if (depth_ == lorv::kMaxSimplifierDepth) throw TooDeep();
    ++depth_;
  }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;
  ~DepthGuard() { --depth_; }

 private:
  static thread_local int depth_;
};

thread_local int DepthGuard::depth_ = 0;

// An argument must be beyond these to win: where no argument is, none is chosen and the call becomes 0.
constexpr double kLowestMaximum = -2147483647.0;
constexpr double kHighestMinimum = 2147483647.0;

// The places of the commas of a call that stand in no bracket, two at most. A third ends the arguments.
struct ArgumentCommas {
  int count = 0;
  int at[2] = {};
  int end;  // where the last argument ends

  ArgumentCommas(const CString& call, int first, int past) : end(past) {
    int depth = 0;
    for (int i = first; i < end; ++i) {
      depth += lorv::DepthStep(call[i]);
      if (depth == 0 && call[i] == ',') Add(i);
    }
  }

 private:
  void Add(int position) {
    if (count < 2) {
      at[count] = position;
    } else {
      end = position;
    }
    ++count;
  }
};

CString Between(const CString& text, int first, int past) {
  return text.Mid(first, past - first);
}

}  // namespace

bool COptimizeExpression::SetKeyValue(const CString& key, double value) {
  m_mapKeyValue[key] = value;
  return true;
}

bool COptimizeExpression::ClearMap() {
  m_mapKeyValue.clear();
  return true;
}

bool COptimizeExpression::OptimizateExper(CString& text, const int& flags) {
  static constexpr struct {
    int flag;
    int function;
  } kPasses[] = {
      {kFoldMax, lorv::kFoldedMax}, {kFoldMin, kFoldedMin}, {kFoldIif, kFoldedIif}, {kZeroRules, -1}};
  const int asked = flags;
  // Unknown flags change nothing and are no failure.
  if (asked < kZeroRules || asked > kAllRules) return true;
  const CString as_given = text;
  try {
    for (const auto& pass : kPasses) {
      if ((asked & pass.flag) == 0) continue;
      m_nFuncIndex = pass.function;
      if (!SExperOptimizate(text)) return false;
    }
  } catch (const TooDeep&) {
    text = as_given;
  }
  return true;
}

// One pass over the text.
bool COptimizeExpression::SExperOptimizate(CString& text) const {
  if (text.IsEmpty() || !IsValue(text)) return false;
  for (int i = 0; i <= text.GetLength() / 2; ++i) {
    if (ClearNosenseBracket(text) == 0) break;
  }
  text.MakeLower();
  if (m_nFuncIndex >= 0) {
    FoldCalls(text);
  } else if (!RunZeroRounds(text)) {
    return false;
  }
  ClearFurthestBracket(text);
  return true;
}

// From the right, so that inner and later calls go first. A round that changes nothing is the last.
void COptimizeExpression::FoldCalls(CString& text) const {
  const CString name(kFoldedNames[m_nFuncIndex]);
  CString before;
  for (int at = ReverseFindSubstring(text, name); at >= 0; at = ReverseFindSubstring(text, name)) {
    if (text.CompareNoCase(before) == 0) break;
    before = text;
    const CString call = CutCall(text, at);
    ReplaceSingleObject(text, at, call.GetLength(), SubsectionOptimize(call));
  }
}

// As many rounds as half the text's length. The round after one that changed nothing would change nothing
// either, so that one may be the last.
bool COptimizeExpression::RunZeroRounds(CString& text) const {
  CString before;
  for (int i = 0; i <= text.GetLength() / 2 && text != before; ++i) {
    before = text;
    if (OptimizateZero(text) == 0) return false;
    ClearNosenseBracket(text);
  }
  return true;
}

// The call whose name stands at `position`; empty if its bracket does not close.
CString COptimizeExpression::CutCall(const CString& text, int position) const {
  const int close = FuncBracketMatch(text, position + kFoldedNameLength, text.GetLength());
  return text.Mid(position, close - position + 1);
}

CString COptimizeExpression::SubsectionOptimize(const CString& call) const {
  if (call.IsEmpty()) return call;
  CStringArray list;
  IdentityFuncElement(call, list, m_nFuncIndex);
  if (list.IsEmpty()) return call;
  if (m_nFuncIndex != kFoldedIif) return GetMaxOrMinValue(list, m_nFuncIndex != kFoldedMin);
  if (list.GetSize() != 3) return call;
  CString chosen = list[ValStrChangDouble(OptimizateAll(list[2])) > 0.0 ? 1 : 0];
  AddBracket(chosen);
  return chosen;
}

// Lists the arguments of a call from the last to the first. One argument alone counts as an empty one, of
// four or more only the first counts; iif has three or none.
void COptimizeExpression::IdentityFuncElement(const CString& call, CStringArray& list, int function) const {
  const int first = kFoldedNameLength + 1;
  const ArgumentCommas commas(call, first, call.GetLength() - 1);
  if (function == kFoldedIif && commas.count != 2) return;
  if (commas.count == 0) {
    list.Add(_T(""));
    return;
  }
  if (commas.count == 2) list.Add(Between(call, commas.at[1] + 1, commas.end));
  if (commas.count <= 2) {
    list.Add(Between(call, commas.at[0] + 1, commas.count == 2 ? commas.at[1] : commas.end));
  }
  list.Add(Between(call, first, commas.at[0]));
}

// The list runs backwards and only a better value wins: a tie goes to the argument that stands last.
CString COptimizeExpression::GetMaxOrMinValue(const CStringArray& list, bool maximum) const {
  CString best;
  double winner = maximum ? kLowestMaximum : kHighestMinimum;
  for (const CString& element : list) {
    const double value = ValStrChangDouble(element);
    if (maximum ? value > winner : value < winner) {
      winner = value;
      best = element;
    }
  }
  OptimizateAll(best);
  AddBracket(best);
  return best;
}

// The value of a text with the known variables put in; 0 for one that cannot be evaluated.
double COptimizeExpression::ValStrChangDouble(const CString& text) const {
  lorv::GrowingEdit copy;
  copy.Assign(text.View());
  for (const auto& [name, value] : m_mapKeyValue) {
    const lorv::TextView key(static_cast<LPCTSTR>(name));
    if (!key.empty()) lorv::SubstituteValue(copy, key, value);
  }
  CExpression expression;
  double value = 0;
  expression.ChangeExpression(copy.View());
  expression.Value(value);
  return value;
}

// Folds all calls of an argument: first every max, then min, then iif. A name that comes back once its turn
// is over stays.
CString COptimizeExpression::OptimizateAll(CString& text) const {
  OptimizateZero(text);
  for (int k = 0; k < kFoldedFunctions;) {
    const int at = text.Find(kFoldedNames[k]);
    if (at < 0) {
      ++k;
      continue;
    }
    const CString call = CutCall(text, at);
    const CString folded = k == kFoldedIif ? OptimizateIIF(call, k) : OptimizateMaxMin(call, k);
    ReplaceSingleObject(text, at, call.GetLength(), folded);
  }
  return text;
}

// What stands between a call's name and its last character; it begins with the "(".
CString COptimizeExpression::ArgumentsOf(const CString& call) const {
  return Between(call, kFoldedNameLength, call.GetLength() - 1);
}

CString COptimizeExpression::OptimizateMaxMin(const CString& call, int function) const {
  const DepthGuard guard;
  if (InclusiveFunc(call) != kFoldedFunctions - 1) {
    CString arguments = ArgumentsOf(call);
    return OptimizateMaxMin(OptimizateAll(arguments), function);
  }
  CStringArray list;
  IdentityFuncElement(call, list, function);
  if (list.IsEmpty()) return call;
  return function == kFoldedIif ? list[0] : GetMaxOrMinValue(list, function != kFoldedMin);
}

// Raises CInvalidArgException when the call has not three arguments.
CString COptimizeExpression::OptimizateIIF(const CString& call, int function) const {
  const DepthGuard guard;
  if (InclusiveFunc(call) != kFoldedFunctions - 1) {
    CString arguments = ArgumentsOf(call);
    return OptimizateIIF(OptimizateAll(arguments), function);
  }
  CStringArray list;
  IdentityFuncElement(call, list, function);
  if (function != kFoldedIif) return list[0];
  return list[ValStrChangDouble(OptimizateAll(list[2])) > 0.0 ? 1 : 0];
}

// How many of the names do NOT stand in a text.
int COptimizeExpression::InclusiveFunc(const CString& text) const {
  int missing = 0;
  for (LPCTSTR name : kFoldedNames) {
    if (text.Find(name) < 0) ++missing;
  }
  return missing;
}
