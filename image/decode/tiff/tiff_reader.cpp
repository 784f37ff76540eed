#include <algorithm>
#include <array>
#include <utility>

#include "image/decode/image_decoders.h"
#include "image/decode/tiff/tiff_page.h"
#include "image/decode/tiff/tiff_rows.h"

// TIFF: strips and tiles of grey, colours and palettes, every page a frame. Directories are read when the
// file is opened; a page is decoded when it is asked for, row by row, and only the last one is kept.
namespace lorv {
namespace {

using tiff::Alpha;
using tiff::Numbers;
using tiff::Page;

// Turns the rows of strips and tiles into pixels of one page.
class PageDecoder {
 public:
  PageDecoder(const Numbers& file, const Page& page, Raster& out) : file_(file), page_(page), out_(out) {
    if (page.meaning == tiff::kPalette) ReadPalette();
    if (page.meaning != tiff::kPalette && page.bits <= 8) MakeRamp();
  }

  // False when a piece is missing or damaged; what was decoded before it stands.
  bool Decode() {
    out_.Resize(page_.width, page_.height, page_.alpha == Alpha::kNone ? kOpaque : 0);
    row_.resize(page_.PieceRowBytes());
    const int planes = page_.planes ? static_cast<int>(std::min(page_.samples, ShownSamples())) : 1;
    for (int plane = 0; plane < planes; ++plane)
      for (int down = 0; down < page_.Down(); ++down)
        for (int across = 0; across < page_.Across(); ++across)
          if (!DecodePiece(plane, across, down)) return false;
    // At the end, when the planes of a pixel have all come.
    if (page_.alpha == Alpha::kPremultiplied) Unmultiply();
    return true;
  }

 private:
  unsigned PlainSamples() const { return page_.meaning == tiff::kColours ? 3 : 1; }
  unsigned ShownSamples() const { return PlainSamples() + (page_.alpha == Alpha::kNone ? 0 : 1); }

  void ReadPalette() {
    // The palette holds all reds, then all greens, then all blues, in 16 bits each.
    const std::uint32_t count = 1U << page_.bits;
    for (std::uint32_t i = 0; i < count; ++i) {
      const auto part = [&](std::uint32_t which) {
        return page_.palette.Value(file_, which * count + i) >> 8;
      };
      colours_[i] = Pixel(part(0), part(1), part(2));
    }
  }
  void MakeRamp() {
    const unsigned most = (1U << page_.bits) - 1;
    for (unsigned i = 0; i <= most; ++i) {
      const unsigned grey = i * 255 / most;
      const unsigned shown = page_.meaning == tiff::kWhiteIsZero ? 255 - grey : grey;
      colours_[i] = Pixel(shown, shown, shown);
    }
  }

  bool DecodePiece(int plane, int across, int down) {
    const auto index = static_cast<std::uint32_t>((plane * page_.Down() + down) * page_.Across() + across);
    const std::uint32_t at = page_.offsets.Value(file_, index);
    const std::size_t size = SizeOfPiece(index, at);
    // A piece without a place or without bytes is missing, and the page ends with it.
    if (index >= page_.offsets.count || at == 0 || size == 0) return false;
    const auto packed = tiff::OpenPacked(page_.packing, file_.Bytes().substr(at, size), page_.low_bit_first);
    const int left = across * page_.piece_width;
    const int top = down * page_.piece_height;
    const int rows = std::min(page_.piece_height, page_.height - top);
    const int columns = std::min(page_.piece_width, page_.width - left);
    for (int y = 0; y < rows; ++y) {
      if (!packed->Read(row_.data(), row_.size())) return false;
      Restore();
      std::uint32_t* const to = out_.Row(top + y) + left;
      page_.planes ? PutPlane(to, columns, plane) : PutRow(to, columns);
    }
    return true;
  }
  // A page of one piece may leave its size out.
  std::size_t SizeOfPiece(std::uint32_t index, std::uint32_t at) const {
    if (at >= file_.Bytes().size()) return 0;
    const std::size_t left = file_.Bytes().size() - at;
    if (page_.sizes.count == 0) return left;
    return std::min<std::size_t>(page_.sizes.Value(file_, index), left);
  }

  void Restore() {
    if (!page_.differences) return;
    const std::size_t step = page_.SamplesInPiece();
    if (page_.bits == 8) {
      for (std::size_t i = step; i < row_.size(); ++i)
        row_[i] = static_cast<unsigned char>(row_[i] + row_[i - step]);
      return;
    }
    for (std::size_t i = step; i * 2 + 1 < row_.size(); ++i) Store16(i, Sample16(i) + Sample16(i - step));
  }
  unsigned Sample16(std::size_t index) const {
    const unsigned first = row_[index * 2];
    const unsigned second = row_[index * 2 + 1];
    return file_.HighFirst() ? first << 8 | second : second << 8 | first;
  }
  void Store16(std::size_t index, unsigned value) {
    row_[index * 2 + (file_.HighFirst() ? 0 : 1)] = static_cast<unsigned char>(value >> 8 & 255);
    row_[index * 2 + (file_.HighFirst() ? 1 : 0)] = static_cast<unsigned char>(value & 255);
  }

