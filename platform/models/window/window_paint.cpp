#include "framework/drawing/dots.h"
#include "framework/ports/window_map.h"
#include "platform/models/desktop/desktop_model.h"
#include "platform/models/window/window_model.h"

// What of a window is out of date, and when it is painted; the dots of its screen. Painting is asked for once
// however often it is invalidated, and only while the window can be seen.

namespace lorv {

void WindowModel::Invalidate(const RECT* rect) {
  if (!alive_) return;
  paint_.Invalidate(CRect(ClientRect()), rect);
  Invalidated();
  if (Dirty()) PaintWanted();
}

void WindowModel::WantPaint() {
  paint_.Invalidate(CRect(ClientRect()), nullptr);
  if (Dirty()) PaintWanted();
}

void WindowModel::SetRedraw(bool on) {
  paint_.SetRedraw(on);
  RedrawChanged(on);
  if (Dirty()) PaintWanted();
}

void WindowModel::AskToPaint() {
  paint_.Paint([this] { DeliverMessage(handle_, WM_PAINT, 0, 0); });
  if (alive_ && Dirty()) PaintWanted();
}

void WindowModel::Update() {
  if (!Seen()) return;
  const auto keep = shared_from_this();
  if (Dirty()) AskToPaint();
  PictureChanged();
}

void WindowModel::Shift(SIZE by, const RECT* area, const RECT* clip, bool children) {
  if (!alive_) return;
  const auto keep = shared_from_this();
  const CRect client(ClientRect());
  const CRect target = paint_.Shift(client, by, area, clip);
  // A desktop that cannot move pixels paints them anew.
  if (!ShiftPicture(target, by)) paint_.Invalidate(client, &target);
  if (Dirty()) PaintWanted();
  PictureChanged();
  // Last: moving them runs handlers, which may scroll again.
  if (children) ShiftChildren(by, area == nullptr ? client : client & *area);
}

void WindowModel::ShiftChildren(SIZE by, const CRect& area) {
  const CSize origin{CPoint(ClientOrigin())};
  for (const HWND child : Children()) {
    const auto window = desktop_.At(child);
    if (window == nullptr) continue;
    const CRect place = CRect(window->WindowRect()) - static_cast<SIZE>(origin);
    if ((place & area).IsRectEmpty() == 0) window->Place(place + by);
    if (!alive_) return;
  }
}

void WindowModel::ReportDpi(int dpi) {
  if (!alive_ || dpi <= 0 || dpi == dpi_) return;
  const auto keep = shared_from_this();
  // Other threads ask for the dots per inch, so they are atomic.
  const int before = dpi_.exchange(dpi);
  DpiChanged();
  Invalidate(nullptr);
  for (const HWND child : Children())
    if (const auto window = desktop_.At(child)) window->ReportDpi(dpi);
  if (parent_ != nullptr) return;
  const CRect now(WindowRect());
  const SIZE size = {ForDots(now.Width(), dpi, before), ForDots(now.Height(), dpi, before)};
  RECT place = CRect(now.TopLeft(), size);
  DeliverMessage(handle_, WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
}

}  // namespace lorv
