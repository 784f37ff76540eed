#include "framework/windows/dialog.h"

#include "tests/support/headless_desk.h"

namespace {

using lorv::DialogItem;
using lorv::WindowKind;
using lorv_test::Desk;
using lorv_test::Notes;

constexpr DWORD kStop = WS_TABSTOP;
const DialogItem kItems[] = {
    {WindowKind::Static, 0xFFFF, 7, 7, 60, 8, 0, _T("描述(&D)：")},
    {WindowKind::Edit, 1003, 7, 46, 221, 53, kStop | ES_MULTILINE | WS_BORDER, _T("")},
    {WindowKind::Button, 1010, 7, 100, 40, 14, kStop | WS_GROUP | BS_AUTORADIOBUTTON, _T("&A")},
    {WindowKind::Button, 1011, 50, 100, 40, 14, BS_AUTORADIOBUTTON, _T("&B")},
    {WindowKind::Button, IDOK, 120, 105, 50, 14, kStop | WS_GROUP | BS_DEFPUSHBUTTON, _T("确定")},
    {WindowKind::Button, IDCANCEL, 178, 105, 50, 14, kStop | BS_PUSHBUTTON, _T("取消")},
};
const lorv::DialogTemplate kForm = {1001, _T("附加提示"), 235, 126, _T("宋体"), 9, kItems};

class Form : public CDialog {
 public:
  explicit Form(CWnd* parent) : CDialog(kForm, parent) {}
  Notes notes;
  int ends_at_start = 0;
  BOOL OnInitDialog() override {
    notes.push_back("init");
    if (ends_at_start != 0) EndDialog(ends_at_start);
    return CDialog::OnInitDialog();
  }
  void OnOK() override {
    notes.push_back("ok");
    CDialog::OnOK();
  }
  void OnCancel() override {
    notes.push_back("cancel");
    CDialog::OnCancel();
  }
};

// Ends itself when its window is shown, before its loop runs.
class ShortForm : public Form {
 public:
  using Form::Form;

 protected:
  void OnShowWindow(BOOL shown, UINT /*reason*/) {
    if (shown != FALSE) EndDialog(78);
  }
  DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ShortForm, CDialog)
ON_WM_SHOWWINDOW()
END_MESSAGE_MAP()

int FocusId() {
  const CWnd* const focus = CWnd::GetFocus();
  return focus == nullptr ? -1 : focus->GetDlgCtrlID();
}

class Dialog : public Desk {
 protected:
  // Runs the dialog; the steps are taken one by one while it is up.
  int Modal(Form& form, std::vector<std::function<void()>> steps) {
    for (auto& step : steps) desktop.WhenIdle(std::move(step));
    return static_cast<int>(form.DoModal());
  }
};

}  // namespace

TEST_F(Dialog, ReturnPressesTheDefaultButton) {
  Form form(&top);
  const int result = Modal(form, {[&] { desktop.Press(VK_RETURN); }});
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(form.notes, (Notes{"init", "ok"}));
  EXPECT_EQ(form.m_hWnd, nullptr);
  EXPECT_NE(top.IsWindowEnabled(), 0);
  EXPECT_EQ(CWnd::GetActiveWindow(), &top);
}

TEST_F(Dialog, EscapeAndClosingCancel) {
  Form form(&top);
  EXPECT_EQ(Modal(form, {[&] { desktop.Press(VK_ESCAPE); }}), IDCANCEL);
  EXPECT_EQ(Modal(form, {[&] { form.PostMessage(WM_CLOSE); }}), IDCANCEL);
  EXPECT_EQ(form.notes, (Notes{"init", "cancel", "init", "cancel"}));
}

TEST_F(Dialog, WithoutAnAnswerItIsCancelled) {
  Form form(nullptr);
  EXPECT_EQ(form.DoModal(), IDCANCEL);
}

TEST_F(Dialog, MayEndWhileItStarts) {
  Form form(&top);
  form.ends_at_start = 77;
  EXPECT_EQ(form.DoModal(), 77);
}

TEST_F(Dialog, MayEndWhileItIsShown) {
  ShortForm form(&top);
  EXPECT_EQ(form.DoModal(), 78);
  EXPECT_EQ(form.notes, (Notes{"init"})) << "nobody had to cancel it";
  EXPECT_NE(top.IsWindowEnabled(), 0);
}

TEST_F(Dialog, ItsOwnerIsDisabledWhileItRuns) {
  Form form(&top);
  BOOL enabled = TRUE;
  Modal(form, {[&] { enabled = top.IsWindowEnabled(); }});
  EXPECT_EQ(enabled, FALSE);
}

