#include <algorithm>
#include <array>
#include <utility>

#include "image/decode/byte_view.h"
#include "image/decode/image_decoders.h"

// GIF: the blocks are walked when the file is opened; pixels are unpacked when a frame is asked for, on the
// picture that the frame before it left. Kept are that picture and, for a frame that asks for it, the area to
// bring back: so the count of frames costs no memory but that of their list.
namespace lorv {
namespace {

constexpr unsigned kExtension = 0x21;
constexpr unsigned kDescriptor = 0x2C;
constexpr unsigned kControl = 0xF9;
constexpr unsigned kHasColours = 0x80;
constexpr unsigned kInterlaced = 0x40;
constexpr int kMostCodes = 4096;
// A frame takes fewer bytes in a file than in the list of frames.
constexpr std::size_t kMostFrames = 100'000;

constexpr unsigned kClearArea = 2;
constexpr unsigned kBringBack = 3;

using Colours = std::array<std::uint32_t, 256>;

struct Control {
  unsigned disposal = 0;
  unsigned delay = 0;
  int transparent = -1;
  bool has_entry = false;
};

struct GifFrame {
  Control control;
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  bool interlaced = false;
  std::size_t colours_at = 0;  // 0: those of the screen
  int colours = 0;
  std::size_t data_at = 0;
};

// Unpacks the codes of one frame into colour numbers.
class LzwUnpacker {
 public:
  // Where the codes end early or are none, the rest of `out` stays. False when not one number came.
  bool Unpack(ByteView view, std::vector<unsigned char>& out) {
    const unsigned bits = view.Byte();
    // Codes begin one bit wider than this, and have twelve at most.
    if (bits < 1 || bits > 11) return false;
    clear_ = 1 << bits;
    Reset(bits);
    std::size_t at = 0;
    int before = -1;
    for (int code = Next(view); code >= 0 && code != clear_ + 1; code = Next(view)) {
      if (code == clear_) {
        Reset(bits);
        before = -1;
      } else if (code > count_ || (code == count_ && before < 0) || at >= out.size()) {
        break;
      } else {
        Learn(before, code);
        at = Put(code, out, at);
        before = code;
      }
    }
    return at > 0;
  }

 private:
  void Reset(unsigned bits) {
    width_ = static_cast<int>(bits) + 1;
    count_ = clear_ + 2;
  }

  // -1 behind the last block.
  int Next(ByteView& view) {
    while (held_ < width_) {
      // Codes run on over the ends of blocks.
      if (left_in_block_ == 0) left_in_block_ = view.Byte();
      if (left_in_block_ == 0 || view.Overran()) return -1;
      --left_in_block_;
      bits_ |= view.Byte() << held_;
      held_ += 8;
    }
    const int code = static_cast<int>(bits_ & ((1U << width_) - 1));
    bits_ >>= width_;
    held_ -= width_;
    return code;
  }

  int FirstOf(int code) const { return code < clear_ ? code : first_[static_cast<std::size_t>(code)]; }

  // The next entry: what the code before stands for, and the first number of this one.
  void Learn(int before, int code) {
    // A full table stays as it is until the writer clears it, which it may put off.
    if (before < 0 || count_ >= kMostCodes) return;
    const auto at = static_cast<std::size_t>(count_);
    prefix_[at] = static_cast<std::uint16_t>(before);
    first_[at] = static_cast<unsigned char>(FirstOf(before));
    last_[at] = static_cast<unsigned char>(code == count_ ? FirstOf(before) : FirstOf(code));
    length_[at] = LengthOf(before) + 1;
    ++count_;
    if (count_ == 1 << width_ && width_ < 12) ++width_;
  }
  std::size_t LengthOf(int code) const { return code < clear_ ? 1 : length_[static_cast<std::size_t>(code)]; }

