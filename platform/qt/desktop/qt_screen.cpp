#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethod>
#include <QLocale>
#include <QPalette>
#include <QScreen>
#include <QStyle>
#include <QStyleHints>
#include <QWidget>
#include <cmath>
#include <memory>

#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/desktop/qt_transfer.h"
#include "platform/qt/drawing/qt_fonts.h"
#include "platform/qt/window/qt_accessible.h"

// The screen, its colours and measures, the clipboard, the keyboard layout.

namespace lorv {
namespace {

QPalette::ColorRole RoleOf(int index) {
  switch (index) {
    case COLOR_WINDOW:
      return QPalette::Base;
    case COLOR_WINDOWTEXT:
      return QPalette::Text;
    case COLOR_HIGHLIGHT:
    case COLOR_HOTLIGHT:
      return QPalette::Highlight;
    case COLOR_HIGHLIGHTTEXT:
      return QPalette::HighlightedText;
    case COLOR_BTNSHADOW:
      return QPalette::Dark;
    case COLOR_BTNTEXT:
      return QPalette::ButtonText;
    case COLOR_BTNHIGHLIGHT:
      return QPalette::Light;
    case COLOR_INFOBK:
      return QPalette::ToolTipBase;
    case COLOR_INFOTEXT:
      return QPalette::ToolTipText;
    case COLOR_BTNFACE:
    case COLOR_SCROLLBAR:
      return QPalette::Window;
    default:
      return QPalette::WindowText;
  }
}

const QScreen* ScreenNear(POINT at) {
  const QScreen* const hit = QGuiApplication::screenAt(ToQt(at));
  return hit == nullptr ? QGuiApplication::primaryScreen() : hit;
}

}  // namespace

int QtDesk::Dpi() const {
  return dpi_;
}

// A window of its own begins on the screen on which its middle lies. A dialog does not: it is made in a
// corner and then put over its owner. One without an area has no screen yet.
int QtDesk::DpiFor(const WindowRequest& request) const {
  const CRect place(request.place);
  const bool placed =
      (request.style & WS_CHILD) == 0 && request.kind != WindowKind::Dialog && place.IsRectEmpty() == 0;
  const QScreen* const screen = placed ? ScreenNear(place.CenterPoint()) : nullptr;
  if (screen == nullptr) return DesktopModel::DpiFor(request);
  return static_cast<int>(std::lround(screen->logicalDotsPerInchY()));
}

void QtDesk::WatchScreens() {
  MeasureScreen();
  for (QScreen* const screen : QGuiApplication::screens()) WatchScreen(screen);
  QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &screens_,
                   [this](QScreen* screen) { WatchScreen(screen); });
}

void QtDesk::WatchScreen(QScreen* screen) {
  QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, &screens_, [this] {
    MeasureScreen();
    // Each window is notified in its turn, not in the middle of the change.
    mailbox_->Leave([this] { ReportScreens(); });
  });
}

void QtDesk::MeasureScreen() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  // One scale for all windows, that of the first screen: Qt is set to count real pixels.
  dpi_ = static_cast<int>(std::lround(screen->logicalDotsPerInchY()));
  ratio_ = screen->devicePixelRatio();
  SetDialogDpi(dpi_);
}

void QtDesk::ReportScreens() {
  for (const HWND top : std::vector<HWND>(Windows()))
    if (const auto window = Window(top)) window->ScreenChanged();
}

RECT QtDesk::WorkArea(POINT near_by) const {
  const QScreen* const screen = ScreenNear(near_by);
  return screen == nullptr ? CRect() : FromQt(screen->availableGeometry());
}

RECT QtDesk::Screen() const {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  return screen == nullptr ? CRect() : FromQt(screen->geometry());
}

COLORREF QtDesk::Colour(int index) const {
  // Grey text has no role of its own: it is the usual text of what is disabled.
  const auto group = index == COLOR_GRAYTEXT ? QPalette::Disabled : QPalette::Active;
  const QColor colour = QApplication::palette().color(group, RoleOf(index));
  return RGB(static_cast<unsigned>(colour.red()), static_cast<unsigned>(colour.green()),
             static_cast<unsigned>(colour.blue()));
}

int QtDesk::BarWidth() const {
  return QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

int QtDesk::CaptionHeight() const {
  return QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

LOGFONT QtDesk::DialogFont() const {
  return DialogFace();
}

std::unique_ptr<Canvas> QtDesk::MakeCanvas(SIZE size) const {
  auto surface = std::make_shared<QtSurface>(size, nullptr, ratio_.load());
  surface->SetDpi(dpi_);
  return std::make_unique<QtCanvas>(std::move(surface), Region(CRect(CPoint(0, 0), size)));
}

// The language in use, with the number that the platform has for it; others answer as English.
HKL QtDesk::Layout() const {
  const QLocale locale = QGuiApplication::inputMethod()->locale();
  const bool traditional = locale.script() == QLocale::TraditionalChineseScript;
  UINT_PTR number = 0x0409;
  if (locale.language() == QLocale::Chinese) number = traditional ? 0x0404 : 0x0804;
  if (locale.language() == QLocale::Japanese) number = 0x0411;
  if (locale.language() == QLocale::German) number = 0x0407;
  return reinterpret_cast<HKL>(number << 16U | number);
}

// Qt reads the layout and cannot change it: only the one in force can be "activated".
HKL QtDesk::ActivateLayout(HKL layout, UINT /*flags*/) {
  return layout == Layout() ? layout : nullptr;
}

bool QtDesk::HasClipboardText() const {
  return !ClipboardText().IsEmpty();
}

CString QtDesk::ClipboardText() const {
  return TextOfMime(QGuiApplication::clipboard()->text());
}

bool QtDesk::SetClipboardText(const CString& text) {
  TransferData data;
  data.SetText(text);
  return SetClipboard(data);
}

bool QtDesk::SetClipboard(const TransferData& data) {
  // The clipboard owns it from then on.
  QGuiApplication::clipboard()->setMimeData(ToMime(data).release());
  return true;
}

std::vector<BYTE> QtDesk::ClipboardBytes(const CString& format) const {
  return MimeContent(QGuiApplication::clipboard()->mimeData()).Bytes(format);
}

void QtDesk::ReportAccessible(HWND window, AccessEvent event, std::int64_t number) {
  // An editor gets its name when its cell is known, after it was made.
  if (event == AccessEvent::Name) NameByLabel(window);
  if (const auto reported = Window(window)) ReportQtAccessible(*reported->Widget(), event, number);
}

int QtDesk::DragDistance() const {
  return QGuiApplication::styleHints()->startDragDistance();
}

}  // namespace lorv
