#include "compress/lzari/lzari_decoder.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "compress/lzari/byte_order.h"
#include "compress/lzari/lzari_model_steps.h"
#include "compress/lzari/lzari_positions.h"

// The two decoders over one loop: the guarded one, which gives what the suite's decoder always gave, damage
// and all, and the exact one, which refuses whatever no encoder writes. They differ in where their bits come
// from and in how the coder is renormalised; model, window and arithmetic are the same code.

namespace lorv::lzari {
namespace {

// The guarded decoder's bits, and its way to renormalise.
class GuardedBits {
 public:
  GuardedBits(BitReader& reader, ByteSource* file) : reader_(reader), file_(file) {}

  void Start(CoderState& coder) {
    // The batches below rest on a value within the range, which only a fresh state promises.
    const bool fresh = coder.low == 0 && coder.high == kQ4 && coder.value == 0 && reader_.mask == 0;
    for (int i = 0; i < kCodeBits; ++i) coder.value = 2 * coder.value + GetBit();
    if (!fresh || file_ != nullptr || reader_.input.size() <= kReserve) return;
    bit_ = reader_.position * 8 -
           static_cast<std::size_t>(std::countr_zero(static_cast<unsigned>(reader_.mask)));
    batch_end_ = (reader_.input.size() - kReserve) * 8;
  }

  void Renormalise(CoderState& coder) {
    if (bit_ < batch_end_) [[likely]]
      return Batch(coder);
    LeaveBatches();
    while (Step(coder)) {
    }
  }

  void Finish(const CoderState& /*coder*/) { LeaveBatches(); }

 private:
  std::uint32_t GetBit() {
    if ((reader_.mask >>= 1) == 0) {
      reader_.buffer = NextByte();
      reader_.mask = 128;
    }
    return (reader_.buffer & reader_.mask) != 0 ? 1 : 0;
  }

  // Past the end a buffer gives zeros; a file gives what its end looks like, all ones.
  int NextByte() {
    if (file_ != nullptr) return file_->Get() & 0xFF;
    const std::size_t at = reader_.position++;
    return at < reader_.input.size() ? reader_.input[at] : 0;
  }

  // One doubling; false where the loop is left.
  bool Step(CoderState& coder) {
    // The guard, kept as it is: of a file, or once a buffer has ended, the coder is not renormalised at all.
    if (file_ != nullptr || reader_.position >= reader_.input.size()) return false;
    const bool upper = coder.low >= kQ2;
    const bool middle = !upper && coder.low >= kQ1 && coder.high <= kQ3;
    if (!upper && !middle && coder.high > kQ2) return false;
    const std::uint32_t taken = upper ? kQ2 : (middle ? kQ1 : 0);
    coder.low = 2 * (coder.low - taken);
    coder.high = 2 * (coder.high - taken);
    coder.value = 2 * (coder.value - taken) + GetBit();
    return true;
  }

  void Batch(CoderState& coder) {
    const Doublings doublings = Normalise(coder);
    coder.TakeBits(doublings, LoadBig64(reader_.input.data() + bit_ / 8) << bit_ % 8);
    bit_ += static_cast<std::size_t>(doublings.settled) + static_cast<std::size_t>(doublings.deferred);
  }

  // The reader stands where it would if it had taken the bits one by one.
  void LeaveBatches() {
    if (batch_end_ == 0) return;
    batch_end_ = 0;
    // An operation that follows reads on from this state.
    reader_.position = (bit_ + 7) / 8;
    reader_.mask = 1 << (reader_.position * 8 - bit_);
    reader_.buffer = reader_.input[reader_.position - 1];
  }

  // 34 bits at most are taken at once, out of a word of 64, and none of them may lie in the last byte.
  static constexpr std::size_t kReserve = 8;

  BitReader& reader_;
  ByteSource* file_;
  std::size_t bit_ = 0;        // the next one of the input
  std::size_t batch_end_ = 0;  // up to here bits are taken at once
};

// The exact decoder's bits: bounded by the code, zeros behind it, and no more of those than the encoder's
// last bits can leave to a reader that is 17 bits ahead.
class BoundedBits {
 public:
  explicit BoundedBits(ByteSource& code) : code_(code) { Refill(); }

  void Start(CoderState& coder) {
    coder.value = static_cast<std::uint32_t>(Peek() >> (64 - kCodeBits));
    Advance(kCodeBits);
  }

  void Renormalise(CoderState& coder) {
    const Doublings doublings = Normalise(coder);
    coder.TakeBits(doublings, Peek());
    Advance(static_cast<std::size_t>(doublings.settled) + static_cast<std::size_t>(doublings.deferred));
  }

  // The encoder's end writes one bit and its opposite, then zeros to the end of the byte. So both the value
  // and the length are known here, and a stream where they differ was damaged or cut.
  void Finish(const CoderState& coder) {
    const std::size_t written = bit_ - kCodeBits + 2;
    const bool whole = (written + 7) / 8 == size_ && code_.Get() < 0;
    if (!whole || coder.value != (coder.low < kQ1 ? kQ1 : kQ2)) Error(kReadError);
  }

