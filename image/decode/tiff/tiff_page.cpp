#include "image/decode/tiff/tiff_page.h"

#include <algorithm>
#include <unordered_set>

// Directories of a TIFF file. Each is a list of fields and the place of the next directory, so that a file
// may name itself as what follows: places are remembered, and the walk ends where one comes again.
namespace lorv::tiff {
namespace {

constexpr std::size_t kFieldSize = 12;
constexpr std::size_t kMostPages = 65536;
// Of one directory; those of files have some twenty. Directories may overlap, so that a small file could name
// thousands of large ones.
constexpr unsigned kMostFields = 256;
constexpr unsigned kMostSamples = 8;

// How many bytes one stored byte can stand for, by the packing.
constexpr unsigned kMostUnpacked[] = {1, 4096, 1040, 128};

constexpr unsigned kByte = 1;
constexpr unsigned kShort = 3;
constexpr unsigned kLong = 4;

unsigned SizeOf(unsigned type) {
  return type == kByte ? 1 : type == kShort ? 2 : type == kLong ? 4 : 0;
}

enum Tag : unsigned {
  kWidth = 256,
  kHeight = 257,
  kBits = 258,
  kCompression = 259,
  kPhotometric = 262,
  kFillOrder = 266,
  kStripOffsets = 273,
  kSamples = 277,
  kRowsPerStrip = 278,
  kStripSizes = 279,
  kPlanar = 284,
  kPredictor = 317,
  kColourMap = 320,
  kTileWidth = 322,
  kTileHeight = 323,
  kTileOffsets = 324,
  kTileSizes = 325,
  kExtraSamples = 338,
  kSampleFormat = 339
};

class PageReader {
 public:
  PageReader(const Numbers& file, std::uint32_t at, Page& page) : file_(file), at_(at), page_(page) {}

  bool Read() {
    if (file_.At16(at_) > kMostFields) return false;
    return ReadSize() && ReadSamples() && ReadPacking() && ReadAlpha() && ReadPieces() && HasPalette();
  }

 private:
  Field Find(Tag tag) const {
    const unsigned count = file_.At16(at_);
    for (unsigned i = 0; i < count; ++i) {
      const std::uint64_t entry = std::uint64_t{at_} + 2 + i * kFieldSize;
      if (!file_.Has(entry, kFieldSize)) break;
      if (file_.At16(entry) != tag) continue;
      Field field;
      field.type = file_.At16(entry + 2);
      // A field of another type counts as missing: real and signed numbers mean nothing to these tags.
      field.count = SizeOf(field.type) == 0 ? 0 : file_.At32(entry + 4);
      const std::uint64_t bytes = std::uint64_t{field.count} * SizeOf(field.type);
      // Values that fit stand in the entry itself, in the place of their address.
      field.at = bytes <= 4 ? entry + 8 : file_.At32(entry + 8);
      return field;
    }
    return {};
  }
  std::uint32_t Value(Tag tag, std::uint32_t usual) const {
    const Field field = Find(tag);
    return field.count == 0 ? usual : field.Value(file_, 0);
  }

  bool ReadSize() {
    const std::uint32_t width = Value(kWidth, 0);
    const std::uint32_t height = Value(kHeight, 0);
    page_.width = static_cast<int>(std::min<std::uint32_t>(width, 1U << 30));
    page_.height = static_cast<int>(std::min<std::uint32_t>(height, 1U << 30));
    return IsFairSize(width, height);
  }

  // All samples must have the same depth and be whole numbers without sign.
  bool ReadSamples() {
    page_.samples = Value(kSamples, 1);
    // The usual values are the standard's; scanners leave out what equals them.
    page_.bits = Value(kBits, 1);
    page_.meaning = Value(kPhotometric, kBlackIsZero);
    page_.planes = Value(kPlanar, 1) == 2 && page_.samples > 1;
    page_.low_bit_first = Value(kFillOrder, 1) == 2;
    if (page_.samples == 0 || page_.samples > kMostSamples || Value(kSampleFormat, 1) != 1) return false;
    const Field bits = Find(kBits);
    for (std::uint32_t i = 1; i < std::min(bits.count, page_.samples); ++i)
      if (bits.Value(file_, i) != page_.bits) return false;
    return IsFairDepth();
  }
  bool IsFairDepth() const {
    const bool whole_bytes = page_.bits == 8 || page_.bits == 16;
    if (page_.meaning == kColours) return whole_bytes && page_.samples >= 3;
    if (page_.meaning > kPalette) return false;
    if (page_.meaning == kPalette && page_.bits == 16) return false;
    // Packed samples have no room for others beside them.
    return whole_bytes || (page_.samples == 1 && (page_.bits == 1 || page_.bits == 2 || page_.bits == 4));
  }

