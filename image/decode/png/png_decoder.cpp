#include <zlib.h>

#include <algorithm>
#include <bit>
#include <memory>

#include "image/decode/byte_view.h"
#include "image/decode/image_decoders.h"
#include "image/decode/piece_inflater.h"
#include "image/decode/png/png_rows.h"

// PNG, all colour types, depths and interlacing. A wrong sum of any chunk refuses the file. Of 16 bits the
// upper eight count; gamma, profiles and the background are left alone.
namespace lorv {
namespace {

constexpr std::uint32_t Name(const char (&name)[5]) {
  return static_cast<std::uint32_t>(name[0]) << 24 | static_cast<std::uint32_t>(name[1]) << 16 |
         static_cast<std::uint32_t>(name[2]) << 8 | static_cast<std::uint32_t>(name[3]);
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
  bool ReadPixels(std::string_view data);

  ByteView view_;
  Raster& out_;
  png::Header header_;
  png::Colours colours_;
  std::unique_ptr<png::Rows> rows_;  // before what unpacks into it
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
  // Packing and filtering have one method each; a file of another one cannot be read.
  const unsigned method = chunk.Byte() | chunk.Byte();
  const unsigned interlace = chunk.Byte();
  header_.interlaced = interlace == 1;
  // The depths that a colour type may have, a bit for each.
  constexpr unsigned kDepths[] = {1 | 2 | 4 | 8 | 16, 0, 8 | 16, 1 | 2 | 4 | 8, 8 | 16, 0, 8 | 16};
  return method == 0 && interlace <= 1 && header_.type <= png::kColourAlpha &&
         std::has_single_bit(header_.depth) && (kDepths[header_.type] & header_.depth) != 0;
}

void PngDecoder::ReadPalette(std::string_view data) {
  auto& palette = colours_.palette;
  colours_.count = std::min<std::size_t>(data.size() / 3, palette.size());
  for (std::size_t i = 0; i < colours_.count; ++i)
    palette[i] = Pixel(ByteAt(data, 3 * i), ByteAt(data, 3 * i + 1), ByteAt(data, 3 * i + 2));
}

void PngDecoder::ReadTransparency(std::string_view data) {
  if (header_.type == png::kPalette) {
    for (std::size_t i = 0; i < std::min(data.size(), colours_.count); ++i) {
      std::uint32_t& colour = colours_.palette[i];
      colour = (colour & ~kOpaque) | static_cast<std::uint32_t>(ByteAt(data, i)) << 24;
    }
    return;
  }
  ByteView view(data);
  const std::size_t samples = header_.Samples();
  // A key of the wrong length belongs to another colour type and is none.
  colours_.has_key =
      (header_.type == png::kGrey || header_.type == png::kColour) && data.size() == 2 * samples;
  for (std::size_t i = 0; i < samples && colours_.has_key; ++i) colours_.key[i] = view.High16();
}

// The first piece of the pixels ends what is said of colours.
bool PngDecoder::ReadPixels(std::string_view data) {
  if (packed_ == nullptr) {
    if (header_.type == png::kPalette && colours_.count == 0) return false;
    rows_ = std::make_unique<png::Rows>(header_, colours_, out_);
    packed_ = std::make_unique<PieceInflater>(*rows_);
  }
  return packed_->Add(data);
}

bool PngDecoder::ReadChunk(std::uint32_t name, std::string_view data) {
  switch (name) {
    case Name("PLTE"):
      if (packed_ == nullptr) ReadPalette(data);
      return true;
    case Name("tRNS"):
      if (packed_ == nullptr) ReadTransparency(data);
      return true;
    case Name("IDAT"):
      return ReadPixels(data);
    default:
      return (name & 0x20000000) != 0;  // what may be left out
  }
}

bool PngDecoder::Decode() {
  view_.Seek(8);
  for (bool first = true; view_.Left() >= 12; first = false) {
    const std::uint32_t size = view_.High32();
    const std::size_t at = view_.At();
    // A file that was cut: whether all rows came is asked at the end.
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
  return packed_ != nullptr && packed_->IsComplete();
}

}  // namespace

bool DecodePng(std::string_view bytes, Raster& out) {
  return PngDecoder(bytes, out).Decode();
}

}  // namespace lorv
