#pragma once

#include <bit>
#include <cstdint>

#include "compress/lzari/byte_stream.h"
#include "compress/lzari/lzari_format.h"
#include "compress/lzari/lzari_model.h"

namespace lorv::lzari {

// How many doublings the range allows at once: first those that settle a bit, then those that only defer
// one because the range lies around the middle. After the latter the former cannot occur again.
struct Doublings {
  int settled;
  int deferred;
};

// The state of the arithmetic coder: the range is [low, high), within 17 bits.
struct CoderState {
  std::uint32_t low = 0;
  std::uint32_t high = kQ4;
  std::uint32_t value = 0;
  int shifts = 0;  // pending bits, each the opposite of the next one written

  void Narrow(const Share& share) {
    const std::uint32_t range = high - low;
    high = low + range * share.upper / share.total;
    low += range * share.lower / share.total;
  }

  // Brings the value after the range, with as many of the leading bits of `word` as it was doubled.
  // For a value that lay in the range.
  void TakeBits(const Doublings& doublings, std::uint64_t word) {
    value = (value << doublings.settled | Leading(word, doublings.settled)) & (kQ4 - 1);
    word <<= doublings.settled;
    const std::uint32_t rest = value << doublings.deferred | Leading(word, doublings.deferred);
    value = (value & kQ2) | (rest & (kQ2 - 1));
  }

 private:
  static std::uint32_t Leading(std::uint64_t word, int count) {
    return static_cast<std::uint32_t>(word >> 1 >> (63 - count));
  }
};

// Takes the doublings out of a range that is not empty.
inline Doublings Normalise(CoderState& state) {
  constexpr std::uint32_t kAll = kQ4 - 1;   // 17 bits
  constexpr std::uint32_t kRest = kQ2 - 1;  // all but the first of them
  std::uint32_t first = state.low;
  std::uint32_t end = state.high;
  const int settled = std::countl_zero(first ^ (end - 1)) - (32 - kCodeBits);
  first = (first << settled) & kAll;
  end = (((end << settled) - 1) & kAll) + 1;
  // The first bits now differ; deferred are the places behind them where low has 1 and high has 0.
  const std::uint32_t stops = ~first | (end - 1);
  const int deferred = std::countl_zero(stops << (kCodeBits - 1) | 1U << (kCodeBits - 2));
  state.low = (first << deferred) & kRest;
  state.high = ((((end << deferred) - 1) & kRest) | kQ2) + 1;
  return {settled, deferred};
}

// Bits packed from the most significant one of each byte down.
class BitWriter {
 public:
  // Whole bytes still held back are those of an operation that failed.
  void Start() { count_ %= 8; }

  // The lowest `count` of `bits`, at most 32; the others are 0.
  void Put(std::uint32_t bits, int count, ByteSink& sink) {
    bits_ = bits_ << count | bits;
    count_ += count;
    if (count_ >= 32) Pass(4, sink);
  }

  // `count` times the same bit.
  void Repeat(bool bit, int count, ByteSink& sink) {
    for (; count > 0; count -= 16) {
      const int part = count < 16 ? count : 16;
      Put(bit ? (1U << part) - 1 : 0, part, sink);
    }
  }

  // Passes on what is held back, but for bits that make no whole byte.
  void PassWholeBytes(ByteSink& sink) { Pass(count_ / 8, sink); }

 private:
  void Pass(int bytes, ByteSink& sink) {
    for (; bytes > 0; --bytes, count_ -= 8) sink.Put(static_cast<unsigned char>(bits_ >> (count_ - 8)));
  }

  std::uint64_t bits_ = 0;
  int count_ = 0;  // bits not yet passed on, 31 at most
};

}  // namespace lorv::lzari
