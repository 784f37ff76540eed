#include "platform/headless/services/headless_progress.h"

#include "module/progress.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/headless_desk.h"

// The progress dialog in windows of a desktop in memory, with a user at its keys.

namespace {

class HeadlessProgress : public lorv_test::Desk {
 protected:
  HWND Box() const {
    for (const HWND window : desktop.Windows())
      if (window != top.m_hWnd) return window;
    return nullptr;
  }
  CWnd* Button() const { return CWnd::FromHandle(Box())->GetDlgItem(IDCANCEL); }
  CString Line(int line) const {
    CString text;
    CWnd::FromHandle(Box())->GetDlgItemText(999 + line, text);
    return text;
  }
  // The user comes to it.
  void GoThere() {
    lorv::PeerOf(Box())->Activate();
    desktop.RunUntilIdle();
  }

  std::unique_ptr<lorv::ProgressDialog> dialog = lorv::MakeHeadlessProgress();
};

}  // namespace

TEST_F(HeadlessProgress, ShowsWhatItIsSetAndTakesNoFocus) {
  top.SetFocus();
  dialog->SetTitle(_T("计算工程量"));
  EXPECT_TRUE(dialog->SetAnimation(_T("shell32"), 160));
  EXPECT_FALSE(lorv::PeerOf(Box())->Style() & WS_VISIBLE);
  dialog->Open(lorv::kProgressAutoTime);
  dialog->SetLine(1, _T("首层"), false);
  dialog->SetLine(2, _T("墙"), false);
  desktop.Advance(30000);
  dialog->SetProgress(1, 3);
  desktop.RunUntilIdle();
  EXPECT_EQ(CWnd::GetFocus(), &top);
  EXPECT_EQ(lorv::PeerOf(Box())->Owner(), top.m_hWnd);
  EXPECT_EQ(TextOf(*CWnd::FromHandle(Box())), CString(_T("计算工程量")));
  EXPECT_EQ(Line(1), CString(_T("首层")));
  EXPECT_EQ(Line(2), CString(_T("墙")));
  EXPECT_EQ(Line(3), CString(_T("大约还需 60 秒")));
  const CWnd* const bar = CWnd::FromHandle(Box())->GetDlgItem(1010);
  CRect client;
  bar->GetClientRect(client);
  const auto seen = desktop.Seen(bar->m_hWnd);
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen.back().bounds.Width(), client.Width() * 333 / 1000);
  dialog->Close();
  EXPECT_FALSE(lorv::PeerOf(Box())->Style() & WS_VISIBLE);
  dialog.reset();
  EXPECT_EQ(Box(), nullptr);
}

TEST_F(HeadlessProgress, CancelIsReachedByTab) {
  dialog->SetCancelMessage(_T("wait"));
  dialog->Open(0);
  GoThere();
  EXPECT_NE(CWnd::GetFocus(), Button());
  desktop.Press(VK_TAB);
  desktop.RunUntilIdle();
  ASSERT_EQ(CWnd::GetFocus()->m_hWnd, Button()->m_hWnd);
  EXPECT_FALSE(dialog->HasUserCancelled());
  desktop.Press(VK_SPACE);
  desktop.RunUntilIdle();
  EXPECT_TRUE(dialog->HasUserCancelled());
  EXPECT_FALSE(Button()->IsWindowEnabled());
  EXPECT_NE(lorv::PeerOf(Box())->Style() & WS_VISIBLE, 0U) << "only the operation takes it away";
  EXPECT_EQ(Line(3), CString(_T("wait")));
  dialog->SetProgress(2, 3);
  EXPECT_EQ(Line(3), CString(_T("wait")));
}

TEST_F(HeadlessProgress, EscapeAndClosingCancelToo) {
  for (const bool by_key : {true, false}) {
    dialog.reset();  // or the next one would belong to it
    dialog = lorv::MakeHeadlessProgress();
    dialog->Open(0);
    GoThere();
    desktop.Press(VK_RETURN);
    desktop.RunUntilIdle();
    EXPECT_FALSE(dialog->HasUserCancelled()) << "nothing is accepted";
    by_key ? desktop.Press(VK_ESCAPE) : static_cast<void>(desktop.Post(Box(), WM_CLOSE, 0, 0));
    desktop.RunUntilIdle();
    EXPECT_TRUE(dialog->HasUserCancelled());
    EXPECT_NE(Box(), nullptr);
  }
}

TEST_F(HeadlessProgress, IsAsHighWithItsLinesEmptyAsFull) {
  dialog->Open(lorv::kProgressAutoTime);
  const CSize before = CRect(lorv::PeerOf(Box())->WindowRect()).Size();
  for (const CString& text : {CString(_T("首层 墙 梁 板 柱")), CString(_T('x'), 5000), CString()}) {
    for (const DWORD line : {1U, 2U}) dialog->SetLine(line, text, false);
    dialog->SetProgress(3, 10);
    desktop.Advance(2000);
    EXPECT_EQ(CRect(lorv::PeerOf(Box())->WindowRect()).Size(), before);
  }
}

TEST_F(HeadlessProgress, TheWindowThatItBelongsToMayGo) {
  dialog->Open(0);
  top.DestroyWindow();
  EXPECT_EQ(Box(), nullptr);
  dialog->SetTitle(_T("t"));
  dialog->SetLine(1, _T("x"), false);
  dialog->SetProgress(1, 2);
  dialog->SetCancelMessage(_T("c"));
  EXPECT_FALSE(dialog->HasUserCancelled());
  dialog->Close();
}

TEST_F(HeadlessProgress, AMachineInMemoryMayShowItsOwn) {
  dialog.reset();
  lorv::HeadlessPlatform machine;
  const lorv::ScopedPlatform scope(machine.Ports());
  machine.shell.in_windows = true;
  {
    CProgressCom progress(4);
    ASSERT_TRUE(progress.StartProgress(_T("计算")));
    progress.StepProgress(1, _T("首层"));
    EXPECT_EQ(Line(1), CString(_T("首层")));
    GoThere();
    desktop.Press(VK_ESCAPE);
    desktop.RunUntilIdle();
    machine.dialogs.answer = lorv::kAnswerYes;
    EXPECT_TRUE(progress.QueryCancel(_T("停止?")));
    EXPECT_EQ(machine.dialogs.messages.size(), 1U);
  }
  EXPECT_EQ(Box(), nullptr);
  EXPECT_TRUE(machine.shell.progress.empty());
}
