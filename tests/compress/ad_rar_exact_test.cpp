#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>

#include "compress/AdRar.h"
#include "tests/compress/lzari/lzari_samples.h"
#include "tests/compress/lzari/plain_lzari.h"

namespace lorv::test {
namespace {

std::string WithSize(std::string stream, std::uint32_t size) {
  for (std::size_t i = 0; i < 4; ++i) stream[i] = static_cast<char>(size >> (8 * i));
  return stream;
}

TEST(AdRarExact, EveryStreamComesBackWhole) {
  for (const Sample& sample : LzariSamples()) {
    EXPECT_TRUE(Unpacked(Packed(sample.bytes), true) == sample.bytes) << sample.name;
  }
}

TEST(AdRarExact, LengthsFromOneByteOnComeBackWhole) {
  for (std::size_t length = 1; length < 700; ++length) {
    const std::string text = Noise(length, static_cast<unsigned>(length), 5);
    ASSERT_TRUE(Unpacked(Packed(text), true) == text) << length;
  }
}

TEST(AdRarExact, PlainExactDecoderAgrees) {
  const std::string text = Noise(5000, 9, 20);
  EXPECT_TRUE(std::make_unique<PlainLzari>()->Decode(Packed(text), PlainLzari::Reading::kExact) == text);
}

TEST(AdRarExact, CutStreamsAreRefused) {
  const std::string stream = Packed(Noise(300, 1, 9));
  for (std::size_t length = 0; length < stream.size(); ++length) {
    EXPECT_TRUE(IsRefused(stream.substr(0, length))) << "cut to " << length;
  }
}

TEST(AdRarExact, BytesBehindTheCodeAreRefused) {
  EXPECT_TRUE(IsRefused(Packed("hello world") + '\0'));
  EXPECT_TRUE(IsRefused(std::string(4, '\0') + '\0')) << "a count of 0 has no code";
}

// The stream carries no check sum: near its end a wrong bit may make the stream of another text.
TEST(AdRarExact, OneWrongBitIsRefusedOrMakesAnotherTextOfThisLength) {
  const std::string text = Noise(4000, 8, 50);
  const std::string stream = Packed(text);
  int refused = 0;
  for (std::size_t bit = 32; bit < stream.size() * 8; bit += 101) {
    std::string damaged = stream;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (0x80 >> bit % 8));
    try {
      const std::string back = Unpacked(damaged, true);
      EXPECT_EQ(back.size(), text.size()) << "bit " << bit;
      EXPECT_NE(back, text) << "bit " << bit;
    } catch (int code) {
      EXPECT_EQ(code, 1);
      ++refused;
    }
  }
  EXPECT_GT(refused, static_cast<int>(stream.size() * 8 / 101 * 8 / 10)) << "most damage is noticed";
}

TEST(AdRarExact, WrongCountsAreRefused) {
  const std::string stream = Packed("hello world");
  for (const std::uint32_t size : {0U, 1U, 10U, 12U, 1000U, 0x7FFFFFFEU, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    EXPECT_TRUE(IsRefused(WithSize(stream, size))) << size;
  }
}

TEST(AdRarExact, MatchOverTheEndIsRefused) {
  const std::string stream = Packed(std::string(20, 'a'));
  EXPECT_TRUE(IsRefused(WithSize(stream, 19)));
}

TEST(AdRarExact, ClaimsBeyondTheCodeLengthAreRefusedAtOnce) {
  const std::string stream = std::string(4, '\0') + std::string(1000, '\0');
  EXPECT_TRUE(IsRefused(WithSize(stream, 0x7FFFFFF0U)));
}

TEST(AdRarExact, NoiseIsRefusedOrGivesWhatItClaims) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    const std::string stream = WithSize("1234" + Noise(seed % 90, seed), seed % 200);
    try {
      EXPECT_EQ(Unpacked(stream, true).size(), seed % 200);
    } catch (int code) {
      EXPECT_EQ(code, 1);
    }
  }
}

TEST(AdRarExact, RefusedStreamLeavesTheResultAlone) {
  const std::string stream = Packed("hello world");
  CAdRar unpacker;
  unpacker.SetExactDecoding(true);
  const unsigned char* result = nullptr;
  int length = -7;
  const auto* bytes = reinterpret_cast<const unsigned char*>(stream.data());
  testing::internal::CaptureStdout();
  EXPECT_THROW(unpacker.UnCompress(bytes, 14, result, length), int);
  EXPECT_TRUE(testing::internal::GetCapturedStdout().ends_with("\nRead Error\n"));
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(length, -7);
  unpacker.UnCompress(bytes, 15, result, length);
  EXPECT_EQ(length, 11) << "the object starts afresh";
}

TEST(AdRarExact, ObjectServesManyOperations) {
  CAdRar codec;
  codec.SetExactDecoding(true);
  const unsigned char* result = nullptr;
  int length = 0;
  for (int round = 0; round < 3; ++round) {
    const std::string text = Noise(3000, static_cast<unsigned>(round), 30);
    codec.Compress(reinterpret_cast<const unsigned char*>(text.data()), 3000, result, length);
    const std::string stream(reinterpret_cast<const char*>(result), static_cast<std::size_t>(length));
    codec.UnCompress(reinterpret_cast<const unsigned char*>(stream.data()), length, result, length);
    ASSERT_EQ(std::string(reinterpret_cast<const char*>(result), static_cast<std::size_t>(length)), text);
  }
}

}  // namespace
}  // namespace lorv::test
