#pragma once

#include "framework/text/char_class.h"
#include "framework/text/cstring.h"

// A name held inline and compared without regard to letter case: the key of keyword sets and value maps.
//
// Units: 16-bit units, kCapacity at most. A longer text is cut, silently, at every entry: two names that
//   agree in their first 20 units are the same key.
// Edges: a null pointer is the empty name. A surrogate pair at the end may be cut in two.
// Result: nothing here fails.
// A plain value: copied whole, no storage of its own.
//
//   CStrCmp(_T("beam")) < CStrCmp(_T("WALL"))  is true
class COMM_LORV_API CStrCmp {
 public:
  static constexpr int kCapacity = 20;

  CStrCmp() = default;
  CStrCmp(LPCTSTR text) {  // NOLINT(google-explicit-constructor)
    if (text != nullptr) Take(text);
  }
  CStrCmp(const CString& text) { Take(text.GetString()); }  // NOLINT(google-explicit-constructor)
  CStrCmp(const CStrCmp&) = default;
  CStrCmp& operator=(const CStrCmp&) = default;

  // The name in capitals.
  static CStrCmp Capitals(LPCTSTR text) {
    CStrCmp name;
    for (int i = 0; text != nullptr && i < kCapacity && text[i] != 0; ++i)
      name.text_[i] = lorv::ToUpper(text[i]);
    return name;
  }

  operator LPCTSTR() const { return text_; }  // NOLINT(google-explicit-constructor)

  bool operator<(const CStrCmp& other) const { return *this - other < 0; }
  bool operator()(const CStrCmp& a, const CStrCmp& b) const { return a - b < 0; }
  // Three-way comparison: negative, zero or positive.
  int operator-(const CStrCmp& other) const { return lorv::CompareWithoutCase(text_, other.text_); }

 private:
  void Take(LPCTSTR text) {
    for (int i = 0; i < kCapacity && text[i] != 0; ++i) text_[i] = text[i];
  }

  TCHAR text_[kCapacity + 1] = {};
};

// Comparison of two texts of which either may be missing (null).
//
// Result: 0 for identical pointers and for two missing texts, -1 when only `a` is missing, 1 when only `b`
//   is. Two texts are compared as `b` with `a`: in that order, the reverse of what the rule for missing texts
//   suggests, and callers sort by it.
//
//   TStrCmp(_T("a"), _T("b"), false)  is positive
COMM_LORV_API int TStrCmp(LPCTSTR a, LPCTSTR b, bool ignoreCase);
