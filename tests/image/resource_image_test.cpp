#include <gtest/gtest.h>

#include "framework/drawing/device_context.h"
#include "image/image.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/ports/device_images.h"
#include "tests/image/resource_bitmaps.h"

namespace lorv::test {
namespace {

TEST(ResourceImage, BitmapsAreFoundByModuleAndNumber) {
  const TImage image(ModuleWithBitmaps(), kTestBitmap);
  ASSERT_TRUE(image.IsValidImage());
  CSize size;
  EXPECT_EQ(image.GetDim(size), 1);
  EXPECT_EQ(size, CSize(2, 2));
  EXPECT_EQ(image.GetFrameCount(), 1);
  HBITMAP bitmap = nullptr;
  ASSERT_EQ(image.GetBitmap(bitmap, 0), 1);
  SIZE read = {0, 0};
  std::vector<DWORD> pixels;
  ASSERT_TRUE(NativeDeviceImages().ReadBitmap(bitmap, read, pixels));
  EXPECT_EQ(pixels, (std::vector<DWORD>{0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF}));
  EXPECT_TRUE(EndBitmap(bitmap));
}

TEST(ResourceImage, MissingNumbersAndModulesGiveNoImage) {
  for (const unsigned number : {0U, 8U, 65536U + 7U, 0xFFFFFFFFU})
    EXPECT_FALSE(TImage(ModuleWithBitmaps(), number).IsValidImage()) << number;
}

TEST(ResourceImage, ReplacesWhatThereWas) {
  TImage image(ModuleWithBitmaps(), kTestBitmap);
  EXPECT_EQ(image.SetImage(ModuleWithBitmaps(), 8), 0);
  EXPECT_EQ(image.SetImage(ModuleWithBitmaps(), kTestBitmap), 1);
}

}  // namespace
}  // namespace lorv::test
