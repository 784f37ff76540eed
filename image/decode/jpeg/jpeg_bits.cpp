#include "image/decode/jpeg/jpeg_bits.h"

#include <algorithm>

// The bits of a scan, and the Huffman codes in them. Both are asked for every coefficient of a picture: most
// codes are found by one look into a table of the next nine bits. Behind the end of the data come zeros, so
// that readers need not ask before each bit; they ask once a block whether what they read was there.

namespace lorv::jpeg {

unsigned Bits::NextByte() {
  if (!ended_ && at_ < bytes_.size()) {
    const unsigned byte = static_cast<unsigned char>(bytes_[at_]);
    // A byte of ones is data only with a 0 behind it; with anything else it begins a mark, where the scan
    // ends.
    const bool is_ones = byte == 0xFF;
    if (!is_ones || (at_ + 1 < bytes_.size() && bytes_[at_ + 1] == 0)) {
      at_ += is_ones ? 2 : 1;
      return byte;
    }
  }
  ended_ = true;
  // Bounded: a damaged scan may be read on for as long as the picture has blocks.
  zeros_ = std::min(zeros_ + 8, 1 << 20);
  return 0;
}

void Bits::FillUp() {
  constexpr std::size_t kWord = 4;
  if (bytes_.size() >= kWord && at_ <= bytes_.size() - kWord) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < kWord; ++i) word = word << 8 | static_cast<unsigned char>(bytes_[at_ + i]);
    // Nearly always none of the four is a byte of ones, and all of them are data.
    const bool has_ones = ((~word - 0x01010101U) & word & 0x80808080U) != 0;
    if (!has_ones) {
      bits_ = bits_ << kFill | word;
      held_ += kFill;
      at_ += kWord;
      return;
    }
  }
  while (held_ < kFill) {
    bits_ = bits_ << 8 | NextByte();
    held_ += 8;
  }
}

bool Bits::Restart() {
  held_ = 0;
  zeros_ = 0;
  ended_ = false;
  for (; at_ + 1 < bytes_.size(); ++at_) {
    const auto second = static_cast<unsigned char>(bytes_[at_ + 1]);
    if (static_cast<unsigned char>(bytes_[at_]) != 0xFF || second == 0 || second == 0xFF) continue;
    // Any other mark ends the scan and is left for the decoder to find.
    if (second < 0xD0 || second > 0xD7) break;
    at_ += 2;
    return true;
  }
  ended_ = true;
  return false;
}

bool Codes::Set(const std::array<unsigned char, 16>& counts, std::string_view values) {
  quick_.fill(0);
  int code = 0;
  int used = 0;
  for (int length = 1; length <= kLongest; ++length) {
    const int count = counts[static_cast<std::size_t>(length - 1)];
    offset_[static_cast<std::size_t>(length)] = used - code;
    // More codes of a length than it has room for: some would stand for two values.
    if (code + count > 1 << length) return false;
    for (int i = 0; i < count; ++i, ++code, ++used) {
      const auto value = static_cast<unsigned char>(values[static_cast<std::size_t>(used)]);
      values_[static_cast<std::size_t>(used)] = value;
      // A short code fills all entries that begin with it, whatever comes behind.
      if (length > kQuickBits) continue;
      const int first = code << (kQuickBits - length);
      std::fill_n(quick_.begin() + first, 1 << (kQuickBits - length),
                  static_cast<std::uint16_t>(length << 8 | value));
    }
    end_[static_cast<std::size_t>(length)] = code << (kLongest - length);
    code <<= 1;
  }
  set_ = true;
  return true;
}

int Codes::NextLong(Bits& bits, int ahead) const {
  // Codes of a length are consecutive numbers, above all shorter ones: the first end that is not
  // reached gives the length.
  for (std::size_t length = 1; length <= kLongest; ++length) {
    if (ahead >= end_[length]) continue;
    bits.Drop(static_cast<int>(length));
    return values_[static_cast<std::size_t>((ahead >> (kLongest - length)) + offset_[length]) & 255];
  }
  return -1;
}

}  // namespace lorv::jpeg
