#include "platform/qt/window/qt_board.h"

#include <QDialog>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <cstdint>

#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_accessible.h"

// Windows that draw themselves: top-level windows, dialogs, popups and children of no control class. All
// that is seen of them comes from the surface; only the line around them and the scroll bars, which are
// widgets of Qt, stand outside the client area.

namespace lorv {
namespace {

Qt::WindowFlags FlagsOf(const WindowRequest& request) {
  if ((request.style & WS_CHILD) != 0) return Qt::Widget;
  // As a tool tip it is never made active, which a popup of Qt would be.
  if (request.kind == WindowKind::Popup) return Qt::ToolTip | Qt::FramelessWindowHint;
  const auto kind = request.kind == WindowKind::Dialog ? Qt::Dialog : Qt::Window;
  if ((request.style & WS_CAPTION) != WS_CAPTION) return kind | Qt::FramelessWindowHint;
  if ((request.style & WS_THICKFRAME) != 0) return kind;
  // A frame that sizes nothing has no button that would.
  constexpr auto kFixed = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
  return kind | kFixed | ((request.style & WS_SYSMENU) != 0 ? Qt::WindowSystemMenuHint : Qt::Widget);
}

QWidget* MakeWidget(const WindowRequest& request, QWidget* around) {
  if (request.kind == WindowKind::Dialog) return new QDialog(around, FlagsOf(request));
  return new QWidget(around, FlagsOf(request));
}

int CodeOf(int action) {
  switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
      return SB_LINEDOWN;
    case QAbstractSlider::SliderSingleStepSub:
      return SB_LINEUP;
    case QAbstractSlider::SliderPageStepAdd:
      return SB_PAGEDOWN;
    case QAbstractSlider::SliderPageStepSub:
      return SB_PAGEUP;
    case QAbstractSlider::SliderToMinimum:
      return SB_TOP;
    case QAbstractSlider::SliderToMaximum:
      return SB_BOTTOM;
    default:
      return SB_THUMBTRACK;
  }
}

// The widget set reckons in int and needs room for sums: a longer range stands in its bar in steps.
class WidgetRange {
 public:
  explicit WidgetRange(const SCROLLINFO& info) : least_(info.nMin) {
    constexpr std::int64_t kMost = 1 << 24;
    for (std::int64_t span = std::int64_t{info.nMax} - info.nMin; span > kMost; span /= 2) ++halvings_;
  }
  int ToWidget(int position) const {
    return static_cast<int>((std::int64_t{position} - least_) >> halvings_);
  }
  int FromWidget(int place) const { return static_cast<int>(least_ + (std::int64_t{place} << halvings_)); }
  int Page(UINT page) const {
    return static_cast<int>(std::max(std::int64_t{page} >> halvings_, std::int64_t{1}));
  }

 private:
  std::int64_t least_;
  int halvings_ = 0;
};

}  // namespace

