#include "tests/conformance/grid/grid_scene.h"
#include "tests/conformance/grid/grid_trace_table.inc"

namespace lorv_test {

std::vector<std::string> KeptGridTrace() {
  return {std::begin(kGridTrace), std::end(kGridTrace)};
}

}  // namespace lorv_test
