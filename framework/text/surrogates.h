#pragma once

#include <string_view>

#include "framework/native/native_types.h"

namespace lorv {

// Whether a text has half of a pair of units without its other half: such a text has no form outside 16-bit
// units. Header only, for modules without a link to this library.
//
//   HasLoneHalf(_T("a"))  gives false
inline bool HasLoneHalf(std::basic_string_view<TCHAR> text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((text[i] & 0xF800) != 0xD800) continue;
    const bool paired = (text[i] & 0x0400) == 0 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
    if (!paired) return true;
    ++i;
  }
  return false;
}

}  // namespace lorv
