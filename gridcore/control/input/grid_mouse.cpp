#include <algorithm>

#include "gridcore/accessibility/grid_cells.h"
#include "gridcore/control/column_taker.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/control/scope_mark.h"

// The mouse over a grid: selecting by headers and cells, dragging a column's edge, opening editors.

namespace {

constexpr int kFrameReach = 2;  // pixels at 96 dots an inch, to both sides of the selection's edge
constexpr int kWheelNotch = 120;
constexpr int kRowsOfNotch = 3;

}  // namespace

bool CBCGPGridCtrl::PressInHeader(UINT flags, CPoint point) {
  if (m_rectHeader.PtInRect(point) == FALSE) return false;
  const int divider = DividerAt(static_cast<int>(point.x));
  if (divider >= 0) {
    if (StartsNothing()) return true;
    m_bTracking = true;
    m_nTrackColumn = divider;
    SetCapture();
    return true;
  }
  const int column = HitTestHeader(point);
  if (column < 0) return true;
  // What may be dragged is clicked when the button goes up where it went down.
  const auto life = life_.Watch();
  if (header_press_.taker != nullptr && header_press_.taker->TakesColumn(column)) {
    if (life.expired() || StartsNothing()) return true;
    header_press_ = {header_press_.taker, true, false, column, flags, point};
    SetCapture();
    return true;
  }
  if (!life.expired()) ClickHeader(flags, column);
  return true;
}

void CBCGPGridCtrl::ClickHeader(UINT flags, int column) {
  const auto life = life_.Watch();
  if ((switches_.header_flags & lorv::kHeaderSelects) != 0) {
    if ((flags & MK_CONTROL) != 0 && rows_.Size() > 0)
      Choose({column, 0, column, rows_.Size() - 1}, {0, column}, true, TRUE);
    else
      SelectColumn(column, TRUE);
  }
  if (!life.expired()) OnHeaderColumnClick(column);
}

bool CBCGPGridCtrl::PressInRowHeader(UINT flags, CPoint point) {
  CRect rect;
  const int row = HitTestRowHeader(point, rect);
  // Below the last row, or beside a group's line: taken, and nothing is selected.
  if (row < 0 || row >= rows_.Size()) return m_rectRowHeader.PtInRect(point) != FALSE;
  const int columns = GetColumnCount();
  if (columns == 0) return true;
  const CBCGPGridItemID first(row, std::max(0, GetColumnsInfo().GetFirstVisibleColumn()));
  const auto life = life_.Watch();
  if ((flags & MK_CONTROL) != 0) {
    Choose({0, row, columns - 1, row}, first, true, TRUE);
  } else if ((flags & MK_SHIFT) != 0 && anchor_.m_nRow >= 0) {
    const int top = std::min(row, anchor_.m_nRow);
    Choose({0, top, columns - 1, std::max(row, anchor_.m_nRow)}, {top, first.m_nColumn}, false, TRUE);
  } else {
    SelectRow(row, TRUE);
  }
  if (life.expired()) return true;
  EnsureVisible(rows_.At(row));
  return true;
}

void CBCGPGridCtrl::PressInCell(UINT flags, CPoint point, const CBCGPGridItemID& id) {
  const auto life = life_.Watch();
  const bool on_frame = (flags & (MK_SHIFT | MK_CONTROL)) == 0 && OnSelectionFrame(point);
  if ((flags & MK_SHIFT) != 0 && anchor_.m_nRow >= 0) {
    SetCurSel(id, lorv::kSelectOppositeCorner, TRUE);
  } else if ((flags & MK_CONTROL) != 0) {
    // The last cell stays: a selection that is empty by a click would surprise.
    if (switches_.ctrl_inverts && selection_.Holds(id) && selection_.CellCount() > 1) {
      selection_.Remove(CBCGPGridRange(id));
      InvalidateRange(CBCGPGridRange(id));
      if (cells_ != nullptr) cells_->ChosenChanged();
    } else {
      SetCurSel(id, lorv::kSelectAdd, TRUE);
    }
  } else if (switches_.whole_rows) {
    SelectRow(id.m_nRow, TRUE);
  } else {
    SetCurSel(id, lorv::kSelectOnly, TRUE);
  }
  if (life.expired()) return;
  CBCGPGridItem* item = GetGridItem(id);
  if (item == nullptr) return;
  // A row of a virtual table lives until the press is over.
  const auto held = rows_.Hold(*item->GetParentRow());
  if (item->GetButtonRect().PtInRect(point) != FALSE) {
    // With its editor open the cell has the list that a choice goes to.
    m_dwBeginEditReason = lorv::kBeginByMouse;
    if ((item->GetFlags() & lorv::kItemHasList) != 0) EditItem(item->GetParentRow(), &point);
    if (life.expired()) return;
    item = GetGridItem(id);
    if (item != nullptr && item->IsEnabled() != FALSE) item->DoClickButton(point);
    return;
  }
  if (item->OnClickValue(WM_LBUTTONDOWN, point) != FALSE || life.expired()) return;
  // Handlers of the press may have dispatched its release, which came to whatever stood under the mouse then.
  if (StartsNothing()) return;
  m_bSelecting = true;
  press_.on_frame = on_frame;
  press_.at = point;
  SetCapture();
}

