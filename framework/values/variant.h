#pragma once

#include <concepts>
#include <utility>

#include "framework/values/bstr.h"
#include "framework/values/com_error.h"
#include "framework/values/variant_convert.h"

// A tagged value that owns what it holds. Its memory is the system's VARIANT and nothing else, so that it can
// be passed wherever one is wanted.
//
// Tags: what a constructor makes is said beside it; whole numbers of 32 bits are VT_I4.
// Edges: a null text makes a VT_BSTR without a text.
// Result: a copy or conversion that fails raises `_com_error` with the code; the value is then as it was.
//   What converts into what, and the texts of values: framework/values/variant_convert.h.
// Copies are independent, but for objects, which are counted. One thread at a time.
//
//   static_cast<long>(_variant_t(_T("12")))  gives 12
class COMM_LORV_API _variant_t : public tagVARIANT {
 public:
  _variant_t() noexcept : tagVARIANT{} {}
  _variant_t(const VARIANT& source) : tagVARIANT{} { CopyFrom(source); }  // NOLINT
  _variant_t(const VARIANT* source);                                      // NOLINT
  _variant_t(const _variant_t& source) : tagVARIANT{} { CopyFrom(source); }
  _variant_t(_variant_t&& source) noexcept : tagVARIANT(source.Detach()) {}
  // Without `copy` what the source holds passes to the new value, and the source is empty.
  _variant_t(VARIANT& source, bool copy);
  // The tag may be VT_I2 or VT_BOOL; VT_I4, VT_ERROR or VT_BOOL; VT_R8 or VT_DATE. Any other raises
  // `_com_error` (E_INVALIDARG). A `long` beyond 32 bits becomes VT_I8.
  _variant_t(short value, VARTYPE type = VT_I2);                   // NOLINT(google-explicit-constructor)
  _variant_t(int value, VARTYPE type = VT_I4);                     // NOLINT(google-explicit-constructor)
  _variant_t(long value, VARTYPE type = VT_I4);                    // NOLINT(google-explicit-constructor)
  _variant_t(double value, VARTYPE type = VT_R8) : tagVARIANT{} {  // NOLINT(google-explicit-constructor)
    if (type != VT_R8 && type != VT_DATE) RefuseType();
    vt = type;
    dblVal = value;
  }
  _variant_t(float value) noexcept : _variant_t(VT_R4) { fltVal = value; }                // NOLINT
  _variant_t(const CY& value) noexcept : _variant_t(VT_CY) { cyVal = value; }             // NOLINT
  _variant_t(unsigned char value) noexcept : _variant_t(VT_UI1) { bVal = value; }         // NOLINT
  _variant_t(char value) noexcept;                                                        // NOLINT
  _variant_t(unsigned short value) noexcept : _variant_t(VT_UI2) { uiVal = value; }       // NOLINT
  _variant_t(unsigned value) noexcept : _variant_t(VT_UI4) { ulVal = value; }             // NOLINT
  _variant_t(unsigned long value) noexcept;                                               // NOLINT
  _variant_t(long long value) noexcept : _variant_t(VT_I8) { llVal = value; }             // NOLINT
  _variant_t(unsigned long long value) noexcept : _variant_t(VT_UI8) { ullVal = value; }  // NOLINT
  // VT_BOOL. For bool alone: a pointer does not convert.
  template <std::same_as<bool> T>
  _variant_t(T value) noexcept : _variant_t(VT_BOOL) {  // NOLINT(google-explicit-constructor)
    boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  _variant_t(LPCTSTR text) : _variant_t(_bstr_t(text)) {}         // NOLINT(google-explicit-constructor)
  _variant_t(const CString& text) : _variant_t(_bstr_t(text)) {}  // NOLINT(google-explicit-constructor)
  _variant_t(const _bstr_t& text) : _variant_t(_bstr_t(text)) {}  // NOLINT(google-explicit-constructor)
  _variant_t(_bstr_t&& text) noexcept : _variant_t(VT_BSTR) { bstrVal = text.Detach(); }  // NOLINT
  _variant_t(const char* text) = delete;
  // With `add_ref` the value takes a count of its own; else the caller's passes to it.
  _variant_t(IDispatch* object, bool add_ref = true) noexcept;  // NOLINT(google-explicit-constructor)
  _variant_t(IUnknown* object, bool add_ref = true) noexcept;   // NOLINT(google-explicit-constructor)
  ~_variant_t() {
    if (!lorv::IsPlainType(vt)) VariantClear(this);
  }

  _variant_t& operator=(const VARIANT& source) {
    if (lorv::IsPlainType(vt) && lorv::IsPlainType(source.vt)) {
      lorv::CopyPlain(*this, source);
    } else {
      CopyHeld(source);
    }
    return *this;
  }
  _variant_t& operator=(const _variant_t& source) { return *this = static_cast<const VARIANT&>(source); }
  _variant_t& operator=(_variant_t&& source) noexcept;

  // Conversions to plain types; a text and a boolean too.
  operator short() const { return As(VT_I2).iVal; }                              // NOLINT
  operator int() const { return static_cast<int>(As(VT_I4).lVal); }              // NOLINT
  operator long() const;                                                         // NOLINT
  operator long long() const { return As(VT_I8).llVal; }                         // NOLINT
  operator unsigned char() const { return As(VT_UI1).bVal; }                     // NOLINT
  operator unsigned short() const { return As(VT_UI2).uiVal; }                   // NOLINT
  operator unsigned() const { return static_cast<unsigned>(As(VT_UI4).ulVal); }  // NOLINT
  operator unsigned long long() const { return As(VT_UI8).ullVal; }              // NOLINT
  operator float() const { return As(VT_R4).fltVal; }                            // NOLINT
  operator double() const { return As(VT_R8).dblVal; }                           // NOLINT
  operator bool() const { return As(VT_BOOL).boolVal != VARIANT_FALSE; }         // NOLINT
  operator CY() const { return As(VT_CY).cyVal; }                                // NOLINT
  // With a count for the caller; null without an object.
  operator IDispatch*() const;  // NOLINT
  operator IUnknown*() const;   // NOLINT

  // The same tag and the same contents; texts unit by unit. Kinds without such a meaning differ.
  bool operator==(const VARIANT& other) const noexcept;
  bool operator==(const _variant_t& other) const noexcept {
    return *this == static_cast<const VARIANT&>(other);
  }

  void Clear();
  // Takes what the source holds; the source is empty afterwards.
  void Attach(VARIANT& source);
  VARIANT Detach() noexcept { return std::exchange(static_cast<VARIANT&>(*this), VARIANT{}); }
  VARIANT& GetVARIANT() noexcept { return *this; }
  VARIANT* GetAddress();
  // To the kind, from this value or from the source.
  void ChangeType(VARTYPE type, const VARIANT* source = nullptr);
  void SetString(LPCTSTR text) { *this = _variant_t(text); }

 private:
  explicit _variant_t(VARENUM type) noexcept : tagVARIANT{} { vt = static_cast<VARTYPE>(type); }
  void CopyFrom(const VARIANT& source) {
    // The analyzer loses sight of cells that a vector has made empty.
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage)
    if (lorv::IsPlainType(source.vt)) {
      lorv::CopyPlain(*this, source);
    } else {
      CopyHeld(source);
    }
  }
  void CopyHeld(const VARIANT& source);
  [[noreturn]] static void RefuseType();
  _variant_t As(VARTYPE type) const;
};

// The framework's tagged value: the same, but ChangeType reports a failure by COleException, by pointer.
//
//   COleVariant(_T("x")).ChangeType(VT_I4)  raises COleException, m_sc is DISP_E_TYPEMISMATCH
class COMM_LORV_API COleVariant : public _variant_t {
 public:
  using _variant_t::_variant_t;
  using _variant_t::operator=;
  COleVariant() = default;
  COleVariant(const _variant_t& source) : _variant_t(source) {}  // NOLINT(google-explicit-constructor)

  void ChangeType(VARTYPE type, const VARIANT* source = nullptr);
};
