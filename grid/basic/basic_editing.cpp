#include <utility>

#include "framework/windows/menu.h"
#include "grid/basic/basic_grid.h"
#include "grid/editing/caret_keys.h"
#include "grid/editing/option_menu.h"
#include "grid/items/presentation_item.h"
#include "gridcore/control/editing/grid_composition.h"
#include "gridcore/geometry/line_span.h"

// The keyboard of the suite's grid: keys that stand for others, editing that walks on from cell to cell, the
// input language of each cell, and long lists of options as menus.

namespace {

constexpr UINT kMenuFlags = 258;  // the right button may choose, too; the command is returned
constexpr UINT kMarkReturn = 0x210;

// Row and column ids, so that a cell brings its language back whichever row object stands there.
long long LanguageKey(const CBCGPGridItemID& id) {
  const auto row = static_cast<unsigned long long>(static_cast<unsigned>(id.m_nRow));
  return static_cast<long long>(row << 32U | static_cast<unsigned>(id.m_nColumn));
}

}  // namespace

BOOL CBCGPBasicGridCtrl::PreTranslateMessage(MSG* message) {
  if (message->message == WM_KEYDOWN && !lorv::IsComposing(*this)) {
    lorv::KeySituation now;
    now.return_style = return_style_;
    now.tab_style = tab_style_;
    now.adds_rows = return_adds_row_;
    now.read_only = IsReadOnly() != FALSE;
    now.row = GetCurrentRow();
    now.row_count = GetRowCount();
    const auto key = static_cast<unsigned>(message->wParam);
    const unsigned translated = lorv::TranslatedKey(key, now);
    // What stands for another key already is no letter of a short cut.
    const bool settled = key == lorv::kKeyReturn || key == lorv::kKeyTab || translated != key;
    message->wParam = translated;
    const auto life = Watch();
    if (!settled && shortcut_ && now.row >= 1 && lorv::IsKeyDown(VK_CONTROL)) CopyFromAbove(key);
    // The key is taken with the grid that it ended.
    if (life.expired()) return TRUE;
  }
  return CBCGPGridCtrl::PreTranslateMessage(message);
}

void CBCGPBasicGridCtrl::CopyFromAbove(UINT key) {
  const int row = GetCurrentRow();
  const auto life = Watch();
  const lorv::StepScope step(Changes());
  const auto by_user = Changes().ByUser();
  if (key == 'D') {
    const int column = GetCol();
    if (IsCanShortCutCol(column, true)) SetValue(row, column, GetValue(row - 1, column), TRUE);
  } else if (key == 'B') {
    for (int column = 0; !life.expired() && column < GetColumnCount(); ++column)
      if (IsCanShortCutCol(column, false)) SetValue(row, column, GetValue(row - 1, column), TRUE);
  }
}

bool CBCGPBasicGridCtrl::IsCanShortCutCol(int column, bool current_only) const {
  if (IsReadOnly() != FALSE) return false;
  for (const UINT left_out : no_shortcut_)
    if (!current_only && left_out == static_cast<UINT>(column)) return false;
  // A column that is not there yet is not refused: who sets its value passes it over.
  if (column >= GetColumnCount()) return true;
  const CBCGPGridItem* item = GetCurrentRow() < 0 ? nullptr : GetItem(GetCurrentRow(), column);
  if (item == nullptr || item->IsReadOnly() != FALSE) return false;
  return item->IsAllowEdit() != FALSE;
}

int CBCGPBasicGridCtrl::OnInplaceEditSetSel(CBCGPGridItem* item, DWORD reason) {
  if ((reason & lorv::kBeginByKey) != 0) return lorv::kSelectWhole;
  return CBCGPGridCtrl::OnInplaceEditSetSel(item, reason);
}

void CBCGPBasicGridCtrl::OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) {
  HKL layout = nullptr;
  if (editor != nullptr && languages_.Lookup(LanguageKey(item->GetGridItemID()), layout) != FALSE)
    lorv::DesktopInForce().ActivateLayout(layout, 1);
  CBCGPGridCtrl::OnAfterInplaceEditCreated(item, editor);
}

BOOL CBCGPBasicGridCtrl::EndEditItem(BOOL update) {
  const CBCGPGridItem* item = GetCurSelItem();
  // The language that the user left the cell with, not the one that it was opened with.
  if (item != nullptr && item->IsInPlaceEditing() != FALSE)
    languages_.SetAt(LanguageKey(item->GetGridItemID()), lorv::DesktopInForce().Layout());
  return CBCGPGridCtrl::EndEditItem(update);
}

