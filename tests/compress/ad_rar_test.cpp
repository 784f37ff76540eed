#include "compress/AdRar.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <vector>

#include "tests/compress/lzari/lzari_samples.h"
#include "tests/compress/lzari/plain_lzari.h"

namespace lorv::test {
namespace {

const unsigned char* ArchiveBytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::string PlainPacked(const std::string& plain) {
  return std::make_unique<PlainLzari>()->Encode(plain);
}

std::string PlainUnpacked(const std::string& stream, PlainLzari::Reading reading) {
  return std::make_unique<PlainLzari>()->Decode(stream, reading);
}

// What the codec prints during one operation.
template <class Operation>
std::string Printed(Operation operation) {
  testing::internal::CaptureStdout();
  try {
    operation();
  } catch (int) {
  }
  return testing::internal::GetCapturedStdout();
}

TEST(AdRar, HelloWorldGivesTheseFifteenBytes) {
  EXPECT_EQ(Packed("hello world"),
            std::string("\x0b\x00\x00\x00\xaa\xf1\xc0\xd0\x71\x45\x04\x6f\x38\x79\x09", 15));
}

TEST(AdRar, GuardedDecoderSpoilsTheLastSymbols) {
  EXPECT_EQ(Unpacked(Packed("hello world"), false), "hello worll");
}

TEST(AdRar, RunComesBackWholeFromTheGuardedDecoder) {
  const std::string run(20, 'a');
  EXPECT_EQ(Packed(run).size(), 8U) << "a literal and one match";
  EXPECT_EQ(Unpacked(Packed(run), false), run);
}

TEST(AdRar, StreamsEqualThoseOfThePlainAlgorithm) {
  for (const Sample& sample : LzariSamples()) {
    EXPECT_TRUE(Packed(sample.bytes) == PlainPacked(sample.bytes)) << sample.name;
  }
}

TEST(AdRar, GuardedDecoderEqualsThePlainOne) {
  for (const Sample& sample : LzariSamples()) {
    const std::string stream = PlainPacked(sample.bytes);
    EXPECT_TRUE(Unpacked(stream, false) == PlainUnpacked(stream, PlainLzari::Reading::kBuffer))
        << sample.name;
  }
}

TEST(AdRar, RealFilesEqualThePlainAlgorithmBothWays) {
  for (const Sample& sample : RealSamples()) {
    const std::string stream = PlainPacked(sample.bytes);
    EXPECT_TRUE(Packed(sample.bytes) == stream) << sample.name;
    EXPECT_TRUE(Unpacked(stream, false) == PlainUnpacked(stream, PlainLzari::Reading::kBuffer))
        << sample.name;
    EXPECT_TRUE(Unpacked(stream, true) == sample.bytes) << sample.name;
  }
}

TEST(AdRar, RandomInputsEqualThePlainAlgorithmBothWays) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    const std::string text = Noise(seed * 7 % 900, seed, 2 + static_cast<int>(seed % 60));
    const std::string stream = PlainPacked(text);
    ASSERT_TRUE(Packed(text) == stream) << "seed " << seed;
    ASSERT_TRUE(Unpacked(stream, false) == PlainUnpacked(stream, PlainLzari::Reading::kBuffer))
        << "seed " << seed;
  }
}

TEST(AdRar, GuardedDecoderTakesAnyBytesAsThePlainOneDoes) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    std::string stream = std::string("\x40\x01\x00\x00", 4) + Noise(seed % 40, seed);
    const std::string plain = PlainUnpacked(stream, PlainLzari::Reading::kBuffer);
    ASSERT_TRUE(Unpacked(stream, false) == plain) << "seed " << seed;
    ASSERT_GE(plain.size(), 0x140U) << "a match may overrun the size, nothing falls short of it";
  }
}

TEST(AdRar, EmptyInputGivesFourZeroBytesAndThoseGiveNothing) {
  EXPECT_EQ(Packed(""), std::string(4, '\0'));
  for (const bool exact : {false, true}) {
    CAdRar unpacker;
    unpacker.SetExactDecoding(exact);
    const unsigned char mark = 0;
    const unsigned char* result = &mark;
    int length = -7;
    unpacker.UnCompress(ArchiveBytes(std::string(4, '\0')), 4, result, length);
    EXPECT_EQ(result, &mark);
    EXPECT_EQ(length, -7);
  }
}

TEST(AdRar, NullOrNegativeSourceCountsAsEmpty) {
  CAdRar packer;
  const unsigned char* result = nullptr;
  int length = 0;
  packer.Compress(nullptr, 5, result, length);
  EXPECT_EQ(length, 4);
  CAdRar other;
  other.Compress(ArchiveBytes("abc"), -1, result, length);
  EXPECT_EQ(length, 4);
  EXPECT_THROW(CAdRar().UnCompress(nullptr, 9, result, length), int);
}

TEST(AdRar, LessThanFourBytesAreAReadError) {
  for (int length = 0; length < 4; ++length) {
    const unsigned char* result = nullptr;
    int result_length = -7;
    std::string printed = Printed([&] {
      EXPECT_THROW(CAdRar().UnCompress(ArchiveBytes("\x01\x02\x03"), length, result, result_length), int);
    });
    EXPECT_EQ(printed, "\nRead Error\n");
    EXPECT_EQ(result, nullptr);
    EXPECT_EQ(result_length, -7);
  }
}

TEST(AdRar, CountThatNoIntCanHoldIsAReadError) {
  const unsigned char* result = nullptr;
  int length = 0;
  EXPECT_THROW(CAdRar().UnCompress(ArchiveBytes("\xff\xff\xff\x7f\x01\x02\x03"), 7, result, length), int);
  EXPECT_THROW(CAdRar().UnCompress(ArchiveBytes("\xff\xff\xff\xff\x01\x02\x03"), 7, result, length), int);
}

