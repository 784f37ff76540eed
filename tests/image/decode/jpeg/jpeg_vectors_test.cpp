// The steps on eight numbers at a time beside the plain ones: on blocks as pictures have them, on those at
// the very edge of what vectors hold, and on those that only hostile files have.

#include "image/decode/jpeg/jpeg_vectors.h"

#include <gtest/gtest.h>

#include <random>

namespace lorv::jpeg {
namespace {

constexpr std::size_t kStride = 11;
using Samples = std::array<unsigned char, kStride * kBlockSize>;

constexpr unsigned char kUntouched = 77;

int Between(std::mt19937& random, int least, int most) {
  return std::uniform_int_distribution<int>(least, most)(random);
}

Quantities QuantitiesUpTo(std::mt19937& random, int most) {
  Quantities quantities;
  for (std::uint16_t& each : quantities) each = static_cast<std::uint16_t>(Between(random, 1, most));
  return quantities;
}

Block BlockOf(std::mt19937& random, int count, int most) {
  Block block = {};
  for (int i = 0; i < count; ++i)
    block[static_cast<std::size_t>(Between(random, 0, kBlockArea - 1))] =
        static_cast<std::int16_t>(Between(random, -most, most));
  return block;
}

// Whether vectors took it; what they gave, and what the decoder gives in any case, is the plain result.
bool TakenAndEqual(const Block& block, const Quantities& quantities) {
  Samples plain, vectors, either;
  plain.fill(kUntouched);
  vectors = either = plain;
  const Samples untouched = plain;
  TransformPlainly(block, quantities, plain.data(), kStride);
  const bool taken = TransformByVectors(block, quantities, vectors.data(), kStride);
  EXPECT_EQ(vectors, taken ? plain : untouched);
  TransformBlock(block, quantities, either.data(), kStride);
  EXPECT_EQ(either, plain);
  return taken;
}

// How many of so many blocks the vectors took.
int Taken(int blocks, int most_count, int most_value, int most_quantity) {
  std::mt19937 random(static_cast<unsigned>(most_value + most_quantity));
  int taken = 0;
  for (int i = 0; i < blocks && !testing::Test::HasFailure(); ++i) {
    const Quantities quantities = QuantitiesUpTo(random, most_quantity);
    taken += TakenAndEqual(BlockOf(random, Between(random, 0, most_count), most_value), quantities) ? 1 : 0;
  }
  return taken;
}

TEST(JpegVectors, BlocksOfPicturesAreTakenAsAWhole) {
  constexpr int kBlocks = 20'000;
  EXPECT_EQ(Taken(kBlocks, 20, 40, 16), kBlocks);
  EXPECT_EQ(Taken(kBlocks, 64, 700, 1), kBlocks);
}

TEST(JpegVectors, LargerBlocksAreEqualAndPartlyLeft) {
  for (const auto& [value, quantity] : {std::pair(4000, 1), std::pair(300, 30), std::pair(32767, 1)}) {
    const int taken = Taken(20'000, 12, value, quantity);
    EXPECT_GT(taken, 100) << value;
    EXPECT_LT(taken, 19'900) << value;
  }
}

TEST(JpegVectors, HostileBlocksAreEqual) {
  Taken(20'000, 64, 32767, 65535);
  Taken(20'000, 64, 3, 65535);
  // Nothing but the largest numbers, of both signs.
  Quantities ones;
  ones.fill(1);
  Block block;
  for (const int value : {-32768, -32767, 32767}) {
    block.fill(static_cast<std::int16_t>(value));
    EXPECT_FALSE(TakenAndEqual(block, ones));
  }
}

// A column is transformed within 16 bits up to a sum of 5900, wherever its numbers stand and whatever their
// signs.
TEST(JpegVectors, ColumnsAtTheEdgeAreEqual) {
  std::mt19937 random(3);
  Quantities ones;
  ones.fill(1);
  for (int i = 0; i < 40'000 && !testing::Test::HasFailure(); ++i) {
    const int sum = i % 2 == 0 ? 5900 : 5901;
    Block block = {};
    const auto columns = static_cast<std::size_t>(Between(random, 1, 8));
    for (std::size_t x = 0; x < columns; ++x) {
      int left = sum;
      for (std::size_t y = 0; y < 8 && left > 0; ++y) {
        const int part = y == 7 || i % 3 == 0 ? left : Between(random, 0, left);
        const std::size_t row = i % 3 == 0 ? static_cast<std::size_t>(Between(random, 0, 7)) : y;
        block[row * 8 + x] = static_cast<std::int16_t>(random() % 2 == 0 ? part : -part);
        left -= part;
      }
    }
    EXPECT_EQ(TakenAndEqual(block, ones), sum == 5900);
  }
}

TEST(JpegVectors, FactorsThatLookNegativeAreLeft) {
  Quantities quantities;
  quantities.fill(1);
  Block block = {};
  block[9] = 1;
  EXPECT_TRUE(TakenAndEqual(block, quantities));
  for (const unsigned factor : {32767U, 32768U, 65535U}) {
    quantities[9] = static_cast<std::uint16_t>(factor);
    EXPECT_FALSE(TakenAndEqual(block, quantities)) << factor;
  }
}

TEST(JpegVectors, LevelsAloneAreTheWholeTransform) {
  for (const unsigned factor : {1U, 2U, 3U, 16U, 255U, 40'000U, 65535U}) {
    Quantities quantities = {};
    quantities[0] = static_cast<std::uint16_t>(factor);
    for (int level = -32768; level <= 32767; level += factor == 1 ? 1 : 7) {
      Block block = {};
      block[0] = static_cast<std::int16_t>(level);
      Samples plain = {};
      Samples levels = {};
      TransformPlainly(block, quantities, plain.data(), kStride);
      TransformLevel(level, quantities, levels.data(), kStride);
      ASSERT_EQ(levels, plain) << level << " times " << factor;
    }
  }
}

unsigned char Share(int brightness, int sum) {
  // Whole numbers of 16 bits behind the point, rounded.
  return static_cast<unsigned char>(std::clamp(brightness + ((sum + (1 << 15)) >> 16), 0, 255));
}

// Every pair of differences, at the ends of the brightness and between them.
TEST(JpegVectors, ColoursOfAllDifferencesAreEqual) {
  constexpr int kCount = 256;
  std::array<unsigned char, kCount> light, blueness, redness;
  std::array<std::uint32_t, kCount> pixels;
  for (const int brightness : {0, 1, 77, 128, 200, 255}) {
    light.fill(static_cast<unsigned char>(brightness));
    for (int red = 0; red < kCount; ++red) {
      redness.fill(static_cast<unsigned char>(red));
      for (int x = 0; x < kCount; ++x) blueness[static_cast<std::size_t>(x)] = static_cast<unsigned char>(x);
      const int put =
          PutBrightnessByVectors(light.data(), blueness.data(), redness.data(), pixels.data(), kCount);
      for (int x = 0; x < put; ++x) {
        const int b = x - 128;
        const int r = red - 128;
        ASSERT_EQ(pixels[static_cast<std::size_t>(x)],
                  Pixel(Share(brightness, 91881 * r), Share(brightness, -22554 * b - 46802 * r),
                        Share(brightness, 116130 * b)))
            << brightness << ' ' << x << ' ' << red;
      }
    }
  }
}

// Of any width, at any address: nothing is read or written beyond.
TEST(JpegVectors, FewerThanEightPixelsAreLeft) {
  const std::vector<unsigned char> samples(64, 128);
  for (int count = 0; count < 40; ++count) {
    std::vector<std::uint32_t> pixels(50, 0);
    const int put = PutBrightnessByVectors(samples.data() + count % 8, samples.data() + 3, samples.data() + 1,
                                           pixels.data() + 1, count);
    EXPECT_TRUE(put == 0 || put == count / 8 * 8) << count;
    for (int x = 0; x < 49; ++x)
      EXPECT_EQ(pixels[static_cast<std::size_t>(x) + 1], x < put ? Pixel(128, 128, 128) : 0U) << count;
  }
}

}  // namespace
}  // namespace lorv::jpeg
