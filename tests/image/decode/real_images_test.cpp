// Real images and damaged ones: what they hold, and their pixels as a digest that every system must give.

#include <gtest/gtest.h>

#include "image/decode/image_reader.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

struct RealImage {
  const char* file;
  int width;  // 0: refused
  int height;
  int frames;
  std::uint64_t delays;  // their sum
  std::uint64_t digest;  // of the pixels of all frames
};

const RealImage kImages[] = {
#include "tests/image/decode/real_images_data.inc"
};

std::uint64_t DigestOf(ImageReader& image) {
  std::uint64_t digest = 1;
  for (int i = 0; i < image.FrameCount(); ++i) {
    for (const std::uint32_t pixel : image.Frame(i).pixels)
      digest = (digest ^ pixel) * 0x9E3779B97F4A7C15 + (digest >> 29);
  }
  return digest;
}

TEST(RealImages, HoldWhatTheirListSaysAndTheSamePixelsEverywhere) {
  const auto folder = FindData("images");
  if (!folder) return;
  for (const RealImage& each : kImages) {
    const auto image = OpenImage(ReadBytes(*folder / each.file));
    ASSERT_EQ(image != nullptr, each.width > 0) << each.file;
    if (image == nullptr) continue;
    EXPECT_EQ(image->Width(), each.width) << each.file;
    EXPECT_EQ(image->Height(), each.height) << each.file;
    EXPECT_EQ(image->FrameCount(), each.frames) << each.file;
    std::uint64_t delays = 0;
    for (const unsigned delay : image->Delays()) delays += delay;
    EXPECT_EQ(delays, each.delays) << each.file;
    EXPECT_EQ(DigestOf(*image), each.digest) << each.file << std::hex << " 0x" << DigestOf(*image);
  }
}

}  // namespace
}  // namespace lorv::test
