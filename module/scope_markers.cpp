#include "module/scope_markers.h"

// What the program is in the middle of: opening a project, blocking the mouse. Static fields that scopes set
// and put back; they belong to the thread of the user interface.

bool TOpenProject::m_bOpenPrj = false;

int TBlockMouse::m_iBlockMouse = 0;
CString TBlockMouse::m_iEventInfo;
CString TBlockMouse::m_iEventAllInfo;

void TBlockMouse::SetEventInfo(int value) {
  m_iEventInfo.AppendFormat(_T(";%d"), value);
}

void TBlockMouse::SetAllEventInfo(int value) {
  m_iEventAllInfo.AppendFormat(_T(";%d"), value);
}