// The edge of the last range, where a drag of its contents begins.
bool CBCGPGridCtrl::OnSelectionFrame(CPoint point) const {
  if (selection_.IsEmpty()) return false;
  CRect outside = GetRangeRect(selection_.Ranges().back());
  CRect inside = outside;
  const int reach = Scaled(kFrameReach);
  outside.InflateRect(reach, reach);
  inside.DeflateRect(reach, reach);
  return outside.PtInRect(point) != FALSE && inside.PtInRect(point) == FALSE;
}

bool CBCGPGridCtrl::DragFrame(CPoint point) {
  if (!press_.on_frame) return false;
  // A press that trembles is no drag.
  const auto trembles = [this](LONG from, LONG to) { return std::abs(to - from) < Scaled(lorv::kDragStart); };
  if (trembles(press_.at.x, point.x) && trembles(press_.at.y, point.y)) return true;
  press_.on_frame = false;
  const auto life = life_.Watch();
  const BOOL dragged = OnBeginDrag(press_.at);
  if (life.expired()) return true;
  if (dragged != FALSE) m_bSelecting = false;
  return dragged != FALSE || !m_bSelecting;
}

// Whether handlers of the press have let the button go, or another press of theirs has started something. A
// button that was never really down, as in messages that a program sends, is not up either.
bool CBCGPGridCtrl::StartsNothing() const {
  return m_hWnd == nullptr || press_.releases != press_.releases_before ||
         (press_.held && !lorv::IsKeyDown(VK_LBUTTON)) || InGesture();
}

// Of a press whose release went elsewhere something may still follow the mouse.
void CBCGPGridCtrl::ForgetFollowed() {
  m_bTracking = false;
  m_bSelecting = false;
  press_.on_frame = false;
  m_nTrackColumn = -1;
  if (header_press_.on) HideDragFrame();
  header_press_.on = false;
  header_press_.moves = false;
}

void CBCGPGridCtrl::OnLButtonDown(UINT flags, CPoint point) {
  const auto life = life_.Watch();
  // Handlers may send presses within this one.
  const lorv::ScopeMark count(press_.releases_before, life, press_.releases);
  const lorv::ScopeMark held(press_.held, life, lorv::IsKeyDown(VK_LBUTTON));
  ForgetFollowed();
  CloseToolTip();
  if (life.expired()) return;
  if (editor_ != nullptr) {
    m_dwEndEditReason = lorv::kEndByMouse;
    EndEditItem(TRUE);
  }
  if (life.expired() || m_hWnd == nullptr) return;
  if (CWnd::GetFocus() != this) SetFocus();
  if (life.expired() || m_hWnd == nullptr) return;
  if (PressInHeader(flags, point) || life.expired() || PressInRowHeader(flags, point)) return;
  if (!life.expired() && (PressInFilterBar(point) || PressOnBox(point))) return;
  CBCGPGridItemID id;
  CRect rect;
  if (life.expired()) return;
  if (HitTest(point, id, rect) != FALSE) {
    PressInCell(flags, point, id);
  } else if (switches_.row_header && point.x < m_rectRowHeader.right && point.y < m_rectList.top) {
    SelectAll();
  }
}

void CBCGPGridCtrl::TrackDivider(CPoint point) {
  const lorv::ColumnPanes panes = Panes();
  const int before = RoomBeforeCells() + GetColumnsInfo().GetColumnLeft(m_nTrackColumn);
  int dragged = static_cast<int>(point.x) - panes.ScreenAt(before);
  // A frozen column that grew too wide would not be frozen any more, and jump from under the mouse.
  if (panes.Stays(before)) dragged = std::min(dragged, MostFrozenWidth() - before);
  const int width = std::max(GetColumnsInfo().GetMinWidth(m_nTrackColumn), dragged);
  const auto life = life_.Watch();
  OnTrackHeader(m_nTrackColumn, width);
  if (life.expired()) return;
  // A column of no width would count as hidden, and have no edge to draw it out by.
  if (SetHeaderItemWidth(m_nTrackColumn, std::max(1, width)) == FALSE || life.expired()) return;
  SetScrollSizes();
  if (life.expired()) return;
  OnPosSizeChanged();
  if (!life.expired()) Invalidate(FALSE);
}

