#include "framework/windows/menu_resources.h"

#include "framework/windows/menu.h"
#include "tests/support/headless_desk.h"

namespace {

lorv::MenuEntry Entry(UINT id, LPCTSTR text) {
  lorv::MenuEntry entry;
  entry.id = id;
  entry.text = text;
  return entry;
}

class MenuResources : public lorv_test::Desk {
 protected:
  MenuResources() {
    auto below = std::make_shared<lorv::MenuModel>();
    below->entries = {Entry(40, _T("C30")), Entry(41, _T("C35"))};
    lorv::MenuModel menu;
    menu.entries = {Entry(0, _T("grades")), Entry(42, _T("none"))};
    menu.entries[0].submenu = below;
    lorv::AddMenuResource(310, menu);
  }
};

}  // namespace

TEST_F(MenuResources, LoadsACopyWithHandlesOfItsOwn) {
  CMenu menu;
  CMenu other;
  ASSERT_TRUE(menu.LoadMenu(310));
  ASSERT_TRUE(other.LoadMenu(310));
  ASSERT_NE(menu.GetSubMenu(0), nullptr);
  EXPECT_EQ(menu.GetSubMenu(0)->GetMenuItemID(1), 41U);
  EXPECT_EQ(menu.GetSubMenu(1), nullptr);
  menu.CheckMenuItem(41, MF_CHECKED);
  EXPECT_EQ(menu.GetSubMenu(0)->GetMenuState(41, MF_BYCOMMAND), static_cast<UINT>(MF_CHECKED));
  EXPECT_EQ(other.GetMenuState(41, MF_BYCOMMAND), 0U);
}

TEST_F(MenuResources, UnknownNumbersLeaveTheObjectWithoutMenu) {
  CMenu menu;
  for (const UINT number : {0U, 311U, 0xFFFFU, 0x10000U, 310U + 0x10000U}) {
    EXPECT_FALSE(menu.LoadMenu(number)) << number;
    EXPECT_EQ(menu.m_hMenu, nullptr);
  }
  ASSERT_TRUE(menu.LoadMenu(310));
  EXPECT_FALSE(menu.LoadMenu(310));
}

TEST_F(MenuResources, SubmenusGoWithTheMenu) {
  CMenu menu;
  ASSERT_TRUE(menu.LoadMenu(310));
  const HMENU below = menu.GetSubMenu(0)->m_hMenu;
  EXPECT_NE(CMenu::FromHandle(below), nullptr);
  menu.DestroyMenu();
  EXPECT_EQ(CMenu::FromHandle(below), nullptr);
}
