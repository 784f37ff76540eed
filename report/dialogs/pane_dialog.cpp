#include "report/dialogs/pane_dialog.h"

// The run-time class of the suite's dialogs; everything else of it stands in the header.

IMPLEMENT_DYNAMIC(TPaneDlg, CDialog)
