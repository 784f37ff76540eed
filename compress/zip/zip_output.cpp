#include "compress/zip/zip_output.h"

#include <algorithm>
#include <utility>

#include "compress/zip/zip_result.h"

// Where an archive goes: a file, a growing block of memory, or the caller's block of fixed size. Small
// records are gathered, as an archive of small files is mostly headers. Positions count from where the
// archive begins, which may be in the middle of a file.

namespace lorv::zip {
namespace {

constexpr std::size_t kPassOnAt = 64 * 1024;

}  // namespace

Output::Output(std::unique_ptr<File> owned) : Output(*owned) {
  owned_ = std::move(owned);
}

Output::Output(File& file) : file_(&file) {
  const std::int64_t size = file.Size();
  // A pipe has no size; sizes then stand behind the data and not in front of them.
  seekable_ = size >= 0 && file.Seek(static_cast<std::uint64_t>(size));
  if (seekable_) origin_ = static_cast<std::uint64_t>(size);
  buffer_.reserve(kPassOnAt);
}

DWORD Output::Write(std::span<const unsigned char> bytes) {
  // Refused before anything is copied, so the caller's block never holds half a record.
  if (limited_ && bytes.size() > block_.size() - buffer_.size()) return kZipMemoryFull;
  if (file_ != nullptr && buffer_.size() + bytes.size() > kPassOnAt) {
    const DWORD result = PassOn();
    if (result != kZipOk) return result;
    if (bytes.size() > kPassOnAt) return PassBy(bytes);
  }
  buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
  return kZipOk;
}

// What is larger than all that is gathered need not be copied.
DWORD Output::PassBy(std::span<const unsigned char> bytes) {
  if (!file_->Write(bytes.data(), bytes.size())) return kZipWriteFailed;
  base_ += bytes.size();
  return kZipOk;
}

DWORD Output::PassOn() {
  if (!file_->Write(buffer_.data(), buffer_.size())) return kZipWriteFailed;
  base_ += buffer_.size();
  buffer_.clear();
  return kZipOk;
}

DWORD Output::Patch(std::uint64_t position, std::span<const unsigned char> bytes) {
  // Still in memory, as for every small file.
  if (position >= base_) {
    std::copy(bytes.begin(), bytes.end(), buffer_.begin() + static_cast<std::ptrdiff_t>(position - base_));
    return kZipOk;
  }
  const DWORD result = PassOn();
  if (result != kZipOk) return result;
  const bool done = file_->Seek(origin_ + position) && file_->Write(bytes.data(), bytes.size()) &&
                    file_->Seek(origin_ + base_);
  return done ? kZipOk : kZipWriteFailed;
}

DWORD Output::Finish() {
  if (limited_) std::copy(buffer_.begin(), buffer_.end(), block_.begin());
  if (file_ == nullptr) return kZipOk;
  const DWORD result = PassOn();
  if (result != kZipOk) return result;
  return file_->Flush() ? kZipOk : kZipWriteFailed;
}

std::span<const unsigned char> Output::Memory() const {
  return file_ == nullptr ? std::span<const unsigned char>(buffer_) : std::span<const unsigned char>();
}

}  // namespace lorv::zip
