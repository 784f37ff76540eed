#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>

#include "framework/objects/file.h"

namespace lorv {

// How deep objects may be nested in one another in a stored stream.
constexpr int kMaxArchiveDepth = 64;

}  // namespace lorv

// Stores values into a file and loads them again, in the same order.
//
// Form: numbers little-endian in their own size, `bool` one byte. A text: the bytes FF FE FF, then its length
//   in 16-bit units as one byte below 255, else FF and two bytes below 65534, else FF FF FF and four bytes;
//   then the units, little-endian. An object through a pointer: the name of its class as a text (the empty
//   text for null), its schema in four bytes, then what its Serialize writes.
// Edges: loading from a stream that ends early raises CArchiveException (endOfFile) by pointer; one that
//   holds something else badIndex, badClass or badSchema. A length in the stream is not trusted: memory
//   grows with the bytes that are there. Objects nested deeper than kMaxArchiveDepth raise badIndex. Storing
//   into a loading archive raises readOnly, the reverse writeOnly.
// State at failure: the value that was to be loaded is as it was.
// The file stays the caller's and must outlive the archive, or Close; closing does not close the file.
// One thread at a time.
//
//   CArchive out(&file, CArchive::store);  out << CString(_T("2*B"));
class COMM_LORV_API CArchive {
 public:
  enum Mode : UINT { store = 0, load = 1 };

  CArchive(CFile* file, UINT mode);
  ~CArchive();
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;

  BOOL IsStoring() const { return mode_ == store; }
  BOOL IsLoading() const { return mode_ != store; }
  CFile* GetFile() const { return file_; }
  void Flush();
  // Flushes; after it every operation raises genericException.
  void Close();

  // Plain bytes. Read gives the count, which is less than asked for only at the end of the stream.
  UINT Read(void* buffer, UINT count);
  void Write(const void* buffer, UINT count);

  // Whole numbers, truth values and enumerations, in the bytes their type has.
  template <class T>
  requires std::is_integral_v<T> || std::is_enum_v<T> CArchive& operator<<(T value) {
    return PutNumber(static_cast<std::uint64_t>(value), sizeof(T));
  }
  CArchive& operator<<(float value) { return PutNumber(std::bit_cast<std::uint32_t>(value), 4); }
  CArchive& operator<<(double value) { return PutNumber(std::bit_cast<std::uint64_t>(value), 8); }
  CArchive& operator<<(const CString& text);
  CArchive& operator<<(const CObject* object);

  template <class T>
  requires std::is_integral_v<T> || std::is_enum_v<T> CArchive& operator>>(T& value);
  CArchive& operator>>(float& value);
  CArchive& operator>>(double& value);
  CArchive& operator>>(CString& text);

  // Null is stored as such; an object of a class without IMPLEMENT_SERIAL raises CNotSupportedException.
  void WriteObject(const CObject* object);
  // A new object, the caller's to delete, or null. It must be of the class asked for (null: any).
  CObject* ReadObject(const CRuntimeClass* wanted);

 private:
  CFile& Opened(UINT mode) const;
  CArchive& PutNumber(std::uint64_t bits, UINT size);
  std::uint64_t TakeNumber(UINT size);
  void PutLength(std::size_t length);
  std::size_t TakeLength();
  const CRuntimeClass* TakeClass(const CRuntimeClass* wanted);

  CFile* file_;
  UINT mode_;
  int depth_ = 0;
};

template <class T>
requires std::is_integral_v<T> || std::is_enum_v<T> CArchive& CArchive::operator>>(T& value) {
  const std::uint64_t bits = TakeNumber(sizeof(T));
  if constexpr (std::is_same_v<T, bool>) {
    value = bits != 0;
  } else {
    value = static_cast<T>(bits);
  }
  return *this;
}
