#include "compress/AdRar.h"

#include <array>
#include <cstdio>
#include <limits>
#include <span>
#include <utility>

#include "compress/lzari/byte_order.h"
#include "compress/lzari/lzari_encoder.h"
#include "platform/ports/platform.h"

// The suite's codec object over the LZARI coder: memory and file forms, progress, and what an object keeps
// from one operation to the next. With the guarded decoder that state is part of the behaviour that callers
// know, so it is only cleared where the exact decoder is in force. Failures inside travel as lzari::Failure
// and leave as the interface's `throw 1`.

namespace lzari = lorv::lzari;

namespace {

// Where the length of the code is not known beforehand, as from a pipe.
constexpr auto kUnknown = std::numeric_limits<std::uint64_t>::max();

std::span<const unsigned char> Bytes(const unsigned char* data, int length) {
  if (data == nullptr || length <= 0) return {};
  return {data, static_cast<std::size_t>(length)};
}

std::shared_ptr<lorv::File> OpenNarrow(const char* path, lorv::FileUse use) {
  if (path == nullptr) return nullptr;
  const lorv::Platform& ports = lorv::PortsInForce();
  return ports.files->Open(CString(ports.code_page->ToText(path)), use);
}

}  // namespace

CAdRar::CAdRar() = default;
CAdRar::CAdRar(const CAdRar& other) = default;
CAdRar& CAdRar::operator=(const CAdRar& other) = default;
CAdRar::~CAdRar() = default;

void CAdRar::SetProgress(std::function<void(std::uint32_t)> handler) {
  totals_.handler = std::move(handler);
}

void CAdRar::Error(const char* message) const {
  // A caller that takes the progress also reports failures; they are printed only without one.
  if (!totals_.handler) std::printf("\n%s\n", message);
  throw 1;
}

template <class Operation>
void CAdRar::Run(const Operation& operation) {
  try {
    operation();
  } catch (const lzari::Failure& failure) {
    Error(failure.message);
  }
}

void CAdRar::StartTotals() {
  lzari::Totals fresh;
  // The handler belongs to the object and not to an operation.
  fresh.handler = std::move(totals_.handler);
  totals_ = std::move(fresh);
}

void CAdRar::SetExactDecoding(bool exact) {
  exact_ = exact;
}

void CAdRar::Release() {
  if (output_.empty()) return;
  StartTotals();
  coder_ = {};
  memory_ = false;
  put_ = {};
  get_ = {};
  output_ = {};
}

bool CAdRar::OpenFiles(const char* source, const char* target) {
  CloseFiles();
  // Both are opened even where the first fails: the target is made empty all the same, as callers know it.
  in_file_ = OpenNarrow(source, lorv::FileUse::kRead);
  out_file_ = OpenNarrow(target, lorv::FileUse::kCreate);
  return in_file_ && out_file_;
}

// Closes the files when a file form ends, be it by failure.
class CAdRar::FilesClosed {
 public:
  explicit FilesClosed(CAdRar& owner) : owner_(owner) {}
  ~FilesClosed() { owner_.CloseFiles(); }
  FilesClosed(const FilesClosed&) = delete;
  FilesClosed& operator=(const FilesClosed&) = delete;

 private:
  CAdRar& owner_;
};

void CAdRar::CloseFiles() {
  in_file_.reset();
  out_file_.reset();
}

// What the last operation left is kept where the guarded decoder is in force, as callers know it.
void CAdRar::StartOperation() {
  if (!exact_) return;
  output_.clear();
  StartTotals();
  coder_ = {};
  put_ = {};
  get_ = {};
}

void CAdRar::Encode(std::int64_t size, lorv::ByteSource& source, lorv::ByteSink& sink) {
  if (size < 0) lzari::Error(lzari::kReadError);
  if (size > lzari::kMaxPlainBytes) lzari::Error(lzari::kWriteError);
  lzari::Encoder(tree_, coder_, model_, put_, totals_, sink).Encode(static_cast<std::uint32_t>(size), source);
}

