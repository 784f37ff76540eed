#include "platform/win32/desktop/win32_desktop.h"
#include "tests/image/desktops/shown_tip_suite.h"

namespace lorv::test {
namespace {

struct RealWindows {
  static std::unique_ptr<Desktop> Make() { return MakeWin32Desktop(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, DrawnImages, RealWindows);
INSTANTIATE_TYPED_TEST_SUITE_P(Win32, ShownTip, RealWindows);

}  // namespace
}  // namespace lorv::test
