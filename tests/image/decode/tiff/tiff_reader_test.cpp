// Pages of TIFF files: kinds of samples, pieces and packings, directories that are damaged or run in circles.

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

#include "image/decode/image_reader.h"
#include "tests/image/decode/decoded_pixels.h"
#include "tests/image/decode/tiff/made_tiff.h"

namespace lorv::test {
namespace {

MadePage Grey(std::uint32_t width, std::uint32_t height, const std::string& samples) {
  return {PageFields(width, height, 8, 1, 1), {samples}};
}

std::string Deflated(const std::string& bytes) {
  const auto count = static_cast<uLong>(bytes.size());
  uLongf size = compressBound(count);
  std::string packed(size, '\0');
  compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
           count);
  packed.resize(size);
  return packed;
}

TEST(TiffReader, GreyIsReadInBothOrdersOfBytes) {
  for (const bool high_first : {false, true}) {
    const auto image = OpenImage(MadeTiff(Grey(2, 1, "\x80\xFF"), high_first));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->Kind(), ImageKind::kTiff);
    EXPECT_EQ(image->Width(), 2);
    EXPECT_EQ(image->Height(), 1);
    EXPECT_EQ(image->FrameCount(), 1);
    EXPECT_TRUE(image->Delays().empty());
    EXPECT_EQ(image->Frame(0).pixels, (Pixels{0xFF808080, kWhite}));
  }
}

TEST(TiffReader, BitsArePackedAndMayStandForWhite) {
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(3, 2, 1, 1, 1), {"\xA0\x40"}})),
            (Pixels{kWhite, kBlack, kWhite, kBlack, kWhite, kBlack}));
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(3, 1, 1, 1, 0), {"\xA0"}})), (Pixels{kBlack, kWhite, kBlack}));
  MadePage turned = {PageFields(3, 1, 1, 1, 1), {"\x05"}};
  turned.fields.push_back({266, 3, {2}});
  EXPECT_EQ(PixelsOf(MadeTiff(turned)), (Pixels{kWhite, kBlack, kWhite}));
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(3, 1, 2, 1, 1), {"\x6C"}})),
            (Pixels{0xFF555555, 0xFFAAAAAA, kWhite}));
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(3, 1, 4, 1, 1), {"\x1F\x20"}})),
            (Pixels{0xFF111111, kWhite, 0xFF222222}));
}

TEST(TiffReader, SixteenBitsCountByTheirUpperEight) {
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(2, 1, 16, 1, 1), {std::string("\x34\x12\xFF\xFE", 4)}})),
            (Pixels{0xFF121212, 0xFFFEFEFE}));
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(2, 1, 16, 1, 1), {std::string("\x12\x34\xFE\xFF", 4)}}, true)),
            (Pixels{0xFF121212, 0xFFFEFEFE}));
}

TEST(TiffReader, ColoursHaveAlphaWhereTheFileSaysSo) {
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(1, 1, 8, 1, 2, 3), {"\x01\x02\x03"}})), (Pixels{0xFF010203}));
  const std::string four("\x40\x20\x10\x80", 4);
  for (const auto& [kind, seen] : {std::pair{0U, 0xFF402010U}, {1U, 0x80804020U}, {2U, 0x80402010U}}) {
    MadePage page = {PageFields(1, 1, 8, 1, 2, 4), {four}};
    page.fields.push_back({338, 3, {kind}});
    EXPECT_EQ(PixelsOf(MadeTiff(page)), (Pixels{seen})) << kind;
  }
  MadePage grey = {PageFields(1, 1, 8, 1, 1, 2), {"\x70\x60"}};
  grey.fields.push_back({338, 3, {2}});
  EXPECT_EQ(PixelsOf(MadeTiff(grey)), (Pixels{0x60707070}));
}

TEST(TiffReader, PlanesLieOneBehindTheOther) {
  MadePage page = {PageFields(2, 1, 8, 1, 2, 4), {"\x01\x11", "\x02\x12", "\x03\x13", "\x80\x90"}};
  page.fields.push_back({284, 3, {2}});
  page.fields.push_back({338, 3, {2}});
  EXPECT_EQ(PixelsOf(MadeTiff(page)), (Pixels{0x80010203, 0x90111213}));
  page.fields.pop_back();
  EXPECT_EQ(PixelsOf(MadeTiff(page)), (Pixels{0xFF010203, 0xFF111213}));
}

TEST(TiffReader, PaletteGivesTheColours) {
  std::vector<std::uint32_t> map(48, 0);
  map[1] = 0xFFFF;       // red of the second colour
  map[16 + 2] = 0x80FF;  // green of the third
  MadePage page = {PageFields(3, 1, 4, 1, 3), {std::string("\x12\x00", 2)}};
  page.fields.push_back({320, 3, map});
  EXPECT_EQ(PixelsOf(MadeTiff(page)), (Pixels{kRed, 0xFF008000, kBlack}));
  page.fields.back().values.pop_back();
  EXPECT_EQ(OpenImage(MadeTiff(page)), nullptr);
}

