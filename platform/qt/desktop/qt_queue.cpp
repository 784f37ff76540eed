#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QThread>
#include <algorithm>

#include "platform/models/carried_fault.h"
#include "platform/qt/desktop/qt_desk.h"

// The queue of messages within the event loop of Qt.

namespace lorv {
namespace {

// Two sorts: the later one, painting, waits until nothing else is to be done.
constexpr QEvent::Type kErrand = QEvent::User;
constexpr QEvent::Type kLastErrand = static_cast<QEvent::Type>(QEvent::User + 1);

class Runner : public QObject {
 public:
  explicit Runner(QtMailbox& box) : box_(box) {}
  bool event(QEvent* event) override {
    if (event->type() != kErrand && event->type() != kLastErrand) return QObject::event(event);
    CarriedFault::Guarded([&] {
      box_.RunNext(event->type() == kLastErrand);
      return true;
    });
    return true;
  }

 private:
  QtMailbox& box_;
};

bool HandleEvents(QEventLoop::ProcessEventsFlags flags) {
  QAbstractEventDispatcher* const events = QAbstractEventDispatcher::instance();
  return events != nullptr && events->processEvents(flags);
}

}  // namespace

QtMailbox::QtMailbox() : receiver_(new Runner(*this)) {}

QtMailbox::~QtMailbox() {
  Close();
}

// Under the lock: the thread of the windows is to run a task of that sort.
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
    // Taken out before it runs: it may leave others, or wait in a loop of its own.
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
    // Events that still wait go with their receiver, tasks are never run after this.
    gone = std::exchange(receiver_, nullptr);
  }
  delete gone;
}

void QtDesk::MessagePosted() {
  mailbox_->Leave([this] { DispatchPosted(); });
}

DWORD QtDesk::Ticks() const {
  static const QElapsedTimer started = [] {
    QElapsedTimer timer;
    timer.start();
    return timer;
  }();
  return static_cast<DWORD>(started.elapsed());
}

bool QtDesk::DispatchPosted() {
  const Event working(*this);
  return PumpPosted();
}

// Ends the program's own loops, should it be in any. Called where none of those runs, the widget set would
// end every later one as it begins: menus and boxes of a program that goes on would close by themselves. So
// loops of ours are closed one by one.
bool QtDesk::EndHostLoop(int code) {
  const auto loops = static_cast<std::size_t>(QThread::currentThread()->loopLevel());
  if (loops > inner_loops_.size()) {
    QCoreApplication::exit(code);
    return true;
  }
  for (auto end = inner_loops_.rbegin(); end != inner_loops_.rend(); ++end) (*end)();
  return false;
}

bool QtDesk::PumpOnce(bool wait) {
  if (DispatchPosted()) return true;
  return CarriedFault::CallOut([&] {
    return HandleEvents(QEventLoop::AllEvents) ||
           (wait && !Quits() && HandleEvents(QEventLoop::WaitForMoreEvents));
  });
}

void QtDesk::WantPaint() {
  if (std::exchange(paint_wanted_, true)) return;
  mailbox_->Leave([this] { PaintAll(); }, true);
}

// Each window once: one that is out of date again when it has painted waits for the next time.
void QtDesk::PaintAll() {
  paint_wanted_ = false;
  const Event working(*this);
  std::vector<HWND> done;
  for (const HWND top : Windows()) {
    for (HWND dirty = FirstDirty(top); dirty != nullptr; dirty = FirstDirty(top)) {
      if (std::find(done.begin(), done.end(), dirty) != done.end()) return WantPaint();
      done.push_back(dirty);
      if (const auto window = At(dirty)) window->Update();
    }
  }
}

void QtDesk::EndModal(HWND dialog) {
  DesktopModel::EndModal(dialog);
  // Wakes the loop that waits.
  mailbox_->Leave([] {});
}

}  // namespace lorv
