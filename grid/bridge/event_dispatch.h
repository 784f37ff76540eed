#pragma once

#include "framework/values/dispatch_driver.h"

class CWnd;

// Raises an event of an automation control that is none: the call of a member becomes the framework's command
// for an event, which the parent's event sink cannot distinguish from a real one.
//
//   CGridDispatchDriver::CInvokeDisp events(control_id, parent);
//   CGridDispatchDriver(events).InvokeHelper(10, DISPATCH_METHOD, VT_EMPTY, nullptr, types, column);
class COMM_LORV_API CGridDispatchDriver : public COleDispatchDriver {
 public:
  // Lives on the stack for one event: it is not counted, and knows no interface and no name.
  class COMM_LORV_API CInvokeDisp : public IDispatch {
   public:
    CInvokeDisp(DWORD control_id, CWnd* parent) : control_id_(control_id), parent_(parent) {}
    CInvokeDisp(const CInvokeDisp&) = delete;
    CInvokeDisp& operator=(const CInvokeDisp&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID /*id*/, void** /*object*/) override { return 0; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 0; }
    ULONG STDMETHODCALLTYPE Release() override { return 0; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* /*count*/) override { return 0; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*which*/, LCID /*locale*/, ITypeInfo** /*info*/) override {
      return 0;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*always_null*/, LPOLESTR* /*names*/, UINT /*count*/,
                                            LCID /*locale*/, DISPID* /*ids*/) override {
      return 0;
    }
    // Sends the event to the parent, which may do anything. What its handler raises passes through. Always 0.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID always_null, LCID locale, WORD flags,
                                     DISPPARAMS* params, VARIANT* result, EXCEPINFO* failure,
                                     UINT* wrong_argument) override;
    virtual ~CInvokeDisp() = default;

   private:
    DWORD control_id_;
    CWnd* parent_;
  };

  // Over an object that stays its owner's.
  explicit CGridDispatchDriver(CInvokeDisp& events) : COleDispatchDriver(&events, FALSE) {}
};
