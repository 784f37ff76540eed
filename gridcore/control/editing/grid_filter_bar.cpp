#include <algorithm>
#include <utility>

#include "framework/drawing/device_context.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/control/layout/grid_panes.h"
#include "gridcore/painting/open_ink.h"

// A line below the header with a text for each column. Rows that do not hold the texts in their cells are
// left out, while the user types.

namespace {

constexpr int kTextMargin = 3;

// By value: the text of a cell is made for this alone, and folds in its place.
CString Folded(CString text) {
  text.MakeUpper();
  return text;
}

}  // namespace

void CBCGPGridCtrl::EnableFilterBar(BOOL on) {
  if ((on != FALSE) == filter_.on) return;
  filter_.on = on != FALSE;
  const auto life = life_.Watch();
  CloseFilterEditor();
  if (life.expired()) return;
  FilterChanged();
  AdjustLayout();
}

CString CBCGPGridCtrl::GetFilterBarText(int column) const {
  const bool has = column >= 0 && column < static_cast<int>(filter_.texts.size());
  return has ? filter_.texts[static_cast<std::size_t>(column)].text : CString();
}

void CBCGPGridCtrl::SetFilterBarText(int column, LPCTSTR text) {
  if (!GetColumnsInfo().HasColumn(column) || GetFilterBarText(column) == CString(text)) return;
  const auto place = static_cast<std::size_t>(column);
  if (filter_.texts.size() <= place) filter_.texts.resize(place + 1);
  filter_.texts[place] = {text, Folded(text)};
  // So that a bar without texts is found by one look for each row.
  while (!filter_.texts.empty() && filter_.texts.back().text.IsEmpty()) filter_.texts.pop_back();
  FilterChanged();
  const auto life = life_.Watch();
  AdjustLayout();
  if (!life.expired()) OnFilterBarChanged();
}

BOOL CBCGPGridCtrl::FilterItem(CBCGPGridRow* row) {
  if (!filter_.on || filter_.texts.empty() || row == nullptr) return FALSE;
  if (switches_.keeps_last_row && row == rows_.At(rows_.Size() - 1)) return FALSE;
  for (std::size_t column = 0; column < filter_.texts.size(); ++column) {
    const CString& wanted = filter_.texts[column].folded;
    if (wanted.IsEmpty()) continue;
    const auto at = static_cast<int>(column);
    if (!row->HasItem(at) || Folded(row->GetCellText(at)).Find(wanted) < 0) return TRUE;
  }
  return FALSE;
}

void CBCGPGridCtrl::FilterColumnsMove(int column, int step) {
  if (column >= static_cast<int>(filter_.texts.size())) return;
  const auto place = filter_.texts.begin() + column;
  if (step < 0)
    filter_.texts.erase(place);
  else
    filter_.texts.insert(place, lorv::FilterText());
  FilterChanged();
}

CRect CBCGPGridCtrl::FilterCell(int column) const {
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  if (m_rectFilterBar.IsRectEmpty() != FALSE || info.GetColumnWidth(column) == 0) return {};
  CRect cell = GetColumnRect(column);
  if (cell.IsRectEmpty() != FALSE) return {};
  cell.top = m_rectFilterBar.top;
  cell.bottom = m_rectFilterBar.bottom;
  return cell;
}

bool CBCGPGridCtrl::PressInFilterBar(CPoint point) {
  if (m_rectFilterBar.PtInRect(point) == FALSE) return false;
  OpenFilterEditor(ColumnAt(static_cast<int>(point.x)));
  return true;
}

