#include "TEXPRESSCAL/calculator.h"

#include <algorithm>

#include "TEXPRESSCAL/direct/direct_evaluator.h"
#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/values/substitution.h"
#include "TEXPRESSCAL/values/value_pairs.h"
#include "framework/text/number_text.h"

namespace {

using lorv::TextView;

constexpr int kMessageText = 40;

void CopyMessage(LPTSTR message, const CString& text) {
  const TextView kept = text.View().substr(0, kMessageText - 1);
  std::copy(kept.begin(), kept.end(), message);
  message[kept.size()] = 0;
}

}  // namespace

CAdExpCalculate::CAdExpCalculate() {
  UseOwnMap();
}

CAdExpCalculate::CAdExpCalculate(const CString& formula) : CAdExpCalculate() {
  SetExpr(formula);
}

CAdExpCalculate::CAdExpCalculate(const CAdExpCalculate& other)
    : CValidParameter(other),
      m_szExpr(other.m_szExpr),
      m_szCalcExpr(other.WorkText()),
      m_pMapValue(other.m_pMapValue),
      m_bExternalMap(true),
      m_bTooLong(other.m_bTooLong),
      owner_(other.owner_) {}

CAdExpCalculate& CAdExpCalculate::operator=(const CAdExpCalculate& other) {
  if (this == &other) return *this;
  m_KeyWords = other.m_KeyWords;
  known_.Forget();
  m_szExpr = other.m_szExpr;
  m_szCalcExpr = other.WorkText();
  work_text_ = WorkTextState::kWritten;
  repeated_.Forget();
  m_pMapValue = other.m_pMapValue;
  m_bExternalMap = other.m_bExternalMap;
  m_bTooLong = other.m_bTooLong;
  owner_ = other.owner_;
  return *this;
}

CAdExpCalculate::~CAdExpCalculate() = default;

void CAdExpCalculate::UseOwnMap() {
  owner_ = std::make_shared<CMapValue>();
  m_pMapValue = owner_.get();
  m_bExternalMap = false;
}

void CAdExpCalculate::SetExpr(LPCTSTR formula) {
  work_text_ = WorkTextState::kIsFormulaAgain;
  if (!repeated_.IsTyped(formula)) SetOtherText(formula);
}

// Not typed as the last one was, which may still be the same in capitals.
void CAdExpCalculate::SetOtherText(LPCTSTR formula) {
  const TextView text = formula == nullptr ? TextView() : TextView(formula, lorv::TextLength(formula));
  m_bTooLong = text.size() > lorv::kFormulaTextFlagged;
  const TextView kept = text.substr(0, lorv::kMaxFormulaText);
  if (lorv::IsInCapitals(kept, m_szExpr.View())) {
    repeated_.Remember(m_bTooLong ? TextView() : text);
    return;
  }
  work_text_ = WorkTextState::kIsFormula;
  repeated_.Forget();
  lorv::CopyCapitals(kept, m_szExpr.Overwrite(kept.size()));
}

// The working copy, written out if what is in it has only been noted so far.
lorv::GrowingEdit& CAdExpCalculate::WorkText() const {
  if (work_text_ != WorkTextState::kWritten) m_szCalcExpr = m_szExpr;
  if (work_text_ == WorkTextState::kHasPlannedValues) repeated_.WriteValues(m_szCalcExpr);
  if (work_text_ == WorkTextState::kHasPlaces) places_.WriteInto(m_szCalcExpr);
  work_text_ = WorkTextState::kWritten;
  return m_szCalcExpr;
}

CString CAdExpCalculate::GetExpr() const {
  return CString(m_szExpr.View());
}

CString CAdExpCalculate::GetCalcedExpr() const {
  return CString(WorkText().View());
}

bool CAdExpCalculate::ValidExp(CString& message) const {
  TCHAR text[kMessageText] = {};
  const bool valid = IsValid(text);
  message = text;
  return valid;
}

bool CAdExpCalculate::IsValid(LPTSTR message) const {
  CString text;
  if (m_bTooLong) {
    text.Format(_T("字符太长,最长只能处理%d个字符的表达式!"), lorv::kFormulaTextFlagged);
    CopyMessage(message, text);
    return false;
  }
  const int parsed = ParseAfresh(m_szExpr.View());
  if (parsed >= 0) {
    text.Format(_T("表达式在第 %d 个字符有误"), parsed);
    CopyMessage(message, text);
    return false;
  }
  double value = 0;
  const int code = expression_.Value(value);
  if (code == lorv::kDivisionByZero) CopyMessage(message, _T("除数为零"));
  if (code == lorv::kMalformedArguments) CopyMessage(message, _T("表达式非法"));
  return code != lorv::kDivisionByZero && code != lorv::kMalformedArguments;
}

double CAdExpCalculate::Calculate() {
  int error = 0;
  return Calculate(error);
}

// Good work of a plan is told at once; errors are rare, so they are worked again where all else is.
double CAdExpCalculate::Calculate(int& error) {
  double value = 0;
  const bool is_planned =
      work_text_ == WorkTextState::kIsFormulaAgain && repeated_.IsPlannedFor(*m_pMapValue);
  if (!is_planned || !repeated_.WorkPlan(*m_pMapValue, value, error) || error != 0)
    return CalculateAnything(error);
  work_text_ = WorkTextState::kHasPlannedValues;
  return value;
}

