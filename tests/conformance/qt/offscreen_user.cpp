#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <QWindow>
#include <map>
#include <set>

#include "framework/native/window_types.h"
#include "tests/conformance/qt/qt_user.h"

QT_BEGIN_NAMESPACE
// Where Qt takes in what its own tests play.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text, bool repeated,
                                    ushort count);
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons buttons, Qt::MouseButton button, QEvent::Type type,
                                      Qt::KeyboardModifiers modifiers, int time);
QT_END_NAMESPACE

namespace lorv_test {
namespace {

const std::map<int, Qt::Key> kKeys = {
    {VK_RETURN, Qt::Key_Return}, {VK_TAB, Qt::Key_Tab},         {VK_ESCAPE, Qt::Key_Escape},
    {VK_LEFT, Qt::Key_Left},     {VK_RIGHT, Qt::Key_Right},     {VK_UP, Qt::Key_Up},
    {VK_DOWN, Qt::Key_Down},     {VK_HOME, Qt::Key_Home},       {VK_END, Qt::Key_End},
    {VK_DELETE, Qt::Key_Delete}, {VK_BACK, Qt::Key_Backspace},  {VK_SHIFT, Qt::Key_Shift},
    {VK_F2, Qt::Key_F2},         {VK_CONTROL, Qt::Key_Control}, {VK_F4, Qt::Key_F4},
    {VK_MENU, Qt::Key_Alt},      {VK_SPACE, Qt::Key_Space},     {VK_PRIOR, Qt::Key_PageUp},
    {VK_NEXT, Qt::Key_PageDown}};

class OffscreenUser : public QtUser {
 public:
  void Key(int key, bool down) override {
    QWindow* const window = QGuiApplication::focusWindow();
    const Qt::KeyboardModifiers held = Held();  // as it was before the key
    const auto known = kKeys.find(key);
    int qt_key = known == kKeys.end() ? key : static_cast<int>(known->second);
    if (qt_key == Qt::Key_Tab && (held & Qt::ShiftModifier) != 0) qt_key = Qt::Key_Backtab;
    if (window != nullptr)
      qt_handleKeyEvent(window, down ? QEvent::KeyPress : QEvent::KeyRelease, qt_key, held, TextOf(key, held),
                        false, 1);
    if (down) {
      down_.insert(key);
    } else {
      down_.erase(key);
    }
  }

  void MoveMouse(POINT screen) override {
    at_ = QPoint(screen.x, screen.y);
    Send(QEvent::MouseMove, Qt::NoButton);
  }

  void Button(bool down) override { Hold(Qt::LeftButton, down); }
  void RightButton(bool down) override { Hold(Qt::RightButton, down); }

  void BringOtherProgram() override {
    other_ = std::make_unique<QWidget>();
    other_->setGeometry(700, 700, 50, 50);
    other_->show();
    other_->activateWindow();
    other_->setFocus();
  }

  bool Arrive() override { return false; }

 private:
  Qt::KeyboardModifiers Held() const {
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::ShiftModifier, down_.count(VK_SHIFT) != 0);
    held.setFlag(Qt::ControlModifier, down_.count(VK_CONTROL) != 0);
    held.setFlag(Qt::AltModifier, down_.count(VK_MENU) != 0);
    return held;
  }

  static QString TextOf(int key, Qt::KeyboardModifiers held) {
    const QChar unit(key);
    if (key == VK_SPACE) return QStringLiteral(" ");
    if (key >= '0' && key <= '9') return QString(unit);
    if (key < 'A' || key > 'Z') return {};
    if ((held & Qt::ControlModifier) != 0) return QString(QChar(key - 'A' + 1));
    return QString((held & Qt::ShiftModifier) != 0 ? unit : unit.toLower());
  }

  void Hold(Qt::MouseButton button, bool down) {
    // A handler may drag within a drag, but no finger presses what is down.
    if (buttons_.testFlag(button) == down) return;
    if (!buttons_) pressed_in_ = QGuiApplication::topLevelAt(at_);
    buttons_.setFlag(button, down);
    Send(down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, button);
    if (!buttons_) pressed_in_ = nullptr;
  }

  // The window of a press has the mouse until the release, and a widget that grabbed it has it everywhere.
  QWindow* Receiver() const {
    if (pressed_in_ != nullptr) return pressed_in_;
    const QWidget* const grabber = QWidget::mouseGrabber();
    return grabber != nullptr ? grabber->window()->windowHandle() : QGuiApplication::topLevelAt(at_);
  }

  void Send(QEvent::Type type, Qt::MouseButton button) {
    QWindow* const window = Receiver();
    time_ += 10;
    if (window != nullptr)
      qt_handleMouseEvent(window, window->mapFromGlobal(at_), at_, buttons_, button, type, Held(), time_);
  }

  std::set<int> down_;
  QPoint at_;
  Qt::MouseButtons buttons_;
  QPointer<QWindow> pressed_in_;
  int time_ = 0;
  std::unique_ptr<QWidget> other_;
};

}  // namespace

std::unique_ptr<QtUser> MakeQtUser() {
  return std::make_unique<OffscreenUser>();
}

}  // namespace lorv_test
