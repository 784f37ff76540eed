#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "compress/lzari/byte_stream.h"
#include "compress/lzari/lzari_coder.h"
#include "compress/lzari/lzari_model.h"
#include "compress/lzari/lzari_totals.h"

namespace lorv::lzari {

// Where the guarded decoder stands in its source. It outlives an operation, as the coder's state does.
struct BitReader {
  std::span<const unsigned char> input;  // a buffer with its header; not owned
  std::size_t position = 0;              // of the next byte
  int buffer = 0, mask = 0;
};

// The decoded bytes, behind the window's worth before them; passed on whenever it is full.
class PlainRow {
 public:
  // The window as the encoder starts with it.
  void Start();
  void PutLiteral(int byte) { row_[end_++] = static_cast<unsigned char>(byte); }
  // `distance` is 1 for the last byte. A match may overlap itself.
  void PutMatch(std::size_t distance, std::size_t length) {
    unsigned char* to = &row_[end_];
    end_ += length;
    if (distance < kPiece) [[unlikely]] {
      for (std::size_t i = 0; i < length; ++i) to[i] = (to - distance)[i];
      return;
    }
    // Most matches are one piece: no loop whose branch could be mispredicted.
    CopyPiece(to, distance);
    for (std::size_t i = kPiece; i < length; i += kPiece) CopyPiece(to + i, distance);
  }
  // Makes room for a match, passing bytes on if need be.
  void MakeRoom(ByteSink& sink) {
    if (end_ > kWindow + kFill) [[unlikely]]
      PassOn(sink);
  }
  void PassOn(ByteSink& sink);

 private:
  static constexpr std::size_t kFill = 16384;
  static constexpr std::size_t kPiece = 16;
  static constexpr std::size_t kSlack = 64;  // a match in whole pieces

  static void CopyPiece(unsigned char* to, std::size_t distance) { std::memcpy(to, to - distance, kPiece); }

  std::array<unsigned char, kWindow + kFill + kSlack> row_{};
  std::size_t end_ = kWindow;
};

// The parts that every decoder works on; all the caller's.
struct DecoderParts {
  CoderState& coder;
  SymbolModel& model;
  PlainRow& row;
  Totals& totals;
  ByteSink& sink;
};

// The guarded decoder. From a buffer (`reader.input`, its header included) renormalising stops once the
// last byte has been fetched; from a file it never runs at all. `file` is behind its header, or null.
void DecodeGuarded(const DecoderParts& parts, std::uint32_t size, BitReader& reader, ByteSource* file);

// The exact decoder: gives back `size` bytes or ends in "Read Error". `code` is behind its header.
void DecodeExactly(const DecoderParts& parts, std::uint32_t size, ByteSource& code);

}  // namespace lorv::lzari
