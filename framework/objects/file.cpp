#include "framework/objects/file.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

// The file in memory: a vector of bytes with a position. It behaves as a file on disk does: the position may
// stand behind the end, where reading gives nothing and writing fills the gap with zeros.

IMPLEMENT_DYNAMIC(CFile, CObject)
IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(const BYTE* bytes, UINT count) {
  if (bytes != nullptr) bytes_.assign(bytes, bytes + count);
}

UINT CMemFile::Read(void* buffer, UINT count) {
  if (position_ >= bytes_.size()) return 0;
  const auto left = bytes_.size() - static_cast<std::size_t>(position_);
  const auto taken = static_cast<UINT>(std::min<std::size_t>(count, left));
  if (taken != 0) std::memcpy(buffer, bytes_.data() + position_, taken);
  position_ += taken;
  return taken;
}

void CMemFile::Write(const void* buffer, UINT count) {
  if (count == 0) return;
  const unsigned long long behind = position_ + count;
  // Fills the gap, if there is one, with zeros; fails before a byte or the position is changed.
  if (behind > bytes_.size()) SetLength(behind);
  std::memcpy(bytes_.data() + position_, buffer, count);
  position_ = behind;
}

unsigned long long CMemFile::Seek(long long offset, UINT from) {
  constexpr long long kMost = 0x7FFFFFFFFFFFFFFF;
  const unsigned long long base = from == begin ? 0 : from == current ? position_ : bytes_.size();
  const auto start = static_cast<long long>(base);
  // A sum beyond the range is no more a place in a file than one in front of it.
  if (from > end || (offset > 0 && offset > kMost - start) || start + offset < 0) {
    AfxThrowFileException(CFileException::badSeek);
  }
  position_ = static_cast<unsigned long long>(start + offset);
  return position_;
}

void CMemFile::SetLength(unsigned long long length) {
  // Room is doubled, so that many small writes stay cheap.
  try {
    if (length > bytes_.capacity()) bytes_.reserve(std::max<std::size_t>(length, bytes_.capacity() * 2));
    bytes_.resize(length);
  } catch (const std::bad_alloc&) {
    AfxThrowMemoryException();
  } catch (const std::length_error&) {
    AfxThrowMemoryException();
  }
}
