#include "platform/qt/desktop/qt_desktop.h"
#include "tests/tools/desk/dialog_looks_suite.h"

namespace lorv::test {
namespace {

struct Widgets {
  static constexpr bool kHasPictures = true;
  static std::unique_ptr<Desktop> Make() { return MakeQtDesktop(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, DialogLooks, Widgets);

}  // namespace
}  // namespace lorv::test
