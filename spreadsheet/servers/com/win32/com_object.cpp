#include "spreadsheet/servers/com/win32/com_object.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "framework/objects/exceptions.h"

namespace lorv::com {
namespace {

constexpr LCID kNeutralLanguage = 1024;

WORD FlagOf(Form form) {
  if (form == Form::kGet) return DISPATCH_PROPERTYGET;
  return form == Form::kPut ? DISPATCH_PROPERTYPUT : DISPATCH_METHOD;
}

// What a server tells of a failure; its texts are freed.
struct Failure : EXCEPINFO {
  Failure() : EXCEPINFO{} {}
  Failure(const Failure&) = delete;
  Failure& operator=(const Failure&) = delete;
  ~Failure() {
    SysFreeString(bstrSource);
    SysFreeString(bstrDescription);
    SysFreeString(bstrHelpFile);
  }

  [[noreturn]] void Raise() {
    if (pfnDeferredFillIn != nullptr) pfnDeferredFillIn(this);
    auto* const raised = new COleDispatchException(bstrDescription, dwHelpContext, wCode);
    raised->m_strSource = CString(LPCTSTR{bstrSource});
    raised->m_strHelpFile = CString(LPCTSTR{bstrHelpFile});
    raised->m_scError = scode != 0 ? scode : _com_error::WCodeToHRESULT(wCode);
    throw raised;
  }
};

_variant_t Plain(const AutoValue& value) {
  if (const auto* const object = dynamic_cast<const ComObject*>(value.object.get()))
    return {object->Dispatch()};
  return value.data;
}

}  // namespace

AutoRef Wrapped(IDispatch* dispatch) {
  return dispatch == nullptr ? nullptr : std::make_shared<ComObject>(dispatch);
}

AutoValue ComObject::Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) {
  // Automation takes its arguments from the last to the first.
  std::vector<_variant_t> values;
  std::transform(args.rbegin(), args.rend(), std::back_inserter(values), Plain);
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS params = {values.data(), nullptr, static_cast<UINT>(values.size()), 0};
  if (form == Form::kPut) {
    params.rgdispidNamedArgs = &put;
    params.cNamedArgs = 1;
  }
  _variant_t answer;
  Failure failure;
  UINT wrong = 0;
  const HRESULT code = dispatch_->Invoke(dispid, IID_NULL, kNeutralLanguage, FlagOf(form), &params,
                                         form == Form::kPut ? nullptr : &answer, &failure, &wrong);
  if (code == DISP_E_EXCEPTION) failure.Raise();
  if (FAILED(code)) AfxThrowOleException(code);
  if (answer.vt == VT_DISPATCH) return AutoValue(Wrapped(answer.pdispVal));
  return AutoValue(std::move(answer));
}

}  // namespace lorv::com
