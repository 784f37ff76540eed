#include "TEXPRESSCAL/calculator.h"

std::map<CString, TDefsetVars> CAdExpCalculate::m_mapClassIdWithKeyWord;

int CAdExpCalculate::ValidParameter(LPCTSTR name) const {
  if (name == nullptr) return 0;
  return m_KeyWords.FindKey(name) >= 0 ? 1 : 0;
}

void CAdExpCalculate::MakeKeyWord(TDefsetVars& set, LPCTSTR name) const {
  set.AddSorted(CStrCmp::Capitals(name));
}

int CAdExpCalculate::SetKeyWord(const CStringArray& names) {
  m_KeyWords.clear();
  known_.Forget();
  m_KeyWords.reserve(static_cast<std::size_t>(names.GetSize()));
  for (int i = 0; i < names.GetSize(); ++i) MakeKeyWord(m_KeyWords, names.GetAt(i));
  return static_cast<int>(m_KeyWords.size());
}

TDefsetVars* CAdExpCalculate::GetSetKeyWord(const CString& classId, const CStringArray& first,
                                            const CStringArray& second) const {
  if (classId.IsEmpty()) return nullptr;
  const auto [entry, fresh] = m_mapClassIdWithKeyWord.try_emplace(classId);
  TDefsetVars& set = entry->second;
  if (fresh) {
    set.reserve(static_cast<std::size_t>(first.GetSize()));
    for (int i = 0; i < first.GetSize(); ++i) MakeKeyWord(set, first.GetAt(i));
  }
  for (int i = 0; i < second.GetSize(); ++i) MakeKeyWord(set, second.GetAt(i));
  return &set;
}

int CAdExpCalculate::SetKeyWord(const CString& classId, const CStringArray& first,
                                const CStringArray& second) const {
  const TDefsetVars* set = GetSetKeyWord(classId, first, second);
  if (set == nullptr) return 0;
  m_KeyWords = *set;
  known_.Forget();
  return static_cast<int>(set->size());
}

int CAdExpCalculate::AppendKeyWord(const CString& classId, const CStringArray& first,
                                   const CStringArray& second) const {
  const TDefsetVars* set = GetSetKeyWord(classId, first, second);
  if (set == nullptr) return 0;
  if (m_KeyWords.empty()) {
    m_KeyWords = *set;
    known_.Forget();
  } else {
    for (const CStrCmp& name : *set) m_KeyWords.AddSorted(name);
  }
  return static_cast<int>(set->size());
}

void CAdExpCalculate::ClearStaticKeyWord() const {
  m_mapClassIdWithKeyWord.clear();
  m_KeyWords.clear();
  known_.Forget();
}

CString CAdExpCalculate::GetSplitKeyWord(LPCTSTR text) const {
  return ParseAfresh(text) >= 0 ? CString() : expression_.AcceptedNames();
}

int CAdExpCalculate::SplitExprVars(CStringArray& names) const {
  return SplitExprVars(m_szExpr.Text(), names);
}

int CAdExpCalculate::SplitExprVars(std::vector<CStrCmp>& names) const {
  return SplitExprVars(m_szExpr.Text(), names);
}

int CAdExpCalculate::SplitExprVars(LPCTSTR text, CStringArray& names) const {
  names.RemoveAll();
  return SplitExprVarsToArray(text, &names, nullptr);
}

int CAdExpCalculate::SplitExprVars(LPCTSTR text, std::vector<CStrCmp>& names) const {
  names.clear();
  return SplitExprVarsToArray(text, nullptr, &names);
}

int CAdExpCalculate::SplitExprVarsToArray(LPCTSTR text, CStringArray* array,
                                          std::vector<CStrCmp>* vector) const {
  const CString list = GetSplitKeyWord(text);
  int start = 0;
  for (int comma = list.Find(',', 1); comma >= 0; comma = list.Find(',', start + 1)) {
    const CString name = list.Mid(start, comma - start);
    start = comma + 1;
    if (array != nullptr) {
      array->Add(name);
    } else if (vector != nullptr) {
      vector->emplace_back(name);
    }
  }
  if (array != nullptr) return static_cast<int>(array->GetSize());
  return vector == nullptr ? 0 : static_cast<int>(vector->size());
}
