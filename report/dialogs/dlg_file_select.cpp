#include "report/dialogs/dlg_file_select.h"

#include "report/dialogs/dialog_forms.h"

// The choice of one name from a list. A double click takes a name as the button does.

IMPLEMENT_DYNAMIC(CDlgFileSelect, TPaneDlg)

BEGIN_MESSAGE_MAP(CDlgFileSelect, TPaneDlg)
ON_LBN_DBLCLK(lorv::kNamesId, OnOK)
END_MESSAGE_MAP()

CDlgFileSelect::CDlgFileSelect(const CStringArray& names, CWnd* parent)
    : TPaneDlg(lorv::kFileSelectForm, parent), m_arrNames(names) {}

BOOL CDlgFileSelect::OnInitDialog() {
  const CWnd* const list = GetDlgItem(lorv::kNamesId);
  for (int i = 0; i < m_arrNames.GetSize(); ++i)
    list->SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(m_arrNames[i].GetString()));
  list->SendMessage(LB_SETCURSEL, 0);
  return TPaneDlg::OnInitDialog();
}

void CDlgFileSelect::OnOK() {
  m_nSelection = static_cast<int>(GetDlgItem(lorv::kNamesId)->SendMessage(LB_GETCURSEL));
  TPaneDlg::OnOK();
}
