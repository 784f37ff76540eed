#pragma once

#include <ostream>

#include "platform/ports/files.h"

namespace lorv::tool {

// Standard output as an open file: written to and no more. The stream stays the caller's.
class StreamFile : public File {
 public:
  explicit StreamFile(std::ostream& out) : out_(out) {}

  std::int64_t Read(void* /*out*/, std::size_t /*size*/) override { return -1; }
  bool Write(const void* bytes, std::size_t size) override {
    return static_cast<bool>(out_.write(static_cast<const char*>(bytes), static_cast<std::streamsize>(size)));
  }
  bool Seek(std::uint64_t /*position*/) override { return false; }
  std::int64_t Size() override { return -1; }
  bool Flush() override { return static_cast<bool>(out_.flush()); }

 private:
  std::ostream& out_;
};

}  // namespace lorv::tool
