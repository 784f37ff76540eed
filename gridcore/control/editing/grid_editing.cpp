#include <utility>

#include "gridcore/accessibility/grid_cells.h"
#include "gridcore/control/editing/grid_composition.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/control/scope_mark.h"

// The one open editor of a grid: how it comes, how it goes, and which keys leave it.
//
// Closing runs handlers that may rebuild the table or end the grid. The editor's window is destroyed at once;
// its object is kept for a while, since the grid may stand within one of its messages.

namespace {

constexpr std::size_t kMostRetired = 8;

}  // namespace

BOOL CBCGPGridCtrl::IsEditableNow(const CBCGPGridItem* item) const {
  return item != nullptr && !switches_.read_only && item->IsReadOnly() == FALSE &&
         item->IsAllowEdit() != FALSE && item->IsEnabled() != FALSE;
}

BOOL CBCGPGridCtrl::EditItem(CBCGPGridRow* row, const CPoint* point) {
  CBCGPGridItem* const item = GetCurSelItem(row);
  if (m_hWnd == nullptr || item == nullptr || item == editing_ || IsEditableNow(item) == FALSE) return FALSE;
  const CBCGPGridItemID id = item->GetGridItemID();
  const auto life = life_.Watch();
  const DWORD reason = m_dwBeginEditReason;
  // Descendants notify their parent of every end of an edit: without an edit there is nothing to report.
  if (editing_ != nullptr) EndEditItem(TRUE);
  if (life.expired() || m_hWnd == nullptr) return FALSE;
  EnsureVisible(id);
  if (life.expired()) return FALSE;
  m_dwBeginEditReason = reason;
  CBCGPGridItem* const target = GetGridItem(id);
  if (target == nullptr || target->GetRect().IsRectEmpty() != FALSE) return FALSE;
  return target->OnEdit(point == nullptr ? CPoint(-1, -1) : *point);
}

BOOL CBCGPGridCtrl::ShowEditor(CBCGPGridItem* item, std::unique_ptr<CWnd> editor) {
  if (item == nullptr || item->GetOwnerList() != this || editor == nullptr || editor->m_hWnd == nullptr)
    return FALSE;
  const CBCGPGridItemID id = item->GetGridItemID();
  const auto life = life_.Watch();
  // The one that is open still moves the focus as it goes, and runs handlers.
  CloseEditor();
  if (life.expired() || GetGridItem(id) != item || editing_ != nullptr) return FALSE;
  editor_ = std::move(editor);
  editing_ = item;
  CWnd* const shown = editor_.get();
  shown->GetWindowText(opening_.text);
  opening_.by_character = opening_.first != 0;
  const auto still = [&] { return !life.expired() && editor_.get() == shown && editing_ == item; };
  item->SetInPlaceEditFont();
  if (!still()) return FALSE;
  if ((item->GetFlags() & lorv::kItemHasList) != 0 && item->GetOptionCount() > 0) {
    combo_ = std::make_unique<CComboBox>();
    CRect place = item->GetRect();
    place.bottom += 200;
    combo_->Create(WS_CHILD | WS_VSCROLL | CBS_DROPDOWNLIST, place, this, lorv::kEditorId);
    for (int i = 0; i < item->GetOptionCount(); ++i) combo_->AddString(item->GetOption(i));
    combo_->SetCurSel(combo_->FindStringExact(-1, item->FormatItem()));
  }
  if (!still()) return FALSE;
  if (cells_ != nullptr) shown->ReportAccessible(lorv::AccessEvent::Name);
  OnAfterInplaceEditCreated(item, shown);
  if (!still()) return FALSE;
  shown->SetFocus();
  if (!still()) return FALSE;
  auto* edit = dynamic_cast<CEdit*>(shown);
  if (edit == nullptr) return TRUE;
  if (opening_.first != 0) {
    edit->SetSel(1, 1);
    return TRUE;
  }
  const int mode = OnInplaceEditSetSel(item, m_dwBeginEditReason);
  if (!still()) return FALSE;
  if (mode == lorv::kSelectWhole) edit->SetSel(0, -1);
  if (mode == lorv::kSelectCaretAtEnd) edit->SetSel(edit->GetWindowTextLength(), edit->GetWindowTextLength());
  return TRUE;
}

