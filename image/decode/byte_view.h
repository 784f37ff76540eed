#pragma once

#include <cstdint>
#include <string_view>

namespace lorv {

// The bytes of a file. Reading behind their end gives 0 and leaves a mark.
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
  // As many as there are.
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

inline unsigned ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

}  // namespace lorv
