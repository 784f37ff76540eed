#pragma once

#include "framework/windows/dialog.h"

// The dialog base of the suite. Here it adds nothing to the framework's; the suite's looks come with its own.
class COMM_LORV_API TPaneDlg : public CDialog {
 public:
  explicit TPaneDlg(const lorv::DialogTemplate& form, CWnd* parent = nullptr) : CDialog(form, parent) {}

  DECLARE_DYNAMIC(TPaneDlg)
};
