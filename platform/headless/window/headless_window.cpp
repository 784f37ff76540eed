#include "platform/headless/window/headless_window.h"

#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/headless/desktop/headless_desktop.h"

// A window in memory: place, frame, surface. Sizes of frames are fixed numbers. Size and surface are guarded
// by a lock, as a canvas may draw from another thread while the window is moved.

namespace lorv {
namespace {

constexpr int kSizingFrame = 4;
constexpr int kCaption = 24;
constexpr int kBar = 16;

}  // namespace

HeadlessWindow::HeadlessWindow(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
    : WindowModel(desktop, handle, request),
      home_(desktop),
      place_(request.place),
      surface_(std::make_shared<HeadlessSurface>(SIZE{0, 0})) {
  DpiChanged();
  Measure();
}

HeadlessWindow::Edges HeadlessWindow::Frame() const {
  if ((Look() & WS_CAPTION) == WS_CAPTION) return {kSizingFrame, kSizingFrame + kCaption};
  const bool line = (Look() & WS_BORDER) != 0 || (ExStyle() & WS_EX_CLIENTEDGE) != 0;
  return line ? Edges{1, 1} : Edges{0, 0};
}

SIZE HeadlessWindow::FrameSize(SIZE client) const {
  const Edges frame = Frame();
  return {client.cx + 2 * frame.side, client.cy + frame.top + frame.side};
}

void HeadlessWindow::Measure() {
  const Edges frame = Frame();
  const int across = place_.Width() - 2 * frame.side - ((Look() & WS_VSCROLL) != 0 ? kBar : 0);
  const int down = place_.Height() - frame.top - frame.side - ((Look() & WS_HSCROLL) != 0 ? kBar : 0);
  const CSize size(std::max(across, 0), std::max(down, 0));
  const std::lock_guard<std::mutex> lock(mutex_);
  // Moving a window must not lose its picture.
  if (client_ == size) return;
  client_ = size;
  surface_->Resize(size);
}

RECT HeadlessWindow::ClientRect() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return Exists() ? CRect(CPoint(0, 0), static_cast<SIZE>(client_)) : CRect();
}

RECT HeadlessWindow::WindowRect() const {
  if (!Exists()) return {0, 0, 0, 0};
  const auto parent = ParentModel();
  return parent == nullptr ? place_ : place_ + parent->ClientOrigin();
}

POINT HeadlessWindow::ClientOrigin() const {
  const Edges frame = Frame();
  return CRect(WindowRect()).TopLeft() + CSize(frame.side, frame.top);
}

// Where the client area of a top-level window stands on the screen, and a child in its parent.
CPoint HeadlessWindow::ReportedPlace() const {
  return Parent() == nullptr ? CPoint(ClientOrigin()) : place_.TopLeft();
}

void HeadlessWindow::PlaceChanged() {
  if (!Exists()) return;
  Measure();
  ReportPlace(ReportedPlace());
}

void HeadlessWindow::Place(const RECT& place) {
  if (!Exists()) return;
  place_ = place;
  PlaceChanged();
}

void HeadlessWindow::Raise() {
  if (Parent() == nullptr) home_.RaiseTop(Handle());
}

std::unique_ptr<Canvas> HeadlessWindow::PaintCanvas(RECT& dirty) {
  const Region limit = TakeDirty();
  dirty = limit.Bounds();
  return std::make_unique<HeadlessCanvas>(surface_, limit);
}

bool HeadlessWindow::ShiftPicture(const CRect& target, SIZE by) {
  surface_->CopyFrom(*surface_, target - by, target.TopLeft());
  return true;
}

void HeadlessWindow::PaintDefault() {
  RECT dirty = {};
  PaintSelf(*PaintCanvas(dirty));
}

std::unique_ptr<Canvas> HeadlessWindow::ClientCanvas() {
  // Large enough for every size that the window may come to while the canvas lives.
  constexpr int kLimit = 1 << 20;
  if (!Exists())
    return std::make_unique<HeadlessCanvas>(std::make_shared<HeadlessSurface>(SIZE{0, 0}), Region());
  return std::make_unique<HeadlessCanvas>(surface_, Region(CRect(0, 0, kLimit, kLimit)));
}

void HeadlessWindow::SetTimer(UINT_PTR id, UINT milliseconds) {
  if (Exists()) home_.StartTimer(Handle(), id, std::max(milliseconds, 1U));
}

bool HeadlessWindow::KillTimer(UINT_PTR id) {
  return home_.StopTimer(Handle(), id);
}

}  // namespace lorv
