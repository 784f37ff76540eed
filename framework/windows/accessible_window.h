#pragma once

#include "framework/ports/accessible_port.h"

// What every window says of itself to screen readers: one tree for each window, whichever desktop shows it.
//
// A window whose class describes cells is a table, one whose class has a tree of its own is that. Controls
// answer for themselves: a button's name is its text, that of an edit, a list or a combo the label before it;
// a list's and a combo's items are children. All other windows have their child windows as children. Units,
// edges and thread as in accessible_port.h; a handle that names nothing gives null.
namespace lorv {

COMM_LORV_API std::shared_ptr<AccessibleObject> AccessibleOf(HWND window);

// Whether the window's class describes itself: all other classes are described by the system itself as well.
COMM_LORV_API bool HasOwnAccessible(HWND window);

// The text of the label right before a control, or the name of the cell that it edits; empty without one.
COMM_LORV_API CString AccessibleLabel(HWND control);

// A text as it is read out: without the marks of keys, "&&" being the sign itself.
//
//   WithoutKeyMarks(_T("&Save && close"))  gives "Save & close"
COMM_LORV_API CString WithoutKeyMarks(const CString& text);

}  // namespace lorv
