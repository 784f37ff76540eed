#include <zlib.h>

#include <array>
#include <cstdlib>

#include "image/decode/byte_view.h"
#include "image/decode/image_decoders.h"
#include "image/decode/piece_inflater.h"

// PNG, all colour types, depths and interlacing. A wrong sum of any chunk refuses the file. Of 16 bits the
// upper eight count; gamma, profiles and the background are left alone.
namespace lorv {
namespace {

constexpr std::uint32_t Name(const char (&name)[5]) {
  return static_cast<std::uint32_t>(name[0]) << 24 | static_cast<std::uint32_t>(name[1]) << 16 |
         static_cast<std::uint32_t>(name[2]) << 8 | static_cast<std::uint32_t>(name[3]);
}

constexpr unsigned kGrey = 0;
constexpr unsigned kColour = 2;
constexpr unsigned kPalette = 3;
constexpr unsigned kGreyAlpha = 4;
constexpr unsigned kColourAlpha = 6;

struct Header {
  int width = 0;
  int height = 0;
  unsigned depth = 0;
  unsigned type = 0;
  bool interlaced = false;

  unsigned Samples() const {
    constexpr unsigned kSamples[] = {1, 0, 3, 1, 2, 0, 4};
    return kSamples[type];
  }
  std::size_t RowBytes(int columns) const {
    return (static_cast<std::size_t>(columns) * Samples() * depth + 7) / 8;
  }
  std::size_t PixelBytes() const { return (Samples() * depth + 7) / 8; }
};

// The pixels of one pass: every so many columns and rows from a first one on.
struct Pass {
  int first_x, first_y, step_x, step_y;
};
constexpr Pass kWhole[] = {{0, 0, 1, 1}};
constexpr Pass kInterlaced[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};

int Count(int size, int first, int step) {
  return size <= first ? 0 : (size - first + step - 1) / step;
}

class PngDecoder {
 public:
  PngDecoder(std::string_view bytes, Raster& out) : view_(bytes), out_(out) {}
  bool Decode();

 private:
  bool ReadHeader(ByteView chunk);
  bool ReadChunk(std::uint32_t name, std::string_view data);
  void ReadPalette(std::string_view data);
  void ReadTransparency(std::string_view data);
  std::size_t PackedSize() const;
  bool PutPasses();
  void PutRow(const unsigned char* row, const Pass& pass, int columns, int y);
  std::uint32_t PixelAt(const unsigned char* row, int x) const;
  unsigned Sample(const unsigned char* row, std::size_t at) const;
  unsigned Shown(unsigned sample) const;

