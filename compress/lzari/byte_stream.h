#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/ports/files.h"

namespace lorv {

// Bytes read one by one from a block of memory or from an open file, which stays the caller's.
// An object belongs to one thread at a time; the source must outlive its use.
class ByteSource {
 public:
  ByteSource() = default;
  explicit ByteSource(std::span<const unsigned char> memory) : rest_(memory) {}
  explicit ByteSource(File& file) : file_(&file) {}

  // The next byte; -1 at the end.
  int Get() {
    if (rest_.empty() && !Refill()) return -1;
    const int byte = rest_.front();
    rest_ = rest_.subspan(1);
    return byte;
  }

  // As many bytes as there are, up to the size asked for.
  std::size_t Read(std::span<unsigned char> to);

 private:
  bool Refill();

  std::span<const unsigned char> rest_;
  File* file_ = nullptr;
  std::array<unsigned char, 16384> block_;
};

// Bytes collected in a block and passed on to a growing vector or an open file, both the caller's.
class ByteSink {
 public:
  explicit ByteSink(std::vector<unsigned char>& vector) : vector_(&vector) {}
  explicit ByteSink(File& file) : file_(&file) {}

  void Put(unsigned char byte) {
    if (used_ == block_.size()) Flush();
    block_[used_++] = byte;
  }
  // All bytes at once, past the block.
  void Write(std::span<const unsigned char> bytes);
  // Passes the block on. False from the first failed write of a file on.
  bool Flush();
  // Flush, and the file's own buffer too: nothing is known to be written before this.
  bool Finish();
  // Bytes put so far.
  std::uint64_t Count() const { return passed_ + used_; }

 private:
  std::vector<unsigned char>* vector_ = nullptr;
  File* file_ = nullptr;
  bool failed_ = false;
  std::uint64_t passed_ = 0;
  std::size_t used_ = 0;
  std::array<unsigned char, 16384> block_;
};

}  // namespace lorv