  // From its last number to its first; numbers beyond the frame are dropped.
  std::size_t Put(int code, std::vector<unsigned char>& out, std::size_t at) const {
    const std::size_t end = at + LengthOf(code);
    std::size_t to = end;
    for (; code > clear_; code = prefix_[static_cast<std::size_t>(code)]) {
      --to;
      if (to < out.size()) out[to] = last_[static_cast<std::size_t>(code)];
    }
    if (at < out.size()) out[at] = static_cast<unsigned char>(code);
    return std::min(end, out.size());
  }

  int clear_ = 0;
  int width_ = 0;
  int count_ = 0;
  unsigned bits_ = 0;
  int held_ = 0;
  unsigned left_in_block_ = 0;
  std::array<std::uint16_t, kMostCodes> prefix_ = {};
  std::array<unsigned char, kMostCodes> first_ = {};
  std::array<unsigned char, kMostCodes> last_ = {};
  std::array<std::size_t, kMostCodes> length_ = {};
};

// The row of the picture where the n-th row of an interlaced frame stands.
int InterlacedRow(int row, int height) {
  constexpr int kStarts[] = {0, 4, 2, 1};
  constexpr int kSteps[] = {8, 8, 4, 2};
  for (int pass = 0; pass < 4; ++pass) {
    const int rows = (height - kStarts[pass] + kSteps[pass] - 1) / kSteps[pass];
    if (row < rows) return kStarts[pass] + row * kSteps[pass];
    row -= rows;
  }
  return 0;
}

// Columns and rows of the screen, the ends behind the last ones.
struct Area {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  std::size_t Columns() const { return static_cast<std::size_t>(std::max(right - left, 0)); }
};

// What the blocks of a file say; constant once it is read, so that readers may share it.
struct GifFile {
  std::string bytes;
  int width = 0;
  int height = 0;
  std::size_t colours_at = 0;
  int colours = 0;
  std::vector<GifFrame> frames;
  std::vector<unsigned> delays;

  bool Read();
  Colours ColoursOf(const GifFrame& frame) const;
  // The frame's colour numbers. False when not one came.
  bool Unpack(const GifFrame& frame, LzwUnpacker& unpacker, std::vector<unsigned char>& numbers) const;
  // The part of a frame that lies on the screen; empty, with no columns or rows, for one beside it.
  Area ShownOf(const GifFrame& frame) const;

 private:
  void ReadExtension(ByteView& view);
  bool ReadFrame(ByteView& view);
  bool HasRoom() const;
  bool BeginsWithPixels() const;