  ByteView view_;
  Raster& out_;
  Header header_;
  std::array<std::uint32_t, 256> palette_ = {};
  std::size_t colours_ = 0;
  bool has_key_ = false;
  std::array<unsigned, 3> key_ = {};
  std::unique_ptr<PieceInflater> packed_;
};

bool PngDecoder::ReadHeader(ByteView chunk) {
  const std::uint32_t width = chunk.High32();
  const std::uint32_t height = chunk.High32();
  if (chunk.Size() != 13 || !IsFairSize(width, height)) return false;
  header_.width = static_cast<int>(width);
  header_.height = static_cast<int>(height);
  header_.depth = chunk.Byte();
  header_.type = chunk.Byte();
  const unsigned method = chunk.Byte() | chunk.Byte();
  const unsigned interlace = chunk.Byte();
  header_.interlaced = interlace == 1;
  // The depths that a colour type may have, a bit for each.
  constexpr unsigned kDepths[] = {1 | 2 | 4 | 8 | 16, 0, 8 | 16, 1 | 2 | 4 | 8, 8 | 16, 0, 8 | 16};
  return method == 0 && interlace <= 1 && header_.type <= kColourAlpha &&
         std::has_single_bit(header_.depth) && (kDepths[header_.type] & header_.depth) != 0;
}

void PngDecoder::ReadPalette(std::string_view data) {
  colours_ = std::min<std::size_t>(data.size() / 3, palette_.size());
  for (std::size_t i = 0; i < colours_; ++i) {
    palette_[i] = Pixel(ByteAt(data, 3 * i), ByteAt(data, 3 * i + 1), ByteAt(data, 3 * i + 2));
  }
}

void PngDecoder::ReadTransparency(std::string_view data) {
  if (header_.type == kPalette) {
    for (std::size_t i = 0; i < std::min(data.size(), colours_); ++i) {
      palette_[i] = (palette_[i] & ~kOpaque) | static_cast<std::uint32_t>(ByteAt(data, i)) << 24;
    }
    return;
  }
  ByteView view(data);
  const std::size_t samples = header_.Samples();
  has_key_ = (header_.type == kGrey || header_.type == kColour) && data.size() == 2 * samples;
  for (std::size_t i = 0; i < samples && has_key_; ++i) key_[i] = view.High16();
}

bool PngDecoder::ReadChunk(std::uint32_t name, std::string_view data) {
  switch (name) {
    case Name("PLTE"):
      ReadPalette(data);
      return true;
    case Name("tRNS"):
      ReadTransparency(data);
      return true;
    case Name("IDAT"):
      if (packed_ == nullptr) packed_ = std::make_unique<PieceInflater>(PackedSize());
      return packed_->Add(data);
    default:
      return (name & 0x20000000) != 0;  // what may be left out
  }
}

bool PngDecoder::Decode() {
  view_.Seek(8);
  for (bool first = true; view_.Left() >= 12; first = false) {
    const std::uint32_t size = view_.High32();
    const std::size_t at = view_.At();
    if (size > view_.Left() - 8) break;
    const std::string_view named = view_.Take(4 + std::size_t{size});
    const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(named.data()), static_cast<uInt>(named.size()));
    if (sum != view_.High32()) return false;
    view_.Seek(at);
    const std::uint32_t name = view_.High32();
    const std::string_view data = named.substr(4);
    view_.Skip(std::size_t{size} + 4);
    if (first ? name != Name("IHDR") || !ReadHeader(ByteView(data)) : name == Name("IHDR")) return false;
    if (name == Name("IEND")) break;
    if (!first && !ReadChunk(name, data)) return false;
  }
  if (packed_ == nullptr || !packed_->IsComplete()) return false;
  if (header_.type == kPalette && colours_ == 0) return false;
  return PutPasses();
}

std::size_t PngDecoder::PackedSize() const {
  std::size_t size = 0;
  const auto add = [&](const Pass& pass) {
    const int columns = Count(header_.width, pass.first_x, pass.step_x);
    const int rows = Count(header_.height, pass.first_y, pass.step_y);
    if (columns > 0) size += (1 + header_.RowBytes(columns)) * static_cast<std::size_t>(rows);
  };
  if (!header_.interlaced) {
    add(kWhole[0]);
  } else {
    for (const Pass& pass : kInterlaced) add(pass);
  }
  return size;
}

unsigned char Nearest(int left, int up, int corner) {
  const int guess = left + up - corner;
  const int to_left = std::abs(guess - left);
  const int to_up = std::abs(guess - up);
  const int to_corner = std::abs(guess - corner);
  if (to_left <= to_up && to_left <= to_corner) return static_cast<unsigned char>(left);
  return static_cast<unsigned char>(to_up <= to_corner ? up : corner);
}

// Takes the filter off a row in place; `above` has zeros before the first row.
bool Unfilter(unsigned filter, unsigned char* row, const unsigned char* above, std::size_t size,
              std::size_t pixel) {
  const auto left = [&](std::size_t i) { return i >= pixel ? row[i - pixel] : 0; };
  switch (filter) {
    case 0:
      return true;
    case 1:
      for (std::size_t i = pixel; i < size; ++i) row[i] = static_cast<unsigned char>(row[i] + row[i - pixel]);
      return true;
    case 2:
      for (std::size_t i = 0; i < size; ++i) row[i] = static_cast<unsigned char>(row[i] + above[i]);
      return true;
    case 3:
      for (std::size_t i = 0; i < size; ++i)
        row[i] = static_cast<unsigned char>(row[i] + (left(i) + above[i]) / 2);
      return true;
    case 4:
      for (std::size_t i = 0; i < size; ++i) {
        const int corner = i >= pixel ? above[i - pixel] : 0;
        row[i] = static_cast<unsigned char>(row[i] + Nearest(left(i), above[i], corner));
      }
      return true;
    default:
      return false;
  }
}

bool PngDecoder::PutPasses() {
  out_.Resize(header_.width, header_.height);
  std::string bytes = packed_->Bytes();
  packed_.reset();
  auto* at = reinterpret_cast<unsigned char*>(bytes.data());
  const Pass* const first = header_.interlaced ? kInterlaced : kWhole;
  const Pass* const end = header_.interlaced ? kInterlaced + std::size(kInterlaced) : kWhole + 1;
  for (const Pass* pass = first; pass != end; ++pass) {
    const int columns = Count(header_.width, pass->first_x, pass->step_x);
    if (columns == 0) continue;
    const std::size_t size = header_.RowBytes(columns);
    const std::vector<unsigned char> zeros(size, 0);
    const unsigned char* above = zeros.data();
    for (int y = pass->first_y; y < header_.height; y += pass->step_y) {
      const unsigned filter = *at++;
      if (!Unfilter(filter, at, above, size, header_.PixelBytes())) return false;
      PutRow(at, *pass, columns, y);
      above = at;
      at += size;
    }
  }
  return true;
}

unsigned PngDecoder::Sample(const unsigned char* row, std::size_t at) const {
  if (header_.depth == 8) return row[at];
  if (header_.depth == 16) return static_cast<unsigned>(row[2 * at]) << 8 | row[2 * at + 1];
  const std::size_t bit = at * header_.depth;
  const unsigned shift = 8 - header_.depth - static_cast<unsigned>(bit % 8);
  return static_cast<unsigned>(row[bit / 8]) >> shift & ((1U << header_.depth) - 1);
}

// A sample of any depth as one of eight bits.
unsigned PngDecoder::Shown(unsigned sample) const {
  if (header_.depth == 16) return sample >> 8;
  return sample * 255 / ((1U << header_.depth) - 1);
}

std::uint32_t PngDecoder::PixelAt(const unsigned char* row, int x) const {
  const std::size_t samples = header_.Samples();
  const std::size_t at = static_cast<std::size_t>(x) * samples;
  const unsigned first = Sample(row, at);
  if (header_.type == kPalette) return first < colours_ ? palette_[first] : kOpaque;
  const bool grey = header_.type == kGrey || header_.type == kGreyAlpha;
  const unsigned second = grey ? first : Sample(row, at + 1);
  const unsigned third = grey ? first : Sample(row, at + 2);
  unsigned alpha = 255;
  if ((header_.type & 4) != 0) alpha = Shown(Sample(row, at + samples - 1));
  if (has_key_ && first == key_[0] && (grey || (second == key_[1] && third == key_[2]))) alpha = 0;
  return Pixel(Shown(first), Shown(second), Shown(third), alpha);
}

void PngDecoder::PutRow(const unsigned char* row, const Pass& pass, int columns, int y) {
  std::uint32_t* const to = out_.Row(y);
  if (header_.depth == 8 && header_.type == kColour && !has_key_ && pass.step_x == 1) {
    for (int x = 0; x < columns; ++x, row += 3) to[x] = Pixel(row[0], row[1], row[2]);
    return;
  }
  if (header_.depth == 8 && header_.type == kColourAlpha && pass.step_x == 1) {
    for (int x = 0; x < columns; ++x, row += 4) to[x] = Pixel(row[0], row[1], row[2], row[3]);
    return;
  }
  for (int x = 0; x < columns; ++x) to[pass.first_x + x * pass.step_x] = PixelAt(row, x);
}

}  // namespace

bool DecodePng(std::string_view bytes, Raster& out) {
  return PngDecoder(bytes, out).Decode();
}

}  // namespace lorv
