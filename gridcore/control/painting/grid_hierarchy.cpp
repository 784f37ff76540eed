#include <algorithm>

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/painting/open_ink.h"

// The room at the left of the cells: a step for each group column and each level of nested rows, with a box
// to collapse and expand what stands below. It scrolls with the cells, or stays with the frozen ones.

namespace {

// Pixels at 96 dots an inch.
constexpr int kBoxSide = 9;
constexpr int kBoxReach = 2;  // around a box, for the mouse
constexpr int kTextMargin = 4;

// Odd at any dots, so that its mark has a middle.
int BoxSide(const CBCGPGridCtrl& grid) {
  return grid.Scaled(kBoxSide) | 1;
}

}  // namespace

int CBCGPGridCtrl::GetHierarchyOffset() const {
  const int steps = GetGroupColumnCount() + static_cast<int>(nested_at_.size());
  return steps * std::max(0, GetHierarchyLevelOffset());
}

int CBCGPGridCtrl::CellsLeft() const {
  return Panes().ScreenAt(RoomBeforeCells());
}

CRect CBCGPGridCtrl::BoxOf(const CBCGPGridRow& row) const {
  const bool group = row.IsGroup() != FALSE;
  if (!group && row.HasSubItems() == FALSE) return {};
  const int id = IndexOfRow(row);
  const CRect line = GetRowRect(id);
  if (line.IsRectEmpty() != FALSE) return {};
  const int level = group ? GetRowsOfGroup(row).level : GetGroupColumnCount() + row.GetLevel();
  const int step = std::max(0, GetHierarchyLevelOffset());
  // Before frozen columns it stays with them, in both parts: the line of a group is one line.
  const int left =
      static_cast<int>(m_rectList.left) - (Panes().AreSplit() ? 0 : m_nHorzScrollOffset) + level * step;
  const int side = BoxSide(*this);
  const int x = left + std::max(0, step - side) / 2;
  const int y = static_cast<int>(line.CenterPoint().y) - side / 2;
  return {x, y, x + side, y + side};
}

bool CBCGPGridCtrl::PressOnBox(CPoint point) {
  if (m_rectList.PtInRect(point) == FALSE) return false;
  CBCGPGridRow* const row =
      GetRow(heights_.LineAt(std::int64_t{point.y} - m_rectList.top + m_nVertScrollOffset));
  if (row == nullptr) return false;
  CRect box = BoxOf(*row);
  if (box.IsRectEmpty() == FALSE) box.InflateRect(Scaled(kBoxReach), Scaled(kBoxReach));
  // Beside its box a group's line has nothing to press, and the room before the cells neither.
  const bool used = row->IsGroup() != FALSE || point.x < CellsLeft();
  if (used && box.PtInRect(point) != FALSE) row->Expand(row->IsExpanded() == FALSE);
  return used;
}

namespace {

void DrawBox(CDC* dc, const CRect& box, bool expanded, COLORREF ink, COLORREF paper) {
  dc->FillSolidRect(&box, paper);
  dc->Draw3dRect(&box, ink, ink);
  const CPoint middle = box.CenterPoint();
  const int x = static_cast<int>(middle.x);
  const int y = static_cast<int>(middle.y);
  const int arm = box.Width() / 4;
  dc->FillSolidRect(x - arm, y, 2 * arm + 1, 1, ink);
  if (!expanded) dc->FillSolidRect(x, y - arm, 1, 2 * arm + 1, ink);
}

}  // namespace

void CBCGPGridCtrl::DrawBranch(CDC* dc, const CBCGPGridRow& row) {
  const int cells = CellsLeft();
  CRect room = GetRowRect(IndexOfRow(row));
  room.right = cells;
  if (room.IsRectEmpty() != FALSE) return;
  const lorv::Desktop& desktop = lorv::DesktopInForce();
  const COLORREF line = desktop.Colour(COLOR_BTNSHADOW);
  dc->FillSolidRect(&room, GetBkColor());
  dc->FillSolidRect(room.left, room.bottom - 1, room.Width(), 1, desktop.Colour(COLOR_BTNFACE));
  dc->FillSolidRect(cells - 1, room.top, 1, room.Height(), desktop.Colour(COLOR_BTNFACE));
  const CRect box = BoxOf(row);
  if (box.IsRectEmpty() == FALSE) DrawBox(dc, box, row.IsExpanded() != FALSE, line, GetBkColor());
}

CRect CBCGPGridCtrl::GetGroupTextRect(const CBCGPGridRow& group) const {
  const CRect box = BoxOf(group);
  if (group.IsGroup() == FALSE || box.IsRectEmpty() != FALSE) return {};
  CRect place = GetRowRect(IndexOfRow(group));
  place.left = box.right + Scaled(kTextMargin);
  return place;
}

void CBCGPGridCtrl::DrawGroupRow(CDC* dc, const CBCGPGridRow& row) {
  const CRect line = GetRowRect(IndexOfRow(row));
  const lorv::Desktop& desktop = lorv::DesktopInForce();
  const COLORREF shadow = desktop.Colour(COLOR_BTNSHADOW);
  dc->FillSolidRect(&line, desktop.Colour(COLOR_BTNFACE));
  dc->FillSolidRect(line.left, line.bottom - 1, line.Width(), 1, shadow);
  DrawBox(dc, BoxOf(row), row.IsExpanded() != FALSE, lorv::InkOver(GetBkColor(), COLOR_BTNTEXT),
          GetBkColor());
  CRect place = GetGroupTextRect(row);
  dc->SetTextColor(desktop.Colour(COLOR_BTNTEXT));
  dc->DrawText(static_cast<const lorv::GroupRow&>(row).GetText(), place,
               DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}
