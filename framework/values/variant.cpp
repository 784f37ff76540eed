#include "framework/values/variant.h"

#include <cstring>
#include <limits>

#include "framework/objects/exceptions.h"

// The owner of a tagged value. Its memory is that of the platform's VARIANT and nothing more, so arrays of it
// go to automation calls as they are. What fails raises _com_error; a COleVariant that cannot change its kind
// raises the framework's failure object instead.

// Automation gets arrays of these where it expects the platform's.
static_assert(sizeof(_variant_t) == sizeof(VARIANT));

namespace {

void Require(bool right) {
  if (!right) _com_issue_error(E_INVALIDARG);
}

}  // namespace

_variant_t::_variant_t(const VARIANT* source) : tagVARIANT{} {
  if (source == nullptr) _com_issue_error(E_POINTER);
  CopyFrom(*source);
}

_variant_t::_variant_t(VARIANT& source, bool copy) : tagVARIANT{} {
  if (copy) {
    CopyFrom(source);
  } else {
    Attach(source);
  }
}

_variant_t::_variant_t(short value, VARTYPE type) : tagVARIANT{} {
  Require(type == VT_I2 || type == VT_BOOL);
  vt = type;
  iVal = type == VT_I2 ? value : value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
}

_variant_t::_variant_t(int value, VARTYPE type) : tagVARIANT{} {
  Require(type == VT_I4 || type == VT_ERROR || type == VT_BOOL);
  vt = type;
  if (type == VT_BOOL) {
    boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
  } else {
    lVal = value;
  }
}

_variant_t::_variant_t(long value, VARTYPE type) : tagVARIANT{} {
  // A long has 64 bits off Windows; the value counts more than the tag.
  if (type == VT_I4 && !std::in_range<int>(value)) {
    vt = VT_I8;
    llVal = value;
  } else if (type == VT_BOOL) {
    vt = VT_BOOL;
    boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
  } else {
    static_cast<VARIANT&>(*this) = _variant_t(static_cast<int>(value), type).Detach();
  }
}

_variant_t::_variant_t(char value) noexcept : _variant_t(VT_I1) {
  bVal = static_cast<unsigned char>(value);
}

_variant_t::_variant_t(unsigned long value) noexcept : _variant_t(VT_UI4) {
  if (std::in_range<unsigned>(value)) {
    ulVal = static_cast<unsigned>(value);
  } else {
    vt = VT_UI8;
    ullVal = value;
  }
}

_variant_t::_variant_t(IDispatch* object, bool add_ref) noexcept : _variant_t(VT_DISPATCH) {
  pdispVal = object;
  if (object != nullptr && add_ref) object->AddRef();
}

_variant_t::_variant_t(IUnknown* object, bool add_ref) noexcept : _variant_t(VT_UNKNOWN) {
  punkVal = object;
  if (object != nullptr && add_ref) object->AddRef();
}

_variant_t& _variant_t::operator=(_variant_t&& source) noexcept {
  if (this != &source) {
    // Ended last: releasing an object may lead back to this value, which is whole by then.
    const _variant_t old(std::move(*this));
    static_cast<VARIANT&>(*this) = source.Detach();
  }
  return *this;
}

void _variant_t::RefuseType() {
  _com_issue_error(E_INVALIDARG);
}

void _variant_t::CopyHeld(const VARIANT& source) {
  // Tables are filled again and again with texts of the same length: those need no new memory.
  if (vt == VT_BSTR && source.vt == VT_BSTR && bstrVal != nullptr && source.bstrVal != nullptr) {
    const std::size_t bytes = SysStringByteLen(bstrVal);
    if (bytes == SysStringByteLen(source.bstrVal)) {
      std::memmove(bstrVal, source.bstrVal, bytes);
      return;
    }
  }
  lorv::CheckResult(VariantCopy(this, const_cast<VARIANT*>(&source)));
}

_variant_t::operator long() const {
  if constexpr (sizeof(long) == sizeof(int)) {
    return static_cast<int>(*this);
  } else {
    return static_cast<long>(As(VT_I8).llVal);
  }
}

_variant_t::operator IDispatch*() const {
  // The caller gets a reference of its own, as from the platform's class.
  const _variant_t object = As(VT_DISPATCH);
  if (object.pdispVal != nullptr) object.pdispVal->AddRef();
  return object.pdispVal;
}

_variant_t::operator IUnknown*() const {
  const _variant_t object = As(VT_UNKNOWN);
  if (object.punkVal != nullptr) object.punkVal->AddRef();
  return object.punkVal;
}

bool _variant_t::operator==(const VARIANT& other) const noexcept {
  // No conversion: 5 as text and 5 as number are different cells.
  if (vt != other.vt) return false;
  switch (vt) {
    case VT_EMPTY:
    case VT_NULL:
      return true;
    case VT_I1:
    case VT_UI1:
      return bVal == other.bVal;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return iVal == other.iVal;
    case VT_I4:
    case VT_INT:
    case VT_UI4:
    case VT_UINT:
    case VT_ERROR:
      return lVal == other.lVal;
    case VT_I8:
    case VT_UI8:
    case VT_CY:
      return llVal == other.llVal;
    case VT_R4:
      return fltVal == other.fltVal;
    case VT_R8:
    case VT_DATE:
      return dblVal == other.dblVal;
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return punkVal == other.punkVal;
    case VT_BSTR:
      // By length, so that units of zero count; no text and the empty text are equal, as automation takes
      // them.
      return lorv::TextView(bstrVal, SysStringLen(bstrVal)) ==
             lorv::TextView(other.bstrVal, SysStringLen(other.bstrVal));
    default:
      return false;
  }
}

void _variant_t::Clear() {
  lorv::CheckResult(VariantClear(this));
}

void _variant_t::Attach(VARIANT& source) {
  // Taken first: `source` may stand within what is cleared.
  const VARIANT taken = std::exchange(source, VARIANT{});
  Clear();
  static_cast<VARIANT&>(*this) = taken;
}

VARIANT* _variant_t::GetAddress() {
  Clear();
  return this;
}

void _variant_t::ChangeType(VARTYPE type, const VARIANT* source) {
  lorv::CheckResult(lorv::ChangeValueType(*this, source == nullptr ? *this : *source, type));
}

_variant_t _variant_t::As(VARTYPE type) const {
  // Most reads ask for the kind that is there.
  if (vt == type && lorv::IsPlainType(type)) return *this;
  _variant_t result;
  result.ChangeType(type, this);
  return result;
}

void COleVariant::ChangeType(VARTYPE type, const VARIANT* source) {
  const HRESULT result = lorv::ChangeValueType(*this, source == nullptr ? *this : *source, type);
  if (FAILED(result)) AfxThrowOleException(result);
}
