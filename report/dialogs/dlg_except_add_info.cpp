#include "report/dialogs/dlg_except_add_info.h"

#include "report/dialogs/dialog_forms.h"

// The question what led to a failure, before it is printed or sent. The button says which of the two.

IMPLEMENT_DYNAMIC(CDlgExceptAddInfo, TPaneDlg)

CDlgExceptAddInfo::CDlgExceptAddInfo(CWnd* parent) : TPaneDlg(lorv::kDescriptionForm, parent) {}

BOOL CDlgExceptAddInfo::OnInitDialog() {
  SetDlgItemText(lorv::kDescriptionId, m_strText);
  SetDlgItemText(IDOK, m_nPrint != 0 ? _T("打印") : _T("发送"));
  TPaneDlg::OnInitDialog();
  // At the end of what is there, and nothing selected: a user who goes on typing loses nothing.
  CWnd* const text = GetDlgItem(lorv::kDescriptionId);
  text->SetFocus();
  const auto end = static_cast<WPARAM>(m_strText.GetLength());
  text->SendMessage(EM_SETSEL, end, static_cast<LPARAM>(end));
  return FALSE;
}

void CDlgExceptAddInfo::OnOK() {
  GetDlgItemText(lorv::kDescriptionId, m_strText);
  TPaneDlg::OnOK();
}
