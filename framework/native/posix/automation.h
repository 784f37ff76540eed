#pragma once

// Tagged values and their texts where the system has none: the names, codes and meanings are those of the
// Windows automation library, so that the classes over them are written once. Included by native_types.h.

#include <cstdint>

#include "framework/native/export.h"

using VARTYPE = std::uint16_t;
using VARIANT_BOOL = std::int16_t;
using DATE = double;
using SCODE = std::int32_t;
using BSTR = char16_t*;
using LCID = std::uint32_t;
using USHORT = std::uint16_t;

constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
constexpr HRESULT E_ABORT = static_cast<HRESULT>(0x80004004);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFF);
constexpr HRESULT E_ACCESSDENIED = static_cast<HRESULT>(0x80070005);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
constexpr HRESULT DISP_E_UNKNOWNINTERFACE = static_cast<HRESULT>(0x80020001);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003);
constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004);
constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008);
constexpr HRESULT DISP_E_EXCEPTION = static_cast<HRESULT>(0x80020009);
constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);
constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000B);
constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000E);

constexpr bool SUCCEEDED(HRESULT code) {
  return code >= 0;
}
constexpr bool FAILED(HRESULT code) {
  return code < 0;
}

// Tags. Those that the library makes and converts; VT_BYREF and VT_ARRAY mark what it refuses.
enum VARENUM : std::uint16_t {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000
};

// The calling convention that the system's objects name; here there is only one.
#define __stdcall  // NOLINT(bugprone-reserved-identifier): the compiler's own name for it on Windows
#define STDMETHODCALLTYPE

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];
};
using IID = GUID;
using REFIID = const IID&;
constexpr IID IID_NULL = {};

using DISPID = std::int32_t;
using LPOLESTR = char16_t*;
struct tagVARIANT;
struct DISPPARAMS;
struct tagEXCEPINFO;
struct ITypeInfo;

// How a member of an automation object is asked for; of locales only "the user's" is ever named.
constexpr WORD DISPATCH_METHOD = 1;
constexpr WORD DISPATCH_PROPERTYGET = 2;
constexpr WORD DISPATCH_PROPERTYPUT = 4;
constexpr DISPID DISPID_PROPERTYPUT = -3;
constexpr LCID LOCALE_USER_DEFAULT = 0x0400;

// A counted object that a value may hold.
struct IUnknown {
  virtual HRESULT QueryInterface(const GUID& id, void** object) = 0;
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;

 protected:
  ~IUnknown() = default;
};

// An object whose members are called by number.
struct IDispatch : IUnknown {
  virtual HRESULT GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT GetTypeInfo(UINT which, LCID locale, ITypeInfo** info) = 0;
  virtual HRESULT GetIDsOfNames(REFIID always_null, LPOLESTR* names, UINT count, LCID locale,
                                DISPID* ids) = 0;
  virtual HRESULT Invoke(DISPID member, REFIID always_null, LCID locale, WORD flags, DISPPARAMS* params,
                         tagVARIANT* result, tagEXCEPINFO* failure, UINT* wrong_argument) = 0;

 protected:
  ~IDispatch() = default;
};

// What an automation failure says in words; the texts become the caller's.
struct IErrorInfo : IUnknown {
  virtual HRESULT GetSource(BSTR* source) = 0;
  virtual HRESULT GetDescription(BSTR* description) = 0;

 protected:
  ~IErrorInfo() = default;
};

// Money: ten-thousandths.
union CY {
  __extension__ struct {
    std::uint32_t Lo;
    std::int32_t Hi;
  };
  std::int64_t int64;
};

struct tagVARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    std::int64_t llVal;
    std::int32_t lVal;
    std::uint8_t bVal;
    std::int16_t iVal;
    float fltVal;
    double dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    CY cyVal;
    DATE date;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
    std::int16_t* piVal;
    std::int32_t* plVal;
    float* pfltVal;
    VARIANT_BOOL* pboolVal;
    BSTR* pbstrVal;
    tagVARIANT* pvarVal;
    void* byref;
    std::int8_t cVal;
    std::uint16_t uiVal;
    std::uint32_t ulVal;
    std::uint64_t ullVal;
    int intVal;
    unsigned uintVal;
  };
};
using VARIANT = tagVARIANT;
using VARIANTARG = tagVARIANT;

// The arguments of an automation call, the last one first.
struct DISPPARAMS {
  VARIANTARG* rgvarg;
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};

// A failure that an automation object describes; its texts are the caller's to free.
struct tagEXCEPINFO {
  WORD wCode;
  WORD wReserved;
  BSTR bstrSource;
  BSTR bstrDescription;
  BSTR bstrHelpFile;
  DWORD dwHelpContext;
  void* pvReserved;
  HRESULT (*pfnDeferredFillIn)(tagEXCEPINFO* failure);
  SCODE scode;
};
using EXCEPINFO = tagEXCEPINFO;
using LPDISPATCH = IDispatch*;
using LPUNKNOWN = IUnknown*;

// Texts with their length (in 16-bit units) in front; null is the empty text. SysAllocStringLen without a
// source leaves the units zero. Null is the answer where memory is lacking.
COMM_LORV_API BSTR SysAllocString(const char16_t* text);
COMM_LORV_API BSTR SysAllocStringLen(const char16_t* text, UINT length);
COMM_LORV_API void SysFreeString(BSTR text);
COMM_LORV_API UINT SysStringLen(BSTR text);
COMM_LORV_API UINT SysStringByteLen(BSTR text);

// Values: made empty, freed, copied with what they hold, copied with a reference followed, converted. A
// result below 0 is a failure, which leaves the target as it was.
COMM_LORV_API void VariantInit(VARIANT* value);
COMM_LORV_API HRESULT VariantClear(VARIANT* value);
COMM_LORV_API HRESULT VariantCopy(VARIANT* target, const VARIANT* source);
COMM_LORV_API HRESULT VariantCopyInd(VARIANT* target, const VARIANT* source);
COMM_LORV_API HRESULT VariantChangeType(VARIANT* target, const VARIANT* source, USHORT flags, VARTYPE type);
