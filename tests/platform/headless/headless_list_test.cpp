#include "platform/headless/controls/headless_list.h"

#include "tests/support/headless_desk.h"

namespace {

using lorv_test::Notes;

class HeadlessList : public lorv_test::Desk {
 protected:
  HeadlessList() {
    list.Create(WS_CHILD | WS_VISIBLE | LBS_NOTIFY, CRect(0, 0, 100, 48), &top, 5002);
    for (const LPCTSTR text : {_T("a.xls"), _T("b.xls"), _T("C.xls"), _T("d.xls")}) list.AddString(text);
    list.SetFocus();
    Run();
    top.Taken();
  }
  CListBox list;
};

}  // namespace

TEST_F(HeadlessList, AnswersByTheNumbersOfTheMessages) {
  EXPECT_EQ(list.GetCount(), 4);
  EXPECT_EQ(list.GetCurSel(), LB_ERR);
  EXPECT_EQ(list.InsertString(1, _T("x")), 1);
  EXPECT_EQ(list.InsertString(9, _T("x")), LB_ERR);
  EXPECT_EQ(list.InsertString(-1, _T("end")), 5);
  EXPECT_EQ(list.FindStringExact(-1, _T("c.XLS")), 3);
  EXPECT_EQ(list.FindString(3, _T("c")), 3);
  EXPECT_EQ(list.FindString(-1, _T("q")), LB_ERR);
  CString text;
  list.GetText(3, text);
  EXPECT_EQ(text, CString(_T("C.xls")));
  list.GetText(33, text);
  EXPECT_EQ(text, CString());
  EXPECT_EQ(list.GetTextLen(33), LB_ERR);
  EXPECT_EQ(list.SetItemData(2, 77), 0);
  EXPECT_EQ(list.GetItemData(2), 77U);
  EXPECT_EQ(list.DeleteString(0), 5);
  EXPECT_EQ(list.GetItemData(1), 77U);
  list.ResetContent();
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_TRUE(top.Taken().empty());
}

TEST_F(HeadlessList, KeysChooseAndReport) {
  desktop.Press(VK_DOWN);
  desktop.Press(VK_DOWN);
  Run();
  EXPECT_EQ(list.GetCurSel(), 1);
  EXPECT_EQ(top.Taken(), (Notes{"command 5002 1", "command 5002 1"}));
  desktop.Press(VK_END);
  Run();
  EXPECT_EQ(list.GetCurSel(), 3);
  EXPECT_EQ(list.GetTopIndex(), 1);
  desktop.Press(VK_DOWN);
  desktop.Press(VK_HOME);
  Run();
  EXPECT_EQ(list.GetCurSel(), 0);
  EXPECT_EQ(top.Taken(), (Notes{"command 5002 1", "command 5002 1"}));
}

TEST_F(HeadlessList, ClicksChooseWhatTheyHit) {
  list.SetTopIndex(1);
  desktop.Click(On(list, 5, 20));
  Run();
  EXPECT_EQ(list.GetCurSel(), 2);
  EXPECT_EQ(top.Taken(), Notes{"command 5002 1"});
  desktop.DoubleClick(On(list, 5, 20));
  Run();
  EXPECT_EQ(top.Taken(), (Notes{"command 5002 1", "command 5002 2"}));
}

TEST_F(HeadlessList, ReportsWhereItsRowsAre) {
  list.SetTopIndex(1);
  RECT row = {};
  EXPECT_EQ(list.SendMessage(LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&row)), 1);
  EXPECT_EQ(CRect(row), CRect(0, 16, 100, 32));
  EXPECT_EQ(list.SendMessage(LB_GETITEMRECT, 4, reinterpret_cast<LPARAM>(&row)), LB_ERR);
  EXPECT_EQ(list.SendMessage(LB_ITEMFROMPOINT, 0, MAKELPARAM(5, 20)), MAKELONG(2, 0));
  EXPECT_EQ(list.SendMessage(LB_ITEMFROMPOINT, 0, MAKELPARAM(5, 200)), MAKELONG(3, 1));
}

TEST_F(HeadlessList, CharactersLeadToTheNextRowThatBeginsSo) {
  list.SendMessage(WM_CHAR, 'c', 0);
  EXPECT_EQ(list.GetCurSel(), 2);
  list.SendMessage(WM_CHAR, 'q', 0);
  EXPECT_EQ(list.GetCurSel(), 2);
  EXPECT_EQ(top.Taken(), Notes{"command 5002 1"});
}

TEST_F(HeadlessList, WheelScrollsThreeRowsANotch) {
  list.AddString(_T("e.xls"));
  list.AddString(_T("f.xls"));
  list.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), 0);
  EXPECT_EQ(list.GetTopIndex(), 3);
  list.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 40), 0);
  EXPECT_EQ(list.GetTopIndex(), 2);
  list.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 1200), 0);
  EXPECT_EQ(list.GetTopIndex(), 0);
}

TEST_F(HeadlessList, ChoosingByProgramIsNotReported) {
  EXPECT_EQ(list.SetCurSel(2), 2);
  EXPECT_EQ(list.SetCurSel(-1), -1);
  EXPECT_EQ(list.SelectString(-1, _T("d")), 3);
  EXPECT_EQ(list.GetCurSel(), 3);
  EXPECT_TRUE(top.Taken().empty());
}

TEST_F(HeadlessList, SortsAndChoosesSeveral) {
  CListBox several;
  several.Create(WS_CHILD | WS_VISIBLE | LBS_NOTIFY | LBS_SORT | LBS_MULTIPLESEL, CRect(0, 50, 100, 150),
                 &top, 9);
  several.AddString(_T("b"));
  EXPECT_EQ(several.AddString(_T("A")), 0);
  several.AddString(_T("c"));
  EXPECT_EQ(several.SetSel(1), 0);
  EXPECT_EQ(several.SetSel(5), LB_ERR);
  desktop.Click(On(several, 5, 40));
  Run();
  EXPECT_EQ(several.GetSelCount(), 2);
  EXPECT_EQ(several.GetSel(2), 1);
  EXPECT_EQ(several.GetSel(0), 0);
  several.SetSel(-1);
  EXPECT_EQ(several.GetSelCount(), 3);
  int chosen[2] = {};
  EXPECT_EQ(several.SendMessage(LB_GETSELITEMS, 2, reinterpret_cast<LPARAM>(chosen)), 2);
  EXPECT_EQ(chosen[1], 1);
  EXPECT_EQ(several.SendMessage(LB_GETSELITEMS, 2, 0), 0);
  EXPECT_EQ(several.SetCurSel(0), LB_ERR);
}
