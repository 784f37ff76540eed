#include "platform/headless/controls/headless_edit.h"

#include "tests/support/headless_desk.h"

namespace {

using lorv_test::Notes;

// Notes are the codes of the edit's notifications: EN_UPDATE is 1024, EN_CHANGE 768.
class HeadlessEdit : public lorv_test::Desk {
 protected:
  HeadlessEdit() {
    edit.Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, CRect(0, 0, 140, 20), &top, 1);
    lines.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE, CRect(0, 30, 70, 94), &top, 2);
    Focus(edit);
  }
  void Focus(CEdit& target) {
    target.SetFocus();
    Run();
    top.Taken();
  }
  CString Typed(lorv::TextView text) {
    desktop.Type(text);
    Run();
    return TextOf(edit);
  }
  std::pair<int, int> Selection(const CEdit& of) {
    std::pair<int, int> selection;
    of.GetSel(selection.first, selection.second);
    return selection;
  }
  using Pair = std::pair<int, int>;
  CEdit edit;
  CEdit lines;
};

const Notes kChanged = {"command 1 1024", "command 1 768"};

}  // namespace

TEST_F(HeadlessEdit, ControlsExample) {
  edit.SetWindowText(_T("KL12"));
  edit.SetSel(0, 2);
  edit.ReplaceSel(_T("WKL"));
  EXPECT_EQ(TextOf(edit), CString(_T("WKL12")));
}

TEST_F(HeadlessEdit, TypingReportsUpdateThenChange) {
  EXPECT_EQ(Typed(_T("a梁B")), CString(_T("a梁B")));
  Notes all = kChanged;
  all.insert(all.end(), kChanged.begin(), kChanged.end());
  all.insert(all.end(), kChanged.begin(), kChanged.end());
  EXPECT_EQ(top.Taken(), all);
  EXPECT_NE(edit.GetModify(), 0);
}

TEST_F(HeadlessEdit, ATextSetByProgramIsReportedInOneLineOnly) {
  edit.SetWindowText(_T("x"));
  EXPECT_EQ(top.Taken(), kChanged);
  edit.SetWindowText(_T("x"));
  EXPECT_EQ(top.Taken(), kChanged);
  lines.SetWindowText(_T("x"));
  EXPECT_TRUE(top.Taken().empty());
  EXPECT_EQ(edit.GetModify(), 0);
  EXPECT_EQ(Selection(edit), Pair(0, 0));
}

TEST_F(HeadlessEdit, SelectionsAreBroughtIntoTheText) {
  edit.SetWindowText(_T("abcdef"));
  edit.SetSel(0, -1);
  EXPECT_EQ(Selection(edit), Pair(0, 6));
  edit.SetSel(5, 2);
  EXPECT_EQ(Selection(edit), Pair(2, 5));
  edit.SetSel(-1, 3);
  EXPECT_EQ(Selection(edit), Pair(5, 5));
  edit.SetSel(4, 99);
  EXPECT_EQ(Selection(edit), Pair(4, 6));
  EXPECT_EQ(edit.GetSel(), 0x00060004U);
}

TEST_F(HeadlessEdit, CaretKeysMoveSelectAndCollapse) {
  edit.SetWindowText(_T("abcdef"));
  edit.SetSel(3, 3);
  desktop.PressWith(VK_SHIFT, VK_LEFT);
  desktop.PressWith(VK_SHIFT, VK_LEFT);
  Run();
  EXPECT_EQ(Selection(edit), Pair(1, 3));
  desktop.Press(VK_RIGHT);
  Run();
  EXPECT_EQ(Selection(edit), Pair(3, 3));
  desktop.Press(VK_HOME);
  desktop.PressWith(VK_SHIFT, VK_END);
  Run();
  EXPECT_EQ(Selection(edit), Pair(0, 6));
  desktop.Press(VK_LEFT);
  desktop.Press(VK_LEFT);
  Run();
  EXPECT_EQ(Selection(edit), Pair(0, 0));
}

