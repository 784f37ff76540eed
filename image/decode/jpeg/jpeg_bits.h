#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace lorv::jpeg {

// The bits of a scan. At a marker or the end of the file it gives zeros.
class Bits {
 public:
  Bits(std::string_view bytes, std::size_t at) : bytes_(bytes), at_(at) {}

  // Up to 16.
  int Take(int count) {
    Fill(count);
    held_ -= count;
    return static_cast<int>(bits_ >> held_ & ((1U << count) - 1));
  }
  int Peek(int count) {
    Fill(count);
    return static_cast<int>(bits_ >> (held_ - count) & ((1U << count) - 1));
  }
  void Drop(int count) { held_ -= count; }
  bool IsAtEnd() const { return ended_ && zeros_ > held_; }

  // A value of `count` bits, of which the lower half stands for negative ones.
  int Signed(int count) {
    if (count == 0) return 0;
    const int value = Take(count);
    // Without a branch, as signs are anything: the number below the half is what is added to.
    const int below = (value - (1 << (count - 1))) >> 31;
    return value + (below & (1 - (1 << count)));
  }

  // To behind the next restart mark; false where there is none.
  bool Restart();
  // Not behind the next mark, however many bits are held.
  std::size_t At() const { return at_; }

 private:
  static constexpr int kFill = 32;  // a code and a value of 16 bits each

  void Fill(int count) {
    if (held_ < count) FillUp();
  }
  void FillUp();
  unsigned NextByte();

  std::string_view bytes_;
  std::size_t at_;
  std::uint64_t bits_ = 0;
  int held_ = 0;
  int zeros_ = 0;  // of the bits that were ever held, those behind the end
  bool ended_ = false;
};

// A table of codes of up to 16 bits.
class Codes {
 public:
  // `counts`: how many of each length. False when they are too many for their length.
  bool Set(const std::array<unsigned char, 16>& counts, std::string_view values);
  bool IsSet() const { return set_; }

  // -1 for a code that is none.
  int Next(Bits& bits) const {
    // The longest code is 16 bits; those behind the end are zeros and harmless to look at.
    const int ahead = bits.Peek(kLongest);
    const unsigned quick = quick_[static_cast<std::size_t>(ahead >> (kLongest - kQuickBits))];
    if (quick == 0) return NextLong(bits, ahead);
    bits.Drop(static_cast<int>(quick >> 8));
    return static_cast<int>(quick & 255);
  }

 private:
  static constexpr int kLongest = 16;
  static constexpr int kQuickBits = 9;

  int NextLong(Bits& bits, int ahead) const;

  bool set_ = false;
  std::array<std::uint16_t, 1 << kQuickBits> quick_ = {};  // length << 8 | value; 0: longer
  std::array<int, kLongest + 1> end_ = {};                 // behind the last code of a length, in 16 bits
  std::array<int, kLongest + 1> offset_ = {};
  std::array<unsigned char, 256> values_ = {};
};

}  // namespace lorv::jpeg
