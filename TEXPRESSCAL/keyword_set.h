#pragma once

#include "containers/sort_array.h"
#include "containers/str_cmp.h"

// The names that a formula may use: ordered, each once, letter case aside.
//
// Units: a name holds at most 20 16-bit units, a longer one is cut. The name searched for is not cut, so a
//   keyword of more than 20 units is never found under its full name.
// One thread at a time.
//
//   TDefsetVars v;  v.AddSorted(_T("H"));  v.FindKey(_T("h"))  gives 0
class COMM_LORV_API TDefsetVars : public TKeyArray<CStrCmp, LPCTSTR, SortCompare<LPCTSTR, LPCTSTR, __int64>,
                                                   OxArray<CStrCmp, OxVector<CStrCmp>>> {
 public:
  __int64 CompareKey(const LPCTSTR* key, const CStrCmp& element) const override;
};
