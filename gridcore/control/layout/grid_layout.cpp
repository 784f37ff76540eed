#include <algorithm>
#include <cstdint>

#include "framework/drawing/device_context.h"
#include "gridcore/accessibility/grid_cells.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/control/scope_mark.h"

// Where everything stands: the areas of the grid, the rows and columns that are scrolled in them, and what
// lies under a point. Places are computed from the tables of sizes when they are asked for; none is kept in a
// row or a cell, so that a table of a million rows lays out as quickly as one of ten.

namespace {

// Coordinates of what is far outside stop here: drawing adds to them.
constexpr std::int64_t kFarthest = 1 << 28;

int Near(std::int64_t place) {
  return static_cast<int>(std::clamp(place, -kFarthest, kFarthest));
}

constexpr int kTextHeight = 16;  // where there is no window to measure in
constexpr int kLinePadding = 4;  // pixels above and below the text of a row, together

// Columns that were as wide as their texts are so on the other screen, too. Rounded at each change: from
// a finer screen straight back they come to the pixel, over several ones within a pixel for each.
void ScaleColumns(CBCGPGridColumnsInfo& info, int dots, int before) {
  for (int column = 0; column < info.GetColumnCount(); ++column) {
    const BOOL visible = info.GetColumnVisible(column);
    // A hidden column has no width while it is hidden.
    info.SetColumnVisible(column, TRUE);
    info.SetColumnWidth(column, lorv::ForDots(info.GetColumnWidth(column), dots, before));
    info.SetMinWidth(column, lorv::ForDots(info.GetMinWidth(column), dots, before));
    info.SetColumnVisible(column, visible);
  }
}

}  // namespace

int CBCGPGridCtrl::TextHeight() {
  if (m_hWnd == nullptr) return kTextHeight;
  CFont* const font = GetFont();
  const LOGFONT& face = font->Face();
  // A layout comes with every row that is added: the same font is measured once.
  if (measured_.IsOf(face)) return measured_.height;
  CClientDC dc(this);
  dc.SelectObject(font);
  TEXTMETRIC metrics = {};
  const bool known = dc.GetTextMetrics(&metrics) != FALSE && metrics.tmHeight > 0;
  measured_.height = known ? static_cast<int>(metrics.tmHeight) : kTextHeight;
  measured_.face = face;
  return measured_.height;
}

void CBCGPGridCtrl::OnDotsChanged(int dots, int before) {
  ScaleColumns(GetColumnsInfo(), dots, before);
  switches_.row_header_width = lorv::ForDots(switches_.row_header_width, dots, before);
  m_nHorzScrollOffset = lorv::ForDots(m_nHorzScrollOffset, dots, before);
  measured_.height = 0;
  height_notes_.known = false;
  if (!own_bold_) return;
  LOGFONT face = bold_.Face();
  face.lfHeight = lorv::ForDots(face.lfHeight, dots, before);
  bold_.CreateFontIndirect(&face);
}

// A dialog gives its windows fonts of the other size. Where nobody did, as in a plain window, the texts would
// stay small in cells that grow.
void CBCGPGridCtrl::TakeFontAlong() {
  LOGFONT face = GetFont()->Face();
  if (!measured_.IsOf(face)) return;
  face.lfHeight = lorv::ForDots(face.lfHeight, DotsOfScreen(), Dots());
  CFont font(face);
  SetFont(&font, FALSE);
}

// Editors that are open get the font of the other size, and rows the lines that their texts need in it.
// False: the grid is gone.
bool CBCGPGridCtrl::FitToDots() {
  const auto life = life_.Watch();
  if (editing_ != nullptr) editing_->SetInPlaceEditFont();
  if (!life.expired() && filter_.editor != nullptr) filter_.editor->SetFont(GetFont());
  if (life.expired()) return false;
  return RecountLines() ? LayOut() : true;
}

