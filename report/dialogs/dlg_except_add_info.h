#pragma once

#include "framework/text/cstring.h"
#include "report/dialogs/pane_dialog.h"

// Asks the user what led to a failure, before the answer is printed or mailed.
//
// Result: with IDOK m_strText is what was typed, its line ends CR LF; otherwise it is as it was.
// One thread: that of the user interface.
//
//   CDlgExceptAddInfo question(&owner);  question.m_nPrint = 0;  if (question.DoModal() == IDOK) ...
class COMM_LORV_API CDlgExceptAddInfo : public TPaneDlg {
 public:
  explicit CDlgExceptAddInfo(CWnd* parent = nullptr);

  CString m_strText;
  LONG m_nPrint = 1;  // what the answer is for: 1 to be printed, 0 to be sent

  DECLARE_DYNAMIC(CDlgExceptAddInfo)

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;
};
