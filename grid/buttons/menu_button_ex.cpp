#include "grid/buttons/menu_button_ex.h"

#include <algorithm>
#include <utility>

// A menu button that remembers what was chosen, as numbers of entries. They are shown as check marks of the
// menu and outlive it: another menu that is handed over leaves the choice as it is.

IMPLEMENT_DYNCREATE(CBCGPMenuButtonEx, CBCGPMenuButton)

CBCGPMenuButtonEx::CBCGPMenuButtonEx() {
  m_bStayPressed = true;
}

bool CBCGPMenuButtonEx::LoadMenuResource(UINT id) {
  CMenu loaded;
  if (loaded.LoadMenu(id) == FALSE) return false;
  menu_.DestroyMenu();
  menu_.Attach(loaded.Detach());
  const CMenu* const first = menu_.GetSubMenu(0);
  m_hMenu = first == nullptr ? nullptr : first->m_hMenu;
  return true;
}

void CBCGPMenuButtonEx::CheckItem(UINT id, UINT check) const {
  if (CMenu* menu = CMenu::FromHandle(m_hMenu)) menu->CheckMenuItem(id, MF_BYCOMMAND | check);
}

void CBCGPMenuButtonEx::AppendOneSelectedItem(UINT id) {
  selected_.AddSorted(static_cast<int>(id));
  CheckItem(id, MF_CHECKED);
}

void CBCGPMenuButtonEx::SetDefaultSelectedItem(UINT id) {
  if (m_hMenu == nullptr) return;
  selected_.clear();
  if (id == 0) {
    const CMenu* const menu = CMenu::FromHandle(m_hMenu);
    const CMenu* const below = menu == nullptr ? nullptr : menu->GetSubMenu(0);
    // An empty submenu has no first entry either.
    if (below == nullptr || below->GetMenuItemCount() == 0) return;
    id = below->GetMenuItemID(0);
  }
  AppendOneSelectedItem(id);
  SetSelectMode(true);
}

void CBCGPMenuButtonEx::SetDefaultSelectedItems(const std::vector<int>& items) {
  if (m_hMenu == nullptr) return;
  // The caller may hand the button's own selection back.
  SelectedItems fresh;
  for (const int item : items) {
    fresh.AddSorted(item);
    CheckItem(static_cast<UINT>(item), MF_CHECKED);
  }
  selected_ = std::move(fresh);
  SetSelectMode(false);
}

void CBCGPMenuButtonEx::SetDefaultSelectedItems(const CUIntArray& items) {
  std::vector<int> wanted;
  for (const UINT item : items) wanted.push_back(static_cast<int>(item));
  SetDefaultSelectedItems(wanted);
}

UINT CBCGPMenuButtonEx::GetSelectedItem() const {
  if (selected_.empty()) return 0;
  return m_nMenuResult != 0 ? m_nMenuResult : static_cast<UINT>(selected_.front());
}

void CBCGPMenuButtonEx::OnShowMenu() {
  const auto life = Watch();
  CBCGPMenuButton::OnShowMenu();
  if (!life.expired() && m_nMenuResult != 0) UpdateMenu();
}

bool CBCGPMenuButtonEx::UpdateMenu() {
  if (m_hMenu == nullptr) return false;
  if (select_mode_ == 0)
    UpdateMeunWithSingleMode();
  else
    UpdateMeunWithMultiMode();
  return true;
}

void CBCGPMenuButtonEx::UpdateMeunWithSingleMode() {
  if (!selected_.empty()) CheckItem(static_cast<UINT>(selected_.front()), MF_UNCHECKED);
  CheckItem(m_nMenuResult, MF_CHECKED);
  selected_.clear();
  selected_.AddSorted(static_cast<int>(m_nMenuResult));
}

void CBCGPMenuButtonEx::UpdateMeunWithMultiMode() {
  const CMenu* const menu = CMenu::FromHandle(m_hMenu);
  if (menu == nullptr) return;
  if (menu->GetMenuState(m_nMenuResult, MF_BYCOMMAND) == 0) {
    AppendOneSelectedItem(m_nMenuResult);
    return;
  }
  CheckItem(m_nMenuResult, MF_UNCHECKED);
  const auto found = std::find(selected_.begin(), selected_.end(), static_cast<int>(m_nMenuResult));
  if (found != selected_.end()) selected_.erase(found);
}
