#include "tests/image/desktops/tip_scripts.h"

#include <gtest/gtest.h>

#include "platform/headless/desktop/headless_desktop.h"

namespace lorv::test {
namespace {

TEST(TipScripts, EndWithoutAThreadLeft) {
  HeadlessDesktop desktop;
  const ScopedDesktop scope(desktop);
  PlayTipScripts(desktop, 5'000, 19);
}

}  // namespace
}  // namespace lorv::test
