#pragma once

#include "containers/sort_array.h"
#include "framework/export.h"
#include "framework/text_compare.h"

// One built-in function of the formula language, as lists of functions show it to the user.
struct CDtaFunction {
  unsigned short nCode;  // node kind of a call, see TEXPRESSCAL/expression_node.h
  LPCTSTR pszName;       // capital letters
  LPCTSTR pszDesc;       // description for the user

  // The key that the table is searched by.
  operator LPCTSTR() const { return pszName; }  // NOLINT(google-explicit-constructor)
};

namespace lorv {

using FunctionRecords = TKeyArray<CDtaFunction, LPCTSTR, SortCompare<LPCTSTR, LPCTSTR, __int64>,
                                  OxArray<CDtaFunction, OxVector<CDtaFunction>>>;

// The functions ordered by name; letter case does not count in a search.
class COMM_LORV_API FunctionTable : public FunctionRecords {
 public:
  __int64 Compare(const CDtaFunction& a, const CDtaFunction& b) const override;
  __int64 CompareKey(const LPCTSTR* key, const CDtaFunction& element) const override;
};

// The one table of the process. Filled by the first call, even when threads race for it, and never changed
// afterwards: any thread may read it.
COMM_LORV_API const FunctionTable& Functions();

// The node kind of a function by a name of any letter case, 0 when there is none. The parser's way: the same
// answer as FindKey on the table, without walking it.
unsigned short FunctionKind(TextView name);

}  // namespace lorv
