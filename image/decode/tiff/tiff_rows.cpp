#include "image/decode/tiff/tiff_rows.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>

// How the strips and tiles of TIFF files are packed: not at all, by run lengths, by LZW with the high bit
// first, or as a zlib stream.
namespace lorv::tiff {
namespace {

// The stored bytes, in their usual order of bits. Turned as they are taken: many pieces may name the same
// bytes, so that copies of each would be work without end.
class Stored {
 public:
  Stored(std::string_view bytes, bool low_bit_first) : bytes_(bytes), turned_(low_bit_first) {}

  std::size_t Left() const { return bytes_.size(); }
  // -1 behind the end.
  int Byte() {
    if (bytes_.empty()) return -1;
    const auto byte = static_cast<unsigned char>(bytes_.front());
    bytes_.remove_prefix(1);
    return turned_ ? Turned(byte) : byte;
  }
  bool Take(unsigned char* to, std::size_t count) {
    if (count > bytes_.size()) return false;
    std::memcpy(to, bytes_.data(), count);
    bytes_.remove_prefix(count);
    if (turned_) std::transform(to, to + count, to, Turned);
    return true;
  }

 private:
  static unsigned char Turned(unsigned byte) {
    unsigned turned = 0;
    for (unsigned i = 0; i < 8; ++i) turned = turned << 1 | (byte >> i & 1);
    return static_cast<unsigned char>(turned);
  }

  std::string_view bytes_;
  bool turned_;
};

class PlainBytes final : public PackedBytes {
 public:
  explicit PlainBytes(Stored stored) : stored_(stored) {}
  bool Read(unsigned char* to, std::size_t count) override { return stored_.Take(to, count); }

 private:
  Stored stored_;
};

class RunLengths final : public PackedBytes {
 public:
  explicit RunLengths(Stored stored) : stored_(stored) {}

  bool Read(unsigned char* to, std::size_t count) override {
    while (count > 0) {
      if (left_ == 0 && !Begin()) return false;
      const std::size_t now = std::min(left_, count);
      if (repeats_) {
        std::memset(to, repeated_, now);
      } else if (!stored_.Take(to, now)) {
        return false;
      }
      to += now;
      count -= now;
      left_ -= now;
    }
    return true;
  }

 private:
  static constexpr int kNothing = 128;

  // A count of bytes as they stand, or of how often the next one comes.
  bool Begin() {
    int code = kNothing;
    while (code == kNothing) code = stored_.Byte();
    if (code < 0) return false;
    repeats_ = code > kNothing;
    left_ = static_cast<std::size_t>(repeats_ ? 257 - code : code + 1);
    if (repeats_) repeated_ = stored_.Byte();
    return !repeats_ || repeated_ >= 0;
  }

  Stored stored_;
  std::size_t left_ = 0;
  bool repeats_ = false;
  int repeated_ = 0;
};

class LzwBytes final : public PackedBytes {
 public:
  explicit LzwBytes(Stored stored) : stored_(stored) {}

  bool Read(unsigned char* to, std::size_t count) override {
    while (count > 0) {
      if (waiting_ == 0 && !Unpack()) return false;
      const std::size_t now = std::min(waiting_, count);
      const std::size_t from = word_size_ - waiting_;
      std::memcpy(to, word_.data() + from, now);
      waiting_ -= now;
      to += now;
      count -= now;
    }
    return true;
  }

 private:
  static constexpr int kClear = 256;
  static constexpr int kEnd = 257;
  static constexpr int kMostCodes = 4096;

  // -1 at the end of the bytes.
  int Next() {
    while (held_ < width_) {
      const int byte = stored_.Byte();
      if (byte < 0) return -1;
      bits_ = bits_ << 8 | static_cast<unsigned>(byte);
      held_ += 8;
    }
    held_ -= width_;
    return static_cast<int>(bits_ >> held_ & ((1U << width_) - 1));
  }

