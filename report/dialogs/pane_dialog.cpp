#include "report/dialogs/pane_dialog.h"

IMPLEMENT_DYNAMIC(TPaneDlg, CDialog)
