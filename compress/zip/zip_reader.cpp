#include "compress/zip/zip_reader.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "compress/zip/zip_source_attributes.h"
#include "compress/zip/zip_time.h"
#include "framework/text/utf8.h"
#include "platform/ports/platform.h"

// Reading archives: opening, listing, unpacking to files, memory or a taker. An entry is trusted only as far
// as its sum: data go out block by block, bounded by the size that the directory gives, and the result says
// afterwards whether they were right. The inflater's memory is kept from entry to entry.

namespace lorv {
namespace {

constexpr std::size_t kReadBlock = 64 * 1024;

CString WideText(const char* narrow) {
  return CString(PortsInForce().code_page->ToText(narrow));
}

// The name as narrow text of the system.
std::string NarrowName(const zip::DirectoryEntry& entry) {
  if ((entry.flags & zip::kFlagUtf8) == 0) return entry.name;
  return PortsInForce().code_page->ToNarrow(Utf8ToText(entry.name));
}

// Every folder of a path, the topmost first. What cannot be made shows when the file is created.
void MakeFolders(const CString& path) {
  Files& files = *PortsInForce().files;
  for (int i = 1; i < path.GetLength(); ++i) {
    if (path[i] == '/' || path[i] == '\\') files.MakeFolder(path.Left(i));
  }
}

bool HasOwnPlace(const CString& path) {
  return path[0] == '/' || path[0] == '\\' || path[1] == ':' || path.Find(_T("../")) >= 0 ||
         path.Find(_T("..\\")) >= 0;
}

// Characters, not bytes, are without case: the second byte of one may have the value of a letter.
bool SameName(const std::string& a, const std::string& b, bool any_case) {
  return any_case ? WideText(a.c_str()).CompareNoCase(WideText(b.c_str())) == 0 : a == b;
}

bool EndsWithSeparator(const CString& text) {
  return !text.IsEmpty() && (text[text.GetLength() - 1] == '/' || text[text.GetLength() - 1] == '\\');
}

// What keeps an entry from being unzipped, as far as the directory shows.
ZipFault FaultOf(const zip::DirectoryEntry& entry) {
  if (entry.size > zip::kMaxEntryBytes || entry.packed_size > zip::kMaxEntryBytes)
    return ZipFault::kLargeEntry;
  if (entry.name.find('\0') != std::string::npos) return ZipFault::kZeroName;
  if ((entry.flags & zip::kFlagEncrypted) != 0) return ZipFault::kEncrypted;
  const bool known = entry.method == zip::kStored || entry.method == zip::kDeflated;
  return known ? ZipFault::kNone : ZipFault::kMethod;
}

DWORD ResultOf(ZipFault fault) {
  switch (fault) {
    case ZipFault::kNone:
      return kZipOk;
    case ZipFault::kNoMemory:
      return kZipNoMemory;
    case ZipFault::kCut:
    case ZipFault::kData:
    case ZipFault::kTooMuch:
    case ZipFault::kTaker:
      return kZipWriteFailed;
    default:
      return kZipCorrupt;
  }
}

}  // namespace

// Raw inflate, its memory kept from entry to entry.
class ZipReader::Inflater {
 public:
  Inflater() : ready_(inflateInit2(&stream_, -MAX_WBITS) == Z_OK) {}
  ~Inflater() { inflateEnd(&stream_); }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  bool Restart() { return ready_ && inflateReset(&stream_) == Z_OK; }
  bool Ended() const { return ended_; }

  // Unpacks `bytes` and passes on the result; false where the data are wrong or `take` asks to stop.
  template <class Take>
  bool Unpack(std::span<const unsigned char> bytes, const Take& take) {
    // zlib takes its input by a pointer to bytes that it does not change.
    stream_.next_in = const_cast<Bytef*>(bytes.data());  // NOLINT(cppcoreguidelines-pro-type-const-cast)
    stream_.avail_in = static_cast<uInt>(bytes.size());
    do {
      stream_.next_out = out_.data();
      stream_.avail_out = static_cast<uInt>(out_.size());
      const int result = inflate(&stream_, Z_NO_FLUSH);
      ended_ = result == Z_STREAM_END;
      if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) return false;
      if (!take(std::span<const unsigned char>(out_).first(out_.size() - stream_.avail_out))) return false;
    } while (stream_.avail_out == 0 && !ended_);
    return true;
  }

 private:
  z_stream stream_ = {};
  bool ready_;
  bool ended_ = false;
  std::array<unsigned char, zip::kBlock> out_;
};

ZipReader::ZipReader() = default;
ZipReader::~ZipReader() = default;

DWORD ZipReader::Begin() {
  entries_.clear();
  if (!inflater_) inflater_ = std::make_unique<Inflater>();
  fault_ = zip::ReadDirectory(*input_, entries_);
  // An object whose opening failed may be opened again.
  if (fault_ != ZipFault::kNone) input_.reset();
  return KeepZipOpening(fault_ == ZipFault::kNone ? kZipOk : kZipCorrupt);
}

