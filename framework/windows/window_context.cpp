// Device contexts of a window: they draw on the surface that its peer gives.

#include "framework/drawing/device_context.h"
#include "framework/ports/no_window.h"
#include "framework/windows/window.h"

CPaintDC::CPaintDC(CWnd* window) {
  SetSurface(lorv::PeerOf(window == nullptr ? nullptr : window->m_hWnd)->PaintCanvas(m_ps.rcPaint));
}

CClientDC::CClientDC(CWnd* window)
    : CDC(lorv::PeerOf(window == nullptr ? nullptr : window->m_hWnd)->ClientCanvas()) {}
