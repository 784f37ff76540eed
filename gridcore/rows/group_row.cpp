#include "gridcore/rows/group_row.h"

#include "gridcore/control/grid_control.h"

// The text of a group's line, which is drawn and shown by its tip alike. How many rows a group has changes
// without the group being made again, so the grid is asked each time.

namespace lorv {

CString GroupRow::GetText() const {
  CString text;
  // A group without a grid is one that is being taken away.
  const RowGroup rows = GetOwnerList() == nullptr ? RowGroup{} : GetOwnerList()->GetRowsOfGroup(*this);
  text.Format(_T(": %s (%d)"), static_cast<LPCTSTR>(value_), rows.end - rows.first);
  return name_ + text;
}

CRect GroupRow::GetTooltipRect() const {
  return GetOwnerList() == nullptr ? CRect() : GetOwnerList()->GetGroupTextRect(*this);
}

}  // namespace lorv
