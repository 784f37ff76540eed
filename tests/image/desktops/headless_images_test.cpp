#include "platform/headless/desktop/headless_desktop.h"
#include "tests/image/desktops/shown_tip_suite.h"

namespace lorv::test {
namespace {

struct Memory {
  static std::unique_ptr<Desktop> Make() { return std::make_unique<HeadlessDesktop>(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, DrawnImages, Memory);
INSTANTIATE_TYPED_TEST_SUITE_P(Headless, ShownTip, Memory);

}  // namespace
}  // namespace lorv::test
