#pragma once

#include <vector>

#include "containers/ox_array.h"
#include "containers/sort_array.h"
#include "framework/collections/string_array.h"
#include "framework/windows/menu.h"
#include "gridcore/buttons/menu_button.h"

// A menu button that keeps what was chosen: one entry of its menu (single mode) or several (multi mode). What
// is selected is checked in the menu.
//
// Units: entries are named by their commands; the selection ascends and has each once.
// Edges: without a menu nothing can be selected. A command that the menu does not have is selected without a
//   check. In multi mode every entry with any state counts as checked, one that is grey or begins a column,
//   too. SetDefaultSelectedItem leaves the checks of an earlier selection standing.
// Result: GetSelectedItem gives 0 where nothing is selected, else the last choice, or the least command while
//   nothing was chosen yet.
// A menu that it loaded is the button's; one that was set is the caller's. It looks pressed while its menu is
// up. One thread: that of the user interface.
//
//   button.SetMenuHandle(menu.m_hMenu);  button.SetDefaultSelectedItem(40);  button.GetSelectedItem()  gives
//   40
class COMM_LORV_API CBCGPMenuButtonEx : public CBCGPMenuButton {
  DECLARE_DYNCREATE(CBCGPMenuButtonEx)
 public:
  using SelectedItems = TSortArray<int, SortCompare<int, int, __int64>, OxArray<int, OxVector<int>>>;

  CBCGPMenuButtonEx();

  // The first submenu of the program's menu of that number is shown from now on, or none where it has none.
  // False, and nothing changes: there is no such menu.
  bool LoadMenuResource(UINT id);
  void SetMenuHandle(HMENU menu) { m_hMenu = menu; }
  void SetSelectMode(bool single) { select_mode_ = single ? 0 : 1; }

  // Selects that entry alone, in single mode; 0: the first entry of the first submenu within the menu.
  void SetDefaultSelectedItem(UINT id);
  // Selects these, in multi mode.
  void SetDefaultSelectedItems(const std::vector<int>& items);
  void SetDefaultSelectedItems(const CUIntArray& items);
  UINT GetSelectedItem() const;
  const SelectedItems& GetSelectedItems() const { return selected_; }

  void OnShowMenu() override;

 private:
  void AppendOneSelectedItem(UINT id);
  void CheckItem(UINT id, UINT check) const;
  bool UpdateMenu();
  void UpdateMeunWithSingleMode();
  void UpdateMeunWithMultiMode();

  int select_mode_ = 0;
  CMenu menu_;
  SelectedItems selected_;
};