void CBCGPGridCtrl::OnAfterInplaceEditCreated(CBCGPGridItem* /*item*/, CWnd* /*editor*/) {}

int CBCGPGridCtrl::OnInplaceEditSetSel(CBCGPGridItem* /*item*/, DWORD reason) {
  return reason == lorv::kBeginByMouse ? lorv::kSelectCaretAtEnd : lorv::kSelectWhole;
}

CString CBCGPGridCtrl::FirstEditorText(const CBCGPGridItem& item) const {
  if (opening_.empty) return {};
  return opening_.first != 0 ? CString(opening_.first) : item.FormatItem();
}

bool CBCGPGridCtrl::EditorUntouched() const {
  if (editor_ == nullptr || opening_.by_character) return false;
  CString now;
  editor_->GetWindowText(now);
  return now == opening_.text;
}

void CBCGPGridCtrl::Retire(std::unique_ptr<CWnd> window) {
  if (retired_.size() > kMostRetired) retired_.erase(retired_.begin(), retired_.begin() + kMostRetired / 2);
  retired_.push_back(std::move(window));
}

void CBCGPGridCtrl::CloseEditor() {
  editing_ = nullptr;
  if (editor_ == nullptr) return;
  const HWND focus = lorv::DesktopInForce().Focus();
  const bool had_focus =
      focus != nullptr && (focus == editor_->m_hWnd || IsChild(CWnd::FromHandle(focus)) != FALSE);
  CWnd* const editor = editor_.get();
  CWnd* const combo = combo_.get();
  Retire(std::move(editor_));
  if (combo != nullptr) Retire(std::move(combo_));
  const auto life = life_.Watch();
  if (had_focus && m_hWnd != nullptr) SetFocus();
  if (life.expired()) return;
  editor->DestroyWindow();
  if (!life.expired() && combo != nullptr) combo->DestroyWindow();
  if (!life.expired()) changes_.ForEach([](lorv::GridObserver& observer) { observer.OnEditorClosed(); });
}

// Also those that handlers open whenever one closes: true if none is left, false where they do it again and
// again, or the grid is gone.
bool CBCGPGridCtrl::CloseEditors() {
  const auto life = life_.Watch();
  for (int i = 0; i < lorv::kMostEditorCloses && !life.expired() && editing_ != nullptr; ++i) CloseEditor();
  return !life.expired() && editing_ == nullptr;
}

bool CBCGPGridCtrl::CloseEditorIn(const CBCGPGridRow& row) {
  if (!EditsIn(row)) return true;
  const int index = IndexOfRow(row);
  const auto life = life_.Watch();
  const auto stays = [&] { return !life.expired() && rows_.At(index) == &row; };
  for (int i = 0; i < lorv::kMostEditorCloses && stays() && EditsIn(row); ++i) CloseEditor();
  return stays();
}

BOOL CBCGPGridCtrl::EndEditItem(BOOL update) {
  if (editing_ == nullptr || ending_edit_) return FALSE;
  const auto life = life_.Watch();
  const lorv::ScopeMark ending(ending_edit_, life);
  CBCGPGridItem* const item = editing_;
  const lorv::StepScope step(changes_, item);
  ended_ = item;
  if (update != FALSE) lorv::TakeComposed(*this);
  if (life.expired() || editing_ != item) return FALSE;
  if (update != FALSE && item->CanUpdateData() != FALSE) {
    // Beforehand: the handlers of the change may end the cell, and what they paint has the value already.
    const CRect place = item->GetRect();
    if (m_hWnd != nullptr && place.IsRectEmpty() == FALSE) InvalidateRect(&place, FALSE);
    const BOOL taken = item->OnUpdateValue();
    if (life.expired()) return FALSE;
    // A text that the cell refuses stays in the editor.
    if (taken == FALSE && editing_ == item) return FALSE;
    if (editing_ == item && cells_ != nullptr) cells_->CellRedrawn(*item);
  }
  if (editing_ == item) item->OnEndEdit();
  if (life.expired()) return FALSE;
  CloseEditor();
  if (life.expired()) return FALSE;
  CBCGPGridItem* const left = std::exchange(ended_, nullptr);
  if (left != nullptr && update != FALSE) OnEndInplaceEdit(left);
  if (life.expired()) return FALSE;
  ClearBeginEditReason();
  ClearEndEditReason();
  return TRUE;
}