  Control control_;  // of the frame to come
};

// Whether the chain of blocks is whole.
bool SkipBlocks(ByteView& view) {
  for (unsigned size = view.Byte(); size != 0; size = view.Byte()) view.Skip(size);
  return !view.Overran();
}

bool GifFile::Read() {
  ByteView view(bytes);
  view.Skip(6);
  width = static_cast<int>(view.Low16());
  height = static_cast<int>(view.Low16());
  const unsigned flags = view.Byte();
  view.Skip(2);
  if (view.Overran() || !IsFairSize(width, height)) return false;
  if ((flags & kHasColours) != 0) {
    colours_at = view.At();
    colours = 2 << (flags & 7);
    view.Skip(static_cast<std::size_t>(colours) * 3);
  }
  for (unsigned block = view.Byte(); !view.Overran(); block = view.Byte()) {
    if (block == kExtension) {
      ReadExtension(view);
    } else if (block != kDescriptor || frames.size() == kMostFrames || !ReadFrame(view)) {
      break;
    }
  }
  if (frames.empty() || !HasRoom() || !BeginsWithPixels()) return false;
  const bool has_entries =
      std::any_of(frames.begin(), frames.end(), [](const GifFrame& f) { return f.control.has_entry; });
  // A picture of one frame has no delays, whatever its blocks say.
  if (frames.size() < 2 || !has_entries) return true;
  for (const GifFrame& frame : frames) delays.push_back(frame.control.delay);
  return true;
}

Area GifFile::ShownOf(const GifFrame& frame) const {
  return {frame.left, frame.top, std::min(frame.left + frame.width, width),
          std::min(frame.top + frame.height, height)};
}

// The file, the picture, the numbers of the largest frame, and the largest area to be brought back.
bool GifFile::HasRoom() const {
  std::int64_t numbers = 0;
  std::int64_t kept = 0;
  for (const GifFrame& frame : frames) {
    numbers = std::max(numbers, std::int64_t{frame.width} * frame.height);
    const Area shown = ShownOf(frame);
    const std::int64_t area = static_cast<std::int64_t>(shown.Columns()) * (shown.bottom - shown.top);
    if (frame.control.disposal == kBringBack) kept = std::max(kept, area * 4);
  }
  const std::int64_t picture = std::int64_t{width} * height * 4;
  const auto stored = static_cast<std::int64_t>(bytes.size() + frames.size() * sizeof(GifFrame));
  return stored + picture + numbers + kept <= kMostImageMemory;
}

// A first frame without any is damage and no picture. One pixel shows it: the rest is unpacked when it is
// drawn.
bool GifFile::BeginsWithPixels() const {
  std::vector<unsigned char> first(1);
  ByteView view(bytes);
  view.Seek(frames[0].data_at);
  return std::make_unique<LzwUnpacker>()->Unpack(view, first);
}

void GifFile::ReadExtension(ByteView& view) {
  const unsigned label = view.Byte();
  if (label == kControl) {
    // On a copy: the chain is skipped as a whole, whatever its first block holds.
    ByteView block = view;
    if (block.Byte() >= 4) {
      const unsigned flags = block.Byte();
      control_.disposal = flags >> 2 & 7;
      control_.delay = block.Low16();
      const int transparent = static_cast<int>(block.Byte());
      control_.transparent = (flags & 1) != 0 ? transparent : -1;
      control_.has_entry = true;
    }
  }
  SkipBlocks(view);
}

bool GifFile::ReadFrame(ByteView& view) {
  GifFrame frame;
  // A control block is for the next frame alone.
  frame.control = std::exchange(control_, {});
  frame.left = static_cast<int>(view.Low16());
  frame.top = static_cast<int>(view.Low16());
  frame.width = static_cast<int>(view.Low16());
  frame.height = static_cast<int>(view.Low16());
  const unsigned flags = view.Byte();
  frame.interlaced = (flags & kInterlaced) != 0;
  frame.colours_at = colours_at;
  frame.colours = colours;
  if ((flags & kHasColours) != 0) {
    frame.colours_at = view.At();
    frame.colours = 2 << (flags & 7);
    view.Skip(static_cast<std::size_t>(frame.colours) * 3);
  }
  frame.data_at = view.At();
  view.Skip(1);
  if (view.Overran() || !SkipBlocks(view) || !IsFairSize(frame.width, frame.height)) return false;
  frames.push_back(frame);
  return true;
}

// A file without any colours has a ramp of grey; numbers behind the last colour are black.
Colours GifFile::ColoursOf(const GifFrame& frame) const {
  Colours table;
  table.fill(kOpaque);
  for (unsigned i = 0; i < table.size() && frame.colours == 0; ++i) table[i] = Pixel(i, i, i);
  ByteView view(bytes);
  view.Seek(frame.colours_at);
  for (int i = 0; i < frame.colours; ++i) {
    const unsigned red = view.Byte();
    const unsigned green = view.Byte();
    table[static_cast<std::size_t>(i)] = Pixel(red, green, view.Byte());
  }
  return table;
}

bool GifFile::Unpack(const GifFrame& frame, LzwUnpacker& unpacker,
                     std::vector<unsigned char>& numbers) const {
  numbers.assign(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height), 0);
  ByteView view(bytes);
  view.Seek(frame.data_at);
  unpacker = {};
  return unpacker.Unpack(view, numbers);
}

class GifReader final : public ImageReader {
 public:
  explicit GifReader(std::shared_ptr<const GifFile> file) : file_(std::move(file)) {}