 private:
  static constexpr std::size_t kBlock = 4096;
  static constexpr std::size_t kReserve = 16;  // more than one step can read

  std::uint64_t Peek() const { return LoadBig64(&block_[bit_ / 8]) << bit_ % 8; }

  void Advance(std::size_t count) {
    bit_ += count;
    if (bit_ > last_bit_) [[unlikely]] {
      if (ended_) Error(kReadError);
      Refill();
    }
  }

  // Keeps the bytes not yet used and reads on behind them.
  void Refill() {
    const std::size_t used = bit_ / 8;
    std::memmove(block_.data(), &block_[used], size_ - used);
    bit_ %= 8;
    size_ -= used;
    size_ += code_.Read(std::span(block_).subspan(size_, kBlock - size_));
    ended_ = size_ < kBlock;
    std::memset(&block_[size_], 0, block_.size() - size_);
    last_bit_ = ended_ ? size_ * 8 + kCodeBits - 2 : (size_ - kReserve) * 8;
  }

  ByteSource& code_;
  std::array<unsigned char, kBlock + kReserve> block_{};
  std::size_t size_ = 0;      // bytes of code in the block
  std::size_t bit_ = 0;       // the next one to be read
  std::size_t last_bit_ = 0;  // up to here reading needs nothing more
  bool ended_ = false;
};

template <class Bits>
class Decoder {
 public:
  Decoder(const DecoderParts& parts, Bits& bits) : parts_(parts), bits_(bits) {}

  // Decodes until `size` is reached, which a last match may overrun; how many bytes came.
  std::uint32_t Run(std::uint32_t size) {
    bits_.Start(parts_.coder);
    parts_.model.StartModel();
    parts_.row.Start();
    std::uint32_t count = 0;
    while (count < size) {
      count += DecodeSymbol();
      parts_.totals.ShowUnpacked(count);
    }
    bits_.Finish(parts_.coder);
    parts_.row.PassOn(parts_.sink);
    return count;
  }

 private:
  std::uint32_t DecodeSymbol() {
    parts_.row.MakeRoom(parts_.sink);
    const int character = DecodeChar();
    if (character < 256) {
      parts_.row.PutLiteral(character);
      return 1;
    }
    const auto length = static_cast<std::uint32_t>(character - 255 + kThreshold);
    parts_.row.PutMatch(static_cast<std::size_t>(DecodePosition()) + 1, length);
    return length;
  }

  int DecodeChar() {
    const int symbol = parts_.model.BinarySearchSym(Point(parts_.model.Total()));
    parts_.coder.Narrow(parts_.model.ShareOf(symbol));
    bits_.Renormalise(parts_.coder);
    const int character = parts_.model.CharacterOf(symbol);
    parts_.model.UpdateModel(symbol);
    return character;
  }

  int DecodePosition() {
    const int position = BinarySearchPos(Point(kPositionTotal));
    parts_.coder.Narrow(PositionShare(position));
    bits_.Renormalise(parts_.coder);
    return position;
  }

  // Where the value lies in the range, as a part of the total. Only a coder that an earlier operation has
  // left in disorder can have an empty range.
  std::uint32_t Point(std::uint32_t total) const {
    const CoderState& coder = parts_.coder;
    const std::uint32_t range = coder.high - coder.low;
    if (range == 0) [[unlikely]]
      Error(kReadError);
    return ((coder.value - coder.low + 1) * total - 1) / range;
  }

  DecoderParts parts_;
  Bits& bits_;
};

}  // namespace

void PlainRow::Start() {
  // What the encoder's window holds at its start: blanks, and zeros where nothing was written yet.
  std::fill_n(row_.begin(), kLongest, static_cast<unsigned char>(0));
  std::fill_n(row_.begin() + kLongest, kWindow - kLongest, static_cast<unsigned char>(' '));
  end_ = kWindow;
}

void PlainRow::PassOn(ByteSink& sink) {
  sink.Write(std::span(row_).subspan(kWindow, end_ - kWindow));
  std::memmove(row_.data(), &row_[end_ - kWindow], kWindow);
  end_ = kWindow;
}

void DecodeGuarded(const DecoderParts& parts, std::uint32_t size, BitReader& reader, ByteSource* file) {
  GuardedBits bits(reader, file);
  parts.totals.PrintUnpackedSum(Decoder(parts, bits).Run(size));
}

void DecodeExactly(const DecoderParts& parts, std::uint32_t size, ByteSource& code) {
  BoundedBits bits(code);
  const std::uint32_t count = Decoder(parts, bits).Run(size);
  // A last match that runs over the end was made by no encoder.
  if (count != size) Error(kReadError);
  parts.totals.PrintUnpackedSum(count);
}

}  // namespace lorv::lzari
