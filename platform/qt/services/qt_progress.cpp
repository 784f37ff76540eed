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

#include "platform/models/progress_model.h"
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
constexpr std::int64_t kPumpPause = 40;  // milliseconds

// The window. Closing it, by whatever way, is cancelling; only the operation takes it away.
class ProgressBox : public QDialog {
 public:
  ProgressBox(ProgressModel& model, QWidget* owner) : QDialog(owner), model_(model) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    button_.setText(QString::fromUtf16(u"取消"));
    bar_.setRange(0, ProgressModel::kBarSteps);
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

  void Show() {
    bar_.setValue(model_.Bar());
    for (int i = 0; i < ProgressModel::kLines; ++i) {
      const auto& [text, path] = model_.Line(i);
      const auto cut = path ? Qt::ElideMiddle : Qt::ElideRight;
      lines_[i].setText(lines_[i].fontMetrics().elidedText(ToQt(text.View()), cut, kTextWidth));
    }
  }

  void reject() override {
    model_.Cancel();
    button_.setEnabled(false);
    Show();
  }

 private:
  ProgressModel& model_;
  QLabel lines_[ProgressModel::kLines];
  QProgressBar bar_;
  QPushButton button_;
};

// Drops what is meant for other windows while the events are handled for one window's sake.
class OneWindowOnly : public QObject {
 public:
  explicit OneWindowOnly(QWidget& window) : window_(window) {
    QApplication::instance()->installEventFilter(this);
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (event->type()) {
      // Timers of windows run handlers; those of the widget set itself go on.
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
      : mailbox_(std::move(mailbox)), box_(new ProgressBox(model_, QtWidgetOf(DesktopInForce().Active()))) {}
  ~QtProgress() override { delete box_.data(); }

  void SetTitle(LPCTSTR title) override {
    if (box_ != nullptr) box_->setWindowTitle(QtTextOf(title));
  }
  bool SetAnimation(LPCTSTR /*module*/, UINT /*resource*/) override { return true; }

  void Open(DWORD flags) override {
    if (box_ == nullptr) return;
    begun_.start();
    model_.Begin(flags, begun_.elapsed());
    box_->show();
    Pump();
  }

  void SetCancelMessage(LPCTSTR message) override {
    model_.SetCancelMessage(message);
    if (box_ != nullptr) box_->Show();
  }

  void Timer(DWORD action) override { model_.Timer(action, begun_.elapsed()); }

  void SetProgress(DWORD position, DWORD total) override {
    if (box_ == nullptr) return;
    model_.SetProgress(position, total, begun_.elapsed());
    box_->Show();
    PumpAtTimes();
  }

  void SetLine(DWORD line, LPCTSTR text, bool compact_path) override {
    if (box_ == nullptr) return;
    model_.SetLine(line, text, compact_path);
    box_->Show();
    PumpAtTimes();
  }

  bool HasUserCancelled() override {
    PumpAtTimes();
    return model_.Cancelled();
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
  ProgressModel model_;
  QPointer<ProgressBox> box_;  // goes with the window that it belongs to
  QElapsedTimer begun_;
  QElapsedTimer pumped_;
  bool pumping_ = false;
};

}  // namespace

std::unique_ptr<ProgressDialog> QtDesk::MakeProgress() {
  return MakeQtProgress(mailbox_);
}

std::unique_ptr<ProgressDialog> MakeQtProgress(std::shared_ptr<QtMailbox> mailbox) {
  return std::make_unique<QtProgress>(std::move(mailbox));
}

}  // namespace lorv
