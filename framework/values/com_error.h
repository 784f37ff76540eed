#pragma once

#include "framework/values/bstr.h"

// The failure of an automation call or of an operation on tagged values: a code, and what the server said of
// it. Thrown by value by our own code; guards catch it by value and, as older callers throw it, by pointer.
//
// Description is the text of the error information, or no text (null) without it; ErrorMessage is the
//   system's text for the code, never null, valid as long as the object.
// The object holds a count of the error information that it was given. One thread at a time.
//
//   _com_error(E_OUTOFMEMORY).Error()  gives E_OUTOFMEMORY, its Description().length() is 0
class COMM_LORV_API _com_error {
 public:
  // With `add_ref` the object takes a count of its own; else the caller's count passes to it.
  explicit _com_error(HRESULT code, IErrorInfo* info = nullptr, bool add_ref = false) noexcept;
  // A failure described here and not by a server.
  _com_error(HRESULT code, const CString& description) : code_(code), own_text_(description) {}
  _com_error(const _com_error& other);
  _com_error& operator=(const _com_error& other);
  virtual ~_com_error();

  HRESULT Error() const noexcept { return code_; }
  // The 16-bit code of old servers, 0 if the code carries none.
  WORD WCode() const noexcept { return HRESULTToWCode(code_); }
  // With a count for the caller; null if there is none.
  IErrorInfo* ErrorInfo() const noexcept;
  _bstr_t Description() const;
  _bstr_t Source() const;
  LPCTSTR ErrorMessage() const;

  static HRESULT WCodeToHRESULT(WORD code) noexcept;
  static WORD HRESULTToWCode(HRESULT code) noexcept;

 private:
  HRESULT code_;
  IErrorInfo* info_ = nullptr;
  CString own_text_;
  mutable CString message_;
};

// Throws `_com_error` for a code; the second takes error information, whose count passes to the failure.
[[noreturn]] COMM_LORV_API void _com_raise_error(HRESULT code, IErrorInfo* info = nullptr);
[[noreturn]] COMM_LORV_API void _com_issue_error(HRESULT code);

namespace lorv {

// Raises `_com_error` for a code that says failure.
inline void CheckResult(HRESULT code) {
  if (FAILED(code)) _com_issue_error(code);
}

// The system's text for a code, without the line end; empty if it has none. One implementation a system.
CString SystemErrorText(HRESULT code);

}  // namespace lorv
