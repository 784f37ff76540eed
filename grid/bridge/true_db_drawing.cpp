#include "framework/drawing/device_context.h"
#include "grid/bridge/true_db_grid.h"

// Events that come while the grid is drawn, scrolled or fitted. Handlers set colours by the grid's own
// setters before the row is drawn.

void CBcgTrueDbGridCtrl::OnHeaderColumnClick(int column) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnHeaderColumnClick(column);
  if (!life.expired()) Raise<10>(static_cast<short>(column));
}

BOOL CBcgTrueDbGridCtrl::SetHeaderItemWidth(int column, int width) {
  const auto life = Watch();
  short cancel = 0;
  Raise<9>(static_cast<short>(column), &cancel);
  if (life.expired()) return FALSE;
  // Only what makes the column narrower, or leaves it, can be refused.
  if (cancel != 0 && GetColumnWidth(column) >= width) return FALSE;
  return CBCGPBasicGridCtrl::SetHeaderItemWidth(column, width);
}

void CBcgTrueDbGridCtrl::OnDrawRowHeaderItem(CDC* dc, CBCGPGridRow* row) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnDrawRowHeaderItem(dc, row);
  if (life.expired() || GetRowHeight() == row_height_seen_) return;
  short cancel = 0;
  Raise<13>(&cancel);
  if (life.expired()) return;
  if (cancel != 0 && GetRowHeight() < row_height_seen_) SetRowHeight(row_height_seen_);
  row_height_seen_ = GetRowHeight();
}

BOOL CBcgTrueDbGridCtrl::OnDrawItem(CDC* dc, CBCGPGridRow* row) {
  if (row == nullptr) return FALSE;
  const int number = row->GetRowId();
  const CRect rect = GetRowRect(number);
  if (rect.IsRectEmpty() == FALSE && rect.top >= GetListRect().bottom) return FALSE;
  const auto life = Watch();
  _variant_t bookmark(static_cast<long>(number));
  for (int column = 0; column < GetColumnCount(); ++column) {
    if (!fetch_columns_.Has(column)) continue;
    Raise<36>(short{0}, short{0}, static_cast<VARIANT*>(&bookmark), static_cast<short>(column),
              static_cast<IDispatch*>(nullptr));
    if (life.expired()) return FALSE;
  }
  if (fetch_row_style_)
    Raise<51>(short{0}, static_cast<VARIANT*>(&bookmark), static_cast<IDispatch*>(nullptr));
  if (life.expired()) return FALSE;
  // The row that stands there now.
  CBCGPGridRow* const found = GetRow(number);
  return found == nullptr ? FALSE : CBCGPBasicGridCtrl::OnDrawItem(dc, found);
}

void CBcgTrueDbGridCtrl::OnDraw(CDC* dc) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnDraw(dc);
  if (!life.expired()) Raise<38>();
}

void CBcgTrueDbGridCtrl::OnUpdateVScrollPos(int offset, int previous) {
  const int first = GetFirstRow();
  if (first == -1) return;
  const auto life = Watch();
  if (first != first_row_seen_) {
    first_row_seen_ = first;
    Raise<28>(static_cast<short>(first));
  }
  if (!life.expired()) CBCGPBasicGridCtrl::OnUpdateVScrollPos(offset, previous);
}

void CBcgTrueDbGridCtrl::OnUpdateHScrollPos(int offset, int previous) {
  int left = 0;
  // Hidden columns have no width and are passed over.
  long long sum = 0;
  for (; left < GetColumnCount(); ++left) {
    sum += GetColumnWidth(left);
    if (sum > offset) break;
  }
  const auto life = Watch();
  if (left < GetColumnCount() && left != left_column_seen_) {
    left_column_seen_ = left;
    Raise<29>(static_cast<short>(left));
  }
  if (!life.expired()) CBCGPBasicGridCtrl::OnUpdateHScrollPos(offset, previous);
}
