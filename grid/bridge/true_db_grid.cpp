#include "grid/bridge/true_db_grid.h"

#include "framework/objects/exceptions.h"
#include "grid/bridge/event_dispatch.h"

// The bridge itself: the class, its messages, and how an event reaches the parent.

IMPLEMENT_DYNCREATE(CBcgTrueDbGridCtrl, CBCGPBasicGridCtrl)

BEGIN_MESSAGE_MAP(CBcgTrueDbGridCtrl, CBCGPBasicGridCtrl)
ON_WM_LBUTTONDOWN()
ON_WM_RBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_RBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_CHAR()
ON_WM_KEYUP()
ON_WM_KEYDOWN()
ON_MESSAGE(lorv::kMessagePostEvent, OnPostMsg)
END_MESSAGE_MAP()

CBcgTrueDbGridCtrl::CBcgTrueDbGridCtrl() = default;

CBcgTrueDbGridCtrl::~CBcgTrueDbGridCtrl() {
  // The window goes while the grid can still report it.
  if (m_hWnd != nullptr) CWnd::DestroyWindow();
}

// NOLINTNEXTLINE(cert-dcl50-cpp): events have arguments of any number and kind
void CBcgTrueDbGridCtrl::FireEvent(DISPID event, const BYTE* types, ...) {
  va_list arguments;
  va_start(arguments, types);
  FireEventV(event, types, arguments);
  va_end(arguments);
}

void CBcgTrueDbGridCtrl::FireEventV(DISPID event, const BYTE* types, va_list arguments) {
  CWnd* const parent = m_hWnd == nullptr ? nullptr : GetParent();
  if (parent == nullptr) return;
  CGridDispatchDriver::CInvokeDisp events(static_cast<DWORD>(GetDlgCtrlID()), parent);
  CGridDispatchDriver driver(events);
  // Whatever a handler raises ends here: an event never brings the grid down.
  try {
    driver.InvokeHelperV(event, DISPATCH_METHOD, VT_EMPTY, nullptr, types, arguments);
  } catch (CException* raised) {
    raised->Delete();
  } catch (...) {  // NOLINT(bugprone-empty-catch)
  }
}

LRESULT CBcgTrueDbGridCtrl::OnPostMsg(WPARAM code, LPARAM /*l*/) {
  Raise<40>(static_cast<short>(code));
  return 0;
}
