#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/ports/files.h"
#include "tools/lorv/text/progress_bar.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {

// A file that is written under another name beside its place, and takes its own name only when it is whole.
// Dropped without Keep, nothing of it stays.
class NewFile {
 public:
  // Throws BadInput where the file stands there already and may not be replaced, or cannot be created.
  NewFile(const std::string& path, bool replace);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile();

  File& Stream() { return *file_; }
  // The name under which it is written for now.
  const CString& TemporaryPath() const { return temporary_; }
  // Closes the stream, for one who writes by the temporary path.
  void CloseStream() { file_.reset(); }
  // Gives the file its name; throws BadInput where that cannot be.
  void Keep();

 private:
  std::string path_;
  CString temporary_;
  std::unique_ptr<File> file_;
};

// A file for reading whose progress is shown.
class WatchedFile : public File {
 public:
  WatchedFile(File& file, ProgressBar& bar) : file_(file), bar_(bar) {}
  std::int64_t Read(void* out, std::size_t size) override;
  bool Write(const void* bytes, std::size_t size) override { return file_.Write(bytes, size); }
  bool Seek(std::uint64_t position) override { return file_.Seek(position); }
  std::int64_t Size() override { return file_.Size(); }
  bool Flush() override { return file_.Flush(); }

 private:
  File& file_;
  ProgressBar& bar_;
};

// A path for the narrow calls; throws BadInput for one that has characters without a code there.
std::string NarrowPath(const std::string& path);

// The text of a result of the ZIP layer.
std::string ZipMessage(DWORD code);

}  // namespace lorv::tool
