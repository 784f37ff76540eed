// Masks of bitmaps: any parts of a pixel, each on a scale to 255.

#include <gtest/gtest.h>

#include <bit>
#include <random>

#include "image/decode/image_reader.h"
#include "tests/image/decode/made_images.h"

namespace lorv::test {
namespace {

constexpr unsigned kMasks = 3;
constexpr unsigned kAlphaMasks = 6;

unsigned Scaled(std::uint32_t value, std::uint32_t mask, unsigned missing) {
  if (mask == 0) return missing;
  const int shift = std::countr_zero(mask);
  const std::uint64_t most = mask >> shift;
  return static_cast<unsigned>(std::uint64_t{(value & mask) >> shift} * 255 / most);
}

using FourMasks = std::array<std::uint32_t, 4>;

// One row of random values beside the formula.
void Compare(std::mt19937& random, unsigned bits, const FourMasks& masks) {
  constexpr int kWidth = 64;
  std::string rows;
  std::vector<std::uint32_t> pixels;
  for (int x = 0; x < kWidth; ++x) {
    const auto value = static_cast<std::uint32_t>(bits == 16 ? random() & 0xFFFF : random());
    rows += bits == 16 ? Low16(value) : Low32(value);
    pixels.push_back(Pixel(Scaled(value, masks[0], 0), Scaled(value, masks[1], 0), Scaled(value, masks[2], 0),
                           Scaled(value, masks[3], 255)));
  }
  std::string table;
  for (const std::uint32_t mask : masks) table += Low32(mask);
  const auto image = OpenImage(MadeBmp(kWidth, 1, bits, kAlphaMasks, table, rows));
  ASSERT_NE(image, nullptr);
  ASSERT_EQ(image->Frame(0).pixels, pixels) << std::hex << masks[0] << ' ' << masks[1] << ' ' << masks[2];
}

TEST(BmpDecoder, MasksOfAnyFormAreScaled) {
  std::mt19937 random(4);
  const auto any = [&] { return static_cast<std::uint32_t>(random()); };
  for (int i = 0; i < 500; ++i) {
    const unsigned bits = i % 2 == 0 ? 16 : 32;
    // Up to eight bits, up to sixteen with and without gaps, and anything.
    const auto mask = [&]() -> std::uint32_t {
      const unsigned shift = any() % 32;
      switch (any() % 4) {
        case 0:
          return ((1U << (1 + any() % 8)) - 1) << shift;
        case 1:
          return ((1U << (1 + any() % 16)) - 1) << shift;
        case 2:
          return (any() & 0xFFFF) << shift;
        default:
          return any();
      }
    };
    Compare(random, bits, {mask(), mask(), mask(), any() % 2 == 0 ? mask() : 0});
    if (HasFatalFailure()) return;
  }
}

TEST(BmpDecoder, MasksAreUsualOnesOrNearlySo) {
  std::mt19937 random(5);
  const FourMasks usual = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
  Compare(random, 32, usual);
  Compare(random, 32, {0xFF0000, 0xFF00, 0xFF, 0});
  for (std::size_t i = 0; i < 4; ++i) {
    FourMasks other = usual;
    other[i] = i == 3 ? 0x7F000000 : usual[i] << 8 | usual[i];
    Compare(random, 32, other);
    other[i] = 0;
    Compare(random, 32, other);
  }
}

// Without a table of masks the fourth byte counts for nothing.
TEST(BmpDecoder, PlainPixelsOfFourBytesAreOpaque) {
  const std::string rows = Low32(0x00112233) + Low32(0x80FF00FF);
  for (const unsigned packing : {0U, kMasks}) {
    const std::string table = packing == 0 ? "" : Low32(0xFF0000) + Low32(0xFF00) + Low32(0xFF);
    const auto image = OpenImage(MadeBmp(2, 1, 32, packing, table, rows));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->Frame(0).pixels, (std::vector<std::uint32_t>{0xFF112233, 0xFFFF00FF}));
  }
}

}  // namespace
}  // namespace lorv::test