void CBCGPGridCtrl::SetRowHeight() {
  FollowDots();
  m_nRowHeight = TextHeight() + Scaled(kLinePadding);
  m_nLargeRowHeight = m_nRowHeight;
  m_nHeaderHeight = m_nRowHeight;
}

// A row that is left out or folded away has no height, and with that no place: nothing else asks why it is
// not shown.
int CBCGPGridCtrl::HeightOf(CBCGPGridRow& row) {
  if (row.IsInCollapsed() != FALSE || IsInCollapsedGroup(IndexOfRow(row))) return 0;
  return FilterItem(&row) != FALSE ? 0 : ShownHeightOf(row);
}

// The padding belongs to the row and not to each of its lines.
int CBCGPGridCtrl::ShownHeightOf(const CBCGPGridRow& row) const {
  const int lines = row.GetLinesNumber();
  if (lines == 1) return m_nLargeRowHeight;
  const int padding = Scaled(kLinePadding);
  const std::int64_t tall = std::int64_t{m_nRowHeight - padding} * lines + padding;
  return std::max(m_nLargeRowHeight, Near(tall));
}

void CBCGPGridCtrl::RebuildHeights() {
  if (regroup_wanted_)
    MakeGroups();
  else
    heights_.StartOver(heights_.Groups().All());
  height_notes_.known = true;
  height_notes_.tall_rows = 0;
  if (rows_.IsVirtual()) {
    heights_.Append(rows_.Size(), m_nLargeRowHeight);
    return;
  }
  if (!group_rows_.empty()) {
    AppendGroupedHeights();
    return;
  }
  int height = -1;
  int count = 0;
  rows_.ForEach([&](CBCGPGridRow& row) {
    if (row.GetLinesNumber() > 1) ++height_notes_.tall_rows;
    const int own = HeightOf(row);
    // Rows of one height are added as one stretch: most tables have a single one.
    if (own != height && count > 0) heights_.Append(std::exchange(count, 0), height);
    height = own;
    ++count;
  });
  if (count > 0) heights_.Append(count, height);
}

void CBCGPGridCtrl::AppendGroupedHeights() {
  const lorv::GroupLines& groups = heights_.Groups();
  std::vector<int> heights;
  std::vector<bool> shown(static_cast<std::size_t>(groups.Count()));
  heights.reserve(static_cast<std::size_t>(rows_.Size()));
  // Of a group whose rows are all left out nothing is shown; one that is collapsed has its line.
  rows_.ForEach([&](CBCGPGridRow& row) {
    if (row.GetLinesNumber() > 1) ++height_notes_.tall_rows;
    const int index = static_cast<int>(heights.size());
    const bool left_out = FilterItem(&row) != FALSE;
    const bool collapsed = row.IsInCollapsed() != FALSE || groups.IsRowHidden(index);
    heights.push_back(left_out || collapsed ? 0 : ShownHeightOf(row));
    for (int group = left_out ? -1 : groups.GroupOf(index); group >= 0; group = groups.At(group).parent)
      shown[static_cast<std::size_t>(group)] = true;
  });
  int group = 0;
  for (int row = 0; row < rows_.Size(); ++row) {
    for (; group < groups.Count() && groups.At(group).first == row; ++group) {
      const bool seen = shown[static_cast<std::size_t>(group)] && !groups.IsGroupHidden(group);
      heights_.Append(1, seen ? m_nLargeRowHeight : 0);
    }
    heights_.Append(1, heights[static_cast<std::size_t>(row)]);
  }
}

