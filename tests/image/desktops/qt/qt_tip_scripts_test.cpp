#include <gtest/gtest.h>

#include "platform/qt/desktop/qt_desktop.h"
#include "tests/image/desktops/tip_scripts.h"

namespace lorv::test {
namespace {

TEST(QtTipScripts, EndWithoutAThreadLeft) {
  const auto desktop = MakeQtDesktop();
  const ScopedDesktop scope(*desktop);
  PlayTipScripts(*desktop, 5'000, 20);
}

}  // namespace
}  // namespace lorv::test