BOOL CBCGPGridCtrl::OnTrackHeader(int /*column*/, int /*width*/) {
  return FALSE;
}

BOOL CBCGPGridCtrl::SetHeaderItemWidth(int column, int width) {
  if (!GetColumnsInfo().HasColumn(column)) return FALSE;
  GetColumnsInfo().SetColumnWidth(column, width);
  return TRUE;
}

void CBCGPGridCtrl::DragSelection(CPoint point) {
  // Beside the cells the mouse means the nearest ones.
  point.x = std::clamp<LONG>(point.x, m_rectList.left, std::max(m_rectList.left, m_rectList.right - 1));
  point.y = std::clamp<LONG>(point.y, m_rectList.top, std::max(m_rectList.top, m_rectList.bottom - 1));
  CBCGPGridItemID id;
  CRect rect;
  if (HitTest(point, id, rect) == FALSE || anchor_.m_nRow < 0) return;
  const int hidden = HiddenBeforeEdge(static_cast<int>(point.x));
  if (hidden >= 0) id = MainCell({id.m_nRow, hidden});
  if (selection_.Holds(id) && selection_.CellCount() == 1) return;
  Go(id, true);
}

void CBCGPGridCtrl::OnMouseMove(UINT flags, CPoint point) {
  // A press may have come after its own release, through handlers that dispatched messages: nothing ends what
  // it has started but the first move.
  if (CBCGPGridCtrl::InGesture() && (flags & MK_LBUTTON) == 0 && !lorv::IsKeyDown(VK_LBUTTON)) {
    CancelGestures();
    return;
  }
  if (m_bTracking) {
    TrackDivider(point);
  } else if (header_press_.on) {
    DragColumn(point);
  } else if (m_bSelecting && (flags & MK_LBUTTON) != 0) {
    if (!DragFrame(point)) DragSelection(point);
  } else {
    TrackToolTip(point);
  }
}

void CBCGPGridCtrl::TrackToolTip(CPoint /*point*/) {}

void CBCGPGridCtrl::OnLButtonUp(UINT /*flags*/, CPoint point) {
  ++press_.releases;
  const bool tracked = m_bTracking;
  const lorv::HeaderPress header = header_press_;
  ForgetFollowed();
  const auto life = life_.Watch();
  FreeMouse();
  if (life.expired()) return;
  if (header.on) DropColumn(header, point);
  if (life.expired() || !tracked) return;
  OnResizeColumns();
  if (!life.expired()) AdjustLayout();
}

void CBCGPGridCtrl::OnResizeColumns() {}

void CBCGPGridCtrl::OnLButtonDblClk(UINT flags, CPoint point) {
  if (m_rectHeader.PtInRect(point) != FALSE) {
    const int divider = DividerAt(static_cast<int>(point.x));
    if (divider >= 0) OnHeaderDividerDblClick(divider);
    return;
  }
  CBCGPGridItemID id;
  CRect rect;
  const auto life = life_.Watch();
  CBCGPGridRow* const group = GetRow(HitTestRow(point));
  if (group != nullptr && group->IsGroup() != FALSE) {
    group->Expand(group->IsExpanded() == FALSE);
    return;
  }
  if (HitTest(point, id, rect) == FALSE || SetCurSel(id) == FALSE || life.expired()) return;
  CBCGPGridItem* item = GetGridItem(id);
  if (item == nullptr || item->OnClickValue(WM_LBUTTONDBLCLK, point) != FALSE || life.expired()) return;
  if (item->GetButtonRect().PtInRect(point) != FALSE) {
    OnLButtonDown(flags, point);
    return;
  }
  m_dwBeginEditReason = lorv::kBeginByDoubleClick;
  EditItem(GetCurSel(), &point);
}

void CBCGPGridCtrl::OnHeaderDividerDblClick(int /*column*/) {}

void CBCGPGridCtrl::OnHeaderColumnClick(int column) {
  if ((switches_.header_flags & lorv::kHeaderSorts) != 0)
    Sort(column, sort_.column == column ? !sort_.ascending : TRUE);
}

