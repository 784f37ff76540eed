// The decoders beside the free reference libraries, on pictures that those wrote: every pixel equal.

#include <gtest/gtest.h>
#include <jpeglib.h>
#include <png.h>
#include <cstdio>

#include <random>

#include "image/decode/image_reader.h"

namespace lorv::test {
namespace {

// Soft shapes with some noise, so that all coefficients occur.
std::vector<unsigned char> Samples(std::mt19937& random, int width, int height, int parts) {
  std::vector<unsigned char> samples;
  const int noise = static_cast<int>(random() % 64) + 1;
  for (int i = 0; i < width * height * parts; ++i) {
    const int x = i / parts % width;
    const int y = i / parts / width;
    const int shape =
        128 + (x * (3 + i % parts) + y * 5) % 97 - static_cast<int>(random() % static_cast<unsigned>(noise));
    samples.push_back(static_cast<unsigned char>(shape));
  }
  return samples;
}

struct JpegWays {
  int width = 1;
  int height = 1;
  int parts = 3;
  J_COLOR_SPACE colours = JCS_YCbCr;
  std::array<int, 4> across = {1, 1, 1, 1};  // of each component
  std::array<int, 4> down = {1, 1, 1, 1};
  bool progressive = false;
  int restart_rows = 0;
  int restart_units = 0;
  int quality = 75;
  bool fine = false;  // each sample kept as it is, so that all bits of the codes occur
};

std::ostream& operator<<(std::ostream& out, const JpegWays& ways) {
  out << ways.width << " by " << ways.height << ", colours " << ways.colours;
  for (int i = 0; i < ways.parts; ++i)
    out << ' ' << ways.across[static_cast<std::size_t>(i)] << 'x' << ways.down[static_cast<std::size_t>(i)];
  return out << (ways.progressive ? ", progressive" : "");
}

std::string WrittenJpeg(const JpegWays& ways, std::vector<unsigned char> samples) {
  jpeg_compress_struct out = {};
  jpeg_error_mgr errors;
  out.err = jpeg_std_error(&errors);
  jpeg_create_compress(&out);
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&out, &bytes, &size);
  out.image_width = static_cast<JDIMENSION>(ways.width);
  out.image_height = static_cast<JDIMENSION>(ways.height);
  out.input_components = ways.parts;
  out.in_color_space = ways.parts == 1 ? JCS_GRAYSCALE : ways.parts == 3 ? JCS_RGB : JCS_CMYK;
  jpeg_set_defaults(&out);
  jpeg_set_colorspace(&out, ways.colours);
  jpeg_set_quality(&out, ways.quality, TRUE);
  for (std::size_t i = 0; i < static_cast<std::size_t>(ways.parts); ++i) {
    out.comp_info[i].h_samp_factor = ways.across[i];
    out.comp_info[i].v_samp_factor = ways.down[i];
  }
  out.restart_in_rows = ways.restart_rows;
  out.restart_interval = static_cast<unsigned>(ways.restart_units);
  out.optimize_coding = ways.fine ? TRUE : FALSE;
  if (ways.progressive) jpeg_simple_progression(&out);
  jpeg_start_compress(&out, TRUE);
  for (int y = 0; y < ways.height; ++y) {
    unsigned char* row =
        samples.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(ways.width * ways.parts);
    jpeg_write_scanlines(&out, &row, 1);
  }
  jpeg_finish_compress(&out);
  jpeg_destroy_compress(&out);
  std::string written(reinterpret_cast<char*>(bytes), size);
  std::free(bytes);
  return written;
}

std::vector<std::uint32_t> ReadByReference(const std::string& bytes) {
  jpeg_decompress_struct in = {};
  jpeg_error_mgr errors;
  in.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&in);
  jpeg_mem_src(&in, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  jpeg_read_header(&in, TRUE);
  const int parts = in.num_components == 4 ? 4 : 3;
  in.out_color_space = parts == 4 ? JCS_CMYK : JCS_RGB;
  jpeg_start_decompress(&in);
  std::vector<std::uint32_t> pixels;
  std::vector<unsigned char> row(std::size_t{in.output_width} * 4);
  while (in.output_scanline < in.output_height) {
    unsigned char* at = row.data();
    jpeg_read_scanlines(&in, &at, 1);
    for (unsigned x = 0; x < in.output_width; ++x, at += parts) {
      const unsigned black = parts == 4 ? at[3] : 255;
      const auto light = [&](unsigned ink) { return parts == 4 ? (ink * black + 127) / 255 : ink; };
      pixels.push_back(Pixel(light(at[0]), light(at[1]), light(at[2])));
    }
  }
  jpeg_finish_decompress(&in);
  jpeg_destroy_decompress(&in);
  return pixels;
}

// The reference reads only ratios that have a whole number of samples for each, and ten blocks in a unit.
void ChooseRatios(std::mt19937& random, JpegWays& ways) {
  // Most writers give the brightness up to twice the samples of the rest.
  const bool odd = random() % 3 == 0;
  const auto parts = static_cast<std::size_t>(odd ? ways.parts : 1);
  for (std::size_t i = 0; i < parts; ++i) {
    ways.across[i] = 1 + static_cast<int>(random() % (odd ? 4U : 2U));
    ways.down[i] = 1 + static_cast<int>(random() % (odd ? 4U : 2U));
  }
  const int widest = *std::max_element(ways.across.begin(), ways.across.end());
  const int deepest = *std::max_element(ways.down.begin(), ways.down.end());
  int blocks = 0;
  for (std::size_t i = 0; i < static_cast<std::size_t>(ways.parts); ++i) {
    if (widest % ways.across[i] != 0) ways.across[i] = 1;
    if (deepest % ways.down[i] != 0) ways.down[i] = 1;
    blocks += ways.across[i] * ways.down[i];
  }
  if (blocks > 10) ways.across = ways.down = {1, 1, 1, 1};
}

JpegWays ChosenWays(std::mt19937& random) {
  constexpr int kParts[] = {1, 3, 3, 4};
  JpegWays ways;
  ways.width = 1 + static_cast<int>(random() % 70);
  ways.height = 1 + static_cast<int>(random() % 50);
  ways.parts = kParts[random() % 4];
  ways.colours = ways.parts == 1 ? JCS_GRAYSCALE : ways.parts == 3 ? JCS_YCbCr : JCS_CMYK;
  if (ways.parts > 1 && random() % 4 == 0) ways.colours = ways.parts == 3 ? JCS_RGB : JCS_YCCK;
  if (ways.parts > 1) ChooseRatios(random, ways);
  ways.progressive = random() % 2 == 0;
  ways.restart_rows = static_cast<int>(random() % 3);
  if (ways.restart_rows == 2) ways.restart_units = 1 + static_cast<int>(random() % 7);
  if (ways.restart_units > 0) ways.restart_rows = 0;
  ways.quality = 1 + static_cast<int>(random() % 100);
  ways.fine = random() % 3 == 0;
  if (ways.fine) ways.quality = 100;
  return ways;
}

TEST(DecoderReference, JpegsOfAllWaysHaveThePixelsOfTheReference) {
  std::mt19937 random(8);
  for (int i = 0; i < 1'500; ++i) {
    const JpegWays ways = ChosenWays(random);
    const std::string bytes = WrittenJpeg(ways, Samples(random, ways.width, ways.height, ways.parts));
    const auto image = OpenImage(bytes);
    ASSERT_NE(image, nullptr) << ways;
    ASSERT_EQ(image->Frame(0).pixels, ReadByReference(bytes)) << ways;
    for (std::size_t cut = 0; cut < bytes.size(); cut += 1 + bytes.size() / 9)
      OpenImage(bytes.substr(0, cut));
  }
}

struct PngWays {
  int width = 1;
  int height = 1;
  int depth = 8;
  int type = PNG_COLOR_TYPE_RGB;
  bool interlaced = false;
};

void Append(png_structp out, png_bytep bytes, png_size_t size) {
  static_cast<std::string*>(png_get_io_ptr(out))->append(reinterpret_cast<char*>(bytes), size);
}

std::string WrittenPng(const PngWays& ways, std::mt19937& random) {
  std::string bytes;
  png_structp out = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(out);
  png_set_write_fn(out, &bytes, Append, nullptr);
  png_set_IHDR(out, info, static_cast<png_uint_32>(ways.width), static_cast<png_uint_32>(ways.height),
               ways.depth, ways.type, ways.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
  std::vector<png_color> palette(std::size_t{1} << std::min(ways.depth, 8));
  png_byte alphas[2] = {0, 100};
  if (ways.type == PNG_COLOR_TYPE_PALETTE) {
    for (png_color& colour : palette)
      colour = {static_cast<png_byte>(random()), static_cast<png_byte>(random()), 7};
    png_set_PLTE(out, info, palette.data(), static_cast<int>(palette.size()));
    png_set_tRNS(out, info, alphas, 2, nullptr);
  }
  png_set_filter(out, 0, PNG_ALL_FILTERS);
  png_write_info(out, info);
  std::vector<std::vector<png_byte>> rows(static_cast<std::size_t>(ways.height));
  std::vector<png_bytep> starts;
  for (auto& row : rows) {
    row.resize(png_get_rowbytes(out, info));
    for (png_byte& byte : row) byte = static_cast<png_byte>(random() % 3 == 0 ? random() : 40);
    starts.push_back(row.data());
  }
  png_write_image(out, starts.data());
  png_write_end(out, info);
  png_destroy_write_struct(&out, &info);
  return bytes;
}

struct Source {
  const std::string* bytes;
  std::size_t at;
};

void Read(png_structp in, png_bytep to, png_size_t size) {
  auto* source = static_cast<Source*>(png_get_io_ptr(in));
  source->bytes->copy(reinterpret_cast<char*>(to), size, source->at);
  source->at += size;
}

std::vector<std::uint32_t> ReadPngByReference(const std::string& bytes) {
  Source source = {&bytes, 0};
  png_structp in = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(in);
  png_set_read_fn(in, &source, Read);
  png_read_info(in, info);
  png_set_expand(in);
  png_set_strip_16(in);
  png_set_gray_to_rgb(in);
  png_set_add_alpha(in, 255, PNG_FILLER_AFTER);
  png_set_interlace_handling(in);
  png_read_update_info(in, info);
  const std::size_t height = png_get_image_height(in, info);
  std::vector<std::vector<png_byte>> rows(height, std::vector<png_byte>(png_get_rowbytes(in, info)));
  std::vector<png_bytep> starts;
  for (auto& row : rows) starts.push_back(row.data());
  png_read_image(in, starts.data());
  std::vector<std::uint32_t> pixels;
  for (const auto& row : rows) {
    for (std::size_t x = 0; x < row.size(); x += 4)
      pixels.push_back(Pixel(row[x], row[x + 1], row[x + 2], row[x + 3]));
  }
  png_destroy_read_struct(&in, &info, nullptr);
  return pixels;
}

TEST(DecoderReference, PngsOfAllKindsHaveThePixelsOfTheReference) {
  constexpr int kKinds[][2] = {{0, 1}, {0, 2}, {0, 4}, {0, 8}, {0, 16}, {2, 8}, {2, 16}, {3, 1},
                               {3, 2}, {3, 4}, {3, 8}, {4, 8}, {4, 16}, {6, 8}, {6, 16}};
  std::mt19937 random(9);
  for (int i = 0; i < 600; ++i) {
    const auto& kind = kKinds[random() % std::size(kKinds)];
    PngWays ways;
    ways.width = 1 + static_cast<int>(random() % 40);
    ways.height = 1 + static_cast<int>(random() % 30);
    ways.type = kind[0];
    ways.depth = kind[1];
    ways.interlaced = random() % 2 == 0;
    const std::string bytes = WrittenPng(ways, random);
    const auto image = OpenImage(bytes);
    ASSERT_NE(image, nullptr);
    ASSERT_EQ(image->Frame(0).pixels, ReadPngByReference(bytes))
        << ways.width << " by " << ways.height << ", type " << ways.type << ", depth " << ways.depth;
    std::string damaged = bytes;
    damaged[8 + random() % (bytes.size() - 20)] ^= 1;
    EXPECT_EQ(OpenImage(damaged), nullptr);
  }
}

}  // namespace
}  // namespace lorv::test
