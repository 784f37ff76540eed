#include "framework/values/variant.h"

#include <utility>

#include "framework/values/variant_convert.h"

// The platform's operations on tagged values off Windows, with its results. A value by reference does not own
// what it points to and is copied as a pointer; texts are copied and objects counted. Every operation leaves
// the target as it was when it fails.

namespace {

// By reference any kind may be held, as the value does not own it.
bool IsValid(VARTYPE type) {
  const auto bare = static_cast<VARTYPE>(type & ~VT_BYREF);
  if (lorv::IsPlainType(bare) || bare == VT_BSTR || bare == VT_DISPATCH || bare == VT_UNKNOWN) {
    return type == bare || (bare != VT_EMPTY && bare != VT_NULL);
  }
  return bare == VT_VARIANT && type != bare;
}

HRESULT CopyText(VARIANT& target, BSTR text) {
  BSTR fresh = nullptr;
  if (text != nullptr) {
    fresh = SysAllocStringLen(text, SysStringLen(text));
    if (fresh == nullptr) return E_OUTOFMEMORY;
  }
  // Last, when nothing can fail any more.
  VariantClear(&target);
  target = VARIANT{};
  target.vt = VT_BSTR;
  target.bstrVal = fresh;
  return S_OK;
}

}  // namespace

void VariantInit(VARIANT* value) {
  *value = VARIANT{};
}

HRESULT VariantClear(VARIANT* value) {
  if (value == nullptr) return E_INVALIDARG;
  if (!IsValid(value->vt)) return DISP_E_BADVARTYPE;
  // Emptied first: what is released may lead back here. Its parts are read one by one, as they were written:
  // read as a whole a fresh value would hold the processor up until the parts have reached the cache.
  const VARTYPE type = value->vt;
  const BSTR text = value->bstrVal;
  IUnknown* const object = value->punkVal;
  *value = VARIANT{};
  if (type == VT_BSTR) SysFreeString(text);
  if ((type == VT_DISPATCH || type == VT_UNKNOWN) && object != nullptr) object->Release();
  return S_OK;
}

HRESULT VariantCopy(VARIANT* target, const VARIANT* source) {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  if (!IsValid(source->vt)) return DISP_E_BADVARTYPE;
  // Clearing the target first would free what is to be copied.
  if (target == source) return S_OK;
  if (source->vt == VT_BSTR) return CopyText(*target, source->bstrVal);
  const VARIANT fresh = *source;
  if ((source->vt == VT_DISPATCH || source->vt == VT_UNKNOWN) && source->punkVal != nullptr) {
    source->punkVal->AddRef();
  }
  // Last, when nothing can fail any more.
  VariantClear(target);
  *target = fresh;
  return S_OK;
}

HRESULT VariantCopyInd(VARIANT* target, const VARIANT* source) {
  if (source == nullptr) return E_INVALIDARG;
  VARIANT shared{};
  const HRESULT result = lorv::FollowReference(*source, shared);
  if (FAILED(result)) return result;
  // The target may be the very reference whose value is copied.
  VARIANT fresh{};
  const HRESULT copied = VariantCopy(&fresh, &shared);
  if (FAILED(copied)) return copied;
  VariantClear(target);
  *target = fresh;
  return S_OK;
}

HRESULT VariantChangeType(VARIANT* target, const VARIANT* source, USHORT /*flags*/, VARTYPE type) {
  if (target == nullptr || source == nullptr) return E_INVALIDARG;
  return lorv::ChangeValueType(*target, *source, type);
}

namespace lorv {

HRESULT ChangeSystemType(VARIANT& /*target*/, const VARIANT& source, VARTYPE type) {
  // No system stands behind it here: kinds that exist have no way into each other, others are none.
  return IsValid(source.vt) && IsValid(type) ? DISP_E_TYPEMISMATCH : DISP_E_BADVARTYPE;
}

}  // namespace lorv
