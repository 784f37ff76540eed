#include <algorithm>

#include "image/decode/byte_view.h"
#include "image/decode/image_decoders.h"
#include "image/decode/jpeg/jpeg_scan.h"

// JPEG of eight bits, sequential and progressive, by Huffman codes. Turn, resolution and profiles are left
// alone.
namespace lorv {
namespace {

using jpeg::Component;

// Each scan of a progressive picture may walk all of its blocks for a few bytes: a file of nothing but scans
// would never end. Encoders make about ten, and could make use of some thirty.
constexpr int kMostScans = 64;

constexpr unsigned kStartOfScan = 0xDA;
constexpr unsigned kEnd = 0xD9;

class JpegDecoder {
 public:
  explicit JpegDecoder(std::string_view bytes) : bytes_(bytes), view_(bytes) {}
  bool Decode(Raster& out);

 private:
  unsigned NextMark();
  bool ReadSegment(unsigned mark, ByteView segment);
  bool ReadFrame(ByteView& segment);
  bool LayOut();
  bool HasRoom() const;
  bool ReadQuantities(ByteView& segment);
  bool ReadCodes(ByteView& segment);
  void ReadApplication(unsigned mark, ByteView& segment);
  bool ReadScan(ByteView& segment);
  bool ReadScanHeader(ByteView& segment, jpeg::Scan& scan) const;
  void TransformAll();

