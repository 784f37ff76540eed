#include "tests/image/resource_bitmaps.h"

#include <string_view>

#include "platform/ports/device_images.h"

namespace lorv::test {
namespace {

constexpr unsigned char kBitmap[] = {40, 0, 0,   0, 2, 0,   0,   0,   2, 0, 0, 0, 1,   0, 24,  0, 0, 0, 0,
                                     0,  0, 0,   0, 0, 0,   0,   0,   0, 0, 0, 0, 0,   0, 0,   0, 0, 0, 0,
                                     0,  0, 255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0};

}  // namespace

HINSTANCE ModuleWithBitmaps() {
  static char module = 0;
  AddBitmapResource(&module, kTestBitmap,
                    std::string_view(reinterpret_cast<const char*>(kBitmap), sizeof(kBitmap)));
  return &module;
}

}  // namespace lorv::test
