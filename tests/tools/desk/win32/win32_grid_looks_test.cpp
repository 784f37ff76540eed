#include "platform/win32/desktop/win32_desktop.h"
#include "tests/tools/desk/grid_looks_suite.h"

namespace lorv::test {
namespace {

struct GridOfTheSystem {
  static constexpr bool kHasPictures = true;
  static std::unique_ptr<Desktop> Make() { return MakeWin32Desktop(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, GridLooks, GridOfTheSystem);

}  // namespace
}  // namespace lorv::test
