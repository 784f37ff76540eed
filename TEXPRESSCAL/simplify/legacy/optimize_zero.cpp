// The zero rules: terms that are zero go, and the operators they leave behind.

#include "TEXPRESSCAL/optimize_expression.h"
#include "TEXPRESSCAL/simplify/legacy/optimize_tokens.h"

using lorv::EndsOperand;

namespace {

// Puts `fresh` in place of the units from `first` to `last`; 1 if that changes the text.
int RewriteRange(CString& text, int first, int last, const CString& fresh) {
  const CString before = text;
  text.Delete(first, last - first + 1);
  text.Insert(first, fresh);
  return text == before ? 0 : 1;
}

// Applies a rule to every place of a token; 1 if one of them changed the text. After a change the same place
// is searched again.
template <class Rule>
int ForEachToken(CString& text, LPCTSTR token, Rule rule) {
  int changed = 0;
  int at = text.Find(token);
  while (at >= 0) {
    const int done = rule(token, at);
    changed |= done;
    at = text.Find(token, done != 0 ? at : at + 1);
  }
  return changed;
}

}  // namespace

// False for a division by zero. Only the first "/0" is ever looked at: "a/0.5+b/0" passes.
bool COptimizeExpression::IsValue(const CString& text) const {
  return !ReplaceDivisionZero(text);
}

bool COptimizeExpression::ReplaceDivisionZero(const CString& text) const {
  const CString token(_T("/0"));
  const int position = text.Find(token);
  return position >= 0 && EstimateOptCase_back(text, position, token) != -1;
}

// "*0": cuts a product with a zero factor. "*-" and "/-": moves the sign in front of the product.
int COptimizeExpression::ReplaceMutiZeroAndSubtration(CString& text, const CString& token,
                                                      int position) const {
  if (position == -1) return 0;
  const bool zero = token == _T("*0");
  const int end = zero ? EstimateOptCase_back(text, position, token) : position + token.GetLength() - 1;
  if (end == -1) return 0;
  int start = BracketToFrontMatch(text, position);
  // A function's name before its bracket joins the product.
  while (start >= 2 && !EndsOperand(text[start - 1]) &&
         !(EndsOperand(text[start - 2]) && text[start - 1] == '(')) {
    --start;
  }
  if (zero) return RewriteRange(text, start, end, _T("0"));
  const CString before = text;
  RewriteRange(text, start, end, _T("-") + text.Mid(start, position - start) + token[0]);
  text.Replace(_T("--"), _T("+"));
  text.Replace(_T("+-"), _T("-"));
  return text == before ? 0 : 1;
}

int COptimizeExpression::ReplaceZeroMutiple(CString& text, const CString& token, int position) const {
  if (position == -1) return 0;
  const int start = EstimateOptCase_front(text, position);
  if (start == -1) return 0;
  return RewriteRange(text, start, BracketToBackMatch(text, position, token), _T("0"));
}

// Behind "(" a following "+" goes too: "(-0+1)" becomes "(1)". At the very start of the text it stays; the
// leading sign is taken away later.
int COptimizeExpression::ReplaceAndSubtrationZero(CString& text, const CString& token, int position) const {
  if (position == -1) return 0;
  int end = EstimateOptCase_back(text, position, token);
  if (position > 0 && text[position - 1] == '(' && text[position + token.GetLength()] == '+') ++end;
  if (end == -1) return 0;
  return RewriteRange(text, position, end, end == 0 ? _T("0") : _T(""));
}

int COptimizeExpression::ReplaceZeroAndSubtration(CString& text, const CString& token, int position) const {
  if (position == -1) return 0;
  const int start = EstimateOptCase_front(text, position);
  if (start == -1) return 0;
  return RewriteRange(text, start, position + 1, token == _T("0-") ? _T("-") : _T(""));
}

// -1: a division by zero; 1: the text changed.
int COptimizeExpression::ZeroAndMutipleAndDvsion(CString& text) const {
  if (ReplaceDivisionZero(text)) return -1;
  int changed = ForEachToken(
      text, _T("*0"), [&](LPCTSTR token, int at) { return ReplaceMutiZeroAndSubtration(text, token, at); });
  for (LPCTSTR zero : lorv::kZeroBeforeProduct) {
    changed |=
        ForEachToken(text, zero, [&](LPCTSTR token, int at) { return ReplaceZeroMutiple(text, token, at); });
  }
  return changed;
}

int COptimizeExpression::ZeroAndAddAndSubtratration(CString& text) const {
  int changed = 0;
  for (LPCTSTR zero : lorv::kZeroBehindSum) {
    changed |= ForEachToken(text, zero,
                            [&](LPCTSTR token, int at) { return ReplaceAndSubtrationZero(text, token, at); });
  }
  for (LPCTSTR zero : lorv::kZeroBeforeSum) {
    changed |= ForEachToken(text, zero,
                            [&](LPCTSTR token, int at) { return ReplaceZeroAndSubtration(text, token, at); });
  }
  return changed;
}

void COptimizeExpression::ClearRepeatOperator(CString& text) const {
  for (const auto& row : lorv::kRepeatedOperators) {
    while (text.Replace(row.old, row.fresh) != 0) {
    }
  }
  for (LPCTSTR token : {_T("*-"), _T("/-")}) {
    while (ReplaceMutiZeroAndSubtration(text, token, text.Find(token)) != 0) {
    }
  }
}

// 0: a division by zero ended the rules.
int COptimizeExpression::OptimizateZero(CString& text) const {
  ClearRepeatOperator(text);
  while (ZeroAndMutipleAndDvsion(text) == 1) {
  }
  if (ZeroAndMutipleAndDvsion(text) == -1) return 0;
  while (ZeroAndAddAndSubtratration(text) == 1) {
  }
  ClearRepeatOperator(text);
  if (text[0] == '+') text.Delete(0);
  const TCHAR last = text[text.GetLength() - 1];
  if (last == '+' || last == '-') text.Delete(text.GetLength() - 1);
  if (text.IsEmpty()) text = _T("0");
  ClearNosenseBracket(text);
  return 1;
}
