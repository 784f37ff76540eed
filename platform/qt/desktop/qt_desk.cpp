#include "platform/qt/desktop/qt_desk.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>

#include "framework/objects/exceptions.h"
#include "framework/ports/window_map.h"
#include "platform/qt/controls/qt_button.h"
#include "platform/qt/controls/qt_combo.h"
#include "platform/qt/controls/qt_edit.h"
#include "platform/qt/controls/qt_list.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "platform/qt/desktop/qt_text.h"
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

// The widget set wants its arguments for as long as it lives. That is to the end of the process: ended among
// the process's other objects it would reach for some that are gone already.
void ProvideApplication() {
  static int count = 1;
  static char name[] = "lorv";
  static char* arguments[] = {name, nullptr};
  if (qobject_cast<QApplication*>(QApplication::instance()) != nullptr) return;
  if (QApplication::instance() != nullptr || !HasScreen()) AfxThrowResourceException();
  static const QApplication* const application = new QApplication(count, arguments);
  static_cast<void>(application);
  QApplication::setQuitOnLastWindowClosed(false);
}

}  // namespace

QtDesk::QtDesk() {
  ProvideApplication();
  mailbox_ = std::make_shared<QtMailbox>();
}

QtDesk::~QtDesk() {
  // Objects above may outlive the desktop: they are told that their windows go.
  while (!tops_.empty()) {
    const HWND top = tops_.front();
    if (const auto window = At(top)) window->Destroy();
    std::erase(tops_, top);
  }
  Sweep();
  mailbox_->Close();
}

std::shared_ptr<QtWindow> QtDesk::At(HWND window) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const auto found = windows_.find(window);
  return found == windows_.end() ? nullptr : found->second;
}

std::shared_ptr<QtWindow> QtDesk::MakeWindow(const WindowRequest& request, HWND handle) {
  const auto parent = At(request.parent);
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

void QtDesk::Adopt(const std::shared_ptr<QtWindow>& window) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    windows_[window->Handle()] = window;
  }
  if (const auto parent = At(window->Parent())) {
    parent->children_.push_back(window->Handle());
  } else {
    tops_.insert(tops_.begin(), window->Handle());
  }
}

bool QtDesk::Admits(const WindowRequest& request) const {
  const auto parent = At(request.parent);
  if ((request.style & WS_CHILD) != 0) return parent != nullptr && !parent->Ending();
  return request.parent == nullptr || parent != nullptr;
}

HWND QtDesk::Create(const WindowRequest& request) {
  if (!Admits(request)) return nullptr;
  const HWND handle = reinterpret_cast<HWND>(last_handle_ += 2);
  const auto window = MakeWindow(request, handle);
  Adopt(window);
  window->Begin();
  // Placed before anything is told of it.
  ++window->working_;
  window->Place(request.place);
  window->Measure();
  window->told_at_ = window->PlaceOf();
  --window->working_;
  request.attach(handle);
  return Announce(window, request);
}

HWND QtDesk::Announce(const std::shared_ptr<QtWindow>& window, const WindowRequest& request) {
  const HWND handle = window->Handle();
  const CString class_name = window->ClassName();
  CREATESTRUCT made = {};
  made.lpCreateParams = request.parameter;
  made.hwndParent = request.parent;
  made.x = request.place.left;
  made.y = request.place.top;
  made.cx = request.place.right - request.place.left;
  made.cy = request.place.bottom - request.place.top;
  made.style = static_cast<LONG>(request.style);
  made.lpszName = request.text;
  made.lpszClass = class_name;
  made.dwExStyle = request.ex_style;
  const LRESULT answer = DeliverMessage(handle, WM_CREATE, 0, reinterpret_cast<LPARAM>(&made));
  if (answer == -1) window->Destroy();
  if (!window->Exists()) return nullptr;
  const CRect client(window->ClientRect());
  DeliverMessage(handle, WM_SIZE, SIZE_RESTORED, MAKELPARAM(client.right, client.bottom));
  if (window->Exists() && (request.style & WS_VISIBLE) != 0) window->Show(SW_SHOW);
  return window->Exists() ? handle : nullptr;
}

void QtDesk::Forget(HWND window) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    windows_.erase(window);
    std::erase_if(posted_, [window](const MSG& message) { return message.hwnd == window; });
  }
  std::erase(tops_, window);
  if (focus_ == window) focus_ = nullptr;
  if (active_ == window) active_ = nullptr;
  if (asked_ == window) asked_ = nullptr;
  if (capture_ == window) capture_ = nullptr;
  if (hovered_ == window) hovered_ = nullptr;
}

QtDesk::Event::Event(QtDesk& desk) : desk_(desk) {
  desk_.live_events_.push_back(++desk_.event_count_);
}

QtDesk::Event::~Event() {
  desk_.live_events_.pop_back();
  if (!desk_.graves_.empty()) desk_.WantSweep();
}

void QtDesk::Bury(QWidget* widget, std::uint64_t born) {
  if (live_events_.empty()) {
    delete widget;
    return;
  }
  widget->hide();
  graves_.push_back({widget, born});
}

void QtDesk::WantSweep() {
  if (std::exchange(sweep_wanted_, true)) return;
  mailbox_->Leave([this] { Sweep(); });
}

void QtDesk::Sweep() {
  sweep_wanted_ = false;
  const auto kept = std::stable_partition(graves_.begin(), graves_.end(),
                                          [this](const Grave& grave) { return !MayEnd(grave.born); });
  const std::vector<Grave> ready(std::make_move_iterator(kept), std::make_move_iterator(graves_.end()));
  graves_.erase(kept, graves_.end());
  // A widget that stands in another one goes with that.
  for (const Grave& grave : ready) delete grave.widget.data();
}

std::unique_ptr<Desktop> MakeQtDesktop() {
  return std::make_unique<QtDesk>();
}

QWidget* QtWidgetOf(HWND window) {
  const auto* const desk = dynamic_cast<QtDesk*>(&DesktopInForce());
  const auto found = desk == nullptr ? nullptr : desk->At(window);
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