  std::string_view bytes_;
  ByteView view_;
  jpeg::Picture picture_;
  jpeg::CodeTables tables_;
  bool has_scan_ = false;
  int scans_ = 0;
};

// 0 at the end of the file.
unsigned JpegDecoder::NextMark() {
  while (view_.Left() > 0) {
    // What stands between segments is passed over; some writers leave fillers there.
    if (view_.Byte() != 0xFF) continue;
    unsigned mark = view_.Byte();
    while (mark == 0xFF && view_.Left() > 0) mark = view_.Byte();
    if (mark != 0 && mark != 0xFF && (mark < 0xD0 || mark > 0xD8)) return mark;
  }
  return 0;
}

bool JpegDecoder::Decode(Raster& out) {
  for (unsigned mark = NextMark(); mark != 0 && mark != kEnd; mark = NextMark()) {
    const std::size_t size = view_.High16();
    if (size < 2) break;
    const std::string_view segment = view_.Take(size - 2);
    if (segment.size() < size - 2) break;
    if (!ReadSegment(mark, ByteView(segment))) break;
  }
  // Whatever ended the walk, a picture that was begun is shown as far as it came.
  if (!has_scan_) return false;
  if (picture_.progressive) TransformAll();
  PutColours(picture_, out);
  return true;
}

bool JpegDecoder::ReadSegment(unsigned mark, ByteView segment) {
  switch (mark) {
    case 0xC0:
    case 0xC1:
    case 0xC2:
      // A second head would change what the samples of the first were laid out for.
      if (!picture_.components.empty()) return false;
      picture_.progressive = mark == 0xC2;
      return ReadFrame(segment);
    case 0xC4:
      return ReadCodes(segment);
    case 0xDB:
      return ReadQuantities(segment);
    case 0xDD:
      picture_.restart_interval = static_cast<int>(segment.High16());
      return true;
    case 0xE0:
    case 0xEE:
      ReadApplication(mark, segment);
      return true;
    case kStartOfScan:
      return ReadScan(segment);
    default:
      return mark < 0xC0 || mark > 0xCF;  // other ways to code
  }
}

bool JpegDecoder::ReadFrame(ByteView& segment) {
  const unsigned depth = segment.Byte();
  picture_.height = static_cast<int>(segment.High16());
  picture_.width = static_cast<int>(segment.High16());
  const unsigned count = segment.Byte();
  // Two components have no meaning that writers agree on.
  if (depth != 8 || (count != 1 && count != 3 && count != 4)) return false;
  if (!IsFairSize(picture_.width, picture_.height)) return false;
  for (unsigned i = 0; i < count; ++i) {
    Component component;
    component.id = segment.Byte();
    const unsigned factors = segment.Byte();
    component.across = static_cast<int>(factors >> 4);
    component.down = static_cast<int>(factors & 15);
    component.quantities = segment.Byte();
    if (component.across < 1 || component.across > 4 || component.down < 1 || component.down > 4)
      return false;
    // All numbers of tables are checked where they are read: what follows indexes by them.
    if (component.quantities > 3) return false;
    picture_.components.push_back(component);
  }
  return !segment.Overran() && LayOut();
}

bool JpegDecoder::LayOut() {
  for (const Component& component : picture_.components) {
    picture_.most_across = std::max(picture_.most_across, component.across);
    picture_.most_down = std::max(picture_.most_down, component.down);
  }
  const auto parts = [](int size, int part) { return (size + part - 1) / part; };
  picture_.units_across = parts(picture_.width, picture_.most_across * jpeg::kBlockSize);
  picture_.units_down = parts(picture_.height, picture_.most_down * jpeg::kBlockSize);
  for (Component& component : picture_.components) {
    component.width = parts(picture_.width * component.across, picture_.most_across);
    component.height = parts(picture_.height * component.down, picture_.most_down);
    component.blocks_across = picture_.units_across * component.across;
    component.blocks_down = picture_.units_down * component.down;
  }
  if (!HasRoom()) return false;
  for (Component& component : picture_.components) {
    const auto blocks = static_cast<std::size_t>(component.BlockCount());
    // The middle grey, for blocks of which nothing comes.
    component.samples.assign(blocks * jpeg::kBlockArea, 128);
    if (picture_.progressive) component.blocks.assign(blocks, {});
  }
  return true;
}

// All samples are held until the picture is made of them, and the coefficients of a progressive one until
// its last scan; those are gone before the picture is begun.
bool JpegDecoder::HasRoom() const {
  std::int64_t samples = 0;
  for (const Component& component : picture_.components) samples += component.BlockCount() * jpeg::kBlockArea;
  const std::int64_t coefficients = picture_.progressive ? samples * 2 : 0;
  const std::int64_t picture = std::int64_t{picture_.width} * picture_.height * 4;
  const auto file = static_cast<std::int64_t>(bytes_.size());
  return file + samples + std::max(coefficients, picture) <= kMostImageMemory;
}

bool JpegDecoder::ReadQuantities(ByteView& segment) {
  while (segment.Left() > 0) {
    const unsigned kind = segment.Byte();
    if ((kind & 15) > 3 || kind >> 4 > 1) return false;
    for (const unsigned char place : jpeg::kZigzag) {
      const unsigned value = kind >> 4 == 0 ? segment.Byte() : segment.High16();
      picture_.quantities[kind & 15][place] = static_cast<std::uint16_t>(value);
    }
  }
  return !segment.Overran();
}

bool JpegDecoder::ReadCodes(ByteView& segment) {
  while (segment.Left() > 0) {
    const unsigned kind = segment.Byte();
    std::array<unsigned char, 16> counts = {};
    std::size_t sum = 0;
    for (unsigned char& count : counts) {
      count = static_cast<unsigned char>(segment.Byte());
      sum += count;
    }
    const std::string_view values = segment.Take(sum);
    if ((kind & 15) > 3 || kind >> 4 > 1 || sum > 256 || values.size() < sum) return false;
    jpeg::Codes& codes = kind >> 4 == 0 ? tables_.levels[kind & 15] : tables_.others[kind & 15];
    if (!codes.Set(counts, values)) return false;
  }
  return true;
}

void JpegDecoder::ReadApplication(unsigned mark, ByteView& segment) {
  const std::string_view name = segment.Take(5);
  // Beside the components' own numbers these two marks are all that says what they mean.
  if (mark == 0xE0 && name == std::string_view("JFIF\0", 5)) picture_.has_jfif = true;
  if (mark == 0xEE && name == "Adobe" && segment.Left() >= 7) {
    segment.Skip(6);
    picture_.adobe_transform = static_cast<int>(segment.Byte());
  }
}

bool JpegDecoder::ReadScanHeader(ByteView& segment, jpeg::Scan& scan) const {
  const unsigned count = segment.Byte();
  for (unsigned i = 0; i < count; ++i) {
    const unsigned id = segment.Byte();
    const unsigned tables = segment.Byte();
    const auto& parts = picture_.components;
    const auto found =
        std::find_if(parts.begin(), parts.end(), [&](const Component& part) { return part.id == id; });
    if (found == parts.end() || tables >> 4 > 3 || (tables & 15) > 3) return false;
    scan.parts.push_back({static_cast<std::size_t>(found - parts.begin()), tables >> 4, tables & 15});
  }
  const unsigned first = segment.Byte();
  const unsigned last = segment.Byte();
  const unsigned bits = segment.Byte();
  if (segment.Overran() || count == 0 || count > 4) return false;
  // The rest means nothing in a sequential picture, whatever its writer put there.
  if (!picture_.progressive) return true;
  scan.first = static_cast<int>(first);
  scan.last = static_cast<int>(last);
  scan.high_bit = static_cast<int>(bits >> 4);
  scan.low_bit = static_cast<int>(bits & 15);
  return first <= last && last < jpeg::kBlockArea && scan.low_bit <= 13 &&
         (first == 0 ? last == 0 : count == 1);
}

bool JpegDecoder::ReadScan(ByteView& segment) {
  jpeg::Scan scan;
  if (picture_.components.empty() || !ReadScanHeader(segment, scan)) return false;
  if (++scans_ > kMostScans) return false;
  for (const jpeg::Scan::Part& part : scan.parts) {
    const bool needs_levels = scan.first == 0 && scan.high_bit == 0;
    const bool needs_others = scan.last > 0;
    if (needs_levels && !tables_.levels[part.levels].IsSet()) return false;
    if (needs_others && !tables_.others[part.others].IsSet()) return false;
  }
  has_scan_ = true;
  view_.Seek(jpeg::ReadScan(bytes_, view_.At(), scan, tables_, picture_));
  return true;
}

void JpegDecoder::TransformAll() {
  for (Component& component : picture_.components) {
    const jpeg::Quantities& quantities = picture_.quantities[component.quantities];
    const jpeg::Block* block = component.blocks.data();
    const int count = component.blocks_across * component.blocks_down;
    for (int i = 0; i < count; ++i, ++block) {
      unsigned char* const to = component.BlockAt(i % component.blocks_across, i / component.blocks_across);
      jpeg::TransformBlock(*block, quantities, to, component.Stride());
    }
    // An assignment of nothing would keep their memory, beside that of the picture.
    std::vector<jpeg::Block>().swap(component.blocks);
  }
}

}  // namespace

bool DecodeJpeg(std::string_view bytes, Raster& out) {
  return JpegDecoder(bytes).Decode(out);
}

}  // namespace lorv
