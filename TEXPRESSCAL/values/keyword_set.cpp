#include "TEXPRESSCAL/keyword_set.h"

// The sorted set of accepted names, searched by a text without making a key of it: the parser asks for every
// name of a formula.

__int64 TDefsetVars::CompareKey(const LPCTSTR* key, const CStrCmp& element) const {
  return lorv::CompareWithoutCase(*key, static_cast<LPCTSTR>(element));
}
