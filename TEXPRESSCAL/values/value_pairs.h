#pragma once

#include "comm/AdLorvComm.h"
#include "framework/collections/string_array.h"

namespace lorv {

// Walks a list "name:value;name:value;". A piece that has not exactly two parts is passed over.
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
