// TIFF pages beside the free reference library, in all ways of storing that it writes: every pixel equal.

#include <gtest/gtest.h>
#include <tiffio.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>

#include "image/decode/image_reader.h"

namespace lorv::test {
namespace {

struct Ways {
  std::uint32_t width = 1;
  std::uint32_t height = 1;
  unsigned bits = 8;
  unsigned samples = 1;
  unsigned meaning = PHOTOMETRIC_MINISBLACK;
  unsigned packing = COMPRESSION_NONE;
  bool differences = false;
  bool tiled = false;
  bool planes = false;
  bool high_first = false;
  bool low_bit_first = false;
  unsigned rows = 1;  // of a strip
};

std::string Said(const Ways& ways) {
  return std::to_string(ways.width) + " by " + std::to_string(ways.height) + ", " +
         std::to_string(ways.bits) + " bits, " + std::to_string(ways.samples) + " samples of " +
         std::to_string(ways.meaning) + ", packing " + std::to_string(ways.packing) +
         (ways.differences ? ", differences" : "") + (ways.tiled ? ", tiles" : "") +
         (ways.planes ? ", planes" : "") + (ways.high_first ? ", high first" : "") +
         (ways.low_bit_first ? ", low bit first" : "");
}

class ReferenceFile {
 public:
  ReferenceFile() : name_("/tmp/lorv_tiff_" + std::to_string(getpid()) + ".tif") {}
  ~ReferenceFile() { std::remove(name_.c_str()); }
  const char* Name() const { return name_.c_str(); }
  std::string Bytes() const {
    std::ifstream in(name_, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

 private:
  std::string name_;
};

void SetFields(TIFF* out, const Ways& ways, std::mt19937& random) {
  TIFFSetField(out, TIFFTAG_IMAGEWIDTH, ways.width);
  TIFFSetField(out, TIFFTAG_IMAGELENGTH, ways.height);
  TIFFSetField(out, TIFFTAG_BITSPERSAMPLE, ways.bits);
  TIFFSetField(out, TIFFTAG_SAMPLESPERPIXEL, ways.samples);
  TIFFSetField(out, TIFFTAG_PHOTOMETRIC, ways.meaning);
  TIFFSetField(out, TIFFTAG_COMPRESSION, ways.packing);
  TIFFSetField(out, TIFFTAG_PLANARCONFIG, ways.planes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  TIFFSetField(out, TIFFTAG_FILLORDER, ways.low_bit_first ? FILLORDER_LSB2MSB : FILLORDER_MSB2LSB);
  if (ways.differences) TIFFSetField(out, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  if (ways.samples == 4 || ways.samples == 2) {
    const std::uint16_t kind[] = {EXTRASAMPLE_UNASSALPHA};
    TIFFSetField(out, TIFFTAG_EXTRASAMPLES, 1, kind);
  }
  if (ways.meaning == PHOTOMETRIC_PALETTE) {
    std::vector<std::uint16_t> map(std::size_t{3} << ways.bits);
    for (std::uint16_t& value : map) value = static_cast<std::uint16_t>(random());
    const std::size_t part = map.size() / 3;
    TIFFSetField(out, TIFFTAG_COLORMAP, &map[0], &map[part], &map[2 * part]);
  }
  if (ways.tiled) {
    TIFFSetField(out, TIFFTAG_TILEWIDTH, 16);
    TIFFSetField(out, TIFFTAG_TILELENGTH, 16);
  } else {
    TIFFSetField(out, TIFFTAG_ROWSPERSTRIP, ways.rows);
  }
}

// Noise that repeats, so that every packing has something to pack.
void Fill(std::vector<unsigned char>& bytes, std::mt19937& random) {
  for (unsigned char& byte : bytes) byte = static_cast<unsigned char>(random() % 3 == 0 ? random() : 40);
}

void WritePage(TIFF* out, const Ways& ways, std::mt19937& random) {
  SetFields(out, ways, random);
  const bool tiled = ways.tiled;
  const std::uint32_t pieces = tiled ? TIFFNumberOfTiles(out) : TIFFNumberOfStrips(out);
  std::vector<unsigned char> bytes;
  for (std::uint32_t i = 0; i < pieces; ++i) {
    const std::uint32_t in_plane = pieces / (ways.planes ? ways.samples : 1);
    const std::uint32_t rows = std::min(ways.rows, ways.height - i % in_plane * ways.rows);
    bytes.resize(static_cast<std::size_t>(tiled ? TIFFTileSize(out) : TIFFVStripSize(out, rows)));
    Fill(bytes, random);
    const auto size = static_cast<tmsize_t>(bytes.size());
    tiled ? TIFFWriteEncodedTile(out, i, bytes.data(), size)
          : TIFFWriteEncodedStrip(out, i, bytes.data(), size);
  }
  TIFFWriteDirectory(out);
}

// The reference's samples of the page as this library shows them: alpha beside colours, upper eight bits.
class ReferencePage {
 public:
  ReferencePage(TIFF* in, const Ways& ways) : in_(in), ways_(ways) {
    std::uint16_t* map[3] = {};
    if (ways.meaning == PHOTOMETRIC_PALETTE) TIFFGetField(in, TIFFTAG_COLORMAP, &map[0], &map[1], &map[2]);
    std::copy(map, map + 3, map_);
    bytes_.resize(static_cast<std::size_t>(ways.tiled ? TIFFTileSize(in) : TIFFStripSize(in)));
  }

  std::vector<std::uint32_t> Pixels() {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t y = 0; y < ways_.height; ++y)
      for (std::uint32_t x = 0; x < ways_.width; ++x) pixels.push_back(PixelAt(x, y));
    return pixels;
  }

 private:
  unsigned Sample(std::uint32_t x, std::uint32_t y, unsigned which) {
    const auto plane = static_cast<std::uint16_t>(ways_.planes ? which : 0);
    const std::uint32_t piece =
        ways_.tiled ? TIFFComputeTile(in_, x, y, 0, plane) : TIFFComputeStrip(in_, y, plane);
    if (piece != loaded_) {
      const auto size = static_cast<tmsize_t>(bytes_.size());
      ways_.tiled ? TIFFReadEncodedTile(in_, piece, bytes_.data(), size)
                  : TIFFReadEncodedStrip(in_, piece, bytes_.data(), size);
      loaded_ = piece;
    }
    const std::size_t row = ways_.tiled ? y % 16 : y % ways_.rows;
    const std::size_t column = ways_.tiled ? x % 16 : x;
    const auto row_bytes =
        static_cast<std::size_t>(ways_.tiled ? TIFFTileRowSize(in_) : TIFFScanlineSize(in_));
    const unsigned beside = ways_.planes ? 1 : ways_.samples;
    const std::size_t index = column * beside + (ways_.planes ? 0 : which);
    const unsigned char* const at = bytes_.data() + row * row_bytes;
    if (ways_.bits == 16) return reinterpret_cast<const std::uint16_t*>(at)[index] >> 8U;
    if (ways_.bits == 8) return at[index];
    const std::size_t bit = index * ways_.bits;
    return at[bit / 8] >> (8 - ways_.bits - bit % 8) & ((1U << ways_.bits) - 1);
  }
  std::uint32_t PixelAt(std::uint32_t x, std::uint32_t y) {
    const bool has_alpha = ways_.samples == 2 || ways_.samples == 4;
    const unsigned alpha = has_alpha ? Sample(x, y, ways_.samples - 1) : 255;
    if (ways_.meaning == PHOTOMETRIC_RGB)
      return lorv::Pixel(Sample(x, y, 0), Sample(x, y, 1), Sample(x, y, 2), alpha);
    const unsigned sample = Sample(x, y, 0);
    if (ways_.meaning == PHOTOMETRIC_PALETTE)
      return lorv::Pixel(map_[0][sample] >> 8U, map_[1][sample] >> 8U, map_[2][sample] >> 8U);
    const unsigned most = ways_.bits == 16 ? 255 : (1U << ways_.bits) - 1;
    const unsigned grey = sample * 255 / most;
    const unsigned shown = ways_.meaning == PHOTOMETRIC_MINISWHITE ? 255 - grey : grey;
    return lorv::Pixel(shown, shown, shown, alpha);
  }

  TIFF* in_;
  const Ways& ways_;
  std::uint16_t* map_[3] = {};
  std::vector<unsigned char> bytes_;
  std::uint32_t loaded_ = 0xFFFFFFFF;
};

Ways RandomWays(std::mt19937& random) {
  constexpr unsigned kPackings[] = {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE,
                                    COMPRESSION_PACKBITS};
  constexpr unsigned kMeanings[] = {PHOTOMETRIC_MINISWHITE, PHOTOMETRIC_MINISBLACK, PHOTOMETRIC_RGB,
                                    PHOTOMETRIC_PALETTE};
  constexpr unsigned kBits[] = {1, 2, 4, 8, 16};
  Ways ways;
  ways.width = 1 + static_cast<std::uint32_t>(random() % 90);
  ways.height = 1 + static_cast<std::uint32_t>(random() % 70);
  ways.meaning = kMeanings[random() % 4];
  ways.packing = kPackings[random() % 4];
  ways.bits = kBits[ways.meaning == PHOTOMETRIC_RGB ? 3 + random() % 2 : random() % 5];
  if (ways.meaning == PHOTOMETRIC_PALETTE && ways.bits == 16) ways.bits = 8;
  ways.samples = ways.meaning == PHOTOMETRIC_RGB ? 3 : 1;
  if (ways.bits >= 8 && ways.meaning != PHOTOMETRIC_PALETTE && random() % 2 == 0) ++ways.samples;
  const bool by_table = ways.packing == COMPRESSION_LZW || ways.packing == COMPRESSION_ADOBE_DEFLATE;
  ways.differences = by_table && ways.bits >= 8 && random() % 2 == 0;
  ways.tiled = random() % 2 == 0;
  ways.planes = random() % 3 == 0;
  ways.high_first = random() % 2 == 0;
  ways.low_bit_first = random() % 4 == 0;
  ways.rows = 1 + static_cast<unsigned>(random() % 70);
  ways.rows = std::min(ways.rows, ways.height);
  return ways;
}

TEST(TiffReference, PagesOfAllWaysHaveThePixelsOfTheReference) {
  std::mt19937 random(10);
  const ReferenceFile file;
  TIFFSetWarningHandler(nullptr);
  for (int i = 0; i < 500; ++i) {
    const std::vector<Ways> pages = {RandomWays(random), RandomWays(random)};
    TIFF* const out = TIFFOpen(file.Name(), pages[0].high_first ? "wb" : "wl");
    for (const Ways& ways : pages) WritePage(out, ways, random);
    TIFFClose(out);
    const std::string bytes = file.Bytes();
    const auto image = OpenImage(bytes);
    ASSERT_NE(image, nullptr) << Said(pages[0]);
    ASSERT_EQ(image->FrameCount(), 2) << Said(pages[1]);
    TIFF* const in = TIFFOpen(file.Name(), "rmc");  // neither mapped nor cut into other strips
    for (int page : {1, 0}) {
      TIFFSetDirectory(in, static_cast<tdir_t>(page));
      const Ways& ways = pages[static_cast<std::size_t>(page)];
      ASSERT_EQ(image->Frame(page).pixels, ReferencePage(in, ways).Pixels()) << Said(ways);
    }
    TIFFClose(in);
    for (std::size_t cut = 0; cut < bytes.size(); cut += 1 + bytes.size() / 9)
      OpenImage(bytes.substr(0, cut));
  }
}

}  // namespace
}  // namespace lorv::test
