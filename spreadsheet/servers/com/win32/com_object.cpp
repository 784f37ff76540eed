#include "spreadsheet/servers/com/win32/com_object.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "framework/objects/exceptions.h"

// Calls to an object of a program in another process, by the system's automation. Values pass as they are,
// objects by the dispatch inside; what a server reports of a failure becomes the framework's exceptions, so
// that the exchange handles both kinds of server alike.

namespace lorv::com {
namespace {

constexpr LCID kNeutralLanguage = 1024;

WORD FlagOf(Form form) {
  if (form == Form::kGet) return DISPATCH_PROPERTYGET;
  return form == Form::kPut ? DISPATCH_PROPERTYPUT : DISPATCH_METHOD;
}

// What a server reports of a failure; its texts are freed.
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
    // A server may put off the making of its texts until somebody wants them.
    if (pfnDeferredFillIn != nullptr) pfnDeferredFillIn(this);
    auto* const raised = new COleDispatchException(bstrDescription, dwHelpContext, wCode);
    raised->m_strSource = CString(LPCTSTR{bstrSource});
    raised->m_strHelpFile = CString(LPCTSTR{bstrHelpFile});
    // Servers give one of the two codes; the older ones the short one.
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
    // The new value of a put has a name of its own among the arguments: servers refuse it by place.
    params.rgdispidNamedArgs = &put;
    params.cNamedArgs = 1;
  }
  // Of a put there is no answer, and no room is offered for one.
  _variant_t answer;
  Failure failure;
  UINT wrong = 0;
  const HRESULT code = dispatch_->Invoke(dispid, IID_NULL, kNeutralLanguage, FlagOf(form), &params,
                                         form == Form::kPut ? nullptr : &answer, &failure, &wrong);
  if (code == DISP_E_EXCEPTION) failure.Raise();
  if (FAILED(code)) AfxThrowOleException(code);
  // The wrapper counts the object once more; the count in the answer goes with the answer.
  if (answer.vt == VT_DISPATCH) return AutoValue(Wrapped(answer.pdispVal));
  return AutoValue(std::move(answer));
}

}  // namespace lorv::com