TEST(TiffReader, StripsAndTilesAreCutAtThePage) {
  MadePage strips = {PageFields(1, 3, 8, 1, 1), {"\x01\x02", "\x03"}};
  strips.fields.push_back({278, 3, {2}});
  const Pixels column = {0xFF010101, 0xFF020202, 0xFF030303};
  EXPECT_EQ(PixelsOf(MadeTiff(strips)), column);
  MadePage tiles = {PageFields(3, 1, 8, 1, 1), {"\x01\x02zz", "\x03zzz"}, true};
  tiles.fields.push_back({322, 3, {2}});
  tiles.fields.push_back({323, 3, {2}});
  EXPECT_EQ(PixelsOf(MadeTiff(tiles)), column);
}

TEST(TiffReader, PackingsGiveTheSamePixels) {
  const Pixels seen = {0xFF070707, 0xFF070707, 0xFF070707, 0xFF010101, 0xFF020202};
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(5, 1, 8, 32773, 1), {"\xFE\x07\x80\x01\x01\x02"}})), seen);
  const std::string plain("\x07\x07\x07\x01\x02", 5);
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(5, 1, 8, 8, 1), {Deflated(plain)}})), seen);
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(5, 1, 8, 32946, 1), {Deflated(plain)}})), seen);
  // Codes of nine bits: clear, 7, the word of two sevens, 1, 2, end.
  EXPECT_EQ(PixelsOf(MadeTiff({PageFields(5, 1, 8, 5, 1), {std::string("\x80\x01\xE0\x40\x10\x14\x04", 7)}})),
            seen);
}

TEST(TiffReader, DifferencesAddUpAlongARow) {
  MadePage page = {PageFields(3, 2, 8, 8, 1), {Deflated(std::string("\x05\x01\xFF\x02\x02\x02", 6))}};
  page.fields.push_back({317, 3, {2}});
  EXPECT_EQ(PixelsOf(MadeTiff(page)),
            (Pixels{0xFF050505, 0xFF060606, 0xFF050505, 0xFF020202, 0xFF040404, 0xFF060606}));
  MadePage wide = {PageFields(2, 1, 16, 8, 1), {Deflated(std::string("\xFF\x01\x02\x01", 4))}};
  wide.fields.push_back({317, 3, {2}});
  EXPECT_EQ(PixelsOf(MadeTiff(wide)), (Pixels{0xFF010101, 0xFF030303}));
}

TEST(TiffReader, EveryPageIsAFrameOfItsOwnSize) {
  TiffMaker maker;
  maker.Add(Grey(1, 1, "\x11"));
  maker.Add(Grey(2, 1, "\x22\x33"));
  maker.Add(Grey(1, 2, "\x44\x55"));
  const auto image = OpenImage(maker.Bytes());
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->FrameCount(), 3);
  EXPECT_EQ(image->FrameSize(1), (std::pair{2, 1}));
  EXPECT_EQ(image->FrameSize(7), (std::pair{1, 1}));
  EXPECT_EQ(image->Frame(2).pixels, (Pixels{0xFF444444, 0xFF555555}));
  EXPECT_EQ(image->Frame(2).height, 2);
  EXPECT_EQ(image->Frame(0).pixels, (Pixels{0xFF111111}));
  EXPECT_EQ(image->Frame(1).pixels, (Pixels{0xFF222222, 0xFF333333}));
  EXPECT_EQ(image->Frame(99).pixels, (Pixels{0xFF111111}));
}

TEST(TiffReader, DirectoriesThatComeAgainEndTheList) {
  TiffMaker circle;
  const std::uint32_t first = circle.Add(Grey(1, 1, "\x11"));
  circle.Add(Grey(1, 1, "\x22"));
  circle.Link(first);
  ASSERT_NE(OpenImage(circle.Bytes()), nullptr);
  EXPECT_EQ(OpenImage(circle.Bytes())->FrameCount(), 2);
  TiffMaker self;
  self.Link(self.Add(Grey(1, 1, "\x11")));
  EXPECT_EQ(OpenImage(self.Bytes())->FrameCount(), 1);
}

TEST(TiffReader, DamagedDirectoriesEndTheListAndDamagedPagesKeepWhatCame) {
  TiffMaker maker;
  maker.Add(Grey(1, 1, "\x11"));
  maker.Add(Grey(1, 2, "\x22"));
  maker.Add({PageFields(0, 5, 8, 1, 1), {"\x33"}});
  maker.Add(Grey(1, 1, "\x44"));
  const auto image = OpenImage(maker.Bytes());
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->FrameCount(), 2);
  EXPECT_EQ(image->Frame(1).pixels, (Pixels{0xFF222222, kBlack}));
}

