#include "TEXPRESSCAL/calculator.h"
#include "TEXPRESSCAL/calculator/formula_engine.h"

// The names that a calculator accepts in a formula: its own, and sets shared by all calculators of the
// process under a class id. The shared sets are not guarded: the calls that take a class id belong to one
// thread at a time.

std::map<CString, TDefsetVars> CAdExpCalculate::m_mapClassIdWithKeyWord;

// What the parser asks of each name. The name is not cut here, so one of more than 20 units is never found.
int CAdExpCalculate::ValidParameter(LPCTSTR name) const {
  if (name == nullptr) return 0;
  return m_KeyWords.FindKey(name) >= 0 ? 1 : 0;
}

void CAdExpCalculate::MakeKeyWord(TDefsetVars& set, LPCTSTR name) const {
  set.AddSorted(CStrCmp::Capitals(name));
}

// Wherever keywords may go, the memory of those that were seen is emptied; that keywords come does no harm to
// it.
int CAdExpCalculate::SetKeyWord(const CStringArray& names) {
  m_KeyWords.clear();
  engine_->known_keywords.Forget();
  m_KeyWords.reserve(static_cast<std::size_t>(names.GetSize()));
  for (int i = 0; i < names.GetSize(); ++i) MakeKeyWord(m_KeyWords, names.GetAt(i));
  return static_cast<int>(m_KeyWords.size());
}

// The first caller fixes the set of a class id, so its list is not looked at again; the second list only
// adds.
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
  engine_->known_keywords.Forget();
  return static_cast<int>(set->size());
}

int CAdExpCalculate::AppendKeyWord(const CString& classId, const CStringArray& first,
                                   const CStringArray& second) const {
  const TDefsetVars* set = GetSetKeyWord(classId, first, second);
  if (set == nullptr) return 0;
  if (m_KeyWords.empty()) {
    m_KeyWords = *set;
    engine_->known_keywords.Forget();
  } else {
    for (const CStrCmp& name : *set) m_KeyWords.AddSorted(name);
  }
  return static_cast<int>(set->size());
}

void CAdExpCalculate::ClearStaticKeyWord() const {
  m_mapClassIdWithKeyWord.clear();
  m_KeyWords.clear();
  engine_->known_keywords.Forget();
}

// A text that does not parse uses no names, not even those that stand before the failure.
CString CAdExpCalculate::GetSplitKeyWord(LPCTSTR text) const {
  return engine_->Parse(text, *this) >= 0 ? CString() : engine_->Parsed().AcceptedNames();
}

int CAdExpCalculate::SplitExprVars(CStringArray& names) const {
  names.RemoveAll();
  lorv::ForEachListedName(GetSplitKeyWord(engine_->FormulaText()),
                          [&names](const CString& name) { names.Add(name); });
  return static_cast<int>(names.GetSize());
}

int CAdExpCalculate::SplitExprVars(std::vector<CStrCmp>& names) const {
  names.clear();
  lorv::ForEachListedName(GetSplitKeyWord(engine_->FormulaText()),
                          [&names](const CString& name) { names.emplace_back(name); });
  return static_cast<int>(names.size());
}
