#include "platform/qt/desktop/qt_desktop.h"
#include "tests/image/desktops/shown_tip_suite.h"

namespace lorv::test {
namespace {

struct Widgets {
  static std::unique_ptr<Desktop> Make() { return MakeQtDesktop(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, DrawnImages, Widgets);
INSTANTIATE_TYPED_TEST_SUITE_P(Qt, ShownTip, Widgets);

}  // namespace
}  // namespace lorv::test
