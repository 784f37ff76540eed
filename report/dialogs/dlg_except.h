#pragma once

#include "framework/text/cstring.h"
#include "report/content/report_text.h"
#include "report/dialogs/pane_dialog.h"

// The report of one failure, and the dialog that shows it: the user reads it, and may print or mail a
// description of what led to it.
//
// The report is shown and logged; paper and mail carry the user's description ALONE. Each of the two ways
//   builds the report anew, with the description as its message and the main program as its module.
// "发送" is enabled where the profile's value MAIL\MAPI is not 0 and a mail library is found.
// Edges: without Show it needs no desktop. A step that fails (no printer, a page that is refused) ends the
//   way; failures of the mail library are reported by a message.
// Lives on the stack for one report. One thread: that of the user interface.
//
//   CDlgExcept dialog;  dialog.BuildReport(_T("x"), {_T("a.cpp"), 5, nullptr});  dialog.DoModal();
class COMM_LORV_API CDlgExcept : public TPaneDlg {
 public:
  CDlgExcept();

  // Makes the report of a message. A file that is not empty is kept, with its line, for the reports to come.
  void BuildReport(const CString& message, const lorv::FailurePlace& place);
  const CString& Report() const { return m_strReport; }
  const CString& Description() const { return m_strDescription; }

  DECLARE_DYNAMIC(CDlgExcept)

 protected:
  BOOL OnInitDialog() override;
  void OnPrint();
  void OnSend();

  DECLARE_MESSAGE_MAP()

 private:
  bool AskDescription(LONG print);
  void BuildAnew() { BuildReport(m_strDescription, {m_strFile, m_nLine, nullptr}); }

  CString m_strReport;
  CString m_strDescription;
  CString m_strFile;
  LONG m_nLine = 0;
};
