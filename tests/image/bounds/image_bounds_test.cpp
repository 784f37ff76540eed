// What an image may cost: memory by its size and never by its frames, pages, scans or depth, and no work that
// a few bytes of a file could multiply.

#include <gtest/gtest.h>
#include "image/decode/image_reader.h"
#include "image/image.h"
#include "tests/image/bounds/costly_images.h"
#include "tests/image/bounds/counted_memory.h"
#include "tests/image/decode/tiff/made_tiff.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

constexpr std::int64_t kMegabyte = 1'000'000;
constexpr std::int64_t kMostOfAnImage = 300 * kMegabyte;

// The most memory while the image is opened and its frames are looked at; -1 for one that is refused.
std::int64_t MostOf(std::string bytes, std::initializer_list<int> frames = {0}) {
  const CountedMemory memory;
  const auto image = OpenImage(std::move(bytes));
  if (image == nullptr) return -1;
  for (const int frame : frames) image->Frame(frame);
  return memory.Most();
}

TEST(ImageBounds, LargestPngOfSixteenBitsTakesItsPixels) {
  constexpr std::uint32_t kWidth = 8192;
  constexpr std::uint32_t kHeight = 4096;
  static_assert(std::int64_t{kWidth} * kHeight == kMostPixels);
  std::string png = ClearPng(kWidth, kHeight, 16);
  EXPECT_LE(png.size(), 3 * kMegabyte);
  const std::int64_t most = MostOf(std::move(png));
  EXPECT_GE(most, kMostPixels * 4);
  EXPECT_LE(most, kMostPixels * 4 + kMegabyte);
  EXPECT_LE(most, kMostOfAnImage);
}

TEST(ImageBounds, PicturesThatClaimMoreTakeNothing) {
  const std::string few = PackedZeros(1000);
  const CountedMemory memory;
  EXPECT_EQ(OpenImage(PngWith(8193, 4096, 8, few)), nullptr);
  EXPECT_EQ(OpenImage(PngWith(0x7FFFFFFF, 0x7FFFFFFF, 16, few)), nullptr);
  EXPECT_EQ(OpenImage(MadeBmp(8193, 4096, 24, 0, "", "")), nullptr);
  EXPECT_EQ(OpenImage(MadeGif(8193, 4096, {{0, 0, 1, 1, {1}}})), nullptr);
  EXPECT_LE(memory.Most(), kMegabyte);
}

TEST(ImageBounds, TwoHundredLargeFramesTakeTheMemoryOfOne) {
  constexpr std::int64_t kPixels = 2000 * 2000;
  for (const unsigned disposal : {1U, 2U, 3U}) {
    const std::int64_t most = MostOf(WideGif(2000, 2000, disposal, 200), {0, 3, 1});
    EXPECT_LE(most, kPixels * (disposal == 3 ? 9 : 5) + kMegabyte) << disposal;
    EXPECT_GE(most, kPixels * 4) << disposal;
  }
}

