#include "report/dialogs/dlg_except.h"

#include "platform/ports/platform.h"
#include "report/dialogs/dialog_forms.h"
#include "report/dialogs/dlg_except_add_info.h"
#include "report/dialogs/failure_mail.h"
#include "report/dialogs/failure_page.h"

// The dialog that shows a failure to the user, with printing and mail. Modal dialogs run inside its handlers,
// so behind each of them the window is asked for again.

IMPLEMENT_DYNAMIC(CDlgExcept, TPaneDlg)

BEGIN_MESSAGE_MAP(CDlgExcept, TPaneDlg)
ON_BN_CLICKED(lorv::kPrintId, OnPrint)
ON_BN_CLICKED(lorv::kSendId, OnSend)
END_MESSAGE_MAP()

namespace {

bool MailIsThere() {
  const lorv::Platform& ports = lorv::PortsInForce();
  return ports.settings->ProfileValue(_T("MAIL"), _T("MAPI"), 0) != 0 && ports.mail->Installed();
}

}  // namespace

CDlgExcept::CDlgExcept() : TPaneDlg(lorv::kFailureForm) {}

void CDlgExcept::BuildReport(const CString& message, const lorv::FailurePlace& place) {
  if (!place.file.IsEmpty()) {
    m_strFile = place.file;
    m_nLine = place.line;
  }
  m_strReport = lorv::ReportText(message, place);
}

BOOL CDlgExcept::OnInitDialog() {
  TPaneDlg::OnInitDialog();
  CString shown = m_strReport;
  shown.Replace(_T("\n"), _T("\r\n"));
  SetDlgItemText(lorv::kReportTextId, shown);
  // Whether mail works is asked now: asking at the click would be too late to say no.
  GetDlgItem(lorv::kSendId)->EnableWindow(MailIsThere() ? TRUE : FALSE);
  // The button, not the text: the focus would select all of it.
  GotoDlgCtrl(GetDlgItem(IDOK));
  return FALSE;
}

bool CDlgExcept::AskDescription(LONG print) {
  CDlgExceptAddInfo question(this);
  question.m_strText = m_strDescription;
  question.m_nPrint = print;
  // What was typed and then cancelled is not kept.
  if (question.DoModal() != IDOK) return false;
  m_strDescription = question.m_strText;
  // The dialog may have been closed while the question was up.
  return m_hWnd != nullptr;
}

void CDlgExcept::OnPrint() {
  if (!AskDescription(1)) return;
  const auto job = lorv::AskPage(m_hWnd);
  if (job == nullptr) return;
  BuildAnew();
  lorv::PrintLines(*job, m_strDescription + _T("\n"));
  job->End();
}

void CDlgExcept::OnSend() {
  if (!AskDescription(0)) return;
  BuildAnew();
  lorv::MailDescription(*this, m_strDescription);
}
