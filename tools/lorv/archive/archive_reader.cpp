#include "tools/lorv/archive/archive_reader.h"

#include <algorithm>

#include "platform/ports/platform.h"
#include "tools/lorv/archive/zip_words.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// Opens an archive for the verbs `list`, `test` and `unpack`, and holds it against the limits. An archive
// comes from anywhere: what its directory says is looked at before a byte of it is unpacked.

namespace lorv::tool {
namespace {

constexpr std::uint64_t kMegabyte = 1024 * 1024;
// The ratio counts from this total on: small files of one repeated character are no danger.
constexpr std::uint64_t kRatioFrom = kMegabyte;

}  // namespace

void AddLimitOptions(VerbSyntax& syntax, UnpackLimits& limits) {
  syntax.Value("--max-size", limits.megabytes, "refuse archives of more megabytes, unpacked (4096)");
  syntax.Value("--max-ratio", limits.ratio, "refuse archives that grow to more times their size (200)");
}

ArchiveReader::ArchiveReader(const std::string& path, Again /*again*/) : path_(path) {
  Open();
}

ArchiveReader::ArchiveReader(const std::string& path) : path_(path) {
  Open();
  ZipEntry count;
  zip_.GetItem(-1, count);
  items_.reserve(static_cast<std::size_t>(count.index));
  for (int i = 0; i < count.index; ++i) {
    Item& item = items_.emplace_back();
    item.index = i;
    zip_.List(i, item.listing);
    item.name = item.listing.name;
    // Some programs on Windows write folders with "\" in spite of the format.
    std::replace(item.name.begin(), item.name.end(), '\\', '/');
    // Sizes of entries that cannot be unpacked are anything.
    if (item.listing.fault == ZipFault::kNone) total_ += item.listing.size;
  }
}

void ArchiveReader::Open() {
  Files& files = *PortsInForce().files;
  const CString wide = CString::FromUtf8(path_);
  const auto facts = files.Facts(wide);
  // The directory stands at the end: what cannot be read to and fro never shows one.
  if (facts && facts->is_stream)
    throw BadInput(Say("{} is a pipe or a device: an archive is read to and fro", {Quoted(path_)}));
  file_ = files.Open(wide, FileUse::kRead);
  if (!file_) throw BadInput(Say("{} cannot be opened", {Quoted(path_)}));
  if (zip_.Open(*file_) != kZipOk) throw BadInput(Quoted(path_) + ": " + WordsFor(zip_.LastFault()));
}

std::unique_ptr<ArchiveReader> ArchiveReader::OpenAgain() const {
  std::unique_ptr<ArchiveReader> again(new ArchiveReader(path_, Again{}));
  // Another file may have taken the path since; two threads would then unpack from two archives.
  return again->zip_.HasDirectoryOf(zip_) ? std::move(again) : nullptr;
}

void ArchiveReader::CheckLimits(const UnpackLimits& limits) const {
  if ((total_ + kMegabyte - 1) / kMegabyte > limits.megabytes) {
    throw BadInput(
        Say("{} unpacks to {} MB, more than {}; --max-size raises the limit",
            {Quoted(path_), std::to_string(total_ / kMegabyte), std::to_string(limits.megabytes)}));
  }
  // Of the file's own size and not of the sizes in its directory, which say what their maker wants.
  const auto packed = static_cast<std::uint64_t>(std::max<std::int64_t>(file_->Size(), 1));
  if (total_ > kRatioFrom && total_ / packed > limits.ratio) {
    throw BadInput(Say("{} unpacks to {} times its size, more than {}; --max-ratio raises the limit",
                       {Quoted(path_), std::to_string(total_ / packed), std::to_string(limits.ratio)}));
  }
  // Entries that share their data unpack to far more than either limit could foresee.
  if (zip_.HasOverlaps()) {
    throw BadInput(
        Say("{}: its entries lie in one another, as in archives made to do harm", {Quoted(path_)}));
  }
}

}  // namespace lorv::tool
