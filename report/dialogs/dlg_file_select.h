#pragma once

#include "framework/collections/string_array.h"
#include "report/dialogs/pane_dialog.h"

// Has the user choose one of several names: which of the open workbooks is meant.
//
// Result: Selection gives the name's place in the list once OK was pressed (or a name clicked twice); -1
//   before that, after Cancel, and where there was nothing to choose.
// The names are shown in the order given, the first one selected. They are copied.
// One thread: that of the user interface.
//
//   CDlgFileSelect choice(names);  if (choice.DoModal() == IDOK) name = names[choice.Selection()];
class COMM_LORV_API CDlgFileSelect : public TPaneDlg {
 public:
  explicit CDlgFileSelect(const CStringArray& names, CWnd* parent = nullptr);

  int Selection() const { return m_nSelection; }

  DECLARE_DYNAMIC(CDlgFileSelect)

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;

  DECLARE_MESSAGE_MAP()

 private:
  CStringArray m_arrNames;
  int m_nSelection = -1;
};
