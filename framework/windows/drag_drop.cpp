#include "framework/windows/drag_drop.h"

// The window may end, and the target with it, in each of the calls out: nothing of the object is touched
// after.

COleDropTarget::~COleDropTarget() {
  Revoke();
}

BOOL COleDropTarget::Register(CWnd* window) {
  const HWND handle = window == nullptr ? nullptr : window->m_hWnd;
  if (handle == nullptr || GetWindowHandle() != nullptr) return FALSE;
  // One receiver a window: the system knows no second one, and neither would hear of all drags.
  if (lorv::MappedDropReceiver(handle) != nullptr || !lorv::PeerOf(handle)->AcceptDrops(true)) return FALSE;
  window_ = handle;
  lorv::MapDropReceiver(handle, this);
  return TRUE;
}

void COleDropTarget::Revoke() {
  const HWND window = GetWindowHandle();
  window_ = nullptr;
  if (window == nullptr) return;
  lorv::UnmapDropReceiver(window);
  lorv::PeerOf(window)->AcceptDrops(false);
}

// The window may have gone, or another target may have come: the map knows which holds.
HWND COleDropTarget::GetWindowHandle() const {
  return lorv::MappedDropReceiver(window_) == this ? window_ : nullptr;
}

DROPEFFECT COleDropTarget::OnDragEnter(CWnd* window, COleDataObject* data, DWORD keys, CPoint point) {
  // A class that answers to moves need not write the same for the entry.
  return OnDragOver(window, data, keys, point);
}

DROPEFFECT COleDropTarget::OnDragOver(CWnd* /*window*/, COleDataObject* /*data*/, DWORD /*keys*/,
                                      CPoint /*point*/) {
  return DROPEFFECT_NONE;
}

void COleDropTarget::OnDragLeave(CWnd* /*window*/) {}

BOOL COleDropTarget::OnDrop(CWnd* /*window*/, COleDataObject* /*data*/, DROPEFFECT /*effect*/,
                            CPoint /*point*/) {
  return FALSE;
}

DROPEFFECT COleDropTarget::Enter(const lorv::DragContent& content, const lorv::DragPlace& place) {
  COleDataObject data(content);
  allowed_ = place.allowed;
  return OnDragEnter(CWnd::FromHandle(window_), &data, place.keys, CPoint(place.at));
}

DROPEFFECT COleDropTarget::Over(const lorv::DragContent& content, const lorv::DragPlace& place) {
  COleDataObject data(content);
  allowed_ = place.allowed;
  return OnDragOver(CWnd::FromHandle(window_), &data, place.keys, CPoint(place.at));
}

void COleDropTarget::Leave() {
  OnDragLeave(CWnd::FromHandle(window_));
}

DROPEFFECT COleDropTarget::Drop(const lorv::DragContent& content, const lorv::DragPlace& place,
                                DROPEFFECT effect) {
  COleDataObject data(content);
  allowed_ = place.allowed;
  // The answer to the source: a drop that was refused must not take the content away from it.
  return OnDrop(CWnd::FromHandle(window_), &data, effect, CPoint(place.at)) != 0 ? effect : DROPEFFECT_NONE;
}

DROPEFFECT COleDataSource::DoDragDrop(DROPEFFECT allowed) {
  return lorv::DesktopInForce().Drag(data_, allowed);
}

BOOL COleDataSource::SetClipboard() const {
  return lorv::DesktopInForce().SetClipboard(data_);
}
