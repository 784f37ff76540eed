#include "framework/windows/window.h"

// The handlers that a class did not write: the default behaviour, with the arguments that the message came
// with. They exist so that a derived class can call its base's handler as the framework lets it.

int CWnd::OnCreate(LPCREATESTRUCT /*request*/) {
  return static_cast<int>(Default());
}

void CWnd::OnSize(UINT /*type*/, int /*width*/, int /*height*/) {
  Default();
}

void CWnd::OnMove(int /*x*/, int /*y*/) {
  Default();
}

void CWnd::OnShowWindow(BOOL /*show*/, UINT /*status*/) {
  Default();
}

void CWnd::OnEnable(BOOL /*enable*/) {
  Default();
}

void CWnd::OnActivate(UINT /*state*/, CWnd* /*other*/, BOOL /*minimized*/) {
  Default();
}

void CWnd::OnSetFocus(CWnd* /*former*/) {
  Default();
}

void CWnd::OnKillFocus(CWnd* /*next*/) {
  Default();
}

void CWnd::OnCaptureChanged(CWnd* /*next*/) {
  Default();
}

void CWnd::OnKeyDown(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
  Default();
}

void CWnd::OnKeyUp(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
  Default();
}

void CWnd::OnChar(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
  Default();
}

void CWnd::OnSysKeyDown(UINT /*key*/, UINT /*repeat*/, UINT /*flags*/) {
  Default();
}

void CWnd::OnMouseMove(UINT /*flags*/, CPoint /*point*/) {
  Default();
}

void CWnd::OnLButtonDown(UINT /*flags*/, CPoint /*point*/) {
  Default();
}

void CWnd::OnLButtonUp(UINT /*flags*/, CPoint /*point*/) {
  Default();
}

void CWnd::OnLButtonDblClk(UINT /*flags*/, CPoint /*point*/) {
  Default();
}

void CWnd::OnRButtonDown(UINT /*flags*/, CPoint /*point*/) {
  Default();
}

void CWnd::OnRButtonUp(UINT /*flags*/, CPoint /*point*/) {
  Default();
}

BOOL CWnd::OnMouseWheel(UINT /*flags*/, short /*delta*/, CPoint /*point*/) {
  return Default() != 0;
}

BOOL CWnd::OnSetCursor(CWnd* /*window*/, UINT /*hit*/, UINT /*message*/) {
  return Default() != 0;
}

void CWnd::OnTimer(UINT_PTR /*id*/) {
  Default();
}

void CWnd::OnHScroll(UINT /*code*/, UINT /*position*/, CWnd* /*bar*/) {
  Default();
}

void CWnd::OnVScroll(UINT /*code*/, UINT /*position*/, CWnd* /*bar*/) {
  Default();
}

void CWnd::OnContextMenu(CWnd* /*window*/, CPoint /*point*/) {
  Default();
}
