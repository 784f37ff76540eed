#include "report/dialogs/dlg_except.h"

#include "module/modeless.h"
#include "report/dialogs/dialog_forms.h"
#include "report/dialogs/dlg_except_add_info.h"
#include "report/dialogs/failure_mail.h"
#include "tests/report/failure_desk.h"

namespace lorv {
namespace {

using test::Texts;
using test::Utf8;

class DlgExcept : public test::FailureDesk {
 protected:
  DlgExcept() { dialog_.BuildReport(_T("梁表打不开."), {_T("a.cpp"), 5, nullptr}); }

  void AllowMail() {
    machine_.settings.profile[_T("MAIL\\MAPI")] = 1;
    machine_.mail.installed = true;
  }
  // The report of a message, as the main program's.
  static std::string ReportOf(const std::string& message) {
    return message +
           "\n错误发生的模块是:C:\\Suite\\suite.exe\n版本信息:10.0.1\n发生错误文件的位置为: a.cpp, 第 5行\n"
           "剩余内存空间: 2048KB";
  }

  CDlgExcept dialog_;
};

TEST_F(DlgExcept, NeedsNoDesktopForItsText) {
  EXPECT_EQ(Utf8(dialog_.Report()), ReportOf("梁表打不开."));
  EXPECT_EQ(dialog_.m_hWnd, nullptr);
  EXPECT_STREQ(dialog_.GetRuntimeClass()->m_lpszClassName, "CDlgExcept");
  EXPECT_NE(dialog_.IsKindOf(RUNTIME_CLASS(TPaneDlg)), 0);
}

TEST_F(DlgExcept, ShowsTheReportWithWindowsLineEnds) {
  std::string shown;
  std::string caption;
  bool read_only = false;
  const int result = Modal(dialog_, {[&] {
                                       shown = TextAt(kReportTextId);
                                       caption = Utf8(TextOf(*Now()));
                                       read_only =
                                           (Now()->GetDlgItem(kReportTextId)->GetStyle() & ES_READONLY) != 0;
                                     },
                                     Press(VK_RETURN)});
  CString wanted = dialog_.Report();
  wanted.Replace(_T("\n"), _T("\r\n"));
  EXPECT_EQ(shown, Utf8(wanted));
  EXPECT_EQ(caption, "错误提示");
  EXPECT_TRUE(read_only);
  EXPECT_EQ(result, IDOK);
}

TEST_F(DlgExcept, ButtonsStandInTheirOrder) {
  Texts texts;
  std::vector<LONG> tops;
  Modal(dialog_, {[&] {
          for (const int id : {IDOK, static_cast<int>(kPrintId), static_cast<int>(kSendId)}) {
            CRect rect;
            Now()->GetDlgItem(id)->GetWindowRect(rect);
            texts.push_back(TextAt(id));
            tops.push_back(rect.top);
          }
        }});
  EXPECT_EQ(texts, (Texts{"确定", "打印", "发送"}));
  EXPECT_EQ(tops[0], tops[1]);
  EXPECT_EQ(tops[1], tops[2]);
}

TEST_F(DlgExcept, StartsAtTheButtonAndNotInTheText) {
  int focus = 0;
  Modal(dialog_, {[&] { focus = CWnd::GetFocus()->GetDlgCtrlID(); }, Press(VK_ESCAPE)});
  EXPECT_EQ(focus, IDOK);
}

TEST_F(DlgExcept, SendNeedsTheProfileAndTheLibrary) {
  const struct {
    int value;
    bool installed;
    bool enabled;
  } cases[] = {{0, false, false}, {0, true, false}, {1, false, false}, {1, true, true}, {-1, true, true}};
  for (const auto& c : cases) {
    machine_.settings.profile[_T("MAIL\\MAPI")] = c.value;
    machine_.mail.installed = c.installed;
    BOOL enabled = 2;
    Modal(dialog_, {[&] { enabled = Now()->GetDlgItem(kSendId)->IsWindowEnabled(); }});
    EXPECT_EQ(enabled != 0, c.enabled) << c.value << c.installed;
  }
  machine_.settings.profile.clear();
  BOOL enabled = 2;
  Modal(dialog_, {[&] { enabled = Now()->GetDlgItem(kSendId)->IsWindowEnabled(); }});
  EXPECT_EQ(enabled, FALSE);
}

TEST_F(DlgExcept, PrintsTheDescriptionAloneLineByLine) {
  Modal(dialog_, {Click(kPrintId), Type(_T("first")), Press(VK_RETURN), Type(_T("")), Press(VK_RETURN),
                  Type(_T("墙")), Click(IDOK)});
  EXPECT_EQ(InUtf8(machine_.printing.asked),
            (Texts{"ask 12", "begin Error message mapping 5 font Arial 120 align 0", "extent 00",
                   "text 300 9000 first", "text 300 8833 ", "text 300 8666 墙", "end", "gone"}));
}

TEST_F(DlgExcept, PrintBuildsTheReportAnewForTheMainProgram) {
  int anywhere = 0;
  dialog_.BuildReport(_T("x"), {_T("a.cpp"), 5, reinterpret_cast<HINSTANCE>(&anywhere)});
  Modal(dialog_, {Click(kPrintId), Type(_T("why")), Click(IDOK)});
  EXPECT_EQ(Utf8(dialog_.Report()), ReportOf("why"));
  EXPECT_EQ(Utf8(dialog_.Description()), "why");
}

TEST_F(DlgExcept, AnEmptyFileKeepsTheFormerPlace) {
  dialog_.BuildReport(_T("y"), {_T(""), 9, nullptr});
  EXPECT_NE(Utf8(dialog_.Report()).find("发生错误文件的位置为: , 第 9行"), std::string::npos);
  Modal(dialog_, {Click(kPrintId), Type(_T("why")), Click(IDOK)});
  EXPECT_EQ(Utf8(dialog_.Report()), ReportOf("why"));
}

TEST_F(DlgExcept, AnEmptyDescriptionPrintsOneEmptyLine) {
  Modal(dialog_, {Click(kPrintId), Click(IDOK)});
  EXPECT_EQ(InUtf8(machine_.printing.asked),
            (Texts{"ask 12", "begin Error message mapping 5 font Arial 120 align 0", "extent 00",
                   "text 300 9000 ", "end", "gone"}));
}

TEST_F(DlgExcept, LinesGoOnBelowThePage) {
  machine_.printing.line_height = 4000;
  Modal(dialog_, {Click(kPrintId), Type(_T("a\rb\rc\rd")), Click(IDOK)});
  const Texts asked = InUtf8(machine_.printing.asked);
  EXPECT_EQ(asked[asked.size() - 3], "text 300 -3000 d");
}

TEST_F(DlgExcept, GivingUpThePrintingChangesNothing) {
  Modal(dialog_, {Click(kPrintId), Type(_T("why")), Click(IDCANCEL)});
  EXPECT_TRUE(machine_.printing.asked.empty());
  EXPECT_EQ(Utf8(dialog_.Description()), "");
  machine_.printing.agrees = false;
  Modal(dialog_, {Click(kPrintId), Type(_T("why")), Click(IDOK)});
  EXPECT_EQ(InUtf8(machine_.printing.asked), (Texts{"ask 12"}));
  EXPECT_EQ(Utf8(dialog_.Description()), "why");
  EXPECT_EQ(Utf8(dialog_.Report()), ReportOf("梁表打不开."));
}

TEST_F(DlgExcept, APrinterThatRefusesEndsThePrinting) {
  machine_.printing.begins = false;
  const int result = Modal(dialog_, {Click(kPrintId), Click(IDOK), Click(IDOK)});
  EXPECT_EQ(InUtf8(machine_.printing.asked),
            (Texts{"ask 12", "begin Error message mapping 5 font Arial 120 align 0", "gone"}));
  EXPECT_EQ(result, IDOK);
}

TEST_F(DlgExcept, TheDescriptionIsOfferedAgain) {
  AllowMail();
  std::string second;
  Texts buttons;
  Modal(dialog_, {Click(kPrintId), [&] { buttons.push_back(TextAt(IDOK)); }, Type(_T("why")), Click(IDOK),
                  Click(kSendId),
                  [&] {
                    second = TextAt(kDescriptionId);
                    buttons.push_back(TextAt(IDOK));
                  },
                  Click(IDCANCEL)});
  EXPECT_EQ(second, "why");
  EXPECT_EQ(buttons, (Texts{"打印", "发送"}));
}

TEST_F(DlgExcept, SendsTheDescriptionAlone) {
  AllowMail();
  HWND owner = nullptr;
  Modal(dialog_, {[&] { owner = Now()->m_hWnd; }, Click(kSendId), Type(_T("墙☃")), Press(VK_RETURN),
                  Type(_T("x")), Click(IDOK)});
  EXPECT_EQ(InUtf8(machine_.mail.asked), (Texts{"installed", "load", "can send", "send 9", "free"}));
  ASSERT_EQ(machine_.mail.sent.size(), 1U);
  const MailMessage& mail = machine_.mail.sent[0];
  EXPECT_EQ(mail.recipient_class, 1U);
  EXPECT_EQ(mail.recipient, "Clever Porgrammer");
  EXPECT_EQ(mail.address, "SMTP:support@suite.example");
  EXPECT_EQ(mail.subject, "An Exception has occurred");
  EXPECT_EQ(mail.note, SuiteCodePage().ToNarrow(_T("墙☃\r\nx")));
  EXPECT_EQ(machine_.mail.owners[0], owner);
  EXPECT_EQ(Utf8(dialog_.Report()), ReportOf("墙☃\r\nx"));
  EXPECT_TRUE(machine_.dialogs.messages.empty());
}

TEST_F(DlgExcept, SendIsWorkedWithoutTheWindowsOfTheProgram) {
  AllowMail();
  HWND owner = nullptr;
  bool used = false;
  machine_.mail.while_sending = [&] {
    used = true;
    EXPECT_FALSE(IsModeless());
    EXPECT_EQ(desktop.Capture(), owner);
    EXPECT_EQ(desktop.Focus(), nullptr);
    EXPECT_NE(PeerOf(owner)->Style() & WS_DISABLED, 0U);
  };
  Modal(dialog_, {[&] { owner = Now()->m_hWnd; }, Click(kSendId), Click(IDOK),
                  [&] {
                    EXPECT_TRUE(used);
                    EXPECT_TRUE(IsModeless());
                    EXPECT_EQ(desktop.Capture(), nullptr);
                    EXPECT_EQ(desktop.Active(), owner);
                    EXPECT_EQ(PeerOf(owner)->Style() & WS_DISABLED, 0U);
                    EXPECT_EQ(top.IsWindowEnabled(), FALSE);
                  }});
  EXPECT_EQ(top.IsWindowEnabled(), TRUE);
}

TEST_F(DlgExcept, MailProblemsAreReported) {
  AllowMail();
  const struct {
    bool loads;
    bool can_send;
    ULONG answer;
    UINT problem;
  } cases[] = {
      {false, true, kMailSent, kMailNotLoaded},
      {true, false, kMailSent, kMailLibraryInvalid},
      {true, true, kMailFailed, kMailNotSent},
      {true, true, 26, kMailNotSent},
      {true, true, kMailSent, 0},
      {true, true, kMailCancelled, 0},
      {true, true, kMailLogonFailed, 0},
  };
  for (const auto& c : cases) {
    machine_.dialogs.messages.clear();
    machine_.mail.asked.clear();
    machine_.mail.loads = c.loads;
    machine_.mail.can_send = c.can_send;
    machine_.mail.answer = c.answer;
    Modal(dialog_, {Click(kSendId), Click(IDOK)});
    ASSERT_EQ(machine_.dialogs.messages.size(), c.problem == 0 ? 0U : 1U) << c.answer;
    if (c.problem != 0) {
      EXPECT_EQ(Utf8(machine_.dialogs.messages[0].text), Utf8(MailProblemText(c.problem)));
    }
    EXPECT_EQ(machine_.mail.asked.back() == CString(_T("free")), c.loads);
  }
  EXPECT_EQ(Utf8(MailProblemText(kMailNotLoaded)), "邮件组件无法加载。");
  EXPECT_EQ(Utf8(MailProblemText(kMailLibraryInvalid)), "邮件组件无效。");
  EXPECT_EQ(Utf8(MailProblemText(kMailNotSent)), "邮件发送失败。");
  EXPECT_EQ(Utf8(MailProblemText(1)), "");
}

TEST_F(DlgExcept, MayBeClosedWhileTheMailIsUp) {
  AllowMail();
  machine_.mail.while_sending = [&] { dialog_.EndDialog(77); };
  EXPECT_EQ(Modal(dialog_, {Click(kSendId), Click(IDOK)}), 77);
  EXPECT_TRUE(IsModeless());
}

TEST_F(DlgExcept, MayGoWhileItsQuestionIsUp) {
  Modal(dialog_, {Click(kPrintId), [&] { dialog_.DestroyWindow(); }});
  EXPECT_TRUE(machine_.printing.asked.empty());
  EXPECT_EQ(dialog_.m_hWnd, nullptr);
}

TEST_F(DlgExcept, DisablesTheWindowThatIsActive) {
  BOOL enabled = TRUE;
  Modal(dialog_, {[&] { enabled = top.IsWindowEnabled(); }});
  EXPECT_EQ(enabled, FALSE);
  EXPECT_EQ(top.IsWindowEnabled(), TRUE);
}

class AddInfo : public test::FailureDesk {};

TEST_F(AddInfo, HoldsItsLabelsAndTheText) {
  CDlgExceptAddInfo question(&top);
  EXPECT_EQ(question.m_nPrint, 1);
  question.m_strText = _T("one\r\ntwo");
  Texts shown;
  std::string caption;
  const int result = Modal(question, {[&] {
                                        caption = Utf8(TextOf(*Now()));
                                        for (const HWND child : PeerOf(Now()->m_hWnd)->Children())
                                          shown.push_back(Utf8(PeerOf(child)->Text()));
                                      },
                                      Press(VK_ESCAPE)});
  EXPECT_EQ(caption, "附加提示");
  EXPECT_EQ(shown, (Texts{"使用***出错。", "您的热心对我们解决产品的错误非常有好处！", "错误附加描述：",
                          "one\r\ntwo", "打印", "取消"}));
  EXPECT_EQ(result, IDCANCEL);
  EXPECT_EQ(Utf8(question.m_strText), "one\r\ntwo");
}

TEST_F(AddInfo, WritingGoesOnBehindTheText) {
  CDlgExceptAddInfo question(&top);
  question.m_strText = _T("墙\r\nab");
  Modal(question, {Type(_T("c")), Click(IDOK)});
  EXPECT_EQ(Utf8(question.m_strText), "墙\r\nabc");
}

TEST_F(AddInfo, ReturnBreaksTheLine) {
  CDlgExceptAddInfo question(&top);
  question.m_nPrint = 0;
  std::string button;
  const int result = Modal(question, {[&] { button = TextAt(IDOK); }, Type(_T("a")), Press(VK_RETURN),
                                      Type(_T("b")), Press(VK_TAB), Press(VK_RETURN)});
  EXPECT_EQ(button, "发送");
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(Utf8(question.m_strText), "a\r\nb");
}

}  // namespace
}  // namespace lorv