void CBCGPBasicGridCtrl::MoveLanguages(int from, int to) {
  constexpr long long kColumnBits = 0xFFFFFFFF;
  std::vector<std::pair<long long, HKL>> moved;
  for (POSITION at = languages_.GetStartPosition(); at != nullptr;) {
    std::pair<long long, HKL> one;
    languages_.GetNextAssoc(at, one.first, one.second);
    const int column = lorv::LineAfterMove(static_cast<int>(one.first & kColumnBits), from, to);
    one.first = (one.first & ~kColumnBits) | column;
    moved.push_back(one);
  }
  languages_.RemoveAll();
  for (const auto& [key, layout] : moved) languages_.SetAt(key, layout);
}

void CBCGPBasicGridCtrl::OnEndInplaceEdit(CBCGPGridItem* item) {
  if (GetOwner() == nullptr || m_hWnd == nullptr) return;
  const CBCGPGridItemID id = item->GetGridItemID();
  BCGPGRID_ENDEDIT record = {item, id.m_nRow, id.m_nColumn, m_dwEndEditReason};
  ClearBeginEditReason();
  ClearEndEditReason();
  // The grid itself walks on; its owner does not hear of it.
  SendMessage(BCGM_GRID_ITEM_ENDINPLACEEDIT, static_cast<WPARAM>(GetDlgCtrlID()),
              reinterpret_cast<LPARAM>(&record));
}

LRESULT CBCGPBasicGridCtrl::OnEndLabelEdit(WPARAM /*w*/, LPARAM record) {
  const auto* ended = reinterpret_cast<const BCGPGRID_ENDEDIT*>(record);
  if (ended == nullptr) return 0;
  const auto life = Watch();
  // Handlers of the end, and the one that is asked for the way, may have taken the cell away.
  const auto cell = [this, ended] {
    return GetGridItem({ended->nRow, ended->nColumn}) == ended->pItem ? ended->pItem : nullptr;
  };
  int direction = lorv::kDown;
  if ((ended->dwReason & kMarkReturn) == 0) direction = OnGridKeybordNavigation(cell(), ended->dwReason);
  if (!life.expired() && lorv::KeyOfDirection(direction) != 0) InplaceEditNavigation(cell(), direction);
  return 0;
}

void CBCGPBasicGridCtrl::InplaceEditNavigation(CBCGPGridItem* item, int direction) {
  const CBCGPGridRow* row = item == nullptr ? nullptr : item->GetParentRow();
  const auto life = Watch();
  const bool at_end = row != nullptr && row->GetRowId() >= GetRowCount() - 1;
  if (direction == lorv::kDown && at_end && return_adds_row_) AddRow(TRUE);
  // The library closes the editor first; the selection moves when it is done.
  if (!life.expired()) PostMessage(lorv::kMessageNavigate, static_cast<WPARAM>(direction));
}

LRESULT CBCGPBasicGridCtrl::OnNavigateItem(WPARAM direction, LPARAM /*l*/) {
  // The user went elsewhere before this message came: the selection must not fetch him back.
  const HWND focus = lorv::DesktopInForce().Focus();
  if (focus != nullptr && focus != m_hWnd) return 0;
  const auto life = Watch();
  const UINT key = lorv::KeyOfDirection(static_cast<int>(direction));
  if (key != 0) OnKeyDown(key, 0, 0);
  if (!life.expired()) ContinueInplaceEditing();
  return 0;
}

bool CBCGPBasicGridCtrl::ContinueInplaceEditing() {
  const CBCGPGridItem* item = GetCurSelItem();
  if (item == nullptr || item->IsInPlaceEditing() != FALSE) return false;
  if (item->IsReadOnly() != FALSE && item->IsAllowEdit() == FALSE) return false;
  SendMessage(WM_KEYDOWN, VK_F2, 0);
  return true;
}

void CBCGPBasicGridCtrl::SetCurEditingItem(int row, int column) {
  const auto life = Watch();
  if (SetCurSel(CBCGPGridItemID(row, column), lorv::kSelectOnly, TRUE) == FALSE || life.expired()) return;
  m_dwBeginEditReason = lorv::kBeginByKey;
  EditItem(GetCurSel());
}

BOOL CBCGPBasicGridCtrl::CanEndInplaceEditOnChar(UINT key, UINT repeat, UINT flags) const {
  if (key == lorv::kKeyTab || (key >= lorv::kKeyLeft && key <= lorv::kKeyDown)) return TRUE;
  return CBCGPGridCtrl::CanEndInplaceEditOnChar(key, repeat, flags);
}

