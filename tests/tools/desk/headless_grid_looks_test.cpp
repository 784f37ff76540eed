#include "platform/headless/desktop/headless_desktop.h"
#include "tests/tools/desk/grid_looks_suite.h"

namespace lorv::test {
namespace {

struct GridInMemory {
  static constexpr bool kHasPictures = false;
  static std::unique_ptr<Desktop> Make() { return std::make_unique<HeadlessDesktop>(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Headless, GridLooks, GridInMemory);

}  // namespace
}  // namespace lorv::test