QtBoard::QtBoard(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtWindow(desk, handle, request) {
  QWidget* const widget = MakeWidget(request, around);
  // What is seen comes from the surface alone: nothing is filled before.
  widget->setAttribute(Qt::WA_OpaquePaintEvent);
  widget->setAttribute(Qt::WA_InputMethodEnabled);
  widget->setWindowTitle(ToQt(request.text.View()));
  MarkAccessible(*widget, handle);
  Start(widget);
  ShowStyle(0);
}

int QtBoard::Line() const {
  const bool framed = (Look() & WS_CAPTION) != WS_CAPTION && (Look() & WS_BORDER) != 0;
  return framed || (ExStyle() & WS_EX_CLIENTEDGE) != 0 ? 1 : 0;
}

bool QtBoard::IsFixed() const {
  const bool top = (Look() & (WS_CHILD | WS_CAPTION)) == WS_CAPTION;
  return top && (Look() & WS_THICKFRAME) == 0;
}

QtWindow::Edges QtBoard::Margins() const {
  const int line = Line();
  const int bar = Widget()->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  return {line, line, line + ((Look() & WS_VSCROLL) != 0 ? bar : 0),
          line + ((Look() & WS_HSCROLL) != 0 ? bar : 0)};
}

void QtBoard::EraseGround(Canvas& canvas, const CRect& part) {
  if (Kind() == WindowKind::Dialog || Kind() == WindowKind::Top)
    canvas.Fill(part, Home().Colour(COLOR_BTNFACE));
}

void QtBoard::ShowStyle(DWORD before) {
  constexpr DWORD kBars = WS_VSCROLL | WS_HSCROLL;
  if (((Look() ^ before) & WS_THICKFRAME) != 0) HoldSize();
  if (((Look() ^ before) & kBars) == 0 || Widget() == nullptr) return;
  if ((Look() & WS_VSCROLL) != 0) ProvideBar(SB_VERT);
  if ((Look() & WS_HSCROLL) != 0) ProvideBar(SB_HORZ);
  PlaceBars();
}

void QtBoard::ProvideBar(int bar) {
  QScrollBar*& slot = bars_[bar == SB_VERT ? 1 : 0];
  // A bar that was hidden again is kept: showing and hiding go with every fit of a table.
  if (slot != nullptr) return;
  slot = new QScrollBar(bar == SB_VERT ? Qt::Vertical : Qt::Horizontal, Widget());
  // As on Windows, where the bars of a window never take the keys from it.
  slot->setFocusPolicy(Qt::NoFocus);
  Watch(slot);
  QObject::connect(slot, &QScrollBar::actionTriggered, slot,
                   WhileItLives([this, bar](int action) { Moved(bar, action); }));
  QObject::connect(slot, &QScrollBar::sliderReleased, slot, WhileItLives([this, bar] { Released(bar); }));
}

void QtBoard::PlaceBars() {
  const QRect all = Widget()->rect();
  const Edges edges = Margins();
  for (const int bar : {SB_VERT, SB_HORZ}) {
    QScrollBar* const slot = bars_[bar == SB_VERT ? 1 : 0];
    if (slot == nullptr) continue;
    const bool on = (Look() & (bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL)) != 0;
    const QRect client = all.adjusted(edges.left, edges.top, -edges.right, -edges.bottom);
    const int line = Line();
    slot->setGeometry(bar == SB_VERT
                          ? QRect(client.right() + 1, client.top(), edges.right - line, client.height())
                          : QRect(client.left(), client.bottom() + 1, client.width(), edges.bottom - line));
    slot->setVisible(on);
  }
}

void QtBoard::ScrollChanged() {
  PlaceBars();
  for (const int bar : {SB_VERT, SB_HORZ}) {
    QScrollBar* const slot = bars_[bar == SB_VERT ? 1 : 0];
    // The handle that the user holds stays beneath the mouse.
    if (slot == nullptr || slot->isSliderDown()) continue;
    const SCROLLINFO now = Scroll(bar);
    const WidgetRange range(now);
    slot->setRange(0, range.ToWidget(Bar(bar).LastPosition()));
    slot->setPageStep(range.Page(now.nPage));
    slot->setValue(range.ToWidget(now.nPos));
  }
}

int QtBoard::HandlePlace(int bar) const {
  return WidgetRange(Scroll(bar)).FromWidget(bars_[bar == SB_VERT ? 1 : 0]->sliderPosition());
}

void QtBoard::ResetHandle(int bar) {
  const SCROLLINFO now = Scroll(bar);
  bars_[bar == SB_VERT ? 1 : 0]->setSliderPosition(WidgetRange(now).ToWidget(now.nPos));
}

// The bar only asks: it moves when the window class sets its position. The handle alone follows the mouse.
void QtBoard::Moved(int bar, int action) {
  if (!Exists() || Blocked()) return;
  const auto keep = shared_from_this();
  const QtDesk::Event event(Home());
  QScrollBar* const slot = bars_[bar == SB_VERT ? 1 : 0];
  const int code = CodeOf(action);
  if (code == SB_THUMBTRACK) {
    dragged_ = slot->isSliderDown();
    ScrollByUser(bar, SB_THUMBTRACK, HandlePlace(bar));
    if (!dragged_ && Exists()) Released(bar);
    return;
  }
  ResetHandle(bar);
  ScrollByUser(bar, code, 0);
  if (Exists()) ScrollByUser(bar, SB_ENDSCROLL, 0);
  if (Exists()) ResetHandle(bar);
}

void QtBoard::Released(int bar) {
  if (!Exists() || Blocked()) return;
  const auto keep = shared_from_this();
  const QtDesk::Event event(Home());
  ScrollByUser(bar, SB_THUMBPOSITION, HandlePlace(bar));
  if (Exists()) ScrollByUser(bar, SB_ENDSCROLL, 0);
  if (Exists()) ResetHandle(bar);
}

bool QtBoard::TakePaint(QObject* receiver, QPaintEvent& event) {
  if (receiver != Widget()) return false;
  const Edges edges = Margins();
  QPainter painter(Widget());
  const QRect all = Widget()->rect();
  // Beside the client area only: that is as large as the screen, and comes from the surface.
  const QRegion beside = event.region() - all.adjusted(edges.left, edges.top, -edges.right, -edges.bottom);
  for (const QRect& part : beside) painter.fillRect(part, ToQt(Home().Colour(COLOR_BTNFACE)));
  if (Line() != 0) {
    painter.setPen(ToQt(Home().Colour(COLOR_BTNSHADOW)));
    painter.drawRect(all.adjusted(0, 0, -1, -1));
  }
  ShowSurface(painter, QPoint(edges.left, edges.top), event);
  return true;
}

}  // namespace lorv
