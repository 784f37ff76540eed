#include <gtest/gtest.h>

#include "image/decode/image_reader.h"
#include "tests/image/decode/decoded_pixels.h"
#include "tests/image/decode/made_images.h"

namespace lorv::test {
namespace {

// A picture of three pixels in a row, the middle one redrawn by the second frame, the last one by the third.
std::string ThreeFrames(unsigned disposal) {
  return MadeGif(3, 1,
                 {{0, 0, 3, 1, {1, 1, 1}, 10, 0}, {1, 0, 1, 1, {2}, 20, disposal}, {2, 0, 1, 1, {3}, 30, 0}});
}

TEST(GifReader, FramesStandOnWhatTheOneBeforeLeft) {
  const auto kept = OpenImage(ThreeFrames(1));
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(kept->FrameCount(), 3);
  EXPECT_EQ(kept->Frame(0).pixels, (Pixels{kRed, kRed, kRed}));
  EXPECT_EQ(kept->Frame(1).pixels, (Pixels{kRed, kGreen, kRed}));
  EXPECT_EQ(kept->Frame(2).pixels, (Pixels{kRed, kGreen, kBlue}));
  EXPECT_EQ(kept->Delays(), (std::vector<unsigned>{10, 20, 30}));
}

TEST(GifReader, DisposalClearsOrBringsBack) {
  EXPECT_EQ(OpenImage(ThreeFrames(2))->Frame(2).pixels, (Pixels{kRed, 0, kBlue}));
  EXPECT_EQ(OpenImage(ThreeFrames(3))->Frame(2).pixels, (Pixels{kRed, kRed, kBlue}));
  for (const unsigned unknown : {0U, 4U, 7U}) {
    EXPECT_EQ(OpenImage(ThreeFrames(unknown))->Frame(2).pixels, (Pixels{kRed, kGreen, kBlue})) << unknown;
  }
}

TEST(GifReader, FramesComeInAnyOrder) {
  const auto image = OpenImage(ThreeFrames(3));
  EXPECT_EQ(image->Frame(2).pixels, (Pixels{kRed, kRed, kBlue}));
  EXPECT_EQ(image->Frame(0).pixels, (Pixels{kRed, kRed, kRed}));
  EXPECT_EQ(image->Frame(1).pixels, (Pixels{kRed, kGreen, kRed}));
  EXPECT_EQ(image->Frame(1).pixels, (Pixels{kRed, kGreen, kRed}));
}

TEST(GifReader, FirstFrameBroughtBackLeavesNothing) {
  const auto image = OpenImage(MadeGif(2, 1, {{0, 0, 2, 1, {1, 1}, 5, 3}, {0, 0, 1, 1, {2}, 5, 0}}));
  EXPECT_EQ(image->Frame(1).pixels, (Pixels{kGreen, 0}));
}

TEST(GifReader, TransparentPixelsLetThroughAndFramesAreCutAtTheScreen) {
  const auto image = OpenImage(MadeGif(
      2, 2,
      {{0, 0, 2, 2, {1, 1, 1, 1}, 1}, {1, 1, 2, 2, {2, 3, 3, 3}, 1, 0, 3}, {0, 0, 2, 1, {3, 2}, 1, 0, 3}}));
  EXPECT_EQ(image->Frame(1).pixels, (Pixels{kRed, kRed, kRed, kGreen}));
  EXPECT_EQ(image->Frame(2).pixels, (Pixels{kRed, kGreen, kRed, kGreen}));
}

TEST(GifReader, SizeIsTheScreensAndTheRestOfItIsTransparent) {
  const auto image = OpenImage(MadeGif(3, 2, {{1, 0, 1, 1, {1}}}));
  EXPECT_EQ(image->Width(), 3);
  EXPECT_EQ(image->Height(), 2);
  EXPECT_EQ(image->Frame(0).pixels, (Pixels{0, kRed, 0, 0, 0, 0}));
}

TEST(GifReader, FramesWithoutEntryHaveADelayOfNothing) {
  const auto mixed =
      OpenImage(MadeGif(1, 1, {{0, 0, 1, 1, {1}, 7}, {0, 0, 1, 1, {2}}, {0, 0, 1, 1, {3}, 65535}}));
  EXPECT_EQ(mixed->Delays(), (std::vector<unsigned>{7, 0, 65535}));
  EXPECT_TRUE(OpenImage(MadeGif(1, 1, {{0, 0, 1, 1, {1}}, {0, 0, 1, 1, {2}}}))->Delays().empty());
  EXPECT_TRUE(OpenImage(MadeGif(1, 1, {{0, 0, 1, 1, {1}, 7}}))->Delays().empty());
}

TEST(GifReader, LastOfTwoControlBlocksCounts) {
  std::string bytes = MadeGif(1, 1, {{0, 0, 1, 1, {1}, 7}, {0, 0, 1, 1, {1}, 8}});
  bytes.insert(25, std::string("\x21\xF9\x04\0\x63\0\0\0", 8));
  EXPECT_EQ(OpenImage(bytes)->Delays(), (std::vector<unsigned>{7, 8}));
}

TEST(GifReader, WithoutColoursThereIsARampOfGrey) {
  const auto image = OpenImage(MadeGif(2, 1, {{0, 0, 2, 1, {'\0', '\x80'}}}, false));
  EXPECT_EQ(image->Frame(0).pixels, (Pixels{kBlack, 0xFF808080}));
}

TEST(GifReader, InterlacedRowsStandWhereTheyBelong) {
  std::string numbers;
  for (const int row : {0, 8, 4, 2, 6, 1, 3, 5, 7, 9}) numbers += static_cast<char>(row % 4);
  const auto image = OpenImage(MadeGif(1, 10, {{0, 0, 1, 10, numbers, -1, 0, -1, true}}));
  const Raster& raster = image->Frame(0);
  const std::uint32_t kColours[] = {kBlack, kRed, kGreen, kBlue};
  for (int y = 0; y < 10; ++y) EXPECT_EQ(*raster.Row(y), kColours[y % 4]) << y;
}

TEST(GifReader, FramesBehindDamageAreLeftOut) {
  const std::string whole = ThreeFrames(0);
  const auto cut = OpenImage(whole.substr(0, whole.size() - 3));
  ASSERT_NE(cut, nullptr);
  EXPECT_EQ(cut->FrameCount(), 2);
  EXPECT_EQ(OpenImage(whole.substr(0, 40)), nullptr);
  for (std::size_t size = 0; size < whole.size(); ++size) OpenImage(whole.substr(0, size));
}

TEST(GifReader, ManyLargeFramesTakeTheMemoryOfThree) {
  std::vector<MadeFrame> frames(10'000, MadeFrame{0, 0, 1, 1, {1}, 1, 3});
  frames[0] = {0, 0, 1, 1, {2}, 1, 0};
  const auto image = OpenImage(MadeGif(200, 200, frames));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->FrameCount(), 10'000);
  EXPECT_EQ(image->Frame(9'999).pixels[0], kRed);
  EXPECT_EQ(image->Frame(0).pixels[0], kGreen);
}

TEST(GifReader, ClaimsBeyondMemoryAreRefused) {
  EXPECT_EQ(OpenImage(MadeGif(65535, 65535, {{0, 0, 1, 1, {1}}})), nullptr);
  EXPECT_EQ(OpenImage(MadeGif(0, 5, {{0, 0, 1, 1, {1}}})), nullptr);
}

}  // namespace
}  // namespace lorv::test