// Behind `code_bytes` of code: the header is included.
void CAdRar::Decode(lorv::ByteSource& source, std::uint64_t code_bytes, lorv::ByteSink& sink) {
  std::array<unsigned char, lzari::kHeaderBytes> header;
  if (source.Read(header) < header.size()) lzari::Error(lzari::kReadError);
  totals_.text_size = lorv::LoadLittle32(header.data());
  const lzari::DecoderParts parts{coder_, model_, row_, totals_, sink};
  if (totals_.text_size == 0) {
    // An empty text ends with its header.
    if (exact_ && source.Get() >= 0) lzari::Error(lzari::kReadError);
    return;
  }
  // The length of a result in memory is given as an int.
  const bool fits_int = !memory_ || totals_.text_size < std::numeric_limits<int>::max();
  if (!fits_int) lzari::Error(lzari::kReadError);
  if (exact_) {
    // Checked before memory is taken: a few damaged bytes must not claim gigabytes.
    const bool believable =
        code_bytes == kUnknown || totals_.text_size <= code_bytes * 8 * lzari::kMostPlainBytesPerBit;
    if (!believable) lzari::Error(lzari::kReadError);
    lzari::DecodeExactly(parts, totals_.text_size, source);
  } else {
    lzari::DecodeGuarded(parts, totals_.text_size, get_, memory_ ? nullptr : &source);
  }
  if (!sink.Finish()) lzari::Error(lzari::kWriteError);
}

void CAdRar::GiveResult(std::size_t length, const unsigned char*& result, int& result_length) {
  if (output_.empty()) return;
  result = output_.data();
  result_length = static_cast<int>(length);
}

void CAdRar::Compress(const unsigned char* data, int length, const unsigned char*& result,
                      int& result_length) {
  StartOperation();
  memory_ = true;
  const auto bytes = Bytes(data, length);
  lorv::ByteSource source(bytes);
  lorv::ByteSink sink(output_);
  Run([&] { Encode(static_cast<std::int64_t>(bytes.size()), source, sink); });
  GiveResult(output_.size(), result, result_length);
}

void CAdRar::UnCompress(const unsigned char* data, int length, const unsigned char*& result,
                        int& result_length) {
  StartOperation();
  memory_ = true;
  const auto bytes = Bytes(data, length);
  lorv::ByteSource source(bytes);
  lorv::ByteSink sink(output_);
  // The guarded decoder reads the buffer itself, from behind the header.
  get_.input = bytes;
  get_.position = lzari::kHeaderBytes;
  Run([&] { Decode(source, bytes.size(), sink); });
  const std::size_t plain_length = output_.size();
  // Behind the data, so that a text comes back terminated; before the pointer is taken, as it may move.
  if (plain_length > 0) output_.push_back(0);
  GiveResult(plain_length, result, result_length);
}

void CAdRar::Compress(const char* source, const char* target) {
  if (!OpenFiles(source, target)) return;
  const FilesClosed at_end(*this);
  Compress(*in_file_, *out_file_);
}

void CAdRar::Compress(lorv::File& source, lorv::File& target) {
  StartOperation();
  memory_ = false;
  lorv::ByteSource from(source);
  lorv::ByteSink to(target);
  Run([&] { Encode(source.Size(), from, to); });
}

void CAdRar::UnCompress(const char* source, const char* target) {
  if (!OpenFiles(source, target)) return;
  const FilesClosed at_end(*this);
  UnCompress(*in_file_, *out_file_);
}

void CAdRar::UnCompress(lorv::File& source, lorv::File& target) {
  StartOperation();
  memory_ = false;
  lorv::ByteSource from(source);
  lorv::ByteSink to(target);
  const std::int64_t size = source.Size();
  Run([&] { Decode(from, size < 0 ? kUnknown : static_cast<std::uint64_t>(size), to); });
}