void CBCGPGridCtrl::OnRButtonDown(UINT /*flags*/, CPoint point) {
  const auto life = life_.Watch();
  CloseToolTip();
  if (life.expired()) return;
  if (CWnd::GetFocus() != this && m_hWnd != nullptr) SetFocus();
  if (life.expired() || m_bSelecting) return;
  CBCGPGridItemID id;
  CRect rect;
  // A cell that is selected keeps the selection, so that a menu can act on all of it.
  if (HitTest(point, id, rect) != FALSE && !selection_.Holds(id)) SetCurSel(id);
}

void CBCGPGridCtrl::OnRButtonUp(UINT flags, CPoint point) {
  CBCGPWnd::OnRButtonUp(flags, point);
}

// True: the turn is used up. What is left to scroll by may be more than came, where less than a notch was
// kept back for those who take whole ones.
bool CBCGPGridCtrl::TakesWheel(UINT flags, int& delta) {
  const bool control = (flags & MK_CONTROL) != 0 || lorv::IsKeyDown(VK_CONTROL);
  if (!control || key_handlers_.IsEmpty()) {
    press_.turned = 0;
    return false;
  }
  const int turned = press_.turned + delta;
  press_.turned = turned % kWheelNotch;
  const UINT key = turned > 0 ? lorv::kKeyWheelUp : lorv::kKeyWheelDown;
  const auto life = life_.Watch();
  const int notches = std::abs(turned) / kWheelNotch;
  for (int notch = 0; notch < notches; ++notch) {
    const bool used = key_handlers_.Ask(
        {key, true, lorv::IsKeyDown(VK_SHIFT), lorv::IsKeyDown(VK_MENU), editor_ != nullptr});
    if (life.expired()) return true;
    if (used) continue;
    delta = turned;
    press_.turned = 0;
    return false;
  }
  return true;
}

BOOL CBCGPGridCtrl::OnMouseWheel(UINT flags, short delta, CPoint /*point*/) {
  int turned = delta;
  if (TakesWheel(flags, turned)) return TRUE;
  const int step = m_nLargeRowHeight * kRowsOfNotch * turned / kWheelNotch;
  if (lorv::IsKeyDown(VK_SHIFT))
    ScrollTo(m_nHorzScrollOffset - step, m_nVertScrollOffset);
  else
    ScrollTo(m_nHorzScrollOffset, m_nVertScrollOffset - step);
  return TRUE;
}

BOOL CBCGPGridCtrl::OnSetCursor(CWnd* window, UINT hit, UINT message) {
  if (hit != HTCLIENT || window != this) return CBCGPWnd::OnSetCursor(window, hit, message);
  POINT at = lorv::DesktopInForce().CursorPosition();
  ScreenToClient(&at);
  const bool divider = m_rectHeader.PtInRect(at) != FALSE && DividerAt(static_cast<int>(at.x)) >= 0;
  if (m_bTracking || divider) {
    lorv::DesktopInForce().SetCursor(lorv::kCursorSizeAcross);
    return TRUE;
  }
  const CBCGPGridItem* item = HitTest(CPoint(at));
  if (item != nullptr && item->OnSetCursor() != FALSE) return TRUE;
  lorv::DesktopInForce().SetCursor(lorv::kCursorArrow);
  return TRUE;
}

namespace {

// Where a bar goes for a code of SB_; `track` is where the user holds it.
int ScrolledTo(UINT code, int now, int line, int page, int total, int track) {
  switch (code) {
    case SB_LINEUP:
      return now - line;
    case SB_LINEDOWN:
      return now + line;
    case SB_PAGEUP:
      return now - std::max(line, page - line);
    case SB_PAGEDOWN:
      return now + std::max(line, page - line);
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
      return track;
    case SB_TOP:
      return 0;
    case SB_BOTTOM:
      return total;
    default:
      return now;
  }
}

int TrackOf(CWnd& window, int bar) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  // A message has room for 16 bits of the position; the bar knows all of them.
  window.GetScrollInfo(bar, &info, SIF_TRACKPOS);
  return info.nTrackPos;
}

}  // namespace

void CBCGPGridCtrl::OnVScroll(UINT code, UINT /*position*/, CWnd* /*bar*/) {
  ScrollTo(m_nHorzScrollOffset, ScrolledTo(code, m_nVertScrollOffset, m_nLargeRowHeight, m_nVertScrollPage,
                                           m_nVertScrollTotal, TrackOf(*this, SB_VERT)));
}

void CBCGPGridCtrl::OnHScroll(UINT code, UINT /*position*/, CWnd* /*bar*/) {
  ScrollTo(ScrolledTo(code, m_nHorzScrollOffset, m_nLargeRowHeight, m_nHorzScrollPage, m_nHorzScrollTotal,
                      TrackOf(*this, SB_HORZ)),
           m_nVertScrollOffset);
}
