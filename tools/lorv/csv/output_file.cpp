#include "tools/lorv/csv/output_file.h"

#include <chrono>

#include "platform/ports/platform.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {
namespace {

constexpr std::size_t kHeldBack = 1 << 16;

// A name that no other run uses at this time.
CString NameBeside(const CString& path) {
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  return path + CString::FromUtf8("." + std::to_string(now) + ".part");
}

}  // namespace

OutputFile::OutputFile(const std::string& path)
    : name_(path), path_(CString::FromUtf8(path)), beside_(NameBeside(path_)) {
  Files& files = *PortsInForce().files;
  const auto facts = files.Facts(path_);
  if (facts && facts->IsFolder()) throw BadInput(path + " cannot be written: it is a folder");
  file_ = files.Open(beside_, FileUse::kCreate);
  if (file_ == nullptr) {
    throw BadInput(path + " cannot be written: its folder is missing or may not be written to");
  }
}

OutputFile::~OutputFile() {
  if (file_ == nullptr) return;
  file_.reset();
  PortsInForce().files->Remove(beside_);
}

void OutputFile::Fail() const {
  throw BadInput(name_ + " cannot be written: the disk is full or failed");
}

void OutputFile::Flush() {
  if (!file_->Write(held_.data(), held_.size())) Fail();
  held_.clear();
}

void OutputFile::Write(std::string_view bytes) {
  held_ += bytes;
  if (held_.size() >= kHeldBack) Flush();
}

void OutputFile::Commit() {
  Flush();
  if (!file_->Flush()) Fail();
  file_.reset();
  if (PortsInForce().files->Replace(beside_, path_)) return;
  PortsInForce().files->Remove(beside_);
  throw BadInput(name_ + " cannot be written: another program holds it, or it is read-only");
}

}  // namespace lorv::tool
