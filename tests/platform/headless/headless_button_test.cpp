#include "platform/headless/controls/headless_button.h"

#include "tests/support/headless_desk.h"

namespace {

using lorv_test::Notes;

class HeadlessButton : public lorv_test::Desk {
 protected:
  void Make(CButton& button, DWORD style, UINT id, int y) {
    button.Create(_T("b"), WS_CHILD | WS_VISIBLE | style, CRect(0, y, 80, y + 20), &top, id);
    Run();
    top.Taken();
  }
};

}  // namespace

TEST_F(HeadlessButton, IsClickedByMouseKeyAndMessage) {
  CButton button;
  Make(button, BS_PUSHBUTTON, 4, 0);
  desktop.Click(On(button, 5, 5));
  Run();
  EXPECT_EQ(top.Taken(), Notes{"command 4 0"});
  EXPECT_EQ(CWnd::GetFocus(), &button);
  desktop.Press(VK_SPACE);
  Run();
  EXPECT_EQ(top.Taken(), Notes{"command 4 0"});
  button.SendMessage(BM_CLICK);
  EXPECT_EQ(top.Taken(), Notes{"command 4 0"});
}

TEST_F(HeadlessButton, LeavingBeforeTheReleaseIsNoClick) {
  CButton button;
  Make(button, BS_PUSHBUTTON, 4, 0);
  desktop.MoveMouse(On(button, 5, 5));
  desktop.MouseDown();
  Run();
  EXPECT_NE(button.GetState() & BST_PUSHED, 0U);
  desktop.MoveMouse(On(button, 5, 50));
  Run();
  EXPECT_EQ(button.GetState() & BST_PUSHED, 0U);
  desktop.MouseUp();
  Run();
  EXPECT_TRUE(top.Taken().empty());
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(HeadlessButton, GroupBoxTakesNoPresses) {
  CButton box;
  Make(box, BS_GROUPBOX, 4, 0);
  desktop.Click(On(box, 5, 5));
  Run();
  EXPECT_EQ(top.Taken(), Notes());
  EXPECT_NE(CWnd::GetFocus(), &box);
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(HeadlessButton, DisabledTakesNothing) {
  CButton button;
  Make(button, BS_PUSHBUTTON, 4, 0);
  button.EnableWindow(FALSE);
  desktop.Click(On(button, 5, 5));
  Run();
  EXPECT_TRUE(top.Taken().empty());
}

TEST_F(HeadlessButton, ChecksChangeByThemselves) {
  CButton check;
  CButton three;
  CButton plain;
  Make(check, BS_AUTOCHECKBOX, 4, 0);
  Make(three, BS_AUTO3STATE, 5, 20);
  Make(plain, BS_CHECKBOX, 6, 40);
  for (CButton* const button : {&check, &three, &plain})
    for (int i = 0; i < 2; ++i) button->SendMessage(BM_CLICK);
  EXPECT_EQ(check.GetCheck(), static_cast<int>(BST_UNCHECKED));
  EXPECT_EQ(three.GetCheck(), static_cast<int>(BST_INDETERMINATE));
  EXPECT_EQ(plain.GetCheck(), static_cast<int>(BST_UNCHECKED));
  plain.SetCheck(1);
  EXPECT_EQ(plain.GetCheck(), 1);
}

TEST_F(HeadlessButton, RadiosClearTheirGroupOnly) {
  CButton a;
  CButton b;
  CButton c;
  Make(a, BS_AUTORADIOBUTTON | WS_GROUP, 4, 0);
  Make(b, BS_AUTORADIOBUTTON, 5, 20);
  Make(c, BS_AUTORADIOBUTTON | WS_GROUP, 6, 40);
  a.SendMessage(BM_CLICK);
  c.SendMessage(BM_CLICK);
  b.SendMessage(BM_CLICK);
  EXPECT_EQ(a.GetCheck(), 0);
  EXPECT_EQ(b.GetCheck(), 1);
  EXPECT_EQ(c.GetCheck(), 1);
}

TEST_F(HeadlessButton, SaysToDialogsWhatItIs) {
  CButton button;
  CStatic label;
  Make(button, BS_DEFPUSHBUTTON, 4, 0);
  label.Create(_T("l"), WS_CHILD | WS_VISIBLE, CRect(0, 20, 50, 40), &top);
  EXPECT_EQ(button.SendMessage(WM_GETDLGCODE), static_cast<LRESULT>(DLGC_BUTTON | DLGC_DEFPUSHBUTTON));
  button.SetButtonStyle(BS_PUSHBUTTON);
  EXPECT_EQ(button.SendMessage(WM_GETDLGCODE), static_cast<LRESULT>(DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON));
  EXPECT_EQ(label.SendMessage(WM_GETDLGCODE), static_cast<LRESULT>(DLGC_STATIC));
}