void CBCGPGridCtrl::MeasureAreas() {
  CRect client;
  GetClientRect(&client);
  CRect header = client;
  header.bottom = header.top;
  if (switches_.header) {
    header.bottom = header.top + m_nHeaderHeight;
    // Descendants measure a header of several lines; there may be no window to measure in.
    CDC none;
    OnGetHeaderRect(&none, header);
  }
  const int row_header = switches_.row_header ? switches_.row_header_width : 0;
  m_rectFilterBar = CRect();
  const int bar = filter_.on ? m_nRowHeight : 0;
  if (bar > 0)
    m_rectFilterBar = CRect(client.left + row_header, header.bottom, client.right, header.bottom + bar);
  m_rectHeader = CRect(client.left + row_header, client.top, client.right, header.bottom);
  m_rectRowHeader = CRect(client.left, header.bottom + bar, client.left + row_header, client.bottom);
  m_rectList = CRect(client.left + row_header, header.bottom + bar, client.right, client.bottom);
  m_rectList.right = std::max(m_rectList.left, m_rectList.right);
  m_rectList.bottom = std::max(m_rectList.top, m_rectList.bottom);
}

void CBCGPGridCtrl::OnGetHeaderRect(CDC* /*dc*/, CRect& /*rect*/) {}

int CBCGPGridCtrl::OnGetColumnAutoSize(int column) {
  CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int others = info.GetTotalWidth() - info.GetColumnWidth(column);
  return std::max(0, m_rectList.Width() - GetHierarchyOffset() - GetExtraHierarchyOffset() - others);
}

// Columns that take the room that there is; one of them may be left to the descendant.
void CBCGPGridCtrl::SizeColumns() {
  CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const int room = std::max(0, m_rectList.Width() - GetHierarchyOffset() - GetExtraHierarchyOffset());
  // Several share the room in proportion; a single one takes what the others leave.
  if (switches_.columns_spread || info.GetAutoSizeCount() > 1) {
    info.Resize(room, switches_.columns_spread ? TRUE : FALSE);
    return;
  }
  if (info.GetAutoSizeCount() == 0) return;
  int column = info.GetFirstVisibleColumn();
  while (column >= 0 && info.GetColumnWidthAutoSize(column) == FALSE)
    column = info.GetNextVisibleColumn(column, TRUE);
  if (column < 0) return;
  const auto life = life_.Watch();
  const int width = OnGetColumnAutoSize(column);
  if (!life.expired() && width > 0) info.SetColumnWidth(column, width);
}

// False: the grid is gone.
bool CBCGPGridCtrl::LayOut(bool other_dots) {
  const auto life = life_.Watch();
  const lorv::ScopeMark laying(laying_out_, life);
  // The row that stays the last one has a cell for each column, also for those that came after it.
  CBCGPGridRow* const last =
      switches_.keeps_last_row && !rows_.IsVirtual() ? rows_.At(rows_.Size() - 1) : nullptr;
  if (last != nullptr && last->GetItemCount() < GetColumnCount()) SetupRow(last, GetColumnCount());
  const int before = Dots();
  int top = -1;  // the row that stays the first one on a screen of other dots an inch
  if (other_dots) {
    TakeFontAlong();
    if (life.expired()) return false;
    top = heights_.LineAt(m_nVertScrollOffset);
  }
  const std::int64_t hidden = top < 0 ? 0 : m_nVertScrollOffset - heights_.OffsetOf(top);
  // The height that the font or the user asks for may be another one by now.
  const int height = m_nLargeRowHeight;
  SetRowHeight();
  if (life.expired()) return false;
  if (!height_notes_.trusted || !height_notes_.known || height != m_nLargeRowHeight) RebuildHeights();
  if (top >= 0) m_nVertScrollOffset = Near(heights_.OffsetOf(top) + lorv::ForDots(hidden, Dots(), before));
  MeasureAreas();
  SizeColumns();
  if (life.expired()) return false;
  SetScrollSizes();
  return !life.expired();
}