TEST_F(HeadlessEdit, WordsAreStepsWithControl) {
  edit.SetWindowText(_T("ab cd ef"));
  desktop.PressWith(VK_CONTROL, VK_RIGHT);
  Run();
  EXPECT_EQ(Selection(edit), Pair(3, 3));
  desktop.PressWith(VK_CONTROL, VK_END);
  desktop.PressWith(VK_CONTROL, VK_LEFT);
  Run();
  EXPECT_EQ(Selection(edit), Pair(6, 6));
}

TEST_F(HeadlessEdit, BackAndDeleteTakePairsWhole) {
  edit.SetWindowText(_T("a\U0001F600b"));
  edit.SetSel(3, 3);
  desktop.Press(VK_BACK);
  Run();
  EXPECT_EQ(TextOf(edit), CString(_T("ab")));
  desktop.Press(VK_DELETE);
  desktop.Press(VK_DELETE);
  Run();
  EXPECT_EQ(TextOf(edit), CString(_T("a")));
}

TEST_F(HeadlessEdit, TheLimitHoldsForTypingOnly) {
  edit.SetLimitText(3);
  EXPECT_EQ(edit.GetLimitText(), 3U);
  EXPECT_EQ(Typed(_T("abc")), CString(_T("abc")));
  top.Taken();
  EXPECT_EQ(Typed(_T("d")), CString(_T("abc")));
  EXPECT_EQ(top.Taken(), Notes{"command 1 1281"});
  edit.SetSel(0, 2);
  EXPECT_EQ(Typed(_T("xy")), CString(_T("xyc")));
  edit.SetWindowText(_T("longer"));
  EXPECT_EQ(TextOf(edit), CString(_T("longer")));
}

TEST_F(HeadlessEdit, TheLimitHasTheRoomOfTheSelection) {
  edit.SetLimitText(4);
  edit.SetWindowText(_T("abcd"));
  edit.SetSel(1, 3);
  desktop.SetClipboardText(_T("xyz"));
  edit.SendMessage(WM_PASTE);
  EXPECT_EQ(TextOf(edit), CString(_T("axyd")));
  edit.SetLimitText(2);
  edit.SetWindowText(_T("abcdef"));
  edit.SetSel(0, 1);
  edit.SendMessage(WM_PASTE);
  EXPECT_EQ(TextOf(edit), CString(_T("bcdef")));
}

TEST_F(HeadlessEdit, NeitherHalfOfACharacterIsTypedWhereBothDoNotFit) {
  edit.SetLimitText(3);
  edit.SetWindowText(_T("ab"));
  edit.SetSel(2, 2);
  top.Taken();
  edit.SendMessage(WM_CHAR, 0xD83D);
  edit.SendMessage(WM_CHAR, 0xDE00);
  EXPECT_EQ(TextOf(edit), CString(_T("ab")));
  EXPECT_EQ(top.Taken().size(), 1U);
  edit.SetLimitText(4);
  edit.SendMessage(WM_CHAR, 0xD83D);
  edit.SendMessage(WM_CHAR, 0xDE00);
  EXPECT_EQ(edit.GetWindowTextLength(), 4);
}

TEST_F(HeadlessEdit, ReadOnlyKeepsItsText) {
  edit.SetWindowText(_T("abc"));
  edit.SetReadOnly();
  EXPECT_NE(edit.GetStyle() & ES_READONLY, 0U);
  top.Taken();
  desktop.Press(VK_DELETE);
  EXPECT_EQ(Typed(_T("x\b")), CString(_T("abc")));
  EXPECT_TRUE(top.Taken().empty());
  edit.ReplaceSel(_T("z"));
  EXPECT_EQ(TextOf(edit), CString(_T("zabc")));
}

