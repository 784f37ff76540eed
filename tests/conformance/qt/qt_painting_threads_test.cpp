#include <gtest/gtest.h>

#include <QWidget>

#include "platform/qt/desktop/qt_desktop.h"
#include "tests/conformance/painting_threads.h"
#include "tests/conformance/qt/qt_user.h"

TEST(QtPaintingThreads, AWindowIsPaintedWhileItLivesAndEnds) {
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const auto user = lorv_test::MakeQtUser();
  lorv_test::PaintFromTwoThreads(*desktop, [&](HWND window, int round) {
    user->MoveMouse({10 + round % 50, 10});
    lorv::QtWidgetOf(window)->grab();
  });
}
