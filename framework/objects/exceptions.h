#pragma once

#include "framework/objects/object.h"
#include "framework/text/cstring.h"

// The framework's failure objects. They are thrown by pointer; a handler that catches one and does not
// rethrow it calls Delete on it, once.
//
// GetErrorMessage puts a text for the user, cut to `max_error - 1` units, and a terminator into the buffer:
//   true. A null buffer, or no room for the terminator, gives false and touches nothing.
// The object that reports a lack of memory exists from the start; its Delete frees nothing.
// No shared state: any thread.
//
//   try { list.GetAt(99); } catch (CException* e) { e->GetErrorMessage(text, 260); e->Delete(); }
class COMM_LORV_API CException : public CObject {
  DECLARE_DYNAMIC(CException)
 public:
  CException() = default;
  // Without `auto_delete`, Delete leaves the object alone: for one that lives on the stack.
  explicit CException(BOOL auto_delete) : m_bAutoDelete(auto_delete) {}

  virtual BOOL GetErrorMessage(LPTSTR error, UINT max_error, UINT* help_context = nullptr) const;
  void Delete();

 protected:
  // The whole text for the user.
  virtual CString ErrorText() const;

 private:
  BOOL m_bAutoDelete = TRUE;
};

// Memory could not be allocated.
class COMM_LORV_API CMemoryException : public CException {
  DECLARE_DYNAMIC(CMemoryException)
 public:
  using CException::CException;

 protected:
  CString ErrorText() const override;
};

// An operation that the object does not offer.
class COMM_LORV_API CNotSupportedException : public CException {
  DECLARE_DYNAMIC(CNotSupportedException)
 public:
  using CException::CException;

 protected:
  CString ErrorText() const override;
};

// An argument outside what the operation takes: a bad index, a negative size.
class COMM_LORV_API CInvalidArgException : public CException {
  DECLARE_DYNAMIC(CInvalidArgException)
 public:
  using CException::CException;

 protected:
  CString ErrorText() const override;
};

// A window resource that could not be made or found.
class COMM_LORV_API CResourceException : public CException {
  DECLARE_DYNAMIC(CResourceException)
 public:
  using CException::CException;

 protected:
  CString ErrorText() const override;
};

// The user has seen a message already; it only ends the operation.
class COMM_LORV_API CUserException : public CException {
  DECLARE_DYNAMIC(CUserException)
 public:
  using CException::CException;
};

// A file operation that failed. `m_lOsError` is the system's own number (-1: not known).
class COMM_LORV_API CFileException : public CException {
  DECLARE_DYNAMIC(CFileException)
 public:
  enum {
    none,
    genericException,
    fileNotFound,
    badPath,
    tooManyOpenFiles,
    accessDenied,
    invalidFile,
    removeCurrentDir,
    directoryFull,
    badSeek,
    hardIO,
    sharingViolation,
    lockViolation,
    diskFull,
    endOfFile
  };

  explicit CFileException(int cause = none, LONG os_error = -1, LPCTSTR file_name = nullptr)
      : m_cause(cause), m_lOsError(os_error), m_strFileName(file_name) {}

  // The cause for a number of the C library's errno, and for an error number of Windows.
  static int ErrnoToException(int error);
  static int OsErrorToException(LONG error);
  [[noreturn]] static void ThrowErrno(int error, LPCTSTR file_name = nullptr);
  [[noreturn]] static void ThrowOsError(LONG error, LPCTSTR file_name = nullptr);

  int m_cause;
  LONG m_lOsError;
  CString m_strFileName;

 protected:
  CString ErrorText() const override;
};

// A stored stream that ends early or does not hold what its reader expects.
class COMM_LORV_API CArchiveException : public CException {
  DECLARE_DYNAMIC(CArchiveException)
 public:
  enum { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema, bufferFull };

  explicit CArchiveException(int cause = none, LPCTSTR file_name = nullptr)
      : m_cause(cause), m_strFileName(file_name) {}

  int m_cause;
  CString m_strFileName;

 protected:
  CString ErrorText() const override;
};

// An automation call that failed; `m_sc` is its code.
class COMM_LORV_API COleException : public CException {
  DECLARE_DYNAMIC(COleException)
 public:
  COleException() = default;
  explicit COleException(HRESULT code) : m_sc(code) {}

  // The code for what was caught: an automation failure's own, "no memory" for a lack of memory, "not
  // implemented" for an operation not offered, "unexpected" for the rest.
  static HRESULT Process(const CException* caught);

  HRESULT m_sc = 0;

 protected:
  CString ErrorText() const override;
};

// A failure that an automation server described in words.
class COMM_LORV_API COleDispatchException : public CException {
  DECLARE_DYNAMIC(COleDispatchException)
 public:
  COleDispatchException(LPCTSTR description, UINT help_id, WORD code)
      : m_wCode(code), m_strDescription(description), m_dwHelpContext(help_id) {}

  WORD m_wCode;
  CString m_strDescription;
  DWORD m_dwHelpContext;
  CString m_strHelpFile;
  CString m_strSource;
  HRESULT m_scError = 0;

 protected:
  CString ErrorText() const override;
};

// Throw a new object of the kind named.
[[noreturn]] COMM_LORV_API void AfxThrowMemoryException();
[[noreturn]] COMM_LORV_API void AfxThrowNotSupportedException();
[[noreturn]] COMM_LORV_API void AfxThrowInvalidArgException();
[[noreturn]] COMM_LORV_API void AfxThrowResourceException();
[[noreturn]] COMM_LORV_API void AfxThrowUserException();
[[noreturn]] COMM_LORV_API void AfxThrowFileException(int cause, LONG os_error = -1,
                                                      LPCTSTR file_name = nullptr);
[[noreturn]] COMM_LORV_API void AfxThrowArchiveException(int cause, LPCTSTR file_name = nullptr);
[[noreturn]] COMM_LORV_API void AfxThrowOleException(HRESULT code);
[[noreturn]] COMM_LORV_API void AfxThrowOleDispatchException(WORD code, LPCTSTR description,
                                                             UINT help_id = 0xFFFFFFFF);