TEST_F(HeadlessEdit, CutCopyPasteAndUndoGoByKeys) {
  edit.SetWindowText(_T("abc"));
  edit.SetSel(0, 2);
  desktop.PressWith(VK_CONTROL, 'X');
  Run();
  EXPECT_EQ(TextOf(edit), CString(_T("c")));
  EXPECT_EQ(desktop.ClipboardText(), CString(_T("ab")));
  desktop.PressWith(VK_CONTROL, 'Z');
  Run();
  EXPECT_EQ(TextOf(edit), CString(_T("abc")));
  desktop.SetClipboardText(_T("one\r\ntwo"));
  desktop.PressWith(VK_CONTROL, 'A');
  desktop.PressWith(VK_CONTROL, 'V');
  Run();
  EXPECT_EQ(TextOf(edit), CString(_T("one")));
}

TEST_F(HeadlessEdit, LinesWrapAtTheWidth) {
  lines.SetWindowText(_T("aaa bbb ccc ddd\r\n钢筋混凝土\r\n"));
  EXPECT_EQ(lines.GetLineCount(), 4);
  EXPECT_EQ(lines.LineIndex(1), 8);
  EXPECT_EQ(lines.LineIndex(2), 17);
  EXPECT_EQ(lines.LineIndex(3), 24);
  EXPECT_EQ(lines.LineIndex(9), -1);
  EXPECT_EQ(lines.LineLength(17), 5);
  EXPECT_EQ(lines.LineFromChar(10), 1);
  EXPECT_EQ(lines.GetLineText(1), CString(_T("ccc ddd")));
  EXPECT_EQ(lines.GetLineText(2), CString(_T("钢筋混凝土")));
  EXPECT_EQ(lines.GetLineText(8), CString());
}

TEST_F(HeadlessEdit, ReturnBreaksTheLineAndArrowsCrossIt) {
  Focus(lines);
  desktop.Type(_T("ab\rcde"));
  desktop.Press(VK_UP);
  Run();
  EXPECT_EQ(TextOf(lines), CString(_T("ab\r\ncde")));
  EXPECT_EQ(Selection(lines), Pair(2, 2));
  desktop.Press(VK_DOWN);
  desktop.Press(VK_HOME);
  desktop.Press(VK_LEFT);
  Run();
  EXPECT_EQ(Selection(lines), Pair(2, 2));
  desktop.Press(VK_DELETE);
  Run();
  EXPECT_EQ(TextOf(lines), CString(_T("abcde")));
}

TEST_F(HeadlessEdit, ReturnIsNoCharacterOfOneLine) {
  EXPECT_EQ(Typed(_T("a\rb")), CString(_T("ab")));
}

TEST_F(HeadlessEdit, PressesPlaceTheCaretAndDragSelects) {
  edit.SetWindowText(_T("abcdef"));
  desktop.MoveMouse(On(edit, 8, 5));
  desktop.MouseDown();
  desktop.MoveMouse(On(edit, 28, 5));
  desktop.MouseUp();
  Run();
  EXPECT_EQ(Selection(edit), Pair(1, 4));
  EXPECT_EQ(CWnd::GetCapture(), nullptr);
  edit.SetWindowText(_T("ab cd"));
  desktop.DoubleClick(On(edit, 25, 5));
  Run();
  EXPECT_EQ(Selection(edit), Pair(3, 5));
}

TEST_F(HeadlessEdit, FocusIsReported) {
  lines.SetFocus();
  EXPECT_EQ(top.Taken(), (Notes{"command 1 512", "command 2 256"}));
}

TEST_F(HeadlessEdit, EndsInsideItsOwnChange) {
  class Ending : public lorv_test::NotingWindow {
   public:
    CEdit* victim = nullptr;
    BOOL OnCommand(WPARAM w, LPARAM l) override {
      if (HIWORD(w) == EN_UPDATE) victim->DestroyWindow();
      return NotingWindow::OnCommand(w, l);
    }
  };
  Ending parent;
  parent.Create(nullptr, nullptr, WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 200, 200), nullptr, 0);
  CEdit victim;
  parent.victim = &victim;
  victim.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 99, 20), &parent, 3);
  victim.SetFocus();
  parent.Taken();
  desktop.Type(_T("ab"));
  Run();
  EXPECT_EQ(victim.m_hWnd, nullptr);
  EXPECT_EQ(parent.Taken(), (Notes{"command 3 512", "command 3 1024"}));
}
