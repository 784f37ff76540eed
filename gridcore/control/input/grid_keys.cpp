#include <algorithm>

#include "gridcore/control/grid_control.h"

// Keys that reach the grid itself: moving the current cell, and opening its editor.

namespace {

constexpr UINT kFirstPrintable = 0x20;
constexpr UINT kDelete = 0x7F;

}  // namespace

CBCGPGridItemID CBCGPGridCtrl::PageAway(CBCGPGridItemID from, int pages) const {
  const int page = std::max(m_rectList.Height() - m_nLargeRowHeight, m_nLargeRowHeight);
  const std::int64_t top = heights_.OffsetOf(from.m_nRow) + std::int64_t{pages} * page;
  const std::int64_t last = std::max<std::int64_t>(0, heights_.Total() - 1);
  int row = heights_.LineAt(std::clamp<std::int64_t>(top, 0, last));
  // From the line of a group on to a row.
  if (row >= rows_.Size()) {
    const int next = NextShownRow(row, 1);
    row = next >= 0 ? next : NextShownRow(rows_.Size(), -1);
  }
  return row < 0 ? from : CBCGPGridItemID(row, from.m_nColumn);
}

CBCGPGridItemID CBCGPGridCtrl::CellByKey(UINT key, CBCGPGridItemID from) const {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const CBCGPGridRange block = merged_.BlockAt(from);
  const CBCGPGridRange here = block.IsValid() ? block : CBCGPGridRange(from);
  CBCGPGridItemID to = from;
  switch (key) {
    case VK_LEFT:
      to.m_nColumn = info.GetNextVisibleColumn(here.m_nLeft, FALSE);
      break;
    case VK_RIGHT:
      to.m_nColumn = info.GetNextVisibleColumn(here.m_nRight, TRUE);
      break;
    case VK_UP:
      to.m_nRow = NextShownRow(here.m_nTop, -1);
      break;
    case VK_DOWN:
      to.m_nRow = NextShownRow(here.m_nBottom, 1);
      break;
    case VK_HOME:
      to.m_nColumn = info.GetFirstVisibleColumn();
      if (lorv::IsKeyDown(VK_CONTROL)) to.m_nRow = NextShownRow(-1, 1);
      break;
    case VK_END:
      to.m_nColumn = info.GetLastVisibleColumn();
      if (lorv::IsKeyDown(VK_CONTROL)) to.m_nRow = NextShownRow(rows_.Size(), -1);
      break;
    case VK_PRIOR:
      return PageAway(from, -1);
    case VK_NEXT:
      return PageAway(from, 1);
    default:
      break;
  }
  // At the edge of the table a key stays where it is.
  return to.m_nRow < 0 || to.m_nColumn < 0 ? from : to;
}

void CBCGPGridCtrl::Go(const CBCGPGridItemID& to, bool extend) {
  const auto life = life_.Watch();
  const CBCGPGridItemID target = MainCell(to);
  SetCurSel(target, extend ? lorv::kSelectOppositeCorner : lorv::kSelectOnly, TRUE);
  if (!life.expired()) EnsureVisible(target);
}

bool CBCGPGridCtrl::MoveByKey(UINT key, bool may_extend) {
  const bool arrow = key >= VK_PRIOR && key <= VK_DOWN;
  if (!arrow) return false;
  if (rows_.Size() == 0 || GetColumnsInfo().GetFirstVisibleColumn() < 0) return true;
  CBCGPGridItemID from = GetCurSelItemID();
  if (from.IsNull()) {
    Go({std::max(0, NextShownRow(-1, 1)), GetColumnsInfo().GetFirstVisibleColumn()}, false);
    return true;
  }
  const bool extend = may_extend && lorv::IsKeyDown(VK_SHIFT) && anchor_.m_nRow >= 0 && !selection_.IsEmpty();
  if (extend) {
    // The corner opposite to the first one moves; the current cell is the top left one.
    const CBCGPGridRange& range = selection_.Ranges().back();
    from = {range.m_nTop == anchor_.m_nRow ? range.m_nBottom : range.m_nTop,
            range.m_nLeft == anchor_.m_nColumn ? range.m_nRight : range.m_nLeft};
  }
  Go(CellByKey(key, from), extend);
  return true;
}

bool CBCGPGridCtrl::AskForKey(UINT key, bool editing) {
  if (key_handlers_.IsEmpty()) return false;
  return key_handlers_.Ask(
      {key, lorv::IsKeyDown(VK_CONTROL), lorv::IsKeyDown(VK_SHIFT), lorv::IsKeyDown(VK_MENU), editing});
}

void CBCGPGridCtrl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  if (key == VK_ESCAPE && header_press_.on) {
    CancelGestures();
    return;
  }
  if (AskForKey(key) || MoveByKey(key)) return;
  if (key == VK_TAB) {
    static_cast<void>(MoveByKey(lorv::IsKeyDown(VK_SHIFT) ? VK_LEFT : VK_RIGHT, false));
  } else if (key == VK_F2 || key == VK_RETURN) {
    m_dwBeginEditReason = lorv::kBeginByKey;
    EditItem(GetCurSel());
  } else if (key == VK_SPACE && GetCurSelItem() != nullptr && IsEditableNow(GetCurSelItem()) != FALSE) {
    GetCurSelItem()->OnSpace();
  } else if (key == 'A' && lorv::IsKeyDown(VK_CONTROL)) {
    SelectAll();
  } else {
    CBCGPWnd::OnKeyDown(key, repeat, flags);
  }
}

void CBCGPGridCtrl::OnChar(UINT unit, UINT repeat, UINT flags) {
  if (key_handlers_.UsesUpCharacter()) return;
  const bool printable = unit >= kFirstPrintable && unit != kDelete;
  if (!printable || lorv::IsKeyDown(VK_CONTROL) || GetCurSelItem() == nullptr || editor_ != nullptr) {
    CBCGPWnd::OnChar(unit, repeat, flags);
    return;
  }
  m_dwBeginEditReason = lorv::kBeginByCharacter;
  opening_.first = static_cast<TCHAR>(unit);
  const auto life = life_.Watch();
  EditItem(GetCurSel());
  if (!life.expired()) opening_.first = 0;
}