DWORD ZipReader::Open(const char* path) {
  // A second archive would make the indices of the first mean others.
  if (path == nullptr || input_) return KeepZipOpening(kZipArguments);
  auto file = PortsInForce().files->Open(WideText(path), FileUse::kRead);
  if (!file) return KeepZipOpening(kZipNoFile);
  input_ = std::make_unique<zip::Input>(std::move(file));
  return Begin();
}

DWORD ZipReader::Open(File& file) {
  if (input_) return KeepZipOpening(kZipArguments);
  input_ = std::make_unique<zip::Input>(file);
  return Begin();
}

DWORD ZipReader::Open(const void* data, std::size_t size) {
  if ((data == nullptr && size > 0) || input_) return KeepZipOpening(kZipArguments);
  input_ = std::make_unique<zip::Input>(std::span(static_cast<const unsigned char*>(data), size));
  return Begin();
}

DWORD ZipReader::Close() {
  if (!input_) return KeepZipOpening(kZipArguments);
  input_.reset();
  entries_.clear();
  return KeepZipOpening(kZipOk);
}

DWORD ZipReader::Item(int index, const zip::DirectoryEntry*& entry) const {
  if (!input_ || index < 0 || static_cast<std::size_t>(index) >= entries_.size()) return kZipArguments;
  entry = &entries_[static_cast<std::size_t>(index)];
  const ZipFault fault = FaultOf(*entry);
  return fault == ZipFault::kLargeEntry || fault == ZipFault::kZeroName ? kZipCorrupt : kZipOk;
}

// Where the local header is damaged the directory still says what the entry was.
FileTimes ZipReader::TimesOf(const zip::DirectoryEntry& entry) {
  zip::LocalEntry local;
  if (zip::ReadLocal(*input_, entry, local) == kZipOk && local.has_times) return local.times;
  const std::int64_t time = zip::FromDosTime(entry.dos_time);
  return {time, time, time};
}

DWORD ZipReader::Fill(int index, ZipEntry& entry) {
  const zip::DirectoryEntry* item = nullptr;
  DWORD result = Item(index, item);
  if (result != kZipOk) return result;
  const std::string name = NarrowName(*item);
  // Longer names have no room in the caller's record; List gives them.
  if (name.size() >= zip::kNameUnits) return kZipCorrupt;
  const FileTimes times = TimesOf(*item);
  entry = {};
  entry.index = index;
  std::memcpy(entry.name, name.c_str(), name.size() + 1);
  entry.attributes =
      zip::FileAttributes(item->attributes, item->made_by, EndsWithSeparator(WideText(name.c_str())));
  entry.access_time = times.access;
  entry.creation_time = times.creation;
  entry.write_time = times.write;
  entry.compressed_size = static_cast<std::int32_t>(item->packed_size);
  entry.size = static_cast<std::int32_t>(item->size);
  return kZipOk;
}

DWORD ZipReader::GetItem(int index, ZipEntry& entry) {
  if (index != -1) return KeepZipOpening(Fill(index, entry));
  if (!input_) return KeepZipOpening(kZipArguments);
  entry.index = static_cast<int>(entries_.size());
  return KeepZipOpening(kZipOk);
}

DWORD ZipReader::List(int index, ZipListing& listing) {
  const zip::DirectoryEntry* item = nullptr;
  if (Item(index, item) == kZipArguments) return KeepZipOpening(kZipArguments);
  const bool unicode = !item->unicode_name.empty();
  const CString name =
      unicode ? CString::FromUtf8(item->unicode_name) : CString(PortsInForce().code_page->ToText(item->name));
  listing.name = name.ToUtf8();
  listing.attributes = zip::FileAttributes(item->attributes, item->made_by, EndsWithSeparator(name));
  listing.times = TimesOf(*item);
  listing.compressed_size = item->packed_size;
  listing.size = item->size;
  listing.fault = FaultOf(*item);
  return KeepZipOpening(kZipOk);
}

bool ZipReader::HasOverlaps() const {
  std::vector<std::pair<std::uint64_t, std::uint64_t>> places;
  places.reserve(entries_.size());
  for (const zip::DirectoryEntry& entry : entries_) {
    places.emplace_back(entry.offset,
                        entry.offset + zip::kLocalBytes + entry.name.size() + entry.packed_size);
  }
  std::sort(places.begin(), places.end());
  for (std::size_t i = 1; i < places.size(); ++i) {
    if (places[i].first < places[i - 1].second) return true;
  }
  return false;
}

DWORD ZipReader::FindItem(const char* name, bool any_case, ZipEntry& entry) {
  if (name == nullptr || !input_) return KeepZipOpening(kZipArguments);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!SameName(name, NarrowName(entries_[i]), any_case)) continue;
    return KeepZipOpening(Fill(static_cast<int>(i), entry));
  }
  return KeepZipOpening(kZipNotFound);
}

