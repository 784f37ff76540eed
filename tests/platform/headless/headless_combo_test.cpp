#include "platform/headless/controls/headless_combo.h"

#include "tests/support/headless_desk.h"

namespace {

using lorv_test::Notes;

// Codes: selection 1, drop 7, close 8, taken 9, cancelled 10, edit change 5, edit update 6, focus 3, 4.
class HeadlessCombo : public lorv_test::Desk {
 protected:
  HeadlessCombo() {
    list.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, CRect(0, 0, 100, 20), &top, 1);
    typed.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWN, CRect(0, 30, 100, 50), &top, 2);
    for (const LPCTSTR text : {_T("C20"), _T("C25"), _T("C30")}) {
      list.AddString(text);
      typed.AddString(text);
    }
    Run();
    top.Taken();
  }
  Notes After(std::initializer_list<int> keys) {
    for (const int key : keys) desktop.Press(key);
    Run();
    return top.Taken();
  }
  CComboBox list;
  CComboBox typed;
};

}  // namespace

TEST_F(HeadlessCombo, AnswersByTheNumbersOfTheMessages) {
  EXPECT_EQ(list.GetCount(), 3);
  EXPECT_EQ(list.GetCurSel(), CB_ERR);
  EXPECT_EQ(list.SetCurSel(1), 1);
  EXPECT_EQ(TextOf(list), CString(_T("C25")));
  EXPECT_EQ(list.SetCurSel(7), CB_ERR);
  EXPECT_EQ(TextOf(list), CString());
  EXPECT_EQ(list.SelectString(-1, _T("c3")), 2);
  CString text;
  list.GetLBText(0, text);
  EXPECT_EQ(text, CString(_T("C20")));
  list.SetItemData(0, 5);
  EXPECT_EQ(list.GetItemData(0), 5U);
  EXPECT_EQ(list.DeleteString(0), 2);
  EXPECT_EQ(list.GetCurSel(), 1);
  EXPECT_TRUE(top.Taken().empty());
}

TEST_F(HeadlessCombo, PlaceWithoutATargetIsNotWritten) {
  RECT place = {};
  EXPECT_EQ(list.SendMessage(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&place)), TRUE);
  EXPECT_EQ(place.right - place.left, 100);
  EXPECT_EQ(list.SendMessage(CB_GETDROPPEDCONTROLRECT, 0, 0), TRUE);
}

TEST_F(HeadlessCombo, ArrowsOfAClosedListChoose) {
  list.SetFocus();
  EXPECT_EQ(top.Taken(), Notes{"command 1 3"});
  EXPECT_EQ(After({VK_DOWN}), (Notes{"command 1 9", "command 1 1"}));
  EXPECT_EQ(list.GetCurSel(), 0);
  EXPECT_EQ(After({VK_UP}), Notes{});
}

TEST_F(HeadlessCombo, DroppedListIsTakenByReturnAndLeftByEscape) {
  list.SetCurSel(0);
  list.SetFocus();
  top.Taken();
  EXPECT_EQ(After({VK_F4}), Notes{"command 1 7"});
  EXPECT_NE(list.GetDroppedState(), 0);
  EXPECT_EQ(After({VK_DOWN, VK_RETURN}), (Notes{"command 1 1", "command 1 9", "command 1 8"}));
  EXPECT_EQ(list.GetCurSel(), 1);
  EXPECT_EQ(After({VK_F4, VK_DOWN, VK_ESCAPE}),
            (Notes{"command 1 7", "command 1 1", "command 1 10", "command 1 8"}));
  EXPECT_EQ(list.GetCurSel(), 1);
}

TEST_F(HeadlessCombo, FocusGoesToTheEditInside) {
  typed.SetFocus();
  ASSERT_NE(CWnd::GetFocus(), nullptr);
  EXPECT_EQ(CWnd::GetFocus()->GetParent(), &typed);
  EXPECT_EQ(top.Taken(), Notes{"command 2 3"});
  desktop.Type(_T("x"));
  Run();
  EXPECT_EQ(top.Taken(), (Notes{"command 2 6", "command 2 5"}));
  EXPECT_EQ(TextOf(typed), CString(_T("x")));
  EXPECT_EQ(typed.GetCurSel(), CB_ERR);
}

TEST_F(HeadlessCombo, ChoosingByProgramFillsTheEditSilently) {
  typed.SetFocus();
  top.Taken();
  typed.SetCurSel(2);
  EXPECT_EQ(TextOf(typed), CString(_T("C30")));
  EXPECT_EQ(typed.GetEditSel(), 0x00030000U);
  EXPECT_TRUE(top.Taken().empty());
  typed.SetWindowText(_T("own"));
  EXPECT_EQ(top.Taken(), (Notes{"command 2 6", "command 2 5"}));
  EXPECT_EQ(TextOf(typed), CString(_T("own")));
}

TEST_F(HeadlessCombo, KeysOfTheEditReachItsParentsFirst) {
  class Guard : public CComboBox {
   public:
    int offered = 0;
    BOOL PreTranslateMessage(MSG* message) override {
      offered += static_cast<int>(message->message == WM_KEYDOWN);
      return FALSE;
    }
  };
  Guard guard;
  guard.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWN, CRect(0, 60, 100, 80), &top, 3);
  guard.SetFocus();
  desktop.Press(VK_RETURN);
  Run();
  EXPECT_EQ(guard.offered, 1);
}

TEST_F(HeadlessCombo, LeavingClosesTheList) {
  list.SetFocus();
  list.ShowDropDown();
  top.Taken();
  typed.SetFocus();
  EXPECT_EQ(top.Taken(), (Notes{"command 1 10", "command 1 8", "command 1 4", "command 2 3"}));
}

TEST_F(HeadlessCombo, DropsOnceHoweverOftenItIsAskedMeanwhile) {
  class Asking : public CWnd {
   public:
    CComboBox* list = nullptr;
    bool destroys = false;
    int reported = 0;

   protected:
    BOOL OnCommand(WPARAM w, LPARAM l) override {
      if (HIWORD(w) != CBN_DROPDOWN) return CWnd::OnCommand(w, l);
      ++reported;
      if (destroys) return list->DestroyWindow();
      list->ShowDropDown();
      return TRUE;
    }
  };
  Asking parent;
  parent.Create(nullptr, _T("asking"), WS_OVERLAPPEDWINDOW, CRect(0, 0, 200, 200), nullptr, 0);
  CComboBox inner;
  inner.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, CRect(0, 0, 100, 20), &parent, 4);
  parent.list = &inner;
  inner.ShowDropDown();
  EXPECT_EQ(parent.reported, 1);
  EXPECT_TRUE(inner.GetDroppedState());
  inner.ShowDropDown(FALSE);
  parent.destroys = true;
  inner.ShowDropDown();
  EXPECT_EQ(parent.reported, 2);
  EXPECT_EQ(inner.GetSafeHwnd(), nullptr);
}
