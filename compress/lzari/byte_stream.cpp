#include "compress/lzari/byte_stream.h"

#include <algorithm>

// Bytes from and to a file or a block of memory, without a virtual call a byte: the block at hand is read and
// filled inline, and only its end comes here. A sink remembers its first failed write and goes on counting,
// so the coder asks once, at the end.

namespace lorv {

bool ByteSource::Refill() {
  if (file_ == nullptr) return false;
  const std::int64_t count = file_->Read(block_.data(), block_.size());
  rest_ = std::span(block_).first(count > 0 ? static_cast<std::size_t>(count) : 0);
  // An error counts as the end; the coder finds out that bytes are missing.
  return count > 0;
}

std::size_t ByteSource::Read(std::span<unsigned char> to) {
  std::size_t done = 0;
  while (done < to.size() && (!rest_.empty() || Refill())) {
    const std::size_t count = std::min(to.size() - done, rest_.size());
    std::copy_n(rest_.begin(), count, to.begin() + static_cast<std::ptrdiff_t>(done));
    rest_ = rest_.subspan(count);
    done += count;
  }
  return done;
}

void ByteSink::Write(std::span<const unsigned char> bytes) {
  passed_ += bytes.size();
  if (vector_ != nullptr) {
    vector_->insert(vector_->end(), bytes.begin(), bytes.end());
  } else if (!failed_) {
    failed_ = !file_->Write(bytes.data(), bytes.size());
  }
}

bool ByteSink::Flush() {
  const std::size_t count = used_;
  used_ = 0;
  Write(std::span(block_).first(count));
  return !failed_;
}

bool ByteSink::Finish() {
  if (!Flush()) return false;
  // Only the flush may find out that the disk was full.
  return file_ == nullptr || file_->Flush();
}

}  // namespace lorv
