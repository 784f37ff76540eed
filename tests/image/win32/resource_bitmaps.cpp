#include "tests/image/resource_bitmaps.h"

namespace lorv::test {

HINSTANCE ModuleWithBitmaps() {
  return GetModuleHandleW(nullptr);
}

}  // namespace lorv::test
