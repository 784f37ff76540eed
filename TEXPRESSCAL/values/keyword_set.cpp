#include "TEXPRESSCAL/keyword_set.h"

__int64 TDefsetVars::CompareKey(const LPCTSTR* key, const CStrCmp& element) const {
  return lorv::CompareWithoutCase(*key, static_cast<LPCTSTR>(element));
}
