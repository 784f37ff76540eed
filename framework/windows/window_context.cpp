// Device contexts of a window: they draw on the surface that its peer gives.

#include "framework/drawing/device_context.h"
#include "framework/ports/no_window.h"
#include "framework/windows/window.h"

CPaintDC::CPaintDC(CWnd* window) {
  const auto peer = lorv::PeerOf(window == nullptr ? nullptr : window->m_hWnd);
  // Asked before the canvas is taken: from then on all of it counts as painted.
  for (const RECT& rect : peer->UpdateRects()) dirty_.Add(rect);
  SetSurface(peer->PaintCanvas(m_ps.rcPaint));
  SetLimit(m_ps.rcPaint);
}

CClientDC::CClientDC(CWnd* window)
    : CDC(lorv::PeerOf(window == nullptr ? nullptr : window->m_hWnd)->ClientCanvas()) {}
