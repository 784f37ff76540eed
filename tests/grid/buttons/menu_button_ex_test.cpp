#include "grid/buttons/menu_button_ex.h"

#include <random>
#include <set>

#include "framework/windows/menu_resources.h"
#include "tests/support/headless_desk.h"

namespace {

class MenuButtonEx : public lorv_test::Desk {
 protected:
  MenuButtonEx() {
    button.Create(_T("grades"), WS_CHILD | WS_VISIBLE, CRect(10, 10, 110, 34), &top, 7);
    below.CreatePopupMenu();
    below.AppendMenu(MF_STRING, 50, _T("a"));
    below.AppendMenu(MF_STRING, 51, _T("b"));
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(below.m_hMenu), _T("more"));
    for (const UINT id : {40U, 41U, 42U}) menu.AppendMenu(MF_STRING, id, _T("C"));
    button.SetMenuHandle(menu.m_hMenu);
  }
  void Select(UINT command) {
    desktop.AnswerMenu(command);
    button.SendMessage(BM_CLICK);
  }
  std::vector<int> Selected() const { return button.GetSelectedItems(); }
  bool IsChecked(UINT id) const { return (menu.GetMenuState(id, MF_BYCOMMAND) & MF_CHECKED) != 0; }
  using Items = std::vector<int>;

  CMenu below;
  CMenu menu;
  CBCGPMenuButtonEx button;
};

lorv::MenuEntry Entry(UINT id, LPCTSTR text) {
  lorv::MenuEntry entry;
  entry.id = id;
  entry.text = text;
  return entry;
}

}  // namespace

TEST_F(MenuButtonEx, HeaderExample) {
  button.SetDefaultSelectedItem(40);
  EXPECT_EQ(button.GetSelectedItem(), 40U);
}

TEST_F(MenuButtonEx, AnEmptySelectionGivesNothing) {
  EXPECT_EQ(button.GetSelectedItem(), 0U);
  EXPECT_TRUE(Selected().empty());
}

TEST_F(MenuButtonEx, SingleModeKeepsTheLastChoice) {
  Select(40);
  EXPECT_EQ(Selected(), Items{40});
  EXPECT_TRUE(IsChecked(40));
  Select(41);
  EXPECT_EQ(Selected(), Items{41});
  EXPECT_FALSE(IsChecked(40));
  EXPECT_TRUE(IsChecked(41));
  Select(41);
  EXPECT_EQ(Selected(), Items{41});
  EXPECT_TRUE(IsChecked(41));
  EXPECT_EQ(button.GetSelectedItem(), 41U);
}

TEST_F(MenuButtonEx, MultiModeTogglesWhatIsChosen) {
  button.SetSelectMode(false);
  Select(42);
  Select(40);
  EXPECT_EQ(Selected(), (Items{40, 42}));
  EXPECT_TRUE(IsChecked(40));
  Select(40);
  EXPECT_EQ(Selected(), Items{42});
  EXPECT_FALSE(IsChecked(40));
  EXPECT_TRUE(IsChecked(42));
}

TEST_F(MenuButtonEx, AnyStateCountsAsChecked) {
  // An entry that begins a column can be chosen and is never unmarked.
  menu.AppendMenu(MF_STRING | MF_MENUBARBREAK, 60, _T("column"));
  button.SetSelectMode(false);
  Select(60);
  EXPECT_TRUE(Selected().empty());
  EXPECT_FALSE(IsChecked(60));
  const std::vector<int> given = {60};
  button.SetDefaultSelectedItems(given);
  Select(60);
  EXPECT_TRUE(Selected().empty());
  // An entry that went grey while the menu was up.
  desktop.WhenMenu([this] { menu.EnableMenuItem(41, MF_GRAYED); });
  Select(41);
  EXPECT_TRUE(Selected().empty());
}

TEST_F(MenuButtonEx, LeavingTheMenuKeepsTheSelection) {
  Select(40);
  Select(0);
  EXPECT_EQ(Selected(), Items{40});
  EXPECT_TRUE(IsChecked(40));
  // The last result is 0 then: the first of the selection counts.
  EXPECT_EQ(button.GetSelectedItem(), 40U);
}

TEST_F(MenuButtonEx, TheLastChoiceIsTheSelectedItem) {
  button.SetSelectMode(false);
  Select(40);
  Select(42);
  EXPECT_EQ(button.GetSelectedItem(), 42U);
  Select(0);
  EXPECT_EQ(button.GetSelectedItem(), 40U);
  Select(40);
  // What was taken out last still is the last result.
  EXPECT_EQ(Selected(), Items{42});
  EXPECT_EQ(button.GetSelectedItem(), 40U);
}

TEST_F(MenuButtonEx, DefaultItemLeavesOldChecks) {
  button.SetDefaultSelectedItem(40);
  button.SetDefaultSelectedItem(41);
  EXPECT_EQ(Selected(), Items{41});
  EXPECT_TRUE(IsChecked(40));
  EXPECT_TRUE(IsChecked(41));
}

