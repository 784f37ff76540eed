#pragma once

#include <cstdarg>

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// Types of arguments, as the framework writes them: a byte each, texts of them joined by standing side by
// side. An argument by pointer has bit 0x40 set.
#define VTS_NONE ""
#define VTS_I2 "\x02"
#define VTS_I4 "\x03"
#define VTS_R4 "\x04"
#define VTS_R8 "\x05"
#define VTS_BSTR "\x08"
#define VTS_DISPATCH "\x09"
#define VTS_BOOL "\x0B"
#define VTS_VARIANT "\x0C"
#define VTS_PI2 "\x42"
#define VTS_PI4 "\x43"
#define VTS_PR4 "\x44"
#define VTS_PR8 "\x45"
#define VTS_PBSTR "\x48"
#define VTS_PBOOL "\x4B"
#define VTS_PVARIANT "\x4C"

// Calls the members of an automation object, with arguments given as plain values.
//
// `types` is a text of type bytes, ended by 0; null: no arguments. Numbers are passed as themselves, VTS_BOOL
//   as BOOL, VTS_BSTR as LPCTSTR, VTS_VARIANT as const VARIANT*, what goes by pointer as a pointer to it,
//   VTS_PBOOL as VARIANT_BOOL*. At most lorv::kMostCallArguments; more, or an unknown byte, raise
//   COleException (DISP_E_BADPARAMCOUNT, DISP_E_BADVARTYPE) before anything is called.
// Result: by `result_type`, to *result: VT_EMPTY nothing, VT_VARIANT a VARIANT that is the caller's, else a
//   plain value of the kind (VT_I2, VT_I4, VT_R4, VT_R8, VT_BOOL as BOOL). A failure raises COleException
//   with its code, or COleDispatchException where the object describes it; *result is then as it was.
// Without an object nothing happens. The driver releases the object at its end unless `auto_release` is
// false. One thread at a time.
class COMM_LORV_API COleDispatchDriver {
 public:
  COleDispatchDriver() = default;
  explicit COleDispatchDriver(LPDISPATCH dispatch, BOOL auto_release = TRUE)
      : m_lpDispatch(dispatch), m_bAutoRelease(auto_release) {}
  COleDispatchDriver(const COleDispatchDriver&) = delete;
  COleDispatchDriver& operator=(const COleDispatchDriver&) = delete;
  ~COleDispatchDriver() { ReleaseDispatch(); }

  void AttachDispatch(LPDISPATCH dispatch, BOOL auto_release = TRUE);
  // Gives the object up without releasing it.
  LPDISPATCH DetachDispatch();
  void ReleaseDispatch();

  void InvokeHelper(DISPID member, WORD flags, VARTYPE result_type, void* result, const BYTE* types, ...);
  void InvokeHelperV(DISPID member, WORD flags, VARTYPE result_type, void* result, const BYTE* types,
                     va_list arguments);

  LPDISPATCH m_lpDispatch = nullptr;
  BOOL m_bAutoRelease = TRUE;
};

namespace lorv {

constexpr UINT kMostCallArguments = 16;

}  // namespace lorv