TEST(ImageBounds, TenThousandFramesArePlayedWithTheMemoryOfOne) {
  std::string bytes = LongGif(10'000);
  const auto size = static_cast<std::int64_t>(bytes.size());
  const CountedMemory memory;
  const auto image = OpenImage(std::move(bytes));
  ASSERT_NE(image, nullptr);
  ASSERT_EQ(image->FrameCount(), 10'000);
  for (int i = 0; i < image->FrameCount(); ++i) image->Frame(i);
  EXPECT_EQ(image->Frame(9'999).pixels, image->Clone()->Frame(9'999).pixels);
  // The list of the frames and their delays, grown by doubling.
  EXPECT_LE(memory.Most(), size + 4 * kMegabyte);
}

TEST(ImageBounds, GifThatWouldTakeMoreIsRefused) {
  EXPECT_EQ(MostOf(WideGif(8192, 4096, 3, 2)), -1) << "kept pixels, picture and numbers";
  EXPECT_GT(MostOf(WideGif(8192, 2048, 3, 2)), 0);
  EXPECT_LE(MostOf(WideGif(8192, 4096, 1, 2)), kMostOfAnImage);
}

TEST(ImageBounds, FramesBehindTheHundredThousandthAreLeftOut) {
  for (const int count : {99'999, 100'000, 100'001}) {
    const auto image = OpenImage(
        MadeGif(1, 1, std::vector<MadeFrame>(static_cast<std::size_t>(count), MadeFrame{0, 0, 1, 1, {1}})));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->FrameCount(), std::min(count, 100'000));
  }
}

TEST(ImageBounds, JpegThatWouldTakeMoreIsRefused) {
  const auto opened = [](char mark, int width, int height, char parts) {
    return MostOf(JpegStart() + JpegHead(mark, width, height, parts) + LevelScan(true));
  };
  const CountedMemory memory;
  EXPECT_EQ(opened('\xC2', 8192, 4096, 3), -1) << "samples and coefficients of a progressive picture";
  EXPECT_LE(memory.Most(), kMegabyte) << "known by the head alone";
  EXPECT_EQ(opened('\xC2', 8192, 4096, 4), -1);
  constexpr std::int64_t kPixels = 2048 * 2048;
  const std::int64_t most = opened('\xC2', 2048, 2048, 3);
  EXPECT_GE(most, kPixels * 9);
  EXPECT_LE(most, kPixels * 9 + kMegabyte);
}

// The level that is seen is that of the last scan that was read.
TEST(ImageBounds, ScansOfAJpegBehindTheSixtyFourthAreLeftOut) {
  for (const int count : {63, 64, 65}) {
    std::string bytes = JpegStart() + JpegHead('\xC2', 8, 8, 1);
    for (int i = 1; i < count; ++i) bytes += LevelScan(false);
    const auto image = OpenImage(bytes + LevelScan(true) + "\xFF\xD9");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->Frame(0).pixels[0], count <= 64 ? 0xFF888888 : 0xFF808080) << count;
  }
}

TEST(ImageBounds, DirectoriesOfMoreFieldsThanFilesHaveAreRefused) {
  for (const std::size_t count : {255U, 256U, 257U}) {
    MadePage page = {PageFields(1, 1, 8, 1, 1), {"\x80"}};
    while (page.fields.size() + 2 < count) page.fields.push_back({60'000, 3, {1}});
    EXPECT_EQ(OpenImage(MadeTiff(page)) != nullptr, count <= 256) << count;
  }
}

TEST(ImageBounds, PageOfATiffTakesItsPixels) {
  MadePage page = {PageFields(2048, 2048, 16, 8, 2, 3), {PackedZeros(std::size_t{2048} * 2048 * 6)}};
  std::string bytes = MadeTiff(page);
  const auto size = static_cast<std::int64_t>(bytes.size());
  const std::int64_t most = MostOf(std::move(bytes), {0, 0});
  EXPECT_GE(most, std::int64_t{2048} * 2048 * 4);
  EXPECT_LE(most, std::int64_t{2048} * 2048 * 4 + size + kMegabyte);
}

TEST(ImageBounds, BitmapOfAnImageTakesItsPixelsOnce) {
  constexpr std::int64_t kPixels = 1000 * 1000;
  const ScratchFolder folder;
  WriteBytes(folder.Path() / "large.gif", WideGif(1000, 1000, 1, 1));
  const auto path = (folder.Path() / "large.gif").u8string();
  const TImage image(CString::FromUtf8(std::string(path.begin(), path.end())));
  CSize size;
  ASSERT_EQ(image.GetDim(size), 1);
  const CountedMemory memory;
  HBITMAP bitmap = nullptr;
  ASSERT_EQ(image.GetBitmap(bitmap, 0), 1);
  ASSERT_TRUE(EndBitmap(bitmap));
  // The picture, the numbers of its colours, and the bitmap.
  EXPECT_LE(memory.Most(), kPixels * 9 + kMegabyte);
}

TEST(ImageBounds, FramesOfARunAreWhole) {
  const auto image = OpenImage(RunGif(2000, 3));
  ASSERT_NE(image, nullptr);
  ASSERT_EQ(image->FrameCount(), 3);
  const Raster& frame = image->Frame(2);
  EXPECT_EQ(frame.pixels, std::vector<std::uint32_t>(frame.pixels.size(), 0xFFFF0000));
}

}  // namespace
}  // namespace lorv::test
