#include "tools/lorv-desk/png_file.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "image/decode/image_reader.h"
#include "tests/support/data.h"
#include "tools/lorv/command/verb.h"

namespace lorv::tool {
namespace {

std::uint32_t NumberAt(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
  return number;
}

// The data of a chunk; the checksum behind it must fit.
std::string Chunk(const std::string& png, const std::string& name) {
  const std::size_t at = png.find(name);
  const std::size_t size = NumberAt(png, at - 4);
  const std::string body = png.substr(at, size + 4);
  const auto* const bytes = reinterpret_cast<const Bytef*>(body.data());
  EXPECT_EQ(NumberAt(png, at + 4 + size), crc32(0, bytes, static_cast<uInt>(body.size())));
  return body.substr(4);
}

// Reads rows back as the format says: a filter, then 3 bytes a pixel.
std::vector<DWORD> PixelsOf(const std::string& png, SIZE size) {
  const auto row = static_cast<std::size_t>(size.cx) * 3 + 1;
  std::string rows(row * static_cast<std::size_t>(size.cy), '\0');
  uLongf length = static_cast<uLongf>(rows.size());
  const std::string packed = Chunk(png, "IDAT");
  EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(rows.data()), &length,
                       reinterpret_cast<const Bytef*>(packed.data()), static_cast<uLong>(packed.size())),
            Z_OK);
  EXPECT_EQ(length, rows.size());
  std::vector<DWORD> pixels;
  std::string above(row, '\0');
  for (std::size_t start = 0; start < rows.size(); start += row) {
    EXPECT_EQ(rows[start], 2);
    for (std::size_t i = 1; i < row; ++i) above[i] = static_cast<char>(above[i] + rows[start + i]);
    for (std::size_t i = 1; i < row; i += 3)
      pixels.push_back(0xFF000000 | NumberAt(above, i - 1) % 0x1000000);
  }
  return pixels;
}

TEST(PngFile, HoldsThePixels) {
  for (const SIZE size : {SIZE{1, 1}, SIZE{3, 2}, SIZE{7, 300}}) {
    std::vector<DWORD> pixels;
    for (LONG i = 0; i < size.cx * size.cy; ++i)
      pixels.push_back(0xFF000000 | (static_cast<DWORD>(i) * 0x010309 + 0xFE));
    for (DWORD& pixel : pixels) pixel |= 0xFF000000;
    const std::string png = PngOf(size, pixels);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
    const std::string head = Chunk(png, "IHDR");
    EXPECT_EQ(NumberAt(head, 0), static_cast<std::uint32_t>(size.cx));
    EXPECT_EQ(NumberAt(head, 4), static_cast<std::uint32_t>(size.cy));
    EXPECT_EQ(head.substr(8), std::string("\x08\x02\0\0\0", 5));
    EXPECT_EQ(Chunk(png, "IEND"), "");
    EXPECT_EQ(PixelsOf(png, size), pixels);
  }
}

// Read back by the library's own decoder, which the free reference library's pixels were compared with.
TEST(PngFile, HoldsAlphaWhereItIsAskedFor) {
  const std::vector<DWORD> pixels = {0x80FF0000, 0x00010203, 0xFF00FF00, 0x01FFFFFF, 0xFE000000, 0x7F7F7F7F};
  const auto image = OpenImage(PngOf({2, 3}, pixels, PngColours::kWithAlpha));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->Width(), 2);
  EXPECT_EQ(image->Frame(0).pixels, std::vector<std::uint32_t>(pixels.begin(), pixels.end()));
  const auto opaque = OpenImage(PngOf({2, 3}, pixels));
  ASSERT_NE(opaque, nullptr);
  EXPECT_EQ(opaque->Frame(0).pixels[0], 0xFFFF0000);
}

TEST(PngFile, AFolderThatIsNotThereIsReportedByItsName) {
  const test::ScratchFolder folder;
  WritePng(folder.Path() / u8"图.png", {1, 1}, {0});
  EXPECT_EQ(test::ReadBytes(folder.Path() / u8"图.png"), PngOf({1, 1}, {0}));
  try {
    WritePng(folder.Path() / u8"没有" / u8"图.png", {1, 1}, {0});
    FAIL();
  } catch (const BadInput& wrong) {
    EXPECT_NE(std::string(wrong.what()).find("图.png cannot be written"), std::string::npos) << wrong.what();
  }
}

}  // namespace
}  // namespace lorv::tool
