#include "grid/bridge/true_db_grid.h"
#include "grid/editing/key_translation.h"

// Events of an edit and of the selection. The order in which they come is fixed; after each the cell is
// looked up anew by its number, as its handler may have made another table.

namespace {

constexpr UINT kKeyReturn = 13;

bool AlwaysLeavesACell(UINT key) {
  return key == VK_TAB || key == VK_RETURN || (key >= VK_LEFT && key <= VK_DOWN);
}

}  // namespace

int CBcgTrueDbGridCtrl::CurrentColumn() const {
  const CBCGPGridItem* const item = GetCurSelItem();
  return item == nullptr ? -1 : item->GetColumnId();
}

void CBcgTrueDbGridCtrl::OnFilterBarChanged() {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnFilterBarChanged();
  if (!life.expired()) Raise<75>();
}

void CBcgTrueDbGridCtrl::GiveBack(const CBCGPGridItemID& id, const _variant_t& value) {
  CBCGPGridItem* const item = GetGridItem(id);
  if (item == nullptr) return;
  if (item->GetValue().vt != value.vt) item->ChangeType(value);
  item->SetValue(value, TRUE);
}

void CBcgTrueDbGridCtrl::OnItemChanged(CBCGPGridItem* item, int row, int column) {
  if (item == nullptr || GetCurSelItem() == nullptr) return;
  const auto life = Watch();
  const CBCGPGridItemID id = item->GetGridItemID();
  const auto number = static_cast<short>(column);
  const _variant_t old = old_value_;
  // What the handler writes into it counts for its own cancel only.
  _variant_t reported = old;
  short cancel = 0;
  Raise<5>(number, static_cast<VARIANT*>(&reported), &cancel);
  if (life.expired()) return;
  if (cancel != 0) {
    // A reference is followed; what is no value at all counts for nothing.
    _variant_t back;
    if (FAILED(VariantCopyInd(&back, &reported))) back = old;
    SetValue(row, column, back, TRUE);
    if (life.expired()) return;
    if (back.vt == VT_EMPTY) GiveBack(id, back);
  }
  cancel = 0;
  Raise<8>(&cancel);
  if (life.expired()) return;
  if (cancel != 0 && old.vt != VT_EMPTY) GiveBack(id, old);
  if (!allow_update_) GiveBack(id, old);
  Raise<1>(number);
  if (life.expired() || GetCurSelItem() == nullptr) return;
  Raise<25>(number);
  if (life.expired()) return;
  CBCGPGridItem* const found = GetGridItem(id);
  if (GetCurSelItem() != nullptr && found != nullptr) CBCGPBasicGridCtrl::OnItemChanged(found, row, column);
}

BOOL CBcgTrueDbGridCtrl::EndEditItem(BOOL update) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::EndEditItem(update);
  if (life.expired() || update == FALSE || GetCurSelItem() == nullptr) return FALSE;
  Raise<4>();
  return TRUE;
}

BOOL CBcgTrueDbGridCtrl::EditItem(CBCGPGridRow* row, const CPoint* point) {
  const DWORD reason = m_dwBeginEditReason;
  const auto life = Watch();
  const BOOL opened = CBCGPBasicGridCtrl::EditItem(row, point);
  if (life.expired() || row == nullptr || (reason & lorv::kBeginByDoubleClick) == 0) return opened;
  // The double click is reported once, also where nothing opened.
  m_dwBeginEditReason &= ~static_cast<DWORD>(lorv::kBeginByDoubleClick);
  Raise<-601>();
  return TRUE;
}

BOOL CBcgTrueDbGridCtrl::OnInplaceEditKeyDown(CBCGPGridRow* row, MSG* message) {
  const auto life = Watch();
  if (GetCurSelItem() != nullptr) {
    short cancel = 0;
    Raise<26>(static_cast<short>(CurrentColumn()), static_cast<short>(message->wParam), &cancel);
    // A key for an editor that its handler closed has nowhere to go.
    if (life.expired() || GetEditingItem() == nullptr) return TRUE;
    if (cancel != 0 && !AlwaysLeavesACell(static_cast<UINT>(message->wParam))) return TRUE;
    row = GetEditingItem()->GetParentRow();
  }
  return CBCGPBasicGridCtrl::OnInplaceEditKeyDown(row, message);
}

BOOL CBcgTrueDbGridCtrl::PreTranslateMessage(MSG* message) {
  if (message->message == WM_KEYDOWN && GetCurSel() != nullptr && GetEditingItem() != nullptr) {
    const bool goes_down = message->wParam == kKeyReturn && GetReturnStyle() == emReturnDown;
    short key = goes_down ? short{VK_DOWN} : static_cast<short>(message->wParam);
    // The editor swallows the key: its parent hears of it here, and cannot change it.
    if (!ReportOfKey(key)) return TRUE;
  }
  return CBCGPBasicGridCtrl::PreTranslateMessage(message);
}

BOOL CBcgTrueDbGridCtrl::OnClickButton(CPoint point) {
  const auto life = Watch();
  if (GetCurSelItem() != nullptr) Raise<33>(static_cast<short>(CurrentColumn()));
  return life.expired() ? FALSE : CBCGPBasicGridCtrl::OnClickButton(point);
}

void CBcgTrueDbGridCtrl::OnComboItemSelect() {
  if (GetCurSelItem() != nullptr) Raise<34>(static_cast<short>(CurrentColumn()));
}

void CBcgTrueDbGridCtrl::OnSelChanging(const CBCGPGridRange& range, BOOL selected) {
  const auto life = Watch();
  CBCGPBasicGridCtrl::OnSelChanging(range, selected);
  if (life.expired() || selected != FALSE || GetCurSelItem() == nullptr) return;
  if (GetCurrentRow() == current_row_seen_ && CurrentColumn() == current_column_seen_) return;
  // What the handler answers is not asked for: the selection changes.
  short cancel = 0;
  Raise<63>(&cancel);
}

void CBcgTrueDbGridCtrl::OnSelChanged(const CBCGPGridRange& range, BOOL selected) {
  const auto life = Watch();
  if (selected == FALSE) {
    current_row_seen_ = GetCurrentRow();
    current_column_seen_ = CurrentColumn();
    old_value_.Clear();
  } else if (const CBCGPGridItem* const item = GetCurSelItem()) {
    old_value_ = item->GetValue();
  }
  if (selected != FALSE &&
      (GetCurrentRow() != current_row_seen_ || CurrentColumn() != current_column_seen_)) {
    _variant_t bookmark(static_cast<long>(current_row_seen_));
    Raise<11>(static_cast<VARIANT*>(&bookmark), static_cast<short>(current_column_seen_));
    if (life.expired()) return;
  }
  short cancel = 0;
  Raise<15>(&cancel);
  if (!life.expired()) CBCGPBasicGridCtrl::OnSelChanged(range, selected);
}
