#include "platform/qt/services/qt_progress.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <cmath>

#include "platform/ports/progress_picture.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "platform/qt/desktop/qt_text.h"

// The window of a long operation. The operation runs on the thread of the windows, so the window lives from
// the events that are handled within the operation's own calls; what is meant for other windows is dropped
// meanwhile, and posted messages and timers of ours wait, as the program is not prepared for them there.

namespace lorv {
namespace {

constexpr int kTextWidth = 410;
constexpr int kBarSteps = 1000;
constexpr int kTimeLine = 2;             // the third one
constexpr std::int64_t kPumpPause = 40;  // milliseconds
constexpr std::int64_t kFirstEstimate = 1000;
constexpr std::int64_t kSecondsTold = 90;  // more is told in minutes

// The window. Closing it, by whatever way, is cancelling; only the operation takes it away.
class ProgressBox : public QDialog {
 public:
  explicit ProgressBox(QWidget* owner) : QDialog(owner) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    button_.setText(QString::fromUtf16(u"取消"));
    bar_.setRange(0, kBarSteps);
    bar_.setValue(0);
    bar_.setTextVisible(false);
    // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the window owns its layout
    auto* const column = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(&lines_[0]), static_cast<QWidget*>(&lines_[1]),
                          static_cast<QWidget*>(&bar_), static_cast<QWidget*>(&lines_[2])})
      column->addWidget(part);
    column->addWidget(&button_, 0, Qt::AlignRight);
    // As high with its lines empty as with them full, in whatever script.
    for (QLabel& line : lines_) {
      line.setTextFormat(Qt::PlainText);
      line.setFixedSize(kTextWidth, line.fontMetrics().lineSpacing() + 2);
    }
    column->setSizeConstraint(QLayout::SetFixedSize);
    QObject::connect(&button_, &QPushButton::clicked, this, [this] { ProgressBox::reject(); });
  }

  void SetLine(int line, const QString& text, bool path) {
    QLabel& label = lines_[line];
    const auto cut = path ? Qt::ElideMiddle : Qt::ElideRight;
    label.setText(label.fontMetrics().elidedText(text, cut, kTextWidth));
  }
  void SetBar(int value) { bar_.setValue(value); }
  bool Cancelled() const { return cancelled_; }
  void SetCancelText(const QString& text) {
    cancel_text_ = text;
    if (cancelled_) SetLine(kTimeLine, cancel_text_, false);
  }

  void reject() override {
    cancelled_ = true;
    button_.setEnabled(false);
    SetLine(kTimeLine, cancel_text_, false);
  }

 private:
  QLabel lines_[3];
  QProgressBar bar_;
  QPushButton button_;
  QString cancel_text_;
  bool cancelled_ = false;
};

// Drops what is meant for other windows while the events are worked for one window's sake.
class OneWindowOnly : public QObject {
 public:
  explicit OneWindowOnly(QWidget& window) : window_(window) {
    QApplication::instance()->installEventFilter(this);
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (event->type()) {
      case QEvent::Timer:
        return dynamic_cast<QtWatcher*>(receiver) != nullptr;
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::ShortcutOverride:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin:
      case QEvent::Close:
        return !IsWithin(receiver);
      default:
        return false;
    }
  }

 private:
  bool IsWithin(QObject* receiver) const {
    const auto* const widget = qobject_cast<QWidget*>(receiver);
    return widget == nullptr ? receiver == window_.windowHandle() : widget->window() == &window_;
  }

  QWidget& window_;
};

class QtProgress : public ProgressDialog, public ProgressPicture {
 public:
  explicit QtProgress(std::shared_ptr<QtMailbox> mailbox)
      : mailbox_(std::move(mailbox)), box_(new ProgressBox(QtWidgetOf(DesktopInForce().Active()))) {}
  ~QtProgress() override { delete box_.data(); }

