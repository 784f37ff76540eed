#include "TEXPRESSCAL/formula_cleanup.h"

// Dead terms cut out of formulas that were built by substitution. The two ways of cutting zeros differ on
// purpose: each serves texts of its own.

#include <algorithm>

#include "TEXPRESSCAL/calculator.h"
#include "TEXPRESSCAL/calculator/formula_engine.h"
#include "TEXPRESSCAL/text_rewriting.h"
#include "TEXPRESSCAL/values/value_pairs.h"
#include "framework/text/char_class.h"

namespace {

using lorv::IsDigit;
using lorv::TextView;

bool IsOneOf(TCHAR c, TextView set) {
  return set.find(c) != TextView::npos;
}

// The backslash divides whole numbers in texts of other modules.
bool IsSign(TCHAR c) {
  return IsOneOf(c, _T("+-*/\\"));
}

bool EndsName(TCHAR c) {
  return c == '_' || lorv::IsAsciiLetter(c);
}

int BehindZeros(TextView text, int at) {
  const int length = static_cast<int>(text.size());
  while (at < length && IsOneOf(text[static_cast<std::size_t>(at)], _T("0."))) ++at;
  return at;
}

// What to take out for one zero; nothing if `length` is not positive.
struct Cut {
  int begin = 0;
  int length = 0;
};

// The cut for the zero at `i` of a buffer.
Cut NumericCut(TextView text, int i) {
  const auto at = [text](int k) { return text[static_cast<std::size_t>(k)]; };
  const int last = static_cast<int>(text.size()) - 1;
  int k = i - 1;
  while (k >= 0 && IsOneOf(at(k), _T("0.*"))) --k;
  // At the start of the text stands nothing that the zero could hang on.
  if (k <= 0 || !(EndsName(at(k)) || IsSign(at(k)))) return {};
  if (i < last && at(i + 1) == '.') return {};  // a number such as 0.5
  const int j = std::min(BehindZeros(text, i + 1), last);
  if (!IsDigit(at(j)) && !IsSign(at(j))) return {};
  const int begin = IsSign(at(k)) ? k : k + 1;
  return {begin, j - begin + (j == last ? 1 : 0)};
}

}  // namespace

bool CAdExpCalculate::OptimizeNumExpr(LPTSTR text) const {
  if (text == nullptr || *text == 0) return true;
  int length = static_cast<int>(lorv::TextLength(text));
  for (int i = 0; i < length; ++i) {
    if (text[i] != '0') continue;
    const Cut cut = NumericCut({text, static_cast<std::size_t>(length)}, i);
    if (cut.length <= 0) continue;
    std::copy(text + cut.begin + cut.length, text + length, text + cut.begin);
    // Zero units up to the old end: nothing of the old text is left behind the new one.
    std::fill(text + length - cut.length, text + length, TCHAR{0});
    length -= cut.length;
    // The loop goes on one unit further, so the unit that moved to the cut's place is not looked at, which
    // callers know.
    i = cut.begin;
  }
  if (length == 0) text[0] = '0';
  return true;
}

bool CAdExpCalculate::OptimizeExpr(CString& text) const {
  if (text.IsEmpty()) return true;
  for (int i = 0; i < text.GetLength(); ++i) {
    if (text[i] != '0') continue;
    const TCHAR before = i == 0 ? TCHAR{'0'} : text[i - 1];
    int j = BehindZeros(text.View(), i + 1);
    if (IsDigit(text[j]) || EndsName(before)) continue;
    // A zero takes the number behind its "*" along, and only a number: a name behind it stays.
    if (text[j] == '*') {
      ++j;
      while (IsDigit(text[j]) || text[j] == '.') ++j;
    }
    const int begin = i > 0 && IsSign(before) ? i - 1 : i;
    text.Delete(begin, j - begin);
  }
  if (text.IsEmpty()) text = _T("0");
  return MoveConnSymbol(text);
}

namespace {

bool IsSignOrBracket(TCHAR c) {
  return IsSign(c) || c == '(' || c == ')';
}

// Looks at the unit at `i`; how many units further the next look goes.
int ClearSignAt(CString& text, int i) {
  const TCHAR c = text[i];
  const TCHAR next = text[i + 1];
  if (c == '+' && IsSignOrBracket(next) && next != '(') {
    text.Delete(i);
  } else if (c == '+' && i == 0) {
    // A leading "+" stays, and with it what stands at index 1 is passed over.
    return 2;
  } else if (c == '+' && IsSignOrBracket(text[i - 1]) && text[i - 1] != ')') {
    text.Delete(i - 1);
  } else if (c == '(' && next == ')') {
    text.Delete(i, 2);
  } else if (c == '(' && IsSignOrBracket(next) && next != '(' && next != '-') {
    text.Delete(i + 1);
  }
  return 1;
}

}  // namespace

void lorv::ClearUpSigns(CString& text) {
  int before = -1;
  // Every change shortens the text, so this ends.
  while (before != text.GetLength()) {
    before = text.GetLength();
    for (int i = 0; i < text.GetLength() - 1;) i += ClearSignAt(text, i);
  }
}

bool CAdExpCalculate::MoveConnSymbol(CString& text) const {
  lorv::ClearUpSigns(text);
  return true;
}

bool CAdExpCalculate::PrepareParamsValue(CString& parameters) const {
  if (parameters.IsEmpty()) return false;
  CString prepared;
  const auto value_of = [this](const CString& formula) {
    // Longer formulas are cut as SetExpr cuts them.
    return engine_->CalculateAside(formula.View().substr(0, lorv::kMaxFormulaText), *m_pMapValue, *this);
  };
  lorv::ForEachPair(parameters, [&](const CString& name, const CString& formula) {
    prepared += name + _T(":") + lorv::MapNumberText(value_of(formula)) + _T(";");
  });
  parameters = prepared.TrimRight(TCHAR{';'});
  return true;
}