TEST_F(MenuButtonEx, DefaultItemMakesItSingle) {
  button.SetSelectMode(false);
  button.SetDefaultSelectedItem(40);
  Select(41);
  EXPECT_EQ(Selected(), Items{41});
}

TEST_F(MenuButtonEx, NumberNoughtIsTheFirstEntryOfTheFirstSubmenu) {
  button.SetDefaultSelectedItem(0);
  EXPECT_EQ(Selected(), Items{50});
  EXPECT_TRUE((below.GetMenuState(50, MF_BYCOMMAND) & MF_CHECKED) != 0);
}

TEST_F(MenuButtonEx, NumberNoughtWithoutSubmenuEndsTheStep) {
  button.SetMenuHandle(below.m_hMenu);
  button.SetDefaultSelectedItem(51);
  button.SetSelectMode(false);
  button.SetDefaultSelectedItem(0);
  EXPECT_TRUE(Selected().empty());
  // The mode is as it was.
  Select(50);
  EXPECT_EQ(Selected(), Items{50});
  Select(50);
  EXPECT_TRUE(Selected().empty());
}

TEST_F(MenuButtonEx, DefaultItemsMakeItMulti) {
  const std::vector<int> wanted = {42, 40, 42};
  button.SetDefaultSelectedItems(wanted);
  EXPECT_EQ(Selected(), (Items{40, 42}));
  EXPECT_TRUE(IsChecked(40));
  Select(41);
  EXPECT_EQ(Selected(), (Items{40, 41, 42}));
  button.SetDefaultSelectedItems(button.GetSelectedItems());
  EXPECT_EQ(Selected(), (Items{40, 41, 42}));
  CUIntArray numbers;
  numbers.Add(41);
  button.SetDefaultSelectedItems(numbers);
  EXPECT_EQ(Selected(), Items{41});
}

TEST_F(MenuButtonEx, WithoutMenuNothingIsSelected) {
  button.SetDefaultSelectedItem(40);
  button.SetMenuHandle(nullptr);
  button.SetDefaultSelectedItem(41);
  button.SetDefaultSelectedItems(std::vector<int>{42});
  EXPECT_EQ(Selected(), Items{40});
  Select(41);
  EXPECT_EQ(Selected(), Items{40});
}

TEST_F(MenuButtonEx, LoadsItsMenuByNumber) {
  auto grades = std::make_shared<lorv::MenuModel>();
  grades->entries = {Entry(70, _T("C30")), Entry(71, _T("C35"))};
  lorv::MenuModel whole;
  whole.entries = {Entry(0, _T("grades"))};
  whole.entries[0].submenu = grades;
  lorv::AddMenuResource(330, whole);
  ASSERT_TRUE(button.LoadMenuResource(330));
  Select(71);
  EXPECT_EQ(Selected(), Items{71});
  const HMENU shown = button.m_hMenu;
  EXPECT_FALSE(button.LoadMenuResource(331));
  EXPECT_EQ(button.m_hMenu, shown);
  // A menu without submenus has nothing to show.
  lorv::MenuModel flat;
  flat.entries = {Entry(80, _T("C30"))};
  lorv::AddMenuResource(332, flat);
  ASSERT_TRUE(button.LoadMenuResource(332));
  EXPECT_EQ(button.m_hMenu, nullptr);
  EXPECT_EQ(CMenu::FromHandle(shown), nullptr);
}

TEST_F(MenuButtonEx, OwnsTheMenuThatItLoaded) {
  lorv::MenuModel whole;
  whole.entries = {Entry(0, _T("grades"))};
  whole.entries[0].submenu = std::make_shared<lorv::MenuModel>();
  lorv::AddMenuResource(333, whole);
  HMENU shown = nullptr;
  {
    CBCGPMenuButtonEx brief;
    ASSERT_TRUE(brief.LoadMenuResource(333));
    shown = brief.m_hMenu;
    ASSERT_NE(CMenu::FromHandle(shown), nullptr);
  }
  EXPECT_EQ(CMenu::FromHandle(shown), nullptr);
  EXPECT_NE(CMenu::FromHandle(menu.m_hMenu), nullptr);
}

TEST_F(MenuButtonEx, RandomChoicesFollowAPlainModel) {
  std::mt19937 random(11);
  bool single = true;
  std::set<int> model;
  for (int round = 0; round < 2000; ++round) {
    const int id = 40 + static_cast<int>(random() % 3);
    if (random() % 20 == 0) {
      // The checks are taken off as well: the model has none beside the selection.
      for (const int item : model) menu.CheckMenuItem(static_cast<UINT>(item), MF_UNCHECKED);
      single = !single;
      model = {id};
      if (single)
        button.SetDefaultSelectedItem(static_cast<UINT>(id));
      else
        button.SetDefaultSelectedItems(std::vector<int>{id});
    } else {
      Select(static_cast<UINT>(id));
      if (single)
        model = {id};
      else if (model.erase(id) == 0)
        model.insert(id);
    }
    ASSERT_EQ(Selected(), Items(model.begin(), model.end())) << round;
    for (const int item : {40, 41, 42})
      ASSERT_EQ(IsChecked(static_cast<UINT>(item)), model.count(item) != 0) << round;
  }
}
