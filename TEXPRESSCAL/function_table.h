#pragma once

#include <cstdint>

#include "containers/sort_array.h"
#include "framework/native/export.h"
#include "framework/text/text_compare.h"

// One built-in function of the formula language, as lists of functions show it to the user.
struct CDtaFunction {
  unsigned short nCode;  // node kind of a call, see TEXPRESSCAL/language/expression_node.h
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

// A function's name as a word, made of its units in order; letter case falls away.
constexpr std::uint64_t AppendToWord(std::uint64_t word, TCHAR c) {
  return word << 8 | ((c | 0x20) & 0xFF);
}

// Function names have at most this many units. A name of no more is in its word as a whole.
constexpr std::size_t kLongestFunctionName = 5;

// The node kind of a function by the word and the length of a name of ASCII letters, digits and "_"; 0 when
// there is none. The parser's way: the same answer as FindKey on the table, without walking it.
unsigned short FunctionKind(std::uint64_t word, std::size_t length);
inline unsigned short FunctionKind(TextView name) {
  std::uint64_t word = 0;
  for (const TCHAR c : name) word = AppendToWord(word, c);
  return FunctionKind(word, name.size());
}

}  // namespace lorv
