#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QThread>
#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/qt/desktop/qt_desk.h"

// The queue of messages within the event loop of Qt.

namespace lorv {
namespace {

constexpr QEvent::Type kErrand = QEvent::User;
constexpr QEvent::Type kLastErrand = static_cast<QEvent::Type>(QEvent::User + 1);

class Runner : public QObject {
 public:
  explicit Runner(QtMailbox& box) : box_(box) {}
  bool event(QEvent* event) override {
    if (event->type() != kErrand && event->type() != kLastErrand) return QObject::event(event);
    box_.RunNext(event->type() == kLastErrand);
    return true;
  }

 private:
  QtMailbox& box_;
};

bool WorkEvents(QEventLoop::ProcessEventsFlags flags) {
  QAbstractEventDispatcher* const events = QAbstractEventDispatcher::instance();
  return events != nullptr && events->processEvents(flags);
}

}  // namespace

QtMailbox::QtMailbox() : receiver_(new Runner(*this)) {}

QtMailbox::~QtMailbox() {
  Close();
}

// Under the lock: the thread of the windows is to run an errand of that sort.
void QtMailbox::Call(bool last) {
  QCoreApplication::postEvent(receiver_, new QEvent(last ? kLastErrand : kErrand),
                              last ? Qt::LowEventPriority : Qt::NormalEventPriority);
}

void QtMailbox::Leave(std::function<void()> errand, bool last) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (receiver_ == nullptr) return;
  errands_[last ? 1 : 0].push_back(std::move(errand));
  Call(last);
}

void QtMailbox::RunNext(bool last) {
  std::function<void()> errand;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    auto& waiting = errands_[last ? 1 : 0];
    if (held_ > 0 || waiting.empty()) return;
    errand = std::move(waiting.front());
    waiting.pop_front();
  }
  errand();
}

// What was called for meanwhile is called for again; a call too many finds nothing to run.
void QtMailbox::Hold(int more) {
  const std::lock_guard<std::mutex> lock(mutex_);
  held_ += more;
  if (held_ > 0 || receiver_ == nullptr) return;
  for (const bool last : {false, true})
    for (std::size_t i = 0; i < errands_[last ? 1 : 0].size(); ++i) Call(last);
}

void QtMailbox::Close() {
  QObject* gone = nullptr;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    gone = std::exchange(receiver_, nullptr);
  }
  delete gone;
}

bool QtDesk::Post(HWND window, UINT message, WPARAM w, LPARAM l) {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (window != nullptr && windows_.count(window) == 0) return false;
    posted_.push_back({window, message, w, l, Ticks(), {0, 0}});
  }
  mailbox_->Leave([this] { PumpPosted(); });
  return true;
}

LRESULT QtDesk::Send(HWND window, UINT message, WPARAM w, LPARAM l) {
  return StillThere(window) ? DeliverMessage(window, message, w, l) : 0;
}

DWORD QtDesk::Ticks() const {
  static const QElapsedTimer started = [] {
    QElapsedTimer timer;
    timer.start();
    return timer;
  }();
  return static_cast<DWORD>(started.elapsed());
}

MSG QtDesk::MessageNow(HWND window, UINT message, WPARAM w, LPARAM l) const {
  return {window, message, w, l, Ticks(), mouse_};
}

void QtDesk::Deliver(MSG message) {
  // A menu is worked by its own window: nobody else is offered its keys.
  if (!menu_up_ && OfferMessage(message)) return;
  if (StillThere(message.hwnd)) DeliverMessage(message.hwnd, message.message, message.wParam, message.lParam);
}

bool QtDesk::PumpPosted() {
  MSG message = {};
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (posted_.empty()) return false;
    message = posted_.front();
    posted_.pop_front();
  }
  if (message.hwnd == nullptr && message.message == WM_QUIT) {
    // Ends the loops of ours, and the program's own.
    quitting_ = true;
    QCoreApplication::exit(static_cast<int>(message.wParam));
    return true;
  }
  message.pt = mouse_;
  const Event working(*this);
  Deliver(message);
  return true;
}

bool QtDesk::Pump(bool wait) {
  const bool something = PumpPosted() || WorkEvents(QEventLoop::AllEvents) ||
                         (wait && !quitting_ && WorkEvents(QEventLoop::WaitForMoreEvents));
  return something && !quitting_;
}

void QtDesk::WantPaint() {
  if (std::exchange(paint_wanted_, true)) return;
  mailbox_->Leave([this] { PaintAll(); }, true);
}

HWND QtDesk::FirstDirty(HWND at) const {
  const auto window = At(at);
  if (window == nullptr || (window->Style() & WS_VISIBLE) == 0) return nullptr;
  if (window->Dirty()) return at;
  for (const HWND child : window->Children())
    if (const HWND dirty = FirstDirty(child)) return dirty;
  return nullptr;
}

// Each window once: one that is out of date again when it has painted waits for the next time.
void QtDesk::PaintAll() {
  paint_wanted_ = false;
  const Event working(*this);
  std::vector<HWND> done;
  const std::vector<HWND> tops = tops_;
  for (const HWND top : tops) {
    for (HWND dirty = FirstDirty(top); dirty != nullptr; dirty = FirstDirty(top)) {
      if (std::find(done.begin(), done.end(), dirty) != done.end()) return WantPaint();
      done.push_back(dirty);
      if (const auto window = At(dirty)) window->Update();
    }
  }
}

void QtDesk::RunModal(HWND dialog) {
  const auto window = At(dialog);
  if (window == nullptr) return;
  const auto owner = At(TopOf(window->Owner()));
  const bool disabled_it = owner != nullptr && (owner->Style() & WS_DISABLED) == 0;
  if (disabled_it) owner->Enable(false);
  modal_.push_back(dialog);
  const auto runs = [this, dialog] {
    return StillThere(dialog) && std::find(modal_.begin(), modal_.end(), dialog) != modal_.end();
  };
  while (runs() && !quitting_) Pump(true);
  std::erase(modal_, dialog);
  if (disabled_it) owner->Enable(true);
  if (disabled_it && owner->Exists() && (active_ == nullptr || active_ == dialog))
    ActivateTop(owner->Handle());
}

void QtDesk::EndModal(HWND dialog) {
  std::erase(modal_, dialog);
  // Wakes the loop that waits.
  mailbox_->Leave([] {});
}

}  // namespace lorv
