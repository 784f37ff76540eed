#include "grid/items/multi_line_edit.h"

// The editor of a cell with several lines. The wheel turns the grid, as it would beside the editor: a table
// whose rows stop moving under the pointer reads as a fault.

IMPLEMENT_DYNCREATE(CMutilineEdit, CEdit)

BEGIN_MESSAGE_MAP(CMutilineEdit, CEdit)
ON_WM_MOUSEWHEEL()
END_MESSAGE_MAP()

BOOL CMutilineEdit::OnMouseWheel(UINT flags, short delta, CPoint point) {
  const CWnd* parent = GetParent();
  if (parent == nullptr) return static_cast<BOOL>(Default());
  const auto low = static_cast<WORD>(flags);
  const auto high = static_cast<WORD>(delta);
  parent->SendMessage(WM_MOUSEWHEEL, static_cast<WPARAM>(MAKELONG(low, high)),
                      static_cast<LPARAM>(MAKELONG(static_cast<WORD>(point.x), static_cast<WORD>(point.y))));
  return TRUE;
}
