// Real images and damaged ones: what they hold, and the pixels of their frames.

#include <gtest/gtest.h>

#include "image/decode/image_reader.h"
#include "tests/image/decode/real_images.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

std::uint64_t DigestOf(ImageReader& image) {
  std::uint64_t digest = 1;
  for (int i = 0; i < image.FrameCount(); ++i) digest = AddToDigest(digest, image.Frame(i).pixels);
  return digest;
}

TEST(RealImages, HoldWhatTheirListSaysAndTheSamePixelsEverywhere) {
  const auto folder = FindData("images");
  if (!folder) return;
  for (const RealImage& each : kRealImages) {
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
