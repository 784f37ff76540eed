#include <algorithm>
#include <array>
#include <bit>

#include "image/decode/byte_view.h"
#include "image/decode/image_decoders.h"

// Bitmaps of Windows and OS/2, plain, with masks and with run lengths. Alpha counts where the header has a
// mask for it, and in icons.
namespace lorv {
namespace {

constexpr std::size_t kFileHeader = 14;
constexpr unsigned kPlain = 0;
constexpr unsigned kRuns8 = 1;
constexpr unsigned kRuns4 = 2;
constexpr unsigned kMasks = 3;
constexpr unsigned kAlphaMasks = 6;

// A part of a pixel on a scale to 255.
class Mask {
 public:
  void Set(std::uint32_t bits) {
    bits_ = bits;
    if (bits == 0) return;
    shift_ = std::countr_zero(bits);
    most_ = bits >> shift_;
    for (std::uint64_t i = 0; i < scaled_.size() && i <= most_; ++i)
      scaled_[i] = static_cast<unsigned char>(i * 255 / most_);
  }
  std::uint32_t Bits() const { return bits_; }
  // `missing` where there is no mask.
  unsigned Of(std::uint32_t value, unsigned missing) const {
    if (bits_ == 0) return missing;
    const std::uint64_t part = (value & bits_) >> shift_;
    // Nearly all masks have eight bits or fewer, and a division takes longer than all the rest.
    return most_ < scaled_.size() ? scaled_[part] : static_cast<unsigned>(part * 255 / most_);
  }

 private:
  std::uint32_t bits_ = 0;
  int shift_ = 0;
  std::uint64_t most_ = 0;
  std::array<unsigned char, 256> scaled_ = {};
};

class DibDecoder {
 public:
  DibDecoder(std::string_view bytes, std::size_t data_at, bool in_icon, Raster& out)
      : view_(bytes), bytes_(bytes), data_at_(data_at), in_icon_(in_icon), out_(out) {}
  bool Decode();

 private:
  bool ReadHeader();
  void ReadMasks(unsigned header_size);
  void ReadColours(unsigned header_size);
  bool ReadRows();
  bool ReadRuns();
  bool ReadRun(int& x, int& y);
  void Put(int x, int y, unsigned number);
  void PutRow(const unsigned char* row, std::uint32_t* to) const;
  bool HasPixelsOfOurs() const;
  std::uint32_t NumberedAt(const unsigned char* row, int x) const;
  std::uint32_t MaskedAt(const unsigned char* row, int x) const;
  void PutMask(std::size_t at);
  std::size_t RowBytes(unsigned bits) const {
    return (static_cast<std::size_t>(width_) * bits + 31) / 32 * 4;
  }