void CBCGPGridCtrl::AdjustLayout() {
  // Bars that come or go change the window's size, which asks for a layout again.
  if (laying_out_) return;
  const auto life = life_.Watch();
  const bool other_dots = HasOtherDots();
  if (!LayOut(other_dots) || (other_dots && !FitToDots())) return;
  if (cells_ != nullptr) cells_->LaidOut();
  OnPosSizeChanged();
  if (life.expired()) return;
  PlaceEditor();
  if (life.expired()) return;
  PlaceFilterEditor();
  if (!life.expired()) Invalidate(FALSE);
}

void CBCGPGridCtrl::OnPosSizeChanged() {}

void CBCGPGridCtrl::SetScrollSizes() {
  m_nVertScrollTotal = Near(heights_.Total());
  m_nHorzScrollTotal = GetColumnsInfo().GetTotalWidth() + RoomBeforeCells();
  // Twice is enough: a bar only comes for the other one's sake, it never goes.
  for (int round = 0; round < 2; ++round) {
    m_nVertScrollPage = m_rectList.Height();
    m_nHorzScrollPage = m_rectList.Width();
    const auto life = life_.Watch();
    SetBars();
    if (life.expired()) return;
    // A bar that came takes its room from the list, and the other one may be needed now.
    MeasureAreas();
    if (m_nVertScrollPage == m_rectList.Height() && m_nHorzScrollPage == m_rectList.Width()) break;
  }
  const int across = std::clamp(m_nHorzScrollOffset, 0, LargestOffset(m_nHorzScrollTotal, m_nHorzScrollPage));
  const int down = std::clamp(m_nVertScrollOffset, 0, LargestOffset(m_nVertScrollTotal, m_nVertScrollPage));
  m_nHorzScrollOffset = across;
  m_nVertScrollOffset = down;
}

void CBCGPGridCtrl::SetBars() {
  if (m_hWnd == nullptr) return;
  const auto life = life_.Watch();
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  info.nMax = std::max(0, m_nVertScrollTotal - 1);
  info.nPage = static_cast<UINT>(std::max(0, m_nVertScrollPage));
  info.nPos = m_nVertScrollOffset;
  SetScrollInfo(SB_VERT, &info);
  if (life.expired() || m_hWnd == nullptr) return;
  info.nMax = std::max(0, m_nHorzScrollTotal - 1);
  info.nPage = static_cast<UINT>(std::max(0, m_nHorzScrollPage));
  info.nPos = m_nHorzScrollOffset;
  SetScrollInfo(SB_HORZ, &info);
}

void CBCGPGridCtrl::ShowVertScrollBar(BOOL on) {
  if (m_hWnd != nullptr) ShowScrollBar(SB_VERT, on);
}

void CBCGPGridCtrl::ShowHorzScrollBar(BOOL on) {
  if (m_hWnd != nullptr) ShowScrollBar(SB_HORZ, on);
}

void CBCGPGridCtrl::OnUpdateVScrollPos(int /*offset*/, int /*previous*/) {}

void CBCGPGridCtrl::OnUpdateHScrollPos(int /*offset*/, int /*previous*/) {}

void CBCGPGridCtrl::ScrollTo(int across, int down) {
  across = std::clamp(across, 0, LargestOffset(m_nHorzScrollTotal, m_nHorzScrollPage));
  down = std::clamp(down, 0, LargestOffset(m_nVertScrollTotal, m_nVertScrollPage));
  const int old_across = std::exchange(m_nHorzScrollOffset, across);
  const int old_down = std::exchange(m_nVertScrollOffset, down);
  if (old_across == across && old_down == down) return;
  // The frame lies over cells, and goes with them; where some go and others stay, the next move makes it
  // anew.
  const bool sideways = old_across != across && Panes().AreSplit();
  if (sideways) HideDragFrame();
  if (m_rectDragFrame.IsRectEmpty() == FALSE)
    m_rectDragFrame.OffsetRect(old_across - across, old_down - down);
  const auto life = life_.Watch();
  CloseToolTip();
  if (life.expired()) return;
  if (m_hWnd != nullptr) {
    SetScrollPos(SB_HORZ, across);
    SetScrollPos(SB_VERT, down);
    // What is painted already is moved; an editor over the cells would be copied with them.
    if (old_across == across && editor_ == nullptr) {
      CRect area = m_rectList;
      area.left = m_rectRowHeader.left;
      ScrollWindow(0, old_down - down, &area, &area);
    } else if (sideways && old_down == down) {
      const CRect moved(Panes().Edge(), m_rectHeader.top, m_rectList.right, m_rectList.bottom);
      InvalidateRect(&moved, FALSE);
    } else {
      Invalidate(FALSE);
    }
  }
  PlaceEditor();
  if (life.expired()) return;
  PlaceFilterEditor();
  if (life.expired()) return;
  if (old_down != down) OnUpdateVScrollPos(down, old_down);
  if (!life.expired() && old_across != across) OnUpdateHScrollPos(across, old_across);
}

