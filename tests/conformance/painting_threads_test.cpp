#include <gtest/gtest.h>

#include "platform/headless/desktop/headless_desktop.h"
#include "tests/conformance/painting_threads.h"

TEST(PaintingThreads, AWindowIsPaintedWhileItLivesAndEnds) {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  lorv_test::PaintFromTwoThreads(desktop, [&](HWND window, int round) {
    desktop.MoveMouse({10 + round % 50, 10});
    desktop.Seen(window);
  });
}
