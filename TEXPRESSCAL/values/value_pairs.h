#pragma once

#include "comm/AdLorvComm.h"
#include "framework/collections/string_array.h"

namespace lorv {

// Calls `take(name, value)` with both texts for each piece of a list "name:value;name:value;", in order. A
// piece that has not exactly two parts is passed over; blanks and letter case are left as they are. What
// `take` throws ends the walk.
template <class Take>
void ForEachPair(const CString& list, Take take) {
  CStringArray pieces;
  CAdLorvComm::DivideString(list, _T(";"), pieces);
  for (int i = 0; i < pieces.GetSize(); ++i) {
    CStringArray parts;
    CAdLorvComm::DivideString(pieces.GetAt(i), _T(":"), parts);
    if (parts.GetSize() == 2) take(parts.GetAt(0), parts.GetAt(1));
  }
}

}  // namespace lorv