BOOL CBCGPBasicGridCtrl::OnInplaceEditKeyDown(CBCGPGridRow* row, MSG* message) {
  // With Shift the arrows select within the text.
  if (lorv::IsKeyDown(VK_SHIFT)) return FALSE;
  auto* edit = dynamic_cast<CEdit*>(row == nullptr ? nullptr : row->GetInPlaceWnd());
  if (edit == nullptr) return CBCGPGridCtrl::OnInplaceEditKeyDown(row, message);
  int start = 0;
  int end = 0;
  edit->GetSel(start, end);
  const auto key = static_cast<unsigned>(message->wParam);
  const lorv::CaretStep step = lorv::CaretStepFor(key, false, start, end, edit->GetWindowTextLength());
  if (step.kind == lorv::CaretStep::kEditor) return FALSE;
  if (step.kind == lorv::CaretStep::kOther) return CBCGPGridCtrl::OnInplaceEditKeyDown(row, message);
  edit->SetSel(step.position, step.position, TRUE);
  // A caret at the end of a long text is out of sight until then.
  edit->SendMessage(EM_SCROLLCARET);
  return TRUE;
}

void CBCGPBasicGridCtrl::OnSelectCombo() {
  const auto life = Watch();
  CBCGPGridCtrl::OnSelectCombo();
  if (!life.expired()) OnComboItemSelect();
}

BOOL CBCGPBasicGridCtrl::OnClickButton(CPoint point) {
  return CBCGPGridCtrl::OnClickButton(point);
}

bool CBCGPBasicGridCtrl::ShowItemStringList(CPoint point) {
  CBCGPGridItem* const item = HitTest(point);
  if (item == nullptr) return false;
  const int count = item->GetOptionCount();
  // Short lists are shown by the editor's own one.
  if (count < lorv::kMenuFromOptions && !list_always_menu_) return false;
  std::vector<CString> texts;
  std::vector<std::unique_ptr<CMenu>> menus;
  menus.push_back(std::make_unique<CMenu>());
  menus.back()->CreatePopupMenu();
  for (const lorv::OptionEntry& entry : lorv::OptionEntries(count)) {
    CMenu* const current = menus.back().get();
    if (entry.opens_more) {
      texts.emplace_back(_T("更多\t"));
      // A menu below the menu takes what the screen has no room for; the outer one owns it.
      menus.push_back(std::make_unique<CMenu>());
      menus.back()->CreatePopupMenu();
      current->AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(menus.back()->m_hMenu), texts.back());
      continue;
    }
    texts.emplace_back(item->GetOption(entry.option));
    const UINT flags = entry.begins_column ? MF_STRING | MF_MENUBARBREAK : MF_STRING;
    const int command = entry.option + lorv::kFirstOptionCommand;
    current->AppendMenu(flags, static_cast<UINT_PTR>(command), texts.back());
  }
  const CBCGPGridItemID id = item->GetGridItemID();
  CPoint at = point;
  ClientToScreen(&at);
  const auto life = Watch();
  const BOOL answer =
      menus.front()->TrackPopupMenu(kMenuFlags, static_cast<int>(at.x), static_cast<int>(at.y), this);
  const int option = static_cast<int>(answer) - lorv::kFirstOptionCommand;
  if (life.expired() || option < 0 || option >= static_cast<int>(texts.size())) return true;
  // The table may have changed while the menu was up.
  if (CBCGPGridItem* chosen = GetGridItem(id))
    TakeOption(chosen, option, texts[static_cast<std::size_t>(option)]);
  return true;
}

void CBCGPBasicGridCtrl::TakeOption(CBCGPGridItem* item, int option, const CString& text) {
  const CBCGPGridRow* row = item->GetParentRow();
  if (row == nullptr) {
    item->SetValue(_variant_t(text), TRUE);
    return;
  }
  // The editor with its list was opened by the press; without one the choice has nowhere to go.
  CComboBox* combo = row->GetComboWnd();
  if (combo == nullptr) return;
  combo->SetCurSel(option);
  OnSelectCombo();
}

void CBCGPBasicGridCtrl::SetMultiLineItem(int row, int column, int lines) {
  CBCGPGridItem* item = GetItem(row, column);
  CBCGPGridRow* found = GetRow(row);
  if (item == nullptr || found == nullptr) return;
  if (auto* text = dynamic_cast<CBCGPGridPresentationItem*>(item)) {
    text->SetMultiLineItem(TRUE);
  } else {
    auto fresh = std::make_unique<CBCGPGridPresentationItem>(item->GetValue());
    fresh->SetMultiLineItem(TRUE);
    // Refused where handlers of an editor that closes took the row away.
    if (found->ReplaceItem(column, fresh.get(), TRUE, FALSE) == FALSE) return;
    static_cast<void>(fresh.release());
  }
  found->SetLinesNumber(lines, FALSE);
}
