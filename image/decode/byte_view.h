#pragma once

#include <cstdint>
#include <string_view>

namespace lorv {

// A reading position in the bytes of a file, whose numbers may be of either byte order.
//
// Units: bytes, positions count from 0.
// Edges: a position may lie anywhere. What is read past the end is 0, and Overran() is true from then on, so
//   that a decoder asks once at the end instead of at each number.
// The bytes are not owned and must live as long. One thread at a time. Throws nothing.
//
//   ByteView view("\x01\x02");  view.Low16()  gives 0x0201;  view.Byte()  gives 0, view.Overran() true
class ByteView {
 public:
  explicit ByteView(std::string_view bytes) : bytes_(bytes) {}

  std::size_t Size() const { return bytes_.size(); }
  std::size_t At() const { return at_; }
  std::size_t Left() const { return at_ < bytes_.size() ? bytes_.size() - at_ : 0; }
  bool Overran() const { return overran_; }
  void Seek(std::size_t at) { at_ = at; }
  void Skip(std::size_t count) { at_ = count > Left() ? bytes_.size() : at_ + count; }

  unsigned Byte() {
    if (at_ < bytes_.size()) return static_cast<unsigned char>(bytes_[at_++]);
    overran_ = true;
    return 0;
  }
  // Low byte first, and high byte first.
  unsigned Low16() {
    const unsigned low = Byte();
    return low | Byte() << 8;
  }
  std::uint32_t Low32() {
    const std::uint32_t low = Low16();
    return low | static_cast<std::uint32_t>(Low16()) << 16;
  }
  unsigned High16() {
    const unsigned high = Byte();
    return high << 8 | Byte();
  }
  std::uint32_t High32() {
    const std::uint32_t high = High16();
    return high << 16 | High16();
  }
  // The next bytes, fewer than `count` at the end.
  std::string_view Take(std::size_t count) {
    const std::string_view taken = bytes_.substr(at_ < bytes_.size() ? at_ : bytes_.size(), count);
    overran_ = overran_ || taken.size() < count;
    at_ += taken.size();
    return taken;
  }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;
  bool overran_ = false;
};

// The byte at a position that is there, as a number from 0 to 255.
inline unsigned ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

}  // namespace lorv
