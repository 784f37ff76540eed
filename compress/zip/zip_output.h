#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "framework/native/native_types.h"
#include "platform/ports/files.h"

namespace lorv::zip {

// Where an archive is written to: a file, a block of memory that cannot grow, or memory that can.
// Offsets count from the beginning of the archive. One thread at a time.
class Output {
 public:
  explicit Output(std::unique_ptr<File> owned);
  // An open file, kept open and not owned; the archive goes behind what it holds.
  explicit Output(File& file);
  explicit Output(std::span<unsigned char> block) : block_(block), limited_(true) {}
  Output() = default;

  std::uint64_t Position() const { return base_ + buffer_.size(); }
  // Whether bytes written before can be written anew.
  bool CanPatch() const { return file_ == nullptr || seekable_; }

  // Each gives kZipOk, kZipWriteFailed, or kZipMemoryFull where a block is full.
  DWORD Write(std::span<const unsigned char> bytes);
  DWORD Patch(std::uint64_t position, std::span<const unsigned char> bytes);
  DWORD Finish();

  // The archive in memory; empty for one in a file.
  std::span<const unsigned char> Memory() const;

 private:
  DWORD PassOn();
  DWORD PassBy(std::span<const unsigned char> bytes);

  std::unique_ptr<File> owned_;
  File* file_ = nullptr;
  std::uint64_t origin_ = 0;  // of the archive in the file
  bool seekable_ = false;
  std::span<unsigned char> block_;
  bool limited_ = false;
  std::uint64_t base_ = 0;             // what is in the file already
  std::vector<unsigned char> buffer_;  // what is not; all of an archive in memory
};

}  // namespace lorv::zip