void CBCGPGridCtrl::OpenFilterEditor(int column) {
  const auto life = life_.Watch();
  CloseFilterEditor();
  if (life.expired() || filter_.editor != nullptr || FilterCell(column).IsRectEmpty() != FALSE) return;
  auto editor = std::make_unique<CEdit>();
  if (editor->Create(nullptr, GetFilterBarText(column), WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL,
                     FilterCell(column), this, lorv::kFilterEditorId) == FALSE)
    return;
  CEdit* const shown = editor.get();
  // Known before it gets the focus, whose handlers may close it again.
  filter_.editor = std::move(editor);
  filter_.column = column;
  shown->SetFont(GetFont());
  shown->SetFocus();
  if (!life.expired() && filter_.editor.get() == shown) shown->SetSel(0, -1);
}

void CBCGPGridCtrl::CloseFilterEditor() {
  filter_.column = -1;
  if (filter_.editor == nullptr) return;
  CWnd* const editor = filter_.editor.get();
  // The grid may stand within one of its messages: its object is kept for a while.
  Retire(std::move(filter_.editor));
  const bool had_focus = CWnd::GetFocus() == editor;
  const auto life = life_.Watch();
  if (had_focus && m_hWnd != nullptr) SetFocus();
  if (!life.expired()) editor->DestroyWindow();
}

void CBCGPGridCtrl::PlaceFilterEditor() {
  if (filter_.editor == nullptr) return;
  const CRect cell = FilterCell(filter_.column);
  filter_.editor->MoveWindow(&cell);
}

void CBCGPGridCtrl::OnFilterTyped() {
  if (filter_.editor == nullptr) return;
  CString text;
  filter_.editor->GetWindowText(text);
  SetFilterBarText(filter_.column, text);
}

void CBCGPGridCtrl::OnFilterLeft() {
  CloseFilterEditor();
}

bool CBCGPGridCtrl::EndsFilterEditor(const MSG& message) const {
  const bool to_it = filter_.editor != nullptr && message.hwnd == filter_.editor->m_hWnd;
  return to_it && message.message == WM_KEYDOWN &&
         (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE || message.wParam == VK_DOWN);
}

void CBCGPGridCtrl::DrawFilterBar(CDC* dc, const CRect& dirty) {
  // No row stands at its left: what was drawn there before would stay.
  const CRect corner(m_rectRowHeader.left, m_rectFilterBar.top, m_rectFilterBar.left, m_rectFilterBar.bottom);
  if (corner.IsRectEmpty() == FALSE) DrawHeaderCell(dc, corner, CString(), DT_CENTER, false);
  CRect seen;
  seen.IntersectRect(&m_rectFilterBar, &dirty);
  if (seen.IsRectEmpty() != FALSE) return;
  const int saved = dc->SaveDC();
  dc->IntersectClipRect(&m_rectFilterBar);
  const lorv::Desktop& desktop = lorv::DesktopInForce();
  dc->FillSolidRect(&m_rectFilterBar, desktop.Colour(COLOR_BTNFACE));
  for (PaneTurn turn(*this, dc); turn.Next();) DrawFilterCells(dc);
  dc->RestoreDC(saved);
}

void CBCGPGridCtrl::DrawFilterCells(CDC* dc) {
  const lorv::Desktop& desktop = lorv::DesktopInForce();
  const CBCGPGridColumnsInfo& info = GetColumnsInfo();
  const COLORREF line = desktop.Colour(COLOR_BTNSHADOW);
  const int first = info.HitTestColumn(std::max(0, static_cast<int>(m_rectFilterBar.left) - CellsLeft()));
  for (int column = first; column >= 0; column = info.GetNextVisibleColumn(column, TRUE)) {
    CRect cell = FilterCell(column);
    if (cell.left >= m_rectFilterBar.right) break;
    dc->FillSolidRect(&cell, GetBkColor());
    dc->FillSolidRect(cell.left, cell.bottom - 1, cell.Width(), 1, line);
    dc->FillSolidRect(cell.right - 1, cell.top, 1, cell.Height(), line);
    cell.DeflateRect(Scaled(kTextMargin), 0);
    dc->SetTextColor(lorv::InkOver(GetBkColor(), COLOR_WINDOWTEXT));
    dc->DrawText(GetFilterBarText(column), cell,
                 DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
}