  bool ReadPacking() {
    page_.differences = Value(kPredictor, 1) == 2;
    if (Value(kPredictor, 1) > 2) return false;
    switch (Value(kCompression, 1)) {
      case 1:
        page_.packing = Packing::kNone;
        // Only the two packings by tables of what came before know differences.
        page_.differences = false;
        return true;
      case 5:
        page_.packing = Packing::kLzw;
        return !page_.differences || page_.bits >= 8;
      case 8:
      case 32946:
        page_.packing = Packing::kDeflate;
        return !page_.differences || page_.bits >= 8;
      case 32773:
        page_.packing = Packing::kRunLengths;
        page_.differences = false;
        return true;
      default:
        return false;
    }
  }

  bool ReadAlpha() {
    const unsigned plain = page_.meaning == kColours ? 3 : 1;
    if (page_.samples <= plain) return page_.samples == plain;
    const std::uint32_t first = Value(kExtraSamples, 0);
    page_.alpha = first == 1 ? Alpha::kPremultiplied : first == 2 ? Alpha::kPlain : Alpha::kNone;
    return true;
  }

  bool ReadPieces() {
    const bool tiled = Find(kTileOffsets).count > 0;
    page_.offsets = Find(tiled ? kTileOffsets : kStripOffsets);
    page_.sizes = Find(tiled ? kTileSizes : kStripSizes);
    const std::uint32_t rows = Value(kRowsPerStrip, 0xFFFFFFFF);
    const std::uint32_t width = tiled ? Value(kTileWidth, 0) : static_cast<std::uint32_t>(page_.width);
    const std::uint32_t height =
        tiled ? Value(kTileHeight, 0) : std::min(rows, static_cast<std::uint32_t>(page_.height));
    if (page_.offsets.count == 0 || !IsFairSize(width, height)) return false;
    page_.piece_width = static_cast<int>(width);
    page_.piece_height = static_cast<int>(height);
    // Wide tiles over a narrow page would make work out of nothing.
    return IsFairSize(std::int64_t{page_.Across()} * width, page_.height) && CanHoldPiece();
  }
  // Whether the file has bytes enough for one piece of the size claimed.
  bool CanHoldPiece() const {
    const std::uint64_t rows = static_cast<std::uint64_t>(std::min(page_.piece_height, page_.height));
    const unsigned most = kMostUnpacked[static_cast<int>(page_.packing)];
    return page_.PieceRowBytes() * rows <= file_.Bytes().size() * std::uint64_t{most};
  }

  bool HasPalette() {
    if (page_.meaning != kPalette) return true;
    page_.palette = Find(kColourMap);
    return page_.palette.type == kShort && page_.palette.count >= 3U << page_.bits;
  }

  const Numbers& file_;
  std::uint32_t at_;
  Page& page_;
};

}  // namespace

std::uint32_t Field::Value(const Numbers& file, std::uint32_t index) const {
  if (index >= count) return 0;
  if (type == kByte) return file.At8(at + index);
  if (type == kShort) return file.At16(at + std::uint64_t{index} * 2);
  return file.At32(at + std::uint64_t{index} * 4);
}

bool ReadPage(const Numbers& file, std::uint32_t at, Page& page) {
  page = {};
  return PageReader(file, at, page).Read();
}

std::vector<std::uint32_t> ListPages(const Numbers& file, std::uint32_t first) {
  std::vector<std::uint32_t> pages;
  std::unordered_set<std::uint32_t> seen;
  Page page;
  for (std::uint32_t at = first; at != 0 && pages.size() < kMostPages;) {
    if (!seen.insert(at).second || !ReadPage(file, at, page)) break;
    pages.push_back(at);
    at = file.At32(std::uint64_t{at} + 2 + std::uint64_t{file.At16(at)} * kFieldSize);
  }
  return pages;
}

}  // namespace lorv::tiff