double CAdExpCalculate::CalculateAnything(int& error) {
  double value = 0;
  if (work_text_ != WorkTextState::kIsFormulaAgain) return CalculateText(error);
  if (!repeated_.Work(m_szExpr.View(), *m_pMapValue, value, error)) {
    value = CalculateText(error);
    repeated_.Note(m_szExpr.View(), *m_pMapValue);
    return value;
  }
  work_text_ = WorkTextState::kHasPlannedValues;
  error = lorv::ErrorForCaller(error);
  return error == 0 ? value : 0;
}

double CAdExpCalculate::CalculateText(int& error) {
  error = 0;
  double value = 0;
  if (!WorkInOnePass(value)) {
    const TextView text = WorkText().View();
    if (lorv::IsPlainNumber(text)) return lorv::ReadReal(text);
    const int parsed = ReplExprWithVal();
    value = CalcParsed(parsed, error);
  }
  return error == 0 ? value : 0;
}

// A plain number comes out of the pass as it is read.
bool CAdExpCalculate::WorkInOnePass(double& value) {
  if (work_text_ != WorkTextState::kIsFormula && work_text_ != WorkTextState::kIsFormulaAgain) return false;
  if (!lorv::OnePass(m_szExpr.Text(), *m_pMapValue, places_).Work(value)) return false;
  work_text_ = WorkTextState::kHasPlaces;
  return true;
}

void CAdExpCalculate::ReplExprWithVal2(LPTSTR text) const {
  for (const auto& [name, value] : *m_pMapValue) ReplExprWithOneValue(text, name, value);
}

// Writes the values into the working copy, then 0 for keywords that have none. What ChangeExpression said of
// the text that came out.
int CAdExpCalculate::ReplExprWithVal() const {
  lorv::GrowingEdit& work = WorkText();
  for (const auto& [name, value] : *m_pMapValue) {
    const TextView text(static_cast<LPCTSTR>(name));
    if (!text.empty()) lorv::SubstituteValue(work, text, value);
  }
  const int parsed = ParseAfresh(work.View());
  if (parsed >= 0 || expression_.m_szVarList[0] == 0) return parsed;
  std::vector<CStrCmp> names;
  SplitExprVars(work.Text(), names);
  for (const CStrCmp& name : names) {
    if (m_pMapValue->count(name) == 0) lorv::SubstituteValue(work, static_cast<LPCTSTR>(name), 0);
  }
  return ParseAfresh(work.View());
}

int CAdExpCalculate::ParseAfresh(TextView text) const {
  expression_.Clear();
  expression_.m_pValidParameter = this;
  return expression_.ChangeExpression(text);
}

double CAdExpCalculate::CalcExpr(LPCTSTR text, int& error) const {
  return CalcParsed(ParseAfresh(text), error);
}

double CAdExpCalculate::CalcParsed(int parsed, int& error) const {
  if (parsed >= 0) {
    error = parsed;
    return 0;
  }
  double value = 0;
  const int code = expression_.Value(value);
  error = lorv::ErrorForCaller(code);
  return value;
}

void CAdExpCalculate::ClearAllValue() {
  m_pMapValue->clear();
}

int CAdExpCalculate::SetVarValue(LPCTSTR name, const double& value, bool keepExisting) {
  const lorv::NameWord word = lorv::WordOfName(name);
  const auto [place, fresh] = m_pMapValue->Place(name, word);
  if (fresh || !keepExisting) *place = value;
  if (!known_.Holds(word)) AddKeyWord(name, word);
  return 1;
}

// Looked for first: most names come again and again.
void CAdExpCalculate::AddKeyWord(LPCTSTR name, lorv::NameWord word) {
  if (name == nullptr || m_KeyWords.FindKey(name) < 0) m_KeyWords.AddSorted(CStrCmp(name));
  known_.Remember(word);
}

int CAdExpCalculate::SetVarValue(const CMapValue& values) {
  *m_pMapValue = values;
  if (owner_ == nullptr) owner_.reset(m_pMapValue);
  m_bExternalMap = false;
  return 1;
}

int CAdExpCalculate::SetVarValue(CMapValue* values) {
  if (values == m_pMapValue) return 1;
  if (values == nullptr) {
    UseOwnMap();
    return 1;
  }
  owner_.reset();
  m_pMapValue = values;
  m_bExternalMap = true;
  return 1;
}

int CAdExpCalculate::SetVarValue(const std::map<CString, double>& values) {
  if (m_bExternalMap) UseOwnMap();
  m_pMapValue->clear();
  for (const auto& [name, value] : values) SetVarValue(name, value, false);
  return static_cast<int>(m_pMapValue->size());
}

int CAdExpCalculate::SetVarValue(const CString& list) {
  if (m_bExternalMap) UseOwnMap();
  m_pMapValue->clear();
  lorv::ForEachPair(list, [this](const CString& name, const CString& value) {
    SetVarValue(name, lorv::ReadReal(value.View()), false);
  });
  return static_cast<int>(m_pMapValue->size());
}
