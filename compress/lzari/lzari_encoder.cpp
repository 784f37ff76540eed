#include "compress/lzari/lzari_encoder.h"

#include "compress/lzari/lzari_model_steps.h"
#include "compress/lzari/lzari_positions.h"

// The encoder: the longest match in the window from the search tree, its length and position by the
// arithmetic coder. Its output is fixed byte for byte, so every choice between equal matches is that of the
// suite's encoder; all speed lies in finding the same choice sooner and in sending settled bits together.

namespace lorv::lzari {

// The first settled bit is followed by the pending ones, its opposites; then come the other settled bits.
inline void Encoder::Output(const Doublings& doublings, std::uint32_t bits) {
  const int settled = doublings.settled;
  if (settled > 0) {
    const int rest = settled - 1;
    if (coder_.shifts + settled <= 32) [[likely]] {
      // 1 and its opposites, or 0 and its: either way the same number is added to the bit alone.
      const std::uint64_t opposites = (std::uint64_t{1} << coder_.shifts) - 1;
      put_.Put(static_cast<std::uint32_t>(bits + (opposites << rest)), coder_.shifts + settled, sink_);
    } else {
      const bool first = (bits >> rest & 1) != 0;
      put_.Put(first ? 1 : 0, 1, sink_);
      put_.Repeat(!first, coder_.shifts, sink_);
      put_.Put(bits & ((1U << rest) - 1), rest, sink_);
    }
    coder_.shifts = 0;
  }
  // These bits are known once the next settled one is: they are its opposites.
  coder_.shifts += doublings.deferred;
}

inline void Encoder::EncodeShare(const Share& share) {
  coder_.Narrow(share);
  // Only a coder left over from a decoder that does not renormalise can come to an empty range.
  if (coder_.high <= coder_.low) Error(kWriteError);
  const std::uint32_t low = coder_.low;
  const Doublings doublings = Normalise(coder_);
  Output(doublings, low >> (kCodeBits - doublings.settled));
}

void Encoder::EncodeChar(int character) {
  const int symbol = model_.SymbolOf(character);
  EncodeShare(model_.ShareOf(symbol));
  model_.UpdateModel(symbol);
}

void Encoder::EncodePosition(int position) {
  EncodeShare(PositionShare(position));
}

void Encoder::FlushBitBuffer() {
  // Seven zeros bring the last bits out, whatever part of a byte they fill.
  put_.Put(0, 7, sink_);
  put_.PassWholeBytes(sink_);
}

void Encoder::EncodeEnd() {
  const bool bit = coder_.low >= kQ1;
  put_.Put(bit ? 1 : 0, 1, sink_);
  put_.Repeat(!bit, coder_.shifts + 1, sink_);
  coder_.shifts = 0;
  FlushBitBuffer();
}

// The first bytes, as many as a match may have; how many there were.
int Encoder::Fill(ByteSource& source) {
  int ahead = 0;
  for (int byte; ahead < kLongest && (byte = source.Get()) >= 0; ++ahead) {
    tree_.PutAhead(r_ + ahead, static_cast<unsigned char>(byte));
  }
  return ahead;
}

void Encoder::Advance() {
  s_ = (s_ + 1) & (kWindow - 1);
  r_ = (r_ + 1) & (kWindow - 1);
}

// Sends the longest match, or else one literal; how many bytes that were.
int Encoder::EncodeMatch(int ahead) {
  tree_.FindMatch(r_);
  const int length = tree_.MatchLength() < ahead ? tree_.MatchLength() : ahead;
  if (length <= kThreshold) {
    EncodeChar(tree_.ByteAt(r_));
    return 1;
  }
  EncodeChar(length + 255 - kThreshold);
  EncodePosition(tree_.MatchPosition() - 1);
  return length;
}

// Moves the window on by up to `count` new bytes; how many there were.
int Encoder::TakeBytes(ByteSource& source, int count) {
  int taken = 0;
  for (int byte; taken < count && (byte = source.Get()) >= 0; ++taken) {
    tree_.DeleteNode(s_);
    tree_.PutByte(s_, static_cast<unsigned char>(byte));
    Advance();
    tree_.InsertNode(r_);
  }
  return taken;
}

void Encoder::EncodeBytes(ByteSource& source, int ahead) {
  while (ahead > 0) {
    const int length = EncodeMatch(ahead);
    const int taken = TakeBytes(source, length);
    totals_.text_size += static_cast<std::uint32_t>(taken);
    totals_.ShowPacked();
    // At the end of the source the window empties; the strings behind the end leave the tree as they would in
    // the middle.
    for (int i = taken; i < length; ++i) {
      tree_.DeleteNode(s_);
      Advance();
      if (--ahead != 0) tree_.InsertNode(r_);
    }
  }
}

void Encoder::Encode(std::uint32_t size, ByteSource& source) {
  put_.Start();
  for (int shift = 0; shift < 32; shift += 8) sink_.Put(static_cast<unsigned char>(size >> shift));
  if (size == 0) {
    totals_.code_size = kHeaderBytes;
    if (!sink_.Finish()) Error(kWriteError);
    return;
  }
  model_.StartModel();
  tree_.InitTree();
  const int ahead = Fill(source);
  totals_.text_size = static_cast<std::uint32_t>(ahead);
  // The blanks in front of the text count as text: the first bytes may match them.
  for (int i = 1; i <= kLongest; ++i) tree_.InsertNode(r_ - i);
  tree_.InsertNode(r_);
  EncodeBytes(source, ahead);
  // A source that breaks off would leave a stream of fewer bytes than its count says.
  if (totals_.text_size != size) Error(kReadError);
  EncodeEnd();
  if (!sink_.Finish()) Error(kWriteError);
  totals_.code_size = static_cast<std::uint32_t>(sink_.Count());
  totals_.PrintPackedSum();
}

}  // namespace lorv::lzari
