#include "gridcore/control/grid_messages.h"

#include "framework/ports/desktop_port.h"

// The grid's own messages, whose numbers are the system's to give.

UINT BCGM_GRID_ITEM_ENDINPLACEEDIT = 0;
UINT BCGM_GRID_ADJUST_LAYOUT = 0;

void lorv::RegisterGridMessages() {
  Desktop& desktop = DesktopInForce();
  BCGM_GRID_ITEM_ENDINPLACEEDIT = desktop.RegisterMessage(_T("BCGM_GRID_ITEM_ENDINPLACEEDIT"));
  BCGM_GRID_ADJUST_LAYOUT = desktop.RegisterMessage(_T("BCGM_GRID_ADJUST_LAYOUT"));
}
