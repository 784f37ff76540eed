#include <gtest/gtest.h>

#include <random>

#include "image/decode/byte_view.h"
#include "image/decode/image_reader.h"
#include "tests/image/decode/decoded_pixels.h"
#include "tests/image/decode/made_images.h"

namespace lorv::test {
namespace {

const std::string kTwoColours = Low32(0xFF0000) + Low32(0xFFFFFF);

TEST(ByteView, HeaderExample) {
  ByteView view("\x01\x02");
  EXPECT_EQ(view.Low16(), 0x0201U);
  EXPECT_FALSE(view.Overran());
  EXPECT_EQ(view.Byte(), 0U);
  EXPECT_TRUE(view.Overran());
}

TEST(OpenImage, KindsAreRecognisedByTheirContent) {
  EXPECT_EQ(OpenImage(MadeGif(1, 1, {{0, 0, 1, 1, {1}}}))->Kind(), ImageKind::kGif);
  EXPECT_EQ(OpenImage(MadeBmp(1, 1, 24, 0, "", std::string(4, '\xFF')))->Kind(), ImageKind::kBmp);
  for (const char* bytes : {"", "B", "BM", "GIF89a", "\x89PNG\r\n\x1A\n", "\xFF\xD8\xFF", "P6 1 1 255 aaa",
                            "<svg/>", "RIFF1234WEBP", "II*"}) {
    EXPECT_EQ(OpenImage(bytes), nullptr) << bytes;
  }
}

TEST(OpenImage, BitmapsOfAllDepths) {
  EXPECT_EQ(PixelsOf(MadeBmp(2, 1, 1, 0, kTwoColours, std::string("\x40\0\0\0", 4))), (Pixels{kRed, kWhite}));
  EXPECT_EQ(PixelsOf(MadeBmp(2, 1, 4, 0, kTwoColours, std::string("\x10\0\0\0", 4))), (Pixels{kWhite, kRed}));
  EXPECT_EQ(PixelsOf(MadeBmp(2, 1, 8, 0, kTwoColours, std::string("\1\0\0\0", 4))), (Pixels{kWhite, kRed}));
  EXPECT_EQ(PixelsOf(MadeBmp(2, 1, 16, 0, "", std::string("\0\x7C\xFF\x7F", 4))), (Pixels{kRed, kWhite}));
  EXPECT_EQ(PixelsOf(MadeBmp(1, 1, 24, 0, "", std::string("\0\0\xFF\0", 4))), (Pixels{kRed}));
  EXPECT_EQ(PixelsOf(MadeBmp(1, 1, 32, 0, "", std::string("\0\0\xFF\0", 4))), (Pixels{kRed}));
}

TEST(OpenImage, BitmapsStandOnTheirHeadUnlessTheirHeightIsNegative) {
  const std::string rows("\0\0\0\0\1\0\0\0", 8);
  EXPECT_EQ(PixelsOf(MadeBmp(1, 2, 8, 0, kTwoColours, rows)), (Pixels{kWhite, kRed}));
  EXPECT_EQ(PixelsOf(MadeBmp(1, -2, 8, 0, kTwoColours, rows)), (Pixels{kRed, kWhite}));
}

TEST(OpenImage, RunLengthsWithJumpsAndPlainStretches) {
  // Two white; end of row; one jumped over, one white; end.
  const std::string runs("\2\1\0\0\0\2\1\0\1\1\0\1", 12);
  EXPECT_EQ(PixelsOf(MadeBmp(2, 2, 8, 1, kTwoColours, runs)), (Pixels{kRed, kWhite, kWhite, kWhite}));
  EXPECT_EQ(PixelsOf(MadeBmp(3, 1, 8, 1, kTwoColours, std::string("\0\3\1\0\1\0\0\1", 8))),
            (Pixels{kWhite, kRed, kWhite}));
  EXPECT_EQ(PixelsOf(MadeBmp(3, 1, 4, 2, kTwoColours, std::string("\3\x10\0\1", 4))),
            (Pixels{kWhite, kRed, kWhite}));
  EXPECT_EQ(OpenImage(MadeBmp(3, 1, 8, 1, kTwoColours, std::string("\3", 1))), nullptr);
}

// The picture within a bitmap of a file.
std::string IconPicture(const std::string& bmp) {
  return bmp.substr(14);
}

TEST(OpenImage, LargestPictureOfAnIconCounts) {
  const std::string small = IconPicture(MadeBmp(1, 2, 24, 0, "", std::string(8, '\0')));
  const std::string large =
      IconPicture(MadeBmp(2, 4, 24, 0, "", std::string(16, '\xFF') + std::string("\x80\0\0\0\0\0\0\0", 8)));
  const auto entry = [](char size, std::size_t bytes, std::size_t at) {
    return std::string{size, size, 0, 0, 1, 0, 24, 0} + Low32(static_cast<std::uint32_t>(bytes)) +
           Low32(static_cast<std::uint32_t>(at));
  };
  const std::string icon = std::string("\0\0\1\0\2\0", 6) + entry(1, small.size(), 38) +
                           entry(2, large.size(), 38 + small.size()) + small + large;
  const auto image = OpenImage(icon);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->Kind(), ImageKind::kIcon);
  EXPECT_EQ(image->Frame(0).pixels, (Pixels{kWhite, kWhite, 0, kWhite}));
}

TEST(OpenImage, CutAndClaimedTooLargeIsRefused) {
  const std::string whole = MadeBmp(40, 40, 24, 0, "", std::string(40 * 120, '\x7F'));
  EXPECT_NE(OpenImage(whole), nullptr);
  for (std::size_t size = 0; size < whole.size(); size += 7)
    EXPECT_EQ(OpenImage(whole.substr(0, size)), nullptr) << size;
  EXPECT_EQ(OpenImage(MadeBmp(2'000'000'000, 2'000'000'000, 24, 0, "", "")), nullptr);
  EXPECT_EQ(OpenImage(MadeBmp(-5, 5, 24, 0, "", std::string(100, '\0'))), nullptr);
  EXPECT_EQ(OpenImage(MadeBmp(5, -2147483647 - 1, 24, 0, "", std::string(100, '\0'))), nullptr);
}

// A grey picture of 8 by 8, with codes for levels and others of one bit, and a second head behind the scan.
TEST(OpenImage, SecondHeadOfAJpegChangesNothing) {
  const auto segment = [](char mark, const std::string& body) {
    const std::size_t size = body.size() + 2;
    return std::string{'\xFF', mark, static_cast<char>(size >> 8), static_cast<char>(size & 255)} + body;
  };
  const auto head = [&](char mark, char side) {
    return segment(mark, std::string{8, 0, side, 0, side, 1, 1, 0x11, 0});
  };
  const std::string codes = std::string(1, '\1') + std::string(15, '\0') + '\0';
  const std::string start = std::string("\xFF\xD8") + segment('\xDB', '\0' + std::string(64, '\1')) +
                            head('\xC0', 8) + segment('\xC4', '\0' + codes) +
                            segment('\xC4', '\x10' + codes) +
                            segment('\xDA', std::string("\1\1\0\0\x3F\0", 6)) + '\0';
  const Pixels grey = PixelsOf(start + "\xFF\xD9");
  ASSERT_EQ(grey, Pixels(64, 0xFF808080));
  for (const char mark : {'\xC0', '\xC1', '\xC2'})
    for (const char side : {'\0', '\1', '\x7F'})
      EXPECT_EQ(PixelsOf(start + head(mark, side) + "\xFF\xD9"), grey);
}

TEST(OpenImage, RandomBytesBehindEveryMarkAreSurvived) {
  std::mt19937 random(1);
  const std::string starts[] = {MadeGif(9, 9, {{0, 0, 9, 9, std::string(81, '\1'), 3}}),
                                MadeBmp(9, 9, 8, 1, kTwoColours, std::string(300, '\5')),
                                std::string("\xFF\xD8\xFF\xC0\0\x11\x08\0\x10\0\x10\3\1\x22\0\2\x11\1\3\x11\1"
                                            "\xFF\xDA\0\x0C\3\1\0\2\x11\3\x11\0\x3F\0",
                                            35),
                                std::string("\0\0\1\0\1\0", 6)};
  for (int i = 0; i < 20'000; ++i) {
    std::string bytes = starts[random() % 4];
    bytes.resize(bytes.size() + random() % 64, 'x');
    for (int change = 0; change < 6; ++change) bytes[random() % bytes.size()] = static_cast<char>(random());
    if (const auto image = OpenImage(bytes)) image->Frame(image->FrameCount() - 1);
  }
  EXPECT_EQ(PixelsOf(MadeBmp(1, 1, 24, 0, "", std::string(4, '\0'))), (Pixels{kBlack}));
}

}  // namespace
}  // namespace lorv::test
