#pragma once

#include <cstddef>
#include <cstdint>

// Where random cases take their choices from: a seeded sequence in the ordinary suite, the bytes of an input
// under a fuzzing engine. The same makers serve both.
namespace lorv::test {

class ChoiceSource {
 public:
  explicit ChoiceSource(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15u + 1) {}
  ChoiceSource(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes), size_(size) {}

  // 0 to count - 1; always 0 once the bytes have run out.
  std::size_t Below(std::size_t count) { return count < 2 ? 0 : static_cast<std::size_t>(Next() % count); }
  // One of `count` times on the average.
  bool OneIn(std::size_t count) { return Below(count) == 0; }

  std::uint64_t Bits() {
    std::uint64_t bits = 0;
    for (int i = 0; i < 4; ++i) bits = (bits << 16) | (Next() & 0xFFFF);
    return bits;
  }

  template <class T, std::size_t N>
  const T& From(const T (&table)[N]) {
    return table[Below(N)];
  }

 private:
  std::uint64_t Next() {
    if (bytes_ == nullptr) {
      state_ ^= state_ << 13;
      state_ ^= state_ >> 7;
      state_ ^= state_ << 17;
      return state_ >> 11;
    }
    std::uint64_t value = 0;
    for (int i = 0; i < 2; ++i) {
      value <<= 8;
      if (size_ != 0) {
        value |= *bytes_++;
        --size_;
      }
    }
    return value;
  }

  std::uint64_t state_ = 1;
  const std::uint8_t* bytes_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace lorv::test