  void SetTitle(LPCTSTR title) override {
    if (box_ != nullptr) box_->setWindowTitle(QtTextOf(title));
  }
  bool SetAnimation(LPCTSTR /*module*/, UINT /*resource*/) override { return true; }

  void Open(DWORD flags) override {
    if (box_ == nullptr) return;
    tells_time_ = (flags & kProgressAutoTime) != 0;
    begun_.start();
    box_->show();
    Pump();
  }

  void SetCancelMessage(LPCTSTR message) override {
    if (box_ != nullptr) box_->SetCancelText(QtTextOf(message));
  }

  void Timer(DWORD action) override {
    if (action == kProgressTimerReset) begun_.start();
  }

  void SetProgress(DWORD position, DWORD total) override {
    if (box_ == nullptr) return;
    // In 64 bits: the product with the steps leaves 32.
    const std::uint64_t done = std::min(position, total);
    box_->SetBar(total == 0 ? kBarSteps : static_cast<int>(done * kBarSteps / total));
    if (tells_time_ && !box_->Cancelled())
      box_->SetLine(kTimeLine, ToQt(TimeLeftText(begun_.elapsed(), position, total).View()), false);
    PumpAtTimes();
  }

  void SetLine(DWORD line, LPCTSTR text, bool compact_path) override {
    if (box_ == nullptr || line < 1 || line > kTimeLine) return;
    box_->SetLine(static_cast<int>(line) - 1, QtTextOf(text), compact_path);
    PumpAtTimes();
  }

  bool HasUserCancelled() override {
    PumpAtTimes();
    return box_ != nullptr && box_->Cancelled();
  }

  void Close() override {
    if (box_ != nullptr) box_->hide();
  }

  std::vector<DWORD> Picture(SIZE& size) override {
    size = {0, 0};
    if (box_ == nullptr || !box_->isVisible()) return {};
    const QImage grabbed = box_->grab().toImage().convertToFormat(QImage::Format_RGB32);
    size = {grabbed.width(), grabbed.height()};
    return PixelsOf(grabbed);
  }

 private:
  static QString QtTextOf(LPCTSTR text) { return QString::fromUtf16(text == nullptr ? _T("") : text); }

  void PumpAtTimes() {
    if (box_ == nullptr || !box_->isVisible()) return;
    // Operations report far more often than anybody can see.
    if (!pumped_.isValid() || pumped_.elapsed() >= kPumpPause) Pump();
  }

  void Pump() {
    // Events may bring in calls of the operation, which must not nest.
    if (std::exchange(pumping_, true)) return;
    {
      const OneWindowOnly only(*box_);
      const QtMailbox::Holding held(*mailbox_);
      QCoreApplication::processEvents();
    }
    pumping_ = false;
    pumped_.start();
  }

  std::shared_ptr<QtMailbox> mailbox_;
  QPointer<ProgressBox> box_;  // goes with the window that it belongs to
  QElapsedTimer begun_;
  QElapsedTimer pumped_;
  bool tells_time_ = false;
  bool pumping_ = false;
};

}  // namespace

std::unique_ptr<ProgressDialog> QtDesk::MakeProgress() {
  return MakeQtProgress(mailbox_);
}

std::unique_ptr<ProgressDialog> MakeQtProgress(std::shared_ptr<QtMailbox> mailbox) {
  return std::make_unique<QtProgress>(std::move(mailbox));
}

CString TimeLeftText(std::int64_t milliseconds, DWORD position, DWORD total) {
  // An estimate by the first moments would jump about.
  if (milliseconds < kFirstEstimate || position == 0 || position >= total) return {};
  const double left = static_cast<double>(milliseconds) * (total - position) / position / 1000;
  const auto seconds = static_cast<long long>(std::ceil(left));
  CString text;
  if (seconds > kSecondsTold) {
    text.Format(_T("大约还需 %lld 分钟"), (seconds + 59) / 60);
  } else {
    text.Format(_T("大约还需 %lld 秒"), seconds);
  }
  return text;
}

}  // namespace lorv
