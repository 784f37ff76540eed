#include "framework/objects/archive.h"

#include <algorithm>
#include <array>
#include <memory>

// Storing and loading of numbers, texts and objects in the framework's form for 16-bit text, byte for byte,
// so that streams of the suite's earlier programs load. Streams are not to be trusted: each length is checked
// before it is used, memory grows with the bytes that really come, and nesting ends at kMaxArchiveDepth.

namespace {

// Escapes of a text's length, each read as the whole of its field.
constexpr std::uint64_t kByteEscape = 0xFF;
constexpr std::uint64_t kWordEscape = 0xFFFF;
constexpr std::uint64_t kWideMark = 0xFFFE;  // behind a byte escape: the text has 16-bit units
constexpr std::uint64_t kLongestText = 0x7FFFFFFF;

constexpr std::size_t kUnitsAtOnce = 32768;

// Restores the depth however the scope ends.
class DepthScope {
 public:
  explicit DepthScope(int& depth) : depth_(depth) {
    if (depth_ >= lorv::kMaxArchiveDepth) AfxThrowArchiveException(CArchiveException::badIndex);
    ++depth_;
  }
  ~DepthScope() { --depth_; }
  DepthScope(const DepthScope&) = delete;
  DepthScope& operator=(const DepthScope&) = delete;

 private:
  int& depth_;
};

}  // namespace

CArchive::CArchive(CFile* file, UINT mode) : file_(file), mode_(mode & load) {}

CArchive::~CArchive() {
  // A destructor must not raise; a caller that wants to know how the flush went calls Close.
  try {
    Close();
  } catch (CException* e) {
    e->Delete();
  }
}

void CArchive::Flush() {
  if (file_ != nullptr && IsStoring()) file_->Flush();
}

void CArchive::Close() {
  CFile* file = std::exchange(file_, nullptr);
  if (file != nullptr && IsStoring()) file->Flush();
}

// The cause names what the archive is, not what was asked for: one that loads is "read only".
CFile& CArchive::Opened(UINT mode) const {
  if (file_ == nullptr) AfxThrowArchiveException(CArchiveException::genericException);
  if (mode_ != mode) {
    AfxThrowArchiveException(mode == store ? CArchiveException::readOnly : CArchiveException::writeOnly);
  }
  return *file_;
}

UINT CArchive::Read(void* buffer, UINT count) {
  CFile& file = Opened(load);
  UINT got = 0;
  // A file may give its bytes in pieces.
  while (got < count) {
    const UINT piece = file.Read(static_cast<BYTE*>(buffer) + got, count - got);
    if (piece == 0) break;
    got += piece;
  }
  return got;
}

void CArchive::Write(const void* buffer, UINT count) {
  Opened(store).Write(buffer, count);
}

CArchive& CArchive::PutNumber(std::uint64_t bits, UINT size) {
  std::array<BYTE, 8> bytes{};
  for (UINT i = 0; i < size; ++i) bytes[i] = static_cast<BYTE>(bits >> (8 * i));
  Write(bytes.data(), size);
  return *this;
}

std::uint64_t CArchive::TakeNumber(UINT size) {
  std::array<BYTE, 8> bytes{};
  if (Read(bytes.data(), size) != size) AfxThrowArchiveException(CArchiveException::endOfFile);
  std::uint64_t bits = 0;
  for (UINT i = 0; i < size; ++i) bits |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
  return bits;
}

CArchive& CArchive::operator>>(float& value) {
  value = std::bit_cast<float>(static_cast<std::uint32_t>(TakeNumber(4)));
  return *this;
}

CArchive& CArchive::operator>>(double& value) {
  value = std::bit_cast<double>(TakeNumber(8));
  return *this;
}

void CArchive::PutLength(std::size_t length) {
  // The mark of 16-bit text; narrow text begins with its length instead.
  PutNumber(kByteEscape, 1).PutNumber(kWideMark, 2);
  if (length < kByteEscape) {
    PutNumber(length, 1);
  } else if (length < kWideMark) {
    PutNumber(kByteEscape, 1).PutNumber(length, 2);
  } else {
    PutNumber(kByteEscape, 1).PutNumber(kWordEscape, 2).PutNumber(length, 4);
  }
}