void CBCGPGridCtrl::OnEndInplaceEdit(CBCGPGridItem* item) {
  CWnd* const owner = GetOwner();
  const DWORD reason = m_dwEndEditReason;
  const auto life = life_.Watch();
  if (owner != nullptr) {
    const CBCGPGridItemID id = item->GetGridItemID();
    BCGPGRID_ENDEDIT record = {item, id.m_nRow, id.m_nColumn, reason};
    owner->SendMessage(BCGM_GRID_ITEM_ENDINPLACEEDIT, static_cast<WPARAM>(GetDlgCtrlID()),
                       reinterpret_cast<LPARAM>(&record));
  }
  if (life.expired()) return;
  const int direction = OnGridKeybordNavigation(GetCurSelItem(), reason);
  constexpr UINT kKeys[] = {0, VK_UP, VK_DOWN, 0, VK_LEFT, 0, 0, 0, VK_RIGHT};
  if (direction > 0 && direction <= 8 && kKeys[direction] != 0)
    static_cast<void>(MoveByKey(kKeys[direction]));
}

BOOL CBCGPGridCtrl::CanEndInplaceEditOnChar(UINT key, UINT /*repeat*/, UINT /*flags*/) const {
  return key == VK_RETURN || key == VK_ESCAPE || key == VK_TAB || key == VK_UP || key == VK_DOWN;
}

bool CBCGPGridCtrl::StaysInEditor(UINT key) const {
  const auto* edit = dynamic_cast<const CEdit*>(editor_.get());
  if (edit == nullptr || (edit->GetStyle() & ES_MULTILINE) == 0) return false;
  const int line = edit->LineFromChar(-1);
  return (key == VK_UP && line > 0) || (key == VK_DOWN && line + 1 < edit->GetLineCount());
}

DWORD CBCGPGridCtrl::EndReasonOfKey(UINT key) const {
  switch (key) {
    case VK_UP:
      return lorv::kEndUpwards;
    case VK_DOWN:
      return lorv::kEndDownwards;
    case VK_LEFT:
      return lorv::kEndToLeft;
    case VK_RIGHT:
      return lorv::kEndToRight;
    case VK_TAB:
      return lorv::IsKeyDown(VK_SHIFT) ? lorv::kEndToLeft : lorv::kEndToRight;
    case VK_RETURN:
      return lorv::kEndByReturn;
    default:
      return lorv::kEndByEscape;
  }
}

BOOL CBCGPGridCtrl::OnInplaceEditKeyDown(CBCGPGridRow* /*row*/, MSG* message) {
  const auto key = static_cast<UINT>(message->wParam);
  if (key == VK_F4) {
    // Whoever hears of an opened list may end the grid.
    const bool has_list = combo_ != nullptr;
    DropList(has_list && combo_->GetDroppedState() == FALSE);
    return has_list;
  }
  if (CanEndInplaceEditOnChar(key, LOWORD(message->lParam), HIWORD(message->lParam)) == FALSE) return FALSE;
  if (StaysInEditor(key)) return FALSE;
  m_dwEndEditReason = EndReasonOfKey(key);
  EndEditItem(key != VK_ESCAPE);
  return TRUE;
}

int CBCGPGridCtrl::OnGridKeybordNavigation(CBCGPGridItem* /*item*/, DWORD reason) {
  if ((reason & lorv::kEndByReturn) != 0) return static_cast<int>(lorv::kEndDownwards);
  return static_cast<int>(reason & 0xFU);
}

