#include "compress/zip/zip_directory.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "compress/lzari/byte_order.h"
#include "compress/zip/zip_format.h"
#include "compress/zip/zip_result.h"
#include "compress/zip/zip_time.h"

// Reads the directory of an archive and the headers in front of entries. Everything here comes from files
// that may be damaged or hostile: no number is used before it is held against the size of the file, and
// memory is taken for what the file can really hold.

namespace lorv::zip {
namespace {

using Bytes = std::span<const unsigned char>;

// Where the directory says that it lies.
struct End {
  bool alone = true;           // the archive is no part of several
  std::uint64_t position = 0;  // behind the directory
  std::uint64_t size = 0;
  std::uint64_t offset = 0;
};

// The end record, searched backwards: a comment may stand behind it, and may be cut short.
std::optional<std::uint64_t> FindEnd(Input& input) {
  const std::uint64_t length = std::min<std::uint64_t>(input.Size(), kEndBytes + kMaxComment);
  std::vector<unsigned char> tail(static_cast<std::size_t>(length));
  if (length < kEndBytes || !input.ReadAt(input.Size() - length, tail)) return std::nullopt;
  for (std::size_t at = tail.size() - kEndBytes + 1; at-- > 0;) {
    if (LoadLittle32(&tail[at]) == kEndSignature) return input.Size() - length + at;
  }
  return std::nullopt;
}

// The record of large archives stands in front of the end record, if there is one.
void TakeLargeEnd(Input& input, End& end) {
  constexpr std::uint64_t kBoth = kLocator64Bytes + kEnd64Bytes;
  std::array<unsigned char, kBoth> bytes{};
  if (end.position < kBoth || !input.ReadAt(end.position - kBoth, bytes)) return;
  if (LoadLittle32(&bytes[kEnd64Bytes]) != kLocator64Signature ||
      LoadLittle32(bytes.data()) != kEnd64Signature)
    return;
  end = {end.alone, end.position - kBoth, LoadLittle64(&bytes[40]), LoadLittle64(&bytes[48])};
}

// Calls `take` with id and contents of each extra field that is whole.
template <class Take>
void ForEachExtra(Bytes extra, const Take& take) {
  while (extra.size() >= 4) {
    const std::size_t length = LoadLittle16(&extra[2]);
    // A field that claims more than is left ends the list; what came before it counts.
    if (length > extra.size() - 4) return;
    take(LoadLittle16(extra.data()), extra.subspan(4, length));
    extra = extra.subspan(4 + length);
  }
}

// Sizes and offset stand in the field for those that the header marks as too large for it, in this order.
void TakeLargeSizes(Bytes field, DirectoryEntry& entry) {
  for (std::uint64_t* number : {&entry.size, &entry.packed_size, &entry.offset}) {
    if (*number != 0xFFFFFFFF || field.size() < 8) continue;
    *number = LoadLittle64(field.data());
    field = field.subspan(8);
  }
}

// The field belongs to the narrow name whose sum it bears: a tool that does not know it may have changed
// that.
void TakeUnicodeName(Bytes field, DirectoryEntry& entry) {
  if (field.size() <= kUnicodeNameHead || field[0] != kUnicodeNameVersion) return;
  const auto* const narrow = reinterpret_cast<const Bytef*>(entry.name.data());
  const auto sum = crc32(0, narrow, static_cast<uInt>(entry.name.size()));
  const Bytes name = field.subspan(kUnicodeNameHead);
  if (LoadLittle32(&field[1]) != sum || std::find(name.begin(), name.end(), 0) != name.end()) return;
  entry.unicode_name.assign(name.begin(), name.end());
}

// The entry at the beginning of `bytes`, which are then what stands behind it.
bool TakeEntry(Bytes& bytes, DirectoryEntry& entry) {
  if (bytes.size() < kCentralBytes || LoadLittle32(bytes.data()) != kCentralSignature) return false;
  const unsigned char* const from = bytes.data();
  const std::size_t name = LoadLittle16(from + 28);
  const std::size_t extra = LoadLittle16(from + 30);
  const std::size_t comment = LoadLittle16(from + 32);
  if (bytes.size() < kCentralBytes + name + extra + comment) return false;
  entry.made_by = LoadLittle16(from + 4);
  entry.flags = LoadLittle16(from + 8);
  entry.method = LoadLittle16(from + 10);
  entry.dos_time = LoadLittle32(from + 12);
  entry.crc = LoadLittle32(from + 16);
  entry.packed_size = LoadLittle32(from + 20);
  entry.size = LoadLittle32(from + 24);
  entry.attributes = LoadLittle32(from + 38);
  entry.offset = LoadLittle32(from + 42);
  entry.name.assign(reinterpret_cast<const char*>(from + kCentralBytes), name);
  if ((entry.flags & kFlagUtf8) != 0) entry.unicode_name = entry.name;
  ForEachExtra(bytes.subspan(kCentralBytes + name, extra), [&](std::uint32_t id, Bytes field) {
    if (id == kSizesExtra) TakeLargeSizes(field, entry);
    if (id == kUnicodeNameExtra) TakeUnicodeName(field, entry);
  });
  bytes = bytes.subspan(kCentralBytes + name + extra + comment);
  return true;
}

void TakeTimes(Bytes field, LocalEntry& local) {
  if (field.empty()) return;
  const unsigned flags = field[0];
  field = field.subspan(1);
  const std::pair<unsigned, std::int64_t*> times[] = {
      {1, &local.times.write}, {2, &local.times.access}, {4, &local.times.creation}};
  for (const auto& [flag, time] : times) {
    if ((flags & flag) == 0 || field.size() < 4) continue;
    *time = FromUnixTime(LoadLittle32(field.data()));
    local.has_times = true;
    field = field.subspan(4);
  }
}

}  // namespace

void Input::Measure() {
  const std::int64_t size = file_->Size();
  size_ = size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

bool Input::ReadAt(std::uint64_t position, std::span<unsigned char> to) {
  if (position > size_ || to.size() > size_ - position) return false;
  if (file_ == nullptr) {
    const Bytes from = memory_.subspan(static_cast<std::size_t>(position), to.size());
    std::copy(from.begin(), from.end(), to.begin());
    return true;
  }
  if (at_ != position && !file_->Seek(position)) return false;
  const bool whole = file_->Read(to.data(), to.size()) == static_cast<std::int64_t>(to.size());
  // After a short read the position of the file is not known: the next read seeks.
  at_ = whole ? position + to.size() : ~std::uint64_t{0};
  return whole;
}

Bytes Input::Block(std::uint64_t position, std::size_t most) {
  if (position >= size_) return {};
  const auto length = static_cast<std::size_t>(std::min<std::uint64_t>(most, size_ - position));
  if (file_ == nullptr) return memory_.subspan(static_cast<std::size_t>(position), length);
  if (block_.size() < length) block_.resize(length);
  if (!ReadAt(position, std::span(block_).first(length))) return {};
  return Bytes(block_).first(length);
}

ZipFault ReadDirectory(Input& input, std::vector<DirectoryEntry>& entries) {
  const auto position = FindEnd(input);
  std::array<unsigned char, kEndBytes> record{};
  if (!position || !input.ReadAt(*position, record)) return ZipFault::kNoArchive;
  const std::uint32_t part = LoadLittle16(&record[4]);
  End end = {part == 0 || part == 0xFFFF, *position, LoadLittle32(&record[12]), LoadLittle32(&record[16])};
  TakeLargeEnd(input, end);
  const ZipFault damaged = end.alone ? ZipFault::kDirectory : ZipFault::kParts;
  // The directory would begin in front of the file.
  if (end.size > end.position) return damaged;
  // The archive need not begin where its file does: offsets are moved by as much as the directory lies
  // elsewhere than it says. Unsigned, so that a file cut at its front moves them back.
  const std::uint64_t begin = end.position - end.size;
  const std::uint64_t moved = begin - end.offset;
  std::vector<unsigned char> directory(static_cast<std::size_t>(end.size));
  if (!input.ReadAt(begin, directory)) return damaged;
  std::vector<DirectoryEntry> found;
  for (Bytes rest = directory; !rest.empty();) {
    if (!TakeEntry(rest, found.emplace_back())) return damaged;
    found.back().offset += moved;
  }
  // Only a whole directory counts: the caller's entries stay as they were.
  entries = std::move(found);
  return ZipFault::kNone;
}

DWORD ReadLocal(Input& input, const DirectoryEntry& entry, LocalEntry& local) {
  std::array<unsigned char, kLocalBytes> header{};
  if (!input.ReadAt(entry.offset, header) || LoadLittle32(header.data()) != kLocalSignature)
    return kZipCorrupt;
  const std::size_t name = LoadLittle16(&header[26]);
  const std::size_t extra = LoadLittle16(&header[28]);
  std::vector<unsigned char> rest(name + extra);
  if (!input.ReadAt(entry.offset + kLocalBytes, rest)) return kZipCorrupt;
  // Two names for one entry: what was checked by one must not be unpacked by the other.
  if (std::string_view(reinterpret_cast<const char*>(rest.data()), name) != entry.name) return kZipCorrupt;
  local.data = entry.offset + kLocalBytes + rest.size();
  ForEachExtra(Bytes(rest).subspan(name), [&](std::uint32_t id, Bytes field) {
    if (id == kTimesExtra) TakeTimes(field, local);
  });
  return kZipOk;
}

}  // namespace lorv::zip
