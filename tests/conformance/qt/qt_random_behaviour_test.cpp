#include <gtest/gtest.h>

#include <QApplication>
#include <QInputMethodEvent>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <memory>

#include "framework/native/window_types.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "tests/conformance/grid/random_grid.h"
#include "tests/conformance/qt/qt_user.h"
#include "tests/conformance/random_behaviour.h"

namespace {

class QtRandomUser : public lorv_test::RandomUser {
 public:
  lorv::Desktop& Desktop() override { return *desktop_; }
  void Press(int key) override { hands_->Key(key, true), hands_->Key(key, false); }
  // Letters are keys, the rest comes from an input method.
  void Type(lorv::TextView text) override {
    for (const TCHAR unit : text) {
      if (unit >= _T('a') && unit <= _T('z')) {
        Press(unit - _T('a') + 'A');
      } else {
        Commit(QString(QChar(unit)));
      }
    }
  }
  void Click(POINT screen) override {
    hands_->MoveMouse(screen);
    hands_->Button(true), hands_->Button(false);
  }
  void MoveMouse(POINT screen) override { hands_->MoveMouse(screen); }
  void LeftButton(bool down) override { hands_->Button(down); }
  void RightButton(bool down) override { hands_->RightButton(down); }
  void Wheel(int delta) override {
    QWindow* const window = QGuiApplication::focusWindow();
    if (window == nullptr) return;
    QWheelEvent turned(QPointF(5, 5), window->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, delta), Qt::NoButton,
                       Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &turned);
  }
  void Advance(DWORD milliseconds) override {
    // A handler may throw meanwhile: the timer then ends after this call.
    const auto over = std::make_shared<bool>(false);
    QTimer::singleShot(static_cast<int>(milliseconds), Qt::PreciseTimer, [over] { *over = true; });
    while (!*over) desktop_->Pump(true);
  }
  // The timers of a script never rest.
  void Settle() override {
    for (int i = 0; i < 30 && desktop_->Pump(false); ++i) {
    }
  }

 private:
  static void Commit(const QString& text) {
    QObject* const receiver = QGuiApplication::focusObject();
    if (receiver == nullptr) return;
    QInputMethodEvent committed;
    committed.setCommitString(text);
    QCoreApplication::sendEvent(receiver, &committed);
  }

  std::unique_ptr<lorv::Desktop> desktop_ = lorv::MakeQtDesktop();
  std::unique_ptr<lorv_test::QtUser> hands_ = lorv_test::MakeQtUser();
};

}  // namespace

TEST(QtRandomBehaviour, NothingThatIsGoneIsTouched) {
  lorv_test::PlayRandomScripts<QtRandomUser>(lorv_test::kRandomScripts, lorv_test::PlayRandomBehaviour);
}

TEST(QtRandomGrid, TableIsWhatThePlainOneSays) {
  lorv_test::PlayRandomScripts<QtRandomUser>(lorv_test::RandomGridScripts(200), lorv_test::PlayRandomGrid);
}

TEST(QtRandomBridge, HandlersMayDoAnything) {
  lorv_test::PlayRandomScripts<QtRandomUser>(lorv_test::RandomGridScripts(200), lorv_test::PlayRandomBridge);
}
