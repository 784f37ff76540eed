#include "framework/windows/menu.h"

#include "tests/support/headless_desk.h"

namespace {

using Menu = lorv_test::Desk;

}  // namespace

TEST_F(Menu, HeaderExample) {
  CMenu menu;
  menu.CreatePopupMenu();
  menu.AppendMenu(MF_STRING, 57665, _T("C30"));
  desktop.AnswerMenu(57665);
  EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, 10, 10, &top), 57665);
  EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, 10, 10, &top), 0);
}

TEST_F(Menu, WithoutReturnTheCommandIsPosted) {
  CMenu menu;
  menu.CreatePopupMenu();
  menu.AppendMenu(MF_STRING, 40, _T("a"));
  desktop.AnswerMenu(40);
  EXPECT_EQ(menu.TrackPopupMenu(TPM_LEFTBUTTON, 0, 0, &top), TRUE);
  EXPECT_TRUE(top.Taken().empty());
  Run();
  EXPECT_EQ(top.Taken(), lorv_test::Notes{"command 40 0"});
}

TEST_F(Menu, ShowsColumnsSubmenusAndMarks) {
  CMenu menu;
  CMenu more;
  menu.CreatePopupMenu();
  more.CreatePopupMenu();
  more.AppendMenu(MF_STRING, 3, _T("c"));
  menu.AppendMenu(MF_STRING, 1, _T("a"));
  menu.AppendMenu(MF_STRING | MF_MENUBARBREAK, 2, _T("b"));
  menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(more.m_hMenu), _T("更多\t"));
  EXPECT_EQ(menu.CheckMenuItem(2, MF_CHECKED), static_cast<UINT>(MF_UNCHECKED));
  EXPECT_EQ(menu.CheckMenuItem(3, MF_CHECKED), 0U);
  EXPECT_EQ(menu.CheckMenuItem(9, MF_CHECKED), 0xFFFFFFFFU);
  desktop.AnswerMenu(3);
  EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, &top), 3);
  const lorv::MenuModel& shown = desktop.ShownMenus().at(0);
  ASSERT_EQ(shown.entries.size(), 3U);
  EXPECT_EQ(shown.entries[1].flags, MF_MENUBARBREAK | MF_CHECKED);
  EXPECT_EQ(shown.entries[2].submenu->entries[0].flags, MF_CHECKED);
}

TEST_F(Menu, GrayedEntriesCannotBeChosen) {
  CMenu menu;
  menu.CreatePopupMenu();
  menu.AppendMenu(MF_STRING, 1, _T("a"));
  EXPECT_EQ(menu.EnableMenuItem(1, MF_GRAYED), 0U);
  desktop.AnswerMenu(1);
  EXPECT_EQ(menu.TrackPopupMenu(TPM_RETURNCMD, 0, 0, &top), 0);
}

TEST_F(Menu, EntriesAreAskedForByPlaceOrCommand) {
  CMenu menu;
  CMenu sub;
  EXPECT_EQ(menu.AppendMenu(MF_STRING, 1, _T("a")), FALSE);
  EXPECT_EQ(menu.GetMenuItemCount(), -1);
  menu.CreatePopupMenu();
  sub.CreatePopupMenu();
  menu.AppendMenu(MF_STRING, 1, _T("a"));
  menu.AppendMenu(MF_SEPARATOR);
  menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(sub.m_hMenu), _T("s"));
  EXPECT_EQ(menu.InsertMenu(1, MF_BYPOSITION, 5, _T("between")), TRUE);
  EXPECT_EQ(menu.InsertMenu(1, MF_BYCOMMAND, 6, _T("before a")), TRUE);
  EXPECT_EQ(menu.GetMenuItemCount(), 5);
  EXPECT_EQ(menu.GetMenuItemID(0), 6U);
  EXPECT_EQ(menu.GetMenuItemID(4), 0xFFFFFFFFU);
  EXPECT_EQ(menu.GetMenuItemID(7), 0xFFFFFFFFU);
  ASSERT_NE(menu.GetSubMenu(4), nullptr);
  EXPECT_EQ(menu.GetSubMenu(4)->m_hMenu, sub.m_hMenu);
  EXPECT_EQ(menu.GetSubMenu(0), nullptr);
  CString text;
  EXPECT_EQ(menu.GetMenuString(5, text, MF_BYCOMMAND), 7);
  EXPECT_EQ(menu.DeleteMenu(0, MF_BYPOSITION), TRUE);
  EXPECT_EQ(menu.DeleteMenu(6, MF_BYCOMMAND), FALSE);
  EXPECT_EQ(menu.GetMenuState(2, MF_BYPOSITION), static_cast<UINT>(MF_SEPARATOR));
}

TEST_F(Menu, CannotContainItself) {
  CMenu outer;
  CMenu inner;
  outer.CreatePopupMenu();
  inner.CreatePopupMenu();
  EXPECT_EQ(outer.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.m_hMenu), _T("i")), TRUE);
  EXPECT_EQ(inner.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(outer.m_hMenu), _T("o")), FALSE);
  EXPECT_EQ(inner.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.m_hMenu), _T("i")), FALSE);
}

TEST_F(Menu, CommandsOfSubmenusAreFoundAndDeleted) {
  CMenu outer;
  CMenu inner;
  outer.CreatePopupMenu();
  inner.CreatePopupMenu();
  for (const UINT id : {3U, 4U, 5U}) inner.AppendMenu(MF_STRING, id, _T("inner"));
  outer.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.m_hMenu), _T("i"));
  outer.AppendMenu(MF_STRING, 9, _T("outer"));
  CString text;
  EXPECT_EQ(outer.GetMenuString(4, text, MF_BYCOMMAND), 5);
  EXPECT_EQ(outer.DeleteMenu(4, MF_BYCOMMAND), TRUE);
  EXPECT_EQ(outer.DeleteMenu(4, MF_BYCOMMAND), FALSE);
  EXPECT_EQ(inner.GetMenuItemCount(), 2);
  EXPECT_EQ(inner.GetMenuItemID(1), 5U);
  EXPECT_EQ(outer.GetMenuItemCount(), 2);
  // By position only this menu's own entries count.
  EXPECT_EQ(outer.DeleteMenu(2, MF_BYPOSITION), FALSE);
}

TEST_F(Menu, ADestroyedSubmenuIsStillShownAndNotSearched) {
  CMenu outer;
  outer.CreatePopupMenu();
  {
    CMenu inner;
    inner.CreatePopupMenu();
    inner.AppendMenu(MF_STRING, 3, _T("inner"));
    outer.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.m_hMenu), _T("i"));
  }
  CString text(_T("before"));
  EXPECT_EQ(outer.GetMenuString(3, text, MF_BYCOMMAND), 0);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(outer.DeleteMenu(3, MF_BYCOMMAND), FALSE);
  EXPECT_EQ(outer.GetSubMenu(0), nullptr);
  desktop.AnswerMenu(3);
  EXPECT_EQ(outer.TrackPopupMenu(TPM_RETURNCMD, 0, 0, &top), 3);
}
