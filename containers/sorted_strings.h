#pragma once

#include "containers/ox_array.h"
#include "framework/text/cstring.h"

// A list of texts kept in the suite's text order (letter case does not count), each once.
//
// Edges: of two texts that differ in letter case only, the first stays.
// One thread at a time.
//
//   CSortCStringVector v;  v.SortAdd(_T("b"));  v.SortAdd(_T("B"))  gives false
class COMM_LORV_API CSortCStringVector : public OxArray<CString, OxVector<CString>> {
 public:
  CSortCStringVector() = default;

  // False, and nothing changed, when the list holds the text already.
  bool SortAdd(const CString& text);
};
