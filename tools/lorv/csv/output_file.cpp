#include "tools/lorv/csv/output_file.h"

#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// Collects text into blocks on its way to a file: tables are written cell by cell, and a call of the system
// for each would take longer than the work itself.

namespace lorv::tool {
namespace {

constexpr std::size_t kHeldBack = 1 << 16;

}  // namespace

OutputFile::OutputFile(const std::string& path, std::ostream& standard_output)
    : name_(path), file_(path, true, standard_output) {}

void OutputFile::Flush() {
  if (!file_.Stream().Write(held_.data(), held_.size())) {
    throw BadInput(
        Say("{} cannot be written: the disk is full or failed, or what reads it has ended", {Quoted(name_)}));
  }
  held_.clear();
}

void OutputFile::Write(std::string_view bytes) {
  held_ += bytes;
  if (held_.size() >= kHeldBack) Flush();
}

void OutputFile::Commit() {
  Flush();
  file_.Keep();
}

}  // namespace lorv::tool
