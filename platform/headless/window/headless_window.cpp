#include "platform/headless/window/headless_window.h"

#include <algorithm>

#include "framework/ports/no_window.h"
#include "framework/ports/window_map.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/models/class_names.h"

namespace lorv {
namespace {

constexpr int kSizingFrame = 4;
constexpr int kCaption = 24;
constexpr int kBar = 16;

}  // namespace

HeadlessWindow::HeadlessWindow(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request)
    : desktop_(desktop),
      handle_(handle),
      kind_(request.kind),
      class_name_(ClassNameOf(request)),
      text_(request.text),
      style_(Without(request.style, WS_VISIBLE)),
      ex_style_(request.ex_style),
      place_(request.place),
      id_(request.id),
      font_(desktop.DialogFont()),
      surface_(std::make_shared<HeadlessSurface>(SIZE{0, 0})) {
  ((style_ & WS_CHILD) != 0 ? parent_ : owner_) = request.parent;
  for (SCROLLINFO& bar : scroll_) bar.nMax = 100;
  Measure();
}

HeadlessWindow::Edges HeadlessWindow::Frame() const {
  if ((style_ & WS_CAPTION) == WS_CAPTION) return {kSizingFrame, kSizingFrame + kCaption};
  const bool line = (style_ & WS_BORDER) != 0 || (ex_style_ & WS_EX_CLIENTEDGE) != 0;
  return line ? Edges{1, 1} : Edges{0, 0};
}

SIZE HeadlessWindow::FrameSize(SIZE client) const {
  const Edges frame = Frame();
  return {client.cx + 2 * frame.side, client.cy + frame.top + frame.side};
}

void HeadlessWindow::Measure() {
  const Edges frame = Frame();
  const int across = place_.Width() - 2 * frame.side - ((style_ & WS_VSCROLL) != 0 ? kBar : 0);
  const int down = place_.Height() - frame.top - frame.side - ((style_ & WS_HSCROLL) != 0 ? kBar : 0);
  const CSize size(std::max(across, 0), std::max(down, 0));
  const std::lock_guard<std::mutex> lock(mutex_);
  if (client_ == size) return;
  client_ = size;
  surface_->Resize(size);
}

RECT HeadlessWindow::ClientRect() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return alive_ ? CRect(CPoint(0, 0), static_cast<SIZE>(client_)) : CRect();
}

RECT HeadlessWindow::WindowRect() const {
  if (!alive_) return {0, 0, 0, 0};
  if (parent_ == nullptr) return place_;
  const auto parent = desktop_.At(parent_);
  return parent == nullptr ? place_ : place_ + parent->ClientOrigin();
}

POINT HeadlessWindow::ClientOrigin() const {
  const Edges frame = Frame();
  return CRect(WindowRect()).TopLeft() + CSize(frame.side, frame.top);
}

bool HeadlessWindow::Seen() const {
  if (!alive_ || (style_ & WS_VISIBLE) == 0) return false;
  const auto parent = parent_ == nullptr ? nullptr : desktop_.At(parent_);
  return parent_ == nullptr || (parent != nullptr && parent->Seen());
}

void HeadlessWindow::SayMoved(const CRect& before, const CRect& client_before) {
  const auto keep = shared_from_this();
  const CRect client(ClientRect());
  if (before.TopLeft() != place_.TopLeft()) {
    const CPoint at = parent_ == nullptr ? CPoint(ClientOrigin()) : place_.TopLeft();
    DeliverMessage(handle_, WM_MOVE, 0, MAKELPARAM(at.x, at.y));
  }
  if (!alive_ || client == client_before) return;
  Invalidate(nullptr);
  DeliverMessage(handle_, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
}

void HeadlessWindow::Place(const RECT& place) {
  if (!alive_) return;
  const CRect before = place_;
  const CRect client_before(ClientRect());
  place_ = place;
  Measure();
  SayMoved(before, client_before);
}

void HeadlessWindow::SetStyle(DWORD style) {
  if (!alive_) return;
  const CRect client_before(ClientRect());
  style_ = style;
  Measure();
  SayMoved(place_, client_before);
}

void HeadlessWindow::SetExStyle(DWORD style) {
  ex_style_ = style;
  SetStyle(style_);
}

void HeadlessWindow::Raise() {
  if (parent_ == nullptr) desktop_.RaiseTop(handle_);
}

void HeadlessWindow::Show(int how) {
  const bool on = how != SW_HIDE;
  if (!alive_) return;
  const auto keep = shared_from_this();
  if (((style_ & WS_VISIBLE) != 0) != on) {
    DeliverMessage(handle_, WM_SHOWWINDOW, static_cast<WPARAM>(on), 0);
    if (!alive_) return;
    style_ = on ? style_ | WS_VISIBLE : Without(style_, WS_VISIBLE);
    if (on) Invalidate(nullptr);
    if (!on) LoseFocusWithin();
  }
  const bool activates = how != SW_SHOWNA && how != SW_SHOWNOACTIVATE && how != SW_SHOWMINNOACTIVE;
  if (alive_ && on && activates && parent_ == nullptr && kind_ != WindowKind::Popup) Activate();
}

// A window that goes out of sight hands the focus to its parent, a top window to the one below it.
void HeadlessWindow::LoseFocusWithin() {
  if (desktop_.Capture() == handle_) desktop_.SetCapture(nullptr);
  if (!desktop_.Within(handle_, desktop_.Focus()) && desktop_.Active() != handle_) return;
  if (parent_ != nullptr)
    desktop_.MoveFocus(parent_);
  else
    desktop_.ActivateNext(handle_, owner_);
}

void HeadlessWindow::Enable(bool on) {
  if (!alive_ || on == ((style_ & WS_DISABLED) == 0)) return;
  const auto keep = shared_from_this();
  if (!on) {
    DeliverMessage(handle_, WM_CANCELMODE, 0, 0);
    if (!alive_) return;
    style_ |= WS_DISABLED;
    if (desktop_.Focus() == handle_) desktop_.MoveFocus(nullptr);
  } else {
    style_ = Without(style_, WS_DISABLED);
  }
  DeliverMessage(handle_, WM_ENABLE, static_cast<WPARAM>(on), 0);
}

void HeadlessWindow::Focus() {
  if (alive_ && (style_ & WS_DISABLED) == 0) desktop_.MoveFocus(handle_);
}

void HeadlessWindow::Activate() {
  if (alive_) desktop_.ActivateTop(desktop_.TopOf(handle_));
}

void HeadlessWindow::Invalidate(const RECT* rect) {
  if (!alive_) return;
  const CRect client(ClientRect());
  dirty_ |= rect == nullptr ? client : client & *rect;
}

void HeadlessWindow::Update() {
  if (!Seen() || dirty_.IsRectEmpty() != 0) return;
  const auto keep = shared_from_this();
  DeliverMessage(handle_, WM_PAINT, 0, 0);
  // A handler that paints nothing would be asked for ever.
  dirty_.SetRectEmpty();
}

std::unique_ptr<Canvas> HeadlessWindow::PaintCanvas(RECT& dirty) {
  dirty = dirty_;
  const CRect limit = dirty_;
  dirty_.SetRectEmpty();
  return std::make_unique<HeadlessCanvas>(surface_, limit);
}

std::unique_ptr<Canvas> HeadlessWindow::ClientCanvas() {
  // Large enough for every size that the window may come to while the canvas lives.
  constexpr int kLimit = 1 << 20;
  if (!alive_)
    return std::make_unique<HeadlessCanvas>(std::make_shared<HeadlessSurface>(SIZE{0, 0}), CRect());
  return std::make_unique<HeadlessCanvas>(surface_, CRect(0, 0, kLimit, kLimit));
}

void HeadlessWindow::SetText(const CString& text) {
  if (alive_) DeliverMessage(handle_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.GetString()));
}

