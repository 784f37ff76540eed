#pragma once

#include <map>
#include <vector>

#include "TEXPRESSCAL/map_value.h"
#include "framework/collections/string_array.h"

// Rewriting of formula texts: names replaced by values or by other formulas, annotations split off. Nothing
// here parses: each operation walks the text and decides by what stands next to a hit, and each draws the
// edge of a name differently.
//
// Units: 16-bit units. A code from 256 upward is neither letter nor digit, so a Chinese character beside a
//   name always counts as its edge.
// Edges: letter case counts in every search. A null pointer counts as an empty text.
// The buffers are the caller's, terminated, with room for the grown text; no operation sees their size. No
// shared state: any thread.

// Replaces a variable by a value text.
//
// A hit counts only if no digit, ASCII letter, "_" or "." stands before or behind it. A value that begins
// with an operator may hang on anything: what stands before is then not looked at.
// Result: the count of replacements, at most lorv::kMaxReplacements with `all`. Without `all` the call ends
//   at the first hit, and gives 0 if that one does not count, whatever follows. 0 also when the name or value
//   is empty, or both differ in letter case only.
//
//   ReplExprWithValue(_T("a.b+a") in a buffer, _T("a"), _T("3"), true)  gives 1 and "a.b+3"
COMM_LORV_API int ReplExprWithValue(LPTSTR text, LPCTSTR name, LPCTSTR value, bool all);

// Replaces a variable by a number, as values go into a formula.
//
// A hit is refused beside an ASCII letter or "_", or before a digit. Behind a digit it brings a "*": "2a"
// with 3 becomes "2*3". "." is no edge. The number has three decimals at most; thirds become "1/3" and "2/3".
// Edges: after a hit the search goes on at the same distance from the text's start, whatever the replacement
//   did to the length: "abc+abc" with 1 becomes "1+abc". lorv::kMaxSubstitutions hits at most are looked at,
//   refused ones included.
// Never lets an exception out: what is thrown goes to the failure report.
//
//   ReplExprWithOneValue(_T("2a") in a buffer, _T("a"), 3.0)  makes "2*3"
COMM_LORV_API void ReplExprWithOneValue(LPTSTR text, LPCTSTR name, const double& value);

// Replaces names by formulas, in one walk: what was put in is not searched again.
//
// Names are ASCII letters, digits and "_"; a letter behind a digit begins a new name, so "a1b" holds "b" and
//   not "a1b". They are looked up by their first 20 units without letter case.
// `bBracket`: a formula that is more than a product gets brackets, unless it stands in brackets already (also
//   those of a call); that its first "(" matches its last ")" is not checked. `bMultiply`: a "*" comes
//   between a digit, letter or "_" and a formula that begins with a digit or "(".
// Result: false, and the text as it was, for an empty text, an empty table, a text longer than
//   lorv::kMaxFormulaText units, or a result of more than lorv::kMaxReplacedText units.
//
//   ReplaceExprWithExpr(text, _T("a:b+c"), true, false) on "2*a"  makes "2*(b+c)"
COMM_LORV_API bool ReplaceExprWithExpr(CString& text, const std::map<CStrCmp, CString>& table, bool bBracket,
                                       bool bMultiply);
COMM_LORV_API bool ReplaceExprWithExpr(CString& text, const std::vector<CTwoStrValue>& pairs, bool bBracket,
                                       bool bMultiply);
COMM_LORV_API bool ReplaceExprWithExpr(CString& text, LPCTSTR pairs, bool bBracket, bool bMultiply);

// Cuts "[...]" annotations off names and lists both: a name once (letter case aside), with its first
// annotation.
//
// Edges: the first unit of the text is never part of a name, so "abc[1]" lists "bc". After a cut the search
//   goes on one unit behind it: of "a[1][2]" the second annotation stays.
// Result: false for an empty text, else true. The lists are added to, not emptied.
//
//   SplitMidBracketKey(_T("2*abc[1]"), names, pairs)  leaves "2*abc" and lists "abc" with "1"
COMM_LORV_API bool SplitMidBracketKey(CString& text, CStringArray& names, std::vector<CTwoStrValue>& pairs);

namespace lorv {

constexpr int kMaxSubstitutions = 500;
constexpr int kMaxFormulaText = 1023;
constexpr int kMaxReplacedText = 1014;
// Units of a value's text.
constexpr int kValueText = 64;

}  // namespace lorv
