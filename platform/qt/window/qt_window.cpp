#include "platform/qt/window/qt_window.h"

#include <QPaintEvent>
#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_fonts.h"

// Place, state and painting of a window. Its life is in qt_window_life.cpp, its events in
// qt_window_input.cpp.

namespace lorv {

bool QtWindow::Seen() const {
  if (!alive_ || (style_ & WS_VISIBLE) == 0) return false;
  const auto parent = parent_ == nullptr ? nullptr : desk_.At(parent_);
  return parent_ == nullptr || (parent != nullptr && parent->Seen());
}

bool QtWindow::Blocked() const {
  if ((style_ & WS_DISABLED) != 0) return true;
  const auto parent = parent_ == nullptr ? nullptr : desk_.At(parent_);
  return parent != nullptr && parent->Blocked();
}

void QtWindow::SetStyle(DWORD style) {
  if (!alive_) return;
  const DWORD before = std::exchange(style_, style);
  {
    const WidgetWork work(*this);
    StyleChanged(before);
  }
  ReportPlace();
}

void QtWindow::SetExStyle(DWORD style) {
  ex_style_ = style;
  SetStyle(style_);
}

void QtWindow::Measure() {
  if (widget_ == nullptr) return;
  const Edges edges = Margins();
  surface_->Resize(
      {widget_->width() - edges.left - edges.right, widget_->height() - edges.top - edges.bottom},
      widget_->devicePixelRatioF());
}

// Where the window stands, as WM_MOVE counts it.
CPoint QtWindow::PlaceOf() const {
  const auto parent = parent_ == nullptr ? nullptr : desk_.At(parent_);
  if (parent == nullptr) return ClientOrigin();
  const Edges edges = parent->Margins();
  return FromQt(widget_->pos()) - CSize(edges.left, edges.top);
}

void QtWindow::ReportPlace() {
  if (!alive_ || widget_ == nullptr) return;
  const CRect client_before(ClientRect());
  Measure();
  SayMoved(told_at_, client_before);
}

void QtWindow::SayMoved(CPoint at_before, const CRect& client_before) {
  const auto keep = shared_from_this();
  const CRect client(ClientRect());
  const CPoint at = PlaceOf();
  if (at != at_before) {
    told_at_ = at;
    DeliverMessage(handle_, WM_MOVE, 0, MAKELPARAM(at.x, at.y));
  }
  if (!alive_ || client == client_before) return;
  ScrollChanged();
  Invalidate(nullptr);
  DeliverMessage(handle_, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
}

void QtWindow::Place(const RECT& place) {
  if (!alive_) return;
  const auto keep = shared_from_this();
  QRect rect = ToQt(place);
  if (parent_ != nullptr) {
    if (const auto parent = desk_.At(parent_)) rect.translate(parent->Margins().left, parent->Margins().top);
  } else {
    const QRect frame = widget_->frameGeometry();
    const QRect inner = widget_->geometry();
    rect.adjust(inner.left() - frame.left(), inner.top() - frame.top(), inner.right() - frame.right(),
                inner.bottom() - frame.bottom());
  }
  // The messages come in one order whether the widget tells of it at once or later.
  {
    const WidgetWork work(*this);
    widget_->setGeometry(QRect(rect.topLeft(), rect.size().expandedTo(QSize(0, 0))));
  }
  ReportPlace();
}

void QtWindow::Raise() {
  if (!alive_) return;
  widget_->raise();
  if (parent_ == nullptr) desk_.RaiseTop(handle_);
}

RECT QtWindow::WindowRect() const {
  if (!alive_) return {0, 0, 0, 0};
  if (parent_ == nullptr) return FromQt(widget_->frameGeometry());
  return CRect(FromQt(widget_->mapToGlobal(QPoint(0, 0))), CSize(widget_->width(), widget_->height()));
}

RECT QtWindow::ClientRect() const {
  return alive_ ? CRect(CPoint(0, 0), surface_->Size()) : CRect();
}

POINT QtWindow::ClientOrigin() const {
  if (!alive_) return {0, 0};
  const Edges edges = Margins();
  return FromQt(widget_->mapToGlobal(QPoint(edges.left, edges.top)));
}

SIZE QtWindow::FrameSize(SIZE client) const {
  if (!alive_) return client;
  const Edges edges = Margins();
  const QSize frame = parent_ == nullptr ? widget_->frameGeometry().size() - widget_->size() : QSize(0, 0);
  return {client.cx + edges.left + edges.right + frame.width(),
          client.cy + edges.top + edges.bottom + frame.height()};
}

void QtWindow::Show(int how) {
  const bool on = how != SW_HIDE;
  if (!alive_) return;
  const auto keep = shared_from_this();
  if (((style_ & WS_VISIBLE) != 0) != on) {
    DeliverMessage(handle_, WM_SHOWWINDOW, static_cast<WPARAM>(on), 0);
    if (!alive_) return;
    style_ = on ? style_ | WS_VISIBLE : style_ & ~WS_VISIBLE;
    if (on) Invalidate(nullptr);
    if (!on) LoseFocusWithin();
  }
  if (!alive_) return;
  const bool activates = how != SW_SHOWNA && how != SW_SHOWNOACTIVATE && how != SW_SHOWMINNOACTIVE;
  widget_->setAttribute(Qt::WA_ShowWithoutActivating, !activates || kind_ == WindowKind::Popup);
  widget_->setVisible(on);
  if (how == SW_SHOWMAXIMIZED) widget_->showMaximized();
  if (how == SW_SHOWMINIMIZED || how == SW_MINIMIZE) widget_->showMinimized();
  if (how == SW_RESTORE || how == SW_SHOWNORMAL) widget_->setWindowState(Qt::WindowNoState);
  ReportPlace();
  if (alive_ && on && activates && parent_ == nullptr && kind_ != WindowKind::Popup) Activate();
}

// A window that goes out of sight hands the focus to its parent, a top window to the one below it.
void QtWindow::LoseFocusWithin() {
  if (desk_.Capture() == handle_) desk_.SetCapture(nullptr);
  if (!desk_.Within(handle_, desk_.Focus()) && desk_.Active() != handle_) return;
  if (parent_ != nullptr) {
    desk_.MoveFocus(parent_);
  } else {
    desk_.ActivateNext(handle_, owner_);
  }
}

void QtWindow::Enable(bool on) {
  if (!alive_ || on == ((style_ & WS_DISABLED) == 0)) return;
  const auto keep = shared_from_this();
  if (!on) {
    DeliverMessage(handle_, WM_CANCELMODE, 0, 0);
    if (!alive_) return;
    style_ |= WS_DISABLED;
    if (desk_.Focus() == handle_) desk_.MoveFocus(nullptr);
  } else {
    style_ &= ~WS_DISABLED;
  }
  // A disabled top window keeps its looks: only its input is refused.
  if (alive_ && parent_ != nullptr) widget_->setEnabled(on);
  DeliverMessage(handle_, WM_ENABLE, static_cast<WPARAM>(on), 0);
}

void QtWindow::Focus() {
  if (alive_ && (style_ & WS_DISABLED) == 0) desk_.MoveFocus(handle_);
}

void QtWindow::Activate() {
  if (alive_) desk_.ActivateTop(desk_.TopOf(handle_));
}

void QtWindow::Invalidate(const RECT* rect) {
  if (!alive_) return;
  const CRect client(ClientRect());
  const CRect part = rect == nullptr ? client : client & *rect;
  if (!PaintsSelf()) pane_->update();
  WantPaint(part);
}

void QtWindow::WantPaint(const CRect& part) {
  dirty_ |= part;
  if (Dirty()) desk_.WantPaint();
}

void QtWindow::AskToPaint() {
  DeliverMessage(handle_, WM_PAINT, 0, 0);
  // A handler that paints nothing would be asked for ever.
  dirty_.SetRectEmpty();
}

void QtWindow::Update() {
  if (!Seen()) return;
  const auto keep = shared_from_this();
  if (Dirty()) AskToPaint();
  ShowChanges();
}

std::unique_ptr<Canvas> QtWindow::PaintCanvas(RECT& dirty) {
  const CRect limit = std::exchange(dirty_, CRect());
  dirty = limit;
  auto canvas = std::make_unique<QtCanvas>(surface_, limit);
  if (alive_ && limit.IsRectEmpty() == 0) EraseGround(*canvas, limit);
  return canvas;
}

std::unique_ptr<Canvas> QtWindow::ClientCanvas() {
  // Large enough for every size that the window may come to while the canvas lives.
  constexpr int kLimit = 1 << 20;
  return std::make_unique<QtCanvas>(surface_, CRect(0, 0, alive_ ? kLimit : 0, kLimit));
}

void QtWindow::ShowChanges() {
  const CRect part = surface_->TakeChanged();
  if (!alive_ || part.IsRectEmpty() != 0) return;
  const QPoint at = pane_ == widget_ ? QPoint(Margins().left, Margins().top) : QPoint(0, 0);
  pane_->update(ToQt(part).translated(at));
}

void QtWindow::SetText(const CString& text) {
  if (alive_) DeliverMessage(handle_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.GetString()));
}

void QtWindow::SetFont(const LOGFONT& font) {
  if (!alive_) return;
  font_ = font;
  const WidgetWork work(*this);
  FontChanged(FontOf(font));
}

void QtWindow::SetScroll(int bar, const SCROLLINFO& info) {
  if (!alive_ || (bar != SB_HORZ && bar != SB_VERT)) return;
  SCROLLINFO& now = scroll_[bar == SB_VERT ? 1 : 0];
  if ((info.fMask & SIF_RANGE) != 0) {
    now.nMin = info.nMin;
    now.nMax = std::max(info.nMin, info.nMax);
  }
  if ((info.fMask & SIF_PAGE) != 0) now.nPage = info.nPage;
  if ((info.fMask & SIF_POS) != 0) now.nPos = info.nPos;
  const std::int64_t span = std::int64_t{now.nMax} - now.nMin + 1;
  now.nPage = static_cast<UINT>(std::min<std::int64_t>(now.nPage, span));
  const int last = static_cast<int>(now.nMax - std::max<std::int64_t>(std::int64_t{now.nPage} - 1, 0));
  now.nPos = std::clamp(now.nPos, now.nMin, std::max(now.nMin, last));
  now.nTrackPos = now.nPos;
  if ((info.fMask & (SIF_RANGE | SIF_PAGE)) != 0 && (info.fMask & SIF_DISABLENOSCROLL) == 0)
    ShowScroll(bar, now.nMin < last);
  if (alive_) ScrollChanged();
}

void QtWindow::ShowScroll(int bar, bool on) {
  const DWORD bit = bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
  if (alive_ && ((style_ & bit) != 0) != on) SetStyle(on ? style_ | bit : style_ & ~bit);
}

std::vector<DWORD> QtWindow::Picture(SIZE& size) {
  size = {0, 0};
  if (!Seen()) return {};
  const auto keep = shared_from_this();
  Update();
  if (!alive_) return {};
  const QImage grabbed = widget_->grab().toImage().convertToFormat(QImage::Format_RGB32);
  size = {grabbed.width(), grabbed.height()};
  return PixelsOf(grabbed);
}

int QtWindow::Dpi() const {
  return alive_ ? widget_->logicalDpiX() : 96;
}

}  // namespace lorv