TEST(TiffReader, WhatIsNotDecodedHereIsRefused) {
  EXPECT_EQ(OpenImage(MadeTiff({PageFields(1, 1, 8, 4, 1), {"\x11"}})), nullptr) << "fax";
  EXPECT_EQ(OpenImage(MadeTiff({PageFields(1, 1, 8, 7, 1), {"\x11"}})), nullptr) << "JPEG";
  EXPECT_EQ(OpenImage(MadeTiff({PageFields(1, 1, 8, 1, 6, 3), {"\1\2\3"}})), nullptr) << "luminance";
  EXPECT_EQ(OpenImage(MadeTiff({PageFields(1, 1, 32, 1, 1), {"\1\2\3\4"}})), nullptr) << "32 bits";
  EXPECT_EQ(OpenImage(MadeTiff({PageFields(1, 1, 8, 1, 2, 2), {"\1\2"}})), nullptr) << "two colours";
  EXPECT_EQ(OpenImage(MadeTiff({PageFields(1, 1, 8, 1, 1, 9), {"123456789"}})), nullptr) << "nine samples";
  MadePage fractions = Grey(1, 1, "\x11");
  fractions.fields.push_back({339, 3, {3}});
  EXPECT_EQ(OpenImage(MadeTiff(fractions)), nullptr);
  EXPECT_EQ(OpenImage(std::string("II*\0\x08\0\0\0", 8)), nullptr);
  EXPECT_EQ(OpenImage(std::string("II+\0\x08\0\0\0", 8)), nullptr);
}

TEST(TiffReader, CutAndClaimedTooLargeIsRefusedAtOnce) {
  const std::string whole = MadeTiff(Grey(40, 40, std::string(1600, '\x7F')));
  ASSERT_NE(OpenImage(whole), nullptr);
  // The last 16 bytes are the size of the only piece, which may be missing, and the end of the list.
  for (std::size_t size = 0; size < whole.size() - 16; size += 7)
    EXPECT_EQ(OpenImage(whole.substr(0, size)), nullptr) << size;
  EXPECT_EQ(OpenImage(MadeTiff(Grey(2'000'000'000, 2'000'000'000, "\1"))), nullptr);
  EXPECT_EQ(OpenImage(MadeTiff(Grey(8192, 4097, "\1"))), nullptr) << "one row above the limit";
  MadePage narrow = {PageFields(1, 33'554'432, 8, 1, 1), {"\1"}, true};
  narrow.fields.push_back({322, 4, {33'554'432}});
  narrow.fields.push_back({323, 4, {1}});
  EXPECT_EQ(OpenImage(MadeTiff(narrow)), nullptr) << "tiles far wider than the page";
}

// Thousands of pages, and a circle of them, must not keep anybody waiting.
TEST(TiffReader, ManyPagesAreListedAndNotDecoded) {
  TiffMaker maker;
  for (int i = 0; i < 3000; ++i) maker.Add(Grey(1, 1, std::string(1, static_cast<char>(i))));
  maker.Link(8);
  const auto image = OpenImage(maker.Bytes());
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->FrameCount(), 3000);
  EXPECT_EQ(image->Frame(2999).pixels, (Pixels{0xFFB7B7B7}));
}

TEST(TiffReader, ClonesHaveFramesOfTheirOwn) {
  TiffMaker maker;
  maker.Add(Grey(1, 1, "\x11"));
  maker.Add(Grey(1, 1, "\x22"));
  auto image = OpenImage(maker.Bytes());
  const Raster& first = image->Frame(0);
  const auto clone = image->Clone();
  EXPECT_EQ(clone->Frame(1).pixels, (Pixels{0xFF222222}));
  EXPECT_EQ(first.pixels, (Pixels{0xFF111111}));
  image.reset();
  EXPECT_EQ(clone->Frame(0).pixels, (Pixels{0xFF111111}));
}

TEST(TiffReader, RandomDamageIsSurvived) {
  std::mt19937 random(3);
  MadePage tiles = {PageFields(9, 9, 8, 5, 2, 3), std::vector<std::string>(9, "\x80\x01\xE0\x40\x10\x14\x04"),
                    true};
  tiles.fields.push_back({322, 3, {4}});
  tiles.fields.push_back({323, 3, {4}});
  MadePage runs = {PageFields(9, 9, 1, 32773, 0), {std::string(40, '\x83')}};
  TiffMaker two;
  two.Add(Grey(3, 3, "123456789"));
  two.Add(runs);
  const std::string starts[] = {
      MadeTiff(tiles), two.Bytes(),
      MadeTiff({PageFields(9, 9, 16, 8, 1), {Deflated(std::string(162, 'x'))}}, true)};
  for (int i = 0; i < 5'000; ++i) {
    std::string bytes = starts[random() % std::size(starts)];
    for (int change = 0; change < 4; ++change) bytes[random() % bytes.size()] = static_cast<char>(random());
    if (const auto image = OpenImage(bytes)) image->Frame(image->FrameCount() - 1);
  }
  EXPECT_EQ(PixelsOf(MadeTiff(Grey(1, 1, std::string(1, '\0')))), (Pixels{kBlack}));
}

}  // namespace
}  // namespace lorv::test