  ByteView view_;
  std::string_view bytes_;
  std::size_t data_at_;
  bool in_icon_;
  Raster& out_;
  int width_ = 0;
  int height_ = 0;
  bool downwards_ = false;
  unsigned bits_ = 0;
  unsigned packing_ = kPlain;
  std::uint32_t claimed_colours_ = 0;
  std::size_t colours_ = 0;
  std::array<std::uint32_t, 256> palette_ = {};
  Mask red_, green_, blue_, alpha_;
};

bool DibDecoder::ReadHeader() {
  const std::uint32_t size = view_.Low32();
  std::int64_t height = 0;
  // The oldest header, of OS/2: shorter fields, no masks, and colours of three bytes.
  if (size == 12) {
    width_ = static_cast<int>(view_.Low16());
    height = view_.Low16();
    view_.Skip(2);
    bits_ = view_.Low16();
  } else if (size >= 40 && size <= 256) {
    const auto width = static_cast<std::int32_t>(view_.Low32());
    height = static_cast<std::int32_t>(view_.Low32());
    width_ = width;
    view_.Skip(2);
    bits_ = view_.Low16();
    packing_ = view_.Low32();
    view_.Skip(12);
    claimed_colours_ = view_.Low32();
    view_.Skip(4);
  } else {
    return false;
  }
  downwards_ = height < 0;
  height = downwards_ ? -height : height;
  // An icon's height counts the mask that stands behind the colours.
  if (in_icon_) height /= 2;
  if (view_.Overran() || !IsFairSize(width_, height)) return false;
  height_ = static_cast<int>(height);
  ReadMasks(size);
  ReadColours(size);
  return true;
}

// Masks stand at byte 40 of every header, within the longer ones and behind the shortest alike.
void DibDecoder::ReadMasks(unsigned header_size) {
  if (bits_ == 16) {
    // Five bits a colour where no masks say otherwise.
    red_.Set(0x7C00);
    green_.Set(0x3E0);
    blue_.Set(0x1F);
  } else {
    red_.Set(0xFF0000);
    green_.Set(0xFF00);
    blue_.Set(0xFF);
    // Bitmaps that are no icons have often anything in the fourth byte.
    if (in_icon_ && bits_ == 32) alpha_.Set(kOpaque);
  }
  if (packing_ != kMasks && packing_ != kAlphaMasks) return;
  red_.Set(view_.Low32());
  green_.Set(view_.Low32());
  blue_.Set(view_.Low32());
  if (header_size >= 56 || packing_ == kAlphaMasks) alpha_.Set(view_.Low32());
}

void DibDecoder::ReadColours(unsigned header_size) {
  const std::size_t masks = header_size == 40 && packing_ == kMasks        ? 12
                            : header_size == 40 && packing_ == kAlphaMasks ? 16
                                                                           : 0;
  view_.Seek(header_size + masks);
  if (bits_ <= 8) {
    const std::size_t most = std::size_t{1} << bits_;
    // Files claim more colours than their pixels can name; 0 stands for all of them.
    colours_ = claimed_colours_ == 0 ? most : std::min<std::size_t>(claimed_colours_, most);
  }
  for (std::size_t i = 0; i < colours_; ++i) {
    const unsigned blue = view_.Byte();
    const unsigned green = view_.Byte();
    palette_[i] = Pixel(view_.Byte(), green, blue);
    if (header_size != 12) view_.Skip(1);
  }
  // In icons and resources no file header says where the pixels begin: they follow.
  if (data_at_ == 0) data_at_ = view_.At();
}

bool DibDecoder::Decode() {
  if (!ReadHeader()) return false;
  // Runs may pass over pixels, which keep the first colour.
  out_.Resize(width_, height_, colours_ > 0 ? palette_[0] : kOpaque);
  if ((packing_ == kRuns8 && bits_ == 8) || (packing_ == kRuns4 && bits_ == 4))
    return !in_icon_ && ReadRuns();
  const bool has_masks = packing_ == kMasks || packing_ == kAlphaMasks;
  if (packing_ != kPlain && !(has_masks && (bits_ == 16 || bits_ == 32))) return false;
  return ReadRows();
}

std::uint32_t DibDecoder::NumberedAt(const unsigned char* row, int x) const {
  const auto at = static_cast<std::size_t>(x);
  const unsigned place = static_cast<unsigned>(at * bits_ % 8);
  const unsigned number =
      static_cast<unsigned>(row[at * bits_ / 8]) >> (8 - bits_ - place) & ((1U << bits_) - 1);
  return number < colours_ ? palette_[number] : kOpaque;
}

std::uint32_t DibDecoder::MaskedAt(const unsigned char* row, int x) const {
  const auto at = static_cast<std::size_t>(x);
  // A byte at a time: rows of 16 and 32 bits may begin at any address.
  std::uint32_t value = static_cast<std::uint32_t>(row[at * bits_ / 8]) |
                        static_cast<std::uint32_t>(row[at * bits_ / 8 + 1]) << 8;
  if (bits_ == 32) {
    value |= static_cast<std::uint32_t>(row[4 * at + 2]) << 16 | static_cast<std::uint32_t>(row[4 * at + 3])
                                                                     << 24;
  }
  return Pixel(red_.Of(value, 0), green_.Of(value, 0), blue_.Of(value, 0), alpha_.Of(value, 255));
}

// Pixels of the file that are those of a raster but for the fourth byte.
bool DibDecoder::HasPixelsOfOurs() const {
  return bits_ == 32 && red_.Bits() == 0xFF0000 && green_.Bits() == 0xFF00 && blue_.Bits() == 0xFF &&
         (alpha_.Bits() == 0 || alpha_.Bits() == kOpaque);
}

void DibDecoder::PutRow(const unsigned char* row, std::uint32_t* to) const {
  if (bits_ <= 8) {
    for (int x = 0; x < width_; ++x) to[x] = NumberedAt(row, x);
  } else if (bits_ == 24) {
    for (int x = 0; x < width_; ++x, row += 3) to[x] = Pixel(row[2], row[1], row[0]);
  } else if (HasPixelsOfOurs()) {
    const std::uint32_t opaque = alpha_.Bits() == 0 ? kOpaque : 0;
    for (int x = 0; x < width_; ++x, row += 4) to[x] = Pixel(row[2], row[1], row[0], row[3]) | opaque;
  } else {
    for (int x = 0; x < width_; ++x) to[x] = MaskedAt(row, x);
  }
}

bool DibDecoder::ReadRows() {
  constexpr unsigned kKnown[] = {1, 2, 4, 8, 16, 24, 32};
  if (std::find(std::begin(kKnown), std::end(kKnown), bits_) == std::end(kKnown)) return false;
  const std::size_t size = RowBytes(bits_);
  // The last row may lack the bytes that fill it up; writers leave them out.
  const std::size_t used = (static_cast<std::size_t>(width_) * bits_ + 7) / 8;
  const std::size_t rows = static_cast<std::size_t>(height_);
  if (data_at_ > bytes_.size() || (rows - 1) * size + used > bytes_.size() - data_at_) return false;
  const auto* from = reinterpret_cast<const unsigned char*>(bytes_.data()) + data_at_;
  for (int row = 0; row < height_; ++row, from += size) {
    PutRow(from, out_.Row(downwards_ ? row : height_ - 1 - row));
  }
  if (in_icon_) PutMask(data_at_ + rows * size);
  return true;
}

// Of icons with alpha the mask does not count, unless that alpha is 0 all over.
void DibDecoder::PutMask(std::size_t at) {
  const auto has_alpha = [](std::uint32_t pixel) { return pixel >> 24 != 0; };
  if (bits_ == 32 && std::any_of(out_.pixels.begin(), out_.pixels.end(), has_alpha)) return;
  for (std::uint32_t& pixel : out_.pixels) pixel |= kOpaque;
  const std::size_t size = RowBytes(1);
  for (int row = 0; row < height_; ++row, at += size) {
    // An icon without the rest of its mask is opaque there.
    if (at > bytes_.size() || size > bytes_.size() - at) return;
    std::uint32_t* const to = out_.Row(downwards_ ? row : height_ - 1 - row);
    for (int x = 0; x < width_; ++x) {
      const unsigned byte = ByteAt(bytes_, at + static_cast<std::size_t>(x / 8));
      if ((byte >> (7 - x % 8) & 1) != 0) to[x] = 0;
    }
  }
}

void DibDecoder::Put(int x, int y, unsigned number) {
  if (x >= width_ || y >= height_) return;
  out_.Row(downwards_ ? y : height_ - 1 - y)[x] = number < colours_ ? palette_[number] : kOpaque;
}

// One escape or run; false at the end of the picture.
bool DibDecoder::ReadRun(int& x, int& y) {
  const unsigned count = view_.Byte();
  const unsigned value = view_.Byte();
  const auto half = [&](unsigned byte, unsigned i) { return i % 2 == 0 ? byte >> 4 : byte & 15; };
  if (count > 0) {
    for (unsigned i = 0; i < count; ++i, ++x) Put(x, y, bits_ == 8 ? value : half(value, i));
  } else if (value == 0) {
    x = 0;
    ++y;
  } else if (value == 1) {
    return false;
  } else if (value == 2) {
    x += static_cast<int>(view_.Byte());
    y += static_cast<int>(view_.Byte());
  } else {
    unsigned byte = 0;
    for (unsigned i = 0; i < value; ++i, ++x) {
      if (bits_ == 8 || i % 2 == 0) byte = view_.Byte();
      Put(x, y, bits_ == 8 ? byte : half(byte, i));
    }
    const unsigned taken = bits_ == 8 ? value : (value + 1) / 2;
    // Bytes as they stand are filled up to a whole word.
    if (taken % 2 != 0) view_.Skip(1);
  }
  // Both are bounded, as a file of nothing but runs and jumps would carry them past any number.
  return x <= kMostPixels && y < height_;
}

bool DibDecoder::ReadRuns() {
  view_.Seek(data_at_);
  int x = 0;
  int y = 0;
  while (!view_.Overran() && ReadRun(x, y)) {
  }
  return !view_.Overran();
}

}  // namespace

bool DecodeDib(std::string_view bytes, std::size_t data_at, bool in_icon, Raster& out) {
  return DibDecoder(bytes, data_at, in_icon, out).Decode();
}

bool DecodeBmp(std::string_view bytes, Raster& out) {
  if (bytes.size() < kFileHeader) return false;
  ByteView view(bytes);
  view.Seek(10);
  const std::uint32_t data_at = view.Low32();
  if (data_at < kFileHeader) return false;
  return DecodeDib(bytes.substr(kFileHeader), data_at - kFileHeader, false, out);
}

}  // namespace lorv
