#include "tools/lorv/verbs/archive_output.h"

#include "compress/zip/zip_result.h"
#include "platform/ports/platform.h"

namespace lorv::tool {

NewFile::NewFile(const std::string& path, bool replace)
    : path_(path), temporary_(CString::FromUtf8(path) + _T(".writing")) {
  Files& files = *PortsInForce().files;
  if (!replace && files.Exists(CString::FromUtf8(path))) {
    throw BadInput("\"" + path + "\" is there already; --force replaces it");
  }
  file_ = files.Open(temporary_, FileUse::kCreate);
  if (!file_) throw BadInput("\"" + path + "\" cannot be created");
}

NewFile::~NewFile() {
  file_.reset();
  if (!temporary_.IsEmpty()) PortsInForce().files->Remove(temporary_);
}

void NewFile::Keep() {
  const bool written = !file_ || file_->Flush();
  file_.reset();
  if (!written || !PortsInForce().files->Replace(temporary_, CString::FromUtf8(path_))) {
    throw BadInput("\"" + path_ + "\" cannot be written");
  }
  temporary_.Empty();
}

std::int64_t WatchedFile::Read(void* out, std::size_t size) {
  const std::int64_t count = file_.Read(out, size);
  if (count > 0) bar_.Advance(static_cast<std::uint64_t>(count));
  return count;
}

std::string NarrowPath(const std::string& path) {
  const CodePage& code_page = *PortsInForce().code_page;
  const CString wide = CString::FromUtf8(path);
  std::string narrow = code_page.ToNarrow(wide.View());
  if (CString(code_page.ToText(narrow)) != wide) {
    throw BadInput("\"" + path + "\" has characters that the suite's code page 936 does not");
  }
  return narrow;
}

std::string ZipMessage(DWORD code) {
  char text[80];
  FormatZipMessage(code, text, sizeof text);
  return text;
}

}  // namespace lorv::tool
