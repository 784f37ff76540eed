#pragma once

#include "platform/ports/files.h"
#include "tools/lorv/screen/progress_bar.h"

namespace lorv::tool {

// A file whose bytes read move a progress bar; all else is passed on unchanged. File and bar are not owned
// and must live as long. One thread at a time.
class WatchedFile : public File {
 public:
  WatchedFile(File& file, ProgressBar& bar) : file_(file), bar_(bar) {}
  std::int64_t Read(void* out, std::size_t size) override {
    const std::int64_t count = file_.Read(out, size);
    if (count > 0) bar_.Advance(static_cast<std::uint64_t>(count));
    return count;
  }
  bool Write(const void* bytes, std::size_t size) override { return file_.Write(bytes, size); }
  bool Seek(std::uint64_t position) override { return file_.Seek(position); }
  std::int64_t Size() override { return file_.Size(); }
  bool Flush() override { return file_.Flush(); }

 private:
  File& file_;
  ProgressBar& bar_;
};

}  // namespace lorv::tool
