#pragma once

#include "framework/text/cstring.h"

namespace lorv {

// The numbers by which events of a table speak of the mouse and the keyboard.
//
// Pure; any thread.

// 1 for the left button and 2 for the right one, from the flags of a mouse message.
//
//   EventButton(MK_LBUTTON | MK_SHIFT)  gives 1
COMM_LORV_API short EventButton(unsigned mouse_flags);

// 1 for Shift, 2 for Ctrl and 4 for Alt, from the flags of a mouse message (Alt is flag 32 there).
//
//   EventShift(MK_SHIFT | MK_CONTROL)  gives 3
COMM_LORV_API short EventShift(unsigned mouse_flags);

// The same from keys that are held now.
COMM_LORV_API short EventShift(bool shift, bool ctrl, bool alt);

// Cuts the zeros at the end of a number's decimals, and then the point where none is left. Texts of anything
// but digits, points and signs stay as they are, and so do those without a point behind their first
// character.
//
//   CutDecimalZeros(_T("12.500"))  gives "12.5",  CutDecimalZeros(_T("1200"))  "1200"
COMM_LORV_API CString CutDecimalZeros(const CString& text);

}  // namespace lorv