CRect CBCGPGridCtrl::GetRowRect(int row) const {
  const int height = heights_.SizeOf(row);
  if (height == 0) return {};
  const int top = Near(m_rectList.top + heights_.OffsetOf(row) - m_nVertScrollOffset);
  return {m_rectList.left, top, m_rectList.right, Near(std::int64_t{top} + height)};
}

CRect CBCGPGridCtrl::GetRangeRect(const CBCGPGridRange& range) const {
  return RectIn(Panes(), range);
}

CRect CBCGPGridCtrl::RectIn(const lorv::ColumnPanes& panes, const CBCGPGridRange& range) const {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  // Ranges may reach beyond the table, as those of whole columns do.
  if (!range.IsValid() || range.m_nTop >= rows_.Size() || range.m_nLeft >= info.GetColumnCount()) return {};
  const int last_row = std::min(range.m_nBottom, rows_.Size() - 1);
  const int last_column = std::min(range.m_nRight, info.GetColumnCount() - 1);
  const std::int64_t above = std::int64_t{m_rectList.top} - m_nVertScrollOffset;
  const int room = RoomBeforeCells();
  const lorv::PixelStretch columns =
      panes.OnScreen(room + info.GetColumnLeft(range.m_nLeft),
                     room + info.GetColumnLeft(last_column) + info.GetColumnWidth(last_column));
  const CRect rect(columns.from, Near(above + heights_.OffsetOf(range.m_nTop)), columns.to,
                   Near(above + heights_.OffsetOf(last_row) + heights_.SizeOf(last_row)));
  return rect.IsRectEmpty() != FALSE ? CRect() : rect;
}

CRect CBCGPGridCtrl::GetItemRect(const CBCGPGridItemID& id) const {
  if (rows_.At(id.m_nRow) == nullptr || !GetColumnsInfo().HasColumn(id.m_nColumn)) return {};
  const CBCGPGridRange block = merged_.BlockAt(id);
  return GetRangeRect(block.IsValid() ? block : CBCGPGridRange(id));
}

CBCGPGridItemID CBCGPGridCtrl::MainCell(const CBCGPGridItemID& id) const {
  const CBCGPGridRange block = merged_.BlockAt(id);
  return block.IsValid() ? CBCGPGridItemID(block.m_nTop, block.m_nLeft) : id;
}

BOOL CBCGPGridCtrl::HitTest(CPoint point, CBCGPGridItemID& id, CRect& rect) const {
  if (m_rectList.PtInRect(point) == FALSE) return FALSE;
  const int row = heights_.LineAt(std::int64_t{point.y} - m_rectList.top + m_nVertScrollOffset);
  const int column = ColumnAt(static_cast<int>(point.x));
  if (row < 0 || row >= rows_.Size() || column < 0) return FALSE;
  id = MainCell({row, column});
  rect = GetItemRect(id);
  return TRUE;
}

CBCGPGridItem* CBCGPGridCtrl::HitTest(CPoint point) const {
  CBCGPGridItemID id;
  CRect rect;
  return HitTest(point, id, rect) != FALSE ? GetGridItem(id) : nullptr;
}