void HeadlessWindow::SetScroll(int bar, const SCROLLINFO& info) {
  if (!alive_ || (bar != SB_HORZ && bar != SB_VERT)) return;
  SCROLLINFO& now = scroll_[bar == SB_VERT];
  if ((info.fMask & SIF_RANGE) != 0) {
    now.nMin = info.nMin;
    now.nMax = std::max(info.nMin, info.nMax);
  }
  if ((info.fMask & SIF_PAGE) != 0) now.nPage = info.nPage;
  if ((info.fMask & SIF_POS) != 0) now.nPos = info.nPos;
  const int span = now.nMax - now.nMin + 1;
  now.nPage = std::min(now.nPage, static_cast<UINT>(span));
  const int last = now.nMax - std::max(static_cast<int>(now.nPage) - 1, 0);
  now.nPos = std::clamp(now.nPos, now.nMin, std::max(now.nMin, last));
  now.nTrackPos = now.nPos;
  const bool fits = now.nMin >= last;
  if ((info.fMask & (SIF_RANGE | SIF_PAGE)) != 0 && (info.fMask & SIF_DISABLENOSCROLL) == 0)
    ShowScroll(bar, !fits);
}

void HeadlessWindow::ShowScroll(int bar, bool on) {
  const DWORD bit = bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
  if (alive_ && ((style_ & bit) != 0) != on) SetStyle(on ? style_ | bit : Without(style_, bit));
}

void HeadlessWindow::SetTimer(UINT_PTR id, UINT milliseconds) {
  if (!alive_) return;
  timers_[id] = std::max(milliseconds, 1U);
  desktop_.StartTimer(handle_, id, timers_[id]);
}

bool HeadlessWindow::KillTimer(UINT_PTR id) {
  desktop_.StopTimer(handle_, id);
  return timers_.erase(id) != 0;
}

void HeadlessWindow::Notify(UINT code) {
  const HWND receiver = parent_ == nullptr ? owner_ : parent_;
  if (receiver != nullptr)
    DeliverMessage(receiver, WM_COMMAND, MAKEWPARAM(static_cast<LONG_PTR>(id_), static_cast<LONG_PTR>(code)),
                   reinterpret_cast<LPARAM>(handle_));
}

void HeadlessWindow::Destroy() {
  if (ending_ || !alive_) return;
  const auto keep = shared_from_this();
  ending_ = true;
  for (const HWND owned : desktop_.OwnedBy(handle_))
    if (const auto window = desktop_.At(owned)) window->Destroy();
  if ((style_ & WS_VISIBLE) != 0) {
    style_ = Without(style_, WS_VISIBLE);
    LoseFocusWithin();
  }
  TellOfEnd();
  End();
}

void HeadlessWindow::TellOfEnd() {
  const auto keep = shared_from_this();
  ending_ = true;
  DeliverMessage(handle_, WM_DESTROY, 0, 0);
  for (const HWND child : Children())
    if (const auto window = desktop_.At(child); window != nullptr && !window->ending_) window->TellOfEnd();
}

void HeadlessWindow::End() {
  const auto keep = shared_from_this();
  while (!children_.empty()) {
    const HWND child = children_.back();
    children_.pop_back();
    if (const auto window = desktop_.At(child)) window->End();
  }
  if (!alive_) return;
  DeliverMessage(handle_, WM_NCDESTROY, 0, 0);
  if (const auto parent = desktop_.At(parent_)) std::erase(parent->children_, handle_);
  alive_ = false;
  desktop_.Forget(handle_);
  UnmapWindow(handle_);
}

}  // namespace lorv