bool CBCGPGridCtrl::TakesKeyOfEditor(MSG* message) {
  if (message->message != WM_KEYDOWN && message->message != WM_SYSKEYDOWN) return false;
  // Return confirms what is composed, Tab and arrows choose among candidates.
  if (message->wParam == VK_PROCESSKEY || lorv::IsComposing(*this)) return false;
  // An open list has the keys for itself.
  if (combo_ != nullptr && combo_->GetDroppedState() != FALSE) return false;
  const CWnd* const editor = editor_.get();
  // A key for an editor that was closed by who was asked has nowhere to go.
  if (AskForKey(static_cast<UINT>(message->wParam), true) || editor_.get() != editor) return true;
  if (message->message != WM_KEYDOWN) return false;
  return OnInplaceEditKeyDown(editing_->GetParentRow(), message) != FALSE;
}

BOOL CBCGPGridCtrl::PreTranslateMessage(MSG* message) {
  if (EndsFilterEditor(*message)) {
    CloseFilterEditor();
    return TRUE;
  }
  const bool to_editor = editor_ != nullptr && message->hwnd != m_hWnd;
  if (to_editor && TakesKeyOfEditor(message)) return TRUE;
  // Keys with Alt are the system's: the grid itself has none.
  if (message->hwnd == m_hWnd && message->message == WM_SYSKEYDOWN &&
      AskForKey(static_cast<UINT>(message->wParam)))
    return TRUE;
  return CBCGPWnd::PreTranslateMessage(message);
}

void CBCGPGridCtrl::DropList(BOOL show) {
  if (combo_ == nullptr) return;
  CComboBox* const combo = combo_.get();
  const auto life = life_.Watch();
  if (show != FALSE) combo->ShowWindow(SW_SHOW);
  if (life.expired() || combo_.get() != combo) return;
  // The keys of an open list go to the list.
  if (show != FALSE) combo->SetFocus();
  if (life.expired() || combo_.get() != combo) return;
  combo->ShowDropDown(show);
}

void CBCGPGridCtrl::OnSelectCombo() {
  if (combo_ == nullptr || editor_ == nullptr || combo_->GetCurSel() < 0) return;
  CString text;
  combo_->GetLBText(combo_->GetCurSel(), text);
  editor_->SetWindowText(text);
  if (auto* edit = dynamic_cast<CEdit*>(editor_.get())) edit->SetSel(0, -1);
}

void CBCGPGridCtrl::OnListClosed() {
  if (combo_ == nullptr) return;
  CWnd* const editor = editor_.get();
  const auto life = life_.Watch();
  combo_->ShowWindow(SW_HIDE);
  if (!life.expired() && editor_.get() == editor && editor != nullptr) editor->SetFocus();
}

void CBCGPGridCtrl::OnEditorLeft() {
  if (editor_ == nullptr || ending_edit_) return;
  const HWND focus = lorv::DesktopInForce().Focus();
  const CWnd* to = CWnd::FromHandlePermanent(focus);
  // Another program or nobody at all leaves the editor open for the user's return.
  if (to == nullptr || to == this || IsChild(to) != FALSE) return;
  m_dwEndEditReason = lorv::kEndByFocus;
  EndEditItem(TRUE);
}

CWnd* CBCGPGridCtrl::EditorOf(const CBCGPGridRow& row) const {
  return editing_ != nullptr && editing_->GetParentRow() == &row ? editor_.get() : nullptr;
}

CComboBox* CBCGPGridCtrl::ComboOf(const CBCGPGridRow& row) const {
  return EditorOf(row) == nullptr ? nullptr : combo_.get();
}

void CBCGPGridCtrl::PlaceEditor() {
  if (editor_ == nullptr || editing_ == nullptr) return;
  CRect rect = editing_->GetRect();
  CRect spin;
  editing_->AdjustInPlaceEditRect(rect, spin);
  editor_->MoveWindow(&rect);
}

void CBCGPGridCtrl::OnItemChanged(CBCGPGridItem* /*item*/, int /*row*/, int /*column*/) {}

BOOL CBCGPGridCtrl::OnClickButton(CPoint /*point*/) {
  return FALSE;
}
