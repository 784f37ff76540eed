#include "gridcore/buttons/menu_button.h"

#include "framework/windows/menu.h"
#include "tests/support/headless_desk.h"

namespace {

class MenuButton : public lorv_test::Desk {
 protected:
  MenuButton() : button(std::make_unique<CBCGPMenuButton>()) {
    button->Create(_T("grades"), WS_CHILD | WS_VISIBLE, CRect(10, 10, 110, 34), &top, 7);
    menu.CreatePopupMenu();
    menu.AppendMenu(MF_STRING, 40, _T("C30"));
    menu.AppendMenu(MF_STRING, 41, _T("C35"));
    menu.AppendMenu(MF_STRING | MF_GRAYED, 42, _T("C40"));
    button->m_hMenu = menu.m_hMenu;
    Run();
    top.Taken();
  }

  CMenu menu;
  std::unique_ptr<CBCGPMenuButton> button;
};

}  // namespace

TEST_F(MenuButton, HeaderExample) {
  desktop.AnswerMenu(40);
  button->OnShowMenu();
  EXPECT_EQ(button->m_nMenuResult, 40U);
}

TEST_F(MenuButton, ClickShowsTheMenuAndReportsTheParent) {
  desktop.AnswerMenu(41);
  desktop.Click(On(*button, 5, 5));
  Run();
  EXPECT_EQ(button->m_nMenuResult, 41U);
  EXPECT_EQ(top.Taken(), lorv_test::Notes{"command 7 0"});
  ASSERT_EQ(desktop.ShownMenus().size(), 1U);
  EXPECT_EQ(desktop.ShownMenus()[0].entries.size(), 3U);
}

TEST_F(MenuButton, KeysAndTheClickMessageShowIt) {
  button->SetFocus();
  for (const int key : {VK_SPACE, VK_RETURN, VK_DOWN, VK_F4}) {
    desktop.AnswerMenu(40);
    desktop.Press(key);
    Run();
    EXPECT_EQ(top.Taken(), lorv_test::Notes{"command 7 0"}) << key;
  }
  desktop.AnswerMenu(40);
  button->SendMessage(BM_CLICK);
  EXPECT_EQ(top.Taken(), lorv_test::Notes{"command 7 0"});
  desktop.Press(VK_UP);
  Run();
  EXPECT_EQ(desktop.ShownMenus().size(), 5U);
}

TEST_F(MenuButton, LeftWithoutChoiceTheResultIsNothing) {
  desktop.AnswerMenu(40);
  button->OnShowMenu();
  button->SendMessage(BM_CLICK);
  EXPECT_EQ(button->m_nMenuResult, 0U);
  // Grey entries cannot be chosen.
  desktop.AnswerMenu(42);
  button->SendMessage(BM_CLICK);
  EXPECT_EQ(button->m_nMenuResult, 0U);
  EXPECT_TRUE(top.Taken().empty());
}

TEST_F(MenuButton, WithoutMenuNothingIsShown) {
  button->m_hMenu = nullptr;
  button->SendMessage(BM_CLICK);
  button->m_hMenu = menu.m_hMenu;
  menu.DestroyMenu();
  button->SendMessage(BM_CLICK);
  EXPECT_TRUE(desktop.ShownMenus().empty());
  EXPECT_EQ(button->m_nMenuResult, 0U);
  EXPECT_TRUE(top.Taken().empty());
}

TEST_F(MenuButton, DisabledItShowsNothing) {
  button->EnableWindow(FALSE);
  desktop.AnswerMenu(40);
  button->SendMessage(BM_CLICK);
  EXPECT_TRUE(desktop.ShownMenus().empty());
}

TEST_F(MenuButton, MayGoWhileItsMenuIsUp) {
  desktop.WhenMenu([this] { button->DestroyWindow(); });
  desktop.AnswerMenu(40);
  button->SendMessage(BM_CLICK);
  EXPECT_EQ(button->m_hWnd, nullptr);
  EXPECT_TRUE(top.Taken().empty());

  button = std::make_unique<CBCGPMenuButton>();
  button->Create(_T(""), WS_CHILD | WS_VISIBLE, CRect(10, 10, 110, 34), &top, 7);
  button->m_hMenu = menu.m_hMenu;
  desktop.WhenMenu([this] { button.reset(); });
  desktop.AnswerMenu(40);
  button->SendMessage(BM_CLICK);
  EXPECT_EQ(button, nullptr);
  Run();
}

TEST_F(MenuButton, IsNotShownTwiceAtATime) {
  desktop.WhenMenu([this] { button->SendMessage(BM_CLICK); });
  desktop.AnswerMenu(40);
  button->SendMessage(BM_CLICK);
  EXPECT_EQ(desktop.ShownMenus().size(), 1U);
  EXPECT_EQ(button->m_nMenuResult, 40U);
}

TEST_F(MenuButton, StandsInItsTree) {
  EXPECT_TRUE(button->IsKindOf(RUNTIME_CLASS(CBCGPButton)));
  EXPECT_TRUE(button->IsKindOf(RUNTIME_CLASS(CButton)));
  EXPECT_TRUE(button->IsKindOf(RUNTIME_CLASS(CWnd)));
}
