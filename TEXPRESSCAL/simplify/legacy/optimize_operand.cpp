// Where an operand begins and ends, and the brackets around it: the scans on which every rule rests.

#include "TEXPRESSCAL/optimize_expression.h"
#include "TEXPRESSCAL/simplify/legacy/optimize_tokens.h"
#include "framework/text/char_class.h"

using lorv::DepthStep;
using lorv::EndsOperand;
using lorv::IsDigit;

// Whether the digits around a "0" are zeros only: -1 if one of 1 to 9 stands there, else where the scan
// ended. Letters and points are stepped over, so "x0*y" counts as a zero.
int COptimizeExpression::EstimateOptCase(const CString& text, int start, int limit, bool front) const {
  const int step = front ? -1 : 1;
  if (DepthStep(text[start]) != 0) return start - step;
  for (int i = start; (limit - i) * step >= 0; i += step) {
    const TCHAR c = text[i];
    if (c >= '1' && c <= '9') return -1;
    if (EndsOperand(c)) return i - step;
  }
  return limit;
}

int COptimizeExpression::EstimateOptCase_front(const CString& text, int position) const {
  return position == 0 ? 0 : EstimateOptCase(text, position - 1, 0, true);
}

int COptimizeExpression::EstimateOptCase_back(const CString& text, int position, const CString& token) const {
  const int last = text.GetLength() - 1;
  const int start = position + token.GetLength();
  return start > last ? last : EstimateOptCase(text, start, last, false);
}

// The far edge of an operand, brackets respected: "++" walks right, "--" left.
int COptimizeExpression::BracketMatch(const CString& text, int start, int limit,
                                      const CString& direction) const {
  const int step = direction == _T("++") ? 1 : -1;
  int depth = 0;
  for (int i = start; (limit - i) * step >= 0; i += step) {
    depth += DepthStep(text[i]);
    const bool unmatched = depth == -step;
    if (unmatched || (depth == 0 && EndsOperand(text[i]))) return i - step;
  }
  return limit;
}

int COptimizeExpression::BracketToFrontMatch(const CString& text, int position) const {
  return position - 1 < 1 ? 0 : BracketMatch(text, position - 1, 0, _T("--"));
}

int COptimizeExpression::BracketToBackMatch(const CString& text, int position, const CString& token) const {
  const int last = text.GetLength() - 1;
  const int start = position + token.GetLength();
  return start >= last ? last : BracketMatch(text, start, last, _T("++"));
}

// Where the bracket that opens at `start` closes; -1 if one bracket is missing, `end` if more are. A start
// that is no bracket is its own end.
int COptimizeExpression::FuncBracketMatch(const CString& text, int start, int end) const {
  int depth = 0;
  int i = start;
  for (; i < end; ++i) {
    depth += DepthStep(text[i]);
    if (depth == 0) break;
  }
  return depth == 1 ? -1 : i;
}

int COptimizeExpression::ReverseFindSubstring(const CString& text, const CString& token) const {
  int last = -1;
  for (int at = text.Find(token); at >= 0; at = FindStep(text, token, at)) last = at;
  return last;
}

int COptimizeExpression::FindStep(const CString& text, const CString& token, int position) const {
  return text.Find(token, position + 1);
}

int COptimizeExpression::ReplaceSingleObject(CString& text, int position, int length,
                                             const CString& fresh) const {
  text.Delete(position, length);
  text.Insert(position, fresh);
  return 1;
}

// A bare number keeps no brackets, "a+1" gets them and "a+b" does not: only an end that is a digit asks for
// them.
bool COptimizeExpression::AddBracket(CString& text) const {
  if (text.IsEmpty()) return false;
  if (!IsDigit(text[0]) && !IsDigit(text[text.GetLength() - 1])) return false;
  text = _T("(") + text + _T(")");
  ClearNosenseBracket(text);
  return true;
}

// Takes one pair of brackets off a bare number; 0 if there is none. Behind a comma they stay.
int COptimizeExpression::ClearNosenseBracket(CString& text) const {
  const int length = text.GetLength();
  for (int i = 0; i <= length - 2; ++i) {
    if (text[i] != '(') continue;
    if (i > 0 && (!EndsOperand(text[i - 1]) || text[i - 1] == ',')) continue;
    int end = i + 1;
    if (text[end] == '-') ++end;
    while (IsDigit(text[end]) || text[end] == '.') ++end;
    if (text[end] != ')') continue;
    if (end == i + 1) {
      text.Replace(_T("()"), _T("0"));
    } else {
      text.Delete(end);
      text.Delete(i);
    }
    return end;
  }
  return 0;
}

// Takes off a pair around the whole text. The depth begins anew at each character, so any ")" inside keeps
// the pair: "(a+(b))" stays.
bool COptimizeExpression::ClearFurthestBracket(CString& text) const {
  const int last = text.GetLength() - 1;
  if (last < 1 || text[0] != '(' || text[last] != ')') return false;
  const CString inside = text.Mid(1, last - 1);
  if (inside.Find(')') >= 0) return false;
  text = inside;
  return true;
}
