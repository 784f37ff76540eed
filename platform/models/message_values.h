#pragma once

#include <algorithm>
#include <cstddef>

#include "framework/drawing/geometry.h"
#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

namespace lorv {

// The position that a mouse message carries: 16 bits with a sign for each coordinate.
inline CPoint PointOf(LPARAM l) {
  return CPoint(static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l)));
}

// Copies a text into a caller's buffer of `room` units, as WM_GETTEXT and its like do: cut to fit and always
// terminated. The units copied, without the terminator; 0 and nothing written for a null buffer or no room.
inline LRESULT CopyOut(const CString& text, LPTSTR target, std::size_t room) {
  if (target == nullptr || room == 0) return 0;
  const auto count = std::min(static_cast<std::size_t>(text.GetLength()), room - 1);
  std::copy_n(text.GetString(), count, target);
  target[count] = 0;
  return static_cast<LRESULT>(count);
}

}  // namespace lorv