  ImageKind Kind() const override { return ImageKind::kGif; }
  int Width() const override { return file_->width; }
  int Height() const override { return file_->height; }
  int FrameCount() const override { return static_cast<int>(file_->frames.size()); }
  const std::vector<unsigned>& Delays() const override { return file_->delays; }
  const Raster& Frame(int index) override;
  std::unique_ptr<ImageReader> Clone() const override { return std::make_unique<GifReader>(file_); }

 private:
  void Draw(const GifFrame& frame);
  void Dispose(const GifFrame& frame);
  // Row by row, the pixels of the screen below a frame to those that are kept, or back.
  template <class Move>
  void MoveKept(const GifFrame& frame, Move move);
  void Keep(const GifFrame& frame);

  std::shared_ptr<const GifFile> file_;
  Raster picture_;
  std::vector<std::uint32_t> kept_;  // what was below the frame drawn last, if that one brings it back
  int drawn_ = -1;
  std::vector<unsigned char> numbers_;
  LzwUnpacker unpacker_;
};

void GifReader::Draw(const GifFrame& frame) {
  if (!file_->Unpack(frame, unpacker_, numbers_)) return;
  const Colours colours = file_->ColoursOf(frame);
  const int columns = std::min(frame.width, Width() - frame.left);
  for (int row = 0; row < frame.height; ++row) {
    const int y = frame.top + (frame.interlaced ? InterlacedRow(row, frame.height) : row);
    // A frame may reach beyond the screen.
    if (y >= Height()) continue;
    const unsigned char* const from =
        numbers_.data() + static_cast<std::size_t>(row) * static_cast<std::size_t>(frame.width);
    std::uint32_t* const to = picture_.Row(y) + frame.left;
    for (int x = 0; x < columns; ++x) {
      if (from[x] != frame.control.transparent) to[x] = colours[from[x]];
    }
  }
}

void GifReader::Dispose(const GifFrame& frame) {
  if (frame.control.disposal == kBringBack)
    return MoveKept(frame, [](std::uint32_t* row, std::uint32_t* kept, std::size_t columns) {
      std::copy_n(kept, columns, row);
    });
  if (frame.control.disposal != kClearArea) return;
  const Area shown = file_->ShownOf(frame);
  for (int y = shown.top; y < shown.bottom && shown.Columns() > 0; ++y)
    std::fill_n(picture_.Row(y) + shown.left, shown.Columns(), std::uint32_t{0});
}

template <class Move>
void GifReader::MoveKept(const GifFrame& frame, Move move) {
  const Area shown = file_->ShownOf(frame);
  std::uint32_t* kept = kept_.data();
  for (int y = shown.top; y < shown.bottom && shown.Columns() > 0; ++y, kept += shown.Columns())
    move(picture_.Row(y) + shown.left, kept, shown.Columns());
}

void GifReader::Keep(const GifFrame& frame) {
  if (frame.control.disposal != kBringBack) return;
  const Area shown = file_->ShownOf(frame);
  kept_.resize(shown.Columns() * static_cast<std::size_t>(std::max(shown.bottom - shown.top, 0)));
  MoveKept(frame, [](const std::uint32_t* row, std::uint32_t* kept, std::size_t columns) {
    std::copy_n(row, columns, kept);
  });
}

const Raster& GifReader::Frame(int index) {
  if (index < 0 || index >= FrameCount()) index = 0;
  // Back goes over the first frame: each stands on what those before it left.
  if (drawn_ > index || drawn_ < 0) {
    picture_.Resize(Width(), Height());
    drawn_ = -1;
  }
  while (drawn_ < index) {
    if (drawn_ >= 0) Dispose(file_->frames[static_cast<std::size_t>(drawn_)]);
    ++drawn_;
    const GifFrame& frame = file_->frames[static_cast<std::size_t>(drawn_)];
    Keep(frame);
    Draw(frame);
  }
  return picture_;
}

}  // namespace

std::unique_ptr<ImageReader> OpenGif(std::string bytes) {
  auto file = std::make_shared<GifFile>();
  file->bytes = std::move(bytes);
  if (!file->Read()) return nullptr;
  return std::make_unique<GifReader>(std::move(file));
}

}  // namespace lorv
