#include "tools/lorv-desk/table/find_dialog.h"

#include "tests/tools/desk/table_windows.h"
#include "tools/lorv/language/spoken_language.h"

namespace lorv::tool {
namespace {

class FindDialogs : public TableWindows {
 protected:
  FindDialog& Finder() { return window->Finder(); }
  void Set(UINT control, LPCTSTR text) { Finder().SetDlgItemText(static_cast<int>(control), text); }
  void Tick(UINT control) {
    Finder().GetDlgItem(static_cast<int>(control))->SendMessage(BM_SETCHECK, BST_CHECKED);
  }
  void Push(UINT control) {
    Finder().SendMessage(WM_COMMAND, MAKEWPARAM(control, BN_CLICKED));
    Run();
  }
  std::string Outcome() const {
    CString text;
    window->Finder().GetDlgItemText(kFindOutcome, text);
    return Utf8(text);
  }
  CBCGPGridItemID Current() { return window->Table().GetCurSelItemID(); }
};

TEST_F(FindDialogs, OpenByTheirKeysAndFindByReturn) {
  Open("a,b\nC30,C35\nC35,C40\n");
  PressControl('F');
  ASSERT_NE(Finder().m_hWnd, nullptr);
  EXPECT_EQ(CWnd::GetFocus(), Finder().GetDlgItem(kFindText));
  Type(_T("c35"));
  Press(VK_RETURN);
  EXPECT_EQ(Current(), CBCGPGridItemID(0, 1));
  Press(VK_RETURN);
  EXPECT_EQ(Current(), CBCGPGridItemID(1, 0));
  EXPECT_EQ(Outcome(), "");
  // The grid goes on by the key of the same search, with the dialog gone.
  Press(VK_ESCAPE);
  EXPECT_EQ(Finder().m_hWnd, nullptr);
  window->Grid().SetFocus();
  Press(VK_F3);
  EXPECT_EQ(Current(), CBCGPGridItemID(0, 1));
  EXPECT_FALSE(window->Table().IsChanged());
}

TEST_F(FindDialogs, FindAndReplaceByPatterns) {
  Open("a,b\nKL1,KL27\nB27,KL3\n");
  PressControl('H');
  Set(kFindText, _T("^KL(\\d)$"));
  Set(kReplaceText, _T("B$1"));
  Push(kReplaceAll);
  EXPECT_EQ(Outcome(), "Nothing was found") << "a plain text until it is ticked";
  Tick(kPattern);
  Push(kReplaceAll);
  EXPECT_EQ(Outcome(), "cells changed: 2; kept as they were: 0");
  EXPECT_EQ(At(0, 0), CString(_T("B1")));
  EXPECT_EQ(At(0, 1), CString(_T("KL27")));
  EXPECT_EQ(At(1, 1), CString(_T("B3")));
  Set(kFindText, _T("KL("));
  Push(IDOK);
  EXPECT_EQ(Outcome(), "This is not a regular expression");
  Set(kFindText, _T("KL\\d+"));
  Push(IDOK);
  EXPECT_EQ(Outcome(), "");
  EXPECT_EQ(Current(), CBCGPGridItemID(0, 1));
}

TEST_F(FindDialogs, ReportThatNothingWasFound) {
  Open("a\nC30\n");
  PressControl('H');
  EXPECT_EQ(CWnd::GetFocus(), Finder().GetDlgItem(kReplaceText));
  for (const UINT button : {UINT{IDOK}, UINT{kReplaceOne}, UINT{kReplaceAll}}) {
    Set(kFindOutcome, _T(""));
    Set(kFindText, _T("x"));
    Push(button);
    EXPECT_EQ(Outcome(), "Nothing was found") << button;
  }
}

TEST_F(FindDialogs, ReplaceOneAfterTheOther) {
  Open("a,b\nC30,C30\n");
  PressControl('H');
  Set(kFindText, _T("C30"));
  Set(kReplaceText, _T("C35"));
  window->Table().SetCurSel({0, 1});
  Push(kReplaceOne);
  EXPECT_EQ(At(0, 1), CString(_T("C35")));
  EXPECT_EQ(Current(), CBCGPGridItemID(0, 0));
  EXPECT_TRUE(window->Table().IsChanged());
  Push(kReplaceOne);
  EXPECT_EQ(At(0, 0), CString(_T("C35")));
  EXPECT_EQ(Outcome(), "cells changed: 1; kept as they were: 0");
}

TEST_F(FindDialogs, ReplaceAllCountsWhatIsLocked) {
  Open("a,b\nC30,C30 C30\n");
  window->Table().GetItem(0, 0)->SetReadOnly(TRUE);
  PressControl('H');
  Set(kFindText, _T("C30"));
  Set(kReplaceText, _T("墙"));
  Push(kReplaceAll);
  EXPECT_EQ(Utf8(At(0, 1)), "墙 墙");
  EXPECT_EQ(Outcome(), "cells changed: 1; kept as they were: 1");
}

TEST_F(FindDialogs, TakeTheirTicks) {
  Open("a,b\nc30,C30x\nC30,c30\n");
  PressControl('F');
  Set(kFindText, _T("C30"));
  Tick(kWholeCell);
  Tick(kMatchCase);
  Push(IDOK);
  EXPECT_EQ(Current(), CBCGPGridItemID(1, 0));
  Push(IDOK);
  EXPECT_EQ(Current(), CBCGPGridItemID(1, 0));
}

// The selection that the dialog was opened over is searched, though what is found becomes the selection.
TEST_F(FindDialogs, SearchTheSelectionThatWasThere) {
  Open("a,b\nx,x\nx,x\n");
  window->Table().SelectRange({1, 0, 1, 1});
  PressControl('F');
  Set(kFindText, _T("x"));
  Tick(kSelectionOnly);
  std::string found;
  for (int i = 0; i < 3; ++i) {
    Push(IDOK);
    found += std::to_string(Current().m_nRow) + std::to_string(Current().m_nColumn) + " ";
  }
  EXPECT_EQ(found, "11 01 11 ");
}

TEST_F(FindDialogs, KeepWhatWasTypedForTheNextTime) {
  Open("a\nC30\n");
  PressControl('F');
  Set(kFindText, _T("C30"));
  Tick(kMatchCase);
  Push(IDOK);
  Push(IDCANCEL);
  PressControl('F');
  ASSERT_NE(Finder().m_hWnd, nullptr);
  CString text;
  Finder().GetDlgItemText(kFindText, text);
  EXPECT_EQ(text, CString(_T("C30")));
  EXPECT_EQ(Finder().GetDlgItem(kMatchCase)->SendMessage(BM_GETCHECK), BST_CHECKED);
}

TEST_F(FindDialogs, GoWithTheirWindow) {
  Open("a\nC30\n");
  PressControl('F');
  Close();
  EXPECT_EQ(window->m_hWnd, nullptr);
  EXPECT_EQ(Finder().m_hWnd, nullptr);
}

TEST_F(FindDialogs, SpeakTheUsersLanguage) {
  SpeakLanguage(Language::kChinese);
  Open("a\nC30\n");
  PressControl('F');
  EXPECT_EQ(Utf8(TextOf(Finder())), "查找和替换");
  EXPECT_EQ(Utf8(TextOf(*Finder().GetDlgItem(kReplaceAll))), "全部替换");
  SpeakLanguage(Language::kEnglish);
}

}  // namespace
}  // namespace lorv::tool
