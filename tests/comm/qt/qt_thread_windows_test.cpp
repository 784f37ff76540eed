#include "platform/qt/desktop/qt_desktop.h"
#include "tests/comm/thread_windows_suite.h"

namespace lorv_test {
namespace {

struct Widgets {
  static std::unique_ptr<lorv::Desktop> Make() { return lorv::MakeQtDesktop(); }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, ThreadWindows, Widgets);

}  // namespace
}  // namespace lorv_test
