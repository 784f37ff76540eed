#include "compress/zip/zip_writer.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "compress/lzari/byte_order.h"
#include "compress/zip/zip_source_attributes.h"
#include "compress/zip/zip_time.h"
#include "platform/ports/platform.h"

// Writing archives. Headers are written first with empty sums and patched when the data are through, or
// followed by a record where the target cannot seek; the directory grows in memory and goes out at the end.
// What cannot fit is refused before its first byte, so a refused entry leaves the archive as it was.

namespace lorv {
namespace {

constexpr std::size_t kReadBlock = 64 * 1024;
// Places in a record of the directory.
constexpr std::size_t kNameBytesAt = 28;
constexpr std::size_t kExtraBytesAt = 30;
constexpr std::size_t kOffsetAt = 42;
constexpr std::string_view kPackedSuffixes[] = {".z", ".zip", ".zoo", ".arc", ".lzh", ".arj", ".gz", ".tgz"};

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool IsPackedAlready(std::string_view name) {
  return std::any_of(std::begin(kPackedSuffixes), std::end(kPackedSuffixes), [&](std::string_view suffix) {
    return name.size() >= suffix.size() &&
           std::equal(suffix.begin(), suffix.end(), name.end() - static_cast<std::ptrdiff_t>(suffix.size()),
                      [](char a, char b) { return a == Lower(b); });
  });
}

// Numbers put behind one another.
class Record {
 public:
  Record& Two(std::uint64_t value) { return Put(value, 2); }
  Record& Four(std::uint64_t value) { return Put(value, 4); }
  Record& One(unsigned char value) { return Put(value, 1); }
  Record& Text(std::string_view text) {
    bytes_.insert(bytes_.end(), text.begin(), text.end());
    return *this;
  }
  const std::vector<unsigned char>& Bytes() const { return bytes_; }

 private:
  Record& Put(std::uint64_t value, int count) {
    for (int i = 0; i < count; ++i) bytes_.push_back(static_cast<unsigned char>(value >> (8 * i)));
    return *this;
  }
  std::vector<unsigned char> bytes_;
};

// The character "\" becomes "/": a byte of that value may be the second one of another character.
void PlainSeparators(std::string& name) {
  const CodePage& code_page = *PortsInForce().code_page;
  for (std::size_t at = 0; at < name.size();) {
    const std::size_t bytes = code_page.FirstCharacter(std::string_view(name).substr(at));
    if (bytes == 1 && name[at] == '\\') name[at] = '/';
    at += bytes;
  }
}

}  // namespace

struct ZipWriter::Entry {
  std::string name;
  std::string unicode_name;
  bool folder = false;
  bool on_disk = false;
  std::uint32_t attributes = zip::kUnixFile;
  FileTimes times;
  std::uint32_t flags = zip::kFlagDescriptor;
  std::uint32_t method = zip::kDeflated;
  std::uint32_t crc = 0;
  std::uint64_t packed_size = 0;
  std::uint64_t size = 0;
  std::uint64_t announced_size = 0;
  std::uint64_t offset = 0;

  Entry(const char* given, std::string_view unicode, bool is_folder)
      : name(given == nullptr ? "" : given), unicode_name(unicode), folder(is_folder) {
    PlainSeparators(name);
    if (folder && !name.ends_with('/')) name += '/';
    if (folder && !unicode.empty() && !unicode.ends_with('/')) unicode_name += '/';
    if (folder || IsPackedAlready(name)) method = zip::kStored;
    const std::int64_t now = PortsInForce().clock->Now();
    times = {now, now, now};
  }

  std::size_t UnicodeBytes() const {
    return unicode_name.empty() ? 0 : 4 + zip::kUnicodeNameHead + unicode_name.size();
  }

  void PutUnicodeName(Record& record) const {
    if (unicode_name.empty()) return;
    const auto* const bytes = reinterpret_cast<const Bytef*>(name.data());
    record.Two(zip::kUnicodeNameExtra).Two(UnicodeBytes() - 4).One(zip::kUnicodeNameVersion);
    record.Four(crc32(0, bytes, static_cast<uInt>(name.size()))).Text(unicode_name);
  }
};

// Raw deflate, its memory kept from entry to entry.
class ZipWriter::Deflater {
 public:
  Deflater()
      // The fastest level.
      : ready_(deflateInit2(&stream_, 1, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) == Z_OK) {
  }
  ~Deflater() { deflateEnd(&stream_); }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  bool Restart() { return ready_ && deflateReset(&stream_) == Z_OK; }

