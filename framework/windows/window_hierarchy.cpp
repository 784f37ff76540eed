#include <algorithm>
#include <map>

#include "framework/ports/no_window.h"
#include "framework/windows/window.h"

// Which windows belong together, and which of them the user is at. The peer knows the tree; objects are found
// by handle, or made for the moment where a window has none.

namespace lorv {

std::shared_ptr<WindowPeer> PeerOf(HWND window) {
  // Never null: a window that is gone answers as one without size and style.
  auto peer = window == nullptr ? nullptr : DesktopInForce().Find(window);
  return peer == nullptr ? NoWindow() : peer;
}

}  // namespace lorv

namespace {

// Objects made up for windows that have none. They are given up when their window is gone and another one is
// asked for.
std::map<HWND, std::unique_ptr<CWnd>>& MadeUp() {
  static std::map<HWND, std::unique_ptr<CWnd>> objects;
  return objects;
}

void GiveUpStale() {
  std::erase_if(MadeUp(), [](const auto& pair) {
    const bool stale = !lorv::PeerOf(pair.first)->Exists();
    if (stale) pair.second->m_hWnd = nullptr;
    return stale;
  });
}

CWnd* Sibling(HWND window, int step) {
  const HWND parent = lorv::PeerOf(window)->Parent();
  const auto row = parent == nullptr ? lorv::DesktopInForce().Windows() : lorv::PeerOf(parent)->Children();
  const auto at = std::find(row.begin(), row.end(), window);
  const auto before = at - row.begin();
  const auto behind = row.end() - at;
  // Not among them, or no such neighbour.
  if (behind == 0 || before + step < 0 || step >= behind) return nullptr;
  return CWnd::FromHandle(*(at + step));
}

CWnd* EndOf(const std::vector<HWND>& row, bool last) {
  return row.empty() ? nullptr : CWnd::FromHandle(last ? row.back() : row.front());
}

}  // namespace

CWnd* CWnd::FromHandlePermanent(HWND window) {
  // The map also holds targets that are no window classes, such as a desktop's own.
  return dynamic_cast<CWnd*>(lorv::MappedWindow(window));
}

CWnd* CWnd::FromHandle(HWND window) {
  if (CWnd* const known = FromHandlePermanent(window)) return known;
  if (!lorv::PeerOf(window)->Exists()) return nullptr;
  auto& objects = MadeUp();
  const auto found = objects.find(window);
  if (found != objects.end()) return found->second.get();
  // Now and then, when one is made: a pass over all at every question would cost more than they take.
  GiveUpStale();
  auto fresh = std::make_unique<CWnd>();
  fresh->m_hWnd = window;
  return objects.emplace(window, std::move(fresh)).first->second.get();
}

CWnd* CWnd::GetParent() const {
  const auto peer = lorv::PeerOf(m_hWnd);
  const HWND parent = peer->Parent();
  // Of a top-level window the owner counts as parent, as in the framework.
  return FromHandle(parent == nullptr ? peer->Owner() : parent);
}

CWnd* CWnd::GetOwner() const {
  // Set by SetOwner; otherwise the receiver of the notifications.
  return owner_ != nullptr ? FromHandle(owner_) : GetParent();
}

CWnd* CWnd::GetTopLevelParent() const {
  HWND at = m_hWnd;
  // Up through parents only: an owned dialog is a top-level window of its own.
  for (HWND above = at; above != nullptr; above = lorv::PeerOf(at)->Parent()) at = above;
  return FromHandle(at);
}

CWnd* CWnd::GetDlgItem(int id) const {
  for (const HWND child : lorv::PeerOf(m_hWnd)->Children())
    if (lorv::PeerOf(child)->Id() == static_cast<UINT>(id)) return FromHandle(child);
  return nullptr;
}

CWnd* CWnd::GetWindow(UINT which) const {
  if (m_hWnd == nullptr) return nullptr;
  const auto peer = lorv::PeerOf(m_hWnd);
  const auto row = [&] {
    return peer->Parent() == nullptr ? lorv::DesktopInForce().Windows()
                                     : lorv::PeerOf(peer->Parent())->Children();
  };
  switch (which) {
    case GW_CHILD:
      return EndOf(peer->Children(), false);
    case GW_OWNER:
      return FromHandle(peer->Owner());
    case GW_HWNDNEXT:
      return Sibling(m_hWnd, 1);
    case GW_HWNDPREV:
      return Sibling(m_hWnd, -1);
    case GW_HWNDFIRST:
      return EndOf(row(), false);
    case GW_HWNDLAST:
      return EndOf(row(), true);
    default:
      return nullptr;
  }
}

BOOL CWnd::IsChild(const CWnd* window) const {
  if (window == nullptr || m_hWnd == nullptr) return FALSE;
  HWND at = lorv::PeerOf(window->m_hWnd)->Parent();
  // By parents, not owners: a dialog is no child of the window that it belongs to.
  while (at != nullptr && at != m_hWnd) at = lorv::PeerOf(at)->Parent();
  return at == m_hWnd;
}

int CWnd::GetDlgCtrlID() const {
  return static_cast<int>(lorv::PeerOf(m_hWnd)->Id());
}

int CWnd::SetDlgCtrlID(int id) {
  const int former = GetDlgCtrlID();
  lorv::PeerOf(m_hWnd)->SetId(static_cast<UINT>(id));
  return former;
}

CWnd* CWnd::GetFocus() {
  return FromHandle(lorv::DesktopInForce().Focus());
}

CWnd* CWnd::GetCapture() {
  return FromHandle(lorv::DesktopInForce().Capture());
}

CWnd* CWnd::GetActiveWindow() {
  return FromHandle(lorv::DesktopInForce().Active());
}

CWnd* CWnd::WindowFromPoint(POINT screen) {
  return FromHandle(lorv::DesktopInForce().WindowAt(screen));
}

CWnd* CWnd::SetFocus() {
  // Asked before: the call may run handlers that move the focus on.
  CWnd* const former = GetFocus();
  lorv::PeerOf(m_hWnd)->Focus();
  return former;
}

CWnd* CWnd::SetCapture() {
  CWnd* const former = GetCapture();
  if (m_hWnd != nullptr) lorv::DesktopInForce().SetCapture(m_hWnd);
  return former;
}

CWnd* CWnd::SetActiveWindow() {
  // As in SetFocus, before any handler runs.
  CWnd* const former = GetActiveWindow();
  lorv::PeerOf(m_hWnd)->Activate();
  return former;
}

BOOL CWnd::SetForegroundWindow() {
  lorv::PeerOf(m_hWnd)->Activate();
  return m_hWnd != nullptr;
}

void CWnd::BringWindowToTop() {
  lorv::PeerOf(m_hWnd)->Raise();
}
