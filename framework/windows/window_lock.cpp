#include "framework/windows/window_lock.h"

#include <map>

// Redrawing off for a scope, counted by window: locks nest across functions that know nothing of each other,
// and only the outermost one turns redrawing off and on.

namespace {

// How many locks each window is under, on the thread of the user interface.
std::map<HWND, int>& Locks() {
  // By handle and not by object: objects for the moment come and go.
  static thread_local std::map<HWND, int> locks;
  return locks;
}

}  // namespace

OxWindowLock::OxWindowLock(CWnd* window) {
  if (window == nullptr || window->m_hWnd == nullptr) return;
  int& locks = Locks()[window->m_hWnd];
  // A window under a lock counts as hidden itself.
  if (locks == 0 && (window->GetStyle() & WS_VISIBLE) == 0) {
    Locks().erase(window->m_hWnd);
    return;
  }
  window_ = window->m_hWnd;
  if (locks++ == 0) window->SetRedraw(FALSE);
}

OxWindowLock::~OxWindowLock() {
  if (window_ == nullptr) return;
  const auto locks = Locks().find(window_);
  if (locks == Locks().end() || --locks->second > 0) return;
  Locks().erase(locks);
  // Destroyed within the scope: there is nothing left to draw.
  if (!lorv::PeerOf(window_)->Exists()) return;
  CWnd* const window = CWnd::FromHandle(window_);
  window->SetRedraw(TRUE);
  window->Invalidate();
}