  // Passes packed bytes to `put`, which gives a result code.
  template <class Put>
  DWORD Pack(std::span<const unsigned char> bytes, bool last, const Put& put) {
    // zlib takes its input by a pointer to bytes that it does not change.
    stream_.next_in = const_cast<Bytef*>(bytes.data());  // NOLINT(cppcoreguidelines-pro-type-const-cast)
    stream_.avail_in = static_cast<uInt>(bytes.size());
    do {
      stream_.next_out = out_.data();
      stream_.avail_out = static_cast<uInt>(out_.size());
      if (deflate(&stream_, last ? Z_FINISH : Z_NO_FLUSH) == Z_STREAM_ERROR) return kZipFlation;
      const DWORD result = put(std::span(out_).first(out_.size() - stream_.avail_out));
      if (result != kZipOk) return result;
    } while (stream_.avail_out == 0);
    return kZipOk;
  }

  std::span<unsigned char> InputBlock() { return in_; }

 private:
  z_stream stream_ = {};
  bool ready_;
  std::array<unsigned char, kReadBlock> in_;
  std::array<unsigned char, kReadBlock> out_;
};

ZipWriter::ZipWriter() = default;

ZipWriter::~ZipWriter() {
  // Without its directory an archive is lost whole, with what it holds already.
  if (stage_ == Stage::kOpen) Close();
}

DWORD ZipWriter::Keep(DWORD result) {
  // After one failure the archive takes nothing more: what a failed write left behind is not known.
  if (result != kZipOk) failed_ = true;
  return KeepZipCreation(result);
}

DWORD ZipWriter::Begin() {
  deflater_ = std::make_unique<Deflater>();
  directory_.clear();
  count_ = 0;
  failed_ = false;
  stage_ = Stage::kOpen;
  return Keep(kZipOk);
}

DWORD ZipWriter::Refusal() const {
  if (stage_ == Stage::kNone) return kZipArguments;
  if (stage_ == Stage::kEnded) return kZipEnded;
  return failed_ ? kZipFailedBefore : kZipOk;
}

DWORD ZipWriter::Create(const char* path) {
  if (path == nullptr || stage_ == Stage::kOpen) return Keep(kZipArguments);
  const Platform& ports = PortsInForce();
  auto file = ports.files->Open(CString(ports.code_page->ToText(path)), FileUse::kCreate);
  if (!file) return Keep(kZipNoFile);
  output_.emplace(std::move(file));
  return Begin();
}

DWORD ZipWriter::Create(File& file) {
  if (stage_ == Stage::kOpen) return Keep(kZipArguments);
  output_.emplace(file);
  return Begin();
}

DWORD ZipWriter::Create(void* block, std::size_t size) {
  if (stage_ == Stage::kOpen) return Keep(kZipArguments);
  if (block == nullptr) {
    output_.emplace();
  } else {
    output_.emplace(std::span(static_cast<unsigned char*>(block), size));
  }
  return Begin();
}

DWORD ZipWriter::Add(const char* name, const char* path) {
  if (const DWORD refusal = Refusal(); refusal != kZipOk) return Keep(refusal);
  if (path == nullptr) return Keep(kZipArguments);
  const Platform& ports = PortsInForce();
  const CString wide(ports.code_page->ToText(path));
  const auto facts = ports.files->Facts(wide);
  // A pipe may never end.
  if (!facts || facts->is_stream) return Keep(kZipNoFile);
  const auto file = ports.files->Open(wide, FileUse::kRead);
  return file ? Add(name, *file, &*facts) : Keep(kZipNoFile);
}

DWORD ZipWriter::Add(const char* name, File& file, const FileFacts* facts, std::string_view unicode_name) {
  Entry entry(name, unicode_name, false);
  const std::int64_t size = file.Size();
  if (size > 0) entry.announced_size = static_cast<std::uint64_t>(size);
  if (facts != nullptr && size >= 0) {
    entry.on_disk = true;
    entry.attributes = zip::ExternalAttributes(facts->attributes);
    entry.times = facts->times;
  }
  return AddEntry(entry, &file, {});
}

DWORD ZipWriter::Add(const char* name, const void* data, std::size_t size) {
  if (const DWORD refusal = Refusal(); refusal != kZipOk) return Keep(refusal);
  if (data == nullptr && size > 0) return Keep(kZipArguments);
  Entry entry(name, {}, false);
  entry.announced_size = size;
  return AddEntry(entry, nullptr, std::span(static_cast<const unsigned char*>(data), size));
}

DWORD ZipWriter::AddFolder(const char* name, std::string_view unicode_name) {
  Entry entry(name, unicode_name, true);
  entry.attributes = zip::kFolderAttributes;
  return AddEntry(entry, nullptr, {});
}

DWORD ZipWriter::AddEntry(Entry& entry, File* file, std::span<const unsigned char> memory) {
  if (const DWORD refusal = Refusal(); refusal != kZipOk) return Keep(refusal);
  const bool fits = Obstacle(entry.name, entry.announced_size, entry.unicode_name) == ZipFault::kNone;
  return Keep(fits ? WriteEntry(entry, file, memory) : kZipArguments);
}

bool ZipWriter::CanAppend(const ZipWriter& part) const {
  if (part.stage_ != Stage::kEnded || part.failed_ || !part.output_ || part.output_->Memory().empty())
    return false;
  if (count_ + part.count_ > zip::kMaxEntries) return false;
  // The part has a directory and an end of its own, which make up for those of this archive.
  const std::uint64_t most =
      (output_ ? output_->Position() : 0) + part.output_->Memory().size() + directory_.size();
  return most <= zip::kMaxArchiveBytes;
}

DWORD ZipWriter::Append(const ZipWriter& part) {
  if (const DWORD refusal = Refusal(); refusal != kZipOk) return Keep(refusal);
  if (!CanAppend(part)) return Keep(kZipArguments);
  const std::uint64_t moved = output_->Position();
  const std::span<const unsigned char> whole = part.output_->Memory();
  const DWORD result = output_->Write(whole.first(whole.size() - part.directory_.size() - zip::kEndBytes));
  if (result != kZipOk) return Keep(result);
  const std::size_t begin = directory_.size();
  directory_.insert(directory_.end(), part.directory_.begin(), part.directory_.end());
  for (std::size_t at = begin; at < directory_.size();) {
    unsigned char* const record = &directory_[at];
    StoreLittle32(record + kOffsetAt, static_cast<std::uint32_t>(LoadLittle32(record + kOffsetAt) + moved));
    // The records were written here: they have a name and an extra field, and no comment.
    at += zip::kCentralBytes + LoadLittle16(record + kNameBytesAt) + LoadLittle16(record + kExtraBytesAt);
  }
  count_ += part.count_;
  return Keep(kZipOk);
}

ZipFault ZipWriter::Obstacle(std::string_view name, std::uint64_t size, std::string_view unicode_name) const {
  if (name.empty()) return ZipFault::kNoName;
  if (name.size() >= zip::kNameUnits) return ZipFault::kLongName;
  if (unicode_name.size() > zip::kMaxUnicodeName) return ZipFault::kLongUnicodeName;
  if (size > zip::kMaxEntryBytes) return ZipFault::kLargeEntry;
  if (count_ >= zip::kMaxEntries) return ZipFault::kManyEntries;
  // Deflate adds 5 bytes to 16383 at the worst; the directory must fit behind the data.
  const std::uint64_t most = (output_ ? output_->Position() : 0) + size + size / 1024 + directory_.size() +
                             unicode_name.size() * 2 + 1024;
  return most > zip::kMaxArchiveBytes ? ZipFault::kLargeArchive : ZipFault::kNone;
}

DWORD ZipWriter::WriteLocalHeader(const Entry& entry, bool again) {
  Record record;
  record.Four(zip::kLocalSignature).Two(zip::kVersionNeeded).Two(entry.flags).Two(entry.method);
  record.Four(zip::ToDosTime(entry.times.write)).Four(entry.crc).Four(entry.packed_size).Four(entry.size);
  record.Two(entry.name.size()).Two(zip::kLocalTimesBytes + 4 + entry.UnicodeBytes()).Text(entry.name);
  record.Two(zip::kTimesExtra).Two(zip::kLocalTimesBytes).One(zip::kTimesFlags);
  record.Four(zip::ToUnixTime(entry.times.write)).Four(zip::ToUnixTime(entry.times.access));
  record.Four(zip::ToUnixTime(entry.times.creation));
  entry.PutUnicodeName(record);
  return again ? output_->Patch(entry.offset, record.Bytes()) : output_->Write(record.Bytes());
}

DWORD ZipWriter::WriteDescriptor(const Entry& entry) {
  Record record;
  record.Four(zip::kDescriptorSignature).Four(entry.crc).Four(entry.packed_size).Four(entry.size);
  return output_->Write(record.Bytes());
}

DWORD ZipWriter::WriteEntry(Entry& entry, File* file, std::span<const unsigned char> memory) {
  entry.offset = output_->Position();
  DWORD result = WriteLocalHeader(entry, false);
  if (result == kZipOk) result = WriteData(entry, file, memory);
  if (result != kZipOk) return result;
  // Readers that go from header to header need the sizes in front.
  if (output_->CanPatch()) {
    entry.flags &= ~zip::kFlagDescriptor;
    result = WriteLocalHeader(entry, true);
  } else {
    result = WriteDescriptor(entry);
  }
  if (result != kZipOk) return result;
  Record record;
  record.Four(zip::kCentralSignature).Two(zip::kVersionMadeBy).Two(zip::kVersionNeeded).Two(entry.flags);
  record.Two(entry.method).Four(zip::ToDosTime(entry.times.write)).Four(entry.crc).Four(entry.packed_size);
  record.Four(entry.size).Two(entry.name.size()).Two(zip::kCentralTimesBytes + 4 + entry.UnicodeBytes());
  record.Two(0).Two(0).Two(0);
  record.Four(entry.attributes).Four(entry.offset).Text(entry.name);
  record.Two(zip::kTimesExtra).Two(zip::kCentralTimesBytes).One(zip::kTimesFlags);
  record.Four(zip::ToUnixTime(entry.times.write));
  entry.PutUnicodeName(record);
  directory_.insert(directory_.end(), record.Bytes().begin(), record.Bytes().end());
  ++count_;
  return kZipOk;
}

DWORD ZipWriter::WriteBlock(Entry& entry, std::span<const unsigned char> bytes, bool last) {
  entry.size += bytes.size();
  if (entry.size > zip::kMaxEntryBytes) return kZipWrongSize;
  entry.crc = static_cast<std::uint32_t>(crc32(entry.crc, bytes.data(), static_cast<uInt>(bytes.size())));
  const auto put = [&](std::span<const unsigned char> packed) {
    entry.packed_size += packed.size();
    return output_->Write(packed);
  };
  return entry.method == zip::kStored ? put(bytes) : deflater_->Pack(bytes, last, put);
}

DWORD ZipWriter::WriteData(Entry& entry, File* file, std::span<const unsigned char> memory) {
  if (entry.folder) return kZipOk;
  if (!deflater_->Restart()) return kZipNoMemory;
  for (bool last = false; !last;) {
    std::span<const unsigned char> bytes = memory.first(std::min(memory.size(), kReadBlock));
    if (file == nullptr) {
      memory = memory.subspan(bytes.size());
      last = memory.empty();
    } else {
      const std::int64_t count = file->Read(deflater_->InputBlock().data(), kReadBlock);
      if (count < 0) return kZipReadFailed;
      bytes = deflater_->InputBlock().first(static_cast<std::size_t>(count));
      // A short read is the end. A file that grows meanwhile is packed as far as it was read.
      last = bytes.size() < kReadBlock;
      if (entry.on_disk && entry.size == 0 && zip::LooksExecutable(bytes, *file))
        entry.attributes |= zip::kUnixExecute;
    }
    const DWORD result = WriteBlock(entry, bytes, last);
    if (result != kZipOk) return result;
  }
  return kZipOk;
}

DWORD ZipWriter::WriteDirectory() {
  const std::uint64_t offset = output_->Position();
  DWORD result = output_->Write(directory_);
  Record record;
  record.Four(zip::kEndSignature)
      .Two(0)
      .Two(0)
      .Two(count_)
      .Two(count_)
      .Four(directory_.size())
      .Four(offset)
      .Two(0);
  if (result == kZipOk) result = output_->Write(record.Bytes());
  return result == kZipOk ? output_->Finish() : result;
}

DWORD ZipWriter::Close() {
  if (stage_ != Stage::kOpen) return Keep(Refusal());
  stage_ = Stage::kEnded;
  const DWORD result = Keep(WriteDirectory());
  // The file is closed here; a block of memory stays until the caller has taken it.
  if (output_->Memory().empty()) output_.reset();
  deflater_.reset();
  return result;
}

DWORD ZipWriter::GetMemory(const void*& data, std::size_t& size) const {
  if (stage_ != Stage::kEnded || !output_ || output_->Memory().empty())
    return KeepZipCreation(kZipNotInMemory);
  data = output_->Memory().data();
  size = output_->Memory().size();
  return KeepZipCreation(kZipOk);
}

}  // namespace lorv
