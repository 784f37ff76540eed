#include "TEXPRESSCAL/calculator.h"

#include <algorithm>

#include "TEXPRESSCAL/calculator/formula_engine.h"
#include "TEXPRESSCAL/evaluate/evaluation_error.h"
#include "TEXPRESSCAL/values/value_pairs.h"
#include "framework/text/number_text.h"

// The calculator as callers know it: sets the formula and its values, answers, and says what is wrong in the
// words of the interface. What makes it fast lies in FormulaEngine. The map of values is this object's own,
// shared with copies, or the caller's; m_bExternalMap and owner_ together say which.

namespace {

using lorv::TextView;

// The interface gives messages in a buffer of this size.
constexpr int kMessageText = 40;

void CopyMessage(LPTSTR message, const CString& text) {
  const TextView kept = text.View().substr(0, kMessageText - 1);
  std::copy(kept.begin(), kept.end(), message);
  message[kept.size()] = 0;
}

}  // namespace

CAdExpCalculate::CAdExpCalculate() : engine_(std::make_unique<lorv::FormulaEngine>()) {
  UseOwnMap();
}

CAdExpCalculate::CAdExpCalculate(const CString& formula) : CAdExpCalculate() {
  SetExpr(formula);
}

// A copy shares the values and knows no keywords until it is given some: that is how copies differ from
// assigned objects, and callers rely on it.
CAdExpCalculate::CAdExpCalculate(const CAdExpCalculate& other)
    : CValidParameter(other),
      m_pMapValue(other.m_pMapValue),
      m_bExternalMap(true),
      m_bTooLong(other.m_bTooLong),
      owner_(other.owner_),
      engine_(std::make_unique<lorv::FormulaEngine>()) {
  engine_->CopyTexts(*other.engine_);
}

CAdExpCalculate& CAdExpCalculate::operator=(const CAdExpCalculate& other) {
  if (this == &other) return *this;
  m_KeyWords = other.m_KeyWords;
  m_pMapValue = other.m_pMapValue;
  m_bExternalMap = other.m_bExternalMap;
  m_bTooLong = other.m_bTooLong;
  owner_ = other.owner_;
  engine_->CopyTexts(*other.engine_);
  engine_->known_keywords.Forget();
  return *this;
}

CAdExpCalculate::~CAdExpCalculate() = default;

// Copies share the map, so whoever uses it last deletes it.
void CAdExpCalculate::UseOwnMap() {
  owner_ = std::make_shared<CMapValue>();
  m_pMapValue = owner_.get();
  m_bExternalMap = false;
}

void CAdExpCalculate::SetExpr(LPCTSTR formula) {
  engine_->Set(formula, m_bTooLong);
}

CString CAdExpCalculate::GetExpr() const {
  return CString(engine_->Formula());
}

CString CAdExpCalculate::GetCalcedExpr() const {
  return CString(engine_->WorkingText().View());
}

bool CAdExpCalculate::ValidExp(CString& message) const {
  TCHAR text[kMessageText] = {};
  const bool valid = IsValid(text);
  message = text;
  return valid;
}

// Parses the formula as it was set: every name counts 1000000 here, whatever value it has.
bool CAdExpCalculate::IsValid(LPTSTR message) const {
  CString text;
  // Asked first: a formula that was cut may still parse, as something that nobody typed.
  if (m_bTooLong) {
    text.Format(_T("字符太长,最长只能处理%d个字符的表达式!"), lorv::kFormulaTextFlagged);
    CopyMessage(message, text);
    return false;
  }
  const int parsed = engine_->Parse(engine_->Formula(), *this);
  if (parsed >= 0) {
    text.Format(_T("表达式在第 %d 个字符有误"), parsed);
    CopyMessage(message, text);
    return false;
  }
  // Malformed arguments and a divisor of 0 do not show before it is evaluated. With 1000000 for every name a
  // divisor such as A-B counts as 0; callers know this answer.
  double value = 0;
  const int code = engine_->Parsed().Value(value);
  if (code == lorv::kDivisionByZero) CopyMessage(message, _T("除数为零"));
  if (code == lorv::kMalformedArguments) CopyMessage(message, _T("表达式非法"));
  return code != lorv::kDivisionByZero && code != lorv::kMalformedArguments;
}

double CAdExpCalculate::Calculate() {
  int error = 0;
  return Calculate(error);
}

double CAdExpCalculate::Calculate(int& error) {
  return engine_->Calculate(*m_pMapValue, *this, error);
}

// In a derived class's own buffer, so by the operation that works in a caller's buffer.
void CAdExpCalculate::ReplExprWithVal2(LPTSTR text) const {
  for (const auto& [name, value] : *m_pMapValue) ReplExprWithOneValue(text, name, value);
}

void CAdExpCalculate::ClearAllValue() {
  m_pMapValue->clear();
}

// The name's word is made once: map and keywords are both searched by it. A name that cannot be a word has
// the word 0, and both are then searched by the name itself.
int CAdExpCalculate::SetVarValue(LPCTSTR name, const double& value, bool keepExisting) {
  const lorv::NameWord word = lorv::WordOfName(name);
  const auto [place, fresh] = m_pMapValue->Place(name, word);
  if (fresh || !keepExisting) *place = value;
  if (!engine_->known_keywords.Holds(word)) AddKeyWord(name, word);
  return 1;
}

// Looked for first: most names come again and again.
void CAdExpCalculate::AddKeyWord(LPCTSTR name, lorv::NameWord word) {
  if (name == nullptr || m_KeyWords.FindKey(name) < 0) m_KeyWords.AddSorted(CStrCmp(name));
  engine_->known_keywords.Remember(word);
}

// Taking over the caller's map here is what the interface says, however it reads: the map is not copied but
// overwritten, and this object deletes it from now on.
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
  // A list of values never changes a map that belongs to the caller.
  if (m_bExternalMap) UseOwnMap();
  m_pMapValue->clear();
  // Of names that are equal in capitals the last one counts.
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