TEST_F(Dialog, WithoutAnOwnerItIsOwnedByTheActiveWindow) {
  Form form(nullptr);
  BOOL enabled = TRUE;
  const CWnd* owner = nullptr;
  Modal(form, {[&] {
          enabled = top.IsWindowEnabled();
          owner = form.GetParent();
        }});
  EXPECT_EQ(enabled, FALSE);
  EXPECT_EQ(owner, &top);
  EXPECT_NE(top.IsWindowEnabled(), 0);
}

TEST_F(Dialog, TabWalksAroundAndBack) {
  Form form(&top);
  std::vector<int> seen;
  const auto look = [&] { seen.push_back(FocusId()); };
  const auto tab = [&] { desktop.Press(VK_TAB); };
  const auto back = [&] { desktop.PressWith(VK_SHIFT, VK_TAB); };
  Modal(form, {look, tab, look, tab, look, tab, look, tab, look, back, look, back, look});
  EXPECT_EQ(seen, (std::vector<int>{1003, 1010, IDOK, IDCANCEL, 1003, IDCANCEL, IDOK}));
}

TEST_F(Dialog, ArrowsStayInTheGroup) {
  Form form(&top);
  std::vector<int> seen;
  const auto look = [&] { seen.push_back(FocusId()); };
  Modal(form, {[&] { form.GetDlgItem(1010)->SetFocus(); }, [&] { desktop.Press(VK_RIGHT); }, look,
               [&] { desktop.Press(VK_RIGHT); }, look, [&] { desktop.Press(VK_UP); }, look});
  EXPECT_EQ(seen, (std::vector<int>{1011, 1010, 1011}));
}

TEST_F(Dialog, ReturnPressesTheButtonWithTheFocus) {
  Form form(&top);
  const int result =
      Modal(form, {[&] { form.GetDlgItem(IDCANCEL)->SetFocus(); }, [&] { desktop.Press(VK_RETURN); }});
  EXPECT_EQ(result, IDCANCEL);
}

TEST_F(Dialog, ADisabledDefaultButtonIsNotPressed) {
  Form form(&top);
  Modal(form, {[&] { form.GetDlgItem(IDOK)->EnableWindow(FALSE); }, [&] { desktop.Press(VK_RETURN); }});
  EXPECT_EQ(form.notes, (Notes{"init", "cancel"}));
}

TEST_F(Dialog, MarkedLettersGoToTheirControl) {
  Form form(&top);
  int focus = 0;
  Modal(form, {[&] { form.GetDlgItem(IDOK)->SetFocus(); }, [&] { desktop.PressWith(VK_MENU, 'D'); },
               [&] { focus = FocusId(); }});
  EXPECT_EQ(focus, 1003);
}

TEST_F(Dialog, UnitsComeFromTheFont) {
  Form form(&top);
  CRect client;
  CRect edit;
  Modal(form, {[&] {
          form.GetClientRect(client);
          form.GetDlgItem(1003)->GetWindowRect(edit);
          form.ScreenToClient(edit);
        }});
  EXPECT_EQ(client, CRect(0, 0, 411, 252));
  EXPECT_EQ(edit, CRect(12, 92, 399, 198));
}

TEST_F(Dialog, StandsModelessUntilItIsDestroyed) {
  Form form(nullptr);
  ASSERT_NE(form.Create(kForm, &top), 0);
  EXPECT_EQ(form.IsWindowVisible(), 0);
  form.ShowWindow(SW_SHOW);
  EXPECT_NE(top.IsWindowEnabled(), 0);
  desktop.Press(VK_TAB);
  Run();
  EXPECT_EQ(form.GetWindowClassName(), CString(_T("#32770")));
  desktop.Press(VK_ESCAPE);
  Run();
  EXPECT_EQ(form.IsWindowVisible(), 0);
  EXPECT_NE(form.m_hWnd, nullptr);
  form.DestroyWindow();
}

TEST_F(Dialog, GoesWhenItsOwnerGoes) {
  Form form(&top);
  EXPECT_EQ(Modal(form, {[&] { top.DestroyWindow(); }}), -1);
}

TEST_F(Dialog, RunsInsideAnother) {
  Form outer(&top);
  Form inner(&outer);
  int result = 0;
  // The steps are taken in their order, whichever dialog is up.
  Modal(outer, {[&] { result = static_cast<int>(inner.DoModal()); }, [&] { desktop.Press(VK_RETURN); },
                [&] { desktop.Press(VK_ESCAPE); }});
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(outer.notes, (Notes{"init", "cancel"}));
}
