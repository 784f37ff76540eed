#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include "platform/qt/desktop/qt_desktop.h"
#include "platform/qt/desktop/qt_text.h"
#include "tests/platform/exchange/drop_suite.h"

namespace lorv_test {
namespace {

Qt::KeyboardModifiers ModifiersOf(DWORD keys) {
  Qt::KeyboardModifiers held;
  held.setFlag(Qt::ShiftModifier, (keys & MK_SHIFT) != 0);
  held.setFlag(Qt::ControlModifier, (keys & MK_CONTROL) != 0);
  return held;
}

// As another program of the widget set offers it.
std::unique_ptr<QMimeData> Offered(const lorv::TransferData& data) {
  auto mime = std::make_unique<QMimeData>();
  if (data.HasText()) mime->setText(lorv::ToQt(data.Text().View()).remove(QChar(u'\r')));
  for (const auto& [format, bytes] : data.Formats())
    mime->setData(lorv::ToQt(format.View()), QByteArray(reinterpret_cast<const char*>(bytes.data()),
                                                        static_cast<qsizetype>(bytes.size())));
  return mime;
}

// The events as a window system's drag brings them to a widget.
class EventDrag : public DragUser {
 public:
  EventDrag(const lorv::TransferData& data, DROPEFFECT allowed)
      : mime_(Offered(data)), allowed_(QFlag(static_cast<int>(allowed))) {}

  DROPEFFECT Move(HWND window, POINT client, DWORD keys) override {
    QWidget* const widget = lorv::QtWidgetOf(window);
    if (!widget->acceptDrops() || !widget->isEnabled()) return DROPEFFECT_NONE;
    const Qt::KeyboardModifiers modifiers = ModifiersOf(keys);
    const QPoint at = lorv::ToQt(client);
    if (!std::exchange(over_, true)) {
      QDragEnterEvent enter(at, allowed_, mime_.get(), Qt::LeftButton, modifiers);
      return Sent(*widget, enter);
    }
    QDragMoveEvent move(at, allowed_, mime_.get(), Qt::LeftButton, modifiers);
    return Sent(*widget, move);
  }
  void Leave(HWND window) override {
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(lorv::QtWidgetOf(window), &leave);
    over_ = false;
  }
  DROPEFFECT Drop(HWND window, POINT client, DWORD keys) override {
    const DROPEFFECT would = Move(window, client, keys);
    if (would == DROPEFFECT_NONE) return DROPEFFECT_NONE;
    QDropEvent drop(lorv::ToQt(client), allowed_, mime_.get(), Qt::NoButton, ModifiersOf(keys));
    drop.setDropAction(static_cast<Qt::DropAction>(would));
    return Sent(*lorv::QtWidgetOf(window), drop);
  }

 private:
  static DROPEFFECT Sent(QWidget& widget, QDropEvent& event) {
    event.ignore();
    QCoreApplication::sendEvent(&widget, &event);
    return event.isAccepted() ? static_cast<DROPEFFECT>(event.dropAction()) : DROPEFFECT{DROPEFFECT_NONE};
  }
  std::unique_ptr<QMimeData> mime_;
  Qt::DropActions allowed_;
  bool over_ = false;
};

struct WidgetDrops {
  static std::unique_ptr<lorv::Desktop> Make() { return lorv::MakeQtDesktop(); }
  static std::unique_ptr<DragUser> Bring(lorv::Desktop& /*desktop*/, const lorv::TransferData& data,
                                         DROPEFFECT allowed) {
    return std::make_unique<EventDrag>(data, allowed);
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, DropIn, WidgetDrops);

using QtDragOut = DropIn<WidgetDrops>;

// Nobody moves the mouse: Esc ends the loop that the drag runs.
TEST_F(QtDragOut, EscapeGivesItUpAndLeavesNothingBehind) {
  COleDataSource source;
  source.SetText(_T("C30"));
  QTimer pressing;
  QObject::connect(&pressing, &QTimer::timeout, [] {
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(QGuiApplication::focusWindow(), &escape);
  });
  pressing.start(20);
  EXPECT_EQ(source.DoDragDrop(), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  EXPECT_EQ(source.DoDragDrop(), static_cast<DROPEFFECT>(DROPEFFECT_NONE)) << "a second one begins and ends";
}

TEST_F(QtDragOut, NothingIsDraggedWhereNothingIsAllowed) {
  COleDataSource source;
  source.SetText(_T("C30"));
  EXPECT_EQ(source.DoDragDrop(DROPEFFECT_NONE), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
}

}  // namespace
}  // namespace lorv_test
