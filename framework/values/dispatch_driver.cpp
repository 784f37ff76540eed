#include "framework/values/dispatch_driver.h"

#include <array>
#include <cstring>
#include <utility>

#include "framework/objects/exceptions.h"
#include "framework/values/variant.h"

// Calls of automation objects: plain arguments become a block of tagged values, the last one first, and back.

namespace {

// The arguments of one call. Texts that it makes are freed with it; values that were lent are not.
class CallArguments {
 public:
  CallArguments(const BYTE* types, va_list arguments)
      : count_(types == nullptr ? 0 : std::strlen(reinterpret_cast<const char*>(types))) {
    if (types == nullptr) return;
    if (count_ > values_.size()) AfxThrowOleException(DISP_E_BADPARAMCOUNT);
    va_copy(list_, arguments);
    HRESULT code = S_OK;
    for (std::size_t i = 0; i < count_; ++i)
      if (!Take(values_[count_ - 1 - i], types[i])) code = DISP_E_BADVARTYPE;
    va_end(list_);
    if (FAILED(code)) {
      FreeTexts();
      AfxThrowOleException(code);
    }
  }
  CallArguments(const CallArguments&) = delete;
  CallArguments& operator=(const CallArguments&) = delete;
  ~CallArguments() { FreeTexts(); }

  DISPPARAMS Params() { return {values_.data(), nullptr, static_cast<UINT>(count_), 0}; }

 private:
  // The analyzer loses sight of a list of arguments that an object keeps.
  // NOLINTBEGIN(clang-analyzer-valist.Uninitialized)
  // False: a byte of no type, after which nothing is known of what follows.
  bool Take(VARIANTARG& value, BYTE type) {
    constexpr unsigned kByPointer = 0x40;
    value.vt = type;
    if ((type & kByPointer) != 0) {
      value.vt = static_cast<VARTYPE>((type & ~kByPointer) | VT_BYREF);
      value.byref = va_arg(list_, void*);
      return IsKnown(static_cast<BYTE>(type & ~kByPointer));
    }
    switch (type) {
      case VT_I2:
        value.iVal = static_cast<short>(va_arg(list_, int));
        return true;
      case VT_I4:
        value.lVal = va_arg(list_, LONG);
        return true;
      case VT_R4:
        value.fltVal = static_cast<float>(va_arg(list_, double));
        return true;
      case VT_R8:
        value.dblVal = va_arg(list_, double);
        return true;
      case VT_BOOL:
        value.boolVal = va_arg(list_, BOOL) != FALSE ? VARIANT_TRUE : VARIANT_FALSE;
        return true;
      case VT_DISPATCH:
        value.pdispVal = va_arg(list_, LPDISPATCH);
        return true;
      case VT_BSTR:
        value.bstrVal = SysAllocString(va_arg(list_, LPCTSTR));
        own_texts_[static_cast<std::size_t>(&value - values_.data())] = true;
        return true;
      case VT_VARIANT:
        value = *va_arg(list_, const VARIANT*);
        return true;
      default:
        return false;
    }
  }
  // NOLINTEND(clang-analyzer-valist.Uninitialized)
  static bool IsKnown(BYTE type) {
    return (type >= VT_I2 && type <= VT_R8) || type == VT_BSTR || type == VT_BOOL || type == VT_VARIANT;
  }
  void FreeTexts() {
    for (std::size_t i = 0; i < count_; ++i)
      if (own_texts_[i]) SysFreeString(values_[i].bstrVal);
  }

  std::size_t count_;
  std::array<VARIANTARG, lorv::kMostCallArguments> values_ = {};
  std::array<bool, lorv::kMostCallArguments> own_texts_ = {};
  va_list list_;
};

// The words of a failure, owned.
struct Failure : EXCEPINFO {
  Failure() : EXCEPINFO{} {}
  Failure(const Failure&) = delete;
  Failure& operator=(const Failure&) = delete;
  ~Failure() {
    for (BSTR text : {bstrSource, bstrDescription, bstrHelpFile}) SysFreeString(text);
  }
};

void RaiseFailure(HRESULT code, const Failure& failure) {
  if (code != DISP_E_EXCEPTION) AfxThrowOleException(code);
  AfxThrowOleDispatchException(failure.wCode, CString(failure.bstrDescription), failure.dwHelpContext);
}

void GiveResult(_variant_t& answer, VARTYPE type, void* result) {
  if (type == VT_VARIANT) {
    *static_cast<VARIANT*>(result) = answer.Detach();
    return;
  }
  answer.ChangeType(type);
  switch (type) {
    case VT_I2:
      *static_cast<short*>(result) = answer.iVal;
      return;
    case VT_I4:
      *static_cast<LONG*>(result) = answer.lVal;
      return;
    case VT_R4:
      *static_cast<float*>(result) = answer.fltVal;
      return;
    case VT_R8:
      *static_cast<double*>(result) = answer.dblVal;
      return;
    case VT_BOOL:
      *static_cast<BOOL*>(result) = static_cast<BOOL>(answer.boolVal != VARIANT_FALSE);
      return;
    default:
      AfxThrowOleException(DISP_E_BADVARTYPE);
  }
}

}  // namespace

void COleDispatchDriver::AttachDispatch(LPDISPATCH dispatch, BOOL auto_release) {
  ReleaseDispatch();
  m_lpDispatch = dispatch;
  m_bAutoRelease = auto_release;
}

LPDISPATCH COleDispatchDriver::DetachDispatch() {
  return std::exchange(m_lpDispatch, nullptr);
}

void COleDispatchDriver::ReleaseDispatch() {
  LPDISPATCH const held = DetachDispatch();
  if (held != nullptr && m_bAutoRelease != FALSE) held->Release();
}

// NOLINTNEXTLINE(cert-dcl50-cpp): the framework's way of passing arguments of any kind
void COleDispatchDriver::InvokeHelper(DISPID member, WORD flags, VARTYPE result_type, void* result,
                                      const BYTE* types, ...) {
  // The list ends whatever the call raises.
  struct Arguments {
    va_list list;
    ~Arguments() { va_end(list); }
  } arguments;
  va_start(arguments.list, types);
  InvokeHelperV(member, flags, result_type, result, types, arguments.list);
}

void COleDispatchDriver::InvokeHelperV(DISPID member, WORD flags, VARTYPE result_type, void* result,
                                       const BYTE* types, va_list arguments) {
  if (m_lpDispatch == nullptr) return;
  CallArguments call(types, arguments);
  DISPPARAMS params = call.Params();
  DISPID put = DISPID_PROPERTYPUT;
  if ((flags & DISPATCH_PROPERTYPUT) != 0) {
    params.rgdispidNamedArgs = &put;
    params.cNamedArgs = 1;
  }
  const bool wants_result = result_type != VT_EMPTY && result != nullptr;
  _variant_t answer;
  Failure failure;
  UINT wrong = 0;
  const HRESULT code = m_lpDispatch->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &params,
                                            wants_result ? &answer : nullptr, &failure, &wrong);
  if (FAILED(code)) RaiseFailure(code, failure);
  if (wants_result) GiveResult(answer, result_type, result);
}
