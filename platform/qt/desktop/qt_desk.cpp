#include "platform/qt/desktop/qt_desk.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "framework/objects/exceptions.h"
#include "framework/windows/accessible_window.h"
#include "platform/qt/controls/qt_button.h"
#include "platform/qt/controls/qt_combo.h"
#include "platform/qt/controls/qt_edit.h"
#include "platform/qt/controls/qt_list.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_accessible.h"
#include "platform/qt/window/qt_board.h"

// Which windows there are. The queue is in qt_queue.cpp, focus and activation in qt_focus.cpp, the screen and
// the rest of the system in qt_screen.cpp.

namespace lorv {
namespace {

// The widget set ends the process where it finds none.
bool HasScreen() {
  const auto named = [](const char* variable) { return !qEnvironmentVariableIsEmpty(variable); };
  return named("QT_QPA_PLATFORM") || named("DISPLAY") || named("WAYLAND_DISPLAY");
}

// The program counts the pixels of the screen, as it does elsewhere: a larger screen has more of them to the
// inch, and nothing is drawn smaller and blown up. The scale that the user asks for becomes dots per inch.
// In force while the application is made.
class InRealPixels {
 public:
  InRealPixels() {
    constexpr int kLeast = 24;
    const int dots = static_cast<int>(std::lround(kUsualDpi * qEnvironmentVariable(kFactor).toDouble()));
    qputenv(kScaling, "0");
    qunsetenv(kFactor);
    if (dots >= kLeast && !qEnvironmentVariableIsSet(kDots)) qputenv(kDots, QByteArray::number(dots));
  }
  InRealPixels(const InRealPixels&) = delete;
  InRealPixels& operator=(const InRealPixels&) = delete;
  // Programs that this one starts find what it found.
  ~InRealPixels() {
    for (std::size_t i = 0; i < std::size(kNames); ++i)
      before_[i].isNull() ? qunsetenv(kNames[i]) : qputenv(kNames[i], before_[i]);
  }

