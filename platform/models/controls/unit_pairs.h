#pragma once

#include <algorithm>
#include <utility>

#include "framework/text/cstring.h"

// Characters of two units, and line ends of two, in edits whose text has a limit in units.
namespace lorv {

constexpr bool IsHighHalf(TCHAR unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowHalf(TCHAR unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Two units that the caret passes as one: a line end, a character beyond U+FFFF.
constexpr bool IsUnitPair(TCHAR first, TCHAR second) {
  return (first == _T('\r') && second == _T('\n')) || (IsHighHalf(first) && IsLowHalf(second));
}

// As much of the text as `room` units hold, no pair parted.
//   FittingPart(_T("a\r\nb"), 2)  gives "a"
inline CString FittingPart(const CString& text, int room) {
  room = std::max(room, 0);
  if (text.GetLength() <= room) return text;
  if (room > 0 && IsUnitPair(text.GetAt(room - 1), text.GetAt(room))) --room;
  return text.Left(room);
}

// The typing of characters whose halves come as two messages: where the second half would not fit, neither is
// taken.
//
//   TypedHalves halves;  halves.Refuses(0xD83D, 1)  gives true, then halves.Refuses(0xDE00, 1) too
class TypedHalves {
 public:
  // Whether the unit is refused, `room` being the units that the text may yet grow by.
  bool Refuses(TCHAR unit, int room) {
    const bool second = std::exchange(refused_, false) && IsLowHalf(unit);
    refused_ = IsHighHalf(unit) && room < 2;
    return second || refused_;
  }

 private:
  bool refused_ = false;  // the first half was
};

}  // namespace lorv
