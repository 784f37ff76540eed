#pragma once

#include <vector>

#include "framework/objects/exceptions.h"

// A file as the archive sees it: bytes at a position.
//
// Units: bytes; positions count from 0.
// Edges: reading behind the end gives fewer bytes, down to 0. A position in front of the file raises
//   CFileException (badSeek) by pointer; one behind the end is allowed, and writing there fills the gap with
//   zeros.
// Result: Read gives the count of bytes read; Write writes all or raises.
// Used by one thread at a time.
class COMM_LORV_API CFile : public CObject {
  DECLARE_DYNAMIC(CFile)
 public:
  enum SeekPosition { begin, current, end };

  virtual UINT Read(void* buffer, UINT count) = 0;
  virtual void Write(const void* buffer, UINT count) = 0;
  // The new position.
  virtual unsigned long long Seek(long long offset, UINT from) = 0;
  virtual unsigned long long GetPosition() const = 0;
  virtual unsigned long long GetLength() const = 0;
  // Cuts the file or fills it up with zeros; the position does not move.
  virtual void SetLength(unsigned long long length) = 0;
  virtual void Flush() {}
  virtual void Close() {}

  void SeekToBegin() { Seek(0, begin); }
  unsigned long long SeekToEnd() { return Seek(0, end); }
};

// A file in memory. A lack of memory raises CMemoryException by pointer, and the file is as it was.
//
//   CMemFile f;  f.Write("ab", 2);  f.SeekToBegin();  f.Read(buffer, 5)  gives 2
class COMM_LORV_API CMemFile : public CFile {
  DECLARE_DYNAMIC(CMemFile)
 public:
  CMemFile() = default;
  // Begins with a copy of the bytes, at position 0; null counts as no bytes.
  CMemFile(const BYTE* bytes, UINT count);

  UINT Read(void* buffer, UINT count) override;
  void Write(const void* buffer, UINT count) override;
  unsigned long long Seek(long long offset, UINT from) override;
  unsigned long long GetPosition() const override { return position_; }
  unsigned long long GetLength() const override { return bytes_.size(); }
  void SetLength(unsigned long long length) override;

  // The contents, valid until the file is next written.
  const std::vector<BYTE>& GetBytes() const { return bytes_; }

 private:
  std::vector<BYTE> bytes_;
  unsigned long long position_ = 0;
};