CBCGPGridCtrl::ClickArea CBCGPGridCtrl::HitTestArea(CPoint point) const {
  const CBCGPGridRow* row = GetRow(HitTestRow(point));
  if (row != nullptr && BoxOf(*row).PtInRect(point) != FALSE) return clickExpandBox;
  const CBCGPGridItem* item = HitTest(point);
  if (item == nullptr) return row != nullptr && row->IsGroup() != FALSE ? clickValue : clickNothing;
  return item->GetButtonRect().PtInRect(point) != FALSE ? clickButton : clickValue;
}

int CBCGPGridCtrl::HitTestRow(CPoint point) const {
  const CRect all(m_rectRowHeader.left, m_rectList.top, m_rectList.right, m_rectList.bottom);
  if (all.PtInRect(point) == FALSE) return -1;
  return heights_.LineAt(std::int64_t{point.y} - m_rectList.top + m_nVertScrollOffset);
}

int CBCGPGridCtrl::HitTestRowHeader(CPoint point, CRect& rect) const {
  if (m_rectRowHeader.PtInRect(point) == FALSE) return -1;
  const int row = heights_.LineAt(std::int64_t{point.y} - m_rectList.top + m_nVertScrollOffset);
  if (row < 0) return -1;
  rect = GetRowRect(row);
  rect.left = m_rectRowHeader.left;
  rect.right = m_rectRowHeader.right;
  return row;
}

int CBCGPGridCtrl::HitTestHeader(CPoint point) const {
  if (m_rectHeader.PtInRect(point) == FALSE) return -1;
  return ColumnAt(static_cast<int>(point.x));
}

void CBCGPGridCtrl::EnsureVisible(CBCGPGridRow* row, BOOL partial) {
  if (row == nullptr || row->GetOwnerList() != this) return;
  const int index = IndexOfRow(*row);
  const int height = heights_.SizeOf(index);
  if (height == 0) return;
  // All rows together may be higher than an int.
  const long long top = heights_.OffsetOf(index);
  const int page = m_rectList.Height();
  long long down = m_nVertScrollOffset;
  // Any part of it counts as seen where a part is enough.
  const bool seen = top < down + page && top + height > down;
  if (partial != FALSE && seen) return;
  if (top + height > down + page) down = top + height - page;
  if (top < down) down = top;
  ScrollTo(m_nHorzScrollOffset, Near(down));
}

void CBCGPGridCtrl::EnsureVisible(const CBCGPGridItemID& id) {
  const auto life = life_.Watch();
  EnsureVisible(rows_.At(id.m_nRow));
  if (life.expired()) return;
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  if (info.GetColumnWidth(id.m_nColumn) == 0) return;
  const int left = info.GetColumnLeft(id.m_nColumn) + RoomBeforeCells();
  const int right = left + info.GetColumnWidth(id.m_nColumn);
  const int frozen = Panes().frozen;
  if (right <= frozen) return;
  int across = m_nHorzScrollOffset;
  if (right > across + m_rectList.Width()) across = right - m_rectList.Width();
  // The first column comes with the room before it.
  if (left < across + frozen) across = id.m_nColumn == info.GetFirstVisibleColumn() ? 0 : left - frozen;
  ScrollTo(across, m_nVertScrollOffset);
}

int CBCGPGridCtrl::NextShownRow(int row, int step) const {
  int at = -1;
  if (step > 0)
    at = row < 0 ? heights_.LineAt(0) : heights_.NextShown(row);
  else
    at = row >= rows_.Size() ? heights_.LineAt(heights_.Total() - 1) : heights_.PreviousShown(row);
  // Groups are no rows to go to.
  while (at >= rows_.Size()) at = step > 0 ? heights_.NextShown(at) : heights_.PreviousShown(at);
  return at;
}