std::size_t CArchive::TakeLength() {
  if (TakeNumber(1) != kByteEscape || TakeNumber(2) != kWideMark) {
    AfxThrowArchiveException(CArchiveException::badSchema);
  }
  std::uint64_t length = TakeNumber(1);
  if (length == kByteEscape) length = TakeNumber(2);
  // A second mark would be a length that no writer gives.
  if (length == kWideMark) AfxThrowArchiveException(CArchiveException::badSchema);
  if (length == kWordEscape) length = TakeNumber(4);
  if (length > kLongestText) AfxThrowArchiveException(CArchiveException::badIndex);
  return static_cast<std::size_t>(length);
}

CArchive& CArchive::operator<<(const CString& text) {
  PutLength(text.View().size());
  // In pieces, so that a long text needs no second copy of itself as bytes.
  std::array<BYTE, 1024> bytes{};
  std::size_t used = 0;
  for (const TCHAR unit : text.View()) {
    bytes[used++] = static_cast<BYTE>(unit & 0xFF);
    bytes[used++] = static_cast<BYTE>(unit >> 8);
    if (used == bytes.size()) Write(bytes.data(), static_cast<UINT>(std::exchange(used, 0)));
  }
  if (used != 0) Write(bytes.data(), static_cast<UINT>(used));
  return *this;
}

CArchive& CArchive::operator>>(CString& text) {
  std::size_t left = TakeLength();
  std::basic_string<TCHAR> units;
  // A stream of ten bytes can claim two gigabytes; memory is taken only for what has come.
  std::vector<BYTE> bytes(2 * std::min(left, kUnitsAtOnce));
  while (left != 0) {
    const std::size_t now = std::min(left, kUnitsAtOnce);
    const UINT count = static_cast<UINT>(2 * now);
    if (Read(bytes.data(), count) != count) AfxThrowArchiveException(CArchiveException::endOfFile);
    for (std::size_t i = 0; i < count; i += 2) {
      units.push_back(static_cast<TCHAR>(bytes[i] | bytes[i + 1] << 8));
    }
    left -= now;
  }
  // Only now: a stream that ends early leaves the caller's text as it was.
  text = CString(std::move(units));
  return *this;
}

CArchive& CArchive::operator<<(const CObject* object) {
  WriteObject(object);
  return *this;
}

void CArchive::WriteObject(const CObject* object) {
  if (object == nullptr) {
    // The empty class name stands for null.
    *this << CString();
    return;
  }
  if (!object->IsSerializable()) AfxThrowNotSupportedException();
  const DepthScope scope(depth_);
  const CRuntimeClass* self = object->GetRuntimeClass();
  *this << CString::FromUtf8(self->m_lpszClassName) << self->m_wSchema;
  // Serialize serves both directions and so cannot be constant; while storing it changes nothing.
  const_cast<CObject*>(object)->Serialize(*this);
}

const CRuntimeClass* CArchive::TakeClass(const CRuntimeClass* wanted) {
  CString name;
  *this >> name;
  if (name.IsEmpty()) return nullptr;
  const CRuntimeClass* found = CRuntimeClass::FromName(name.ToUtf8().c_str());
  // Checked before an object is made: a stream must not choose what runs here.
  if (found == nullptr || (wanted != nullptr && !found->IsDerivedFrom(wanted))) {
    AfxThrowArchiveException(CArchiveException::badClass);
  }
  UINT schema = 0;
  *this >> schema;
  if (schema != found->m_wSchema) AfxThrowArchiveException(CArchiveException::badSchema);
  return found;
}

CObject* CArchive::ReadObject(const CRuntimeClass* wanted) {
  const CRuntimeClass* found = TakeClass(wanted);
  if (found == nullptr) return nullptr;
  const DepthScope scope(depth_);
  // Owned here until it is loaded whole, as Serialize may throw.
  std::unique_ptr<CObject> object(found->CreateObject());
  if (object != nullptr) object->Serialize(*this);
  return object.release();
}
