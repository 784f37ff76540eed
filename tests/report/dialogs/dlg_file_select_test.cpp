#include "report/dialogs/dlg_file_select.h"

#include "report/dialogs/dialog_forms.h"
#include "tests/report/failure_desk.h"

namespace lorv {
namespace {

using test::Texts;
using test::Utf8;

class FileSelect : public test::FailureDesk {
 protected:
  FileSelect() {
    for (const LPCTSTR name : {_T("二.xls"), _T("A.xlsx"), _T("一.xls")}) names_.Add(name);
  }

  CStringArray names_;
};

TEST_F(FileSelect, ShowsTheNamesInTheirOrderWithTheFirstSelected) {
  CDlgFileSelect choice(names_);
  Texts shown;
  LRESULT selected = -2;
  std::string caption;
  const int result = Modal(choice, {[&] {
                                      const CWnd* const list = Now()->GetDlgItem(kNamesId);
                                      for (int i = 0; i < list->SendMessage(LB_GETCOUNT); ++i) {
                                        TCHAR text[40] = {};
                                        list->SendMessage(LB_GETTEXT, static_cast<WPARAM>(i),
                                                          reinterpret_cast<LPARAM>(text));
                                        shown.push_back(Utf8(CString(static_cast<LPCTSTR>(text))));
                                      }
                                      selected = list->SendMessage(LB_GETCURSEL);
                                      caption = Utf8(TextOf(*Now()));
                                    },
                                    Press(VK_RETURN)});
  EXPECT_EQ(shown, (Texts{"二.xls", "A.xlsx", "一.xls"}));
  EXPECT_EQ(selected, 0);
  EXPECT_EQ(caption, "文件选择");
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(choice.Selection(), 0);
}

TEST_F(FileSelect, TheSelectionIsTakenWhenOkIsPressed) {
  CDlgFileSelect choice(names_);
  EXPECT_EQ(choice.Selection(), -1);
  int before = 0;
  EXPECT_EQ(
      Modal(choice, {Press(VK_DOWN), Press(VK_DOWN), [&] { before = choice.Selection(); }, Click(IDOK)}),
      IDOK);
  EXPECT_EQ(before, -1);
  EXPECT_EQ(choice.Selection(), 2);
}

TEST_F(FileSelect, CancelLeavesNoSelection) {
  for (const int way : {0, 1, 2}) {
    CDlgFileSelect choice(names_);
    const auto leave = [&] {
      if (way == 0) ClickOn(IDCANCEL);
      if (way == 1) desktop.Press(VK_ESCAPE);
      if (way == 2) choice.PostMessage(WM_CLOSE);
    };
    EXPECT_EQ(Modal(choice, {Press(VK_DOWN), leave}), IDCANCEL) << way;
    EXPECT_EQ(choice.Selection(), -1) << way;
  }
}

TEST_F(FileSelect, ADoubleClickTakesTheName) {
  CDlgFileSelect choice(names_);
  const int result =
      Modal(choice, {[&] { desktop.DoubleClick(On(*Now()->GetDlgItem(kNamesId), 5, 16 + 8)); }});
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(choice.Selection(), 1);
}

TEST_F(FileSelect, NothingToChooseGivesNothing) {
  CDlgFileSelect choice{CStringArray()};
  EXPECT_EQ(Modal(choice, {Click(IDOK)}), IDOK);
  EXPECT_EQ(choice.Selection(), -1);
}

TEST_F(FileSelect, WithoutAnAnswerThereIsNoSelection) {
  CDlgFileSelect choice(names_);
  EXPECT_EQ(choice.DoModal(), IDCANCEL);
  EXPECT_EQ(choice.Selection(), -1);
}

TEST_F(FileSelect, ThousandsOfNamesAreChosenFrom) {
  CStringArray many;
  for (int i = 0; i < 5000; ++i) many.Add(CString(_T('x'), 300));
  CDlgFileSelect choice(many);
  Modal(choice, {Press(VK_END), Click(IDOK)});
  EXPECT_EQ(choice.Selection(), 4999);
}

}  // namespace
}  // namespace lorv