TEST(AdRar, UnpackedTextIsTerminatedBehindItsLength) {
  const std::string stream = Packed("hello world");
  CAdRar unpacker;
  unpacker.SetExactDecoding(true);
  const unsigned char* result = nullptr;
  int length = 0;
  unpacker.UnCompress(ArchiveBytes(stream), static_cast<int>(stream.size()), result, length);
  ASSERT_EQ(length, 11);
  EXPECT_STREQ(reinterpret_cast<const char*>(result), "hello world");
}

TEST(AdRar, PackingPrintsProgressAndTotals) {
  const std::string text(2100, 'a');
  CAdRar packer;
  const unsigned char* result = nullptr;
  int length = 0;
  const std::string printed =
      Printed([&] { packer.Compress(ArchiveBytes(text), static_cast<int>(text.size()), result, length); });
  EXPECT_EQ(printed.substr(0, 13), "          61\r") << "above the first mark, which is 0";
  EXPECT_EQ(printed.substr(13, 13), "        1081\r");
  char totals[80];
  std::snprintf(totals, sizeof totals, "In : 2100 bytes\nOut: %d bytes\nOut/In: %.3f\n", length,
                length / 2100.0);
  EXPECT_EQ(printed.substr(39), totals);
}

TEST(AdRar, UnpackingPrintsProgressAndTheCount) {
  const std::string stream = Packed(std::string(2100, 'a'));
  CAdRar unpacker;
  const unsigned char* result = nullptr;
  int length = 0;
  const std::string printed = Printed(
      [&] { unpacker.UnCompress(ArchiveBytes(stream), static_cast<int>(stream.size()), result, length); });
  EXPECT_EQ(printed.substr(0, 13), "           1\r");
  EXPECT_EQ(printed.substr(printed.size() - 13), "        2159\n") << "the spoilt end is a match too long";
  EXPECT_EQ(Printed([&] { CAdRar().UnCompress(ArchiveBytes(std::string(4, '\0')), 4, result, length); }), "");
}

TEST(AdRar, ProgressHandlerHearsInsteadOfTheOutput) {
  const std::string text(2100, 'a');
  CAdRar packer;
  std::vector<std::uint32_t> heard;
  packer.SetProgress([&](std::uint32_t done) { heard.push_back(done); });
  const unsigned char* result = nullptr;
  int length = 0;
  EXPECT_EQ(
      Printed([&] { packer.Compress(ArchiveBytes(text), static_cast<int>(text.size()), result, length); }),
      "");
  EXPECT_EQ(heard, (std::vector<std::uint32_t>{61, 1081, 2100}));
  packer.Release();
  EXPECT_EQ(Printed([&] { EXPECT_THROW(packer.UnCompress(ArchiveBytes("x"), 1, result, length), int); }), "");
}

TEST(AdRar, ReleaseMakesTheObjectAsNew) {
  CAdRar codec;
  const unsigned char* result = nullptr;
  int length = 0;
  std::string first;
  for (int round = 0; round < 3; ++round) {
    const std::string printed =
        Printed([&] { codec.Compress(ArchiveBytes("hello world"), 11, result, length); });
    if (round == 0) first = printed;
    EXPECT_EQ(printed, first);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(result), 15), Packed("hello world"));
    codec.Release();
  }
}

TEST(AdRar, WithoutReleaseTheCoderGoesOnWhereItWas) {
  CAdRar codec;
  const unsigned char* result = nullptr;
  int length = 0;
  codec.Compress(ArchiveBytes("hello world"), 11, result, length);
  codec.Compress(ArchiveBytes("hello world"), 11, result, length);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(result), 15), Packed("hello world"));
  EXPECT_GT(length, 15) << "the second result stands behind the first";
  EXPECT_NE(std::string(reinterpret_cast<const char*>(result) + 15, static_cast<std::size_t>(length) - 15),
            Packed("hello world"));
}

TEST(AdRar, UsedCoderNeverLoopsOrCrashes) {
  const std::string stream = Packed("hello world, hello tree");
  for (unsigned seed = 0; seed < 50; ++seed) {
    CAdRar codec;
    const unsigned char* result = nullptr;
    int length = 0;
    for (unsigned step = 0; step < 4; ++step) {
      const std::string noise = std::string("\x50\x00\x00\x00", 4) + Noise(6, seed * 5 + step);
      Printed([&] { codec.UnCompress(ArchiveBytes(noise), 10, result, length); });
      Printed([&] { codec.Compress(ArchiveBytes(stream), static_cast<int>(stream.size()), result, length); });
    }
  }
}

TEST(AdRar, CopyHasItsOwnResult) {
  auto codec = std::make_unique<CAdRar>();
  const unsigned char* result = nullptr;
  int length = 0;
  codec->Compress(ArchiveBytes("hello world"), 11, result, length);
  CAdRar copy(*codec);
  CAdRar assigned;
  assigned = *codec;
  codec.reset();
  const std::string released = Printed([&] { copy.Release(); });
  EXPECT_EQ(released, "");
  assigned.Compress(ArchiveBytes("x"), 1, result, length);
  EXPECT_GT(length, 15) << "the copied result is still there, in front";
}

TEST(AdRar, HeaderExample) {
  CAdRar packer;
  const unsigned char* stream = nullptr;
  int length = 0;
  packer.Compress(ArchiveBytes("hello world"), 11, stream, length);
  EXPECT_EQ(length, 15);
  CAdRar unpacker;
  unpacker.SetExactDecoding(true);
  const unsigned char* text = nullptr;
  int text_length = 0;
  unpacker.UnCompress(stream, length, text, text_length);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(text), 11), "hello world");
}

}  // namespace
}  // namespace lorv::test
