// What an image may cost: memory by its size and never by its frames, pages, scans or depth, and no work that
// a few bytes of a file could multiply.

#include <gtest/gtest.h>
#include <zlib.h>

#include "image/decode/image_reader.h"
#include "tests/image/bounds/counted_memory.h"
#include "tests/image/decode/made_images.h"
#include "tests/image/decode/made_tiff.h"

namespace lorv::test {
namespace {

constexpr std::int64_t kMegabyte = 1'000'000;
constexpr std::int64_t kMostOfAnImage = 300 * kMegabyte;

std::string High32(std::uint32_t value) {
  std::string bytes;
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(value >> shift & 255);
  return bytes;
}

std::string Chunk(const std::string& name, const std::string& data) {
  const std::string body = name + data;
  const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return High32(static_cast<std::uint32_t>(data.size())) + body + High32(static_cast<std::uint32_t>(sum));
}

// So many zeros packed, without ever holding them.
std::string PackedZeros(std::size_t count) {
  z_stream stream = {};
  deflateInit(&stream, 1);
  std::string zeros(1 << 16, '\0');
  std::string packed;
  std::string room(1 << 16, '\0');
  while (count > 0 || stream.avail_in > 0 || stream.avail_out == 0) {
    if (stream.avail_in == 0) {
      stream.next_in = reinterpret_cast<Bytef*>(zeros.data());
      stream.avail_in = static_cast<uInt>(std::min(count, zeros.size()));
      count -= stream.avail_in;
    }
    stream.next_out = reinterpret_cast<Bytef*>(room.data());
    stream.avail_out = static_cast<uInt>(room.size());
    const int result = deflate(&stream, count == 0 ? Z_FINISH : Z_NO_FLUSH);
    packed.append(room, 0, room.size() - stream.avail_out);
    if (result == Z_STREAM_END) break;
  }
  deflateEnd(&stream);
  return packed;
}

// Colours with alpha, not interlaced.
std::string PngWith(std::uint32_t width, std::uint32_t height, char depth, const std::string& packed) {
  return "\x89PNG\r\n\x1A\n" +
         Chunk("IHDR", High32(width) + High32(height) + depth + std::string("\6\0\0\0", 4)) +
         Chunk("IDAT", packed) + Chunk("IEND", "");
}

// Nothing but zeros, all of it transparent black.
std::string ClearPng(std::uint32_t width, std::uint32_t height, char depth) {
  const std::size_t row = 1 + std::size_t{width} * 4 * static_cast<std::size_t>(depth / 8);
  return PngWith(width, height, depth, PackedZeros(row * height));
}

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

// A frame as large as the screen that brings back what was below it: the picture twice, and the numbers.
std::string WideGif(int width, int height, unsigned disposal, int count) {
  std::vector<MadeFrame> frames;
  for (int i = 0; i < count; ++i) frames.push_back({0, 0, width, height, {1}, 1, disposal});
  return MadeGif(width, height, frames);
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
  std::vector<MadeFrame> frames;
  for (int i = 0; i < 10'000; ++i)
    frames.push_back({i % 30, i % 20, 8, 8, std::string(64, static_cast<char>(i % 4)), 1, 3});
  std::string bytes = MadeGif(40, 30, frames);
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

std::string Segment(char mark, const std::string& body) {
  const std::size_t size = body.size() + 2;
  return std::string{'\xFF', mark, static_cast<char>(size >> 8), static_cast<char>(size & 255)} + body;
}

std::string JpegHead(char mark, int width, int height, char parts) {
  const auto high16 = [](int value) {
    return std::string{static_cast<char>(value >> 8), static_cast<char>(value & 255)};
  };
  std::string body = '\x08' + high16(height) + high16(width) + parts;
  for (char part = 1; part <= parts; ++part) body += std::string{part, '\x11', '\0'};
  return Segment(mark, body);
}

// The level's codes: 0 is no change, 10 a change of seven bits.
std::string JpegStart() {
  return "\xFF\xD8" + Segment('\xDB', '\0' + std::string(64, '\1')) +
         Segment('\xC4', std::string("\0\1\1", 3) + std::string(14, '\0') + std::string("\0\7", 2));
}

// A scan of levels of the first component that leaves them, or raises them by 64.
std::string LevelScan(bool raises) {
  const std::string bits = raises ? std::string("\xA0\x7F", 2) : std::string("\x7F", 1);
  return Segment('\xDA', std::string("\1\1\0\0\0\0", 6)) + bits;
}

TEST(ImageBounds, JpegThatWouldTakeMoreIsRefused) {
  const auto opened = [](char mark, int width, int height, char parts) {
    return MostOf(JpegStart() + JpegHead(mark, width, height, parts) + LevelScan(true));
  };
  const CountedMemory memory;
  EXPECT_EQ(opened('\xC2', 8192, 4096, 3), -1) << "samples and coefficients of a progressive picture";
  EXPECT_LE(memory.Most(), kMegabyte) << "told by the head alone";
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

}  // namespace
}  // namespace lorv::test
