#pragma once

#include <cstdint>
#include <cstring>

#include "framework/text/cstring.h"

class _variant_t;

namespace lorv {

// The length of an automation text in bytes, 0 for a null one. It stands in the four bytes in front of the
// text, on every system: reading it there costs no call.
inline std::uint32_t BytesOfBstr(BSTR text) noexcept {
  std::uint32_t bytes = 0;
  if (text != nullptr) std::memcpy(&bytes, reinterpret_cast<const char*>(text) - sizeof bytes, sizeof bytes);
  return bytes;
}

// The units of an automation text, zero units inside among them; none for a null one.
inline TextView TextOfBstr(BSTR text) noexcept {
  if (text == nullptr) return {};
  return {text, BytesOfBstr(text) / sizeof(TCHAR)};
}

}  // namespace lorv

// A text in the form in which automation passes it, owned.
//
// Units: length counts 16-bit units; zero units inside count too.
// Edges: no text at all (a null BSTR) has length 0, compares below the empty text, and its pointer is null.
// Result: a lack of memory raises `_com_error` (E_OUTOFMEMORY); a value that is no text and has none raises
//   `_com_error` with the code of the conversion. The object is then as it was.
// Copies are independent. A pointer handed out is valid until the object changes or ends.
//
//   _bstr_t(_variant_t(true))  gives _T("-1")
class COMM_LORV_API _bstr_t {
 public:
  _bstr_t() noexcept = default;
  _bstr_t(LPCTSTR text);             // NOLINT(google-explicit-constructor)
  _bstr_t(const CString& text);      // NOLINT(google-explicit-constructor)
  _bstr_t(const _variant_t& value);  // NOLINT(google-explicit-constructor)
  // Without `copy` the text becomes the object's.
  _bstr_t(BSTR text, bool copy);
  _bstr_t(const _bstr_t& other);
  _bstr_t(_bstr_t&& other) noexcept : text_(other.Detach()) {}
  _bstr_t& operator=(const _bstr_t& other);
  _bstr_t& operator=(_bstr_t&& other) noexcept;
  ~_bstr_t() { SysFreeString(text_); }

  operator LPCTSTR() const noexcept { return text_; }  // NOLINT(google-explicit-constructor)
  operator LPTSTR() const noexcept { return text_; }   // NOLINT(google-explicit-constructor)
  bool operator!() const noexcept { return text_ == nullptr; }
  lorv::TextView View() const noexcept;

  unsigned length() const noexcept { return SysStringLen(text_); }
  // A new text, the caller's to free; without `copy` the object's own.
  BSTR copy(bool copy = true) const;
  BSTR& GetBSTR() noexcept { return text_; }
  // The object gives up its text, to be filled by the receiver of the address.
  BSTR* GetAddress() noexcept;
  void Assign(BSTR text);
  void Attach(BSTR text) noexcept;
  BSTR Detach() noexcept;

  _bstr_t& operator+=(const _bstr_t& other);
  friend _bstr_t operator+(const _bstr_t& a, const _bstr_t& b) { return _bstr_t(a) += b; }

  friend bool operator==(const _bstr_t& a, const _bstr_t& b) noexcept { return a.Compared(b) == 0; }
  friend std::strong_ordering operator<=>(const _bstr_t& a, const _bstr_t& b) noexcept {
    return a.Compared(b) <=> 0;
  }

 private:
  int Compared(const _bstr_t& other) const noexcept;

  BSTR text_ = nullptr;
};