  // The word of the next code to `word_`.
  bool Unpack() {
    int code = Next();
    while (code == kClear) {
      width_ = 9;
      count_ = kEnd + 1;
      before_ = -1;
      code = Next();
    }
    if (code < 0 || code == kEnd || code > count_ || (code == count_ && before_ < 0)) return false;
    const bool unknown = code == count_;
    if (unknown && count_ >= kMostCodes) return false;
    Spell(unknown ? before_ : code, unknown ? 1 : 0);
    if (unknown) word_[word_size_ - 1] = word_[0];
    Learn(code);
    waiting_ = word_size_;
    return true;
  }
  // The word of a known code, with room for `more` behind it.
  void Spell(int code, std::size_t more) {
    const std::size_t length = code < kClear ? 1 : length_[static_cast<std::size_t>(code)];
    word_size_ = length + more;
    for (std::size_t to = length; to-- > 0;) {
      const auto at = static_cast<std::size_t>(code);
      word_[to] = code < kClear ? static_cast<unsigned char>(code) : last_[at];
      if (code >= kClear) code = prefix_[at];
    }
  }
  // The codes grow one earlier than they must: the file's writers began so.
  void Learn(int code) {
    if (before_ >= 0 && count_ < kMostCodes) {
      const auto at = static_cast<std::size_t>(count_);
      prefix_[at] = static_cast<std::uint16_t>(before_);
      last_[at] = word_[0];
      length_[at] =
          static_cast<std::uint16_t>(1 + (before_ < kClear ? 1 : length_[static_cast<std::size_t>(before_)]));
      ++count_;
      if (count_ >= (1 << width_) - 1 && width_ < 12) ++width_;
    }
    before_ = code;
  }

  Stored stored_;
  std::uint32_t bits_ = 0;
  int held_ = 0;
  int width_ = 9;
  int count_ = kEnd + 1;
  int before_ = -1;
  std::array<std::uint16_t, kMostCodes> prefix_ = {};
  std::array<std::uint16_t, kMostCodes> length_ = {};
  std::array<unsigned char, kMostCodes> last_ = {};
  std::array<unsigned char, kMostCodes> word_ = {};
  std::size_t word_size_ = 0;
  std::size_t waiting_ = 0;  // the end of the word that has not been passed on yet
};

class DeflatedBytes final : public PackedBytes {
 public:
  explicit DeflatedBytes(Stored stored) : stored_(stored) { ready_ = inflateInit(&stream_) == Z_OK; }
  ~DeflatedBytes() override { inflateEnd(&stream_); }

  bool Read(unsigned char* to, std::size_t count) override {
    stream_.next_out = to;
    stream_.avail_out = static_cast<uInt>(count);
    while (ready_ && stream_.avail_out > 0) {
      if (stream_.avail_in == 0 && !Feed()) return false;
      const int result = inflate(&stream_, Z_NO_FLUSH);
      if (result == Z_STREAM_END) break;
      if (result != Z_OK) return false;
    }
    return ready_ && stream_.avail_out == 0;
  }

 private:
  // Through a room of its own: zlib's interface would take the bytes as changeable.
  bool Feed() {
    const std::size_t now = std::min(stored_.Left(), room_.size());
    stored_.Take(room_.data(), now);
    stream_.next_in = room_.data();
    stream_.avail_in = static_cast<uInt>(now);
    return now > 0;
  }

  Stored stored_;
  z_stream stream_ = {};
  bool ready_ = false;
  std::array<unsigned char, 4096> room_ = {};
};

}  // namespace

std::unique_ptr<PackedBytes> OpenPacked(Packing packing, std::string_view bytes, bool low_bit_first) {
  const Stored stored(bytes, low_bit_first);
  switch (packing) {
    case Packing::kRunLengths:
      return std::make_unique<RunLengths>(stored);
    case Packing::kLzw:
      return std::make_unique<LzwBytes>(stored);
    case Packing::kDeflate:
      return std::make_unique<DeflatedBytes>(stored);
    default:
      return std::make_unique<PlainBytes>(stored);
  }
}

}  // namespace lorv::tiff