 private:
  static constexpr const char* kFactor = "QT_SCALE_FACTOR";
  static constexpr const char* kScaling = "QT_ENABLE_HIGHDPI_SCALING";
  static constexpr const char* kDots = "QT_FONT_DPI";
  static constexpr const char* kNames[] = {kFactor, kScaling, kDots};
  static QByteArray Value(const char* name) {
    return qEnvironmentVariableIsSet(name) ? qgetenv(name) : QByteArray();
  }
  const QByteArray before_[3] = {Value(kFactor), Value(kScaling), Value(kDots)};
};

// The widget set wants its arguments for as long as it lives. That is to the end of the process: ended among
// the process's other objects it would reach for some that are gone already.
void ProvideApplication() {
  static int count = 1;
  static char name[] = "lorv";
  static char* arguments[] = {name, nullptr};
  if (qobject_cast<QApplication*>(QApplication::instance()) != nullptr) return;
  // An application without widgets cannot be replaced, nor one be made without a screen.
  if (QApplication::instance() != nullptr || !HasScreen()) AfxThrowResourceException();
  const InRealPixels counted;
  static const QApplication* const application = new QApplication(count, arguments);
  static_cast<void>(application);
  // Programs end by their own messages: closing the last window is not the end here.
  QApplication::setQuitOnLastWindowClosed(false);
}

}  // namespace

QtDesk::QtDesk() {
  ProvideApplication();
  AnswerAccessibility();
  mailbox_ = std::make_shared<QtMailbox>();
  WatchScreens();
}

QtDesk::~QtDesk() {
  // Objects above may outlive the desktop: they are notified that their windows go.
  DestroyAll();
  Sweep();
  mailbox_->Close();
}

std::shared_ptr<WindowModel> QtDesk::MakeWindow(const WindowRequest& request, HWND handle) {
  const auto parent = Window(request.parent);
  QWidget* const around = parent == nullptr ? nullptr : parent->Widget();
  switch (request.kind) {
    case WindowKind::Edit:
      return std::make_shared<QtEdit>(*this, handle, request, around);
    case WindowKind::Combo:
      return std::make_shared<QtCombo>(*this, handle, request, around);
    case WindowKind::List:
      return std::make_shared<QtList>(*this, handle, request, around);
    case WindowKind::Button:
      return std::make_shared<QtButton>(*this, handle, request, around);
    case WindowKind::Static:
      return std::make_shared<QtStatic>(*this, handle, request, around);
    default:
      return std::make_shared<QtBoard>(*this, handle, request, around);
  }
}

void QtDesk::Begin(WindowModel& made, const WindowRequest& request) {
  auto& window = static_cast<QtWindow&>(made);
  window.Begin();
  // Placed before anything is reported of it.
  ++window.working_;
  window.RememberPlace({});
  window.PutAt(request.place);
  window.Measure();
  window.RememberPlace(window.PlaceOf());
  --window.working_;
  NameByLabel(window.Handle());
}

// Qt itself answers for controls, and has no notion of the label before one.
void QtDesk::NameByLabel(HWND control) {
  const auto window = Window(control);
  const bool labelled =
      window != nullptr && (window->Kind() == WindowKind::Edit || window->Kind() == WindowKind::List ||
                            window->Kind() == WindowKind::Combo);
  if (labelled) window->Widget()->setAccessibleName(ToQt(AccessibleLabel(control).View()));
}

void QtDesk::NameAfter(HWND label) {
  const auto window = Window(label);
  const auto parent = window == nullptr ? nullptr : Window(window->Parent());
  if (parent == nullptr) return;
  const std::vector<HWND> among = parent->Children();
  const auto self = std::find(among.begin(), among.end(), label);
  if (self != among.end() && self + 1 != among.end()) NameByLabel(*(self + 1));
}

void QtDesk::Forget(HWND window) {
  DesktopModel::Forget(window);
  // A window that is gone cannot become active any more: it is not waited for.
  if (asked_ == window) asked_ = nullptr;
}

QtDesk::Event::Event(QtDesk& desk) : desk_(desk) {
  desk_.live_events_.push_back(++desk_.event_count_);
}

QtDesk::Event::~Event() {
  desk_.live_events_.pop_back();
  // Not for what an outer event still holds: a loop within that one would sweep for ever and never sleep.
  const auto may_end = [this](const Doomed& entry) { return desk_.MayEnd(entry.born); };
  if (std::any_of(desk_.doomed_.begin(), desk_.doomed_.end(), may_end)) desk_.WantSweep();
}

void QtDesk::DeleteLater(QWidget* widget, std::uint64_t born) {
  // Outside of events no code of the widget is running.
  if (live_events_.empty()) {
    delete widget;
    return;
  }
  // It is gone for the user already.
  widget->hide();
  doomed_.push_back({widget, born});
}

void QtDesk::WantSweep() {
  if (std::exchange(sweep_wanted_, true)) return;
  mailbox_->Leave([this] { Sweep(); });
}

void QtDesk::Sweep() {
  sweep_wanted_ = false;
  const auto kept = std::stable_partition(doomed_.begin(), doomed_.end(),
                                          [this](const Doomed& entry) { return !MayEnd(entry.born); });
  const std::vector<Doomed> ready(std::make_move_iterator(kept), std::make_move_iterator(doomed_.end()));
  doomed_.erase(kept, doomed_.end());
  // A widget that stands in another one goes with that.
  for (const Doomed& entry : ready) delete entry.widget.data();
}

std::unique_ptr<Desktop> MakeQtDesktop() {
  return std::make_unique<QtDesk>();
}

QWidget* QtWidgetOf(HWND window) {
  const auto* const desk = dynamic_cast<QtDesk*>(&DesktopInForce());
  const auto found = desk == nullptr ? nullptr : desk->Window(window);
  return found == nullptr ? nullptr : found->Widget();
}

}  // namespace lorv

lorv::Desktop* LorvNewQtDesktop() {
  try {
    return lorv::MakeQtDesktop().release();
  } catch (CResourceException* none) {
    none->Delete();
    return nullptr;
  }
}
