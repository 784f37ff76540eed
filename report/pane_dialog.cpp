#include "report/pane_dialog.h"

IMPLEMENT_DYNAMIC(TPaneDlg, CDialog)