// The data of an entry, block by block, until there is no more of them or of their deflate stream.
ZipFault ZipReader::Copy(const zip::DirectoryEntry& entry, std::uint64_t data, const Taker& take,
                         std::uint32_t& crc) {
  std::uint64_t size = 0;
  ZipFault fault = ZipFault::kData;
  const auto pass = [&](std::span<const unsigned char> bytes) {
    size += bytes.size();
    // Ended at the size announced: a small archive must not fill the disk.
    if (size > entry.size) fault = ZipFault::kTooMuch;
    if (size > entry.size || bytes.empty()) return bytes.empty();
    crc = static_cast<std::uint32_t>(crc32(crc, bytes.data(), static_cast<uInt>(bytes.size())));
    const bool taken = take(bytes);
    if (!taken) fault = ZipFault::kTaker;
    return taken;
  };
  const bool stored = entry.method == zip::kStored;
  std::uint64_t left = entry.packed_size;
  if (!stored && !inflater_->Restart()) return ZipFault::kNoMemory;
  bool ended = stored ? left == 0 : false;
  while (!ended) {
    const std::size_t most = stored ? zip::kBlock : kReadBlock;
    const auto block = input_->Block(data, static_cast<std::size_t>(std::min<std::uint64_t>(most, left)));
    if (block.empty()) return ZipFault::kCut;
    if (!(stored ? pass(block) : inflater_->Unpack(block, pass))) return fault;
    data += block.size();
    left -= block.size();
    ended = stored ? left == 0 : inflater_->Ended();
  }
  // A stream that ends early with the right sum is taken, as other tools do.
  return stored && size != entry.size ? ZipFault::kTooLittle : ZipFault::kNone;
}

DWORD ZipReader::Unzip(int index, const Taker& take) {
  const zip::DirectoryEntry* entry = nullptr;
  if (Item(index, entry) == kZipArguments) return kZipArguments;
  fault_ = FaultOf(*entry);
  zip::LocalEntry local;
  if (fault_ == ZipFault::kNone && zip::ReadLocal(*input_, *entry, local) != kZipOk)
    fault_ = ZipFault::kHeader;
  if (fault_ != ZipFault::kNone) return kZipCorrupt;
  std::uint32_t crc = 0;
  fault_ = Copy(*entry, local.data, take, crc);
  if (fault_ == ZipFault::kNone && crc != entry->crc) fault_ = ZipFault::kSum;
  return ResultOf(fault_);
}

DWORD ZipReader::UnzipItem(int index, const Taker& take) {
  return KeepZipOpening(Unzip(index, take));
}

DWORD ZipReader::UnzipItem(int index, File& file) {
  return UnzipItem(
      index, [&](std::span<const unsigned char> bytes) { return file.Write(bytes.data(), bytes.size()); });
}

DWORD ZipReader::UnzipItem(int index, void* data, std::size_t size) {
  if (data == nullptr && size > 0) return KeepZipOpening(kZipArguments);
  const std::span<unsigned char> room(static_cast<unsigned char*>(data), size);
  std::size_t used = 0;
  bool full = false;
  // What fits is copied even where more comes: the caller gets kZipMore and the beginning.
  const DWORD result = Unzip(index, [&](std::span<const unsigned char> bytes) {
    const std::size_t count = std::min(bytes.size(), room.size() - used);
    std::copy_n(bytes.begin(), count, room.begin() + static_cast<std::ptrdiff_t>(used));
    used += count;
    full = count < bytes.size();
    return !full;
  });
  return KeepZipOpening(full ? kZipMore : result);
}

DWORD ZipReader::UnzipFile(int index, LPCTSTR path) {
  Files& files = *PortsInForce().files;
  const auto file = files.Open(path, FileUse::kCreate);
  if (!file) return kZipNoFile;
  const DWORD result = Unzip(
      index, [&](std::span<const unsigned char> bytes) { return file->Write(bytes.data(), bytes.size()); });
  if (result != kZipOk) return result;
  return file->Flush() ? kZipOk : kZipWriteFailed;
}

DWORD ZipReader::UnzipItem(int index, const char* path) {
  ZipEntry entry;
  DWORD result = path == nullptr ? kZipArguments : Fill(index, entry);
  if (result != kZipOk) return KeepZipOpening(result);
  if ((entry.attributes & kAttributeFolder) != 0) {
    MakeFolders(WideText(entry.name) + _T("/"));
    return KeepZipOpening(kZipOk);
  }
  const CString wide = WideText(path);
  // Folders are made for plain relative names only; a path with a place of its own must exist.
  if (!HasOwnPlace(wide)) MakeFolders(wide);
  result = UnzipFile(index, wide);
  // The file is closed by now: its own times would follow the last write.
  Files& files = *PortsInForce().files;
  if (result == kZipOk) files.SetTimes(wide, {entry.access_time, entry.creation_time, entry.write_time});
  if (result != kZipNoFile) files.SetAttributes(wide, entry.attributes);
  return KeepZipOpening(result);
}

}  // namespace lorv
