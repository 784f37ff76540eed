#pragma once

#include "compress/lzari/byte_stream.h"
#include "compress/lzari/lzari_coder.h"
#include "compress/lzari/lzari_model.h"
#include "compress/lzari/lzari_totals.h"
#include "compress/lzari/lzari_tree.h"

namespace lorv::lzari {

// Packs one source into the LZARI stream. All state is the caller's, must live as long, and stays as the
// operation leaves it: that is how one object's operations continue each other. One thread at a time.
class Encoder {
 public:
  Encoder(SearchTree& tree, CoderState& coder, SymbolModel& model, BitWriter& put, Totals& totals,
          ByteSink& sink)
      : tree_(tree), coder_(coder), model_(model), put_(put), totals_(totals), sink_(sink) {}

  // Writes the header and the code of `size` bytes. Throws Failure with "Write Error" where the sink fails,
  // and with "Read Error" where the source holds another number of bytes.
  void Encode(std::uint32_t size, ByteSource& source);

 private:
  int Fill(ByteSource& source);
  void EncodeBytes(ByteSource& source, int ahead);
  int EncodeMatch(int ahead);
  int TakeBytes(ByteSource& source, int count);
  void EncodeChar(int character);
  void EncodePosition(int position);
  void EncodeShare(const Share& share);
  void EncodeEnd();
  void Output(const Doublings& doublings, std::uint32_t bits);
  void FlushBitBuffer();
  void Advance();

  SearchTree& tree_;
  CoderState& coder_;
  SymbolModel& model_;
  BitWriter& put_;
  Totals& totals_;
  ByteSink& sink_;
  int s_ = 0;                   // where the next byte goes
  int r_ = kWindow - kLongest;  // the string to be packed next
};

}  // namespace lorv::lzari