  // The upper eight bits of a sample of 8 or 16.
  unsigned Sample(std::size_t index) const {
    if (page_.bits == 8) return row_[index];
    return row_[index * 2 + (file_.HighFirst() ? 0 : 1)];
  }
  unsigned Light(std::size_t index) const {
    const unsigned sample = Sample(index);
    return page_.meaning == tiff::kWhiteIsZero ? 255 - sample : sample;
  }
  unsigned Packed(std::size_t x) const {
    const std::size_t bit = x * page_.bits;
    return unsigned{row_[bit / 8]} >> (8 - page_.bits - bit % 8) & ((1U << page_.bits) - 1);
  }

  void PutRow(std::uint32_t* to, int columns) const {
    if (page_.meaning == tiff::kColours) return PutColours(to, columns);
    const std::size_t step = page_.samples;
    for (std::size_t x = 0; x < static_cast<std::size_t>(columns); ++x) {
      const std::size_t at = x * step;
      const unsigned alpha = page_.alpha == Alpha::kNone ? 255 : Sample(at + 1);
      if (page_.bits < 8) {
        to[x] = colours_[Packed(x)];
      } else if (page_.bits == 8) {
        to[x] = (colours_[row_[at]] & ~kOpaque) | alpha << 24;
      } else {
        to[x] = Pixel(Light(at), Light(at), Light(at), alpha);
      }
    }
  }
  void PutColours(std::uint32_t* to, int columns) const {
    const std::size_t step = page_.samples;
    for (std::size_t x = 0; x < static_cast<std::size_t>(columns); ++x) {
      const std::size_t at = x * step;
      const unsigned alpha = page_.alpha == Alpha::kNone ? 255 : Sample(at + 3);
      to[x] = Pixel(Sample(at), Sample(at + 1), Sample(at + 2), alpha);
    }
  }
  // One sample of each pixel into what the planes before it left.
  void PutPlane(std::uint32_t* to, int columns, int plane) const {
    for (std::size_t x = 0; x < static_cast<std::size_t>(columns); ++x) {
      const auto which = static_cast<unsigned>(plane);
      if (which == PlainSamples()) {
        to[x] = (to[x] & ~kOpaque) | Sample(x) << 24;
      } else if (page_.meaning == tiff::kColours) {
        const unsigned shift = 16 - 8 * which;
        to[x] = (to[x] & ~(255U << shift)) | Sample(x) << shift;
      } else {
        const std::uint32_t grey = page_.bits == 8 ? colours_[row_[x]] : Pixel(Light(x), Light(x), Light(x));
        to[x] = (to[x] & kOpaque) | (grey & ~kOpaque);
      }
    }
  }

  void Unmultiply() {
    for (std::uint32_t& pixel : out_.pixels) {
      const unsigned alpha = pixel >> 24;
      if (alpha == 255 || alpha == 0) continue;
      const auto part = [&](unsigned shift) {
        return std::min(255U, ((pixel >> shift & 255) * 255 + alpha / 2) / alpha);
      };
      pixel = Pixel(part(16), part(8), part(0), alpha);
    }
  }

  const Numbers& file_;
  const Page& page_;
  Raster& out_;
  std::vector<unsigned char> row_;
  std::array<std::uint32_t, 256> colours_ = {};
};

class TiffReader final : public ImageReader {
 public:
  explicit TiffReader(std::string bytes) : bytes_(std::make_shared<const std::string>(std::move(bytes))) {}

  bool Read() {
    file_ = Numbers(*bytes_, bytes_->starts_with('M'));
    pages_ = std::make_shared<const std::vector<std::uint32_t>>(tiff::ListPages(file_, file_.At32(4)));
    return !pages_->empty() && Decode(0);
  }

  ImageKind Kind() const override { return ImageKind::kTiff; }
  int Width() const override { return SizeOf(0).first; }
  int Height() const override { return SizeOf(0).second; }
  std::pair<int, int> FrameSize(int index) const override { return SizeOf(index); }
  int FrameCount() const override { return static_cast<int>(pages_->size()); }
  const std::vector<unsigned>& Delays() const override { return no_delays_; }
  const Raster& Frame(int index) override {
    if (index < 0 || index >= FrameCount()) index = 0;
    if (index != decoded_) Decode(index);
    return raster_;
  }
  std::unique_ptr<ImageReader> Clone() const override {
    auto clone = std::make_unique<TiffReader>(*this, 0);
    return clone;
  }
  TiffReader(const TiffReader& other, int /*clone*/)
      : bytes_(other.bytes_), file_(other.file_), pages_(other.pages_) {}

 private:
  // Read again at each question: pages are asked for seldom, and a file may have thousands.
  std::pair<int, int> SizeOf(int index) const {
    Page page;
    if (index < 0 || index >= FrameCount()) index = 0;
    tiff::ReadPage(file_, (*pages_)[static_cast<std::size_t>(index)], page);
    return {page.width, page.height};
  }
  bool Decode(int index) {
    Page page;
    decoded_ = index;
    return tiff::ReadPage(file_, (*pages_)[static_cast<std::size_t>(index)], page) &&
           PageDecoder(file_, page, raster_).Decode();
  }

  std::shared_ptr<const std::string> bytes_;
  Numbers file_;
  std::shared_ptr<const std::vector<std::uint32_t>> pages_;
  std::vector<unsigned> no_delays_;
  Raster raster_;
  int decoded_ = -1;
};

}  // namespace

std::unique_ptr<ImageReader> OpenTiff(std::string bytes) {
  auto reader = std::make_unique<TiffReader>(std::move(bytes));
  if (!reader->Read()) return nullptr;
  return reader;
}

}  // namespace lorv
